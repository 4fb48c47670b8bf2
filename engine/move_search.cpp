#include "engine/move_search.h"

#include <algorithm>
#include <cstring>
#include <ctime>

#include "engine/board.h"
#include "engine/line_scan.h"
#include "engine/scoring.h"
#include "lexicon/fatal.h"
#include "lexicon/lexicon.h"
#include "lexicon/tables.h"

namespace ostrane {
namespace {

constexpr int kMaxRack = 60;
constexpr uint32_t kAllLetters = (1u << 26) - 1;
constexpr int kNodeStackDepth = 50;

inline bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }
inline uint32_t Bit(char letter) { return 1u << (letter - 'A'); }

}  // namespace

// =================================================================== search

ClsPlateau::SearchStats ClsPlateau::LastSearchStats() const {
  SearchStats stats;
  if (search_) {
    const MoveSearch::Stats& last = search_->LastStats();
    stats.masks = last.masks;
    stats.generated = last.generated;
    stats.candidates = last.candidates;
    stats.proofs = last.proofs;
    stats.steps = last.steps;
  }
  return stats;
}

MoveSearch& ClsPlateau::Search() {
  if (!search_) search_ = std::make_unique<MoveSearch>(*this);
  return *search_;
}

int32_t ClsPlateau::TrouveSolution(std::string& lettres) {
  lngProchain_ = 1;
  plays_.clear();
  plays_.emplace_back();
  wholePlays_.clear();
  words_.clear();
  found_.clear();
  found_.reserve(size_t(kSolutionsBound) + 1);  // once: its pages are used as it fills
  found_.push_back(0);
  blnResultat_ = 0;
  blnEnCours_ = -1;
  blnArret_ = 0;
  limitReached_ = false;

  int32_t count;
  if (blnPremier_) {
    count = SubPremierMot(lettres);
  } else {
    MoveSearch& search = Search();
    search.BeginSearch();
    // The working lists go back to the context however the search ends.
    struct Ending {
      MoveSearch& search;
      ~Ending() { search.EndSearch(); }
    } ending{search};
    int column, row;

    // Plays across.
    search.BeginPass(0);
    SubFindLet(true);
    while (NextOccupied(column, row) && !blnArret_) {
      SubLigneDessus(column, row, lettres, 0);
      if (blnArret_) break;
      SubLigneMeme(column, row, lettres, 0);
      if (blnArret_) break;
      SubLigneDessous(column, row, lettres, 0);
      if (blnArret_) break;
    }

    // Plays down, on the board turned through its diagonal. The row below a
    // tile is not searched in this pass: a play down that touches the board
    // only through tiles on its left is not found.
    SubPlat();
    search.BeginPass(1);
    SubFindLet(true);
    while (NextOccupied(column, row) && !blnArret_) {
      SubLigneDessus(column, row, lettres, 1);
      if (blnArret_) break;
      SubLigneMeme(column, row, lettres, 1);
      if (blnArret_) break;
    }
    SubPlat();
    count = lngProchain_ - 1;
  }
  blnResultat_ = -1;
  blnEnCours_ = 0;
  return count;
}

void ClsPlateau::SubLigneDessus(int column, int row, std::string& lettres, int orientation) {
  if (row == 0) return;
  SubLigneVoisine(column, row, row - 1, false, lettres, orientation);
}

void ClsPlateau::SubLigneDessous(int column, int row, std::string& lettres, int orientation) {
  if (row == 14) return;
  SubLigneVoisine(column, row, row + 1, true, lettres, orientation);
}

void ClsPlateau::SubLigneVoisine(int column, int /*row*/, int line, bool below,
                                 std::string& lettres, int /*orientation*/) {
  if (Square(column, line) != '\0') return;
  const int n = int(lettres.size());
  LineEntries entries;
  SubMasqueLigne(column, line, n, 0, entries);
  const int a = entries.ReachStart();
  const int e = entries.ReachEnd(a);
  MoveSearch& search = Search();
  char mask[24];
  for (int s = a; s <= column;) {
    bool hasFree;
    const int length = entries.Mask(squares_.data(), line, s, e, n, mask, hasFree);
    // The word must cover the square next to the tile. A word below may be
    // one letter longer than one above: the difference is on purpose.
    const int minLen = column - s + 1;
    const int maxLen = e - s + (below ? 2 : 1);
    search.Candidates(entries, line, s, mask, length, minLen, maxLen, lettres);
    while (entries.Tile(s)) {
      if (++s > column) return;
    }
    ++s;
  }
}

