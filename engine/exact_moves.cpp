#include "engine/exact_moves.h"

#include <algorithm>
#include <cstdlib>
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

namespace {

uint64_t KeyOf(const ExactPlay& p) {
  uint64_t key = uint64_t(0x7FFF - std::clamp<int>(p.points, -1, 0x7FFE)) << 48;
  key |= uint64_t(p.blanks & 3) << 46;
  key |= uint64_t(p.tiles & 7) << 43;
  for (int i = 0; i < 8; ++i) key |= uint64_t(i < p.length ? p.letters[i] - 'A' + 1 : 0) << (38 - 5 * i);
  return key;
}

bool SameKeyBefore(const ExactPlay& a, const ExactPlay& b) {
  if (a.points != b.points) return a.points > b.points;
  if (a.blanks != b.blanks) return a.blanks < b.blanks;
  if (a.tiles != b.tiles) return a.tiles < b.tiles;
  const int order = std::memcmp(a.letters, b.letters, std::min(a.length, b.length));
  if (order != 0) return order < 0;
  if (a.length != b.length) return a.length < b.length;
  if (a.down != b.down) return !a.down;
  if (a.row != b.row) return a.row < b.row;
  if (a.column != b.column) return a.column < b.column;
  // The same play with its blanks elsewhere: the first blank further left first.
  const uint32_t differ = uint32_t(a.blank ^ b.blank);
  return (a.blank & differ & (~differ + 1u)) != 0;
}

}  // namespace

bool PlayBefore(const ExactPlay& a, const ExactPlay& b) {
  const uint64_t ka = a.key ? a.key : KeyOf(a), kb = b.key ? b.key : KeyOf(b);
  if (ka != kb) return ka < kb;
  return SameKeyBefore(a, b);
}

int TruePoints(const char* squares, const ClsWord& play) {
  const std::string& place = play.Place;
  if (place.size() < 2 || place.size() > 3 || play.Express.empty()) return -1;
  const bool down = place[0] >= '0' && place[0] <= '9';
  const char rowLetter = down ? place.back() : place[0];
  const int number = std::atoi(place.c_str() + (down ? 0 : 1));
  const int row = rowLetter - 'A', column = number - 1;
  const int n = int(play.Express.size());
  if (row < 0 || row >= kSize || column < 0 || column >= kSize) return -1;
  if ((down ? row : column) + n > kSize) return -1;
  const int dx = down ? 0 : 1, dy = down ? 1 : 0;
  const auto at = [squares](int x, int y) {
    return x < 0 || x >= kSize || y < 0 || y >= kSize ? char(0) : squares[y * kSize + x];
  };
  const auto value = [](char c) { return c >= 'a' && c <= 'z' ? Value(c - 'a') : 0; };
  int sum = 0, factor = 1, cross = 0, tiles = 0;
  for (int i = 0; i < n; ++i) {
    const int x = column + dx * i, y = row + dy * i;
    if (const char board = at(x, y)) {
      sum += value(board);
      continue;
    }
    const char letter = play.Express[size_t(i)];
    const Premium p = kPremium[size_t(y * kSize + x)];
    const int v = value(letter) * p.letter;
    ++tiles;
    sum += v;
    factor *= p.word;
    // The word across the new tile, when it makes one.
    int before = 0, after = 0, crossSum = 0;
    while (const char c = at(x - dy * (before + 1), y - dx * (before + 1))) {
      crossSum += value(c);
      ++before;
    }
    while (const char c = at(x + dy * (after + 1), y + dx * (after + 1))) {
      crossSum += value(c);
      ++after;
    }
    if (before + after > 0) cross += (crossSum + v) * p.word;
  }
  return sum * factor + cross + (tiles == 7 ? kBonus : 0);
}

ExactMoves::ExactMoves(const WordGraph& graph) : graph_(graph) {}

