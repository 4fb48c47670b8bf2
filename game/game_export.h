#pragma once
// A game as plain text that reads well anywhere: a heading with the game's
// name and date, then one line a turn (the rack drawn, the position, the word
// with its blanks in lower case, the points, the running total), then the
// final score. UTF-8, lines closed by LF. The score sheet's rows come from
// the same place.

#include <string>
#include <vector>

#include "game/game_record.h"

namespace ostrane {

// One row of the sheet.
struct SheetRow {
  int number = 0;        // from 1
  std::string drawn;     // the rack as drawn, "?" for a blank
  std::string position;  // "H4" across, "4H" down; empty while the rack is on the stand
  std::string word;      // upper case, its blanks in lower case
  int points = 0;
  int total = 0;         // the score after this play
  int top = -1;          // the turn's exact top, -1 when not worked out
  bool played = false;
};

std::vector<SheetRow> SheetRows(const GameFile& game);
// "24/11/2026 à 15:30"
std::string DateText(const DateTime& date);
std::string GameText(const GameFile& game);

}  // namespace ostrane