void ClsPlateau::SubLigneMeme(int column, int row, std::string& lettres, int /*orientation*/) {
  const int n = int(lettres.size());
  LineEntries entries;
  SubMasqueLigne(column - 1, row, n + 1, 1, entries);
  entries.entry[size_t(column)] = LineEntries::kReached | LineEntries::kTile;

  // A tile that only continues the run of tiles treated just before is
  // skipped. The memory crosses passes and searches.
  if (blnDernier_) {
    if (column == intDerniereCol_ + 1 && row == intDerniereLig_) {
      intDerniereCol_ = int16_t(column);
      return;
    }
    blnDernier_ = 0;
  }

  const int a = entries.ReachStart();
  const int e = entries.ReachEnd(a);
  MoveSearch& search = Search();
  char mask[24];
  for (int s = a; s <= column;) {
    bool hasFree;
    int length = entries.Mask(squares_.data(), row, s, e, n, mask, hasFree);
    int minLen = column - s;
    if (minLen == 0) {
      // A word that starts on the tile must go beyond its run.
      int run = 0;
      while (entries.Tile(s + run)) ++run;
      minLen = 1 + run;
    }
    if (length == 1) mask[length++] = At(column, row);
    const int maxLen = e - s + 2;
    if (hasFree) {
      search.Candidates(entries, row, s, mask, length, minLen, maxLen, lettres);
      bool passed = false;
      while (entries.Tile(s)) {
        if (++s > column) {
          passed = true;
          break;
        }
      }
      if (passed) break;
    }
    ++s;
  }
  intDerniereCol_ = int16_t(column);
  intDerniereLig_ = int16_t(row);
  blnDernier_ = -1;
}

// ------------------------------------------------------------ first play

namespace {

// Keeps only the blank letters that the rack cannot give. The running count
// is not reset between letters.
size_t SubTrieJoker(std::string& expression, const std::string& lettres) {
  const Expression parts = SplitExpression(expression);
  const std::string word(parts.word);
  int counted = 0;
  std::string kept;
  for (const char b : parts.blanks) {
    const int inRack = int(std::count(lettres.begin(), lettres.end(), b));
    if (inRack == 0) {
      kept += b;
    } else {
      counted += int(std::count(word.begin(), word.end(), b));
      if (counted > inRack) kept += b;
    }
  }
  expression = word + " (" + kept + ")";
  return word.size();
}

}  // namespace

int32_t ClsPlateau::SubPremierMot(std::string& lettres) {
  const int32_t count = objExpressions_.SubCombinaisons(lettres);
  std::string expression;
  for (int32_t i = 1; i <= count; ++i) {
    Yield();
    expression.assign(objExpressions_.GetMot(i));
    for (char& c : expression) c = LowerAscii(c);
    const size_t length = expression.find(' ') != std::string::npos
                              ? SubTrieJoker(expression, lettres)
                              : expression.size();
    // Every start that puts the word over the centre square, each across or
    // down by chance (the premium table is symmetric: both score alike).
    for (int q = 9 - int(length); q <= 8; ++q) {
      const std::string position = "H" + std::to_string(q);
      const int direction = int(2 * context_.Random.Rnd());
      StoreSolution(SubScoreH(expression, position, direction), direction);
    }
  }
  return lngProchain_ - 1;
}

// ================================================================ working side

MoveSearch::MoveSearch(ClsPlateau& board) : board_(board), dico_(board.lexicon_.Dico) {
}

