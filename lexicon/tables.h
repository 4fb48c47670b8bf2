#pragma once
// Fixed tables of the game: letter values and the tile table.

#include <array>
#include <cstdint>
#include <string_view>

namespace ostrane {

// A line break in every text of the program.
inline constexpr std::string_view kCrLf = "\r\n";

// Points of the letters A (index 0) to Z (index 25).
inline constexpr std::array<int16_t, 26> ValeursLettres = {
    1, 3, 3, 2, 1, 4, 2, 4, 1, 8, 10, 1, 2, 1, 1, 3, 8, 1, 1, 1, 1, 4, 10, 10, 10, 10};

// The tile table: groups of two digits of count and the letter; "?" is the blank.
inline constexpr std::string_view StrPioche =
    "09A02B02C03D15E02F02G02H08I01J01K05L03M06N06O02P01Q06R06S06T06U02V01W01X01Y01Z02?";

// Letter code of the word tree: A is 1 to Z is 26, the character code minus 64.
constexpr int LetterCode(char c) { return static_cast<unsigned char>(c) - 64; }

// Upper-cases ASCII letters, leaves everything else.
constexpr char UpperAscii(char c) { return (c >= 'a' && c <= 'z') ? char(c - 32) : c; }
constexpr char LowerAscii(char c) { return (c >= 'A' && c <= 'Z') ? char(c + 32) : c; }

}  // namespace ostrane