const std::vector<ExactPlay>& ExactMoves::All(const char* squares, bool firstPlay, std::string_view rack) {
  Run(squares, firstPlay, rack, Mode::All);
  std::sort(plays_.begin(), plays_.end(), [](const ExactPlay& a, const ExactPlay& b) {
    return a.key != b.key ? a.key < b.key : SameKeyBefore(a, b);
  });
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
  blankFor_.fill(0);
  blanks_ = 0;
  rackSize_ = 0;
  rackLetters_ = 0;
  int values[16] = {};  // (room for the sort's own threshold)
  for (const char c : rack) {
    if (rackSize_ == 7) break;
    int letter = -1;
    if (c >= 'a' && c <= 'z') letter = c - 'a';
    if (c >= 'A' && c <= 'Z') letter = c - 'A';
    if (c == '?') {
      values[rackSize_++] = 0;
      ++blanks_;
    } else if (letter >= 0) {
      values[rackSize_++] = Value(letter);
      ++count_[size_t(letter)];
      rackLetters_ |= 1u << letter;
    }
  }
  inRack_ = count_;
  rackBlanks_ = blanks_;
  std::sort(values, values + rackSize_, [](int a, int b) { return a > b; });
  topValues_[0] = 0;
  for (int k = 0; k < 7; ++k) topValues_[k + 1] = topValues_[k] + (k < rackSize_ ? values[k] : 0);
  highest_ = rackSize_ > 0 ? values[0] : 0;
  if (rackSize_ == 0 || graph_.Empty()) return;

  PrepareSquares(squares, false, firstPlay);
  char turned[225];
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) turned[y * kSize + x] = squares[x * kSize + y];
  PrepareSquares(turned, true, firstPlay);

  // The anchors of both passes, each with how many free squares that touch
  // nothing lie just left of it (the letters laid left of the anchor).
  anchors_.clear();
  reachMade_[0] = reachMade_[1] = 0;
  for (const bool down : {false, true}) {
    for (int row = 0; row < kSize; ++row) {
      EnterRow(down, row);
      int emptyRun = 0;
      for (int x = 0; x < kSize; ++x) {
        const Square& sq = line_[x];
        if (!sq.anchor) {
          emptyRun = sq.tile < 0 ? emptyRun + 1 : 0;
          continue;
        }
        ++stats_.anchors;
        const int leftLimit = std::min(emptyRun, rackSize_ - 1);
        emptyRun = 0;
        if (!sq.cross) continue;
        int bound = 0;
        if (mode_ == Mode::Best) {
          bound = AnchorBound(x, leftLimit);
          if (!((reachMade_[down ? 1 : 0] >> row) & 1u)) MakeReach(down, row);
        }
        anchors_.push_back(Anchor{int16_t(bound), down, uint8_t(row), uint8_t(x), uint8_t(leftLimit)});
      }
    }
  }
  if (mode_ == Mode::Best) {
    // Most promising first; once no anchor can reach the best play found,
    // the rest cannot either.
    std::stable_sort(anchors_.begin(), anchors_.end(),
                     [](const Anchor& a, const Anchor& b) { return a.bound > b.bound; });
  }
  for (size_t k = 0; k < anchors_.size(); ++k) {
    const Anchor& a = anchors_[k];
    if (mode_ == Mode::Best && haveBest_ && a.bound < best_.points) {
      stats_.anchorsSkipped += int64_t(anchors_.size() - k);
      break;
    }
    EnterRow(a.down, a.row);
    SearchAnchor(a.column, a.leftLimit);
  }
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

void ExactMoves::PrepareSquares(const char* board, bool down, bool firstPlay) {
  std::array<Square, 225>& squares = squares_[down ? 1 : 0];
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) {
      Square& s = squares[size_t(y * kSize + x)];
      const char c = board[y * kSize + x];
      s = Square{};
      if (c) {
        s.tile = int8_t(LetterOf(c));
        s.tileValue = int8_t(c >= 'a' ? Value(c - 'a') : 0);
        continue;
      }
      s.cross = kAllLetters;
      if (firstPlay) {
        s.anchor = x == kCentre && y == kCentre;
        continue;
      }
      s.anchor = Occupied(board, x - 1, y) || Occupied(board, x + 1, y) || Occupied(board, x, y - 1) ||
                 Occupied(board, x, y + 1);
      if (s.anchor) s.cross = CrossSet(board, x, y, s.crossSum, s.crossed);
    }
}

void ExactMoves::EnterRow(bool down, int row) {
  down_ = down;
  row_ = row;
  line_ = &squares_[down ? 1 : 0][size_t(row * kSize)];
  for (int x = 0; x < kSize; ++x) {
    const Premium p = kPremium[size_t(row * kSize + x)];
    letterFactor_[x] = p.letter;
    wordFactor_[x] = p.word;
    letter_[x] = line_[x].tile;
    laid_[x] = false;
  }
}

