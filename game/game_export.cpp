#include "game/game_export.h"

#include <cstdio>

namespace ostrane {
namespace {

// Width in characters of a UTF-8 text (its code points).
size_t Width(const std::string& text) {
  size_t n = 0;
  for (const char c : text) n += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return n;
}

std::string Left(const std::string& text, size_t width) {
  const size_t w = Width(text);
  return w >= width ? text : text + std::string(width - w, ' ');
}

std::string Right(const std::string& text, size_t width) {
  const size_t w = Width(text);
  return w >= width ? text : std::string(width - w, ' ') + text;
}

const char* BagName(int pioche) {
  switch (pioche) {
    case 1: return "courte et facile";
    case 2: return "courte et difficile";
    case 3: return "tablinor au premier tirage";
    default: return "normale (102 jetons)";
  }
}

}  // namespace

std::string DateText(const DateTime& d) {
  char text[40];
  std::snprintf(text, sizeof text, "%02d/%02d/%04d à %02d:%02d", d.day, d.month, d.year, d.hour, d.minute);
  return text;
}

std::vector<SheetRow> SheetRows(const GameFile& game) {
  std::vector<SheetRow> rows;
  int total = 0;
  for (const GameFile::Turn& turn : game.turns) {
    SheetRow row;
    row.number = int(rows.size()) + 1;
    row.drawn = turn.drawn;
    if (turn.play) {
      row.played = true;
      row.position = turn.play->Place;
      for (const char c : turn.play->Express) row.word += c >= 'A' && c <= 'Z' ? char(c + 32) : char(c - 32);
      row.points = turn.play->CountP;
      total += row.points;
      row.top = turn.top;
    }
    row.total = total;
    rows.push_back(row);
  }
  return rows;
}

std::string GameText(const GameFile& game) {
  std::string text = "Ostrane — " + game.name + "\n";
  text += "Partie du " + DateText(game.date) + ", pioche " + BagName(game.pioche) + "\n\n";
  text += "Coup  Tirage   Position  Mot              Points  Total\n";
  const std::vector<SheetRow> rows = SheetRows(game);
  int plays = 0, score = 0;
  for (const SheetRow& row : rows) {
    text += Right(std::to_string(row.number), 4) + "  " + Left(row.drawn, 9);
    if (row.played) {
      ++plays;
      score = row.total;
      text += Left(row.position, 10) + Left(row.word, 15) + Right(std::to_string(row.points), 8) +
              Right(std::to_string(row.total), 7);
    } else {
      text += "(sur le chevalet)";
    }
    text += "\n";
  }
  text += "\nScore : " + std::to_string(score) + " point" + (score > 1 ? "s" : "") + " en " + std::to_string(plays) +
          " coup" + (plays > 1 ? "s" : "") + ".\n";
  text += "Position : la ligne puis la colonne pour un mot horizontal (H4), la colonne puis la ligne pour un mot "
          "vertical (4H). Les jokers sont en minuscules.\n";
  return text;
}

}  // namespace ostrane
