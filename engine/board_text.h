#pragma once
// The board as text: 15 lines of 15 characters, row A first; "." an empty
// square, a lower-case letter a tile, an upper-case letter a blank standing
// for that letter. Used by the command-line tool, the benchmarks and tests.

#include <array>
#include <string>
#include <string_view>

namespace ostrane {

class ClsPlateau;

using BoardSquares = std::array<char, 225>;  // row-major, 0 for empty

// Reads a board. On failure returns false and a one-line reason in `error`.
// Line ends may be LF or CR LF; empty lines at the end are ignored.
bool ParseBoardText(std::string_view text, BoardSquares& squares, std::string& error);

// Writes every square of the board (with SubCase) and sets SubWordFirst to
// whether it is empty.
void LoadBoard(ClsPlateau& board, const BoardSquares& squares);

// The board in the same text form, each line closed by LF.
std::string FormatBoardText(const ClsPlateau& board);

}  // namespace ostrane
