#include "engine/exact_moves.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

#include "engine/board.h"
#include "lexicon/tables.h"

namespace ostrane {
namespace {

constexpr int kSize = 15;
constexpr int kCentre = 7;
constexpr uint32_t kAllLetters = (1u << 26) - 1u;
constexpr int kBonus = 50;

int Value(int letter) { return ValeursLettres[size_t(letter)]; }

// The premiums of a square: letter factor and word factor.
struct Premium {
  uint8_t letter = 1, word = 1;
};

constexpr std::array<Premium, 225> MakePremiums() {
  std::array<Premium, 225> table{};
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) {
      Premium& p = table[size_t(y * kSize + x)];
      switch (kPrimeRows[size_t(y)][size_t(x)]) {
        case '1':
          p.letter = 2;
          break;
        case '2':
          p.letter = 3;
          break;
        case '3':
          p.word = 2;
          break;
        case '4':
          p.word = 3;
          break;
        default:
          break;
      }
    }
  return table;
}
constexpr std::array<Premium, 225> kPremium = MakePremiums();

bool Occupied(const char* board, int x, int y) {
  return x >= 0 && x < kSize && y >= 0 && y < kSize && board[y * kSize + x] != 0;
}
int LetterOf(char c) { return (c >= 'a' ? c - 'a' : c - 'A'); }

}  // namespace

std::string ExactPlay::Place() const {
  const std::string number = std::to_string(column + 1), letter(1, char('A' + row));
  return down ? number + letter : letter + number;
}

std::string ExactPlay::Express(const char* squares) const {
  std::string text(length, ' ');
  for (int i = 0; i < length; ++i) {
    if ((laid >> i) & 1u)
      text[size_t(i)] = (blank >> i) & 1u ? letters[i] : char(letters[i] - 'A' + 'a');
    else
      text[size_t(i)] = squares[Y(i) * kSize + X(i)];
  }
  return text;
}

std::string ExactPlay::Shown() const {
  std::string text(letters, length);
  for (int i = 0; i < length; ++i)
    if ((blank >> i) & 1u) text[size_t(i)] = char(letters[i] - 'A' + 'a');
  return text;
}

namespace {

uint64_t KeyOf(const ExactPlay& p) {
  uint64_t key = uint64_t(0x7FFF - std::clamp<int>(p.points, -1, 0x7FFE)) << 48;
  key |= uint64_t(p.blanks & 3) << 46;
  key |= uint64_t(p.tiles & 7) << 43;
  for (int i = 0; i < 8; ++i) key |= uint64_t(i < p.length ? p.letters[i] - 'A' + 1 : 0) << (38 - 5 * i);
  return key;
}

bool SameKeyBefore(const ExactPlay& a, const ExactPlay& b) {
  if (a.points != b.points) return a.points > b.points;
  if (a.blanks != b.blanks) return a.blanks < b.blanks;
  if (a.tiles != b.tiles) return a.tiles < b.tiles;
  const int order = std::memcmp(a.letters, b.letters, std::min(a.length, b.length));
  if (order != 0) return order < 0;
  if (a.length != b.length) return a.length < b.length;
  if (a.down != b.down) return !a.down;
  if (a.row != b.row) return a.row < b.row;
  if (a.column != b.column) return a.column < b.column;
  // The same play with its blanks elsewhere: the first blank further left first.
  const uint32_t differ = uint32_t(a.blank ^ b.blank);
  return (a.blank & differ & (~differ + 1u)) != 0;
}

}  // namespace

bool PlayBefore(const ExactPlay& a, const ExactPlay& b) {
  const uint64_t ka = a.key ? a.key : KeyOf(a), kb = b.key ? b.key : KeyOf(b);
  if (ka != kb) return ka < kb;
  return SameKeyBefore(a, b);
}

int TruePoints(const char* squares, const ClsWord& play) {
  const std::string& place = play.Place;
  if (place.size() < 2 || place.size() > 3 || play.Express.empty()) return -1;
  const bool down = place[0] >= '0' && place[0] <= '9';
  const char rowLetter = down ? place.back() : place[0];
  const int number = std::atoi(place.c_str() + (down ? 0 : 1));
  const int row = rowLetter - 'A', column = number - 1;
  const int n = int(play.Express.size());
  if (row < 0 || row >= kSize || column < 0 || column >= kSize) return -1;
  if ((down ? row : column) + n > kSize) return -1;
  const int dx = down ? 0 : 1, dy = down ? 1 : 0;
  const auto at = [squares](int x, int y) {
    return x < 0 || x >= kSize || y < 0 || y >= kSize ? char(0) : squares[y * kSize + x];
  };
  const auto value = [](char c) { return c >= 'a' && c <= 'z' ? Value(c - 'a') : 0; };
  int sum = 0, factor = 1, cross = 0, tiles = 0;
  for (int i = 0; i < n; ++i) {
    const int x = column + dx * i, y = row + dy * i;
    if (const char board = at(x, y)) {
      sum += value(board);
      continue;
    }
    const char letter = play.Express[size_t(i)];
    const Premium p = kPremium[size_t(y * kSize + x)];
    const int v = value(letter) * p.letter;
    ++tiles;
    sum += v;
    factor *= p.word;
    // The word across the new tile, when it makes one.
    int before = 0, after = 0, crossSum = 0;
    while (const char c = at(x - dy * (before + 1), y - dx * (before + 1))) {
      crossSum += value(c);
      ++before;
    }
    while (const char c = at(x + dy * (after + 1), y + dx * (after + 1))) {
      crossSum += value(c);
      ++after;
    }
    if (before + after > 0) cross += (crossSum + v) * p.word;
  }
  return sum * factor + cross + (tiles == 7 ? kBonus : 0);
}

namespace {

// A number for each letter; a multiset of letters is the sum of its letters'
// numbers (two multisets that sum alike are told apart by nothing: a rare
// mistake that only makes a bound less close).
constexpr std::array<uint64_t, 26> MakeLetterKeys() {
  std::array<uint64_t, 26> keys{};
  uint64_t x = 0x243F6A8885A308D3ull;
  for (uint64_t& k : keys) {
    x += 0x9E3779B97F4A7C15ull;
    uint64_t z = x;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    k = z ^ (z >> 31);
  }
  return keys;
}
constexpr std::array<uint64_t, 26> kLetterKey = MakeLetterKeys();
// The same by a square's tile, 0 for none (-1).
constexpr std::array<uint64_t, 27> MakeTileKeys() {
  std::array<uint64_t, 27> keys{};
  for (size_t letter = 0; letter < 26; ++letter) keys[letter + 1] = kLetterKey[letter];
  return keys;
}
constexpr std::array<uint64_t, 27> kTileKey = MakeTileKeys();

// The multisets of the words are kept in a filter of one word of 64 bits per
// key, three bits of it set: a multiset that is not there is said to be
// there about once in a hundred times (the bound is then only less close),
// and one that is there is always found. Small enough to stay in the cache.
// (The bits from a table: the baseline processor shifts by a number held
// in a register with more instructions.)
constexpr std::array<uint64_t, 64> MakeBits() {
  std::array<uint64_t, 64> bits{};
  for (size_t i = 0; i < bits.size(); ++i) bits[i] = uint64_t(1) << i;
  return bits;
}
constexpr std::array<uint64_t, 64> kBit = MakeBits();
[[gnu::always_inline]] inline FilterSpot SpotOf(uint64_t key, size_t wordMask) {
  const uint64_t h = (key ^ (key >> 31)) * 0x9E3779B97F4A7C15ull;
  return FilterSpot{size_t(h >> 40) & wordMask, kBit[h & 63] | kBit[(h >> 6) & 63] | kBit[(h >> 12) & 63]};
}

// The letters that make a word with a multiset (the words less one of their
// letters, each with the letter left out) are kept in a filter of lines of
// eight words of 64 bits, a line for each multiset. In three words of its
// line, each turned by a number of bits of its own, a multiset sets the
// bits of its letters: what the three have in common is its letters (and,
// about once in a thousand times for a letter, one that is not). One line
// read tells every letter a blank may stand for.
// The line, and in `bits` the hash that tells the words and turns.
inline FilterSpot CompletionOf(uint64_t key, size_t lines) {
  const uint64_t h = (key ^ (key >> 29)) * 0xBF58476D1CE4E5B9ull;
  return FilterSpot{size_t(((h >> 32) * lines) >> 32), h};
}
inline int CompletionWord(uint64_t hash, int i) { return int(hash >> (3 * i)) & 7; }
inline int CompletionTurn(uint64_t hash, int i) { return int(hash >> (9 + 6 * i)) & 63; }

// The hash of a multiset's key in the table of words.
inline uint64_t AnagramHash(uint64_t key) { return (key ^ (key >> 29)) * 0xD6E8FEB86659FD93ull; }

// The tiles of a way (a set of at most seven of the rack's): a table, as the
// baseline processor has no instruction for it.
constexpr std::array<uint8_t, 128> MakeTileCounts() {
  std::array<uint8_t, 128> counts{};
  for (size_t way = 1; way < counts.size(); ++way) counts[way] = uint8_t(counts[way >> 1] + (way & 1u));
  return counts;
}
constexpr std::array<uint8_t, 128> kTileCount = MakeTileCounts();
int TilesOf(uint32_t way) { return kTileCount[way & 127u]; }

// The rack's few tiles in order, with little code.
template <typename T, typename Before>
void InsertionSort(T* items, int count, Before before) {
  for (int i = 1; i < count; ++i) {
    const T item = items[i];
    int j = i;
    for (; j > 0 && before(item, items[j - 1]); --j) items[j] = items[j - 1];
    items[j] = item;
  }
}

constexpr int kBuckets = 512;  // the last takes every bound above

// The squares of a stretch counted in one number, a field for each count:
// the counts of a stretch are the difference of two sums from the row's left
// edge (a row has 15 squares: no field overflows into the next).
enum CountField : int {
  kFreeSquares = 0,                 // free squares (4 bits)
  kTripleLetters = 4,               // ... that triple their letter (4 bits)
  kDoubleOrTripleLetters = 8,       // ... that double or triple it (4 bits)
  kOpenTripleLetters = 12,          // free squares not crossed that triple their letter (4 bits)
  kOpenDoubleOrTripleLetters = 16,  // ... that double or triple it (4 bits)
  kOpenSquares = 20,                // free squares not crossed (4 bits)
  kDoubleWords = 24,                // free squares that double the word (4 bits)
  kTripleWords = 28,                // ... triple it (4 bits)
  kCrossedSquares = 32,             // free squares between tiles above and below (4 bits)
  kBoardPoints = 36,                // the board's tiles in the stretch (8 bits: at most 150)
  kCrossPoints = 44,  // the tiles above and below crossed squares, times their word factors (14 bits)
};
// (A shape takes the counts of its bound as three bytes, as they lie.)
static_assert(kFreeSquares == 0 && kTripleLetters == 4 && kDoubleOrTripleLetters == 8 &&
              kOpenTripleLetters == 12 && kOpenDoubleOrTripleLetters == 16 && kOpenSquares == 20);
int Count(uint64_t counts, CountField field) {
  const int bits = field == kBoardPoints ? 8 : field == kCrossPoints ? 14 : 4;
  return int(counts >> field) & ((1 << bits) - 1);
}

// The counts of a free square, by its premiums: crossed (its cross word's
// tiles left out) and not.
constexpr std::array<uint64_t, 225> MakeFreeCounts(bool crossed) {
  std::array<uint64_t, 225> counts{};
  for (size_t square = 0; square < counts.size(); ++square) {
    const Premium p = kPremium[square];
    const uint64_t letters = uint64_t(p.letter == 3) << kTripleLetters | uint64_t(p.letter >= 2)
                                                                             << kDoubleOrTripleLetters;
    counts[square] = uint64_t(1) << kFreeSquares | letters | uint64_t(p.word == 2) << kDoubleWords |
                     uint64_t(p.word == 3) << kTripleWords;
    counts[square] += crossed
                          ? uint64_t(1) << kCrossedSquares
                          : letters << (kOpenTripleLetters - kTripleLetters) | uint64_t(1) << kOpenSquares;
  }
  return counts;
}
constexpr std::array<uint64_t, 225> kCrossedCounts = MakeFreeCounts(true);
constexpr std::array<uint64_t, 225> kOpenCounts = MakeFreeCounts(false);

// The word factor of a stretch by its counts of double and triple word
// squares (a line holds three of each at most).
constexpr std::array<int16_t, 256> MakeWordFactors() {
  std::array<int16_t, 256> factors{};
  constexpr int kPowers2[4] = {1, 2, 4, 8};
  constexpr int kPowers3[4] = {1, 3, 9, 27};
  for (int doubles = 0; doubles < 16; ++doubles)
    for (int triples = 0; triples < 16; ++triples)
      factors[size_t(triples << 4 | doubles)] =
          int16_t(kPowers2[std::min(doubles, 3)] * kPowers3[std::min(triples, 3)]);
  return factors;
}
constexpr std::array<int16_t, 256> kWordFactors = MakeWordFactors();
int WordFactorOf(uint64_t counts) { return kWordFactors[size_t(counts >> kDoubleWords) & 255u]; }

}  // namespace