std::shared_ptr<const WordTreeIndex> WordTreeIndex::Build(const ClsDico& dico,
                                                          const Lexicon* lexicon) {
  auto index = std::make_shared<WordTreeIndex>();
  if (lexicon != nullptr) {
    index->longWordsOf = lexicon;
    for (size_t length = 10; length <= 15; ++length) {
      const LongWordList& list = lexicon->LongWords(length);
      index->longWordsBound[length - 10] = list.UBound();
      bool seen[256] = {};
      for (int32_t i = 0; i <= list.UBound(); ++i)
        for (const char c : list.Element(i)) seen[uint8_t(c)] = true;
      auto& chars = index->longWordChars[length - 10];
      for (int c = 0; c < 256; ++c)
        if (seen[c]) chars[size_t(c) >> 6] |= 1ull << (c & 63);
    }
  }
  const size_t nodes = size_t(dico.UpperBound()) + 1;
  index->dico = &dico;
  index->nodes = int32_t(nodes);
  index->signature = Signature(dico);

  // The packed tree, in one pass over the tree's nodes in the order of
  // their numbers. A parent is always numbered before its children there,
  // so each node reached is already numbered by its parent, and gives its
  // children numbers side by side.
  BlockPlan plan;
  const size_t packedAt = plan.Add<Packed>(nodes);
  const size_t originalAt = plan.Add<int32_t>(nodes);
  const size_t numberAt = plan.Add<int32_t>(nodes);
  index->block = HugeBlock(plan.Bytes());
  const Stretch<Packed> packed = StretchAt<Packed>(index->block, packedAt, nodes);
  const Stretch<int32_t> original = StretchAt<int32_t>(index->block, originalAt, nodes);
  const Stretch<int32_t> number = StretchAt<int32_t>(index->block, numberAt, nodes);  // packed + 1
  size_t count = 1;
  number[0] = 1;
  bool packable = true;
  for (size_t n = 0; n < nodes && packable; ++n) {
    const int32_t k = number[n] - 1;
    if (k < 0) continue;  // not reached from the root
    Packed p;
    p.ends = dico.EndMask(int32_t(n)) >> 1;
    p.first = int32_t(count);
    for (int x = 1; x <= 26; ++x) {
      const int32_t child = dico.Child(int32_t(n), x);
      if (child == 0) continue;
      // A child numbered before its parent, or met twice (not a tree).
      if (size_t(child) <= n || number[size_t(child)] != 0) {
        packable = false;
        break;
      }
      p.children |= 1u << (x - 1);
      number[size_t(child)] = int32_t(count) + 1;
      original[count++] = int32_t(child);
    }
    packed[size_t(k)] = p;
  }
  if (packable) {
    // How far each node reaches: children come after their parent.
    for (size_t k = count; k-- > 0;) {
      Packed& p = packed[k];
      int reach = p.ends != 0 ? 1 : 0;
      const int children = BitsSet(p.children);
      for (int c = 0; c < children; ++c) reach = std::max(reach, 1 + int(packed[size_t(p.first + c)].reach));
      p.reach = uint32_t(std::min(reach, 254));
    }
    index->packed = StretchAt<Packed>(index->block, packedAt, count);
    index->original = StretchAt<int32_t>(index->block, originalAt, count);
    index->number = number;
    return index;
  }

  // Not a tree numbered parent first: the plain walk's own lists, made the
  // old way, and no packed tree.
  index->block = HugeBlock();
  index->childMask.assign(nodes, 0);
  index->reach.assign(nodes, 0);
  bool ordered = true;
  // Going down from the last node, every child is done before its parent
  // when children are numbered after their parent.
  for (size_t n = nodes; n-- > 0;) {
    uint32_t mask = 0;
    int reach = (dico.EndMask(int32_t(n)) >> 1) != 0 ? 1 : 0;
    for (int x = 1; x <= 26; ++x) {
      const int32_t child = dico.Child(int32_t(n), x);
      if (child == 0) continue;
      mask |= 1u << (x - 1);
      if (size_t(child) <= n) ordered = false;
      reach = std::max(reach, 1 + int(index->reach[size_t(child)]));
    }
    index->childMask[n] = mask;
    index->reach[n] = uint8_t(std::min(reach, 254));
  }
  // Not the numbering this relies on: no pruning by length at all.
  if (!ordered) std::fill(index->reach.begin(), index->reach.end(), uint8_t(254));
  return index;
}

uint64_t WordTreeIndex::Signature(const ClsDico& dico) {
  const int32_t last = dico.UpperBound();
  const int32_t step = std::max<int32_t>(1, last / 509);
  uint64_t hash = uint64_t(last) * 0x9E3779B97F4A7C15ull ^ uint64_t(dico.LngLibre());
  for (int32_t n = 0; n <= last; n += step) {
    hash = (hash ^ dico.EndMask(n)) * 0x100000001B3ull;
    for (int x = 1; x <= 26; ++x) hash = (hash ^ uint64_t(uint32_t(dico.Child(n, x)))) * 0x100000001B3ull;
  }
  return hash;
}

bool WordTreeIndex::MayBeLongWord(const Lexicon& lexicon, std::string_view text) const {
  const size_t length = text.size();
  if (&lexicon != longWordsOf || length < 10 || length > 15 ||
      longWordsBound[length - 10] != lexicon.LongWords(length).UBound())
    return true;
  const auto& chars = longWordChars[length - 10];
  for (const char c : text)
    if (!((chars[uint8_t(c) >> 6] >> (uint8_t(c) & 63)) & 1u)) return false;
  return true;
}

bool WordTreeIndex::Fits(const ClsDico& other) const {
  return dico == &other && nodes == other.UpperBound() + 1 && signature == Signature(other);
}

void MoveSearch::BeginSearch() {
  if (!tree_) {
    std::shared_ptr<const WordTreeIndex>& shared = board_.context_.TreeIndex;
    if (!shared || !shared->Fits(dico_)) shared = WordTreeIndex::Build(dico_, &board_.lexicon_);
    tree_ = shared;
  }
  rackReady_ = false;
  stats_ = Stats{};
  std::shared_ptr<SearchScratch>& shared = board_.context_.Scratch;
  if (!shared) shared = std::make_shared<SearchScratch>();
  // A search already holding the shared lists (from a yield) keeps them.
  lists_ = shared->lent ? &own_ : shared.get();
  lists_->lent = true;
  if (lists_->text.size() < 65536) lists_->text.resize(65536);
}

void MoveSearch::EndSearch() {
  if (lists_ != nullptr) lists_->lent = false;
  lists_ = nullptr;
}

void MoveSearch::BeginPass(int orientation) {
  orientation_ = orientation;
  memo_.clear();
  lists_->candidates.clear();
  textSize_ = 0;
  scores_.Begin(board_.squares_.data());
  if (++passStamp_ == 0) {
    std::fill(std::begin(crossStamp_), std::end(crossStamp_), 0u);
    passStamp_ = 1;
  }
}

