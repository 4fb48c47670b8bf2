#include "engine/scoring.h"

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

  // Lay the word on the working row: the board's own tiles replace the
  // expression's letters, in the board's case.
  int newTiles = 0;
  for (int i = 0; i < length; ++i) {
    const char real = Square(start + i, row);
    if (real == '\0')
      ++newTiles;
    else
      word[size_t(i)] = real;
  }
  const int bonus = newTiles == 7 ? 50 : 0;
  if (start <= 14) CheckSquare(start, row);
  // The working square of column x: the word over its columns, the board
  // elsewhere (and on every other row).
  const auto working = [&](int x) {
    return (x >= start && x < start + length) ? word[size_t(x - start)] : At(x, row);
  };

  // Main word, from the start rightward while the squares are occupied.
  int factor = 1, sum = 0;
  for (int x = start; x <= 14; ++x) {
    const char c = working(x);
    if (c == '\0') break;
    int value = SubScoreLetters(c);
    if (c != At(x, row)) {
      const char prime = TabPrime(x, row);
      value *= LetterFactor(prime);
      factor *= WordFactor(prime);
    }
    sum += value;
  }
  int points = sum * factor;

  // Cross-words of the new tiles.
  for (int x = start; x <= 14; ++x) {
    const char c = working(x);
    if (c == At(x, row) || c == '?') continue;
    int top = row, bottom = row;
    while (top > 0 && At(x, top - 1) != '\0') --top;
    while (bottom < 14 && At(x, bottom + 1) != '\0') ++bottom;
    if (bottom == top) continue;
    int crossSum = 0;
    for (int y = top; y <= bottom; ++y)
      if (y != row) crossSum += SubScoreLetters(At(x, y));
    const char prime = TabPrime(x, row);
    crossSum += SubScoreLetters(c) * LetterFactor(prime);
    points += crossSum * WordFactor(prime);
  }
  return int16_t(points + bonus);
}

ClsWord ClsPlateau::ScoreExpression(const Expression& expression, int row, int start,
                                    int orientation, std::string_view position) const {
  ClsWord result;
  const auto place = [&] {
    return orientation != 0 ? SubTurnPlace(position) : std::string(position);
  };
  const std::string_view word = expression.word;
  const int length = int(word.size());

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
      const bool free = Square(start + i, row) == '\0';
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
    const bool freeI = Square(start + i, row) == '\0';
    if (blanks.empty() || word[size_t(i)] != blanks.front() || !freeI) continue;
    std::string first(word);
    first[size_t(i)] = UpperAscii(first[size_t(i)]);
    bool scored = false;
    int16_t points = 0;
    for (int j = 0; j < length; ++j) {
      const bool freeJ = Square(start + j, row) == '\0';
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

}  // namespace ostrane
