#include "lexicon/lexicon.h"

#include <algorithm>

namespace ostrane {

void Lexicon::LoadAll(const Reader& read, const ClsDico::Progress& progress) {
  Dico = ClsDico{};
  graph_ = std::make_shared<GraphSlot>();
  Dico.DictionaryOrg(read(kDico), progress);
  for (int length = 10; length <= 15; ++length) LongWords(size_t(length)).Load(read(LongListName(length)));
  DefM23.Load(read(kDefinitions));
}

int64_t Lexicon::WordCount() const {
  int64_t count = 0;
  for (size_t length = 2; length <= 9; ++length)
    if (length < Dico.CountsByLength().size()) count += Dico.CountsByLength()[length];
  for (size_t length = 10; length <= 15; ++length) count += std::max(0, LongWords(length).UBound());
  return count;
}

const WordGraph& Lexicon::Graph() const {
  GraphSlot& slot = *graph_;
  std::call_once(slot.once, [this, &slot] {
    auto graph = std::make_shared<WordGraph>();
    graph->Build(*this);
    slot.graph = std::move(graph);
  });
  return *slot.graph;
}

void Lexicon::SetGraph(std::shared_ptr<const WordGraph> graph) {
  GraphSlot& slot = *graph_;
  std::call_once(slot.once, [&slot, &graph] { slot.graph = std::move(graph); });
}

}  // namespace ostrane
