#pragma once
// What the engine tests share: the rules of the game written again for the
// tests (letter values, premium squares, a judge of plays that shares no code
// with the engine's scoring), and games played by the engine from a seeded bag.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "engine/board.h"
#include "engine/board_text.h"
#include "engine/context.h"
#include "lexicon/expressions.h"
#include "lexicon/lexicon.h"
#include "lexicon/tables.h"

namespace ostrane::test {

// Letter values, a to z.
inline constexpr int kLetterValue[26] = {1, 3, 3, 2, 1, 4, 2, 4, 1, 8,  10, 1,  2,
                                         1, 1, 3, 8, 1, 1, 1, 1, 4, 10, 10, 10, 10};
// Premium codes by [row][column]: 1 letter x2, 2 letter x3, 3 word x2, 4 word x3.
inline constexpr const char* kPremium[15] = {
    "400100040001004", "030002000200030", "003000101000300", "100300010003001", "000030000030000",
    "020002000200020", "001000101000100", "400100030001004", "001000101000100", "020002000200020",
    "000030000030000", "100300010003001", "003000101000300", "030002000200030", "400100040001004"};

// What the rules say of one play laid on `before` from `rack`.
struct Verdict {
  bool legal = false;
  std::string why;               // the first rule broken
  std::vector<int> points = {};  // the scores the rules allow (two with two blanks)
  std::string rackAfter = "";    // the rack without the tiles laid
  int tilesLaid = 0;
  int truePoints = 0;            // every blank worth nothing, as the validation counts
};

// One turn of a game played by the engine: the board and rack it searched.
struct Turn {
  int game = 0, number = 0;
  BoardSquares board{};
  bool firstPlay = false;
  std::string rack;
};
using TurnHook = std::function<void(const Turn&, ClsPlateau&, EngineContext&)>;

// A yield hook that runs `onYield`, which must outlive it.
inline YieldHook HookOf(std::function<void()>& onYield) {
  return {[](void* f) { (*static_cast<std::function<void()>*>(f))(); }, &onYield};
}

inline BoardSquares SquaresOf(const ClsPlateau& board) {
  BoardSquares squares{};
  for (int y = 0; y < 15; ++y)
    for (int x = 0; x < 15; ++x) squares[size_t(y * 15 + x)] = board.Square(x, y);
  return squares;
}

inline bool IsWord(const Lexicon& lexicon, std::string word) {
  for (char& c : word) c = UpperAscii(c);
  static thread_local ClsExpressions checker;
  checker.SubDico(lexicon);
  return checker.SubWordIsTrue(std::string_view(word));
}

inline int Value(char c) { return c >= 'a' && c <= 'z' ? kLetterValue[c - 'a'] : 0; }
inline bool IsBlank(char c) { return c >= 'A' && c <= 'Z'; }

inline Verdict Judge(const Lexicon& lexicon, const BoardSquares& before, const ClsWord& play,
                     const std::string& rack, bool firstPlay) {
  const auto fail = [&](const std::string& why) {
    return Verdict{false, why + " [" + play.Express + " " + play.Place + "]"};
  };
  const std::string &place = play.Place, &e = play.Express;
  if (place.size() < 2 || place.size() > 3) return fail("bad position");
  const bool across = place[0] >= 'A' && place[0] <= 'O';
  const int row = (across ? place[0] : place.back()) - 'A', column = std::atoi(&place[across ? 1 : 0]) - 1;
  const int dx = across ? 1 : 0, dy = 1 - dx, n = int(e.size());
  const auto at = [&](int x, int y) {
    return unsigned(x) > 14 || unsigned(y) > 14 ? '\0' : before[y * 15 + x];
  };
  if (n < 2 || row < 0 || column < 0 || column + dx * (n - 1) > 14 || row + dy * (n - 1) > 14)
    return fail("not two letters or more on the board");
  if (at(column - dx, row - dy) || at(column + dx * n, row + dy * n)) return fail("a tile touches an end");
  std::string left = rack, main;
  std::vector<int> fresh;  // where the new tiles are
  bool touches = false, centre = false;
  for (int i = 0; i < n; ++i) {
    const int x = column + dx * i, y = row + dy * i;
    const char b = at(x, y);
    centre |= x == 7 && y == 7;
    main += b ? b : e[i];
    touches |= b || at(x - dy, y - dx) || at(x + dy, y + dx);
    if (b && UpperAscii(b) != UpperAscii(e[i])) return fail("letter differs from the tile");
    const size_t where = b ? 0 : left.find(IsBlank(e[i]) ? '?' : e[i]);
    if (where == std::string::npos) return fail("tile not on the rack");
    if (b) continue;
    left.erase(where, 1);
    fresh.push_back(i);
  }
  if (fresh.empty()) return fail("no new tile");
  if (firstPlay ? !centre : !touches) return fail("misses the centre or the tiles");
  if (!IsWord(lexicon, main)) return fail("main word " + main + " unknown");
  // The word across each new tile: how far it runs before and after the tile.
  std::vector<std::pair<int, int>> runs;
  for (int i : fresh) {
    const int x = column + dx * i, y = row + dy * i;
    int a = 0, b = 0;
    while (at(x - dy * (a + 1), y - dx * (a + 1))) ++a;
    while (at(x + dy * (b + 1), y + dx * (b + 1))) ++b;
    runs.emplace_back(a, b);
    std::string cross;
    for (int k = -a; k <= b; ++k) cross += k == 0 ? main[i] : at(x + dy * k, y + dx * k);
    if (a + b > 0 && !IsWord(lexicon, cross)) return fail("cross-word " + cross + " unknown");
  }
  // Scores with the blanks as laid, and with blank number `face` at its face value.
  int blanks = 0;
  const auto score = [&](int face) {
    std::vector<int> value(n, 0);
    for (int i = 0; i < n; ++i) value[i] = Value(main[i]);
    int blank = 0, sum = 0, factor = 1, crossWords = 0;
    for (int i : fresh)
      if (IsBlank(main[i]) && blank++ == face) value[i] = kLetterValue[main[i] - 'A'];
    for (size_t f = 0; f < fresh.size(); ++f) {
      const int i = fresh[f], x = column + dx * i, y = row + dy * i;
      const char code = kPremium[y][x];
      const int letter = code == '1' ? 2 : code == '2' ? 3 : 1, word = code == '3' ? 2 : code == '4' ? 3 : 1;
      factor *= word;
      value[i] *= letter;
      const auto [a, b] = runs[f];
      int cross = value[i];
      for (int k = -a; k <= b; ++k) cross += k == 0 ? 0 : Value(at(x + dy * k, y + dx * k));
      crossWords += a + b > 0 ? cross * word : 0;
    }
    for (int x : value) sum += x;
    blanks = blank;
    return sum * factor + crossWords + (fresh.size() == 7 ? 50 : 0);
  };
  const int exact = score(-1);
  return {true, "", blanks == 2 ? std::vector<int>{score(0), score(1)} : std::vector<int>{exact}, left,
          int(fresh.size()), exact};
}

// Plays `games` games from bags shuffled by `seed`, always laying the best
// play (judged legal), until no play or no tile is left or after `maxTurns`.
// `beforeSearch` sees each turn before the search, `onTurn` after it (the
// board still without the play), with the engine that searched.
inline void SelfPlay(const Lexicon& lexicon, uint64_t seed, int games, const TurnHook& onTurn,
                     const TurnHook& beforeSearch = nullptr, int maxTurns = 1000) {
  EngineContext context;
  context.Random.Seed(seed);
  Rng bags(seed * 7919 + 1);
  for (int game = 1; game <= games; ++game) {
    std::string bag =
        "aaaaaaaaabbccdddeeeeeeeeeeeeeeeffgghhiiiiiiiijklllllmmmnnnnnnooooooppqrrrrrrssssssttttttuuuuuuvvwxyz"
        "??";
    for (size_t k = bag.size(); k > 1; --k) std::swap(bag[k - 1], bag[bags.Below(uint32_t(k))]);
    ClsPlateau board(lexicon, context);
    std::string rack;
    for (int number = 1; number <= maxTurns; ++number) {
      while (rack.size() < 7 && !bag.empty()) {
        rack += bag.back();
        bag.pop_back();
      }
      if (rack.empty()) break;
      const Turn turn{game, number, SquaresOf(board), board.SubWordFirst(), rack};
      if (beforeSearch) beforeSearch(turn, board, context);
      std::string letters = rack;
      board.TrouveSolution(letters);
      onTurn(turn, board, context);
      const auto best = board.SubSortie(5);
      if (!best || ::testing::Test::HasFailure()) break;
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