inline int ExactMoves::MainBoundOf(const StripShape& shape, const int16_t* top, int crossedMost) {
  // The most a stretch's plays may be worth, less what the tiles laid add
  // to cross words, when the sum of the j dearest tiles laid is at most
  // top[j]: the dearest on the squares that triple their letter, then on
  // those that double it; or the dearest so on the squares not crossed,
  // and on the crossed ones, at most `crossedMost` in all (each letter
  // times its square's factor), what their cross words allow.
  const int all = top[shape.kN3 >> 4] + top[shape.n32O3 & 15] + top[shape.kN3 & 15];
  const int open = top[shape.n32O3 >> 4] + top[shape.o32Open & 15] + top[shape.o32Open >> 4] + crossedMost;
  return shape.fixed + shape.factor * std::min(all, open);
}

ExactMoves::ExactMoves(const WordGraph& graph) : graph_(graph) {}

const std::vector<ExactPlay>& ExactMoves::All(const char* squares, bool firstPlay, std::string_view rack) {
  Run(squares, firstPlay, rack, Mode::All);
  std::sort(plays_.begin(), plays_.end(), [](const ExactPlay& a, const ExactPlay& b) {
    return a.key != b.key ? a.key < b.key : SameKeyBefore(a, b);
  });
  return plays_;
}

std::optional<ExactPlay> ExactMoves::Best(const char* squares, bool firstPlay, std::string_view rack) {
  Run(squares, firstPlay, rack, Mode::Best);
  if (!haveBest_) return std::nullopt;
  return best_;
}

void ExactMoves::TakeRack(std::string_view rack) {
  count_.fill(0);
  blankFor_.fill(0);
  blanks_ = 0;
  rackSize_ = 0;
  rackLetters_ = 0;
  int values[7] = {};
  for (const char c : rack) {
    if (rackSize_ == 7) break;
    int letter = -1;
    if (c >= 'a' && c <= 'z') letter = c - 'a';
    if (c >= 'A' && c <= 'Z') letter = c - 'A';
    if (c == '?') {
      tileLetter_[rackSize_] = -1;
      values[rackSize_++] = 0;
      ++blanks_;
    } else if (letter >= 0) {
      tileLetter_[rackSize_] = int8_t(letter);
      values[rackSize_++] = Value(letter);
      ++count_[size_t(letter)];
      rackLetters_ |= 1u << letter;
    }
  }
  inRack_ = count_;
  rackBlanks_ = blanks_;
  InsertionSort(values, rackSize_, [](int a, int b) { return a > b; });
  topValues_[0] = 0;
  for (int k = 0; k < 7; ++k) topValues_[k + 1] = int16_t(topValues_[k] + (k < rackSize_ ? values[k] : 0));
  if (mode_ != Mode::Best) return;

  // The tiles by value, highest first, alike letters side by side, blanks
  // last; the ways of taking some of them, each set of letters once.
  InsertionSort(tileLetter_, rackSize_, [](int8_t a, int8_t b) {
    const int va = a < 0 ? -1 : Value(a), vb = b < 0 ? -1 : Value(b);
    return va != vb ? va > vb : a > b;
  });
  byValueCount_ = 0;
  for (int i = 0; i < rackSize_; ++i)
    if (tileLetter_[i] >= 0 && (i == 0 || tileLetter_[i] != tileLetter_[i - 1]))
      byValue_[byValueCount_++] = tileLetter_[i];
  for (int j = 0; j < 8; ++j) {
    rankValue_[j] = j < byValueCount_ ? Value(byValue_[j]) : 0;
    rankBit_[j] = j < byValueCount_ ? 1u << byValue_[j] : 0;
  }
  std::fill(std::begin(wayCount_), std::end(wayCount_), uint8_t(0));
  std::fill(std::begin(realWayCount_), std::end(realWayCount_), uint8_t(0));
  alikeBefore_ = 0;
  for (int i = 1; i < rackSize_; ++i)
    if (tileLetter_[i] == tileLetter_[i - 1]) alikeBefore_ |= 1u << i;
  wayKey_[0] = 0;
  for (uint32_t way = 0; way < (1u << rackSize_); ++way) {
    if (way) {
      const int tile = __builtin_ctz(way);
      const uint32_t rest = way & (way - 1);
      const int letter = tileLetter_[tile];
      wayKey_[way] = wayKey_[rest] + (letter >= 0 ? kLetterKey[size_t(letter)] : 0);
    }
    // Of alike tiles, the first ones only.
    if (way & alikeBefore_ & ~(way << 1)) continue;
    const int n = TilesOf(way);
    ways_[n][wayCount_[n]++] = uint8_t(way);
    // The tiles without a blank after its last that it may take (read
    // when there is a blank).
    if (rackBlanks_ == 0) continue;
    extensions_[way] = 0;
    for (int t = way ? 32 - __builtin_clz(way) : 0; t < rackSize_ - rackBlanks_; ++t)
      if (!((alikeBefore_ >> t) & 1u) || ((way >> (t - 1)) & 1u)) extensions_[way] |= uint8_t(1u << t);
    if (way < (1u << (rackSize_ - rackBlanks_))) realWayCount_[n] = wayCount_[n];
  }
  if (rackBlanks_ == 0) std::copy(std::begin(wayCount_), std::end(wayCount_), std::begin(realWayCount_));
}

