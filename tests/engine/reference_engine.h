#pragma once
// A slow, literal board engine written for the tests only: strings on a live
// board, the lexicon's own pattern search, cross-words tested by laying the
// letter and reading the column, a copy of the board at each scoring. It
// shares no code with engine/: the fast engine must find the same plays, in
// the same order, with the same points and directions.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/context.h"
#include "engine/solution_set.h"
#include "lexicon/expressions.h"

namespace ostrane {
struct Lexicon;
}

namespace ostrane::test {

class ReferencePlateau {
 public:
  ReferencePlateau(const Lexicon& lexicon, Rng& random);

  // The board, addressed (column, row).
  std::array<std::array<std::string, 15>, 15> TabPlateau;
  bool BlnPremier = true;
  bool BlnArret = false;

  std::vector<ClsWord> TabSolutions;  // index 0 stays empty
  int32_t LngProchain = 1;
  std::vector<int32_t> TabSens = std::vector<int32_t>(100001, 0);
  int32_t LngSens = 0;
  uint8_t BytSens = 0;

  int32_t TrouveSolution(std::string& lettres);
  const ClsWord* SubSortie(int niveau);
  ClsWord SubScoreH(const std::string& mot, const std::string& position, int orientation);
  void SubCaserWord(const ClsWord& word);
  void SubPlat();
  std::string GetMot(const std::string& position);

 private:
  std::string SubFindLet(bool debut);
  int SubTrouverLigne(const std::string& position);
  int SubColumn(const std::string& position);
  std::string SubTurnPlace(const std::string& position);
  void SubMasqueLigne(int column, int row, int budget, int shift, std::string* line);
  static int ReachStart(const std::string* line);
  static int ReachEnd(const std::string* line, int start);
  std::string MaskFrom(const std::string* line, int row, int s, int end, int n, bool& hasStar);
  void SubLigneDessus(const std::string& p, std::string& lettres, int orientation);
  void SubLigneDessous(const std::string& p, std::string& lettres, int orientation);
  void SubLigneAutour(const std::string& p, std::string& lettres, int orientation, int line,
                      int extra);
  void SubLigneMeme(const std::string& p, std::string& lettres, int orientation);
  void ProveAll(int32_t count, const std::string* line, int lineRow, int s, int maxLen,
                int orientation);
  bool CrossWordTest(const std::string& letter, int x, int y);
  int SubPointsMot(std::string& mot, const std::string& position);
  int32_t SubPremierMot(std::string& lettres);
  int SubTrieJoker(std::string& e, const std::string& lettres);
  void Keep(const ClsWord& word, int orientation);

  const Lexicon& lexicon_;
  Rng& random_;
  ClsExpressions ObjExpressions;
  int IntColCourante = 0, IntLigCourante = 0;
  int IntDerniereCol = 0, IntDerniereLig = 0;
  bool BlnDernier = false;
};

}  // namespace ostrane::test
