// The move search as a whole: the first play, the plays found and not found
// (the vertical pass has no row below), the stop request, plays read and
// searches started while a search waits at a yield, and the limit of TabSens.
// The rest of its behaviour is held to the reference in equivalence_test.cpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <tuple>

#include "engine/board.h"
#include "lexicon/lexicon.h"
#include "tests/engine/engine_test_support.h"
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
      // "CAB" is no word; "AB" down is. "XB" and "YB" down are no words.
      {{"AB", "BA", "CA"}, "b H8", "ca", {"ab H7", "ca G7"}, {"ca H6"}, false, false},
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
    context.BytSens = 7;
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
    // The first of the best (4 points each) and its direction.
    const auto best = board.SubSortie(5);
    const std::string chosen = (best ? best->Place : "none") + std::to_string(context.BytSens);
    EXPECT_EQ(chosen, plays.empty() ? "none7" : c.exact ? "H70" : chosen);
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

}  // namespace
}  // namespace ostrane::test
