#pragma once
// ClsPlateau, the board engine of one game: the fifteen-by-fifteen squares,
// the premium squares, the search for plays, their scores and the choice of
// the best one. Plain logic: it draws nothing and asks nothing of a window;
// a long search lets the front end breathe through a yield hook, and the
// front end may ask it to stop (SubLaisseBTon).
//
// Squares are addressed as (column x, row y), both 0 to 14. A square holds
// nothing, a lower-case letter (a tile) or an upper-case letter (a blank
// standing for that letter). A position is a row letter "A".."O" and a column
// number "1".."15": letter first ("H8") for a word read across, number first
// ("8H") for a word read down.
//
// The operations are spread over one file per concept: board.cpp (squares,
// turning, laying a word), line_scan.cpp (walk, positions, reading a word,
// line descriptors), scoring.cpp, move_search.cpp and solution_set.cpp.

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/context.h"
#include "engine/solution_set.h"
#include "lexicon/expressions.h"
#include "lexicon/yield.h"

namespace ostrane {

// The premium squares, row A first; character n of a row is column n.
inline constexpr std::array<std::string_view, 15> kPrimeRows = {
    "400100040001004", "030002000200030", "003000101000300", "100300010003001",
    "000030000030000", "020002000200020", "001000101000100", "400100030001004",
    "001000101000100", "020002000200020", "000030000030000", "100300010003001",
    "003000101000300", "030002000200030", "400100040001004"};

struct Lexicon;
class MoveSearch;
struct LineEntries;
struct Expression;

class ClsPlateau {
 public:
  static constexpr int kSize = 15;
  static constexpr int32_t kSolutionsBound = 100000;

  // An empty board with SubWordFirst true. Cheap (the validation makes one
  // per evaluation): the search's working buffers are made at its first
  // search, and the first search of the program also works out an index of
  // the word tree (about 8 ms), kept in the context for every later board.
  ClsPlateau(const Lexicon& lexicon, EngineContext& context);
  ~ClsPlateau();
  ClsPlateau(const ClsPlateau&) = delete;
  ClsPlateau& operator=(const ClsPlateau&) = delete;

  // ------------------------------------------------------------- squares
  // The square (x, y): "" for none, else its one character. Indices outside
  // 0..14 are a fatal index error.
  std::string SubCase(int x, int y) const;
  // Stores a square: "" clears it, otherwise its first character is kept.
  void SubCase(int x, int y, std::string_view value);
  // The same as one character, 0 for an empty square.
  char Square(int x, int y) const;
  void SetSquare(int x, int y, char value);
  // True when no square holds anything.
  bool IsEmpty() const;

  // Premium code of a square: '0' plain, '1' letter x2, '2' letter x3,
  // '3' word x2, '4' word x3. The table is symmetric in both diagonals.
  static char TabPrime(int x, int y);

  // True while no word has been laid: selects the first-play search.
  bool SubWordFirst() const { return blnPremier_ != 0; }
  void SubWordFirst(bool first) { blnPremier_ = first ? -1 : 0; }

  // Turns the board through its main diagonal: (x, y) takes what (y, x)
  // held. Yields before, between and after its two copying passes.
  void SubPlat();

  // Lays a play: Express along Place ("-" clears its square). A bad position
  // or a word that would leave the board is refused silently. Returns 0.
  int16_t SubCaserWord(const ClsWord& word);

  // -------------------------------------------------------- line scanning
  // The walk over occupied squares, row by row from A, left to right:
  // SubFindLet(true) restarts it and returns ""; SubFindLet(false) returns the
  // next occupied square ("H8"), or "" once the walk is over. A further call
  // without a restart is a fatal index error.
  std::string SubFindLet(bool debut);
  // Row of a position, -1 for an empty one. Any last character of a
  // number-first position is taken as its row letter.
  int16_t SubTrouverLigne(std::string_view position) const;
  // Column of a position, -1 when its number is not in 1..15.
  int16_t SubColumn(std::string_view position) const;
  // The word on the board from a position, in its direction, upper case.
  std::string GetMot(std::string_view position) const;
  // The same square with the other direction, on the board turned through
  // its diagonal: "C5" <-> "3E".
  std::string SubTurnPlace(std::string_view position) const;