void MoveSearch::PrepareRack(std::string& lettres) {
  if (lettres.size() > size_t(kMaxRack)) FatalIndex("lettres", long(lettres.size()));
  // Real letters are tried before the blanks.
  std::stable_partition(lettres.begin(), lettres.end(), [](char c) { return c != '?'; });
  rackLength_ = int(lettres.size());
  for (int k = 0; k < rackLength_; ++k) rack_[k] = UpperAscii(lettres[size_t(k)]);
  rackReady_ = true;
  // The quick walk takes racks of letters and blanks; anything else (which
  // the tree would refuse) goes the plain way.
  rackOfLetters_ = rackLength_ <= 31;
  for (int k = 0; k < rackLength_; ++k)
    if (!IsLetter(rack_[k]) && rack_[k] != '?') rackOfLetters_ = false;
  wholeRack_ = rackLength_ >= 32 ? ~0u : (1u << rackLength_) - 1;
  if (rackLength_ <= kStatesRack)
    for (uint32_t used = 0; used <= wholeRack_; ++used) rackLeft_[used].ready = false;
}

uint32_t MoveSearch::CrossSet(int x, int y) {
  const size_t index = size_t(y) * 15 + size_t(x);
  if (crossStamp_[index] == passStamp_) return crossSet_[index];
  int top = y, bottom = y;
  while (top > 0 && board_.At(x, top - 1) != '\0') --top;
  while (bottom < 14 && board_.At(x, bottom + 1) != '\0') ++bottom;
  std::string word;
  for (int row = top; row <= bottom; ++row) word += UpperAscii(board_.At(x, row));
  uint32_t set = 0;
  bool letters = true;
  for (int row = top; row <= bottom; ++row) letters &= row == y || IsLetter(word[size_t(row - top)]);
  if (letters && word.size() <= 9) {
    // The word test walked in the tree as it walks (the first letter's node
    // is its code, each further letter leads on, the last ends a word), the
    // tiles above walked once for all 26 letters.
    const int above = y - top, below = bottom - y;
    int32_t node = 0;
    for (int k = 0; k < above && (k == 0 || node != 0); ++k)
      node = k == 0 ? LetterCode(word[0]) : dico_.FindNode(node, LetterCode(word[size_t(k)]));
    for (char letter = 'A'; letter <= 'Z' && (above == 0 || node != 0); ++letter) {
      // The letters after the first: (node, code) is the step to take.
      int32_t at = above == 0 ? LetterCode(letter) : node;
      bool valid = true;
      const int steps = below + (above == 0 ? 0 : 1);
      for (int k = 0; k < steps && valid; ++k) {
        const int code = (above != 0 && k == 0) ? LetterCode(letter)
                                                : LetterCode(word[size_t(y - top + 1 + k - (above != 0 ? 1 : 0))]);
        if (k + 1 == steps) {
          valid = dico_.FindNode(at, code) != 0 && dico_.IsWordInNode(at, code);
        } else {
          at = dico_.FindNode(at, code);
          valid = at != 0;
        }
      }
      if (valid && steps > 0) set |= Bit(letter);
    }
  } else {
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
      word[size_t(y - top)] = letter;
      std::string tested = word;
      if (IsWordAsGiven(tested)) set |= Bit(letter);
    }
  }
  crossStamp_[index] = passStamp_;
  crossSet_[index] = set;
  return set;
}

// The word test of the proof: 10 to 15 characters are compared as they stand
// with the long lists, shorter words are walked in the tree in capitals.
bool MoveSearch::IsWordAsGiven(std::string& word) const {
  int32_t node = 0;
  return board_.objExpressions_.SubWordIsTrue(word, node);
}

// The word test of the proof for the word and the tiles after it: as
// IsWordAsGiven on the joined text, the tree walk going on from the node the
// pattern search reached after the word.
bool MoveSearch::GoesOnToAWord(int32_t after, bool packed, int wordLength,
                               std::string_view joined) const {
  const size_t length = joined.size();
  if (length >= 10 && length <= 15)
    return tree_->MayBeLongWord(board_.lexicon_, joined) && board_.lexicon_.LongWords(length).Contains(joined);
  if (length > 15) return false;
  if (packed) {
    bool letters = true;
    for (size_t k = size_t(wordLength); k < length; ++k) letters &= IsLetter(UpperAscii(joined[k]));
    if (!letters) return GoesOnToAWord(tree_->original[size_t(after)], false, wordLength, joined);
    int32_t node = after;
    for (size_t k = size_t(wordLength); k + 1 < length; ++k) {
      node = tree_->PackedChild(node, UpperAscii(joined[k]) - 'A');
      if (node == 0) return false;
    }
    const int last = UpperAscii(joined.back()) - 'A';
    return tree_->PackedChild(node, last) != 0 && ((tree_->packed[size_t(node)].ends >> last) & 1u);
  }
  int32_t node = after;
  for (size_t k = size_t(wordLength); k + 1 < length; ++k) {
    node = dico_.FindNode(node, LetterCode(UpperAscii(joined[k])));
    if (node == 0) return false;
  }
  const int last = LetterCode(UpperAscii(joined.back()));
  return dico_.FindNode(node, last) != 0 && dico_.IsWordInNode(node, last);
}

