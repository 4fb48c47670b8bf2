#include "engine/exact_moves.h"

#include <algorithm>
#include <cstring>

#include "engine/board.h"
#include "lexicon/tables.h"

namespace ostrane {
namespace {

constexpr int kSize = 15;
constexpr int kCentre = 7;
constexpr uint32_t kAllLetters = (1u << 26) - 1u;
constexpr int kBonus = 50;

int Value(int letter) { return ValeursLettres[size_t(letter)]; }

// The premiums of a square: letter factor and word factor.
struct Premium {
  uint8_t letter = 1, word = 1;
};

constexpr std::array<Premium, 225> MakePremiums() {
  std::array<Premium, 225> table{};
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) {
      Premium& p = table[size_t(y * kSize + x)];
      switch (kPrimeRows[size_t(y)][size_t(x)]) {
        case '1': p.letter = 2; break;
        case '2': p.letter = 3; break;
        case '3': p.word = 2; break;
        case '4': p.word = 3; break;
        default: break;
      }
    }
  return table;
}
constexpr std::array<Premium, 225> kPremium = MakePremiums();

bool Occupied(const char* board, int x, int y) {
  return x >= 0 && x < kSize && y >= 0 && y < kSize && board[y * kSize + x] != 0;
}
int LetterOf(char c) { return (c >= 'a' ? c - 'a' : c - 'A'); }

}  // namespace

std::string ExactPlay::Place() const {
  const std::string number = std::to_string(column + 1), letter(1, char('A' + row));
  return down ? number + letter : letter + number;
}

std::string ExactPlay::Express(const char* squares) const {
  std::string text(length, ' ');
  for (int i = 0; i < length; ++i) {
    if ((laid >> i) & 1u)
      text[size_t(i)] = (blank >> i) & 1u ? letters[i] : char(letters[i] - 'A' + 'a');
    else
      text[size_t(i)] = squares[Y(i) * kSize + X(i)];
  }
  return text;
}

std::string ExactPlay::Shown() const {
  std::string text(letters, length);
  for (int i = 0; i < length; ++i)
    if ((blank >> i) & 1u) text[size_t(i)] = char(letters[i] - 'A' + 'a');
  return text;
}

bool PlayBefore(const ExactPlay& a, const ExactPlay& b) {
  if (a.points != b.points) return a.points > b.points;
  if (a.blanks != b.blanks) return a.blanks < b.blanks;
  if (a.tiles != b.tiles) return a.tiles < b.tiles;
  const int order = std::memcmp(a.letters, b.letters, std::min(a.length, b.length));
  if (order != 0) return order < 0;
  if (a.length != b.length) return a.length < b.length;
  if (a.down != b.down) return !a.down;
  if (a.row != b.row) return a.row < b.row;
  if (a.column != b.column) return a.column < b.column;
  return a.blank < b.blank;
}

ExactMoves::ExactMoves(const WordGraph& graph) : graph_(graph) {}

const std::vector<ExactPlay>& ExactMoves::All(const char* squares, bool firstPlay, std::string_view rack) {
  Run(squares, firstPlay, rack, Mode::All);
  // Blanks laid on one occurrence of a letter or another: one play for each
  // number of points, the first of the order kept (the fewest blanks).
  const auto samePlace = [](const ExactPlay& a, const ExactPlay& b) {
    if (a.down != b.down) return a.down < b.down;
    if (a.row != b.row) return a.row < b.row;
    if (a.column != b.column) return a.column < b.column;
    if (a.length != b.length) return a.length < b.length;
    if (const int order = std::memcmp(a.letters, b.letters, a.length)) return order < 0;
    if (a.points != b.points) return a.points < b.points;
    return PlayBefore(a, b);
  };
  const auto samePlay = [](const ExactPlay& a, const ExactPlay& b) {
    return a.down == b.down && a.row == b.row && a.column == b.column && a.length == b.length &&
           a.points == b.points && std::memcmp(a.letters, b.letters, a.length) == 0;
  };
  if (blanks_ > 0) {
    std::sort(plays_.begin(), plays_.end(), samePlace);
    plays_.erase(std::unique(plays_.begin(), plays_.end(), samePlay), plays_.end());
  }
  std::sort(plays_.begin(), plays_.end(), PlayBefore);
  return plays_;
}

std::optional<ExactPlay> ExactMoves::Best(const char* squares, bool firstPlay, std::string_view rack) {
  Run(squares, firstPlay, rack, Mode::Best);
  if (!haveBest_) return std::nullopt;
  return best_;
}

