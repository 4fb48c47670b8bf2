#pragma once
// The exact move generator: every legal play of a rack on a board, each with
// its true points, and the true best play. It stands beside the designed
// search (move_search) and shares nothing with it but the board's squares.
//
// The rules are those of the validation of a laid play: the tiles in one
// line with no gap, the first play through the centre with two tiles or
// more, a later play touching a tile of the board, the main word and every
// cross word of more than one letter in the word list. The points are those
// the validation gives: letter values (a blank is worth 0), the premiums of
// the squares under the tiles laid now only, every cross word, and 50 for
// seven tiles laid.
//
// A play of one tile makes a word each way; it is listed once, in the
// direction the validation gives it (down when a tile stands above or below
// it). A play that a blank can make in several ways is listed once for each
// different number of points.
//
// The generator works from anchors (the free squares next to a tile): for
// each it lays the letters on its left along the word graph (over free
// squares that touch nothing), then the anchor and the letters on its right,
// each square allowing only the letters that make a word across it. Every
// play is found once, from the leftmost anchor it covers. The points are
// summed as the letters are laid. Plays down are found the same way on the
// board turned through its diagonal (the premium table is symmetric).
//
// The best play is sought otherwise. Every stretch of a row that a play may
// cover exactly (from the edge or a free square to a free square or the
// edge, touching a tile, with no more free squares than tiles, and no free
// square that no letter fills) is weighed by the most its plays could be
// worth (the rack's dearest tiles on the heaviest squares, each square
// between tiles above and below by the dearest letter of the rack its cross
// word allows), and the stretches are searched the most promising first,
// until none can reach the best play found. Before a stretch is searched
// its weight is made closer: only the ways of taking tiles from the rack
// that make a word of its length with its board letters count (the letters
// of every word, as multisets, are kept in a filter made at the first
// search; and for every word less one letter, the letters left out, in a
// second filter that tells them all in one read: with a blank on the rack,
// each way is found from the way less its last tile, and what the blank may
// stand for with it). Ways with two blanks are taken to make a word until
// their stretch is searched; then the letters they may stand for are sought,
// for the ways that can reach the best play there. A stretch is searched
// through a table of every word by its letters: the words of each multiset
// that can still reach the best play are laid where they fit. Only when
// there are too many such multisets does a walk follow the word graph,
// where a word of exactly the stretch's length goes on, and leave a branch
// as soon as it cannot reach the best play. The filters' lines a stretch
// will read are asked of the memory ahead (those of the seven-tile
// stretches all together, the next stretch's while one is weighed), and so
// are the words of a way as soon as it is found to make a word.
//
// The squares (cross-word letters and points, anchors) of the board of the
// last call are kept: only those a changed square may change are made
// again (beside it, and along its column and row to the first free square
// each way); so are the stretches of each row, made again only when the
// row's tiles, its cross words' tiles or their letters changed. The
// letters allowed between given tiles above and below are kept by those
// tiles from board to board. The big tables live in 2 MB pages where the
// system gives them.
//
// The order of plays, best first: more points; then fewer blanks laid; then
// fewer tiles laid; then the word in alphabetical order; then across before
// down; then the higher row, then the column further left; and for the same
// play with its blanks on other squares for the same points (listed once),
// the first blank further left. The best play is the first in this order.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/big_table.h"
#include "engine/solution_set.h"
#include "lexicon/word_graph.h"

namespace ostrane {

struct ExactPlay {
  int16_t points = 0;
  uint8_t row = 0, column = 0;  // the main word's first square
  bool down = false;
  uint8_t length = 0;     // letters of the main word, the board's included
  uint8_t tiles = 0;      // tiles laid
  uint8_t blanks = 0;     // blanks among them
  uint16_t laid = 0;      // bit i: letter i of the main word is a tile laid now
  uint16_t blank = 0;     // bit i: letter i is a blank laid now
  char letters[15] = {};  // the main word, upper case
  // The order below as one number as far as it goes: the points, the blanks,
  // the tiles and the first eight letters. Plays of equal keys are ordered by
  // the rest.
  uint64_t key = 0;