void MoveSearch::Candidates(const LineEntries& entries, int line, int start, const char* mask,
                            int maskLength, int minLen, int maxLen, std::string& lettres) {
  if (!rackReady_) PrepareRack(lettres);
  ++stats_.masks;

  // The words of a mask from a start on a line hold for the whole pass.
  Key key;
  bool keyed = maskLength <= 16;
  key.a = uint64_t(line) | uint64_t(start) << 4 | uint64_t(maskLength) << 8;
  for (int k = 0; k < maskLength && keyed; ++k) {
    const char c = mask[k];
    uint64_t code;
    if (c == '*')
      code = 0;
    else if (IsLetter(UpperAscii(c)))
      code = uint64_t(UpperAscii(c) - 'A' + 1);
    else
      keyed = false;
    if (!keyed) break;
    if (k < 10)
      key.a |= code << (13 + 5 * k);
    else
      key.b |= code << (5 * (k - 10));
  }
  // The words of a shorter least length are those of a longer one and more,
  // in the same order: a list is made again only for a shorter least length.
  Range range;
  if (keyed) {
    const auto [found, added] = memo_.try_emplace(key);
    if (added || found->second.minLen > minLen)
      found->second = Generate(entries, line, start, mask, maskLength, minLen);
    range = found->second;
  } else {
    range = Generate(entries, line, start, mask, maskLength, minLen);
  }

  for (uint32_t k = range.first; k < range.first + range.count; ++k) {
    PassCandidate& candidate = lists_->candidates[k];
    if (candidate.wordLength < minLen) continue;
    board_.Yield();
    if (candidate.wordLength > maxLen) continue;
    if (candidate.state == 0) Prove(candidate, entries, line, start);
    if (candidate.state > 0) board_.StoreFound(candidate.scored, orientation_);
  }
}

void MoveSearch::Prove(PassCandidate& candidate, const LineEntries& entries, int line, int start) {
  ++stats_.proofs;
  const char* w = lists_->text.data() + candidate.text;
  const int length = candidate.wordLength;

  // Cross-words, from the first square that is not plain.
  int p = 1;
  while (entries.Plain(start + p - 1)) ++p;
  for (; p <= length; ++p) {
    const int x = start + p - 1;
    if (entries.Crossed(x) && !(CrossSet(x, line) & Bit(w[p - 1]))) {
      candidate.state = -1;
      return;
    }
  }

  // The tiles that touch the word on its left and right make part of it.
  // (By the way starts are chosen there is never one on its left.)
  char joined[kMaxRack + 40];
  int size = 0;
  if (start != 0) {
    int first = start;
    while (first > 0 && entries.Tile(first - 1)) --first;
    for (int x = first; x < start; ++x) joined[size++] = board_.At(x, line);
  }
  const int leftLength = size;
  std::memcpy(joined + size, w, size_t(length));
  size += length;
  for (int x = start + length; x <= 14 && entries.Tile(x); ++x) joined[size++] = board_.At(x, line);
  const std::string_view whole(joined, size_t(size));
  if (leftLength > 0) {
    std::string tested(whole);
    if (!IsWordAsGiven(tested)) {
      candidate.state = -1;
      return;
    }
  } else if (size > length && !GoesOnToAWord(candidate.node, candidate.packed, length, whole)) {
    // Alone, the word is one that the walk found ending in the tree.
    candidate.state = -1;
    return;
  }

  for (int k = 0; k < size; ++k) joined[k] = LowerAscii(joined[k]);
  char blanks[kMaxRack];
  for (int k = 0; k < candidate.blankCount; ++k) blanks[k] = LowerAscii(w[length + k]);
  const std::string_view blankText(blanks, candidate.blankCount);
  board_.Yield();
  candidate.state = 1;
  if (leftLength == 0 && scores_.Usable() && start + size <= 15) {
    candidate.scored = int32_t(board_.plays_.size());
    FlatPlay& scored = board_.plays_.emplace_back();
    scores_.Score(whole, candidate.blankCount > 0, blankText, line, start, orientation_, scored);
  } else {
    // SubScoreH's own way, which yields: the play joins the list only once
    // it is made.
    Expression expression;
    expression.word = whole;
    expression.hasBlank = candidate.blankCount > 0;
    expression.blanks = blankText;
    const std::string position = char(65 + line) + std::to_string(start + 1);
    const ClsWord word = board_.ScoreExpression(expression, line, start, orientation_, position);
    candidate.scored = int32_t(board_.plays_.size());
    board_.KeepPlay(word, board_.plays_.emplace_back());
  }
}

// ------------------------------------------------------- the pattern search
//
// The walk of ClsExpressions::SubMasque, step for step, with one addition: a
// letter on a free square whose cross-word it cannot make is laid and taken
// back at once, as if no word went on from there.

