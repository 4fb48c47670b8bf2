// The exact generator against the designed search, on the same positions in
// one run: the boards of games the designed search played (each turn with
// the rack drawn), and their middle-game boards with racks of no, one and two
// blanks. Each way runs over all positions three times; the fastest pass
// counts (the machine is shared). Each way has a generator of its own, which
// keeps the squares of the position before, as the program's does from turn
// to turn. Prints the times and their ratios, and what making the word graph
// and the best play's tables costs.
//
//   build/bench/exact_bench [GAMES]
//   EXACT_BENCH_ONLY=best|all [EXACT_BENCH_BLANKS=N] [EXACT_BENCH_PASSES=N] [EXACT_BENCH_DESIGNED=1]
//     build/bench/exact_bench
//     (one way alone, for a profile: the time of N passes, 20 unless told,
//     of the positions with N blanks when told, the others searched untimed
//     in between; the designed search (and the list of all plays) run
//     untimed before each position when asked; under callgrind with
//     --instr-atstart=no, the timed searches alone are counted)
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>
#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_START_INSTRUMENTATION
#define CALLGRIND_STOP_INSTRUMENTATION
#endif

#include "bench/seeded_game.h"
#include "data/embedded_lexicon.h"
#include "engine/board.h"
#include "engine/board_text.h"
#include "engine/context.h"
#include "engine/exact_moves.h"
#include "engine/move_search.h"
#include "lexicon/lexicon.h"
#include "lexicon/tables.h"
#include "lexicon/word_graph.h"