  std::string Word() const { return std::string(letters, length); }
  // "H8" across, "8H" down.
  std::string Place() const;
  // The word as ClsWord::Express holds it: the board's tiles as they stand
  // on `squares` (row-major, 15 x 15), a tile laid now in lower case, a
  // blank laid now in upper case.
  std::string Express(const char* squares) const;
  ClsWord ToWord(const char* squares) const { return ClsWord{Express(squares), Place(), points}; }
  // The word with its blanks shown: the letters of blanks laid now in lower case.
  std::string Shown() const;
  // The square (column, row) of letter i.
  int X(int i) const { return down ? column : column + i; }
  int Y(int i) const { return down ? row + i : row; }
};

// The order of plays, best first (see above); a strict weak order.
bool PlayBefore(const ExactPlay& a, const ExactPlay& b);

// The points of a play (Express along Place, a blank in upper case, the
// board's tiles as they stand) laid on `squares` as the validation counts
// them; -1 when it does not lie on the board.
int TruePoints(const char* squares, const ClsWord& play);

// A place in a filter of the best-play search: the word or line to read,
// and what to read there.
struct FilterSpot {
  size_t at;
  uint64_t bits;
};

class ExactMoves {
 public:
  explicit ExactMoves(const WordGraph& graph);

  // Every legal play of `rack` (lower-case letters, "?" a blank; at most 7
  // tiles are used) on `squares` (row-major, 15 x 15: 0 empty, "a".."z" a
  // tile, "A".."Z" a blank standing for that letter), best first. With
  // `firstPlay` the play must cover the centre and lay two tiles or more.
  // The list lives until the next call.
  const std::vector<ExactPlay>& All(const char* squares, bool firstPlay, std::string_view rack);
  // The first play of that order, or nothing when there is none.
  std::optional<ExactPlay> Best(const char* squares, bool firstPlay, std::string_view rack);

  // What the last call did, for benchmarks: steps of the walk, plays met,
  // anchors (all plays), stretches of squares weighed and searched (best).
  struct Stats {
    int64_t steps = 0;
    int64_t plays = 0;
    int64_t anchors = 0;
    int64_t strips = 0;
    int64_t stripsRefined = 0;
    int64_t stripsSearched = 0;
    int64_t lookups = 0;
  };
  const Stats& LastStats() const { return stats_; }

 private:
  struct Square {
    uint32_t cross = 0;         // letters allowed here (a free square)
    uint8_t crossSum = 0;       // the tiles above and below it (14 tiles of 10 at most)
    int8_t tile = -1;           // letter of the board's tile (0 = A), -1 when free
    uint8_t tileValue : 4 = 0;  // its value (0 for a blank)
    bool crossed : 1 = false;   // a tile above or below it
    bool anchor : 1 = false;
  };
  static_assert(sizeof(Square) == 8);
  enum class Mode { All, Best };
  struct Anchor {
    bool down;
    uint8_t row, column, leftLimit;
  };
  // The board's part of a stretch (see MakeShapes).
  struct StripShape {
    uint64_t boardKey;  // the board's letters in it
    int16_t fixed;      // the points that do not hang on the tiles laid
    uint16_t squares;   // bit x: column x is in it
    uint8_t factor;     // its word factor
    // Its free squares (k), those that triple and double or triple their
    // letter (n3, n32), the same of those not crossed (o3, o32) and the
    // free squares not crossed (open), four bits each.
    uint8_t kN3, n32O3, o32Open;
    int Free() const { return kN3 & 15; }
  };
  // A stretch of a row that a play of the best mode may cover exactly: from
  // `start` to before `end`, its shape as the board makes it.
  struct Strip {
    StripShape shape;
    int crossMost;    // the most its cross words may bring with the rack
    int crossedMost;  // ... its crossed squares, in its main word (without the word factor)
    bool down;
    uint8_t row, start, end;
    uint16_t shapeIndex;  // its shape in the row's
  };
  // A stretch waiting its turn with the most its plays could be worth, in
  // lists by that bound (`next`).
  struct Entry {
    int32_t bound;
    int32_t next;
    int16_t crossMost;    // the most its cross words may bring with the rack
    int16_t crossedMost;  // ... its crossed squares, in its main word (without the word factor)
    uint8_t line;         // its row (down after across)
    uint8_t shape;        // its shape in the row's
    bool refined;
  };

