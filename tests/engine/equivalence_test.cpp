// The fast engine against the literal reference of tests/engine/
// reference_engine.cpp: on boards of seeded games, with racks with and
// without blanks, both must find the same plays in the same order, with the
// same points and directions, choose the same best play, and leave the board
// and the search memory alike.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "engine/board.h"
#include "engine/move_search.h"
#include "lexicon/dico.h"
#include "lexicon/lexicon.h"
#include "lexicon/tables.h"
#include "lexicon/word_list.h"
#include "tests/engine/engine_test_support.h"
#include "tests/engine/reference_engine.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

struct Twins {
  explicit Twins(const Lexicon& lexicon, uint64_t seed)
      : referenceRandom(seed), engine(lexicon, context), reference(lexicon, referenceRandom) {
    context.Random.Seed(seed);
  }
  EngineContext context;
  Rng referenceRandom;
  ClsPlateau engine;
  ReferencePlateau reference;
};

std::string Describe(const ClsWord& w) {
  return "'" + w.Express + "' " + w.Place + " " + std::to_string(w.CountP);
}

// One search on both; returns false (after reporting) at the first difference.
struct Compared {
  int64_t searches = 0, findings = 0, withTwoBlanks = 0;
};
Compared compared;

bool SearchBoth(Twins& t, const std::string& rack, const std::string& what) {
  std::string a = rack, b = rack;
  const int32_t n = t.engine.TrouveSolution(a);
  const int32_t m = t.reference.TrouveSolution(b);
  ++compared.searches;
  compared.findings += m;
  if (std::count(rack.begin(), rack.end(), '?') == 2) ++compared.withTwoBlanks;
  EXPECT_EQ(a, b) << what << ": rack after the search";
  if (n != m) {
    ADD_FAILURE() << what << ": " << n << " findings, the reference has " << m;
    return false;
  }
  for (int32_t i = 1; i <= n; ++i) {
    if (t.engine.TabSolutions(i) != t.reference.TabSolutions[size_t(i)]) {
      ADD_FAILURE() << what << ": finding " << i << " is " << Describe(t.engine.TabSolutions(i))
                    << ", the reference has " << Describe(t.reference.TabSolutions[size_t(i)]);
      return false;
    }
  }
  EXPECT_EQ(t.context.LngSens, t.reference.LngSens) << what;
  for (int32_t i = 1; i <= t.context.LngSens; ++i) {
    if (t.context.TabSens[size_t(i)] != t.reference.TabSens[size_t(i)]) {
      ADD_FAILURE() << what << ": TabSens(" << i << ")";
      return false;
    }
  }
  const auto best = t.engine.SubSortie(5);
  const ClsWord* referenceBest = t.reference.SubSortie(5);
  EXPECT_EQ(best.has_value(), referenceBest != nullptr) << what;
  if (best && referenceBest) {
    EXPECT_EQ(*best, *referenceBest) << what;
    EXPECT_EQ(t.context.BytSens, t.reference.BytSens) << what;
  }
  for (int level : {1, 3}) {
    const auto near = t.engine.SubSortie(level);
    const ClsWord* referenceNear = t.reference.SubSortie(level);
    EXPECT_EQ(near.has_value(), referenceNear != nullptr) << what;
    if (near && referenceNear) {
      EXPECT_EQ(*near, *referenceNear) << what << " level " << level;
    }
  }
  for (int y = 0; y < 15; ++y)
    for (int x = 0; x < 15; ++x)
      EXPECT_EQ(t.engine.SubCase(x, y), t.reference.TabPlateau[size_t(x)][size_t(y)])
          << what << ": square " << x << "," << y << " after the search";
  return !::testing::Test::HasFailure();
}

// Plays whole games on both, the search of each turn compared; every few
// turns an extra rack (with blanks) is searched first in the same turn, so
// that the second search writes further into TabSens.
// Extra racks: up to maxBlanks blanks (exactly that many when `exactBlanks`),
// their letters drawn from `alphabet`, from turn `firstExtraTurn` on.
struct Extras {
  bool exactBlanks = false;
  std::string alphabet = "abcdefghijklmnopqrstuvwxyz";
  int firstExtraTurn = 1;
};