MoveSearch::Range MoveSearch::Generate(const LineEntries& entries, int line, int start,
                                       const char* mask, int maskLength, int minLen) {
  ++stats_.generated;
  minLen_ = minLen;
  if (maskLength > kMaxRack) FatalIndex("masque", maskLength);
  maskLength_ = maskLength;
  for (int k = 0; k < maskLength; ++k) mask_[k + 1] = UpperAscii(mask[k]);
  bool freeBehind = false;
  for (int k = maskLength; k >= 0; --k) {
    freeAfter_[k] = freeBehind;
    if (k >= 1 && mask_[k] == '*') freeBehind = true;
  }
  for (int k = 1; k <= maskLength; ++k) {
    const int x = start + k - 1;
    allowed_[k] = (mask_[k] == '*' && x <= 14 && entries.Crossed(x)) ? CrossSet(x, line)
                                                                      : kAllLetters;
  }

  Range range;
  range.minLen = minLen;
  range.first = uint32_t(lists_->candidates.size());
  wordLength_ = 0;
  blankCount_ = 0;
  nodeCount_ = 0;
  bool quick = rackOfLetters_ && !plainWalkForced_ && tree_->HasPacked();
  for (int k = 1; k <= maskLength && quick; ++k)
    if (mask_[k] != '*' && !IsLetter(mask_[k])) quick = false;
  packedNodes_ = quick;
  if (quick) {
    packed_ = tree_->packed.data();
    Walk(0, rackLength_, 0);
  } else {
    int32_t node = 0;
    int pos = 0;
    Masque(rack_, rackLength_, node, pos);
  }
  range.count = uint32_t(lists_->candidates.size()) - range.first;
  stats_.candidates += range.count;
  return range;
}

void MoveSearch::Store(int32_t after) {
  PassCandidate candidate;
  candidate.node = after;
  candidate.packed = packedNodes_;
  candidate.text = uint32_t(textSize_);
  candidate.wordLength = uint8_t(wordLength_);
  candidate.blankCount = uint8_t(blankCount_);
  candidate.state = 0;
  candidate.scored = -1;
  // Fixed-size copies (the working arrays and the text have room behind):
  // no call for a word of a few letters.
  const size_t need = textSize_ + size_t(wordLength_) + size_t(blankCount_);
  if (need + 64 > lists_->text.size()) lists_->text.resize(std::max(2 * lists_->text.size(), need + 64));
  char* out = lists_->text.data() + textSize_;
  if (wordLength_ <= 16)
    std::memcpy(out, word_, 16);
  else
    std::memcpy(out, word_, size_t(wordLength_));
  out += wordLength_;
  if (blankCount_ <= 16)
    std::memcpy(out, blanks_, 16);
  else
    std::memcpy(out, blanks_, size_t(blankCount_));
  textSize_ = need;
  lists_->candidates.push_back(candidate);
}

void MoveSearch::Push(int32_t node) {
  if (nodeCount_ + 1 > kNodeStackDepth) FatalIndex("pile de noeuds", nodeCount_ + 1);
  nodes_[++nodeCount_] = node;
}

void MoveSearch::Pop(int32_t& node) {
  if (nodeCount_ <= 0) Fatal(InternalError101Text());
  node = nodes_[nodeCount_--];
}

inline int MoveSearch::GiveBackFixedTail(int32_t& node) {
  const int before = wordLength_;
  while (mask_[wordLength_] != '*') {
    --wordLength_;
    Pop(node);
    if (wordLength_ == 0) break;
  }
  return before - wordLength_;
}

// With the rack spent and only fixed cells behind, the word may still be
// completed by them: it is kept without that tail.
inline void MoveSearch::KeepBeforeFixedTail(int count, int32_t node) {
  if (count == 0 && wordLength_ < maskLength_ && !freeAfter_[wordLength_] && wordLength_ >= minLen_) {
    int length = 0;
    for (int k = 0; k < wordLength_; ++k) scratch_[length++] = word_[k];
    for (int k = wordLength_ + 1; k <= maskLength_; ++k) scratch_[length++] = mask_[k];
    if (board_.objExpressions_.SubWordIsTrue(std::string_view(scratch_, size_t(length)))) Store(node);
  }
}