  void Run(const char* squares, bool firstPlay, std::string_view rack, Mode mode);
  void TakeRack(std::string_view rack);
  void PrepareSquares(const char* board, bool down, bool firstPlay, const uint16_t* redo);
  uint32_t CrossSet(const char* board, int x, int y, uint32_t candidates, int& sum, bool& crossed);
  uint32_t CrossWalk(const char* board, int x, int y, int top, int bottom) const;
  // The row of the plays sought now (its columns from `from` to before `to`).
  void EnterRow(bool down, int row, int from = 0, int to = 15);
  // All plays: from the anchors.
  void SearchAnchor(int anchor, int leftLimit);
  void LeftPart(uint32_t node, int limit, int leftLength);
  void StartRight(uint32_t node, int leftLength);
  void ExtendRight(uint32_t node, int column, bool isWord, int mainSum, int wordFactor, int crossTotal,
                   int tiles);
  // The best play: stretch by stretch, the most promising first.
  void RunBest(bool firstPlay);
  void MakeGraphTables();
  void MakeShapes(bool down, int row, bool firstPlay);
  void AddStrips(bool down, int row);
  void Push(int entry);
  Strip StripOf(const Entry& entry) const;
  static int MainBoundOf(const StripShape& shape, const int16_t* top, int crossedMost);
  struct Known;
  Known& KnownFor(uint64_t boardKey, int k);
  void AddHit(Known& known, uint32_t way, int first, int second);
  void ListHits(Known& known, const Strip& strip);
  void StripWeights(const Strip& strip, int* weights);
  int WayWorth(uint32_t way, const int* weights) const;
  int Refine(const Strip& strip);
  void SearchStrip(const Strip& strip);
  void SolveHits(const Known& known, const Strip& strip);
  void StripWalk(uint32_t node, int column, int mainSum, int crossTotal, int tiles, int face);
  int StripBound(int column, int mainSum, int crossTotal, int face) const;
  void Record(int end, int mainSum, int wordFactor, int crossTotal, int tiles);
  void Take(int letter);
  void GiveBack(int letter);

  const WordGraph& graph_;
  Stats stats_;
  Mode mode_ = Mode::All;
  std::vector<ExactPlay> plays_;
  ExactPlay best_;
  bool haveBest_ = false;
  std::vector<Anchor> anchors_;

