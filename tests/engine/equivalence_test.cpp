// The fast engine against the literal reference of tests/engine/
// reference_engine.h: on boards of seeded games, with racks with and without
// blanks, both must find the same plays in the same order, with the same
// points and directions, choose the same plays at every level, and leave the
// board and the search memory alike. Then the rule that keeps the quick walk
// out of the long lists, which the games seldom reach, against the lists.
#include <gtest/gtest.h>

#include <algorithm>

#include "engine/board.h"
#include "engine/move_search.h"
#include "lexicon/lexicon.h"
#include "tests/engine/engine_test_support.h"
#include "tests/engine/reference_engine.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

std::string Describe(const ClsWord& w) {
  return "'" + w.Express + "' " + w.Place + " " + std::to_string(w.CountP);
}

struct Compared {
  int64_t searches = 0, findings = 0, withTwoBlanks = 0, longRacks = 0;
};

// The reference searches what the engine has just searched (leaving it
// `engineRack`, when known).
void Compare(ClsPlateau& engine, EngineContext& context, ReferencePlateau& reference, const std::string& rack,
             const std::string& engineRack, Compared& done, const std::string& what) {
  std::string letters = rack;
  const int32_t count = reference.TrouveSolution(letters);
  ++done.searches;
  done.findings += count;
  done.withTwoBlanks += std::count(rack.begin(), rack.end(), '?') == 2;
  done.longRacks += rack.size() > 8;
  EXPECT_TRUE(engineRack.empty() || engineRack == letters) << what << ": rack after the search";
  ASSERT_EQ(engine.SolutionCount(), count) << what;
  for (int32_t i = 1; i <= count; ++i)
    ASSERT_EQ(engine.TabSolutions(i), reference.TabSolutions[size_t(i)])
        << what << ": finding " << i << " is " << Describe(engine.TabSolutions(i)) << ", the reference has "
        << Describe(reference.TabSolutions[size_t(i)]);
  ASSERT_EQ(context.LngSens, reference.LngSens) << what;
  ASSERT_TRUE(std::equal(reference.TabSens.begin(), reference.TabSens.begin() + reference.LngSens + 1,
                         context.TabSens.begin()))
      << what;
  for (int level = 0; level <= 5; ++level) {
    const auto chosen = engine.SubSortie(level);
    const ClsWord* expected = reference.SubSortie(level);
    ASSERT_EQ(chosen.has_value(), expected != nullptr) << what;
    EXPECT_TRUE(!chosen || *chosen == *expected) << what << " level " << level;
    EXPECT_EQ(context.BytSens, reference.BytSens) << what;
  }
  EXPECT_EQ(SquaresOf(engine), reference.TabPlateau) << what << ": the board after the search";
  const ClsPlateau::OwnRowMemory memory = engine.GetOwnRowMemory();
  EXPECT_EQ(memory.set != 0, reference.BlnDernier) << what;
  EXPECT_TRUE(!reference.BlnDernier ||
              (memory.column == reference.IntDerniereCol && memory.row == reference.IntDerniereLig))
      << what << ": the own-row memory";
}

// Racks searched first in a turn, each drawn by `extras` (none: only the
// turn's own rack). The last one shares the turn's TabSens with its rack.
using Extras = std::function<std::vector<std::string>(Rng& draws, const Turn& turn)>;

Compared PlayTwinGames(uint64_t seed, int games, const Extras& extras = nullptr, int maxTurns = 1000) {
  Compared done;
  Rng referenceRandom(seed), draws(seed * 31 + 7);
  ReferencePlateau reference(RealLexicon(), referenceRandom);
  const auto what = [&](const Turn& turn, const std::string& rack) {
    return "seed " + std::to_string(seed) + " game " + std::to_string(turn.game) + " turn " +
           std::to_string(turn.number) + " rack " + rack;
  };
  const auto before = [&](const Turn& turn, ClsPlateau& engine, EngineContext& context) {
    reference.TabPlateau = turn.board;
    reference.BlnPremier = turn.firstPlay;
    reference.BlnDernier = reference.BlnDernier && turn.number > 1;  // a new board each game
    for (const std::string& rack :
         extras && !turn.firstPlay ? extras(draws, turn) : std::vector<std::string>{}) {
      context.LngSens = reference.LngSens = 0;
      std::string letters = rack;
      engine.TrouveSolution(letters);
      if (!::testing::Test::HasFailure())
        Compare(engine, context, reference, rack, letters, done, what(turn, rack));
    }
  };
  SelfPlay(
      RealLexicon(), seed, games,
      [&](const Turn& turn, ClsPlateau& engine, EngineContext& context) {
        if (!::testing::Test::HasFailure())
          Compare(engine, context, reference, turn.rack, "", done, what(turn, turn.rack));
        reference.LngSens = 0;
      },
      before, maxTurns);
  return done;
}