  // --------------------------------------------------------------- scoring
  // Scores an expression ("maison", or "maison (m)" with the letters of the
  // blanks) laid across from a letter-first position on the board as it
  // stands. orientation 0: a play across; otherwise the board stands turned
  // and Place comes back as the turned position. The board is not changed.
  ClsWord SubScoreH(std::string_view mot, std::string_view position, int orientation);
  // Value of one character: its letter's value for "a".."z", 0 below "a"
  // (blanks, "?").
  static int16_t SubScoreLetters(std::string_view car);
  static int16_t SubScoreLetters(char car);

  // ---------------------------------------------------------------- search
  // Finds every play for the rack (lower-case letters, "?" for a blank) and
  // keeps them in TabSolutions in the order found. Returns their count. May
  // reorder `lettres` (the blanks go to its end).
  int32_t TrouveSolution(std::string& lettres);
  // True once a search has ended (false while one runs).
  bool SubResult() const { return blnResultat_ != 0; }
  // True only while a search runs.
  bool SubCherche() const { return blnEnCours_ != 0; }
  // Asks a running search to end; it ends at its next routine boundary with
  // the plays found so far, the board the right way round.
  void SubLaisseBTon(bool arret) { blnArret_ = arret ? -1 : 0; }
  // The own-row routine's memory of the last tile it treated, which lasts as
  // long as the board (see SubLigneMeme). Read and put back when a game kept
  // on disk is taken up, so that its searches go on as they would have.
  struct OwnRowMemory {
    int16_t column = 0, row = 0, set = 0;  // set: -1 while it holds
  };
  OwnRowMemory GetOwnRowMemory() const { return {intDerniereCol_, intDerniereLig_, blnDernier_}; }
  void SetOwnRowMemory(const OwnRowMemory& memory) {
    intDerniereCol_ = memory.column;
    intDerniereLig_ = memory.row;
    blnDernier_ = memory.set;
  }
  // A search that would keep more findings than the tables hold (100000 in a
  // search, or in the directions of one turn) ends the program there, as an
  // index error. With SetStopAtLimit(true) it stops instead, keeping what it
  // found, and LimitReached() says so until the next search.
  void SetStopAtLimit(bool stop) { stopAtLimit_ = stop; }
  bool LimitReached() const { return limitReached_; }
  // Where the search lets the front end breathe (and may ask for a stop):
  // at each candidate word, at each scoring, at each word of a first play,
  // and before, between and after the two copies of SubPlat.
  void SetYield(YieldHook hook);
  // Where the first-play search asks whether to go on with a huge list.
  void SetMessageBoxes(MessageBoxes* boxes) { objExpressions_.SetMessageBoxes(boxes); }

  // What the last search did, for benchmarks: masks asked for, pattern
  // searches really run, words generated, words proven, letters laid.
  struct SearchStats {
    int64_t masks = 0, generated = 0, candidates = 0, proofs = 0, steps = 0;
  };
  SearchStats LastSearchStats() const;

  // ---------------------------------------------------------- solution set
  // Level 5: the first play with the highest score, or nothing when no play
  // scores above 0. Other levels: the first play nearest to (best - 2) x
  // level / 5. Sets BytSens from TabSens at the best play's index.
  std::optional<ClsWord> SubSortie(int niveau);
  // Next free index of TabSolutions; the count of findings is one less.
  int32_t LngProchain() const { return lngProchain_; }
  int32_t SolutionCount() const { return lngProchain_ - 1; }
  // Finding i (from 1). Index 0 and indices past the count read as an empty
  // play; outside 0..100000 is a fatal index error.
  const ClsWord& TabSolutions(int32_t i) const;

