#include "tests/engine/reference_engine.h"

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

#include "lexicon/lexicon.h"

namespace ostrane::test {
namespace {

std::string Upper(std::string s) {
  for (char& c : s) c = char(std::toupper(static_cast<unsigned char>(c)));
  return s;
}
std::string Lower(std::string s) {
  for (char& c : s) c = char(std::tolower(static_cast<unsigned char>(c)));
  return s;
}
std::string Trim(const std::string& s) {
  size_t b = s.find_first_not_of(' ');
  if (b == std::string::npos) return "";
  size_t e = s.find_last_not_of(' ');
  return s.substr(b, e - b + 1);
}
// The value of a number written in a position.
int Val(const std::string& s) {
  int v = 0;
  for (char c : s) {
    if (c == ' ') continue;
    if (c < '0' || c > '9') break;
    v = v * 10 + (c - '0');
  }
  return v;
}
bool RowLetter(const std::string& s) { return !s.empty() && s[0] >= 'A' && s[0] <= 'O'; }

// The rows of premium codes.
const char* const kPrime[15] = {
    "400100040001004", "030002000200030", "003000101000300", "100300010003001",
    "000030000030000", "020002000200020", "001000101000100", "400100030001004",
    "001000101000100", "020002000200020", "000030000030000", "100300010003001",
    "003000101000300", "030002000200030", "400100040001004"};

int Letter(const std::string& car) {
  static const int values[26] = {1, 3, 3, 2, 1, 4, 2, 4, 1, 8, 10, 1, 2,
                                 1, 1, 3, 8, 1, 1, 1, 1, 4, 10, 10, 10, 10};
  if (car.empty()) return 0;
  const int code = static_cast<unsigned char>(car[0]);
  return code >= 97 ? values[code - 97] : 0;
}

// The part of a result in front of the blank, and from the blank on.
std::string PartieMot(const std::string& r) {
  const size_t b = r.find(' ');
  return b == std::string::npos ? r : r.substr(0, b);
}
std::string PartieJoker(const std::string& r) {
  const size_t b = r.find(' ');
  return b == std::string::npos ? "" : r.substr(b);
}

}  // namespace

ReferencePlateau::ReferencePlateau(const Lexicon& lexicon, Rng& random)
    : lexicon_(lexicon), random_(random) {
  ObjExpressions.SubDico(lexicon);
  TabSolutions.resize(1);
}

void ReferencePlateau::SubPlat() {
  std::array<std::array<std::string, 15>, 15> copy = TabPlateau;
  for (int x = 0; x < 15; ++x)
    for (int y = 0; y < 15; ++y) TabPlateau[x][y] = copy[y][x];
}

void ReferencePlateau::SubCaserWord(const ClsWord& word) {
  const std::string pos = Trim(Upper(word.Place));
  if (pos.size() >= 4 || pos.empty()) return;
  const std::string& e = word.Express;
  if (RowLetter(pos)) {
    const int row = pos[0] - 65;
    const int number = Val(pos.substr(1));
    if (number > 15 || number < 1) return;
    const int col = number - 1;
    if (int(e.size()) + col >= 16) return;
    for (size_t i = 0; i < e.size(); ++i)
      TabPlateau.at(size_t(col) + i).at(size_t(row)) = e[i] == '-' ? "" : std::string(1, e[i]);
  } else {
    const int row = pos.back() - 65;
    const int number = Val(pos.substr(0, pos.size() - 1));
    if (number > 15 || number < 1) return;
    const int col = number - 1;
    if (int(e.size()) + row > 15) return;
    for (size_t i = 0; i < e.size(); ++i)
      TabPlateau.at(size_t(col)).at(size_t(row) + i) = e[i] == '-' ? "" : std::string(1, e[i]);
  }
}

std::string ReferencePlateau::SubFindLet(bool debut) {
  if (debut) {
    IntColCourante = 0;
    IntLigCourante = 0;
    return "";
  }
  for (;;) {
    if (IntColCourante >= 15) {
      IntLigCourante++;
      IntColCourante = 0;
      if (IntLigCourante == 15) return "";
    }
    IntColCourante++;
    if (!TabPlateau.at(size_t(IntColCourante - 1)).at(size_t(IntLigCourante)).empty())
      return std::string(1, char(65 + IntLigCourante)) + std::to_string(IntColCourante);
  }
}

int ReferencePlateau::SubTrouverLigne(const std::string& p) {
  if (p.empty()) return -1;
  const char letter = RowLetter(p) ? p[0] : p.back();
  return letter - 65;
}

int ReferencePlateau::SubColumn(const std::string& p) {
  if (p.empty()) return -1;
  const std::string number = RowLetter(p) ? p.substr(1) : p.substr(0, p.size() - 1);
  const int v = Val(number);
  if (v < 1 || v > 15) return -1;
  return v - 1;
}

std::string ReferencePlateau::GetMot(const std::string& position) {
  const std::string p = Trim(Upper(position));
  if (p.size() > 3) return "";
  const int r = SubTrouverLigne(p), c = SubColumn(p);
  std::string word;
  if (RowLetter(p)) {
    for (int x = c; x <= 14; ++x) {
      if (TabPlateau.at(size_t(x)).at(size_t(r)).empty()) break;
      word += TabPlateau[size_t(x)][size_t(r)];
    }
  } else {
    for (int y = r; y <= 14; ++y) {
      if (TabPlateau.at(size_t(c)).at(size_t(y)).empty()) break;
      word += TabPlateau[size_t(c)][size_t(y)];
    }
  }
  return Upper(word);
}

std::string ReferencePlateau::SubTurnPlace(const std::string& p) {
  const int r = SubTrouverLigne(p), c = SubColumn(p);
  if (RowLetter(p)) return std::to_string(r + 1) + char(c + 65);
  return std::string(1, char(c + 65)) + std::to_string(r + 1);
}

void ReferencePlateau::SubMasqueLigne(int column, int row, int budget, int shift,
                                      std::string* line) {
  for (int i = 0; i < 16; ++i) line[i] = "";
  auto entry = [&](int i) {
    std::string e;
    if (row >= 1 && !TabPlateau[size_t(i)][size_t(row - 1)].empty()) e += "H";
    if (row < 14 && !TabPlateau[size_t(i)][size_t(row + 1)].empty()) e += "B";
    return e.empty() ? std::string("L") : e;
  };
  int left = budget;
  for (int i = column - 1 + shift; i >= 0; --i) {
    if (!TabPlateau[size_t(i)].at(size_t(row)).empty()) {
      line[i] = "F";
    } else {
      left--;
      if (left == 0) break;
      line[i] = entry(i);
    }
  }
  left = budget + 1 - shift;
  for (int i = column + shift; i <= 14; ++i) {
    if (!TabPlateau[size_t(i)].at(size_t(row)).empty()) {
      line[i] = "F";
    } else {
      left--;
      if (left == 0) break;
      line[i] = entry(i);
    }
  }
}

int ReferencePlateau::ReachStart(const std::string* line) {
  int a = 0;
  while (a <= 15 && line[a].empty()) ++a;
  return a > 15 ? 15 : a;
}

int ReferencePlateau::ReachEnd(const std::string* line, int start) {
  for (int i = start; i <= 15; ++i) {
    if (i == 14) return 14;
    if (line[i].empty()) return i;
  }
  return 14;
}

std::string ReferencePlateau::MaskFrom(const std::string* line, int row, int s, int end, int n,
                                       bool& hasStar) {
  std::string mask;
  int count = n;
  hasStar = false;
  for (int i = s; i <= end; ++i) {
    if (line[i] == "F") {
      mask += TabPlateau[size_t(i)][size_t(row)];
    } else {
      mask += "*";
      hasStar = true;
      count--;
      if (count == 0) break;
    }
  }
  return mask;
}

int32_t ReferencePlateau::TrouveSolution(std::string& lettres) {
  LngProchain = 1;
  TabSolutions.assign(1, ClsWord{});
  BlnArret = false;
  if (BlnPremier) return SubPremierMot(lettres);
  SubFindLet(true);
  for (;;) {
    const std::string p = SubFindLet(false);
    if (p.empty() || BlnArret) break;
    SubLigneDessus(p, lettres, 0);
    SubLigneMeme(p, lettres, 0);
    SubLigneDessous(p, lettres, 0);
  }
  SubPlat();
  SubFindLet(true);
  for (;;) {
    const std::string p = SubFindLet(false);
    if (p.empty() || BlnArret) break;
    SubLigneDessus(p, lettres, 1);
    SubLigneMeme(p, lettres, 1);
  }
  SubPlat();
  return LngProchain - 1;
}

void ReferencePlateau::SubLigneDessus(const std::string& p, std::string& lettres, int o) {
  if (SubTrouverLigne(p) == 0) return;
  SubLigneAutour(p, lettres, o, SubTrouverLigne(p) - 1, 1);
}

void ReferencePlateau::SubLigneDessous(const std::string& p, std::string& lettres, int o) {
  if (SubTrouverLigne(p) == 14) return;
  SubLigneAutour(p, lettres, o, SubTrouverLigne(p) + 1, 2);
}

void ReferencePlateau::SubLigneAutour(const std::string& p, std::string& lettres, int o, int L,
                                      int extra) {
  const int c = SubColumn(p);
  if (!TabPlateau[size_t(c)][size_t(L)].empty()) return;
  const int n = int(lettres.size());
  std::string line[16];
  SubMasqueLigne(c, L, n, 0, line);
  const int a = ReachStart(line), e = ReachEnd(line, a);
  int s = a;
  while (s <= c) {
    bool star;
    const std::string mask = MaskFrom(line, L, s, e, n, star);
    const int minLen = c - s + 1;
    const int maxLen = e - s + extra;
    const int32_t k = ObjExpressions.SubSuivant(mask, lettres, minLen);
    ProveAll(k, line, L, s, maxLen, o);
    while (line[s] == "F") {
      s++;
      if (s > c) return;
    }
    s++;
  }
}

void ReferencePlateau::SubLigneMeme(const std::string& p, std::string& lettres, int o) {
  const int c = SubColumn(p), r = SubTrouverLigne(p);
  const int n = int(lettres.size());
  std::string line[16];
  SubMasqueLigne(c - 1, r, n + 1, 1, line);
  line[c] = "F";
  if (BlnDernier) {
    if (c == IntDerniereCol + 1 && r == IntDerniereLig) {
      IntDerniereCol = c;
      return;
    }
    BlnDernier = false;
  }
  const int a = ReachStart(line), e = ReachEnd(line, a);
  int s = a;
  while (s <= c) {
    bool star;
    std::string mask = MaskFrom(line, r, s, e, n, star);
    int minLen = c - s;
    if (minLen == 0) {
      int run = 0;
      while (line[s + run] == "F") run++;
      minLen = 1 + run;
    }
    if (mask.size() == 1) mask += TabPlateau[size_t(c)][size_t(r)];
    const int maxLen = e - s + 2;
    if (star) {
      const int32_t k = ObjExpressions.SubSuivant(mask, lettres, minLen);
      ProveAll(k, line, r, s, maxLen, o);
      bool over = false;
      while (line[s] == "F") {
        s++;
        if (s > c) {
          over = true;
          break;
        }
      }
      if (over) break;
    }
    s++;
  }
  IntDerniereCol = c;
  IntDerniereLig = r;
  BlnDernier = true;
}

bool ReferencePlateau::CrossWordTest(const std::string& letter, int x, int y) {
  TabPlateau[size_t(x)][size_t(y)] = letter;
  int start = y;
  while (start > 0 && !TabPlateau[size_t(x)][size_t(start - 1)].empty()) start--;
  std::string word = GetMot(std::to_string(x + 1) + char(65 + start));
  int32_t node = 0;
  const bool good = ObjExpressions.SubWordIsTrue(word, node);
  TabPlateau[size_t(x)][size_t(y)] = "";
  return good;
}

void ReferencePlateau::ProveAll(int32_t count, const std::string* line, int L, int s, int maxLen,
                                int o) {
  // The results are copied first: the cross-word tests do not search, but
  // the list must not be read while anything else could change it.
  std::vector<std::string> results;
  for (int32_t i = 1; i <= count; ++i) results.emplace_back(ObjExpressions.GetMot(i));
  for (const std::string& result : results) {
    const std::string w = PartieMot(result);
    if (int(w.size()) > maxLen) continue;
    int p = 1;
    while (line[s + p - 1] == "L") p++;
    bool good = true;
    for (; p <= int(w.size()) && good; ++p) {
      const std::string& entry = line[s + p - 1];
      const std::string letter = w.substr(size_t(p - 1), 1);
      if (entry.find('B') != std::string::npos && !CrossWordTest(letter, s + p - 1, L)) good = false;
      if (good && entry.find('H') != std::string::npos && !CrossWordTest(letter, s + p - 1, L))
        good = false;
    }
    if (!good) continue;
    std::string left, right;
    if (s != 0)
      for (int x = s - 1; x >= 0 && line[x] == "F"; --x) left = TabPlateau[size_t(x)][size_t(L)] + left;
    for (int x = s + int(w.size()); x <= 14 && line[x] == "F"; ++x) right += TabPlateau[size_t(x)][size_t(L)];
    std::string whole = left + w + right;
    int32_t node = 0;
    if (!ObjExpressions.SubWordIsTrue(whole, node)) continue;
    const std::string expression = Lower(left + w + right + PartieJoker(result));
    const std::string position = std::string(1, char(65 + L)) + std::to_string(s + 1);
    Keep(SubScoreH(expression, position, o), o);
  }
}

void ReferencePlateau::Keep(const ClsWord& word, int orientation) {
  if (LngProchain > 100000) throw std::runtime_error("reference: too many findings");
  TabSolutions.push_back(word);
  LngSens++;
  TabSens.at(size_t(LngSens)) = orientation;
  LngProchain++;
}

int ReferencePlateau::SubPointsMot(std::string& mot, const std::string& position) {
  const int r = SubTrouverLigne(position), s = SubColumn(position);
  std::array<std::array<std::string, 15>, 15> work = TabPlateau;
  int fresh = 0;
  for (int i = 1; i <= int(mot.size()); ++i) {
    const size_t col = size_t(s + i - 1);
    if (work.at(col).at(size_t(r)).empty()) fresh++;
    if (!TabPlateau[col][size_t(r)].empty()) mot[size_t(i - 1)] = TabPlateau[col][size_t(r)][0];
    work[col][size_t(r)] = std::string(1, mot[size_t(i - 1)]);
  }
  const int bonus = fresh == 7 ? 50 : 0;
  int factor = 1, sum = 0;
  for (int c = s; c <= 14 && !work[size_t(c)][size_t(r)].empty(); ++c) {
    int v = Letter(work[size_t(c)][size_t(r)]);
    if (work[size_t(c)][size_t(r)] != TabPlateau[size_t(c)][size_t(r)]) {
      const char code = kPrime[r][c];
      if (code == '1') v *= 2;
      if (code == '2') v *= 3;
      if (code == '3') factor *= 2;
      if (code == '4') factor *= 3;
    }
    sum += v;
  }
  int points = sum * factor;
  for (int c = s; c <= 14; ++c) {
    if (work[size_t(c)][size_t(r)] == TabPlateau[size_t(c)][size_t(r)] ||
        work[size_t(c)][size_t(r)] == "?")
      continue;
    int top = r, bottom = r;
    while (top - 1 >= 0 && !work[size_t(c)][size_t(top - 1)].empty()) top--;
    while (bottom + 1 <= 14 && !work[size_t(c)][size_t(bottom + 1)].empty()) bottom++;
    if (bottom - top + 1 < 2) continue;
    int f = 1, sm = 0;
    for (int y = top; y <= bottom; ++y) {
      int v = Letter(work[size_t(c)][size_t(y)]);
      if (TabPlateau[size_t(c)][size_t(y)].empty()) {
        const char code = kPrime[r][c];
        if (code == '1') v *= 2;
        if (code == '2') v *= 3;
        if (code == '3') f *= 2;
        if (code == '4') f *= 3;
      }
      sm += v;
    }
    points += sm * f;
  }
  return points + bonus;
}

ClsWord ReferencePlateau::SubScoreH(const std::string& mot, const std::string& position, int o) {
  ClsWord result;
  const int r = SubTrouverLigne(position), s = SubColumn(position);
  const std::string place = o != 0 ? SubTurnPlace(position) : position;
  const size_t blank = mot.find(' ');
  if (blank == std::string::npos) {
    std::string m = mot;
    result.CountP = int16_t(SubPointsMot(m, position));
    result.Express = m;
    result.Place = place;
    return result;
  }
  const std::string word = mot.substr(0, blank);
  const size_t open = mot.find('('), close = mot.find(')');
  const std::string inside = mot.substr(open + 1, close - open - 1);
  if (inside.size() == 1) {
    for (int i = 1; i <= int(word.size()); ++i) {
      const bool freeSquare = TabPlateau.at(size_t(s + i - 1)).at(size_t(r)).empty();
      if (word[size_t(i - 1)] == inside[0] && freeSquare) {
        std::string copy = word;
        copy[size_t(i - 1)] = char(std::toupper(copy[size_t(i - 1)]));
        const int pts = SubPointsMot(copy, position);
        if (pts >= result.CountP) {
          result.CountP = int16_t(pts);
          result.Express = copy;
          result.Place = place;
        }
      }
    }
    return result;
  }
  const std::string b1 = inside.substr(0, 1);
  const std::string b2 = inside.empty() ? "" : inside.substr(inside.size() - 1);
  for (int i = 1; i <= int(word.size()); ++i) {
    const bool freeI = TabPlateau.at(size_t(s + i - 1)).at(size_t(r)).empty();
    if (word.substr(size_t(i - 1), 1) == b1 && freeI) {
      std::string first = word;
      first[size_t(i - 1)] = char(std::toupper(first[size_t(i - 1)]));
      for (int j = 1; j <= int(word.size()); ++j) {
        const bool freeJ = TabPlateau.at(size_t(s + j - 1)).at(size_t(r)).empty();
        if (first.substr(size_t(j - 1), 1) == b2 && freeJ) {
          std::string second = first;
          second[size_t(j - 1)] = char(std::toupper(second[size_t(j - 1)]));
          const int pts = SubPointsMot(first, position);
          if (pts >= result.CountP) {
            result.CountP = int16_t(pts);
            result.Express = second;
            result.Place = place;
          }
        }
      }
    }
  }
  return result;
}

int ReferencePlateau::SubTrieJoker(std::string& e, const std::string& lettres) {
  const size_t blank = e.find(' ');
  const std::string w = e.substr(0, blank);
  const size_t open = e.find('('), close = e.find(')');
  const std::string t = e.substr(open + 1, close - open - 1);
  int m = 0;
  std::string kept;
  for (char b : t) {
    int inRack = 0, inWord = 0;
    for (char x : lettres) inRack += x == b;
    for (char x : w) inWord += x == b;
    if (inRack == 0) {
      kept += b;
    } else {
      m += inWord;
      if (m > inRack) kept += b;
    }
  }
  e = w + " (" + kept + ")";
  return int(w.size());
}

int32_t ReferencePlateau::SubPremierMot(std::string& lettres) {
  const int32_t k = ObjExpressions.SubCombinaisons(lettres);
  std::vector<std::string> results;
  for (int32_t i = 1; i <= k; ++i) results.emplace_back(ObjExpressions.GetMot(i));
  for (const std::string& result : results) {
    std::string e = Lower(result);
    int L = int(e.size());
    if (e.find(' ') != std::string::npos) L = SubTrieJoker(e, lettres);
    for (int q = 9 - L; q <= 8; ++q) {
      const std::string position = "H" + std::to_string(q);
      const int direction = int(2 * random_.Rnd());
      Keep(SubScoreH(e, position, direction), direction);
    }
  }
  return LngProchain - 1;
}

const ClsWord* ReferencePlateau::SubSortie(int niveau) {
  int best = 0, bestIndex = 0;
  for (int i = 1; i <= LngProchain - 1; ++i) {
    if (TabSolutions[size_t(i)].CountP > best) {
      best = TabSolutions[size_t(i)].CountP;
      BytSens = uint8_t(TabSens[size_t(i)]);
      bestIndex = i;
    }
  }
  if (niveau == 5) return bestIndex == 0 ? nullptr : &TabSolutions[size_t(bestIndex)];
  const double exact = (best - 2) * niveau / 5.0;
  const long target = std::lround(exact);  // never a half: (best - 2) x level is whole
  long nearest = 9999;
  int chosen = 0;
  for (int i = 1; i <= LngProchain - 1; ++i) {
    const long d = std::labs(TabSolutions[size_t(i)].CountP - target);
    if (d < nearest) {
      nearest = d;
      chosen = i;
    }
  }
  return chosen == 0 ? nullptr : &TabSolutions[size_t(chosen)];
}

}  // namespace ostrane::test