void ExactMoves::Run(const char* squares, bool firstPlay, std::string_view rack, Mode mode) {
  mode_ = mode;
  stats_ = Stats{};
  plays_.clear();
  haveBest_ = false;
  TakeRack(rack);
  if (rackSize_ == 0 || graph_.Empty()) return;

  // The squares of both ways (by row the columns to make again; down, on
  // the board turned through its diagonal). From the board of the last
  // call, only those whose state may have changed: a square changed, the
  // squares beside it, and those of its column (across) and of its row
  // (down) through the tiles next to it, on either board, to the first
  // free square each way (their cross words).
  uint16_t across[kSize], down[kSize];
  const void* graphNow = &graph_.At(0);
  if (preparedFor_ != graphNow || preparedNodes_ != graph_.NodeCount()) crossSlots_.fill(CrossSlot{});
  bool changed = true, turnAll = true;
  if (!(prepared_ && preparedFirst_ == firstPlay && preparedFor_ == graphNow &&
        preparedNodes_ == graph_.NodeCount())) {
    std::fill(std::begin(across), std::end(across), uint16_t((1u << kSize) - 1u));
    std::fill(std::begin(down), std::end(down), uint16_t((1u << kSize) - 1u));
    shapesDirty_[0] = shapesDirty_[1] = (1u << kSize) - 1u;
  } else {
    std::fill(std::begin(across), std::end(across), uint16_t(0));
    std::fill(std::begin(down), std::end(down), uint16_t(0));
    changed = turnAll = false;
    const auto occupied = [&](int x, int y) {
      return squares[y * kSize + x] || preparedBoard_[size_t(y * kSize + x)];
    };
    // From line `from` on by `step`, square `at` of each line, through the
    // tiles of either board to the first free square (a column of the
    // across lines, or a row of the down lines).
    const auto spread = [&](uint16_t* lines, int from, int step, int at, bool column) {
      for (int line = from; line >= 0 && line < kSize; line += step) {
        lines[line] = uint16_t(lines[line] | 1u << at);
        if (!(column ? occupied(at, line) : occupied(line, at))) break;
      }
    };
    // (eight squares compared at once)
    uint64_t differ[29] = {};
    for (int w = 0; w < 28; ++w) {
      uint64_t a, b;
      std::memcpy(&a, squares + 8 * w, 8);
      std::memcpy(&b, preparedBoard_.data() + 8 * w, 8);
      differ[w] = a ^ b;
    }
    differ[28] = squares[224] != preparedBoard_[224];
    for (int w = 0; w < 29; ++w)
      for (uint64_t d = differ[w]; d; d &= ~(uint64_t(0xFF) << (__builtin_ctzll(d) & ~7))) {
        const int i = 8 * w + (__builtin_ctzll(d) >> 3);
        changed = true;
        const int x = i % kSize, y = i / kSize;
        preparedTurned_[size_t(x * kSize + y)] = squares[i];
        across[y] = uint16_t(across[y] | (7u << x >> 1));
        down[x] = uint16_t(down[x] | (7u << y >> 1));
        spread(across, y - 1, -1, x, true);
        spread(across, y + 1, 1, x, true);
        spread(down, x - 1, -1, y, false);
        spread(down, x + 1, 1, y, false);
      }
    for (int line = 0; line < kSize; ++line) {
      across[line] &= uint16_t((1u << kSize) - 1u);
      down[line] &= uint16_t((1u << kSize) - 1u);
    }
  }
  if (changed) {
    PrepareSquares(squares, false, firstPlay, across);
    if (turnAll)
      for (int y = 0; y < kSize; ++y)
        for (int x = 0; x < kSize; ++x) preparedTurned_[size_t(y * kSize + x)] = squares[x * kSize + y];
    PrepareSquares(preparedTurned_.data(), true, firstPlay, down);
    std::copy(squares, squares + 225, preparedBoard_.begin());
  }
  prepared_ = true;
  preparedFirst_ = firstPlay;
  preparedFor_ = graphNow;
  preparedNodes_ = graph_.NodeCount();
  usable_ = rackBlanks_ > 0 ? kAllLetters : rackLetters_;
  if (mode_ == Mode::Best) {
    RunBest(firstPlay);
    return;
  }

  // The anchors of both passes, each with how many free squares that touch
  // nothing lie just left of it (the letters laid left of the anchor).
  anchors_.clear();
  for (const bool down : {false, true}) {
    for (int row = 0; row < kSize; ++row) {
      if (!((rowsWithAnchors_[down ? 1 : 0] >> row) & 1u)) continue;
      EnterRow(down, row);
      int emptyRun = 0;
      for (int x = 0; x < kSize; ++x) {
        const Square& sq = line_[x];
        if (!sq.anchor) {
          emptyRun = sq.tile < 0 ? emptyRun + 1 : 0;
          continue;
        }
        ++stats_.anchors;
        const int leftLimit = std::min(emptyRun, rackSize_ - 1);
        emptyRun = 0;
        if (!(sq.cross & usable_)) continue;
        anchors_.push_back(Anchor{down, uint8_t(row), uint8_t(x), uint8_t(leftLimit)});
      }
    }
  }
  for (const Anchor& a : anchors_) {
    EnterRow(a.down, a.row);
    SearchAnchor(a.column, a.leftLimit);
  }
}

namespace {

// The tiles above and below a free square: from `top` to `bottom`, and a key
// of their letters (0 when there are none, or too many to make one).
uint64_t CrossKeyOf(const char* board, int x, int y, int& top, int& bottom) {
  top = bottom = y;
  while (top > 0 && board[(top - 1) * kSize + x]) --top;
  while (bottom < kSize - 1 && board[(bottom + 1) * kSize + x]) ++bottom;
  if (top == bottom || bottom - top > 10) return 0;
  uint64_t key = 1ull << 60 | uint64_t(y - top) << 56 | uint64_t(bottom - top) << 52;
  for (int r = top, i = 0; r <= bottom; ++r)
    if (r != y) key |= uint64_t(LetterOf(board[r * kSize + x])) << (5 * i++);
  return key;
}
size_t CrossSlotOf(uint64_t key) { return size_t((key * 0x9E3779B97F4A7C15ull) >> 52); }

}  // namespace

uint32_t ExactMoves::CrossSet(const char* board, int x, int y, uint32_t candidates, int& sum, bool& crossed) {
  int top, bottom;
  const uint64_t key = CrossKeyOf(board, x, y, top, bottom);
  sum = 0;
  crossed = top < y || bottom > y;
  if (!crossed) return candidates;
  for (int r = top; r <= bottom; ++r) {
    const char c = board[r * kSize + x];
    if (c >= 'a') sum += Value(c - 'a');
  }
  // The same letters above and below were met before (on this board or
  // an earlier one) more often than not: their set is kept by their key.
  if (key && crossSlots_[CrossSlotOf(key)].key == key)
    return crossSlots_[CrossSlotOf(key)].allowed & candidates;
  const uint32_t allowed = CrossWalk(board, x, y, top, bottom);
  if (key) crossSlots_[CrossSlotOf(key)] = CrossSlot{key, allowed};
  return allowed & candidates;
}

uint32_t ExactMoves::CrossWalk(const char* board, int x, int y, int top, int bottom) const {
  // Every letter that makes a word with the tiles from `top` to `bottom`.
  uint32_t node = graph_.Root();
  for (int r = top; r < y; ++r) {
    node = graph_.Child(node, LetterOf(board[r * kSize + x]));
    if (!node) return 0;
  }
  const WordGraph::Node& above = graph_.At(node);
  if (bottom == y) return above.ends;
  uint32_t allowed = 0;
  for (uint32_t letters = above.children; letters; letters &= letters - 1) {
    const int letter = __builtin_ctz(letters);
    uint32_t n = graph_.Child(node, letter);
    for (int r = y + 1; r < bottom && n; ++r) n = graph_.Child(n, LetterOf(board[r * kSize + x]));
    if (n && ((graph_.At(n).ends >> LetterOf(board[bottom * kSize + x])) & 1u)) allowed |= 1u << letter;
  }
  return allowed;
}

void ExactMoves::PrepareSquares(const char* board, bool down, bool firstPlay, const uint16_t* redo) {
  // The squares asked for (the others stand as they were for the board
  // before), every letter a cross word allows.
  std::array<Square, 225>& squares = squares_[down ? 1 : 0];
  uint32_t& rows = rowsWithAnchors_[down ? 1 : 0];
  // (the letters kept for the cross words asked of the memory together first)
  if (!firstPlay)
    for (int y = 0; y < kSize; ++y)
      for (uint32_t xs = redo[y]; xs; xs &= xs - 1) {
        const int x = __builtin_ctz(xs);
        if (board[y * kSize + x] || !(Occupied(board, x, y - 1) || Occupied(board, x, y + 1))) continue;
        int top, bottom;
        if (const uint64_t key = CrossKeyOf(board, x, y, top, bottom))
          AskAhead(&crossSlots_[CrossSlotOf(key)]);
      }
  for (int y = 0; y < kSize; ++y) {
    if (!redo[y]) continue;
    for (uint32_t xs = redo[y]; xs; xs &= xs - 1) {
      const int x = __builtin_ctz(xs);
      Square& kept = squares[size_t(y * kSize + x)];
      const char c = board[y * kSize + x];
      Square s;
      if (c) {
        s.tile = int8_t(LetterOf(c));
        s.tileValue = int8_t(c >= 'a' ? Value(c - 'a') : 0);
      } else {
        s.cross = kAllLetters;
        if (firstPlay) {
          s.anchor = x == kCentre && y == kCentre;
        } else {
          s.anchor = Occupied(board, x - 1, y) || Occupied(board, x + 1, y) || Occupied(board, x, y - 1) ||
                     Occupied(board, x, y + 1);
          if (s.anchor) {
            int sum = 0;
            bool crossed = false;
            s.cross = CrossSet(board, x, y, kAllLetters, sum, crossed);
            s.crossSum = uint8_t(sum);
            s.crossed = crossed;
          }
        }
      }
      // A row whose stretches change (by its tiles, its cross words' tiles
      // and the letters these allow) has them made again.
      if (s.crossSum != kept.crossSum || s.crossed != kept.crossed || s.cross != kept.cross ||
          s.tile != kept.tile || s.tileValue != kept.tileValue)
        shapesDirty_[down ? 1 : 0] |= 1u << y;
      kept = s;
    }
    rows &= ~(1u << y);
    for (int x = 0; x < kSize; ++x)
      if (squares[size_t(y * kSize + x)].anchor) {
        rows |= 1u << y;
        break;
      }
  }
}

