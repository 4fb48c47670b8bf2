#include "engine/board_text.h"

#include <vector>

#include "engine/board.h"

namespace ostrane {

bool ParseBoardText(std::string_view text, BoardSquares& squares, std::string& error) {
  std::vector<std::string_view> lines;
  size_t begin = 0;
  while (begin < text.size()) {
    size_t end = text.find('\n', begin);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(begin, end - begin);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back(line);
    begin = end + 1;
  }
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  if (lines.size() != 15) {
    error = std::to_string(lines.size()) + " lines, 15 expected";
    return false;
  }
  for (size_t row = 0; row < 15; ++row) {
    const std::string_view line = lines[row];
    const std::string where = "line " + std::to_string(row + 1);
    if (line.size() != 15) {
      error = where + ": " + std::to_string(line.size()) + " characters, 15 expected";
      return false;
    }
    for (size_t column = 0; column < 15; ++column) {
      const char c = line[column];
      const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
      if (c != '.' && !letter) {
        error = where + ", column " + std::to_string(column + 1) + ": '" + std::string(1, c) +
                "' is neither '.' nor a letter";
        return false;
      }
      squares[row * 15 + column] = c == '.' ? '\0' : c;
    }
  }
  return true;
}

void LoadBoard(ClsPlateau& board, const BoardSquares& squares) {
  bool empty = true;
  for (int y = 0; y < 15; ++y)
    for (int x = 0; x < 15; ++x) {
      const char c = squares[size_t(y) * 15 + size_t(x)];
      board.SetSquare(x, y, c);
      if (c != '\0') empty = false;
    }
  board.SubWordFirst(empty);
}

std::string FormatBoardText(const ClsPlateau& board) {
  std::string text;
  for (int y = 0; y < 15; ++y) {
    for (int x = 0; x < 15; ++x) {
      const char c = board.Square(x, y);
      text += c ? c : '.';
    }
    text += '\n';
  }
  return text;
}

}  // namespace ostrane
