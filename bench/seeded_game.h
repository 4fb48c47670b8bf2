#pragma once
// The turns of a game the designed search plays against itself from a seeded
// bag: each turn's board, whether it is the first play, and the rack drawn.
// The benchmarks time their searches on these positions.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "engine/board.h"
#include "engine/board_text.h"
#include "engine/context.h"
#include "lexicon/lexicon.h"
#include "lexicon/tables.h"

namespace ostrane::bench {

struct SeededTurn {
  BoardSquares board{};
  bool first = false;
  std::string rack;
};

inline std::string FullBag() {
  std::string bag;
  for (size_t k = 0; k + 2 < StrPioche.size(); k += 3) {
    const int count = (StrPioche[k] - '0') * 10 + (StrPioche[k + 1] - '0');
    const char c = StrPioche[k + 2];
    bag.append(size_t(count), c == '?' ? '?' : LowerAscii(c));
  }
  return bag;
}

inline std::vector<SeededTurn> PlaySeededGame(const Lexicon& lexicon, uint64_t seed) {
  EngineContext context;
  context.Random.Seed(seed);
  std::string bag = FullBag();
  for (size_t k = bag.size(); k > 1; --k) std::swap(bag[k - 1], bag[context.Random.Below(uint32_t(k))]);
  ClsPlateau board(lexicon, context);
  std::vector<SeededTurn> turns;
  std::string rack;
  for (;;) {
    while (rack.size() < 7 && !bag.empty()) {
      rack += bag.back();
      bag.pop_back();
    }
    if (rack.empty()) break;
    SeededTurn turn;
    for (int y = 0; y < 15; ++y)
      for (int x = 0; x < 15; ++x) turn.board[size_t(y * 15 + x)] = board.Square(x, y);
    turn.first = board.SubWordFirst();
    turn.rack = rack;
    turns.push_back(turn);
    std::string letters = rack;
    board.TrouveSolution(letters);
    const auto best = board.SubSortie(5);
    if (!best) break;
    int laid = 0;
    TakeTiles(board, *best, rack, laid);
    board.SubCaserWord(*best);
    board.SubWordFirst(false);
    context.LngSens = 0;
  }
  return turns;
}

}  // namespace ostrane::bench
