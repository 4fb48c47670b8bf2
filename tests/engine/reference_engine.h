#pragma once
// A slow, literal board engine written for the tests only: a live board of
// characters, the lexicon's own pattern search, cross-words tested by laying
// the letter and reading the column, a copy of the board at each scoring. It
// shares no code with engine/: the fast engine must find the same plays, in
// the same order, with the same points and directions.

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "lexicon/tables.h"
#include "tests/engine/engine_test_support.h"

namespace ostrane::test {

class ReferencePlateau {
 public:
  ReferencePlateau(const Lexicon& lexicon, Rng& random) : random_(random) { words_.SubDico(lexicon); }

  BoardSquares TabPlateau{};  // (x, y) at y * 15 + x, 0 for empty
  bool BlnPremier = true;
  std::vector<ClsWord> TabSolutions = std::vector<ClsWord>(1);  // index 0 stays empty
  std::vector<int32_t> TabSens = std::vector<int32_t>(100001, 0);
  int32_t LngSens = 0;
  uint8_t BytSens = 0;
  // The tile whose own row was searched last: the next tile just right of it is skipped.
  int IntDerniereCol = 0, IntDerniereLig = 0;
  bool BlnDernier = false;

  // Across: the rows above, of and below each tile; then on the turned
  // board the rows above and of each tile (none below).
  int32_t TrouveSolution(std::string& lettres) {
    TabSolutions.assign(1, ClsWord{});
    if (BlnPremier) return SubPremierMot(lettres);
    for (int o = 0; o <= 1; ++o) {
      for (int r = 0; r < 15; ++r)
        for (int c = 0; c < 15; ++c) {
          if (!Tile(c, r)) continue;
          if (r > 0) SubLigneAutour(c, r - 1, lettres, o, 1);
          SubLigneMeme(c, r, lettres, o);
          if (o == 0 && r < 14) SubLigneAutour(c, r + 1, lettres, o, 2);
        }
      SubPlat();
    }
    return int32_t(TabSolutions.size()) - 1;
  }

  // The first of the best plays (level 5), or the first nearest (best - 2) x level / 5.
  const ClsWord* SubSortie(int niveau) {
    size_t best = 0, chosen = 0;
    for (size_t i = 1; i < TabSolutions.size(); ++i)
      if (TabSolutions[i].CountP > (best ? TabSolutions[best].CountP : 0)) best = i;
    if (best) BytSens = uint8_t(TabSens[best]);
    if (niveau == 5) return best ? &TabSolutions[best] : nullptr;
    // Never a half: (best - 2) x level is whole.
    const long target = std::lround(((best ? TabSolutions[best].CountP : 0) - 2) * niveau / 5.0);
    for (size_t i = 1; i < TabSolutions.size(); ++i)
      if (!chosen ||
          std::labs(TabSolutions[i].CountP - target) < std::labs(TabSolutions[chosen].CountP - target))
        chosen = i;
    return chosen ? &TabSolutions[chosen] : nullptr;
  }

 private:
  // Line entries: F a tile, H / B a tile above / below, L free and alone.
  enum { kH = 1, kB = 2, kL = 4, kF = 8 };

  static char& At(BoardSquares& board, int x, int y) {
    if (x < 0 || x > 14 || y < 0 || y > 14) throw std::out_of_range("reference: outside the board");
    return board[size_t(y * 15 + x)];
  }
  char& Tile(int x, int y) { return At(TabPlateau, x, y); }

  void SubPlat() {
    for (int x = 0; x < 15; ++x)
      for (int y = 0; y < x; ++y) std::swap(Tile(x, y), Tile(y, x));
  }

  // The entries of row `row` from the square left of `column` + shift
  // leftwards, and from column + shift rightwards, each side as far as
  // `budget` (+ 1 - shift on the right) free squares reach.
  void SubMasqueLigne(int column, int row, int budget, int shift, int* line) {
    std::fill(line, line + 16, 0);
    const auto scan = [&](int i, int step, int left) {
      for (; i >= 0 && i <= 14; i += step) {
        if (!Tile(i, row) && --left == 0) break;
        const int near = (row >= 1 && Tile(i, row - 1) ? kH : 0) | (row < 14 && Tile(i, row + 1) ? kB : 0);
        line[i] = Tile(i, row) ? kF : near ? near : kL;
      }
    };
    scan(column - 1 + shift, -1, budget);
    scan(column + shift, 1, budget + 1 - shift);
  }

