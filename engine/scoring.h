#pragma once
// Move scoring: a play is always scored across, on the board as it stands
// (turned through its diagonal for a play down). The operations are members
// of ClsPlateau (engine/board.h): SubScoreH, SubScoreLetters and the private
// SubPointsMot. This header holds what they share with their callers.

#include <cstdint>
#include <string_view>

#include "engine/solution_set.h"

namespace ostrane {

// An expression as the search hands it to scoring: the word, and after a
// blank the letters of the blank tiles in brackets ("maison (m)").
struct Expression {
  std::string_view word;    // in front of the blank, or all of it
  std::string_view blanks;  // between the brackets; empty when none
  bool hasBlank = false;    // a blank character was found
};

Expression SplitExpression(std::string_view text);

// The scoring of a search's plays. While a search pass runs the board stands
// still, so what a score reads of each square is worked out once per row and
// pass: the value of its tile, and for a free square the points of the tiles
// above and below it. A play is then scored by arithmetic along its row, and
// each square tried for a blank by what the blank takes away, with the
// results of ClsPlateau::SubScoreH to the letter (its two-blank asymmetry,
// the case of the letters kept, the last of equal scores) but no copy of
// the board or of the word.
class PassScores {
 public:
  // A new pass over `squares` (row-major, 15 x 15, (x, y) at y * 15 + x);
  // they must not change until the next Begin.
  void Begin(const char* squares);
  // False when a square holds a character above "z", which SubScoreH would
  // end the program on when it reads it: such a board is scored by SubScoreH.
  bool Usable() const { return usable_; }
  // The ClsWord that SubScoreH gives for `word` (lower case, the board's own
  // tiles included), followed when `hasBlank` by a blank and `blanks` in
  // brackets, laid across from (start, row), kept flat; the word lies on the
  // board.
  void Score(std::string_view word, bool hasBlank, std::string_view blanks, int row, int start,
             int orientation, FlatPlay& out);

 private:
  void PrepareRow(int row);

  const char* squares_ = nullptr;
  bool usable_ = false;
  uint32_t stamp_ = 0;
  uint32_t rowStamp_[15] = {};
  int16_t value_[225] = {};      // the tile's value; 0 on a free square
  int16_t crossSum_[225] = {};   // free square: the tiles above and below
  bool crossed_[225] = {};       // free square: a tile above or below
};

}  // namespace ostrane