  // --------------------------------------------------------------- context
  ClsExpressions& ObjExpressions() { return objExpressions_; }
  const ClsExpressions& ObjExpressions() const { return objExpressions_; }
  EngineContext& Context() { return context_; }
  const Lexicon& Words() const { return lexicon_; }

 private:
  friend class MoveSearch;

  static void CheckSquare(int x, int y);
  static char PrimeAt(int x, int y) { return kPrimeRows[size_t(y)][size_t(x)]; }
  char& At(int x, int y) { return squares_[size_t(y) * kSize + size_t(x)]; }
  char At(int x, int y) const { return squares_[size_t(y) * kSize + size_t(x)]; }
  void Yield() const { yield_(); }

  // Line scanning (line_scan.cpp).
  bool NextOccupied(int& column, int& row);
  void SubMasqueLigne(int column, int row, int budget, int shift, LineEntries& line) const;

  // Scoring (scoring.cpp). SubPointsMot gives back `word` with the board's
  // own tiles in place of its letters.
  int16_t SubPointsMot(std::string& word, int row, int start) const;
  ClsWord ScoreExpression(const Expression& expression, int row, int start, int orientation,
                          std::string_view position) const;

  // Search (move_search.cpp).
  MoveSearch& Search();
  int32_t SubPremierMot(std::string& lettres);
  void SubLigneDessus(int column, int row, std::string& lettres, int orientation);
  void SubLigneDessous(int column, int row, std::string& lettres, int orientation);
  void SubLigneVoisine(int column, int row, int line, bool below, std::string& lettres,
                       int orientation);
  void SubLigneMeme(int column, int row, std::string& lettres, int orientation);
  // Keeps one finding and its direction.
  void StoreSolution(const ClsWord& word, int orientation);
  // Keeps a finding of a play already in plays_.
  void StoreFound(int32_t play, int orientation);
  // Keeps `word` as the flat play `flat` (whole when too long).
  void KeepPlay(const ClsWord& word, FlatPlay& flat);
  ClsWord WordOf(const FlatPlay& flat) const;

  const Lexicon& lexicon_;
  EngineContext& context_;

  std::array<char, kSize * kSize> squares_{};  // row-major: (x, y) at y * 15 + x
  int16_t intColCourante_ = 0;
  int16_t intLigCourante_ = 0;
  ClsExpressions objExpressions_;
  int16_t blnPremier_ = -1;
  int16_t blnResultat_ = 0;
  int16_t blnArret_ = 0;
  int16_t blnEnCours_ = 0;
  int32_t lngProchain_ = 1;
  // The findings: finding i is plays_[found_[i]]. A play found again (from
  // another tile or another start) is kept once and counted again by index.
  std::vector<FlatPlay> plays_;      // index 0 stays empty
  std::vector<int32_t> found_;       // index 0 stays 0
  std::vector<ClsWord> wholePlays_;  // plays too long to be kept flat
  // The ClsWords of plays_, made as TabSolutions asks for them (a deque: the
  // words handed out stay where they are while more are made).
  mutable std::deque<ClsWord> words_;

  // The memory of SubLigneMeme: the last tile whose row it treated. Kept for
  // the life of the object, across passes and searches.
  int16_t intDerniereCol_ = 0;
  int16_t intDerniereLig_ = 0;
  int16_t blnDernier_ = 0;

  YieldHook yield_;
  std::unique_ptr<MoveSearch> search_;
  bool stopAtLimit_ = false;
  bool limitReached_ = false;
  // True when the finding to keep would pass a limit and the search is to
  // stop there instead of ending the program.
  bool AtLimit(bool pastLimit) {
    if (!pastLimit || !stopAtLimit_) return false;
    limitReached_ = true;
    blnArret_ = -1;
    return true;
  }
};

// The tiles a play takes from the rack: the squares it covers that are empty
// on the board, each a letter or (for an upper-case letter) a blank "?".
// Returns false when the rack does not hold them; laid counts those taken.
bool TakeTiles(const ClsPlateau& board, const ClsWord& play, std::string& rack, int& laid);

}  // namespace ostrane
