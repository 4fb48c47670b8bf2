#pragma once
// Move scoring: a play is always scored across, on the board as it stands
// (turned through its diagonal for a play down). The operations are members
// of ClsPlateau (engine/board.h): SubScoreH, SubScoreLetters and the private
// SubPointsMot. This header holds what they share with their callers.

#include <string_view>

namespace ostrane {

// An expression as the search hands it to scoring: the word, and after a
// blank the letters of the blank tiles in brackets ("maison (m)").
struct Expression {
  std::string_view word;    // in front of the blank, or all of it
  std::string_view blanks;  // between the brackets; empty when none
  bool hasBlank = false;    // a blank character was found
};

Expression SplitExpression(std::string_view text);

}  // namespace ostrane
