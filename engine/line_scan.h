#pragma once
// Line scanning: what the search knows of one row next to or through a tile.
//
// A line descriptor has one entry per column (index 15 is a stop that reads
// as "not reached"): not reached, a tile ("F"), or a free square that is
// plain ("L"), has a tile above ("H"), below ("B") or both ("HB").

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace ostrane {

struct LineEntries {
  enum : uint8_t { kReached = 1, kTile = 2, kAbove = 4, kBelow = 8 };
  std::array<uint8_t, 16> entry{};

  bool Reached(int i) const { return entry[size_t(i)] != 0; }
  bool Tile(int i) const { return entry[size_t(i)] & kTile; }
  // A free square with a tile above or below: its letter makes a cross-word.
  bool Crossed(int i) const { return entry[size_t(i)] & (kAbove | kBelow); }
  // Reached, free and with no tile above or below.
  bool Plain(int i) const { return entry[size_t(i)] == kReached; }

  // The first reached index (15 when none is).
  int ReachStart() const;
  // From `start`: the first index not reached, or 14 if that comes first.
  int ReachEnd(int start) const;
  // The mask from column s on row `row` of `squares` (row-major 15 x 15):
  // the tile's letter for "F", "*" for any other entry, until `count` free
  // cells are spent or past `end`. Returns its length; `hasFree` tells
  // whether it holds a "*".
  int Mask(const char* squares, int row, int s, int end, int count, char* out,
           bool& hasFree) const;
};

// The number in a position: leading blanks skipped, digits read with blanks
// between them ignored, stopping at anything else; 0 when there is none.
int PositionNumber(std::string_view text);

// Upper case and no surrounding blanks, as positions are read.
std::string UpperTrimmed(std::string_view text);

}  // namespace ostrane