void ExactMoves::SearchAnchor(int anchor, int leftLimit) {
  anchor_ = anchor;
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
    if (!node) return;
    start_ = start;
    if (mode_ == Mode::Best && haveBest_ && RightBound(anchor, rackSize_, mainSum, 1, 0) < best_.points)
      return;
    ExtendRight(node, anchor, false, mainSum, 1, 0, 0);
  } else {
    LeftPart(graph_.Root(), leftLimit, 0);
  }
}

namespace {

// The most that k tiles of the rack can add to a word laid over free squares
// of which n3 triple and n2 double their letter: the highest values on the
// highest factors (`top[k]` the sum of the k highest values).
int LettersAtMost(const int* top, int k, int n3, int n2) {
  return 3 * top[n3] + 2 * (top[n3 + n2] - top[n3]) + (top[k] - top[n3 + n2]);
}

}  // namespace

int ExactMoves::AnchorBound(int anchor, int leftLimit) const {
  // Any play from this anchor covers the anchor, perhaps free squares on its
  // left (that touch nothing) or the tiles there, and squares on its right up
  // to where it ends (before a free square or the edge).
  int best = 0;
  const bool tilesLeft = anchor > 0 && line_[anchor - 1].tile >= 0;
  int leftSum = 0;
  if (tilesLeft)
    for (int x = anchor - 1; x >= 0 && line_[x].tile >= 0; --x) leftSum += line_[x].tileValue;
  for (int m = 0; m <= (tilesLeft ? 0 : leftLimit); ++m) {
    int k = m, n2 = 0, n3 = 0, wordFactor = 1, boardSum = leftSum, crossFixed = 0, crossLetter = 0;
    for (int x = anchor - m; x < anchor; ++x) {
      n2 += letterFactor_[x] == 2;
      n3 += letterFactor_[x] == 3;
      wordFactor *= wordFactor_[x];
    }
    for (int e = anchor; e < kSize; ++e) {
      const Square& s = line_[e];
      if (s.tile >= 0) {
        boardSum += s.tileValue;
      } else {
        if (!s.cross || ++k > rackSize_) break;
        n2 += letterFactor_[e] == 2;
        n3 += letterFactor_[e] == 3;
        wordFactor *= wordFactor_[e];
        if (s.crossed) {
          crossFixed += s.crossSum * wordFactor_[e];
          crossLetter += letterFactor_[e] * wordFactor_[e];
        }
      }
      if (e + 1 < kSize && line_[e + 1].tile >= 0) continue;  // the word would go on
      const int value = (boardSum + LettersAtMost(topValues_, k, n3, n2)) * wordFactor + crossFixed +
                        highest_ * crossLetter + (k == 7 ? kBonus : 0);
      best = std::max(best, value);
    }
  }
  return best;
}

void ExactMoves::MakeReach(bool down, int row) {
  reachMade_[down ? 1 : 0] |= 1u << row;
  const Square* line = &squares_[down ? 1 : 0][size_t(row * kSize)];
  const uint32_t usable = rackBlanks_ > 0 ? kAllLetters : rackLetters_;
  for (int c = 0; c <= kSize; ++c) {
    // The best of the ends with exactly k more tiles, then the best of those
    // with at most t.
    Reach exactly[8];
    int k = 0, n2 = 0, n3 = 0, factor = 1, boardSum = 0, crossFixed = 0, crossLetter = 0;
    if (c == kSize) {
      exactly[0] = Reach{1, 0, 0};
    }
    for (int e = c; e < kSize; ++e) {
      const Square& s = line[e];
      const Premium p = kPremium[size_t(row * kSize + e)];
      if (s.tile >= 0) {
        boardSum += s.tileValue;
      } else {
        if (!(s.cross & usable) || ++k > rackSize_) break;
        n2 += p.letter == 2;
        n3 += p.letter == 3;
        factor *= p.word;
        if (s.crossed) {
          crossFixed += s.crossSum * p.word;
          crossLetter += p.letter * p.word;
        }
      }
      if (e + 1 < kSize && line[e + 1].tile >= 0) continue;  // the word would go on
      Reach& r = exactly[k];
      r.factor = std::max(r.factor, factor);
      r.lettersTimesFactor =
          std::max(r.lettersTimesFactor, (boardSum + LettersAtMost(topValues_, k, n3, n2)) * factor);
      r.rest = std::max(r.rest, crossFixed + highest_ * crossLetter);
    }
    Reach best;
    for (int t = 0; t < 8; ++t) {
      const Reach& r = exactly[t];
      if (r.factor >= 0) {
        best.factor = std::max(best.factor, r.factor);
        best.lettersTimesFactor = std::max(best.lettersTimesFactor, r.lettersTimesFactor);
        best.rest = std::max(best.rest, r.rest);
      }
      Reach& out = reach_[down ? 1 : 0][row][c][t];
      out = best;
      // Seven tiles in all: the bonus, for the ends that take every tile left.
      if (r.factor >= 0 && rackSize_ == 7) out.rest = std::max(out.rest, r.rest + kBonus);
    }
  }
}

