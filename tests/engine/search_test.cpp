// The move search as a whole: the first play, the plays found and not found
// (the vertical pass has no row below), the stop request, plays read and
// searches started while a search waits at a yield, the limit of TabSens;
// and everything it finds held to the literal reference.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <tuple>

#include "engine/move_search.h"
#include "tests/engine/engine_test_support.h"
#include "tests/engine/reference_engine.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

// The findings as "express place" texts.
std::vector<std::string> Findings(const ClsPlateau& board) {
  std::vector<std::string> plays;
  for (int32_t i = 1; i <= board.SolutionCount(); ++i)
    plays.push_back(board.TabSolutions(i).Express + " " + board.TabSolutions(i).Place);
  return plays;
}

// A mid-game board of a seeded game, and the rack drawn for it.
Turn TurnOf(uint64_t seed, int number) {
  Turn found;
  SelfPlay(RealLexicon(), seed, 1, [&](const Turn& turn, ClsPlateau&, EngineContext&) {
    if (turn.number == number) found = turn;
  });
  return found;
}

TEST(FirstPlay, EachWordIsTriedAtEveryStartOverTheCentreInARandomDirection) {
  int32_t down = 0, total = 0;
  for (const std::string rack : {"maison", "esartin", "kwz?", "uelr??e"}) {
    EngineContext context;
    ClsPlateau board(RealLexicon(), context);
    std::string letters = rack;
    const int32_t count = board.TrouveSolution(letters);
    // What the rack forms, asked of the lexicon directly: L findings for a
    // word of L letters, across from H(9 - L) to H8 or down from the same
    // squares turned.
    ClsExpressions words;
    words.SubDico(RealLexicon());
    std::string again = rack;
    int32_t index = 0;
    for (int32_t r = 1, results = words.SubCombinaisons(again); r <= results; ++r) {
      const size_t length = std::min(words.GetMot(r).find(' '), words.GetMot(r).size());
      for (size_t start = 9 - length; start <= 8; ++start) {
        const ClsWord& play = board.TabSolutions(++index);
        if (play.IsEmpty()) continue;  // a blank not needed
        const bool across = play.Place[0] == 'H';
        EXPECT_EQ(play.Place,
                  across ? "H" + std::to_string(start) : "8" + std::string(1, char('A' + start - 1)));
        EXPECT_EQ(play.Express.size(), length) << play.Express;
        EXPECT_EQ(context.TabSens[size_t(index)], across ? 0 : 1) << play.Place;
        down += !across;
      }
    }
    EXPECT_EQ(count, index) << rack;
    total += count;
  }
  EXPECT_GT(down, total / 3);
  EXPECT_LT(down, total * 2 / 3);
}

TEST(SmallBoard, WhatIsFoundAndWhatIsNot) {
  const struct {
    std::vector<std::string> words;
    std::string laid, rack;
    std::vector<std::string> found, missing;  // whole when `exact`
    bool exact, missingLawful;
  } cases[] = {
      // A word ending on the tile, one starting on it; then the same down.
      {{"AB", "BA"}, "b H8", "a", {"ab H7", "ba H8", "ab 8G", "ba 8H"}, {}, true, false},
      // "XB" and "YB" down are no words.
      {{"AB", "XY", "BX"}, "b H8", "xy", {"bx H8"}, {"xy G7", "xy G8"}, false, false},
      // Down right of the tile, making "ON" across: lawful, but the pass
      // down has no row below a tile, so that column is not searched.
      {{"ON", "NO", "NE"}, "o H8", "ne", {"ne I8", "ne 7H"}, {"ne 9H"}, false, true},
      // The joined long word is compared with the list as it stands, tiles
      // in lower case: no match; blanks are written in capitals, and match.
      {{"ABAISSE", "ABAISSEMENT", "MENT"}, "ment H8", "abaisse", {}, {"abaissement H1"}, false, true},
      {{"ABAISSE", "ABAISSEMENT", "MENT"}, "MENT H8", "abaisse", {"abaisseMENT H1"}, {}, false, false},
      {{"AB", "BA"}, "ab A1 b O15", "", {}, {}, true, false}};
  for (const auto& c : cases) {
    const Lexicon lexicon = SmallLexicon(c.words);
    EngineContext context;
    ClsPlateau board(lexicon, context);
    std::istringstream laid(c.laid);
    for (std::string express, place; laid >> express >> place;)
      board.SubCaserWord(ClsWord{express, place, 0});
    board.SubWordFirst(false);
    const BoardSquares before = SquaresOf(board);
    std::string rack = c.rack;
    board.TrouveSolution(rack);
    const std::vector<std::string> plays = Findings(board);
    EXPECT_EQ(c.exact ? plays : c.found, c.found);
    for (const std::string& play : c.found)
      EXPECT_EQ(std::count(plays.begin(), plays.end(), play), 1) << play;
    for (const std::string& play : c.missing) {
      EXPECT_EQ(std::count(plays.begin(), plays.end(), play), 0) << play;
      const ClsWord word{play.substr(0, play.find(' ')), play.substr(play.find(' ') + 1), 0};
      EXPECT_EQ(Judge(lexicon, before, word, c.rack, false).legal, c.missingLawful) << play;
    }
    EXPECT_EQ(SquaresOf(board), before);
  }
}

