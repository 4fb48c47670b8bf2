#pragma once
// What the engine tests share: boards from text, games played by the engine
// itself from a seeded bag, and a judge of plays that knows only the rules
// of the game (it shares no code with the engine's scoring).

#include <functional>
#include <string>
#include <vector>

#include "engine/board.h"
#include "engine/board_text.h"
#include "engine/context.h"

namespace ostrane::test {

// The 102 tiles of the tile table: lower-case letters and "?".
std::string FullBag();

// A board from 15 lines of text ("." empty); fails the test on a bad text.
BoardSquares Board(const std::vector<std::string>& rows);
BoardSquares SquaresOf(const ClsPlateau& board);

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

// Plays `games` games from bags shuffled by `seed`, always laying the best
// play, until no play or no tile is left. `onTurn` sees each turn after the
// search (the board still without the play) with the engine that searched.
void SelfPlay(const Lexicon& lexicon, uint64_t seed, int games,
              const std::function<void(const Turn&, ClsPlateau&, EngineContext&)>& onTurn);

}  // namespace ostrane::test