void ExactMoves::EnterRow(bool down, int row, int from, int to) {
  down_ = down;
  row_ = row;
  line_ = &squares_[down ? 1 : 0][size_t(row * kSize)];
  for (int x = from; x < to; ++x) {
    const Premium p = kPremium[size_t(row * kSize + x)];
    letterFactor_[x] = p.letter;
    wordFactor_[x] = p.word;
    letter_[x] = line_[x].tile;
    laid_[x] = false;
  }
}

void ExactMoves::SearchAnchor(int anchor, int leftLimit) {
  anchor_ = anchor;
  if (anchor > 0 && line_[anchor - 1].tile >= 0) {
    // The tiles on the left are the start of the word.
    int start = anchor;
    while (start > 0 && line_[start - 1].tile >= 0) --start;
    uint32_t node = graph_.Root();
    int mainSum = 0;
    for (int x = start; x < anchor && node; ++x) {
      node = graph_.Child(node, line_[x].tile);
      mainSum += line_[x].tileValue;
    }
    if (!node) return;
    start_ = start;
    ExtendRight(node, anchor, false, mainSum, 1, 0, 0);
  } else {
    LeftPart(graph_.Root(), leftLimit, 0);
  }
}

void ExactMoves::LeftPart(uint32_t node, int limit, int leftLength) {
  StartRight(node, leftLength);
  if (limit <= 0) return;
  const uint32_t letters = graph_.At(node).children & (blanks_ > 0 ? kAllLetters : rackLetters_);
  for (uint32_t l = letters; l; l &= l - 1) {
    const int letter = __builtin_ctz(l);
    ++stats_.steps;
    leftLetter_[leftLength] = int8_t(letter);
    Take(letter);
    LeftPart(graph_.Child(node, letter), limit - 1, leftLength + 1);
    GiveBack(letter);
  }
}

void ExactMoves::StartRight(uint32_t node, int leftLength) {
  // The letters on the left lie on free squares that touch nothing: no
  // cross word, their premiums only.
  start_ = anchor_ - leftLength;
  int mainSum = 0, wordFactor = 1;
  for (int k = 0; k < leftLength; ++k) {
    const int x = start_ + k;
    mainSum += Value(leftLetter_[k]) * letterFactor_[x];
    wordFactor *= wordFactor_[x];
    letter_[x] = leftLetter_[k];
    laid_[x] = true;
  }
  ExtendRight(node, anchor_, false, mainSum, wordFactor, 0, leftLength);
  for (int k = 0; k < leftLength; ++k) {
    letter_[start_ + k] = -1;
    laid_[start_ + k] = false;
  }
}

void ExactMoves::ExtendRight(uint32_t node, int column, bool isWord, int mainSum, int wordFactor,
                             int crossTotal, int tiles) {
  if (column == kSize || line_[column].tile < 0) {
    if (isWord && column > anchor_) Record(column, mainSum, wordFactor, crossTotal, tiles);
    if (column == kSize || !node) return;
    const Square& s = line_[column];
    const WordGraph::Node& n = graph_.At(node);
    const uint32_t letters = (n.children | n.ends) & s.cross & (blanks_ > 0 ? kAllLetters : rackLetters_);
    if (!letters) return;
    const int lf = letterFactor_[column], wf = wordFactor_[column];
    laid_[column] = true;
    for (uint32_t l = letters; l; l &= l - 1) {
      const int letter = __builtin_ctz(l);
      ++stats_.steps;
      const uint32_t child = (n.children >> letter) & 1u ? graph_.Child(node, letter) : 0;
      letter_[column] = int8_t(letter);
      const int value = Value(letter) * lf;
      const int cross = s.crossed ? (s.crossSum + value) * wf : 0;
      Take(letter);
      ExtendRight(child, column + 1, (n.ends >> letter) & 1u, mainSum + value, wordFactor * wf,
                  crossTotal + cross, tiles + 1);
      GiveBack(letter);
    }
    letter_[column] = -1;
    laid_[column] = false;
    return;
  }
  // A tile of the board: the word goes through it.
  const int letter = line_[column].tile;
  const WordGraph::Node& n = graph_.At(node);
  if (!node || !(((n.children | n.ends) >> letter) & 1u)) return;
  ++stats_.steps;
  const uint32_t child = (n.children >> letter) & 1u ? graph_.Child(node, letter) : 0;
  ExtendRight(child, column + 1, (n.ends >> letter) & 1u, mainSum + line_[column].tileValue, wordFactor,
              crossTotal, tiles);
}

// ---- The best play ----

void ExactMoves::MakeGraphTables() {
  const void* graphNow = graph_.NodeCount() ? &graph_.At(0) : nullptr;
  if (graphNow == tablesFor_ && graph_.NodeCount() == tablesNodes_ && graph_.EdgeCount() == tablesEdges_)
    return;
  tablesFor_ = graphNow;
  tablesNodes_ = graph_.NodeCount();
  tablesEdges_ = graph_.EdgeCount();
  // A node's children come before it: the lengths in one pass.
  lengths_.assign(graph_.NodeCount(), 0);
  for (uint32_t id = 1; id < graph_.NodeCount(); ++id) {
    const WordGraph::Node& n = graph_.At(id);
    uint32_t lengths = n.ends ? 2u : 0u;
    for (uint32_t letters = n.children; letters; letters &= letters - 1)
      lengths |= uint32_t(lengths_[graph_.Child(id, __builtin_ctz(letters))]) << 1;
    lengths_[id] = uint16_t(lengths);
  }
  // Words less one of their letters: about seven keys a word.
  size_t words = 1024;  // of 64 bits: about 22 bits a key
  while (words * 64 < graph_.WordCount() * 20) words *= 2;
  multisets_.assign(words, 0);
  // About seven letters left out a word, 32 bits of the filter for each.
  completions_.assign(std::max<size_t>(1024, graph_.WordCount() * 7 * 32 / 512), CompletionLine{});
  // The words by multiset: each word's home and letters as the walk meets
  // them, then the words laid in the order of their homes.
  int homeBits = 10;
  while ((size_t(1) << homeBits) < graph_.WordCount() + graph_.WordCount() / 3) ++homeBits;
  anagramShift_ = 64 - homeBits;
  struct Met {
    uint64_t hash;
    AnagramEntry entry;
  };
  std::vector<Met> met;
  met.reserve(graph_.WordCount());
  struct Walker {
    const WordGraph& graph;
    BigTable<uint64_t>& whole;
    BigTable<CompletionLine>& less;
    std::vector<Met>& met;
    int8_t word[15] = {};
    static void Set(BigTable<uint64_t>& filter, uint64_t key) {
      const FilterSpot spot = SpotOf(key, filter.size() - 1);
      filter[spot.at] |= spot.bits;
    }
    // The letters left out are set some lines behind the walk, each line
    // asked of the memory when its letter is met (millions of lines far
    // apart: one at a time, each would wait for the memory).
    struct Pending {
      FilterSpot spot;
      int letter;
    };
    std::array<Pending, 64> pending{};
    size_t pendingCount = 0;
    void SetLetter(const FilterSpot& spot, int letter) {
      AskAhead(less[spot.at].bits);
      Pending& slot = pending[pendingCount++ % pending.size()];
      if (pendingCount > pending.size()) Apply(slot);
      slot = Pending{spot, letter};
    }
    void Apply(const Pending& p) {
      for (int w = 0; w < 3; ++w)
        less[p.spot.at].bits[CompletionWord(p.spot.bits, w)] |=
            std::rotl(uint64_t(1) << p.letter, CompletionTurn(p.spot.bits, w));
    }
    void Flush() {
      const size_t kept = std::min(pendingCount, pending.size());
      for (size_t i = 0; i < kept; ++i) Apply(pending[(pendingCount - kept + i) % pending.size()]);
      pendingCount = 0;
    }
    void Walk(uint32_t node, int depth, uint64_t key, uint32_t letters) {
      const WordGraph::Node& n = graph.At(node);
      for (uint32_t ends = n.ends; ends; ends &= ends - 1) {
        const int last = __builtin_ctz(ends);
        const uint64_t whole_key = key + kLetterKey[size_t(last)];
        Set(whole, whole_key);
        for (uint32_t in = letters | (1u << last); in; in &= in - 1) {
          const int out = __builtin_ctz(in);
          SetLetter(CompletionOf(whole_key - kLetterKey[size_t(out)], less.size()), out);
        }
        word[depth] = int8_t(last);
        Met m{AnagramHash(whole_key), {}};
        m.entry.letters = uint64_t(depth + 1) << 60;
        for (int i = 0; i <= depth; ++i) {
          if (i < 12)
            m.entry.letters |= uint64_t(word[i]) << (5 * i);
          else
            m.entry.more |= uint32_t(word[i]) << (5 * (i - 12));
        }
        m.entry.tag = uint32_t(m.hash);
        met.push_back(m);
      }
      for (uint32_t children = n.children; children; children &= children - 1) {
        const int letter = __builtin_ctz(children);
        word[depth] = int8_t(letter);
        Walk(graph.Child(node, letter), depth + 1, key + kLetterKey[size_t(letter)],
             letters | (1u << letter));
      }
    }
  };
  Walker walker{graph_, multisets_, completions_, met};
  walker.Walk(graph_.Root(), 0, 0, 0);
  walker.Flush();
  // (by home: counted, then each word in its place)
  const int shift = anagramShift_;
  std::vector<uint32_t> starts((size_t(1) << homeBits) + 1, 0);
  for (const Met& m : met) ++starts[size_t(m.hash >> shift) + 1];
  for (size_t h = 1; h < starts.size(); ++h) starts[h] += starts[h - 1];
  std::vector<AnagramEntry> byHome(met.size());
  std::vector<uint32_t> homes(met.size());
  for (const Met& m : met) {
    const uint32_t at = starts[size_t(m.hash >> shift)]++;
    byHome[at] = m.entry;
    homes[at] = uint32_t(m.hash >> shift);
  }
  // The table ends past its last home as far as the words need, with free
  // places after them (a read asks for the line after a home's too).
  anagrams_.assign((size_t(1) << homeBits) + 4, AnagramEntry{});
  size_t at = 0;
  for (size_t i = 0; i < byHome.size(); ++i) {
    at = std::max(at, size_t(homes[i]));
    if (at + 4 >= anagrams_.size()) anagrams_.resize(at + 5);
    anagrams_[at] = byHome[i];
    anagrams_[at].more |= uint32_t(at - homes[i]) << 16;
    ++at;
  }
}