  // The first entry of the line, and the first empty one after it (at most 14).
  static void Reach(const int* line, int& a, int& e) {
    for (a = 0; a < 15 && line[a] == 0;) ++a;
    for (e = a; e < 14 && line[e] != 0;) ++e;
  }

  // From s: the tiles as they stand, "*" for the rest, up to n of them.
  std::string MaskFrom(const int* line, int row, int s, int end, int n) {
    std::string mask;
    for (int i = s, count = n; i <= end; ++i) {
      mask += line[i] == kF ? Tile(i, row) : '*';
      if (line[i] != kF && --count == 0) break;
    }
    return mask;
  }

  // Words on the free row L above (extra 1) or below (extra 2) the tile in column c.
  void SubLigneAutour(int c, int L, std::string& lettres, int o, int extra) {
    if (Tile(c, L)) return;
    const int n = int(lettres.size());
    int line[16];
    SubMasqueLigne(c, L, n, 0, line);
    int s, e;
    for (Reach(line, s, e); s <= c; ++s) {
      const std::string mask = MaskFrom(line, L, s, e, n);
      ProveAll(words_.SubSuivant(mask, lettres, c - s + 1), line, L, s, e - s + extra, o);
      while (s <= c && line[s] == kF) ++s;
    }
  }

  // Words through the tile (c, r) on its own row.
  void SubLigneMeme(int c, int r, std::string& lettres, int o) {
    const int n = int(lettres.size());
    int line[16];
    SubMasqueLigne(c - 1, r, n + 1, 1, line);
    line[c] = kF;
    if (BlnDernier && c == IntDerniereCol + 1 && r == IntDerniereLig) {
      IntDerniereCol = c;
      return;
    }
    int s, e;
    for (Reach(line, s, e); s <= c; ++s) {
      std::string mask = MaskFrom(line, r, s, e, n);
      int minLen = c - s, run = 0;
      while (minLen == 0 && line[s + run] == kF) run++;
      if (minLen == 0) minLen = 1 + run;
      if (mask.size() == 1) mask += Tile(c, r);
      if (mask.find('*') == std::string::npos) continue;
      ProveAll(words_.SubSuivant(mask, lettres, minLen), line, r, s, e - s + 2, o);
      while (s <= c && line[s] == kF) ++s;
    }
    IntDerniereCol = c;
    IntDerniereLig = r;
    BlnDernier = true;
  }

  bool CrossWordTest(char letter, int x, int y) {
    Tile(x, y) = letter;
    int start = y;
    while (start > 0 && Tile(x, start - 1)) start--;
    std::string word;
    for (int r = start; r <= 14 && Tile(x, r); ++r) word += UpperAscii(Tile(x, r));
    const bool good = words_.SubWordIsTrue(std::string_view(word));
    Tile(x, y) = '\0';
    return good;
  }

  // Proves each result of the pattern search on the live board and keeps it.
  void ProveAll(int32_t count, const int* line, int L, int s, int maxLen, int o) {
    std::vector<std::string> results;
    for (int32_t i = 1; i <= count; ++i) results.emplace_back(words_.GetMot(i));
    for (const std::string& result : results) {
      const std::string w = result.substr(0, result.find(' '));
      bool good = int(w.size()) <= maxLen;
      for (int p = 0; p < int(w.size()) && good; ++p)
        good = !(line[s + p] & (kH | kB)) || CrossWordTest(w[size_t(p)], s + p, L);
      std::string left, right;
      for (int x = s - 1; x >= 0 && line[x] == kF; --x) left = Tile(x, L) + left;
      for (int x = s + int(w.size()); x <= 14 && line[x] == kF; ++x) right += Tile(x, L);
      if (!good || !words_.SubWordIsTrue(std::string_view(left + w + right))) continue;
      std::string expression = left + w + right + result.substr(w.size());
      for (char& ch : expression) ch = LowerAscii(ch);
      Keep(SubScoreH(expression, L, s, o), o);
    }
  }

  void Keep(const ClsWord& word, int orientation) {
    if (TabSolutions.size() > 100000) throw std::runtime_error("reference: too many findings");
    TabSolutions.push_back(word);
    TabSens.at(size_t(++LngSens)) = orientation;
  }

  static void Premium(char code, int& value, int& factor) {
    value *= code == '1' ? 2 : code == '2' ? 3 : 1;
    factor *= code == '3' ? 2 : code == '4' ? 3 : 1;
  }
  static int Letter(char c) { return c >= 'a' && c <= 'z' ? kLetterValue[c - 'a'] : 0; }

