#pragma once
// One play, as the search finds it and the board takes it.

#include <cstdint>
#include <string>

namespace ostrane {

struct ClsWord {
  // The letters of the whole word, first to last: lower case for a plain
  // tile, upper case for a blank.
  std::string Express;
  // Position of the first letter: "H8" across, "8H" down, on the real board.
  std::string Place;
  // The points.
  int16_t CountP = 0;

  bool IsEmpty() const { return Express.empty() && Place.empty() && CountP == 0; }
  friend bool operator==(const ClsWord&, const ClsWord&) = default;
};

}  // namespace ostrane