inline uint32_t ExactMoves::CompletionsAt(size_t lineIndex, uint64_t h) const {
  const uint64_t* line = completions_[lineIndex].bits;
  return uint32_t(std::rotr(line[CompletionWord(h, 0)], CompletionTurn(h, 0)) &
                  std::rotr(line[CompletionWord(h, 1)], CompletionTurn(h, 1)) &
                  std::rotr(line[CompletionWord(h, 2)], CompletionTurn(h, 2))) &
         kAllLetters;
}

bool ExactMoves::PairCompletions(uint64_t letters, uint32_t* seconds, bool anyOnly) {
  // The 26 lines asked of the memory together, then read.
  FilterSpot spots[26];
  for (int l = 0; l < 26; ++l) {
    spots[l] = CompletionOf(letters + kLetterKey[size_t(l)], completions_.size());
    AskAhead(completions_[spots[l].at].bits);
  }
  bool any = false;
  for (int l = 0; l < 26; ++l) {
    ++stats_.lookups;
    seconds[l] = CompletionsAt(spots[l].at, spots[l].bits) >> l << l;
    any = any || seconds[l];
    if (any && anyOnly) break;
  }
  return any;
}

void ExactMoves::RunBest(bool firstPlay) {
  MakeGraphTables();
  if (entries_.empty()) {
    entries_.resize(2 * kSize * kShapesInRow);  // room for every shape
    hits_.resize(2 * known_.size() * kHits);    // room for every one's, and some moved
  }
  entryCount_ = 0;
  heads_.assign(kBuckets, -1);
  topBucket_ = 0;
  NewKnownTable();
  for (const bool down : {false, true})
    for (int row = 0; row < kSize; ++row) {
      uint32_t& dirty = shapesDirty_[down ? 1 : 0];
      if ((dirty >> row) & 1u) {
        MakeShapes(down, row, firstPlay);
        dirty &= ~(1u << row);
      }
    }
  // The stretches of seven tiles are weighed by what the filters say of the
  // whole rack with their board letters: those lines asked of the memory
  // together first.
  if (rackSize_ == 7) {
    FilterSpot spots[35];
    for (int line = 0; line < 2 * kSize; ++line)
      if ((rowsWithAnchors_[line / kSize] >> (line % kSize)) & 1u)
        for (size_t index = sevensFrom_[size_t(line)]; index < shapes_[size_t(line)].size(); ++index)
          SpotsFor(shapes_[size_t(line)][index].boardKey, 7, spots);
  }
  for (const bool down : {false, true})
    for (int row = 0; row < kSize; ++row)
      if ((rowsWithAnchors_[down ? 1 : 0] >> row) & 1u) AddStrips(down, row);
  stats_.strips = entryCount_;
  for (int bucket = topBucket_; bucket >= 0; --bucket) {
    if (haveBest_ && bucket < best_.points && bucket < kBuckets - 1) break;
    while (heads_[size_t(bucket)] >= 0) {
      const int index = heads_[size_t(bucket)];
      Entry& entry = entries_[size_t(index)];
      heads_[size_t(bucket)] = entry.next;
      if (haveBest_ && entry.bound < best_.points) continue;
      const Strip strip = StripOf(entry);
      if (!entry.refined) {
        // The memory the next stretch will need is asked for while this
        // one is weighed.
        int next = entry.next;
        for (int b = bucket - 1; next < 0 && b >= 0; --b) next = heads_[size_t(b)];
        if (next >= 0 && !entries_[size_t(next)].refined) AskAheadFor(entries_[size_t(next)]);
        entry.refined = true;
        ++stats_.stripsRefined;
        entry.bound = std::min(entry.bound, Refine(strip));
        if (entry.bound < 0 || (haveBest_ && entry.bound < best_.points)) continue;
        if (entry.bound < bucket) {
          Push(index);
          continue;
        }
      }
      ++stats_.stripsSearched;
      SearchStrip(strip);
    }
  }
}

void ExactMoves::Push(int index) {
  Entry& entry = entries_[size_t(index)];
  const int bucket = std::clamp(entry.bound, 0, kBuckets - 1);
  entry.next = heads_[size_t(bucket)];
  heads_[size_t(bucket)] = index;
  topBucket_ = std::max(topBucket_, bucket);
}

void ExactMoves::MakeShapes(bool down, int row, bool firstPlay) {
  // Every stretch of the row a play may cover, as the board makes it (the
  // rack's part is weighed at each search). The row's squares as masks:
  // its tiles, the free squares with a tile above or below, those no letter
  // may fill (their cross word allows none: no play covers them); and up
  // to each square, from the left, the squares counted and the board's
  // letters, and the free squares in order (then the edge, as often as a
  // play may need).
  const int lineIndex = (down ? kSize : 0) + row;
  const Square* line = &squares_[down ? 1 : 0][size_t(row * kSize)];
  uint32_t tiles = 0, crossed = 0, dead = 1u << kSize;
  uint64_t counts[kSize + 1], keys[kSize + 1];
  counts[0] = keys[0] = 0;
  int frees[kSize + 8], freeCount = 0;
  for (int x = 0; x < kSize; ++x) {
    const Square& s = line[x];
    const size_t square = size_t(row * kSize + x);
    const bool tile = s.tile >= 0;
    // (a tile has no cross word, and a free square no value)
    const uint64_t free = (s.crossed ? kCrossedCounts : kOpenCounts)[square] & (uint64_t(tile) - 1u);
    counts[x + 1] = counts[x] + free + (uint64_t(s.tileValue) << kBoardPoints) +
                    (uint64_t(s.crossSum * kPremium[square].word) << kCrossPoints);
    keys[x + 1] = keys[x] + kTileKey[size_t(s.tile + 1)];
    frees[freeCount] = x;
    freeCount += !tile;
    tiles |= uint32_t(tile) << x;
    crossed |= uint32_t(s.crossed) << x;
    dead |= uint32_t(!tile && !s.cross) << x;
  }
  std::fill(frees + freeCount, frees + freeCount + 8, kSize);
  crossedSquares_[size_t(lineIndex)] = uint16_t(crossed);
  // The squares a play must cover one of (a tile, a crossed square, or the
  // centre of the first play), the squares a word may begin on (not just
  // after a tile) and end on (not just before one).
  constexpr uint32_t kRow = (1u << kSize) - 1u;
  const uint32_t touch = (firstPlay ? (row == kCentre ? 1u << kCentre : 0u) : tiles | crossed) | 1u << kSize;
  const uint32_t starts = kRow & ~(tiles << 1), ends = kRow & ~(tiles >> 1);
  const int fewest = firstPlay ? 2 : 1;  // tiles a play lays
  StripShape made[kShapesInRow], sevens[kShapesInRow];
  int madeCount = 0, sevenCount = 0;
  for (uint32_t ss = starts; ss; ss &= ss - 1) {
    const int start = __builtin_ctz(ss);
    // Ends from the first square a play must cover (with its fewest tiles,
    // and past the start) to before the free square one beyond seven
    // tiles, or before a square no letter fills.
    const int freeBefore = Count(counts[start], kFreeSquares);
    const int last = std::min(frees[freeBefore + 7], __builtin_ctz(dead >> start << start));
    const int first =
        std::max({__builtin_ctz(touch >> start << start), frees[freeBefore + fewest - 1], start + 1});
    if (first >= last) continue;
    for (uint32_t es = ends & ((1u << last) - 1u) >> first << first; es; es &= es - 1) {
      const int e = __builtin_ctz(es);
      const uint64_t c = counts[e + 1] - counts[start];
      const int k = Count(c, kFreeSquares);
      const int factor = WordFactorOf(c);
      StripShape& shape = k == 7 ? sevens[sevenCount] : made[madeCount];
      shape.boardKey = keys[e + 1] - keys[start];
      shape.fixed = int16_t(Count(c, kBoardPoints) * factor + Count(c, kCrossPoints) + (k == 7 ? kBonus : 0));
      shape.squares = uint16_t(((1u << (e + 1)) - 1u) >> start << start);
      shape.factor = uint8_t(factor);
      // (the counts of the bound, as the fields lie)
      shape.kN3 = uint8_t(c);
      shape.n32O3 = uint8_t(c >> 8);
      shape.o32Open = uint8_t(c >> 16);
      // One tile with a tile above or below it makes a play down.
      const bool kept = down || k != 1 || Count(c, kCrossedSquares) != 1;
      sevenCount += kept && k == 7;
      madeCount += kept && k != 7;
    }
  }
  // (the stretches of seven tiles last)
  std::vector<StripShape>& shapes = shapes_[size_t(lineIndex)];
  shapes.assign(made, made + madeCount);
  shapes.insert(shapes.end(), sevens, sevens + sevenCount);
  sevensFrom_[size_t(lineIndex)] = uint8_t(madeCount);
  shapeWeights_[size_t(lineIndex)].assign(shapes.size(), ShapeWeights{{}, false});
}

