#pragma once
// What the engine tests share: the rules of the game written again for the
// tests (letter values, premium squares, a judge of plays that shares no code
// with the engine's scoring), and games played by the engine from a seeded bag.

#include <functional>
#include <string>
#include <vector>

#include "engine/board.h"
#include "engine/board_text.h"
#include "engine/context.h"

namespace ostrane::test {

// Letter values, a to z.
inline constexpr int kLetterValue[26] = {1, 3, 3, 2, 1, 4, 2, 4, 1, 8,  10, 1,  2,
                                         1, 1, 3, 8, 1, 1, 1, 1, 4, 10, 10, 10, 10};
// Premium codes by [row][column]: 1 letter x2, 2 letter x3, 3 word x2, 4 word x3.
inline constexpr const char* kPremium[15] = {
    "400100040001004", "030002000200030", "003000101000300", "100300010003001", "000030000030000",
    "020002000200020", "001000101000100", "400100030001004", "001000101000100", "020002000200020",
    "000030000030000", "100300010003001", "003000101000300", "030002000200030", "400100040001004"};

// What the rules say of one play laid on `before` from `rack`.
struct Verdict {
  bool legal = false;
  std::string why;          // the first rule broken
  std::vector<int> points;  // the scores the rules allow (two with two blanks)
  std::string rackAfter;    // the rack without the tiles laid
  int tilesLaid = 0;
};
Verdict Judge(const Lexicon& lexicon, const BoardSquares& before, const ClsWord& play,
              const std::string& rack, bool firstPlay);

// One turn of a game played by the engine: the board and rack it searched.
struct Turn {
  int game = 0, number = 0;
  BoardSquares board{};
  bool firstPlay = false;
  std::string rack;
};
using TurnHook = std::function<void(const Turn&, ClsPlateau&, EngineContext&)>;

// Plays `games` games from bags shuffled by `seed`, always laying the best
// play (judged legal), until no play or no tile is left or after `maxTurns`.
// `beforeSearch` sees each turn before the search, `onTurn` after it (the
// board still without the play), with the engine that searched.
void SelfPlay(const Lexicon& lexicon, uint64_t seed, int games, const TurnHook& onTurn,
              const TurnHook& beforeSearch = nullptr, int maxTurns = 1000);

BoardSquares SquaresOf(const ClsPlateau& board);

// A yield hook that runs `onYield`, which must outlive it.
inline YieldHook HookOf(std::function<void()>& onYield) {
  return {[](void* f) { (*static_cast<std::function<void()>*>(f))(); }, &onYield};
}

}  // namespace ostrane::test