// Every `every` turns from turn `from` on, a rack of seven with `blanks`
// blanks (up to that many unless `exact`), its letters drawn from `alphabet`.
Extras EveryFew(int every, int blanks, bool exact = false,
                const std::string& alphabet = "abcdefghijklmnopqrstuvwxyz", int from = 1) {
  return [=](Rng& draws, const Turn& turn) {
    if (turn.number % every != 0 || turn.number < from) return std::vector<std::string>{};
    std::string rack(exact ? size_t(blanks) : size_t(draws.Below(uint32_t(blanks + 1))), '?');
    while (rack.size() < 7) rack += alphabet[draws.Below(uint32_t(alphabet.size()))];
    return std::vector<std::string>{rack};
  };
}

TEST(EngineEquivalence, WholeGamesWithTheirOwnRacksAndSecondSearchesInATurn) {
  EXPECT_GT(PlayTwinGames(11, 4).findings, 50000);
  EXPECT_GT(PlayTwinGames(23, 3, EveryFew(3, 1)).searches, 60);
  EXPECT_GT(PlayTwinGames(37, 3, EveryFew(2, 2)).withTwoBlanks, 10);  // up to crowded boards
}

// The richest searches: racks of frequent letters, often repeated, with one
// and with two blanks, every turn of the second half of games, on boards as
// crowded as they get.
TEST(EngineEquivalence, RichBlankRacksOnCrowdedBoards) {
  const Compared two = PlayTwinGames(41, 2, EveryFew(1, 2, true, "eeeaaiissnnrrttluo", 12));
  EXPECT_GT(two.withTwoBlanks, 25);
  EXPECT_GT(two.findings, 400000);
  const Compared one = PlayTwinGames(53, 2, EveryFew(1, 1, true, "eeeaaiissnnrrttluo", 12));
  EXPECT_GT(one.searches, 60);
  EXPECT_GT(one.findings, 100000);
}

TEST(EngineEquivalence, ManyOpeningsAndEarlyBoards) {
  int64_t searches = 0;
  for (uint64_t seed = 100; seed < 130 && !HasFailure(); ++seed)
    searches += PlayTwinGames(seed, 1, EveryFew(2, 2), 6).searches;
  EXPECT_GT(searches, 150);
}

// The plain walk (a letter-by-letter transcription of the pattern search),
// forced, on odd racks: nine or ten letters with at most one blank (more
// would pass the limit of findings), three blanks in five, two in seven,
// blanks anywhere in the rack (the search puts them last).
TEST(EngineEquivalence, ThePlainWalkOnOddRacks) {
  struct PlainWalk {
    PlainWalk() { MoveSearch::ForcePlainWalk(true); }
    ~PlainWalk() { MoveSearch::ForcePlainWalk(false); }
  } plain;
  const Compared done = PlayTwinGames(515, 2, [](Rng& draws, const Turn&) {
    std::vector<std::string> racks = {std::string(draws.Below(2), '?'), "???", "??"};
    for (size_t k = 0, length = 9 + draws.Below(2); k < 3; ++k, length = k == 1 ? 5 : 7) {
      while (racks[k].size() < length) racks[k] += "eeaaisnrtlouqzkwx"[draws.Below(17)];
      for (size_t i = length; i > 1; --i) std::swap(racks[k][i - 1], racks[k][draws.Below(uint32_t(i))]);
    }
    return racks;
  });
  EXPECT_GT(done.searches, 100);
  EXPECT_GT(done.findings, 200000);
  EXPECT_GT(done.longRacks, 25);
}

// The characters of the long word lists rule out, before any search of a
// list, the texts that hold others (a word read on with lower-case tiles);
// never a text that the list holds.
TEST(QuickWalk, LongWordsAreRuledOutOnlyByCharactersNoneOfThemHolds) {
  const Lexicon& lexicon = RealLexicon();
  const auto index = WordTreeIndex::Build(lexicon.Dico, &lexicon);
  const auto bare = WordTreeIndex::Build(lexicon.Dico);
  Rng draws(31);
  int ruledOut = 0;
  for (size_t length = 10; length <= 15; ++length) {
    const LongWordList& list = lexicon.LongWords(length);
    for (int k = 0; k < 200; ++k) {
      std::string text(list.Element(int32_t(draws.Below(uint32_t(list.UBound())))));
      const size_t at = draws.Below(uint32_t(length));
      if (k % 2 == 1) text[at] = k % 4 == 1 ? LowerAscii(text[at]) : char('A' + draws.Below(26));
      const bool maybe = index->MayBeLongWord(lexicon, text);
      ASSERT_TRUE(maybe || !list.Contains(text)) << text;
      ruledOut += !maybe;
      EXPECT_TRUE(bare->MayBeLongWord(lexicon, text));  // built without the lists
    }
  }
  EXPECT_GT(ruledOut, 200);
  EXPECT_LT(ruledOut, 600);
}

}  // namespace
}  // namespace ostrane::test