Compared PlayTwinGames(uint64_t seed, int games, int extraEvery, int maxBlanks, int maxTurns,
                       const Extras& extras = {}) {
  compared = Compared{};
  const Lexicon& lexicon = RealLexicon();
  Twins t(lexicon, seed);
  Rng draws(seed * 31 + 7);
  for (int game = 1; game <= games; ++game) {
    std::string bag = FullBag();
    for (size_t k = bag.size(); k > 1; --k) std::swap(bag[k - 1], bag[draws.Below(uint32_t(k))]);
    // A fresh board each game, the same engine object's memory going on.
    for (int y = 0; y < 15; ++y)
      for (int x = 0; x < 15; ++x) {
        t.engine.SetSquare(x, y, '\0');
        t.reference.TabPlateau[size_t(x)][size_t(y)] = "";
      }
    t.engine.SubWordFirst(true);
    t.reference.BlnPremier = true;
    std::string rack;
    for (int turn = 1; turn <= maxTurns; ++turn) {
      while (rack.size() < 7 && !bag.empty()) {
        rack += bag.back();
        bag.pop_back();
      }
      if (rack.empty()) break;
      std::ostringstream what;
      what << "seed " << seed << " game " << game << " turn " << turn;
      if (extraEvery > 0 && turn % extraEvery == 0 && turn >= extras.firstExtraTurn &&
          !t.engine.SubWordFirst()) {
        // A rack of random letters with up to maxBlanks blanks.
        std::string extra;
        const int blanks = extras.exactBlanks ? maxBlanks : int(draws.Below(uint32_t(maxBlanks + 1)));
        for (int k = 0; k < blanks; ++k) extra += '?';
        while (extra.size() < 7) extra += extras.alphabet[draws.Below(uint32_t(extras.alphabet.size()))];
        if (!SearchBoth(t, extra, what.str() + " extra rack " + extra)) return compared;
      }
      if (!SearchBoth(t, rack, what.str() + " rack " + rack)) return compared;
      const auto best = t.engine.SubSortie(5);
      if (!best) break;
      const Verdict verdict = Judge(lexicon, SquaresOf(t.engine), *best, rack, t.engine.SubWordFirst());
      if (!verdict.legal) {
        ADD_FAILURE() << what.str() << ": " << verdict.why;
        return compared;
      }
      rack = verdict.rackAfter;
      t.engine.SubCaserWord(*best);
      t.reference.SubCaserWord(*best);
      t.engine.SubWordFirst(false);
      t.reference.BlnPremier = false;
      t.context.LngSens = 0;
      t.reference.LngSens = 0;
    }
  }
  return compared;
}

TEST(EngineEquivalence, WholeGamesWithTheirOwnRacks) {
  const Compared done = PlayTwinGames(11, 4, 0, 0, 40);
  EXPECT_GT(done.searches, 60);
  EXPECT_GT(done.findings, 50000);
}

TEST(EngineEquivalence, SecondSearchesInATurnWithOneBlank) {
  const Compared done = PlayTwinGames(23, 3, 3, 1, 40);
  EXPECT_GT(done.searches, 60);
}

TEST(EngineEquivalence, TwoBlanksUpToCrowdedBoards) {
  const Compared done = PlayTwinGames(37, 3, 2, 2, 40);
  EXPECT_GT(done.withTwoBlanks, 10);
}

// The richest searches: racks of frequent letters, often repeated, with one
// and with two blanks, every turn of the second half of games, on boards as
// crowded as they get.
TEST(EngineEquivalence, RichBlankRacksOnCrowdedBoards) {
  Extras rich;
  rich.exactBlanks = true;
  rich.alphabet = "eeeaaiissnnrrttluo";
  rich.firstExtraTurn = 12;
  const Compared two = PlayTwinGames(41, 2, 1, 2, 40, rich);
  EXPECT_GT(two.withTwoBlanks, 25);
  EXPECT_GT(two.findings, 400000);
  if (HasFailure()) return;
  const Compared one = PlayTwinGames(53, 2, 1, 1, 40, rich);
  EXPECT_GT(one.searches, 60);
  EXPECT_GT(one.findings, 100000);
}

TEST(EngineEquivalence, ManyOpeningsAndEarlyBoards) {
  int64_t searches = 0;
  for (uint64_t seed = 100; seed < 130; ++seed) {
    searches += PlayTwinGames(seed, 1, 2, 2, 6).searches;
    if (HasFailure()) return;
  }
  EXPECT_GT(searches, 150);
}