namespace {

using namespace ostrane;

double ThreadMs() {
  timespec t;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

struct Position {
  BoardSquares board{};
  bool first = false;
  std::string rack;
  int blanks = 0;
};

int Blanks(const std::string& rack) { return int(std::count(rack.begin(), rack.end(), '?')); }

// The turns of one game the designed search plays against itself.
std::vector<Position> PlayGame(const Lexicon& lexicon, uint64_t seed) {
  std::vector<Position> turns;
  for (const bench::SeededTurn& t : bench::PlaySeededGame(lexicon, seed))
    turns.push_back(Position{t.board, t.first, t.rack, Blanks(t.rack)});
  return turns;
}

struct Totals {
  double designed = 0, all = 0, best = 0;
  int64_t findings = 0, plays = 0, positions = 0;
  int64_t allSteps = 0, bestSteps = 0, strips = 0, stripsRefined = 0, stripsSearched = 0, lookups = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const int games = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10;
  const Lexicon& lexicon = EmbeddedLexicon();

  // The word graph: made from the loaded lexicon, as the program makes it.
  double build = 1e9;
  WordGraph graph;
  for (int k = 0; k < 5; ++k) {
    const double before = ThreadMs();
    WordGraph made;
    made.Build(lexicon);
    build = std::min(build, ThreadMs() - before);
    if (k == 0) graph = std::move(made);
  }

  std::vector<Position> positions;
  Rng racks(99);
  const std::string letters = "aaaaaaaaabbccdddeeeeeeeeeeeeeeeffgghhiiiiiiiijklllllmmmnnnnnnooooooppqrrrrrrssssss"
                              "ttttttuuuuuuvvwxyz";
  for (uint64_t seed = 1; seed <= uint64_t(games); ++seed) {
    const std::vector<Position> game = PlayGame(lexicon, seed);
    positions.insert(positions.end(), game.begin(), game.end());
    // The middle game with racks of no, one and two blanks.
    for (const size_t turn : {game.size() / 3, game.size() / 2, 2 * game.size() / 3}) {
      for (int blanks = 0; blanks <= 2; ++blanks) {
        Position p = game[turn];
        p.rack.assign(size_t(blanks), '?');
        while (p.rack.size() < 7) p.rack += letters[racks.Below(uint32_t(letters.size()))];
        p.blanks = blanks;
        positions.push_back(p);
      }
    }
  }

  EngineContext context;
  context.TreeIndex = WordTreeIndex::Build(lexicon.Dico, &lexicon);
  ExactMoves exact(graph), exactAll(graph);
  // The first search for a best play makes its tables from the graph.
  double tables = 1e9;
  for (int k = 0; k < 3; ++k) {
    ExactMoves fresh(graph);
    const BoardSquares empty{};
    const double before = ThreadMs();
    fresh.Best(empty.data(), true, "e");
    tables = std::min(tables, ThreadMs() - before);
  }
  if (const char* only = std::getenv("EXACT_BENCH_ONLY")) {
    // One way alone, many times over: for a profile.
    const bool best = std::string(only) == "best";
    const char* blanks = std::getenv("EXACT_BENCH_BLANKS");  // the positions with that many blanks only
    const int onlyBlanks = blanks ? std::atoi(blanks) : -1;
    // With EXACT_BENCH_DESIGNED=1 the designed search (and, for the best
    // play, the list of all plays) runs before each position, untimed, as in
    // the whole bench (the caches as it leaves them).
    const bool designedToo = std::getenv("EXACT_BENCH_DESIGNED") != nullptr;
    const int passes = std::getenv("EXACT_BENCH_PASSES") ? std::atoi(std::getenv("EXACT_BENCH_PASSES")) : 20;
    size_t found = 0;
    double spent = 0;
    exact.Best(positions[0].board.data(), positions[0].first, positions[0].rack);  // its tables made
    for (int pass = 0; pass < passes; ++pass)
      for (const Position& p : positions) {
        // The other positions are searched too, untimed: the searches keep
        // what they can from one board to the next, as along a game.
        const bool timed = onlyBlanks < 0 || p.blanks == onlyBlanks;
        if (designedToo) {
          ClsPlateau board(lexicon, context);
          LoadBoard(board, p.board);
          std::string rack = p.rack;
          context.LngSens = 0;
          board.TrouveSolution(rack);
          if (best) exactAll.All(p.board.data(), p.first, p.rack);
        }
        if (timed) CALLGRIND_START_INSTRUMENTATION;
        const double before = ThreadMs();
        const size_t n = best ? exact.Best(p.board.data(), p.first, p.rack).has_value()
                              : exact.All(p.board.data(), p.first, p.rack).size();
        if (!timed) continue;
        CALLGRIND_STOP_INSTRUMENTATION;
        found += n;
        spent += ThreadMs() - before;
      }
    std::printf("%zu found in %.1f ms\n", found, spent);
    return 0;
  }
  Totals byBlanks[3];
  Totals total;
  for (int pass = 0; pass < 3; ++pass) {
    Totals run[3];
    for (const Position& p : positions) {
      Totals& t = run[p.blanks];
      ClsPlateau board(lexicon, context);
      LoadBoard(board, p.board);
      std::string rack = p.rack;
      context.LngSens = 0;
      double before = ThreadMs();
      const int32_t findings = board.TrouveSolution(rack);
      t.designed += ThreadMs() - before;
      before = ThreadMs();
      const size_t plays = exactAll.All(p.board.data(), p.first, p.rack).size();
      t.all += ThreadMs() - before;
      t.allSteps += exactAll.LastStats().steps;
      before = ThreadMs();
      const auto best = exact.Best(p.board.data(), p.first, p.rack);
      t.best += ThreadMs() - before;
      t.bestSteps += exact.LastStats().steps;
      t.strips += exact.LastStats().strips;
      t.stripsSearched += exact.LastStats().stripsSearched;
      t.stripsRefined += exact.LastStats().stripsRefined;
      t.lookups += exact.LastStats().lookups;
      t.findings += findings;
      t.plays += int64_t(plays);
      t.positions += 1;
      if (best.has_value() != (plays > 0)) {
        std::fprintf(stderr, "exact_bench: the best play and the list disagree\n");
        return 1;
      }
    }
    for (int b = 0; b < 3; ++b) {
      if (pass == 0) {
        byBlanks[b] = run[b];
        continue;
      }
      byBlanks[b].designed = std::min(byBlanks[b].designed, run[b].designed);
      byBlanks[b].all = std::min(byBlanks[b].all, run[b].all);
      byBlanks[b].best = std::min(byBlanks[b].best, run[b].best);
    }
  }
  for (const Totals& t : byBlanks) {
    total.designed += t.designed;
    total.all += t.all;
    total.best += t.best;
    total.findings += t.findings;
    total.plays += t.plays;
    total.positions += t.positions;
  }

  for (int b = 0; b < 3; ++b)
    std::printf("  %d blank(s): steps all %lld best %lld; stretches %lld, refined %lld, searched %lld; lookups %lld\n",
                b, (long long)byBlanks[b].allSteps, (long long)byBlanks[b].bestSteps, (long long)byBlanks[b].strips,
                (long long)byBlanks[b].stripsRefined, (long long)byBlanks[b].stripsSearched,
                (long long)byBlanks[b].lookups);
  std::printf("steps of the walk: all plays %lld, best only %lld; stretches weighed %lld, searched %lld\n",
              (long long)(byBlanks[0].allSteps + byBlanks[1].allSteps + byBlanks[2].allSteps),
              (long long)(byBlanks[0].bestSteps + byBlanks[1].bestSteps + byBlanks[2].bestSteps),
              (long long)(byBlanks[0].strips + byBlanks[1].strips + byBlanks[2].strips),
              (long long)(byBlanks[0].stripsSearched + byBlanks[1].stripsSearched + byBlanks[2].stripsSearched));
  std::printf("word graph: %zu nodes, %zu edges, %.2f MB, made in %.1f ms from the loaded lexicon\n",
              graph.NodeCount(), graph.EdgeCount(), double(graph.Bytes()) / 1e6, build);
  std::printf("tables of the best-play search: made in %.1f ms at its first search\n", tables);
  std::printf("%-14s %9s %12s %12s %10s %12s %10s %10s %10s\n", "racks", "positions", "designed ms", "findings",
              "all ms", "plays", "all/des", "best ms", "des/best");
  const auto row = [](const char* what, const Totals& t) {
    std::printf("%-14s %9lld %12.1f %12lld %10.1f %12lld %10.3f %10.2f %10.1f\n", what, (long long)t.positions,
                t.designed, (long long)t.findings, t.all, (long long)t.plays, t.all / t.designed, t.best,
                t.designed / t.best);
  };
  row("no blank", byBlanks[0]);
  row("one blank", byBlanks[1]);
  row("two blanks", byBlanks[2]);
  row("all", total);
  return 0;
}