void ExactMoves::Run(const char* squares, bool firstPlay, std::string_view rack, Mode mode) {
  mode_ = mode;
  stats_ = Stats{};
  plays_.clear();
  haveBest_ = false;
  count_.fill(0);
  blanks_ = 0;
  rackSize_ = 0;
  for (const char c : rack) {
    if (rackSize_ == 7) break;
    if (c == '?') {
      rackValues_[rackSize_++] = 0;
      ++blanks_;
    } else if (c >= 'a' && c <= 'z') {
      rackValues_[rackSize_++] = Value(c - 'a');
      ++count_[size_t(c - 'a')];
    } else if (c >= 'A' && c <= 'Z') {
      rackValues_[rackSize_++] = Value(c - 'A');
      ++count_[size_t(c - 'A')];
    }
  }
  std::sort(rackValues_, rackValues_ + rackSize_, [](int a, int b) { return a > b; });
  if (rackSize_ == 0 || graph_.Empty()) return;
  Pass(squares, false, firstPlay);
  char turned[225];
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) turned[y * kSize + x] = squares[x * kSize + y];
  Pass(turned, true, firstPlay);
}

uint32_t ExactMoves::CrossSet(const char* board, int x, int y, int16_t& sum, bool& crossed) const {
  int top = y, bottom = y;
  while (top > 0 && board[(top - 1) * kSize + x]) --top;
  while (bottom < kSize - 1 && board[(bottom + 1) * kSize + x]) ++bottom;
  sum = 0;
  crossed = top < y || bottom > y;
  if (!crossed) return kAllLetters;
  uint32_t node = graph_.Root();
  for (int r = top; r < y; ++r) {
    const char c = board[r * kSize + x];
    if (c >= 'a') sum = int16_t(sum + Value(c - 'a'));
    node = graph_.Child(node, LetterOf(c));
    if (!node) return 0;
  }
  for (int r = y + 1; r <= bottom; ++r) {
    const char c = board[r * kSize + x];
    if (c >= 'a') sum = int16_t(sum + Value(c - 'a'));
  }
  const WordGraph::Node& above = graph_.At(node);
  if (bottom == y) return above.ends;
  uint32_t allowed = 0;
  for (uint32_t letters = above.children; letters; letters &= letters - 1) {
    const int letter = __builtin_ctz(letters);
    uint32_t n = graph_.Child(node, letter);
    for (int r = y + 1; r < bottom && n; ++r) n = graph_.Child(n, LetterOf(board[r * kSize + x]));
    if (n && ((graph_.At(n).ends >> LetterOf(board[bottom * kSize + x])) & 1u)) allowed |= 1u << letter;
  }
  return allowed;
}

void ExactMoves::PrepareSquares(const char* board, bool firstPlay) {
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) {
      Square& s = squares_[size_t(y * kSize + x)];
      const char c = board[y * kSize + x];
      if (c) {
        s = Square{};
        s.tile = int8_t(LetterOf(c));
        s.tileValue = int8_t(c >= 'a' ? Value(c - 'a') : 0);
        continue;
      }
      s.tile = -1;
      s.tileValue = 0;
      if (firstPlay) {
        s.anchor = x == kCentre && y == kCentre;
        s.cross = kAllLetters;
        s.crossSum = 0;
        s.crossed = false;
        continue;
      }
      s.anchor = Occupied(board, x - 1, y) || Occupied(board, x + 1, y) || Occupied(board, x, y - 1) ||
                 Occupied(board, x, y + 1);
      if (s.anchor) {
        s.cross = CrossSet(board, x, y, s.crossSum, s.crossed);
      } else {
        s.cross = kAllLetters;
        s.crossSum = 0;
        s.crossed = false;
      }
    }
}

void ExactMoves::Pass(const char* board, bool down, bool firstPlay) {
  down_ = down;
  PrepareSquares(board, firstPlay);
  for (int row = 0; row < kSize; ++row) {
    row_ = row;
    line_ = &squares_[size_t(row * kSize)];
    for (int x = 0; x < kSize; ++x) letter_[x] = line_[x].tile;
    int emptyRun = 0;  // free squares touching nothing just left of the column
    for (int anchor = 0; anchor < kSize; ++anchor) {
      const Square& s = line_[anchor];
      if (!s.anchor) {
        emptyRun = s.tile < 0 ? emptyRun + 1 : 0;
        continue;
      }
      ++stats_.anchors;
      anchor_ = anchor;
      if (s.cross) {
        if (anchor > 0 && line_[anchor - 1].tile >= 0) {
          // The tiles on the left are the start of the word.
          int start = anchor;
          while (start > 0 && line_[start - 1].tile >= 0) --start;
          uint32_t node = graph_.Root();
          int mainSum = 0;
          for (int x = start; x < anchor && node; ++x) {
            node = graph_.Child(node, line_[x].tile);
            mainSum += line_[x].tileValue;
          }
          if (node) {
            start_ = start;
            ExtendRight(node, anchor, false, mainSum, 1, 0, 0);
          }
        } else {
          LeftPart(graph_.Root(), std::min(emptyRun, rackSize_ - 1), 0);
        }
      }
      emptyRun = 0;
    }
  }
}