  // Lays `mot` on a copy of the board (the board's letters written into
  // `mot`) and counts the word and the words across it.
  int SubPointsMot(std::string& mot, int r, int s) {
    BoardSquares work = TabPlateau;
    int fresh = 0;
    for (int i = 0; i < int(mot.size()); ++i) {
      char& square = At(work, s + i, r);
      if (square) mot[size_t(i)] = square;
      fresh += !square;
      square = mot[size_t(i)];
    }
    int factor = 1, points = 0;
    for (int c = s; c <= 14 && At(work, c, r); ++c) {
      int v = Letter(At(work, c, r));
      if (!Tile(c, r)) Premium(kPremium[r][c], v, factor);
      points += v;
    }
    points *= factor;
    for (int c = s; c <= 14; ++c) {
      if (At(work, c, r) == Tile(c, r) || At(work, c, r) == '?') continue;
      int top = r, bottom = r, f = 1, sum = 0;
      while (top > 0 && At(work, c, top - 1)) top--;
      while (bottom < 14 && At(work, c, bottom + 1)) bottom++;
      for (int y = top; y <= bottom && bottom > top; ++y) {
        int v = Letter(At(work, c, y));
        if (!Tile(c, y)) Premium(kPremium[r][c], v, f);
        sum += v;
      }
      points += sum * f;
    }
    return points + (fresh == 7 ? 50 : 0);
  }

  // Scores "word" or "word (blanks)" from (s, r): each free occurrence of a
  // blank's letter is tried, the last of the best kept; with two blanks the
  // copy shown is made before the board's letters are written in.
  ClsWord SubScoreH(const std::string& mot, int r, int s, int o) {
    ClsWord result;
    const std::string place =
        o != 0 ? std::to_string(r + 1) + char('A' + s) : char('A' + r) + std::to_string(s + 1);
    const auto keep = [&](std::string& scored, const std::string& shown) -> const ClsWord& {
      const int points = SubPointsMot(scored, r, s);
      if (points >= result.CountP) result = ClsWord{shown.empty() ? scored : shown, place, int16_t(points)};
      return result;
    };
    const size_t blank = mot.find(' ');
    std::string m = mot;
    if (blank == std::string::npos) return keep(m, "");
    const std::string word = mot.substr(0, blank);
    const std::string inside = mot.substr(mot.find('(') + 1, mot.find(')') - mot.find('(') - 1);
    const auto freeAt = [&](size_t i) { return !Tile(s + int(i), r); };
    for (size_t i = 0; i < word.size() && !inside.empty(); ++i) {
      if (word[i] != inside[0] || !freeAt(i)) continue;
      std::string first = word;
      first[i] = UpperAscii(first[i]);
      if (inside.size() == 1) keep(first, "");
      for (size_t j = 0; j < word.size() && inside.size() > 1; ++j) {
        if (first[j] != inside.back() || !freeAt(j)) continue;
        std::string second = first;
        second[j] = UpperAscii(second[j]);
        keep(first, second);
      }
    }
    return result;
  }

  // Keeps in the brackets only the blanks the rack's letters cannot stand for.
  static int SubTrieJoker(std::string& e, const std::string& lettres) {
    const std::string w = e.substr(0, e.find(' '));
    const std::string t = e.substr(e.find('(') + 1, e.find(')') - e.find('(') - 1);
    int m = 0;
    std::string kept;
    for (char b : t) {
      const long inRack = std::count(lettres.begin(), lettres.end(), b);
      m += inRack == 0 ? 0 : int(std::count(w.begin(), w.end(), b));
      if (inRack == 0 || m > inRack) kept += b;
    }
    e = w + " (" + kept + ")";
    return int(w.size());
  }

  // Each word of the rack from every start H(9 - L) to H8, in a random direction.
  int32_t SubPremierMot(std::string& lettres) {
    const int32_t k = words_.SubCombinaisons(lettres);
    std::vector<std::string> results;
    for (int32_t i = 1; i <= k; ++i) results.emplace_back(words_.GetMot(i));
    for (std::string e : results) {
      for (char& ch : e) ch = LowerAscii(ch);
      const int L = e.find(' ') != std::string::npos ? SubTrieJoker(e, lettres) : int(e.size());
      for (int q = 9 - L; q <= 8; ++q) {
        const int direction = int(2 * random_.Rnd());
        Keep(SubScoreH(e, 7, q - 1, direction), direction);
      }
    }
    return int32_t(TabSolutions.size()) - 1;
  }

  Rng& random_;
  ClsExpressions words_;
};

}  // namespace ostrane::test