void MoveSearch::Masque(const char* letters, int count, int32_t& node, int& pos) {
  uint32_t tried = 0;
  // The first letter tried in this call walks the fixed letters in front of
  // the next free cell, whatever the letter; they stay walked for the others.
  // When that first letter is a blank it stands for A during the walk, and
  // the words the walk keeps carry that A among their blank letters. When no
  // cell is left, or the walk finds no way on, no letter lays anything.
  bool open = count > 0 && pos < maskLength_;
  if (open && mask_[pos + 1] != '*') {
    const bool blankFirst = letters[0] == '?';
    if (blankFirst) blanks_[blankCount_++] = 'A';
    open = WalkFixed(node, pos);
    if (blankFirst) --blankCount_;
  }
  if (open) {
    // A letter that neither ends a word long enough nor leads further, or
    // that the cross-word refuses, would be laid and taken back with nothing
    // kept: only the others are laid.
    const int cell = pos + 1;
    uint32_t useful = 0;
    if (wordLength_ + 1 >= minLen_) useful |= dico_.EndMask(node) >> 1;
    if (cell < maskLength_) useful |= ChildMask(node);
    useful &= allowed_[cell];
    for (int i = 0; i < count; ++i) {
      const char c = letters[i];
      if (c == '?') {
        for (uint32_t left = useful & ~tried; left != 0; left &= left - 1) {
          blanks_[blankCount_++] = char('A' + __builtin_ctz(left));
          Place(blanks_[blankCount_ - 1], letters, count, i, node, pos, tried);
          --blankCount_;
        }
      } else if (IsLetter(c)) {
        if (tried & Bit(c)) continue;
        tried |= Bit(c);
        if (useful & Bit(c)) Place(c, letters, count, i, node, pos, tried);
      } else {
        Place(c, letters, count, i, node, pos, tried);
      }
    }
  }
  if (wordLength_ == 0) return;
  pos -= GiveBackFixedTail(node);
  KeepBeforeFixedTail(count, node);
}

// ------------------------------------------------------------ the quick walk
//
// The same walk, step for step, for a rack of letters and blanks and a mask
// of letters and free cells (all that a board gives), at a lower cost:
// - the rack stays in place and the letters laid are marked in a bit set;
//   what is left of the rack, in its own order, is read once for each set;
// - a blank lays at once every letter that no letter of the rack has tried
//   at this cell, after which a further blank has none left to try;
// - before going on from a letter just laid, one look at the next cell: a
//   call that could walk no fixed letter, or lay no letter that is left, and
//   so could keep nothing, is not made.
// Cells filled so far: wordLength_.

bool MoveSearch::plainWalkForced_ = false;

void MoveSearch::Walk(uint32_t used, int count, int32_t node) {
  bool open = count > 0 && wordLength_ < maskLength_;
  if (open && mask_[wordLength_ + 1] != '*') {
    // The first letter of what is left walks the fixed letters; a blank
    // stands for A there. Blanks come last in the rack.
    const uint32_t left = wholeRack_ & ~used;
    const bool blankFirst = rack_[__builtin_ctz(left)] == '?';
    if (blankFirst) blanks_[blankCount_++] = 'A';
    open = WalkFixedPacked(node);
    if (blankFirst) --blankCount_;
  }
  if (open) {
    const int cell = wordLength_ + 1;
    const WordTreeIndex::Packed& here = packed_[node];
    uint32_t useful = 0;
    if (wordLength_ + 1 >= minLen_) useful |= here.ends;
    if (cell < maskLength_) useful |= here.children;
    useful &= allowed_[cell];
    if (useful != 0) LayEach(used, count, node, useful);
  }
  if (wordLength_ == 0) return;
  GiveBackFixedTail(node);
  KeepBeforeFixedTail(count, node);
}

// Lays each letter left that the next cell can take (`useful`, not 0), in
// the order of the pattern search. The next cell is free.
void MoveSearch::LayEach(uint32_t used, int count, int32_t node, uint32_t useful) {
  const int cell = wordLength_ + 1;
  if (rackLength_ <= kStatesRack) {
    const RackLeft& left = RackLeftAfter(used);
    if (useful & left.letters) {
      for (int d = 0; d < left.distinct; ++d) {
        const char c = left.letter[d];
        if (useful & Bit(c)) Lay(c, used | 1u << left.position[d], count - 1, node, cell);
      }
    }
    if (left.blank >= 0) {
      for (uint32_t letters = useful & ~left.letters; letters != 0; letters &= letters - 1) {
        const char letter = char('A' + __builtin_ctz(letters));
        blanks_[blankCount_++] = letter;
        Lay(letter, used | 1u << left.blank, count - 1, node, cell);
        --blankCount_;
      }
    }
    return;
  }
  uint32_t tried = 0;
  for (uint32_t left = wholeRack_ & ~used; left != 0; left &= left - 1) {
    const int k = __builtin_ctz(left);
    const char c = rack_[k];
    if (c == '?') {
      for (uint32_t letters = useful & ~tried; letters != 0; letters &= letters - 1) {
        const char letter = char('A' + __builtin_ctz(letters));
        blanks_[blankCount_++] = letter;
        Lay(letter, used | 1u << k, count - 1, node, cell);
        --blankCount_;
      }
      break;
    }
    const uint32_t bit = Bit(c);
    if (tried & bit) continue;
    tried |= bit;
    if (useful & bit) Lay(c, used | 1u << k, count - 1, node, cell);
  }
}

// The distinct letters left in the rack once the letters of `used` are
// laid, each at its first place, in rack order; and the first blank left.
const MoveSearch::RackLeft& MoveSearch::RackLeftAfter(uint32_t used) {
  RackLeft& left = rackLeft_[used];
  if (left.ready) return left;
  left = RackLeft{};
  for (int k = 0; k < rackLength_; ++k) {
    if (used & 1u << k) continue;
    const char c = rack_[k];
    if (c == '?') {
      if (left.blank < 0) left.blank = int8_t(k);
    } else if (!(left.letters & Bit(c))) {
      left.letters |= Bit(c);
      left.letter[left.distinct] = c;
      left.position[left.distinct] = uint8_t(k);
      ++left.distinct;
    }
  }
  left.ready = true;
  return left;
}

