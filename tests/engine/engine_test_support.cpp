#include "tests/engine/engine_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "lexicon/expressions.h"
#include "lexicon/lexicon.h"

namespace ostrane::test {
namespace {

// Letter values of the game, A to Z.
constexpr int kValue[26] = {1, 3, 3, 2, 1, 4, 2, 4, 1, 8, 10, 1, 2,
                            1, 1, 3, 8, 1, 1, 1, 1, 4, 10, 10, 10, 10};

// Premium squares of the game: triple word, double word, triple letter,
// double letter, listed by (column, row) in one quarter and mirrored.
enum class Prime { None, DL, TL, DW, TW };

Prime PrimeAt(int x, int y) {
  // Fold onto the top-left quarter: the board is symmetric both ways.
  const int a = std::min(x, 14 - x), b = std::min(y, 14 - y);
  const int p = std::min(a, b), q = std::max(a, b);
  if (p == 0 && (q == 0 || q == 7)) return Prime::TW;
  if (p == q && p >= 1 && p <= 4) return Prime::DW;
  if (p == 7 && q == 7) return Prime::DW;  // the centre
  if ((p == 1 && q == 5) || (p == 5 && q == 5)) return Prime::TL;
  if ((p == 0 && q == 3) || (p == 2 && q == 6) || (p == 3 && q == 7) || (p == 6 && q == 6))
    return Prime::DL;
  return Prime::None;
}

int LetterMultiplier(Prime p) { return p == Prime::DL ? 2 : p == Prime::TL ? 3 : 1; }
int WordMultiplier(Prime p) { return p == Prime::DW ? 2 : p == Prime::TW ? 3 : 1; }

bool IsWord(const Lexicon& lexicon, std::string word) {
  for (char& c : word) c = char(std::toupper(static_cast<unsigned char>(c)));
  static thread_local ClsExpressions checker;
  checker.SubDico(lexicon);
  return checker.SubWordIsTrue(std::string_view(word));
}

}  // namespace

std::string FullBag() {
  const std::string table =
      "09A02B02C03D15E02F02G02H08I01J01K05L03M06N06O02P01Q06R06S06T06U02V01W01X01Y01Z02?";
  std::string bag;
  for (size_t k = 0; k < table.size(); k += 3) {
    const int count = (table[k] - '0') * 10 + (table[k + 1] - '0');
    const char c = table[k + 2];
    bag.append(size_t(count), c == '?' ? '?' : char(std::tolower(c)));
  }
  return bag;
}

BoardSquares Board(const std::vector<std::string>& rows) {
  std::string text;
  for (const std::string& row : rows) text += row + "\n";
  BoardSquares squares{};
  std::string error;
  EXPECT_TRUE(ParseBoardText(text, squares, error)) << error;
  return squares;
}

BoardSquares SquaresOf(const ClsPlateau& board) {
  BoardSquares squares{};
  for (int y = 0; y < 15; ++y)
    for (int x = 0; x < 15; ++x) squares[size_t(y) * 15 + size_t(x)] = board.Square(x, y);
  return squares;
}

Verdict Judge(const Lexicon& lexicon, const BoardSquares& before, const ClsWord& play,
              const std::string& rack, bool firstPlay) {
  Verdict v;
  const auto fail = [&](std::string why) {
    v.legal = false;
    v.why = std::move(why) + " [" + play.Express + " " + play.Place + "]";
    return v;
  };
  const std::string& place = play.Place;
  const std::string& e = play.Express;
  if (place.size() < 2 || place.size() > 3) return fail("bad position");
  const bool across = place[0] >= 'A' && place[0] <= 'O';
  int row, column;
  if (across) {
    row = place[0] - 'A';
    column = std::atoi(place.c_str() + 1) - 1;
  } else {
    row = place.back() - 'A';
    column = std::atoi(place.substr(0, place.size() - 1).c_str()) - 1;
  }
  const int dx = across ? 1 : 0, dy = across ? 0 : 1;
  const int n = int(e.size());
  if (n < 2) return fail("fewer than two letters");
  if (row < 0 || row > 14 || column < 0 || column > 14) return fail("start outside the board");
  const int endX = column + dx * (n - 1), endY = row + dy * (n - 1);
  if (endX > 14 || endY > 14) return fail("runs past the board");
  const auto at = [&](int x, int y) -> char {
    if (x < 0 || x > 14 || y < 0 || y > 14) return '\0';
    return before[size_t(y) * 15 + size_t(x)];
  };
  if (at(column - dx, row - dy) != '\0') return fail("a tile touches the start");
  if (at(endX + dx, endY + dy) != '\0') return fail("a tile touches the end");

  std::string left = rack;
  std::vector<int> fresh;           // indices of new tiles
  std::vector<char> letters(static_cast<size_t>(n), '\0');
  bool touches = false, coversCentre = false;
  for (int i = 0; i < n; ++i) {
    const int x = column + dx * i, y = row + dy * i;
    const char b = at(x, y);
    if (x == 7 && y == 7) coversCentre = true;
    if (b != '\0') {
      if (std::toupper(b) != std::toupper(e[size_t(i)])) return fail("letter differs from the tile");
      letters[size_t(i)] = b;
      touches = true;
      continue;
    }
    const char tile = std::isupper(static_cast<unsigned char>(e[size_t(i)])) ? '?' : e[size_t(i)];
    const size_t where = left.find(tile);
    if (where == std::string::npos) return fail("tile not on the rack");
    left.erase(where, 1);
    letters[size_t(i)] = e[size_t(i)];
    fresh.push_back(i);
    if (at(x - dy, y - dx) || at(x + dy, y + dx)) touches = true;
  }
  if (fresh.empty()) return fail("no new tile");
  if (firstPlay) {
    if (!coversCentre) return fail("first play misses the centre");
  } else if (!touches) {
    return fail("does not touch the board");
  }

  std::string main;
  for (char c : letters) main += c;
  if (!IsWord(lexicon, main)) return fail("main word " + main + " unknown");

  // Scores with the blanks as laid, and with each blank at its face value.
  int blanksLaid = 0;
  for (int i : fresh)
    if (std::isupper(static_cast<unsigned char>(letters[size_t(i)]))) ++blanksLaid;
  const auto score = [&](int faceBlank) {
    int blankSeen = 0;
    std::vector<int> value(static_cast<size_t>(n), 0);
    for (int i = 0; i < n; ++i) {
      const char c = letters[size_t(i)];
      if (std::islower(static_cast<unsigned char>(c))) {
        value[size_t(i)] = kValue[c - 'a'];
      } else {
        const bool isFresh = std::find(fresh.begin(), fresh.end(), i) != fresh.end();
        value[size_t(i)] = (isFresh && blankSeen++ == faceBlank) ? kValue[c - 'A'] : 0;
      }
    }
    int sum = 0, factor = 1, total = 0;
    for (int i = 0; i < n; ++i) {
      const bool isFresh = std::find(fresh.begin(), fresh.end(), i) != fresh.end();
      const Prime p = isFresh ? PrimeAt(column + dx * i, row + dy * i) : Prime::None;
      sum += value[size_t(i)] * LetterMultiplier(p);
      factor *= WordMultiplier(p);
    }
    total = sum * factor;
    for (int i : fresh) {
      const int x = column + dx * i, y = row + dy * i;
      // The perpendicular run through the new tile.
      int a = 0, b = 0;
      while (at(x - dy * (a + 1), y - dx * (a + 1))) ++a;
      while (at(x + dy * (b + 1), y + dx * (b + 1))) ++b;
      if (a + b == 0) continue;
      const Prime p = PrimeAt(x, y);
      int crossSum = value[size_t(i)] * LetterMultiplier(p);
      for (int k = -a; k <= b; ++k) {
        if (k == 0) continue;
        const char t = at(x + dy * k, y + dx * k);
        crossSum += std::islower(static_cast<unsigned char>(t)) ? kValue[t - 'a'] : 0;
      }
      total += crossSum * WordMultiplier(p);
    }
    return total + (fresh.size() == 7 ? 50 : 0);
  };

  for (int i : fresh) {
    const int x = column + dx * i, y = row + dy * i;
    int a = 0, b = 0;
    while (at(x - dy * (a + 1), y - dx * (a + 1))) ++a;
    while (at(x + dy * (b + 1), y + dx * (b + 1))) ++b;
    if (a + b == 0) continue;
    std::string cross;
    for (int k = -a; k <= b; ++k)
      cross += k == 0 ? letters[size_t(i)] : at(x + dy * k, y + dx * k);
    if (!IsWord(lexicon, cross)) return fail("cross-word " + cross + " unknown");
  }

  v.legal = true;
  v.rackAfter = left;
  v.tilesLaid = int(fresh.size());
  if (blanksLaid == 2)
    v.points = {score(0), score(1)};
  else
    v.points = {score(-1)};
  return v;
}

void SelfPlay(const Lexicon& lexicon, uint64_t seed, int games,
              const std::function<void(const Turn&, ClsPlateau&, EngineContext&)>& onTurn) {
  EngineContext context;
  context.Random.Seed(seed);
  Rng bags(seed * 7919 + 1);
  for (int game = 1; game <= games; ++game) {
    std::string bag = FullBag();
    for (size_t k = bag.size(); k > 1; --k) std::swap(bag[k - 1], bag[bags.Below(uint32_t(k))]);
    ClsPlateau board(lexicon, context);
    std::string rack;
    for (int number = 1;; ++number) {
      while (rack.size() < 7 && !bag.empty()) {
        rack += bag.back();
        bag.pop_back();
      }
      if (rack.empty()) break;
      Turn turn;
      turn.game = game;
      turn.number = number;
      turn.board = SquaresOf(board);
      turn.firstPlay = board.SubWordFirst();
      turn.rack = rack;
      std::string letters = rack;
      board.TrouveSolution(letters);
      onTurn(turn, board, context);
      const auto best = board.SubSortie(5);
      if (!best) break;
      const Verdict verdict = Judge(lexicon, turn.board, *best, rack, turn.firstPlay);
      if (!verdict.legal) {
        ADD_FAILURE() << "game " << game << " turn " << number << ": " << verdict.why;
        return;
      }
      rack = verdict.rackAfter;
      board.SubCaserWord(*best);
      board.SubWordFirst(false);
      context.LngSens = 0;
    }
  }
}

}  // namespace ostrane::test