void ExactMoves::AddStrips(bool down, int row) {
  // Of the free squares with tiles above or below (the others take any
  // letter), those no letter of the rack may fill; and up to each square,
  // what they may bring at most, in their cross words and in the row's:
  // the dearest letter of the rack their cross words allow, times the
  // square's factors.
  const int lineIndex = (down ? kSize : 0) + row;
  const Square* line = &squares_[down ? 1 : 0][size_t(row * kSize)];
  const Premium* premiums = &kPremium[size_t(row * kSize)];
  uint32_t blocked = 0;
  int crossMost[kSize + 1] = {}, crossedMost[kSize + 1] = {};
  for (uint32_t xs = crossedSquares_[size_t(lineIndex)]; xs; xs &= xs - 1) {
    const int x = __builtin_ctz(xs);
    const uint32_t cross = line[x].cross;
    blocked |= uint32_t(!(cross & usable_)) << x;
    uint32_t allowed = 1u << 7;  // (bit j: the rack's j-th dearest letter; then none)
    for (int j = 0; j < 7; ++j) allowed |= uint32_t((cross & rankBit_[j]) != 0) << j;
    const int most = rankValue_[__builtin_ctz(allowed)] * premiums[x].letter;
    crossMost[x + 1] = most * premiums[x].word;
    crossedMost[x + 1] = most;
  }
  for (int x = 0; x < kSize; ++x) {
    crossMost[x + 1] += crossMost[x];
    crossedMost[x + 1] += crossedMost[x];
  }
  // (what the loops read and write held apart, so that no write is taken
  // to change what they read)
  const std::vector<StripShape>& shapes = shapes_[size_t(lineIndex)];
  const StripShape* const first = shapes.data();
  const int count = int(shapes.size()), sevens = sevensFrom_[size_t(lineIndex)], rackSize = rackSize_;
  Entry* const entries = entries_.data();
  int32_t* const heads = heads_.data();
  int used = entryCount_, topBucket = topBucket_;
  const uint64_t rackKey = wayKey_[(1u << rackSize) - 1u];
  const auto add = [&](int index, const int16_t* top, bool kept) __attribute__((always_inline)) {
    const StripShape& shape = first[index];
    const int from = __builtin_ctz(shape.squares), to = 32 - __builtin_clz(shape.squares);
    const int cross = crossMost[to] - crossMost[from], crossed = crossedMost[to] - crossedMost[from];
    const int bound = MainBoundOf(shape, top, crossed) + cross;
    const int bucket = std::min(bound, kBuckets - 1);
    entries[used] = Entry{.bound = bound,
                          .next = heads[bucket],
                          .crossMost = int16_t(cross),
                          .crossedMost = int16_t(crossed),
                          .line = uint8_t(lineIndex),
                          .shape = uint8_t(index),
                          .refined = false};
    heads[bucket] = kept ? used : heads[bucket];
    topBucket = kept ? std::max(topBucket, bucket) : topBucket;
    used += kept;
  };
  // Stretches of fewer than seven tiles, weighed by the rack's dearest
  // tiles until their turn comes.
  for (int index = 0; index < sevens; ++index) {
    const StripShape& shape = first[index];
    add(index, topValues_, !(shape.squares & blocked) && shape.Free() <= rackSize);
  }
  // The plays of every tile: only when the rack's ways make a word with
  // these board letters, and for what these ways bring.
  if (rackSize == 7)
    for (int index = sevens; index < count; ++index) {
      const StripShape& shape = first[index];
      if (shape.squares & blocked) continue;
      if (rackBlanks_ == 0) {
        // (without a blank, the one way is the whole rack: its word or none)
        const FilterSpot spot = SpotOf(shape.boardKey + rackKey, multisets_.size() - 1);
        ++stats_.lookups;
        if ((multisets_[spot.at] & spot.bits) == spot.bits) add(index, topValues_, true);
        continue;
      }
      if (rackBlanks_ == 2) {
        // (with two, the one way is the whole rack too, taken to make a word
        // until the stretch is searched)
        add(index, topValues_, true);
        continue;
      }
      const Known& known = KnownFor(shape.boardKey, 7);
      if (known.any) add(index, known.top, true);
    }
  entryCount_ = used;
  topBucket_ = topBucket;
}

ExactMoves::Strip ExactMoves::StripOf(const Entry& entry) const {
  const StripShape& shape = shapes_[entry.line][entry.shape];
  Strip strip;
  strip.shape = shape;
  strip.crossMost = entry.crossMost;
  strip.crossedMost = entry.crossedMost;
  strip.down = entry.line >= kSize;
  strip.row = uint8_t(entry.line % kSize);
  strip.start = uint8_t(__builtin_ctz(shape.squares));
  strip.end = uint8_t(32 - __builtin_clz(shape.squares));
  strip.shapeIndex = entry.shape;
  return strip;
}

void ExactMoves::NewKnownTable() {
  if (++knownStamp_ == 0) {
    for (KnownSlot& slot : knownSlots_) slot.stamp = 0;
    for (Asked& asked : asked_) asked.stamp = 0;
    knownStamp_ = 1;
  }
  knownUsed_ = 0;
  hitsUsed_ = 0;
}

ExactMoves::KnownSlot& ExactMoves::KnownSlotFor(uint64_t key) {
  const size_t mask = knownSlots_.size() - 1;
  size_t at = size_t((key ^ (key >> 31)) * 0x9E3779B97F4A7C15ull >> 50) & mask;
  while (knownSlots_[at].stamp == knownStamp_ && known_[knownSlots_[at].known].key != key)
    at = (at + 1) & mask;
  return knownSlots_[at];
}

int ExactMoves::SpotsFor(uint64_t boardKey, int k, FilterSpot* spots) const {
  // Without a blank, every way of k tiles in the filter of the words'
  // multisets; with one, the ways of k - 1 tiles without a blank in the
  // filter of completions (see KnownFor). Each asked of the memory.
  if (rackBlanks_ == 0) {
    for (int w = 0; w < wayCount_[k]; ++w) {
      spots[w] = SpotOf(boardKey + wayKey_[ways_[k][w]], multisets_.size() - 1);
      AskAhead(&multisets_[spots[w].at]);
    }
    return wayCount_[k];
  }
  for (int w = 0; w < realWayCount_[k - 1]; ++w) {
    spots[w] = CompletionOf(boardKey + wayKey_[ways_[k - 1][w]], completions_.size());
    AskAhead(completions_[spots[w].at].bits);
  }
  return realWayCount_[k - 1];
}

void ExactMoves::AskAheadFor(const Entry& entry) {
  const StripShape& shape = shapes_[entry.line][entry.shape];
  const int k = shape.Free();
  const uint64_t key = shape.boardKey << 3 | uint64_t(k);
  AskAhead(&shapeWeights_[entry.line][entry.shape]);
  if (KnownSlotFor(key).stamp == knownStamp_) return;
  for (const Asked& a : asked_)
    if (a.stamp == knownStamp_ && a.key == key) return;
  Asked& asked = asked_[size_t(askedNext_)];
  askedNext_ ^= 1;
  asked.key = key;
  asked.stamp = knownStamp_;
  asked.count = uint8_t(SpotsFor(shape.boardKey, k, asked.spots));
}

ExactMoves::Known& ExactMoves::KnownFor(uint64_t boardKey, int k) {
  // The ways of the rack that make a word with these board letters, known
  // once for each set of them and number of tiles.
  const uint64_t key = boardKey << 3 | uint64_t(k);
  if (knownUsed_ == int(known_.size())) NewKnownTable();
  KnownSlot& slot = KnownSlotFor(key);
  if (slot.stamp == knownStamp_) return known_[slot.known];
  slot = KnownSlot{knownStamp_, uint16_t(knownUsed_)};
  Known& known = known_[size_t(knownUsed_++)];
  known.key = key;
  known.ways[0] = known.ways[1] = 0;
  known.tooMany = false;
  known.unlisted[0] = known.unlisted[1] = 0;
  known.hitsFrom = uint32_t(hitsUsed_);
  known.hitCount = 0;
  // A way that makes a word: its words asked of the memory at once (its
  // stretch is often searched next).
  const auto hit = [this, &known, boardKey](uint32_t way, int first, int second) {
    known.ways[way >> 6] |= 1ull << (way & 63);
    AddHit(known, way, first, second);
    const uint64_t key = boardKey + wayKey_[way] + (first >= 0 ? kLetterKey[size_t(first)] : 0) +
                         (second >= 0 ? kLetterKey[size_t(second)] : 0);
    AskAhead(&anagrams_[size_t(AnagramHash(key) >> anagramShift_)]);
  };
  // The filters' words or lines asked of the memory together (or ahead,
  // see AskAheadFor), then read.
  FilterSpot own[35];
  const FilterSpot* spots = own;
  int count = -1;
  for (const Asked& a : asked_)
    if (a.stamp == knownStamp_ && a.key == key) {
      spots = a.spots;
      count = a.count;
    }
  if (count < 0) count = SpotsFor(boardKey, k, own);
  stats_.lookups += count;
  const int realTiles = rackSize_ - rackBlanks_;
  if (rackBlanks_ == 0) {
    // Without a blank: each way looked up in the filter of the words'
    // multisets, small enough to stay near at hand from one search to the
    // next.
    for (int w = 0; w < count; ++w)
      if ((multisets_[spots[w].at] & spots[w].bits) == spots[w].bits) hit(ways_[k][w], -1, -1);
  } else {
    // With a blank, a way is found from the way less its last tile (the
    // rack's tiles go by value, blanks last): one read of the completions
    // of the board letters and the k - 1 tiles before tells every tile after
    // them that makes a word, and every letter a blank there may stand for.
    for (int w = 0; w < count; ++w) {
      const uint32_t letters = CompletionsAt(spots[w].at, spots[w].bits);
      if (!letters) continue;
      const uint32_t base = ways_[k - 1][w];
      for (uint32_t ts = extensions_[base]; ts; ts &= ts - 1) {
        const int t = __builtin_ctz(ts);
        if ((letters >> tileLetter_[t]) & 1u) hit(base | 1u << t, -1, -1);
      }
      for (uint32_t ls = letters; ls; ls &= ls - 1) hit(base | 1u << realTiles, __builtin_ctz(ls), -1);
    }
  }
  // Two blanks after k - 2 tiles: taken to make some word (with two letters
  // of one's choosing, most do); which letters, if any, is sought when the
  // stretch is searched.
  if (rackBlanks_ >= 2 && k >= 2)
    for (int w = 0; w < realWayCount_[k - 2]; ++w) {
      const uint32_t way = uint32_t(ways_[k - 2][w]) | 3u << realTiles;
      known.ways[way >> 6] |= 1ull << (way & 63);
      known.unlisted[way >> 6] |= 1ull << (way & 63);
    }
  // For each count of tiles, the most the highest of them are worth in a
  // way that makes a word.
  known.any = (known.ways[0] | known.ways[1]) != 0;
  std::fill(std::begin(known.top), std::end(known.top), 0);
  for (int half = 0; half < 2; ++half)
    for (uint64_t ways = known.ways[half]; ways; ways &= ways - 1) {
      int sum = 0, j = 0;
      for (uint32_t bits = uint32_t(half * 64 + __builtin_ctzll(ways)); bits; bits &= bits - 1) {
        const int tile = __builtin_ctz(bits);
        sum += tileLetter_[tile] >= 0 ? Value(tileLetter_[tile]) : 0;
        ++j;
        known.top[j] = int16_t(std::max<int>(known.top[j], sum));
      }
    }
  return known;
}