void ExactMoves::Take(int letter) {
  if (count_[size_t(letter)] > 0) {
    if (--count_[size_t(letter)] == 0) rackLetters_ &= ~(1u << letter);
  } else {
    --blanks_;
    ++blankFor_[size_t(letter)];
  }
}

void ExactMoves::GiveBack(int letter) {
  if (blankFor_[size_t(letter)] > 0) {
    --blankFor_[size_t(letter)];
    ++blanks_;
  } else if (count_[size_t(letter)]++ == 0) {
    rackLetters_ |= 1u << letter;
  }
}

void ExactMoves::LeftPart(uint32_t node, int limit, int leftLength) {
  StartRight(node, leftLength);
  if (limit <= 0) return;
  const uint32_t letters = graph_.At(node).children & (blanks_ > 0 ? kAllLetters : rackLetters_);
  for (uint32_t l = letters; l; l &= l - 1) {
    const int letter = __builtin_ctz(l);
    ++stats_.steps;
    leftLetter_[leftLength] = int8_t(letter);
    Take(letter);
    LeftPart(graph_.Child(node, letter), limit - 1, leftLength + 1);
    GiveBack(letter);
  }
}

void ExactMoves::StartRight(uint32_t node, int leftLength) {
  // The letters on the left lie on free squares that touch nothing: no
  // cross word, their premiums only.
  start_ = anchor_ - leftLength;
  int mainSum = 0, wordFactor = 1;
  for (int k = 0; k < leftLength; ++k) {
    const int x = start_ + k;
    mainSum += Value(leftLetter_[k]) * letterFactor_[x];
    wordFactor *= wordFactor_[x];
  }
  if (mode_ == Mode::Best && haveBest_ &&
      RightBound(anchor_, rackSize_ - leftLength, mainSum, wordFactor, 0) < best_.points)
    return;
  for (int k = 0; k < leftLength; ++k) {
    letter_[start_ + k] = leftLetter_[k];
    laid_[start_ + k] = true;
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
    if (mode_ == Mode::Best && haveBest_ &&
        RightBound(column, rackSize_ - tiles, mainSum, wordFactor, crossTotal) < best_.points)
      return;
    const Square& s = line_[column];
    const WordGraph::Node& n = graph_.At(node);
    const uint32_t letters = (n.children | n.ends) & s.cross & (blanks_ > 0 ? kAllLetters : rackLetters_);
    if (!letters) return;
    const int lf = letterFactor_[column], wf = wordFactor_[column];
    laid_[column] = true;
    for (uint32_t l = letters; l; l &= l - 1) {
      const int letter = __builtin_ctz(l);
      ++stats_.steps;
      const uint32_t child = (n.children >> letter) & 1u ? graph_.Child(node, letter) : 0;
      letter_[column] = int8_t(letter);
      const int value = Value(letter) * lf;
      const int cross = s.crossed ? (s.crossSum + value) * wf : 0;
      Take(letter);
      ExtendRight(child, column + 1, (n.ends >> letter) & 1u, mainSum + value, wordFactor * wf,
                  crossTotal + cross, tiles + 1);
      GiveBack(letter);
    }
    letter_[column] = -1;
    laid_[column] = false;
    return;
  }
  // A tile of the board: the word goes through it.
  const int letter = line_[column].tile;
  const WordGraph::Node& n = graph_.At(node);
  if (!node || !(((n.children | n.ends) >> letter) & 1u)) return;
  if (mode_ == Mode::Best && haveBest_ &&
      RightBound(column, rackSize_ - tiles, mainSum, wordFactor, crossTotal) < best_.points)
    return;
  ++stats_.steps;
  const uint32_t child = (n.children >> letter) & 1u ? graph_.Child(node, letter) : 0;
  ExtendRight(child, column + 1, (n.ends >> letter) & 1u, mainSum + line_[column].tileValue, wordFactor,
              crossTotal, tiles);
}