// Stops asked from the yield hook at the n-th yield of the pass across or of
// the pass down (the board turned): the routine that was running goes to its
// end, the plays found so far are kept and the board is the right way round.
// A stop asked before the search is forgotten by it.
TEST(StopRequest, KeepsThePlaysFoundAndTurnsTheBoardBack) {
  const Turn mid = TurnOf(3, 9);
  EngineContext fullContext;
  ClsPlateau full(RealLexicon(), fullContext);
  LoadBoard(full, mid.board);
  full.SubLaisseBTon(true);
  std::string rack = mid.rack;
  const int32_t all = full.TrouveSolution(rack);
  const auto firstDown = std::find(fullContext.TabSens.begin() + 1, fullContext.TabSens.end(), 1);
  const int32_t across = int32_t(firstDown - fullContext.TabSens.begin()) - 1;
  ASSERT_GT(across, 20);
  ASSERT_GT(all, across + 20);
  for (const auto& [down, at] :
       std::vector<std::pair<bool, int>>{{false, 1}, {false, 7}, {false, 40}, {true, 30}}) {
    EngineContext context;
    ClsPlateau board(RealLexicon(), context);
    LoadBoard(board, mid.board);
    int yields = 0, countAtStop = -1;
    bool sawSearching = true;
    std::function<void()> onYield = [&] {
      sawSearching &= board.SubCherche() && !board.SubResult();
      if ((SquaresOf(board) != mid.board) != down || ++yields != at) return;
      countAtStop = board.SolutionCount();
      board.SubLaisseBTon(true);
    };
    board.SetYield(HookOf(onYield));
    std::string letters = mid.rack;
    const int32_t count = board.TrouveSolution(letters);
    EXPECT_TRUE(sawSearching && !board.SubCherche() && board.SubResult());
    EXPECT_GE(count, countAtStop);
    EXPECT_LT(count, down ? all : across) << "stopped at yield " << at;
    EXPECT_EQ(context.TabSens[size_t(count)], down ? 1 : 0);
    for (int32_t i = 1; i <= count; ++i) EXPECT_EQ(board.TabSolutions(i), full.TabSolutions(i));
    EXPECT_EQ(context.LngSens, count);
    EXPECT_EQ(SquaresOf(board), mid.board);
  }
}