  // Made from the graph on the first search for the best play (and made
  // again should the graph change): for each node the lengths of the words
  // that go on from it (bit n: a word ends n letters further), and the
  // letters of every word as a multiset, to tell at once whether some word
  // is made of exactly given letters.
  const void* tablesFor_ = nullptr;
  size_t tablesNodes_ = 0, tablesEdges_ = 0;
  std::vector<uint16_t> lengths_;
  BigTable<uint64_t> multisets_;  // a filter (see SpotOf)
  // For every word less one of its letters, the letter left out (a filter
  // of lines, see CompletionOf).
  struct alignas(64) CompletionLine {
    uint64_t bits[8] = {};
  };
  BigTable<CompletionLine> completions_;
  // The letters l for which the letters of a line's multiset and l make
  // some word (and, seldom, some that do not): see CompletionOf.
  uint32_t CompletionsAt(size_t line, uint64_t hash) const;
  // For each letter l, the letters m from l on for which `letters`, l and
  // m make some word (and, seldom, some that do not); whether there is any
  // (with `anyOnly`, the letters after the first l that has some are not
  // told).
  bool PairCompletions(uint64_t letters, uint32_t* seconds, bool anyOnly);
  // Every word by the multiset of its letters, in one table: a word's home
  // is told by a hash of its multiset, and the words lie in the order of
  // their homes, each at its home or the first free place after it. The
  // words of a multiset are thus side by side from its home on, most often
  // in the line of memory of the home: one read finds them.
  struct AnagramEntry {
    uint64_t letters = 0;  // letters 0 to 11 (0 = A), 5 bits each; the length in the top 4 bits (0: free)
    uint32_t more = 0;     // letters 12 to 14; from bit 16, how far past its home it lies
    uint32_t tag = 0;      // 32 bits of the hash of its multiset
  };
  BigTable<AnagramEntry> anagrams_;
  static int LetterAt(const AnagramEntry& word, int i) {
    return int(i < 12 ? word.letters >> (5 * i) : word.more >> (5 * (i - 12))) & 31;
  }
  int anagramShift_ = 64;  // a hash's home: its bits from this one up

  // The rack: the letters left, and the blanks that letters beyond them
  // take (which tiles are the blanks is chosen when a play is kept).
  std::array<int8_t, 26> count_{};
  std::array<int8_t, 26> inRack_{};    // as drawn
  std::array<int8_t, 26> blankFor_{};  // blanks taken for each letter
  uint32_t rackLetters_ = 0;           // letters with count_ above 0
  int8_t blanks_ = 0;                  // blanks not yet taken
  int8_t rackBlanks_ = 0;              // as drawn
  int rackSize_ = 0;
  int16_t topValues_[8] = {};  // sums of the rack's highest values: topValues_[k] for the k highest
  // The rack's tiles by value, highest first (a blank is -1), the ways to
  // take some of them that differ in letters, and for each way the multiset
  // of its letters.
  int8_t tileLetter_[7] = {};
  uint32_t alikeBefore_ = 0;  // bit i: tile i is the letter of tile i - 1
  uint8_t wayCount_[8] = {};
  uint8_t ways_[8][35] = {};      // by number of tiles, those without a blank first
  uint8_t realWayCount_[8] = {};  // the ways without a blank
  uint64_t wayKey_[128] = {};
  uint8_t extensions_[128] = {};  // for each way, the tiles after its last that extend it
  // The rack's different letters by value, highest first, and their values
  // and bits (then 0).
  int8_t byValue_[7] = {};
  int byValueCount_ = 0;
  int rankValue_[8] = {};
  uint32_t rankBit_[8] = {};

