#include "engine/line_scan.h"

#include "engine/board.h"
#include "lexicon/tables.h"

namespace ostrane {
namespace {

bool IsRowLetter(char c) { return c >= 'A' && c <= 'O'; }

// A position as the readers take it: the row letter first, or else the last
// character, whatever it is, as the row letter behind the number.
struct Reading {
  bool letterFirst = false;
  int row = -1;
  std::string_view number;
};

Reading Read(std::string_view position) {
  Reading reading;
  if (position.empty()) return reading;
  if (IsRowLetter(position.front())) {
    reading.letterFirst = true;
    reading.row = position.front() - 65;
    reading.number = position.substr(1);
  } else {
    reading.row = static_cast<unsigned char>(position.back()) - 65;
    reading.number = position.substr(0, position.size() - 1);
  }
  return reading;
}

}  // namespace

int PositionNumber(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  long value = 0;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (c == ' ' || c == '\t') continue;
    if (c < '0' || c > '9') break;
    value = value * 10 + (c - '0');
    if (value > 99999) break;
  }
  return int(value);
}

std::string UpperTrimmed(std::string_view text) {
  size_t begin = 0, end = text.size();
  while (begin < end && text[begin] == ' ') ++begin;
  while (end > begin && text[end - 1] == ' ') --end;
  std::string out(text.substr(begin, end - begin));
  for (char& c : out) c = UpperAscii(c);
  return out;
}

// ------------------------------------------------------------ the walk

bool ClsPlateau::NextOccupied(int& column, int& row) {
  for (;;) {
    if (intColCourante_ >= 15) {
      ++intLigCourante_;
      intColCourante_ = 0;
      if (intLigCourante_ == 15) return false;
    }
    ++intColCourante_;
    if (Square(intColCourante_ - 1, intLigCourante_) != '\0') {
      column = intColCourante_ - 1;
      row = intLigCourante_;
      return true;
    }
  }
}

std::string ClsPlateau::SubFindLet(bool debut) {
  if (debut) {
    intColCourante_ = 0;
    intLigCourante_ = 0;
    return {};
  }
  int column, row;
  if (!NextOccupied(column, row)) return {};
  return char(65 + row) + std::to_string(column + 1);
}

// ----------------------------------------------------------- positions

int16_t ClsPlateau::SubTrouverLigne(std::string_view position) const {
  return int16_t(Read(position).row);
}

int16_t ClsPlateau::SubColumn(std::string_view position) const {
  const Reading reading = Read(position);
  if (position.empty()) return -1;
  const int number = PositionNumber(reading.number);
  if (number < 1 || number > 15) return -1;
  return int16_t(number - 1);
}

std::string ClsPlateau::GetMot(std::string_view position) const {
  const std::string place = UpperTrimmed(position);
  if (place.size() > 3 || place.empty()) return {};
  const int row = SubTrouverLigne(place);
  const int column = SubColumn(place);
  std::string word;
  if (IsRowLetter(place.front())) {
    for (int x = column; x < kSize; ++x) {
      const char c = Square(x, row);
      if (c == '\0') break;
      word += UpperAscii(c);
    }
  } else {
    for (int y = row; y < kSize || y == row; ++y) {  // a bad row fails here
      const char c = Square(column, y);
      if (c == '\0') break;
      word += UpperAscii(c);
    }
  }
  return word;
}

std::string ClsPlateau::SubTurnPlace(std::string_view position) const {
  const int row = SubTrouverLigne(position);
  const int column = SubColumn(position);
  if (!position.empty() && IsRowLetter(position.front()))
    return std::to_string(row + 1) + char(column + 65);
  return char(column + 65) + std::to_string(row + 1);
}

// ---------------------------------------------------- line descriptors

void ClsPlateau::SubMasqueLigne(int column, int row, int budget, int shift,
                                LineEntries& line) const {
  line.entry.fill(0);
  const auto entryOf = [&](int x) -> uint8_t {
    uint8_t e = LineEntries::kReached;
    if (row >= 1 && At(x, row - 1) != '\0') e |= LineEntries::kAbove;
    if (row < 14 && At(x, row + 1) != '\0') e |= LineEntries::kBelow;
    return e;
  };
  CheckSquare(0, row);
  int remaining = budget;
  for (int x = column - 1 + shift; x >= 0; --x) {
    if (At(x, row) != '\0') {
      line.entry[size_t(x)] = LineEntries::kReached | LineEntries::kTile;
    } else {
      if (--remaining == 0) break;
      line.entry[size_t(x)] = entryOf(x);
    }
  }
  remaining = budget + 1 - shift;
  for (int x = column + shift; x <= 14; ++x) {
    if (At(x, row) != '\0') {
      line.entry[size_t(x)] = LineEntries::kReached | LineEntries::kTile;
    } else {
      if (--remaining == 0) break;
      line.entry[size_t(x)] = entryOf(x);
    }
  }
}

int LineEntries::ReachStart() const {
  int a = 0;
  while (a < 15 && entry[size_t(a)] == 0) ++a;
  return a;
}

int LineEntries::ReachEnd(int start) const {
  int e = start;
  while (e < 14 && entry[size_t(e)] != 0) ++e;
  return e;
}

int LineEntries::Mask(const char* squares, int row, int s, int end, int count, char* out,
                      bool& hasFree) const {
  int length = 0;
  hasFree = false;
  for (int i = s; i <= end; ++i) {
    if (Tile(i)) {
      out[length++] = squares[row * 15 + i];
    } else {
      out[length++] = '*';
      hasFree = true;
      if (--count == 0) break;
    }
  }
  return length;
}

}  // namespace ostrane