// The packed tree is the word tree renumbered: every node of it stands for
// one node of the tree, with the same children (side by side, in letter
// order), the same word ends and the same reach; every node the root leads
// to is there once.
TEST(QuickWalk, ThePackedTreeIsTheWordTreeRenumbered) {
  const ClsDico& dico = RealLexicon().Dico;
  const auto index = WordTreeIndex::Build(dico);
  ASSERT_TRUE(index->HasPacked());
  ASSERT_EQ(index->packed.size(), index->original.size());
  std::vector<int32_t> packedOf(size_t(dico.UpperBound()) + 1, -1);
  for (size_t k = 0; k < index->original.size(); ++k) {
    ASSERT_EQ(packedOf[size_t(index->original[k])], -1) << "node met twice";
    packedOf[size_t(index->original[k])] = int32_t(k);
  }
  EXPECT_EQ(index->original[0], 0);
  int64_t edges = 0;
  for (size_t k = 0; k < index->packed.size(); ++k) {
    const int32_t n = index->original[k];
    const WordTreeIndex::Packed& p = index->packed[k];
    ASSERT_EQ(p.ends, dico.EndMask(n) >> 1) << k;
    ASSERT_EQ(index->number[size_t(n)], int32_t(k) + 1) << k;
    ASSERT_EQ(int(p.reach), index->ReachOf(n)) << k;
    ASSERT_EQ(p.children, index->ChildMaskOf(n)) << k;
    // How far a node reaches, worked out again from its children.
    int reach = p.ends != 0 ? 1 : 0;
    for (int letter = 0; letter < 26; ++letter)
      if (const int32_t c = index->PackedChild(int32_t(k), letter)) reach = std::max(reach, 1 + int(index->packed[size_t(c)].reach));
    ASSERT_EQ(int(p.reach), std::min(reach, 254)) << k;
    int32_t expectedNext = p.first;
    for (int letter = 0; letter < 26; ++letter) {
      const int32_t child = dico.Child(n, letter + 1);
      const int32_t packedChild = index->PackedChild(int32_t(k), letter);
      if (child == 0) {
        ASSERT_EQ(packedChild, 0) << k;
        continue;
      }
      ++edges;
      ASSERT_EQ(packedChild, expectedNext++) << k << " " << char('A' + letter);
      ASSERT_EQ(index->original[size_t(packedChild)], child) << k;
    }
  }
  EXPECT_EQ(edges + 1, int64_t(index->packed.size()));  // a tree: one parent each
  EXPECT_GT(index->packed.size(), 100000u);
  for (uint32_t x : {0u, 1u, 0x3FFFFFFu, 0x2AAAAAAu, 0x80000001u}) EXPECT_EQ(WordTreeIndex::BitsSet(x), __builtin_popcount(x));
}

// The characters of the long word lists rule out, before any search of a
// list, the texts that hold others (a word read on with lower-case tiles);
// never a text that the list holds.
TEST(QuickWalk, LongWordsAreRuledOutOnlyByCharactersNoneOfThemHolds) {
  const Lexicon& lexicon = RealLexicon();
  const auto index = WordTreeIndex::Build(lexicon.Dico, &lexicon);
  const auto bare = WordTreeIndex::Build(lexicon.Dico);
  Rng draws(31);
  int ruledOut = 0, kept = 0;
  for (size_t length = 10; length <= 15; ++length) {
    const LongWordList& list = lexicon.LongWords(length);
    ASSERT_GT(list.UBound(), 10);
    for (int k = 0; k < 200; ++k) {
      std::string text(list.Element(int32_t(draws.Below(uint32_t(list.UBound())))));
      ASSERT_EQ(text.size(), length);
      if (k % 2 == 1) {
        const size_t at = draws.Below(uint32_t(length));
        text[at] = k % 4 == 1 ? LowerAscii(text[at]) : char('A' + draws.Below(26));
      }
      const bool contained = list.Contains(text);
      const bool maybe = index->MayBeLongWord(lexicon, text);
      if (contained) {
        ASSERT_TRUE(maybe) << text;
      }
      ruledOut += !maybe;
      kept += maybe;
      EXPECT_TRUE(bare->MayBeLongWord(lexicon, text));  // built without the lists
    }
  }
  EXPECT_GT(ruledOut, 200);
  EXPECT_GT(kept, 600);
}

// The letters a free square can take under or over tiles, as the search
// works them out, against the word test of each cross-word laid as a text:
// on random boards with runs of tiles of every length, blanks among them.
TEST(QuickWalk, CrossSetsAreTheLettersWhoseCrossWordIsAWord) {
  const Lexicon& lexicon = RealLexicon();
  EngineContext context;
  ClsPlateau board(lexicon, context);
  ClsExpressions words;
  words.SubDico(lexicon);
  Rng draws(77);
  const std::string common = "eeaaisnrtoulcdmp";
  int64_t squares = 0, withLetters = 0;
  for (int b = 0; b < 60; ++b) {
    for (int y = 0; y < 15; ++y)
      for (int x = 0; x < 15; ++x) {
        char c = '\0';
        if (draws.Below(100) < 20 + uint32_t(b % 5) * 12) {
          c = common[draws.Below(uint32_t(common.size()))];
          if (draws.Below(10) == 0) c = UpperAscii(c);
        }
        board.SetSquare(x, y, c);
      }
    MoveSearch search(board);
    search.BeginSearch();
    search.BeginPass(0);
    for (int y = 0; y < 15; ++y)
      for (int x = 0; x < 15; ++x) {
        if (board.Square(x, y) != '\0') continue;
        const bool crossed = (y > 0 && board.Square(x, y - 1) != '\0') || (y < 14 && board.Square(x, y + 1) != '\0');
        if (!crossed) continue;
        int top = y, bottom = y;
        while (top > 0 && board.Square(x, top - 1) != '\0') --top;
        while (bottom < 14 && board.Square(x, bottom + 1) != '\0') ++bottom;
        uint32_t expected = 0;
        for (char letter = 'A'; letter <= 'Z'; ++letter) {
          std::string text;
          for (int row = top; row <= bottom; ++row) text += row == y ? letter : UpperAscii(board.Square(x, row));
          int32_t node = 0;
          if (words.SubWordIsTrue(text, node)) expected |= 1u << (letter - 'A');
        }
        ASSERT_EQ(search.CrossSet(x, y), expected) << "board " << b << " square " << x << "," << y;
        ++squares;
        withLetters += expected != 0;
      }
    search.EndSearch();
  }
  EXPECT_GT(squares, 3000);
  EXPECT_GT(withLetters, 500);
}

