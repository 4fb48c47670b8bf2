#pragma once
// The whole lexicon of the program, filled once at start and read-only after:
// the word tree of 2- to 9-letter words, the lists of 10- to 15-letter words
// and the definitions of the short words.

#include <array>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "lexicon/dico.h"
#include "lexicon/word_graph.h"
#include "lexicon/word_list.h"

namespace ostrane {

struct Lexicon {
  ClsDico Dico;
  std::array<LongWordList, 6> MotsDic;  // MotsDic10 to MotsDic15
  Definitions DefM23;

  const LongWordList& LongWords(size_t length) const { return MotsDic[length - 10]; }
  LongWordList& LongWords(size_t length) { return MotsDic[length - 10]; }

  // Names of the resources: "DICO", "DIC10" to "DIC15", "M23".
  static constexpr std::string_view kDico = "DICO";
  static constexpr std::string_view kDefinitions = "M23";
  static std::string LongListName(int length) { return "DIC" + std::to_string(length); }

  // Loads everything in one go from a reader of named resources (what was
  // loaded before goes, the word graph with it).
  using Reader = std::function<std::string(std::string_view name)>;
  void LoadAll(const Reader& read, const ClsDico::Progress& progress = nullptr);

  // The same words as one word graph, for the exact move generator: made
  // from the tree and the long lists at its first use (about 40 ms), once,
  // whichever thread asks first; the others wait for it. A graph already
  // made (read back from a file) may be handed over before.
  const WordGraph& Graph() const;
  // The words of the tree and of the long lists.
  int64_t WordCount() const;
  void SetGraph(std::shared_ptr<const WordGraph> graph);

 private:
  struct GraphSlot {
    std::once_flag once;
    std::shared_ptr<const WordGraph> graph;
  };
  std::shared_ptr<GraphSlot> graph_ = std::make_shared<GraphSlot>();
};

}  // namespace ostrane
