#include "engine/scoring.h"

#include <algorithm>
#include <iterator>

#include "engine/board.h"
#include "lexicon/fatal.h"
#include "lexicon/tables.h"

namespace ostrane {
namespace {

// Letter and word factors of a premium code.
inline int LetterFactor(char prime) { return prime == '1' ? 2 : prime == '2' ? 3 : 1; }
inline int WordFactor(char prime) { return prime == '3' ? 2 : prime == '4' ? 3 : 1; }

}  // namespace

Expression SplitExpression(std::string_view text) {
  Expression expression;
  const size_t blank = text.find(' ');
  if (blank == std::string_view::npos) {
    expression.word = text;
    return expression;
  }
  expression.hasBlank = true;
  expression.word = text.substr(0, blank);
  const size_t open = text.find('(', blank);
  if (open != std::string_view::npos) {
    const size_t close = text.find(')', open + 1);
    expression.blanks = text.substr(open + 1, close == std::string_view::npos
                                                  ? std::string_view::npos
                                                  : close - open - 1);
  }
  return expression;
}

int16_t ClsPlateau::SubScoreLetters(char car) {
  const unsigned code = static_cast<unsigned char>(car);
  if (code < 97) return 0;
  if (code > 122) FatalIndex("ValeursLettres", long(code) - 97);
  return ValeursLettres[code - 97];
}

int16_t ClsPlateau::SubScoreLetters(std::string_view car) {
  return car.empty() ? 0 : SubScoreLetters(car.front());
}

int16_t ClsPlateau::SubPointsMot(std::string& word, int row, int start) const {
  Yield();
  const int length = int(word.size());
  // Every square the word covers is read first: one outside the board ends
  // the program there.
  if (row < 0 || row >= kSize || start < 0 || start + length > kSize)
    for (int i = 0; i < length; ++i) CheckSquare(start + i, row);
  if (start > 14) return 0;  // nothing laid and nothing to read
  CheckSquare(start, row);
  const char* const line = &squares_[size_t(row) * kSize];

  // Lay the word on the working row: the board's own tiles replace the
  // expression's letters, in the board's case.
  int newTiles = 0;
  for (int i = 0; i < length; ++i) {
    const char real = line[start + i];
    if (real == '\0')
      ++newTiles;
    else
      word[size_t(i)] = real;
  }
  const int bonus = newTiles == 7 ? 50 : 0;

  // Main word, from the start rightward while the squares are occupied. Only
  // a new tile (a square empty on the board) takes its premium.
  int factor = 1, sum = 0, points = 0;
  int x = start;
  for (; x <= 14 && x < start + length; ++x) {
    const char c = word[size_t(x - start)];
    int value = SubScoreLetters(c);
    if (line[x] == '\0') {
      const char prime = PrimeAt(x, row);
      value *= LetterFactor(prime);
      factor *= WordFactor(prime);
    }
    sum += value;
  }
  for (; x <= 14 && line[x] != '\0'; ++x) sum += SubScoreLetters(line[x]);
  points = sum * factor;

  // Cross-words of the new tiles.
  for (int i = 0; i < length && start + i <= 14; ++i) {
    const int column = start + i;
    const char c = word[size_t(i)];
    if (line[column] != '\0' || c == '?') continue;
    int crossSum = 0;
    bool crossed = false;
    for (int y = row - 1; y >= 0 && At(column, y) != '\0'; --y) {
      crossSum += SubScoreLetters(At(column, y));
      crossed = true;
    }
    for (int y = row + 1; y <= 14 && At(column, y) != '\0'; ++y) {
      crossSum += SubScoreLetters(At(column, y));
      crossed = true;
    }
    if (!crossed) continue;
    const char prime = PrimeAt(column, row);
    crossSum += SubScoreLetters(c) * LetterFactor(prime);
    points += crossSum * WordFactor(prime);
  }
  return int16_t(points + bonus);
}

ClsWord ClsPlateau::ScoreExpression(const Expression& expression, int row, int start,
                                    int orientation, std::string_view position) const {
  ClsWord result;
  std::string placeText;
  const auto place = [&] {
    if (placeText.empty()) placeText = orientation != 0 ? SubTurnPlace(position) : std::string(position);
    return placeText;
  };
  const std::string_view word = expression.word;
  const int length = int(word.size());
  const bool inside = row >= 0 && row < kSize && start >= 0 && start + length <= kSize;
  // Whether the square under letter i is free (a square outside the board
  // ends the program).
  const auto freeAt = [&](int i) {
    return (inside ? At(start + i, row) : Square(start + i, row)) == '\0';
  };

  if (!expression.hasBlank) {
    std::string laid(word);
    result.CountP = SubPointsMot(laid, row, start);
    result.Express = std::move(laid);
    result.Place = place();
    return result;
  }

  const std::string_view blanks = expression.blanks;
  if (blanks.size() == 1) {
    // Each occurrence of the letter on a free square is tried as the blank;
    // among equal scores the last one wins.
    const char b = blanks.front();
    for (int i = 0; i < length; ++i) {
      const bool free = freeAt(i);
      if (word[size_t(i)] != b || !free) continue;
      std::string copy(word);
      copy[size_t(i)] = UpperAscii(copy[size_t(i)]);
      const int16_t points = SubPointsMot(copy, row, start);
      if (points >= result.CountP) {
        result.CountP = points;
        result.Express = std::move(copy);
        result.Place = place();
      }
    }
    return result;
  }

  // Two letters (or none): the points are those of the first copy, where
  // only the first blank shows; the expression kept is the second copy,
  // where both do.
  for (int i = 0; i < length; ++i) {
    const bool freeI = freeAt(i);
    if (blanks.empty() || word[size_t(i)] != blanks.front() || !freeI) continue;
    std::string first(word);
    first[size_t(i)] = UpperAscii(first[size_t(i)]);
    bool scored = false;
    int16_t points = 0;
    for (int j = 0; j < length; ++j) {
      const bool freeJ = freeAt(j);
      if (first[size_t(j)] != blanks.back() || !freeJ) continue;
      // Made before the first scoring writes the board's letters into the
      // first copy.
      std::string second(first);
      second[size_t(j)] = UpperAscii(second[size_t(j)]);
      if (!scored) {
        points = SubPointsMot(first, row, start);
        scored = true;
      }
      if (points >= result.CountP) {
        result.CountP = points;
        result.Express = std::move(second);
        result.Place = place();
      }
    }
  }
  return result;
}

ClsWord ClsPlateau::SubScoreH(std::string_view mot, std::string_view position, int orientation) {
  const int row = SubTrouverLigne(position);
  const int start = SubColumn(position);
  return ScoreExpression(SplitExpression(mot), row, start, orientation, position);
}

// ================================================================ pass scores

namespace {

struct Factors {
  uint8_t letter[225];
  uint8_t word[225];
};

constexpr Factors MakeFactors() {
  Factors f{};
  for (int y = 0; y < 15; ++y)
    for (int x = 0; x < 15; ++x) {
      const char prime = kPrimeRows[size_t(y)][size_t(x)];
      f.letter[y * 15 + x] = uint8_t(prime == '1' ? 2 : prime == '2' ? 3 : 1);
      f.word[y * 15 + x] = uint8_t(prime == '3' ? 2 : prime == '4' ? 3 : 1);
    }
  return f;
}

constexpr Factors kFactors = MakeFactors();

// Writes the position of a play: "H8" across, "8H" down (the turned place).
void PlaceText(int row, int start, int orientation, FlatPlay& out) {
  char* const text = out.place;
  size_t n = 0;
  const auto number = [&](int value) {
    if (value >= 10) text[n++] = char('0' + value / 10);
    text[n++] = char('0' + value % 10);
  };
  if (orientation != 0) {
    number(row + 1);
    text[n++] = char(65 + start);
  } else {
    text[n++] = char(65 + row);
    number(start + 1);
  }
  out.placeLength = uint8_t(n);
}

}  // namespace

void PassScores::Begin(const char* squares) {
  squares_ = squares;
  usable_ = true;
  for (int k = 0; k < 225; ++k)
    if (static_cast<unsigned char>(squares[k]) > 'z') usable_ = false;
  if (++stamp_ == 0) {
    std::fill(std::begin(rowStamp_), std::end(rowStamp_), 0u);
    stamp_ = 1;
  }
}

void PassScores::PrepareRow(int row) {
  rowStamp_[row] = stamp_;
  for (int x = 0; x < 15; ++x) {
    const int k = row * 15 + x;
    const char tile = squares_[k];
    if (tile != '\0') {
      value_[k] = ClsPlateau::SubScoreLetters(tile);
      crossSum_[k] = 0;
      crossed_[k] = false;
      continue;
    }
    value_[k] = 0;
    int sum = 0;
    bool crossed = false;
    for (int y = row - 1; y >= 0 && squares_[y * 15 + x] != '\0'; --y) {
      sum += ClsPlateau::SubScoreLetters(squares_[y * 15 + x]);
      crossed = true;
    }
    for (int y = row + 1; y <= 14 && squares_[y * 15 + x] != '\0'; ++y) {
      sum += ClsPlateau::SubScoreLetters(squares_[y * 15 + x]);
      crossed = true;
    }
    crossSum_[k] = int16_t(sum);
    crossed_[k] = crossed;
  }
}

void PassScores::Score(std::string_view word, bool hasBlank, std::string_view blanks, int row,
                       int start, int orientation, FlatPlay& out) {
  if (rowStamp_[row] != stamp_) PrepareRow(row);
  const int length = int(word.size());
  if (length > int(FlatPlay::kExpress)) FatalIndex("FlatPlay", length);
  const char* const line = squares_ + row * 15;
  const int base = row * 15 + start;
  const char b1 = blanks.empty() ? '\0' : blanks.front();
  const char b2 = blanks.empty() ? '\0' : blanks.back();

  // The word laid as it is: the board's tiles count as they stand, a new
  // tile by its letter and its square's premium. What a blank on the free
  // square i would take away is its letter's part in the main word and, times
  // the square's word factor, in its cross-word. On the way: the free squares
  // whose letter is the first blank letter, and those of the last one.
  int sum = 0, factor = 1, cross = 0, newTiles = 0;
  int letterPart[16], crossPart[16];
  uint32_t firstBlank = 0, lastBlank = 0;
  for (int i = 0; i < length; ++i) {
    const int k = base + i;
    if (line[start + i] != '\0') {
      sum += value_[k];
      continue;
    }
    ++newTiles;
    const char c = word[size_t(i)];
    const int part = ClsPlateau::SubScoreLetters(c) * kFactors.letter[k];
    const int wordFactor = kFactors.word[k];
    sum += part;
    factor *= wordFactor;
    letterPart[i] = part;
    crossPart[i] = 0;
    if (crossed_[k]) {
      cross += (crossSum_[k] + part) * wordFactor;
      crossPart[i] = part * wordFactor;
    }
    firstBlank |= uint32_t(c == b1) << i;
    lastBlank |= uint32_t(c == b2) << i;
  }
  for (int x = start + length; x <= 14 && line[x] != '\0'; ++x) sum += value_[row * 15 + x];
  const int bonus = newTiles == 7 ? 50 : 0;
  const auto pointsWithBlankAt = [&](int i) {
    return int16_t((sum - letterPart[i]) * factor + cross - crossPart[i] + bonus);
  };
  char* const text = out.express;
  const auto laid = [&] {
    for (int i = 0; i < length; ++i) text[i] = line[start + i] != '\0' ? line[start + i] : word[size_t(i)];
    out.expressLength = uint8_t(length);
  };

  out.expressLength = 0;
  out.placeLength = 0;
  out.whole = -1;
  out.CountP = 0;
  if (!hasBlank) {
    out.CountP = int16_t(sum * factor + cross + bonus);
    laid();
    PlaceText(row, start, orientation, out);
    return;
  }

  if (blanks.size() == 1) {
    // Each free occurrence of the letter is tried; the last of equals wins.
    int best = -1;
    for (uint32_t left = firstBlank; left != 0; left &= left - 1) {
      const int i = __builtin_ctz(left);
      const int16_t points = pointsWithBlankAt(i);
      if (points >= out.CountP) {
        out.CountP = points;
        best = i;
      }
    }
    if (best < 0) return;
    laid();
    text[best] = UpperAscii(text[best]);
    PlaceText(row, start, orientation, out);
    return;
  }

  // Two letters (or none): each first blank i is tried with each last blank
  // j after it in the word's order; the points leave the second blank at its
  // full value, so they are the same for every j of one i, and of equals the
  // last pair wins. The expression shows both blanks; the second copy made
  // first for an i (its only one when i has a single j) still holds the
  // word's own letters where the board has tiles, the later ones the board's.
  if (blanks.empty()) return;
  int bestI = -1, bestJ = -1;
  bool bestBeforeLaying = false;
  for (uint32_t left = firstBlank; left != 0; left &= left - 1) {
    const int i = __builtin_ctz(left);
    // The first copy shows letter i in upper case.
    uint32_t seconds = lastBlank & ~(1u << i);
    if (UpperAscii(word[size_t(i)]) == b2) seconds |= 1u << i;
    if (seconds == 0) continue;
    const int16_t points = pointsWithBlankAt(i);
    if (points >= out.CountP) {
      out.CountP = points;
      bestI = i;
      bestJ = 31 - __builtin_clz(seconds);
      bestBeforeLaying = (seconds & (seconds - 1)) == 0;
    }
  }
  if (bestI < 0) return;
  if (bestBeforeLaying) {
    word.copy(text, size_t(length));
    out.expressLength = uint8_t(length);
  } else {
    laid();
  }
  text[bestI] = UpperAscii(text[bestI]);
  text[bestJ] = UpperAscii(text[bestJ]);
  PlaceText(row, start, orientation, out);
}

}  // namespace ostrane
