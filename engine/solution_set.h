#pragma once
// One play, as the search finds it and the board takes it.

#include <cstdint>
#include <string>
#include <string_view>

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

// A play as a search keeps it among its findings: flat, with no allocation;
// a ClsWord is made of it only when one is asked for. A play too long for it
// is kept whole by the board, and `whole` gives its index there.
struct FlatPlay {
  static constexpr size_t kExpress = 15, kPlace = 3;
  char express[kExpress];
  char place[kPlace];
  uint8_t expressLength = 0;
  uint8_t placeLength = 0;
  int16_t CountP = 0;
  int32_t whole = -1;

  std::string_view Express() const { return {express, expressLength}; }
  std::string_view Place() const { return {place, placeLength}; }
  // False (and nothing changed) when the texts are too long.
  bool Set(std::string_view expressText, std::string_view placeText, int16_t points);
};

}  // namespace ostrane
