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

}  // namespace ostrane
