#pragma once
// The working side of ClsPlateau's search (TrouveSolution, in
// move_search.cpp): for one start on one line, the words that fit the mask
// and the proof of each, with what a search can keep between its routines.
//
// The results are exactly those of the pattern search (ClsExpressions::
// SubSuivant) proven one by one on the live board, in the same order; the
// costs are not:
// - a letter that cannot make a word across the line at its square is never
//   tried there (the proof would drop every word holding it);
// - the letters allowed on each square are worked out once per pass;
// - the words of a mask, their proof and their score are kept for the pass,
//   since the same start on the same line comes back from neighbouring tiles;
// - the walk runs on a packed copy of the word tree, the rack left read from
//   a table, and looks one cell ahead before going on (the quick walk; the
//   plain walk, letter for letter the pattern search, takes odd racks);
// - a play is scored by arithmetic along its row (PassScores) and kept flat:
//   a play found again is counted again by its index.
// The board does not change during a pass (a letter laid for a moment is
// always taken back), so all of this holds for the whole pass.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "lexicon/huge_array.h"
#include "engine/scoring.h"
#include "engine/solution_set.h"

namespace ostrane {

class ClsPlateau;
class ClsDico;
struct Lexicon;
struct LineEntries;

// The word tree as the search reads it, worked out once for the program:
// packed for the quick walk, with the letters that lead on (bit 0 = A) and
// the most letters that can still follow on the way to a word's end.
struct WordTreeIndex {
  const ClsDico* dico = nullptr;
  int32_t nodes = 0;
  uint64_t signature = 0;

  // The tree renumbered so that the children of a node lie side by side, in
  // letter order, each node in one small record: the walk of a pattern
  // search then reads one record a step, and the children of a node (all
  // tried in turn under a blank) share a few cache lines. The root is 0 here
  // too, and 0 is no child. Empty when the tree is not a tree whose children
  // are numbered after their parent.
  struct Packed {
    uint32_t children = 0;  // the letters that lead on (bit 0 = A)
    uint32_t ends = 0;      // the letters that end a word here (bit 0 = A)
    int32_t first = 0;      // the child by the first letter of `children`
    uint32_t reach = 0;     // the most letters from here to a word's end (at most 254)
  };
  HugeBlock block;              // where the stretches below lie
  Stretch<Packed> packed;
  Stretch<int32_t> original;    // the node of the tree for each packed one
  Stretch<int32_t> number;      // the packed number + 1 of each node of the tree, 0 if none

  // Without a packed tree, for the plain walk: the letters that lead on
  // from each node of the tree, and how far it reaches.
  std::vector<uint32_t> childMask;
  std::vector<uint8_t> reach;

  // The same for any node of the tree that the root leads to.
  uint32_t ChildMaskOf(int32_t node) const {
    return packed.empty() ? childMask[size_t(node)] : packed[size_t(number[size_t(node)] - 1)].children;
  }
  int ReachOf(int32_t node) const {
    return packed.empty() ? reach[size_t(node)] : int(packed[size_t(number[size_t(node)] - 1)].reach);
  }

  bool HasPacked() const { return !packed.empty(); }

  // The characters that the words of each long list (10 to 15 letters) of
  // `longWordsOf` hold, the list's upper bound at the time: a text holding
  // any other character is in none. (The board's tiles come in lower case,
  // and a word read with them past the tree is most often such a text.)
  const Lexicon* longWordsOf = nullptr;
  std::array<int32_t, 6> longWordsBound{};
  std::array<std::array<uint64_t, 4>, 6> longWordChars{};
  // False only when `text` (10 to 15 characters) is surely in no list.
  bool MayBeLongWord(const Lexicon& lexicon, std::string_view text) const;
  // The child of packed node `node` by `letter` (0 = A), 0 when none.
  int32_t PackedChild(int32_t node, int letter) const {
    const Packed& p = packed[size_t(node)];
    if (!((p.children >> letter) & 1u)) return 0;
    return p.first + BitsSet(p.children & ((1u << letter) - 1u));
  }
  // The number of bits set, in a few instructions on any x86-64 (the
  // builtin is a library call where the processor is not assumed to count).
  static int BitsSet(uint32_t x) {
    x = x - ((x >> 1) & 0x55555555u);
    x = (x & 0x33333333u) + ((x >> 2) & 0x33333333u);
    x = (x + (x >> 4)) & 0x0F0F0F0Fu;
    return int((x * 0x01010101u) >> 24);
  }

  // With a lexicon, also the characters of its long word lists.
  static std::shared_ptr<const WordTreeIndex> Build(const ClsDico& dico,
                                                    const Lexicon* lexicon = nullptr);
  // Made from this very tree (checked on a sample of its nodes).
  bool Fits(const ClsDico& dico) const;
  static uint64_t Signature(const ClsDico& dico);
};

// A word the pattern search kept for a mask, and what its proof gave.
struct PassCandidate {
  uint32_t text;    // word then blank letters, in text_
  uint8_t wordLength;
  uint8_t blankCount;
  int8_t state;     // 0 not proven yet, 1 a play, -1 dropped
  bool packed;      // node is a node of the packed tree
  int32_t scored;   // index in the board's plays_ when a play
  int32_t node;     // the tree node reached after the word
};

// The working lists of a search pass: the words kept and their letters.
// They grow to a few megabytes in a rich search; one set is kept in the
// program's context and lent to the board that searches, so that a new
// board does not pay again for fresh memory.
struct SearchScratch {
  std::vector<PassCandidate> candidates;
  std::vector<char> text;  // each word then its blank letters
  bool lent = false;
};

class MoveSearch {
 public:
  explicit MoveSearch(ClsPlateau& board);