// The quick walk of the pattern search against the plain one, a letter-by-
// letter transcription of it: on the boards of seeded games, with the
// turn's rack and racks with one to three blanks, repeated letters, and
// racks longer than the usual seven, both must find the same plays in the
// same order, and the walks must have laid the same number of letters and
// kept the same words.
struct PlainWalk {
  explicit PlainWalk(bool plain) { MoveSearch::ForcePlainWalk(plain); }
  ~PlainWalk() { MoveSearch::ForcePlainWalk(false); }
};

ClsPlateau::SearchStats SearchWith(bool plain, const BoardSquares& squares, const std::string& rack,
                                   std::vector<ClsWord>& plays, std::vector<int32_t>& directions) {
  const PlainWalk walk(plain);
  EngineContext context;
  ClsPlateau board(RealLexicon(), context);
  LoadBoard(board, squares);
  board.SubWordFirst(false);
  std::string letters = rack;
  const int32_t count = board.TrouveSolution(letters);
  plays.clear();
  directions.clear();
  for (int32_t i = 1; i <= count; ++i) {
    plays.push_back(board.TabSolutions(i));
    directions.push_back(context.TabSens[size_t(i)]);
  }
  return board.LastSearchStats();
}

TEST(QuickWalk, FindsWhatThePlainWalkFindsStepForStep) {
  Rng draws(909);
  int64_t searches = 0, findings = 0, steps = 0, longRacks = 0;
  std::vector<ClsWord> quickPlays, plainPlays;
  std::vector<int32_t> quickDirections, plainDirections;
  SelfPlay(RealLexicon(), 515, 2, [&](const Turn& turn, ClsPlateau&, EngineContext&) {
    if (turn.firstPlay || HasFailure()) return;
    std::vector<std::string> racks = {turn.rack};
    const std::string letters = "eeaaisnrtlouqzkwx";
    // Two blanks in seven letters, three in five, and nine or ten letters
    // with at most one blank (more would pass the limit of findings).
    for (int k = 0; k < 3; ++k) {
      const int blanks = k == 0 ? 2 : k == 1 ? 3 : int(draws.Below(2));
      const int length = k == 0 ? 7 : k == 1 ? 5 : 9 + int(draws.Below(2));
      std::string rack(size_t(blanks), '?');
      while (int(rack.size()) < length) rack += letters[draws.Below(uint32_t(letters.size()))];
      // Blanks anywhere in the rack: the search puts them last.
      for (size_t i = rack.size(); i > 1; --i) std::swap(rack[i - 1], rack[draws.Below(uint32_t(i))]);
      racks.push_back(rack);
    }
    for (const std::string& rack : racks) {
      const auto quick = SearchWith(false, turn.board, rack, quickPlays, quickDirections);
      const auto plain = SearchWith(true, turn.board, rack, plainPlays, plainDirections);
      const std::string what = "game " + std::to_string(turn.game) + " turn " + std::to_string(turn.number) +
                               " rack " + rack;
      ASSERT_EQ(quickPlays.size(), plainPlays.size()) << what;
      for (size_t i = 0; i < quickPlays.size(); ++i)
        ASSERT_EQ(quickPlays[i], plainPlays[i]) << what << " finding " << i + 1;
      ASSERT_EQ(quickDirections, plainDirections) << what;
      EXPECT_EQ(quick.steps, plain.steps) << what;
      EXPECT_EQ(quick.candidates, plain.candidates) << what;
      EXPECT_EQ(quick.proofs, plain.proofs) << what;
      ++searches;
      findings += int64_t(quickPlays.size());
      steps += quick.steps;
      longRacks += rack.size() > 8;
    }
  });
  EXPECT_GT(searches, 100);
  EXPECT_GT(findings, 200000);
  EXPECT_GT(longRacks, 25);
}

}  // namespace
}  // namespace ostrane::test