void ExactMoves::LeftPart(uint32_t node, int limit, int leftLength) {
  StartRight(node, leftLength);
  if (limit <= 0) return;
  const uint32_t children = graph_.At(node).children;
  for (uint32_t letters = children; letters; letters &= letters - 1) {
    const int letter = __builtin_ctz(letters);
    const uint32_t child = graph_.Child(node, letter);
    ++stats_.steps;
    leftLetter_[leftLength] = int8_t(letter);
    if (count_[size_t(letter)] > 0) {
      --count_[size_t(letter)];
      leftBlank_[leftLength] = false;
      LeftPart(child, limit - 1, leftLength + 1);
      ++count_[size_t(letter)];
    }
    if (blanks_ > 0) {
      --blanks_;
      leftBlank_[leftLength] = true;
      LeftPart(child, limit - 1, leftLength + 1);
      ++blanks_;
    }
  }
}

void ExactMoves::StartRight(uint32_t node, int leftLength) {
  // The letters on the left lie on free squares that touch nothing: no
  // cross word, their premiums only.
  start_ = anchor_ - leftLength;
  int mainSum = 0, wordFactor = 1;
  for (int k = 0; k < leftLength; ++k) {
    const int x = start_ + k;
    const Premium p = kPremium[size_t(row_ * kSize + x)];
    letter_[x] = leftLetter_[k];
    laid_[x] = true;
    blank_[x] = leftBlank_[k];
    mainSum += (leftBlank_[k] ? 0 : Value(leftLetter_[k])) * p.letter;
    wordFactor *= p.word;
  }
  ExtendRight(node, anchor_, false, mainSum, wordFactor, 0, leftLength);
  for (int k = 0; k < leftLength; ++k) {
    letter_[start_ + k] = -1;
    laid_[start_ + k] = false;
  }
}

void ExactMoves::ExtendRight(uint32_t node, int column, bool isWord, int mainSum, int wordFactor,
                             int crossTotal, int tiles) {
  if (column == kSize || line_[column].tile < 0) {
    if (isWord && column > anchor_) Record(column, mainSum, wordFactor, crossTotal, tiles);
    if (column == kSize || !node) return;
    const Square& s = line_[column];
    const WordGraph::Node& n = graph_.At(node);
    uint32_t letters = (n.children | n.ends) & s.cross;
    if (!blanks_) {
      uint32_t inRack = 0;
      for (uint32_t l = letters; l; l &= l - 1)
        if (count_[size_t(__builtin_ctz(l))] > 0) inRack |= l & (~l + 1);
      letters = inRack;
    }
    const Premium p = kPremium[size_t(row_ * kSize + column)];
    for (; letters; letters &= letters - 1) {
      const int letter = __builtin_ctz(letters);
      const uint32_t child = (n.children >> letter) & 1u ? graph_.Child(node, letter) : 0;
      const bool ends = (n.ends >> letter) & 1u;
      ++stats_.steps;
      letter_[column] = int8_t(letter);
      laid_[column] = true;
      for (int way = 0; way < 2; ++way) {
        const bool blank = way == 1;
        if (blank ? blanks_ == 0 : count_[size_t(letter)] == 0) continue;
        if (blank) --blanks_; else --count_[size_t(letter)];
        blank_[column] = blank;
        const int value = blank ? 0 : Value(letter) * p.letter;
        const int cross = s.crossed ? (s.crossSum + value) * p.word : 0;
        ExtendRight(child, column + 1, ends, mainSum + value, wordFactor * p.word, crossTotal + cross,
                    tiles + 1);
        if (blank) ++blanks_; else ++count_[size_t(letter)];
      }
      letter_[column] = -1;
      laid_[column] = false;
      blank_[column] = false;
    }
    return;
  }
  // A tile of the board: the word goes through it.
  const int letter = line_[column].tile;
  const WordGraph::Node& n = graph_.At(node);
  if (!node || !(((n.children | n.ends) >> letter) & 1u)) return;
  ++stats_.steps;
  const uint32_t child = (n.children >> letter) & 1u ? graph_.Child(node, letter) : 0;
  ExtendRight(child, column + 1, (n.ends >> letter) & 1u, mainSum + line_[column].tileValue, wordFactor,
              crossTotal, tiles);
}

void ExactMoves::Record(int end, int mainSum, int wordFactor, int crossTotal, int tiles) {
  if (tiles == 1 && !down_) {
    // A single tile with a tile above or below it is a play down.
    int x = start_;
    while (!laid_[x]) ++x;
    if (line_[x].crossed) return;
  }
  ++stats_.plays;
  ExactPlay play;
  play.points = int16_t(mainSum * wordFactor + crossTotal + (tiles == 7 ? kBonus : 0));
  play.down = down_;
  play.row = uint8_t(down_ ? start_ : row_);
  play.column = uint8_t(down_ ? row_ : start_);
  play.length = uint8_t(end - start_);
  play.tiles = uint8_t(tiles);
  for (int i = 0; i < play.length; ++i) {
    const int x = start_ + i;
    play.letters[i] = char('A' + letter_[x]);
    if (laid_[x]) {
      play.laid |= uint16_t(1u << i);
      if (blank_[x]) {
        play.blank |= uint16_t(1u << i);
        ++play.blanks;
      }
    }
  }
  if (mode_ == Mode::All) {
    plays_.push_back(play);
  } else if (!haveBest_ || PlayBefore(play, best_)) {
    best_ = play;
    haveBest_ = true;
  }
}

}  // namespace ostrane