inline void ExactMoves::AddHit(Known& known, uint32_t way, int first, int second) {
  // (its hits taken to the end of the table first, when others were put
  // after them, so that they can grow)
  const bool atEnd = known.hitsFrom + known.hitCount == uint32_t(hitsUsed_);
  if (known.hitCount == kHits || size_t(hitsUsed_ + (atEnd ? 0 : known.hitCount)) >= hits_.size()) {
    known.tooMany = true;
    return;
  }
  if (!atEnd) {
    std::copy_n(&hits_[known.hitsFrom], known.hitCount, &hits_[size_t(hitsUsed_)]);
    known.hitsFrom = uint32_t(hitsUsed_);
    hitsUsed_ += known.hitCount;
  }
  hits_[size_t(hitsUsed_++)] = Hit{uint8_t(way), {int8_t(first), int8_t(second)}};
  ++known.hitCount;
}

void ExactMoves::ListHits(Known& known, const Strip& strip) {
  // The letters of the two blanks of the ways that were only taken to make
  // some word: each pair of letters that makes one; of the ways that can
  // reach the best play in this stretch (the others are left for another
  // stretch of the same letters, where they may).
  int weights[7];
  StripWeights(strip, weights);
  for (int half = 0; half < 2 && !known.tooMany; ++half)
    for (uint64_t ways = known.unlisted[half]; ways && !known.tooMany; ways &= ways - 1) {
      const uint32_t way = uint32_t(half * 64 + __builtin_ctzll(ways));
      if (haveBest_ && strip.shape.fixed + WayWorth(way, weights) < best_.points) continue;
      known.unlisted[half] &= ~(1ull << (way & 63));
      uint32_t pairs[26];
      PairCompletions(strip.shape.boardKey + wayKey_[way], pairs, false);
      for (int l = 0; l < 26; ++l)
        for (uint32_t ms = pairs[l]; ms; ms &= ms - 1) AddHit(known, way, l, __builtin_ctz(ms));
    }
}

void ExactMoves::StripWeights(const Strip& strip, int* weights) {
  // What a point of a tile is worth on each free square (in the word and
  // in its cross word), heaviest first; told once for the stretch while
  // its row stands.
  ShapeWeights& shape = shapeWeights_[size_t((strip.down ? kSize : 0) + strip.row)][strip.shapeIndex];
  if (!shape.weighed) {
    const Square* line = &squares_[strip.down ? 1 : 0][size_t(strip.row * kSize)];
    const Premium* premiums = &kPremium[size_t(strip.row * kSize)];
    int n = 0;
    for (int x = strip.start; x < strip.end; ++x) {
      const Square& s = line[x];
      if (s.tile >= 0) continue;
      const Premium p = premiums[x];
      // (put in its place without a branch: the lighter carried on)
      uint8_t carried = uint8_t(p.letter * (strip.shape.factor + (s.crossed ? p.word : 0)));
      for (int i = 0; i < n; ++i) {
        const uint8_t here = shape.weights[i];
        shape.weights[i] = std::max(here, carried);
        carried = std::min(here, carried);
      }
      shape.weights[n++] = carried;
    }
    shape.weighed = true;
  }
  for (int i = 0; i < strip.shape.Free(); ++i) weights[i] = shape.weights[i];
}

int ExactMoves::WayWorth(uint32_t way, const int* weights) const {
  // The way's tiles come dearest first: on the heaviest squares.
  int sum = 0, i = 0;
  for (uint32_t bits = way; bits; bits &= bits - 1) {
    const int letter = tileLetter_[__builtin_ctz(bits)];
    sum += weights[i++] * (letter >= 0 ? Value(letter) : 0);
  }
  return sum;
}

int ExactMoves::Refine(const Strip& strip) {
  // With only the ways that make a word: a way's j dearest tiles are worth
  // at most top[j], and its tiles go dearest first on the heaviest squares.
  const Known& known = KnownFor(strip.shape.boardKey, strip.shape.Free());
  if (!known.any) return -1;
  int weights[8];
  StripWeights(strip, weights);
  weights[strip.shape.Free()] = 0;
  int bound = strip.shape.fixed;
  for (int j = 1; j <= strip.shape.Free(); ++j) bound += (weights[j - 1] - weights[j]) * known.top[j];
  return std::min(bound, MainBoundOf(strip.shape, known.top, strip.crossedMost) + strip.crossMost);
}

void ExactMoves::SearchStrip(const Strip& strip) {
  EnterRow(strip.down, strip.row, strip.start, strip.end);
  start_ = strip.start;
  end_ = strip.end;
  const int factor = strip.shape.factor;
  stripFactor_ = factor;
  const int k = strip.shape.Free();
  Known& known = KnownFor(strip.shape.boardKey, k);
  if (known.unlisted[0] | known.unlisted[1]) ListHits(known, strip);
  if (!known.tooMany) {
    SolveHits(known, strip);
    return;
  }
  // Too many words to lay one by one: the walk along the word graph, with
  // the letters of the ways that make some word here.
  stripLetters_ = 0;
  for (int half = 0; half < 2; ++half)
    for (uint64_t ways = known.ways[half]; ways; ways &= ways - 1)
      for (uint32_t bits = uint32_t(half * 64 + __builtin_ctzll(ways)); bits; bits &= bits - 1) {
        const int letter = tileLetter_[__builtin_ctz(bits)];
        stripLetters_ |= letter >= 0 ? 1u << letter : kAllLetters;
      }
  // From each column to the end: the fixed points and the weights of the
  // free squares, highest first.
  fixedFrom_[end_] = k == 7 ? kBonus : 0;
  freeFrom_[end_] = 0;
  for (int x = end_ - 1; x >= start_; --x) {
    const Square& s = line_[x];
    fixedFrom_[x] = fixedFrom_[x + 1];
    freeFrom_[x] = freeFrom_[x + 1];
    std::copy(weightsFrom_[x + 1], weightsFrom_[x + 1] + freeFrom_[x + 1], weightsFrom_[x]);
    if (s.tile >= 0) {
      fixedFrom_[x] += s.tileValue * factor;
      continue;
    }
    if (s.crossed) fixedFrom_[x] += s.crossSum * wordFactor_[x];
    const int w = letterFactor_[x] * (factor + (s.crossed ? wordFactor_[x] : 0));
    int i = freeFrom_[x]++;
    for (; i > 0 && weightsFrom_[x][i - 1] < w; --i) weightsFrom_[x][i] = weightsFrom_[x][i - 1];
    weightsFrom_[x][i] = w;
  }
  const uint32_t root = graph_.Root();
  if ((lengths_[root] >> (end_ - start_)) & 1u) StripWalk(root, start_, 0, 0, 0, 0);
}