void ExactMoves::Record(int end, int mainSum, int wordFactor, int crossTotal, int tiles) {
  int fresh[7], delta[7], count = 0;
  int8_t used[26] = {};
  for (int x = start_; x < end; ++x) {
    if (!laid_[x]) continue;
    fresh[count] = x - start_;
    // What the points lose when this tile is a blank: its letter in the
    // main word and in its cross word.
    const int letter = letter_[x];
    delta[count] = Value(letter) * letterFactor_[x] * (wordFactor + (line_[x].crossed ? wordFactor_[x] : 0));
    ++used[letter];
    ++count;
  }
  if (tiles == 1 && !down_ && line_[start_ + fresh[0]].crossed) return;  // a single tile with a tile above or below is a play down
  ++stats_.plays;
  const int allReal = mainSum * wordFactor + crossTotal + (tiles == 7 ? kBonus : 0);

  // The letters beyond the rack's own are blanks; with blanks to spare, any
  // tile laid may be one. Each way of choosing them that gives other points
  // is a play of its own (in the best mode only the dearest matters).
  int8_t short_[26] = {};
  int shortBy = 0;
  for (int i = 0; i < count; ++i) {
    const int l = letter_[start_ + fresh[i]];
    if (used[l] > inRack_[size_t(l)] && short_[l] == 0) {
      short_[l] = int8_t(used[l] - inRack_[size_t(l)]);
      shortBy += short_[l];
    }
  }
  const auto make = [&](uint32_t mask, int points) {
    ExactPlay p;
    p.points = int16_t(points);
    p.down = down_;
    p.row = uint8_t(down_ ? start_ : row_);
    p.column = uint8_t(down_ ? row_ : start_);
    p.length = uint8_t(end - start_);
    p.tiles = uint8_t(tiles);
    for (int i = 0; i < p.length; ++i) {
      p.letters[i] = char('A' + letter_[start_ + i]);
      if (laid_[start_ + i]) p.laid |= uint16_t(1u << i);
    }
    for (int i = 0; i < count; ++i) {
      if (!((mask >> i) & 1u)) continue;
      p.blank |= uint16_t(1u << fresh[i]);
      ++p.blanks;
    }
    p.key = KeyOf(p);
    return p;
  };

  if (mode_ == Mode::Best) {
    // The blanks forced on the squares where they lose least.
    uint32_t chosen = 0;
    int points = allReal;
    if (shortBy > 0) {
      for (int l = 0; l < 26; ++l) {
        for (int need = short_[l]; need > 0; --need) {
          int pick = -1;
          for (int i = 0; i < count; ++i)
            if (!((chosen >> i) & 1u) && letter_[start_ + fresh[i]] == l && (pick < 0 || delta[i] < delta[pick]))
              pick = i;
          chosen |= 1u << pick;
          points -= delta[pick];
        }
      }
    }
    if (haveBest_ && points < best_.points) return;
    const ExactPlay p = make(chosen, points);
    if (!haveBest_ || PlayBefore(p, best_)) {
      best_ = p;
      haveBest_ = true;
    }
    return;
  }

  // Every choice of at most rackBlanks_ squares that covers what is short,
  // one play a number of points: the first of the order among equals.
  if (rackBlanks_ == 0) {
    plays_.push_back(make(0, allReal));
    return;
  }
  const auto covers = [&](uint32_t mask) {
    if (shortBy == 0) return true;
    int8_t onLetter[26] = {};
    for (int i = 0; i < count; ++i)
      if ((mask >> i) & 1u) ++onLetter[letter_[start_ + fresh[i]]];
    for (int i = 0; i < count; ++i) {
      const int l = letter_[start_ + fresh[i]];
      if (onLetter[l] < short_[l]) return false;
    }
    return true;
  };
  int keptPoints[1 + 7 + 21];
  int keptCount = 0;
  const auto offer = [&](uint32_t mask, int blanks, int points) {
    if (blanks < shortBy || !covers(mask)) return;
    for (int k = 0; k < keptCount; ++k)
      if (keptPoints[k] == points) return;  // the fewer blanks, then the blanks first, came first
    keptPoints[keptCount++] = points;
    plays_.push_back(make(mask, points));
  };
  offer(0, 0, allReal);
  if (rackBlanks_ >= 1)
    for (int i = 0; i < count; ++i) offer(1u << i, 1, allReal - delta[i]);
  if (rackBlanks_ >= 2)
    for (int i = 0; i < count; ++i)
      for (int j = i + 1; j < count; ++j) offer((1u << i) | (1u << j), 2, allReal - delta[i] - delta[j]);
}

}  // namespace ostrane
