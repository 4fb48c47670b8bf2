// Speed of the lexicon: building everything from the embedded lists, checking
// long words, and the free words of a rack with two blanks.
#include <benchmark/benchmark.h>

#include "data/embedded_lexicon.h"
#include "data/resources.h"
#include "lexicon/expressions.h"
#include "lexicon/lexicon.h"
#include "lexicon/word_graph.h"

namespace {

const ostrane::Lexicon& Loaded() { return ostrane::EmbeddedLexicon(); }

void BM_LoadWholeLexicon(benchmark::State& state) {
  for (auto _ : state) {
    ostrane::Lexicon lexicon;
    lexicon.LoadAll([](std::string_view name) { return ostrane::ReadResource(name); });
    benchmark::DoNotOptimize(lexicon.Dico.LngLibre());
  }
}
BENCHMARK(BM_LoadWholeLexicon)->Unit(benchmark::kMillisecond);

void BM_BuildTreeOnly(benchmark::State& state) {
  const std::string bytes = ostrane::ReadResource("DICO");
  for (auto _ : state) {
    ostrane::ClsDico dico;
    dico.DictionaryOrg(bytes);
    benchmark::DoNotOptimize(dico.LngLibre());
  }
}
BENCHMARK(BM_BuildTreeOnly)->Unit(benchmark::kMillisecond);

void BM_LongWordCheck(benchmark::State& state) {
  const ostrane::Lexicon& lexicon = Loaded();
  ostrane::ClsExpressions searcher;
  searcher.SubDico(lexicon);
  const ostrane::LongWordList& list = lexicon.LongWords(12);
  const std::string present(list.Element(list.UBound() / 2));
  const std::string absent = present.substr(0, 11) + (present.back() == 'Z' ? "Y" : "Z");
  bool flip = false;
  for (auto _ : state) {
    flip = !flip;
    benchmark::DoNotOptimize(searcher.SubWordIsTrue(std::string_view(flip ? present : absent)));
  }
}
BENCHMARK(BM_LongWordCheck);

void BM_ShortWordCheck(benchmark::State& state) {
  ostrane::ClsExpressions searcher;
  searcher.SubDico(Loaded());
  for (auto _ : state) benchmark::DoNotOptimize(searcher.SubWordIsTrue(std::string_view("MAISONS")));
}
BENCHMARK(BM_ShortWordCheck);

void BM_CombinationsTwoBlanks(benchmark::State& state) {
  ostrane::ClsExpressions searcher;
  searcher.SubDico(Loaded());
  for (auto _ : state) {
    std::string rack = "ERSAT??";
    benchmark::DoNotOptimize(searcher.SubCombinaisons(rack));
  }
}
BENCHMARK(BM_CombinationsTwoBlanks)->Unit(benchmark::kMillisecond);

void BM_PatternTwoBlanks(benchmark::State& state) {
  ostrane::ClsExpressions searcher;
  searcher.SubDico(Loaded());
  for (auto _ : state) {
    std::string rack = "ERSAT??";
    benchmark::DoNotOptimize(searcher.SubSuivant("**A****E", rack, 2));
  }
}
BENCHMARK(BM_PatternTwoBlanks)->Unit(benchmark::kMicrosecond);

}  // namespace

// The word graph of the exact generator, from the loaded lexicon: the
// words gathered in order, then the minimal graph made of them.
void BM_WordGraphFromLexicon(benchmark::State& state) {
  const ostrane::Lexicon& lexicon = Loaded();
  size_t nodes = 0, bytes = 0;
  for (auto _ : state) {
    ostrane::WordGraph graph;
    graph.Build(lexicon);
    nodes = graph.NodeCount();
    bytes = graph.Bytes();
  }
  state.counters["nodes"] = double(nodes);
  state.counters["MB"] = double(bytes) / 1e6;
}
BENCHMARK(BM_WordGraphFromLexicon)->Unit(benchmark::kMillisecond);

void BM_WordGraphWordsGathered(benchmark::State& state) {
  const ostrane::Lexicon& lexicon = Loaded();
  for (auto _ : state) {
    std::string text;
    benchmark::DoNotOptimize(ostrane::WordGraph::LexiconWords(lexicon, text).size());
  }
}
BENCHMARK(BM_WordGraphWordsGathered)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