void ExactMoves::SolveHits(const Known& known, const Strip& strip) {
  // The words of each multiset the rack makes here, laid where they fit;
  // a multiset only when its tiles, the dearest on the heaviest squares,
  // can reach the best play.
  const int length = end_ - start_, k = strip.shape.Free();
  int weights[7];
  StripWeights(strip, weights);
  // The multisets worth looking at, their places in the table of words
  // asked of the memory all at once before any is read.
  uint64_t hashes[kHits];
  int bounds[kHits], count = 0;
  int lastWay = -1, bound = 0;
  for (int h = 0; h < known.hitCount; ++h) {
    const Hit& hit = hits_[known.hitsFrom + size_t(h)];
    if (hit.way != lastWay) {  // (the hits of a way come together)
      lastWay = hit.way;
      bound = strip.shape.fixed + WayWorth(hit.way, weights);
    }
    if (haveBest_ && bound < best_.points) continue;
    uint64_t key = strip.shape.boardKey + wayKey_[hit.way];
    for (const int8_t b : hit.blank)
      if (b >= 0) key += kLetterKey[size_t(b)];
    hashes[count] = AnagramHash(key);
    const size_t home = size_t(hashes[count] >> anagramShift_);
    AskAhead(&anagrams_[home]);
    AskAhead(&anagrams_[home + 3]);  // (the line after, when the words go on into it)
    bounds[count++] = bound;
  }
  for (int c = 0; c < count; ++c) {
    if (haveBest_ && bounds[c] < best_.points) continue;
    // The words from the home on (past those of homes before it) while
    // their home is this one.
    const size_t home = size_t(hashes[c] >> anagramShift_);
    const uint32_t tag = uint32_t(hashes[c]);
    for (size_t at = home;; ++at) {
      const AnagramEntry& word = anagrams_[at];
      if (!word.letters) break;
      const size_t itsHome = at - (word.more >> 16);
      if (itsHome > home) break;
      if (itsHome < home || word.tag != tag || int(word.letters >> 60) != length) continue;
      ++stats_.steps;
      // The word fits the board's letters and the cross words, and the
      // rack has its other letters (a blank for those it lacks).
      std::array<int8_t, 26> left = inRack_;
      int blanks = rackBlanks_, mainSum = 0, crossTotal = 0, x = start_;
      for (; x < end_; ++x) {
        const Square& s = line_[x];
        const int letter = LetterAt(word, x - start_);
        if (s.tile >= 0) {
          if (letter != s.tile) break;
          mainSum += s.tileValue;
          continue;
        }
        if (!((s.cross >> letter) & 1u)) break;
        if (left[size_t(letter)] > 0) {
          --left[size_t(letter)];
        } else if (blanks > 0) {
          --blanks;
        } else {
          break;
        }
        const int value = Value(letter) * letterFactor_[x];
        mainSum += value;
        if (s.crossed) crossTotal += (s.crossSum + value) * wordFactor_[x];
      }
      if (x < end_) continue;
      for (x = start_; x < end_; ++x) {
        letter_[x] = int8_t(LetterAt(word, x - start_));
        laid_[x] = line_[x].tile < 0;
      }
      Record(end_, mainSum, stripFactor_, crossTotal, k);
    }
  }
  for (int x = start_; x < end_; ++x) {
    letter_[x] = line_[x].tile;
    laid_[x] = false;
  }
}

int ExactMoves::StripBound(int column, int mainSum, int crossTotal, int face) const {
  // The tiles left on the free squares left, the highest on the heaviest;
  // a blank left counts as much as the dearest letter laid so far (it could
  // stand there in its stead and free that tile).
  const int* weights = weightsFrom_[column];
  const int m = freeFrom_[column];
  int sum = 0, i = 0, blanks = blanks_;
  for (int j = 0; j < byValueCount_ && i < m; ++j) {
    const int letter = byValue_[j], value = Value(letter);
    for (; blanks > 0 && face >= value && i < m; --blanks) sum += weights[i++] * face;
    for (int c = count_[size_t(letter)]; c > 0 && i < m; --c) sum += weights[i++] * value;
  }
  for (; blanks > 0 && i < m; --blanks) sum += weights[i++] * face;
  return mainSum * stripFactor_ + crossTotal + fixedFrom_[column] + sum;
}

void ExactMoves::StripWalk(uint32_t node, int column, int mainSum, int crossTotal, int tiles, int face) {
  const int left = end_ - column;  // letters still to come, this one's included
  const Square& s = line_[column];
  const WordGraph::Node& n = graph_.At(node);
  if (s.tile >= 0) {
    const int letter = s.tile;
    ++stats_.steps;
    if (left == 1) {
      if ((n.ends >> letter) & 1u) Record(end_, mainSum + s.tileValue, stripFactor_, crossTotal, tiles);
      return;
    }
    if (!((n.children >> letter) & 1u)) return;
    const uint32_t child = graph_.Child(node, letter);
    if (!((lengths_[child] >> (left - 1)) & 1u)) return;
    StripWalk(child, column + 1, mainSum + s.tileValue, crossTotal, tiles, face);
    return;
  }
  if (haveBest_ && StripBound(column, mainSum, crossTotal, face) < best_.points) return;
  const uint32_t letters = (left == 1 ? n.ends : n.children) & s.cross & stripLetters_ &
                           (blanks_ > 0 ? kAllLetters : rackLetters_);
  if (!letters) return;
  const int lf = letterFactor_[column], wf = wordFactor_[column];
  laid_[column] = true;
  for (uint32_t l = letters; l; l &= l - 1) {
    const int letter = __builtin_ctz(l);
    ++stats_.steps;
    uint32_t child = 0;
    if (left > 1) {
      child = graph_.Child(node, letter);
      if (!((lengths_[child] >> (left - 1)) & 1u)) continue;
    }
    letter_[column] = int8_t(letter);
    const int value = Value(letter) * lf;
    const int cross = s.crossed ? (s.crossSum + value) * wf : 0;
    Take(letter);
    if (left == 1) {
      Record(end_, mainSum + value, stripFactor_, crossTotal + cross, tiles + 1);
    } else {
      StripWalk(child, column + 1, mainSum + value, crossTotal + cross, tiles + 1,
                std::max(face, Value(letter)));
    }
    GiveBack(letter);
  }
  letter_[column] = -1;
  laid_[column] = false;
}

void ExactMoves::Take(int letter) {
  if (count_[size_t(letter)] > 0) {
    if (--count_[size_t(letter)] == 0) rackLetters_ &= ~(1u << letter);
  } else {
    --blanks_;
    ++blankFor_[size_t(letter)];
  }
}

void ExactMoves::GiveBack(int letter) {
  if (blankFor_[size_t(letter)] > 0) {
    --blankFor_[size_t(letter)];
    ++blanks_;
  } else if (count_[size_t(letter)]++ == 0) {
    rackLetters_ |= 1u << letter;
  }
}

void ExactMoves::Record(int end, int mainSum, int wordFactor, int crossTotal, int tiles) {
  int fresh[7], delta[7], count = 0;
  int8_t used[26] = {};
  for (int x = start_; x < end; ++x) {
    if (!laid_[x]) continue;
    fresh[count] = x - start_;
    // What the points lose when this tile is a blank: its letter in the
    // main word and in its cross word.
    const int letter = letter_[x];
    delta[count] = Value(letter) * letterFactor_[x] * (wordFactor + (line_[x].crossed ? wordFactor_[x] : 0));
    ++used[letter];
    ++count;
  }
  if (tiles == 1 && !down_ && line_[start_ + fresh[0]].crossed)
    return;  // a single tile with a tile above or below is a play down
  ++stats_.plays;
  const int allReal = mainSum * wordFactor + crossTotal + (tiles == 7 ? kBonus : 0);

  // The letters beyond the rack's own are blanks; with blanks to spare, any
  // tile laid may be one. Each way of choosing them that gives other points
  // is a play of its own (in the best mode only the dearest matters).
  int8_t short_[26] = {};
  int shortBy = 0;
  for (int i = 0; i < count; ++i) {
    const int l = letter_[start_ + fresh[i]];
    if (used[l] > inRack_[size_t(l)] && short_[l] == 0) {
      short_[l] = int8_t(used[l] - inRack_[size_t(l)]);
      shortBy += short_[l];
    }
  }
  const auto make = [&](uint32_t mask, int points) {
    ExactPlay p;
    p.points = int16_t(points);
    p.down = down_;
    p.row = uint8_t(down_ ? start_ : row_);
    p.column = uint8_t(down_ ? row_ : start_);
    p.length = uint8_t(end - start_);
    p.tiles = uint8_t(tiles);
    for (int i = 0; i < p.length; ++i) {
      p.letters[i] = char('A' + letter_[start_ + i]);
      if (laid_[start_ + i]) p.laid |= uint16_t(1u << i);
    }
    for (int i = 0; i < count; ++i) {
      if (!((mask >> i) & 1u)) continue;
      p.blank |= uint16_t(1u << fresh[i]);
      ++p.blanks;
    }
    p.key = KeyOf(p);
    return p;
  };

  if (mode_ == Mode::Best) {
    // The blanks forced on the squares where they lose least.
    uint32_t chosen = 0;
    int points = allReal;
    if (shortBy > 0) {
      for (int l = 0; l < 26; ++l) {
        for (int need = short_[l]; need > 0; --need) {
          int pick = -1;
          for (int i = 0; i < count; ++i)
            if (!((chosen >> i) & 1u) && letter_[start_ + fresh[i]] == l &&
                (pick < 0 || delta[i] < delta[pick]))
              pick = i;
          chosen |= 1u << pick;
          points -= delta[pick];
        }
      }
    }
    if (haveBest_ && points < best_.points) return;
    const ExactPlay p = make(chosen, points);
    if (!haveBest_ || PlayBefore(p, best_)) {
      best_ = p;
      haveBest_ = true;
    }
    return;
  }

  // Every choice of at most rackBlanks_ squares that covers what is short,
  // one play a number of points: the first of the order among equals.
  if (rackBlanks_ == 0) {
    plays_.push_back(make(0, allReal));
    return;
  }
  const auto covers = [&](uint32_t mask) {
    if (shortBy == 0) return true;
    int8_t onLetter[26] = {};
    for (int i = 0; i < count; ++i)
      if ((mask >> i) & 1u) ++onLetter[letter_[start_ + fresh[i]]];
    for (int i = 0; i < count; ++i) {
      const int l = letter_[start_ + fresh[i]];
      if (onLetter[l] < short_[l]) return false;
    }
    return true;
  };
  int keptPoints[1 + 7 + 21];
  int keptCount = 0;
  const auto offer = [&](uint32_t mask, int blanks, int points) {
    if (blanks < shortBy || !covers(mask)) return;
    for (int k = 0; k < keptCount; ++k)
      if (keptPoints[k] == points) return;  // the fewer blanks, then the blanks first, came first
    keptPoints[keptCount++] = points;
    plays_.push_back(make(mask, points));
  };
  offer(0, 0, allReal);
  if (rackBlanks_ >= 1)
    for (int i = 0; i < count; ++i) offer(1u << i, 1, allReal - delta[i]);
  if (rackBlanks_ >= 2)
    for (int i = 0; i < count; ++i)
      for (int j = i + 1; j < count; ++j) offer((1u << i) | (1u << j), 2, allReal - delta[i] - delta[j]);
}

}  // namespace ostrane