  // A new search: nothing of the last one holds. The working lists are
  // borrowed from the context until EndSearch.
  void BeginSearch();
  void EndSearch();
  // A new pass, with the board turned (orientation 1) or not.
  void BeginPass(int orientation);

  // The pattern search on `mask` (one character a cell, "*" free) from
  // column `start` of row `line`, for words of at least `minLen` letters, and
  // the proof of each result no longer than `maxLen`; every proven play is
  // stored on the board's list of findings.
  void Candidates(const LineEntries& entries, int line, int start, const char* mask,
                  int maskLength, int minLen, int maxLen, std::string& lettres);

  // The letters (bit 0 = A) that make a word across the line at (x, y) of the
  // board as it stands: the tiles above and below with that letter between.
  uint32_t CrossSet(int x, int y);

  // Counters of the last search, for benchmarks.
  struct Stats {
    int64_t masks = 0;       // pattern searches asked for
    int64_t generated = 0;   // pattern searches really run
    int64_t candidates = 0;  // results generated
    int64_t proofs = 0;      // results proven
    int64_t steps = 0;       // letters laid by the pattern searches
  };
  const Stats& LastStats() const { return stats_; }

  // Every search takes the plain walk (a letter-by-letter transcription of
  // the pattern search) instead of the quick one: for tests and benchmarks
  // that compare the two.
  static void ForcePlainWalk(bool plain) { plainWalkForced_ = plain; }

 private:
  struct Range {
    uint32_t first = 0, count = 0;
    int minLen = 0;  // the shortest word kept
  };
  struct Key {
    uint64_t a = 0, b = 0;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    size_t operator()(const Key& k) const noexcept {
      return size_t((k.a * 0x9E3779B97F4A7C15ull) ^ (k.b + 0x632BE59BD9B4E019ull + (k.a >> 17)));
    }
  };

  void PrepareRack(std::string& lettres);
  Range Generate(const LineEntries& entries, int line, int start, const char* mask,
                 int maskLength, int minLen);
  void Masque(const char* letters, int count, int32_t& node, int& pos);
  bool WalkFixed(int32_t& node, int& pos);
  void Place(char letter, const char* letters, int count, int i, int32_t node, int& pos,
             uint32_t& tried);
  void Store(int32_t after);
  void Walk(uint32_t used, int count, int32_t node);
  // After a walk: gives back the fixed letters walked at the end of the word
  // (how many), then keeps the word found before them when the rack is spent.
  int GiveBackFixedTail(int32_t& node);
  void KeepBeforeFixedTail(int count, int32_t node);
  void Lay(char letter, uint32_t used, int count, int32_t node, int cell);
  void LayEach(uint32_t used, int count, int32_t node, uint32_t useful);
  struct RackLeft;
  const RackLeft& RackLeftAfter(uint32_t used);
  uint32_t ChildMask(int32_t node) const { return tree_->ChildMaskOf(node); }
  void Push(int32_t node);
  void Pop(int32_t& node);
  void Prove(PassCandidate& candidate, const LineEntries& entries, int line, int start);
  bool IsWordAsGiven(std::string& word) const;
  bool GoesOnToAWord(int32_t after, bool packed, int wordLength, std::string_view joined) const;
  bool WalkFixedPacked(int32_t& node);

  ClsPlateau& board_;
  const ClsDico& dico_;
  int orientation_ = 0;
  Stats stats_;

  // The rack of this search, blanks last, upper case.
  bool rackReady_ = false;
  char rack_[64] = {};
  int rackLength_ = 0;

  // The walk of one pattern search. Cells are numbered from 1.
  char mask_[64] = {};
  int maskLength_ = 0;
  int minLen_ = 0;
  bool freeAfter_[64] = {};  // a "*" stands after cell i
  uint32_t allowed_[64] = {};
  char word_[64] = {};
  int wordLength_ = 0;
  char blanks_[64] = {};
  int blankCount_ = 0;
  int32_t nodes_[64] = {};
  int nodeCount_ = 0;
  char scratch_[64] = {};
  bool rackOfLetters_ = false;  // the quick walk can take this rack
  bool packedNodes_ = false;    // the walk under way is the quick one
  const WordTreeIndex::Packed* packed_ = nullptr;
  uint32_t wholeRack_ = 0;      // one bit per letter of the rack
  static bool plainWalkForced_;
  // For a rack of up to kStatesRack letters, what is left of it for each set
  // of its letters laid (bit k: letter k of the rack).
  static constexpr int kStatesRack = 8;
  struct RackLeft {
    bool ready = false;
    int8_t blank = -1;  // the first blank left, -1 when none
    uint8_t distinct = 0;
    uint32_t letters = 0;  // bit 0 = A
    char letter[kStatesRack] = {};
    uint8_t position[kStatesRack] = {};
  };
  RackLeft rackLeft_[1 << kStatesRack];

  std::shared_ptr<const WordTreeIndex> tree_;

  // What the pass keeps.
  std::unordered_map<Key, Range, KeyHash> memo_;
  SearchScratch* lists_ = nullptr;  // borrowed, or own_
  SearchScratch own_;
  size_t textSize_ = 0;
  PassScores scores_;
  uint32_t crossSet_[225] = {};
  uint32_t crossStamp_[225] = {};
  uint32_t passStamp_ = 0;
};

}  // namespace ostrane