// Lays `letter` on the free cell `cell` (the rack then holds `used` laid and
// `count` letters left) and goes on from there.
[[gnu::always_inline]] inline void MoveSearch::Lay(char letter, uint32_t used, int count, int32_t node, int cell) {
  ++stats_.steps;
  word_[wordLength_++] = letter;
  const WordTreeIndex::Packed& here = packed_[node];
  const uint32_t bit = Bit(letter);
  const int32_t child =
      (here.children & bit) ? here.first + WordTreeIndex::BitsSet(here.children & (bit - 1)) : 0;
  if ((here.ends & bit) && wordLength_ >= minLen_) Store(child);
  // Below a node that cannot reach the least length nothing is kept.
  if (cell < maskLength_ && child != 0 && wordLength_ + int(packed_[child].reach) >= minLen_) {
    const WordTreeIndex::Packed& next = packed_[child];
    const char nextCell = mask_[cell + 1];
    if (count == 0) {
      Walk(used, count, child);
    } else if (nextCell != '*') {
      // A fixed letter next: the walk goes on only through it.
      if (next.children & Bit(nextCell)) Walk(used, count, child);
    } else {
      uint32_t useful = 0;
      if (wordLength_ + 1 >= minLen_) useful |= next.ends;
      if (cell + 1 < maskLength_) useful |= next.children;
      useful &= allowed_[cell + 1];
      if (useful != 0) {
        if (rackLength_ <= kStatesRack) {
          const RackLeft& left = RackLeftAfter(used);
          if (left.blank < 0 && !(useful & left.letters)) useful = 0;
        }
        // Nothing walked, rack not spent: the call would only lay letters.
        if (useful != 0) LayEach(used, count, child, useful);
      }
    }
  }
  --wordLength_;
}

// WalkFixed on the packed tree: the fixed letters in front of the next free
// cell, each word they end kept; false when the way ends or the mask does.
bool MoveSearch::WalkFixedPacked(int32_t& node) {
  int pos = wordLength_ + 1;
  while (mask_[pos] != '*') {
    const char fixed = mask_[pos];
    const WordTreeIndex::Packed& here = packed_[node];
    const uint32_t bit = Bit(fixed);
    if (!(here.children & bit)) return false;
    const int32_t child = here.first + WordTreeIndex::BitsSet(here.children & (bit - 1));
    word_[wordLength_++] = fixed;
    ++pos;
    if ((here.ends & bit) && wordLength_ >= minLen_) Store(child);
    Push(node);
    node = child;
    if (wordLength_ == maskLength_) return false;
  }
  return true;
}

bool MoveSearch::WalkFixed(int32_t& node, int& pos) {
  ++pos;
  while (mask_[pos] != '*') {
    const char fixed = mask_[pos];
    const int x = LetterCode(fixed);
    const int32_t child = dico_.FindNode(node, x);
    if (child == 0) {
      --pos;
      return false;
    }
    word_[wordLength_++] = fixed;
    ++pos;
    if (dico_.Ends(node, x) && wordLength_ >= minLen_) Store(child);
    Push(node);
    node = child;
    if (wordLength_ == maskLength_) {
      --pos;
      return false;
    }
  }
  --pos;
  return true;
}

void MoveSearch::Place(char letter, const char* letters, int count, int i, int32_t node, int& pos,
                       uint32_t& tried) {
  ++stats_.steps;
  ++pos;
  const int x = LetterCode(letter);
  word_[wordLength_++] = letter;
  bool goesOn;
  if (IsLetter(letter)) {
    tried |= Bit(letter);
    goesOn = allowed_[pos] & Bit(letter);
  } else {
    // Not a letter: outside the tree it ends the program; code 0 leads nowhere.
    dico_.IsWordInNode(node, x);
    goesOn = false;
  }
  if (goesOn) {
    if (dico_.Ends(node, x) && wordLength_ >= minLen_) Store(dico_.Child(node, x));
    if (pos < maskLength_) {
      int32_t child = dico_.Child(node, x);
      // Below a node that cannot reach the least length nothing is kept.
      if (child != 0 && wordLength_ + tree_->ReachOf(child) >= minLen_) {
        char rest[kMaxRack + 16];
        if (count <= 16) {
          // Fixed-size copies: no call for a rack of a few letters.
          std::memcpy(rest, letters, 16);
          std::memcpy(rest + i, letters + i + 1, 16);
        } else {
          std::memcpy(rest, letters, size_t(i));
          std::memcpy(rest + i, letters + i + 1, size_t(count - i - 1));
        }
        Masque(rest, count - 1, child, pos);
      }
    }
  }
  --wordLength_;
  --pos;
}

}  // namespace ostrane