// While a search waits at a yield, the plays it hands out stay where and
// what they are, and another board of the program may search (with working
// lists of its own): both find what they find alone.
TEST(SolutionSet, PlaysReadAndSearchesStartedDuringASearchAreSafe) {
  const Turn a = TurnOf(4, 8), b = TurnOf(5, 10);
  EngineContext context;
  ClsPlateau first(RealLexicon(), context), second(RealLexicon(), context);
  const auto search = [](ClsPlateau& board, const Turn& turn, std::string rack) {
    LoadBoard(board, turn.board);
    board.TrouveSolution(rack);
    return Findings(board);
  };
  const std::vector<std::string> expectedA = search(first, a, "es?arit"),
                                 expectedB = search(second, b, "lnr?eas");
  int yields = 0;
  std::vector<std::tuple<int32_t, const ClsWord*, ClsWord>> handed;
  std::vector<std::string> secondFound;
  std::function<void()> onYield = [&] {
    const int32_t count = first.SolutionCount();
    if (++yields % 97 == 0 && count > 0)
      handed.emplace_back(count, &first.TabSolutions(count), first.TabSolutions(count));
    if (yields == 300) secondFound = search(second, b, "lnr?eas");
  };
  first.SetYield(HookOf(onYield));
  EXPECT_EQ(search(first, a, "es?arit"), expectedA);
  first.SetYield({});
  EXPECT_EQ(secondFound, expectedB);
  ASSERT_GT(handed.size(), 20u);
  for (const auto& [index, address, seen] : handed) {
    EXPECT_FALSE(seen.IsEmpty());
    EXPECT_EQ(address, &first.TabSolutions(index));
    EXPECT_EQ(first.TabSolutions(index), seen);
  }
  // And the lists go back: the next search agrees.
  EXPECT_EQ(search(second, b, "lnr?eas"), expectedB);
}

TEST(SolutionSet, TabSensFullOrAFindingPastTheBoundEndsTheProgram) {
  FatalCatcher catcher;
  EngineContext context;
  ClsPlateau board(RealLexicon(), context);
  context.LngSens = EngineContext::kTabSensBound - 1;
  std::string rack = "maison";
  try {
    board.TrouveSolution(rack);
    ADD_FAILURE() << "no index error";
  } catch (const FatalCalled& called) {
    EXPECT_NE(std::string(called.what()).find("TabSens"), std::string::npos);
  }
  EXPECT_THROW(board.TabSolutions(ClsPlateau::kSolutionsBound + 1), FatalCalled);
  EXPECT_TRUE(board.TabSolutions(ClsPlateau::kSolutionsBound).IsEmpty());
}

// The fast engine against the literal reference of reference_engine.h: on
// boards of seeded games, with racks with and without blanks, both must find
// the same plays in the same order, with the same points and directions,
// choose the same plays at every level, and leave the board and the search
// memory alike. Then the rule that keeps the quick walk out of the long
// lists, which the games seldom reach, against the lists.
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
  if (::testing::Test::HasFailure()) return;  // one difference is enough
  SCOPED_TRACE(what);
  std::string letters = rack;
  const int32_t count = reference.TrouveSolution(letters);
  ++done.searches;
  done.findings += count;
  done.withTwoBlanks += std::count(rack.begin(), rack.end(), '?') == 2;
  done.longRacks += rack.size() > 8;
  EXPECT_TRUE(engineRack.empty() || engineRack == letters) << "the rack after the search";
  ASSERT_EQ(engine.SolutionCount(), count);
  for (int32_t i = 1; i <= count; ++i)
    ASSERT_EQ(Describe(engine.TabSolutions(i)), Describe(reference.TabSolutions[i])) << "finding " << i;
  ASSERT_EQ(context.LngSens, reference.LngSens);
  ASSERT_TRUE(std::equal(reference.TabSens.begin(), reference.TabSens.begin() + reference.LngSens + 1,
                         context.TabSens.begin()));
  for (int level = 0; level <= 5; ++level) {
    const auto chosen = engine.SubSortie(level);
    const ClsWord* expected = reference.SubSortie(level);
    ASSERT_EQ(chosen.has_value(), expected != nullptr);
    EXPECT_TRUE(!chosen || *chosen == *expected) << "level " << level;
    EXPECT_EQ(context.BytSens, reference.BytSens);
  }
  EXPECT_EQ(SquaresOf(engine), reference.TabPlateau) << "the board after the search";
  const ClsPlateau::OwnRowMemory memory = engine.GetOwnRowMemory();
  EXPECT_EQ(memory.set != 0, reference.BlnDernier);
  EXPECT_TRUE(!memory.set ||
              (memory.column == reference.IntDerniereCol && memory.row == reference.IntDerniereLig));
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
      Compare(engine, context, reference, rack, letters, done, what(turn, rack));
    }
  };
  SelfPlay(
      RealLexicon(), seed, games,
      [&](const Turn& turn, ClsPlateau& engine, EngineContext& context) {
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