  // The stretches a play may cover, as the board makes them, by row (down
  // after across), kept while the row's squares stand; the rows to make
  // again (bit by row, across and down).
  std::array<std::vector<StripShape>, 2 * 15> shapes_;
  std::array<uint8_t, 2 * 15> sevensFrom_{};  // of each row, its first shape of seven tiles (they come last)
  // For each shape, what a point of a tile is worth on each of its free
  // squares (in the word and in its cross word), heaviest first, once told.
  struct ShapeWeights {
    uint8_t weights[7];
    bool weighed;
  };
  std::array<std::vector<ShapeWeights>, 2 * 15> shapeWeights_;
  uint32_t shapesDirty_[2] = {(1u << 15) - 1u, (1u << 15) - 1u};
  std::array<uint16_t, 2 * 15> crossedSquares_{};  // of each row, the free squares with a tile above or below
  // The stretches of the best mode, and for each bound the last pushed.
  static constexpr int kShapesInRow = 15 * 16 / 2;  // a first and a last column at most
  std::vector<Entry> entries_;
  int entryCount_ = 0;
  std::vector<int32_t> heads_;
  int topBucket_ = 0;  // the highest bucket pushed to
  // What is known of the words a stretch needs: for its board letters and
  // its number of free squares, the ways of the rack that make a word, and
  // the words' letters themselves (a way and the letters of its blanks),
  // unless there are too many of them to follow. One line of memory each;
  // the hits of all side by side in a table of their own.
  struct Hit {
    uint8_t way;
    int8_t blank[2];
  };
  static constexpr int kHits = 128;
  struct alignas(64) Known {
    uint64_t key = 0;  // its board letters and number of tiles (see KnownFor)
    uint64_t ways[2] = {};
    uint64_t unlisted[2] = {};  // ways with two blanks whose hits are not listed yet
    int16_t top[8] = {};        // top[j]: the most j tiles of a way that makes a word are worth
    uint32_t hitsFrom = 0;      // its hits in hits_
    uint8_t hitCount = 0;
    bool any = false;      // some way makes a word
    bool tooMany = false;  // more than kHits, or more than hits_ holds
  };
  std::array<Known, 256> known_{};
  int knownUsed_ = 0;
  std::vector<Hit> hits_;
  int hitsUsed_ = 0;
  // Where each is, by its board letters and number of tiles; a slot is in
  // use when its stamp is that of the table now.
  struct KnownSlot {
    uint16_t stamp = 0;
    uint16_t known = 0;
  };
  std::array<KnownSlot, 1024> knownSlots_{};
  KnownSlot& KnownSlotFor(uint64_t key);  // its slot, or the free slot it would take
  // The spots KnownFor reads for these board letters and tiles, each asked
  // of the memory; how many.
  int SpotsFor(uint64_t boardKey, int k, FilterSpot* spots) const;
  // Those of the next stretches, kept from the asking to the reading.
  struct Asked {
    uint64_t key = 0;
    uint32_t stamp = 0;
    uint8_t count = 0;
    FilterSpot spots[35];
  };
  std::array<Asked, 2> asked_{};
  int askedNext_ = 0;
  void AskAheadFor(const Entry& entry);
  void NewKnownTable();
  uint16_t knownStamp_ = 0;
  // The stretch being searched: its end, word factor, letters worth trying,
  // and from each column on the fixed points to come and the weights of the
  // free squares left, highest first.
  int end_ = 0;
  int stripFactor_ = 1;
  uint32_t stripLetters_ = 0;
  int fixedFrom_[16] = {};
  uint8_t freeFrom_[16] = {};
  int weightsFrom_[16][7] = {};

  // The squares of both passes (across, then down on the turned board), and
  // the pass under way.
  bool down_ = false;
  std::array<std::array<Square, 225>, 2> squares_{};
  uint32_t rowsWithAnchors_[2] = {};
  // The board they were made for (with the same first-play rule and word
  // graph), and the letters of the rack that may be laid.
  bool prepared_ = false;
  bool preparedFirst_ = false;
  const void* preparedFor_ = nullptr;
  size_t preparedNodes_ = 0;
  std::array<char, 225> preparedBoard_{};
  std::array<char, 225> preparedTurned_{};  // (turned through its diagonal)
  // The letters allowed between given tiles above and below, by a key of
  // these tiles (the graph's, kept across boards).
  struct CrossSlot {
    uint64_t key = 0;
    uint32_t allowed = 0;
  };
  std::array<CrossSlot, 4096> crossSlots_{};
  uint32_t usable_ = 0;
  // The row under way and its anchor.
  int row_ = 0;
  int anchor_ = 0;
  const Square* line_ = nullptr;
  uint8_t letterFactor_[16] = {};
  uint8_t wordFactor_[16] = {};
  int8_t letter_[16] = {};  // the letter on each column of the row
  bool laid_[16] = {};      // a tile laid now on that column
  int8_t leftLetter_[8] = {};
  int start_ = 0;  // the word's first column
};

}  // namespace ostrane
