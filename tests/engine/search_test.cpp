// The move search as a whole: the first play, the plays found and not found
// (the vertical pass has no row below), the stop request, the memory of the
// own-row routine across passes and searches, TabSens and LngSens over two
// searches of one turn, findings counted with duplicates, and the limits.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "engine/board.h"
#include "lexicon/lexicon.h"
#include "tests/engine/engine_test_support.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

using Plays = std::vector<std::pair<std::string, std::string>>;  // Express, Place

Plays Findings(const ClsPlateau& board) {
  Plays plays;
  for (int32_t i = 1; i <= board.SolutionCount(); ++i)
    plays.emplace_back(board.TabSolutions(i).Express, board.TabSolutions(i).Place);
  return plays;
}

bool Has(const Plays& plays, const std::string& express, const std::string& place) {
  return std::find(plays.begin(), plays.end(), std::make_pair(express, place)) != plays.end();
}

ClsWord Play(const std::string& express, const std::string& place) {
  ClsWord w;
  w.Express = express;
  w.Place = place;
  return w;
}

// A mid-game board of a seeded game, and the rack drawn for it.
struct MidGame {
  BoardSquares board{};
  std::string rack;
};
MidGame BoardOfTurn(uint64_t seed, int turnWanted) {
  MidGame found;
  SelfPlay(RealLexicon(), seed, 1, [&](const Turn& turn, ClsPlateau&, EngineContext&) {
    if (turn.number == turnWanted) {
      found.board = turn.board;
      found.rack = turn.rack;
    }
  });
  return found;
}

// ------------------------------------------------------------- first play

TEST(FirstPlay, EachWordIsTriedAtEveryStartOverTheCentre) {
  const Lexicon& lexicon = RealLexicon();
  for (const std::string rack : {"maison", "esartin", "kwz?", "uelr??e"}) {
    EngineContext context;
    context.Random.Seed(5);
    ClsPlateau board(lexicon, context);
    std::string letters = rack;
    const int32_t count = board.TrouveSolution(letters);

    // What the rack forms, asked of the lexicon directly.
    ClsExpressions words;
    words.SubDico(lexicon);
    std::string again = rack;
    const int32_t results = words.SubCombinaisons(again);
    int32_t expected = 0;
    int32_t index = 0;
    for (int32_t r = 1; r <= results; ++r) {
      const std::string_view result = words.GetMot(r);
      const size_t length = std::min(result.find(' '), result.size());
      expected += int32_t(length);
      // The L findings of this word, starting from H(9 - L) to H8.
      for (size_t q = 0; q < length; ++q) {
        const ClsWord& play = board.TabSolutions(++index);
        if (play.IsEmpty()) continue;
        EXPECT_EQ(play.Express.size(), length);
        const bool across = play.Place[0] == 'H';
        EXPECT_EQ(context.TabSens[size_t(index)], across ? 0 : 1) << play.Place;
        // Across from H(q), or down from the same square turned: column 8
        // from row q.
        const int start = int(9 - length + q);
        EXPECT_EQ(play.Place, across ? "H" + std::to_string(start) : "8" + std::string(1, char('A' + start - 1)))
            << rack << " " << result;
      }
    }
    EXPECT_EQ(count, expected) << rack;
    EXPECT_EQ(context.LngSens, count);
    EXPECT_TRUE(board.IsEmpty());
  }
}

TEST(FirstPlay, DirectionsComeFromTheSeedAndNothingElse) {
  const auto run = [](uint64_t seed) {
    EngineContext context;
    context.Random.Seed(seed);
    ClsPlateau board(RealLexicon(), context);
    std::string rack = "ertaisn";
    board.TrouveSolution(rack);
    std::vector<std::string> places;
    std::vector<int> points;
    for (int32_t i = 1; i <= board.SolutionCount(); ++i) {
      places.push_back(board.TabSolutions(i).Place);
      points.push_back(board.TabSolutions(i).CountP);
    }
    return std::make_pair(places, points);
  };
  const auto a = run(1), b = run(1), c = run(2);
  EXPECT_EQ(a, b);
  EXPECT_NE(a.first, c.first);   // other directions...
  EXPECT_EQ(a.second, c.second);  // ...scoring alike, the table being symmetric
  int down = 0;
  for (const std::string& place : a.first) down += place[0] != 'H';
  EXPECT_GT(down, int(a.first.size()) / 3);
  EXPECT_LT(down, int(a.first.size()) * 2 / 3);
}

// --------------------------------------------------- what is found or not

class SmallBoard : public ::testing::Test {
 protected:
  void Use(std::vector<std::string> words) { lexicon_ = SmallLexicon(words); }
  ClsPlateau& Board() {
    if (!board_) {
      board_ = std::make_unique<ClsPlateau>(lexicon_, context_);
      board_->SubWordFirst(false);
    }
    return *board_;
  }
  Plays Search(std::string rack) {
    Board().TrouveSolution(rack);
    return Findings(Board());
  }
  Lexicon lexicon_;
  EngineContext context_;
  std::unique_ptr<ClsPlateau> board_;
};

TEST_F(SmallBoard, OneLetterBesideOneTile) {
  Use({"AB", "BA"});
  Board().SubCase(7, 7, "b");
  const Plays plays = Search("a");
  // Across: a word ending on the tile (mask "*" and the tile), one starting
  // on it; then the same down, from the turned board.
  EXPECT_EQ(plays, (Plays{{"ab", "H7"}, {"ba", "H8"}, {"ab", "8G"}, {"ba", "8H"}}));
  EXPECT_EQ(context_.TabSens[1] + context_.TabSens[2], 0);
  EXPECT_EQ(context_.TabSens[3] + context_.TabSens[4], 2);
  const auto best = Board().SubSortie(5);
  ASSERT_TRUE(best);
  EXPECT_EQ(best->Express, "ab");  // 4 points like the others: the first stays
  EXPECT_EQ(best->Place, "H7");
  EXPECT_EQ(context_.BytSens, 0);
}

TEST_F(SmallBoard, AWordEndingBeforeATileMustMakeAWordWithIt) {
  Use({"AB", "BA", "CA"});
  Board().SubCase(7, 7, "b");
  const Plays plays = Search("ca");
  EXPECT_FALSE(Has(plays, "ca", "H6"));  // "CAB" is no word
  EXPECT_TRUE(Has(plays, "ab", "H7"));
  EXPECT_TRUE(Has(plays, "ca", "G7"));  // above, making "AB" down
}

TEST_F(SmallBoard, ADownPlayTouchingOnlyATileOnItsLeftIsNotFound) {
  Use({"ON", "NO", "NE"});
  Board().SubCase(7, 7, "o");
  const BoardSquares before = SquaresOf(Board());
  const Plays plays = Search("ne");
  // Across below the tile, and down left of it: found.
  EXPECT_TRUE(Has(plays, "ne", "I8"));
  EXPECT_TRUE(Has(plays, "ne", "7H"));
  // Down right of it, making "ON" across: lawful, but that column is not
  // searched.
  const Verdict lawful = Judge(lexicon_, before, Play("ne", "9H"), "ne", false);
  EXPECT_TRUE(lawful.legal) << lawful.why;
  EXPECT_FALSE(Has(plays, "ne", "9H"));
  for (const auto& [express, place] : plays) EXPECT_NE(place, "9H");
}

TEST_F(SmallBoard, ACrossWordThatIsNoWordDropsTheCandidate) {
  Use({"AB", "XY", "BX"});
  Board().SubCase(7, 7, "b");
  // "xy" above the tile puts x or y over the b: "XB" and "YB" are no words.
  const Plays plays = Search("xy");
  EXPECT_FALSE(Has(plays, "xy", "G7"));
  EXPECT_FALSE(Has(plays, "xy", "G8"));
  EXPECT_TRUE(Has(plays, "bx", "H8"));
  EXPECT_TRUE(Board().SubCase(7, 6).empty());
  EXPECT_TRUE(Board().SubCase(8, 6).empty());
}

TEST_F(SmallBoard, ALongWordReadWithLowerCaseTilesIsNotFound) {
  Use({"ABAISSE", "ABAISSEMENT", "MENT"});
  Board().SubCaserWord(Play("ment", "H8"));
  // The rack fills H1 to H7; the joined word is compared with the long
  // list as it stands, tiles in lower case: no match.
  EXPECT_FALSE(Has(Search("abaisse"), "abaissement", "H1"));
  const Verdict lawful = Judge(lexicon_, SquaresOf(Board()), Play("abaissement", "H1"), "abaisse", false);
  EXPECT_TRUE(lawful.legal) << lawful.why;
  // Blanks are written in capitals, and then it matches.
  Board().SubCaserWord(Play("MENT", "H8"));
  EXPECT_TRUE(Has(Search("abaisse"), "abaisseMENT", "H1"));
}

TEST_F(SmallBoard, AnEmptyRackFindsNothing) {
  Use({"AB", "BA"});
  Board().SubCaserWord(Play("ab", "A1"));
  Board().SubCase(14, 14, "b");
  context_.BytSens = 1;
  const BoardSquares before = SquaresOf(Board());
  EXPECT_TRUE(Search("").empty());
  EXPECT_FALSE(Board().SubSortie(5));
  EXPECT_EQ(context_.BytSens, 1);
  EXPECT_EQ(SquaresOf(Board()), before);
}

// ---------------------------------------------------- stop and the memory

struct StopAt {
  ClsPlateau* board = nullptr;
  int yields = 0;
  int stopAt = 0;
  int32_t countAtStop = -1;
  bool sawSearching = true;
  static void Hook(void* context) {
    auto* self = static_cast<StopAt*>(context);
    self->sawSearching &= self->board->SubCherche() && !self->board->SubResult();
    if (++self->yields == self->stopAt) {
      self->countAtStop = self->board->SolutionCount();
      self->board->SubLaisseBTon(true);
    }
  }
};

TEST(StopRequest, DuringTheAcrossPassKeepsThePlaysFoundAndTurnsTheBoardBack) {
  const MidGame mid = BoardOfTurn(3, 9);
  EngineContext fullContext;
  ClsPlateau full(RealLexicon(), fullContext);
  LoadBoard(full, mid.board);
  std::string rack = mid.rack;
  const int32_t all = full.TrouveSolution(rack);
  int32_t across = 0;
  while (across < all && fullContext.TabSens[size_t(across) + 1] == 0) ++across;
  ASSERT_GT(across, 20);
  ASSERT_GT(all, across);

  for (int stopAt : {1, 7, 40}) {
    EngineContext context;
    ClsPlateau board(RealLexicon(), context);
    LoadBoard(board, mid.board);
    StopAt stop;
    stop.board = &board;
    stop.stopAt = stopAt;
    board.SetYield({&StopAt::Hook, &stop});
    std::string letters = mid.rack;
    const int32_t count = board.TrouveSolution(letters);

    EXPECT_TRUE(stop.sawSearching);
    EXPECT_FALSE(board.SubCherche());
    EXPECT_TRUE(board.SubResult());
    // The routine that was running went to its end; nothing came after.
    EXPECT_GE(count, stop.countAtStop);
    EXPECT_LT(count, across) << "stopped at yield " << stopAt;
    for (int32_t i = 1; i <= count; ++i) {
      EXPECT_EQ(board.TabSolutions(i), full.TabSolutions(i));
      EXPECT_EQ(context.TabSens[size_t(i)], 0);  // the pass down did nothing
    }
    EXPECT_EQ(context.LngSens, count);
    EXPECT_EQ(SquaresOf(board), mid.board);  // the right way round
  }
}

TEST(StopRequest, DuringThePassDownAndBeforeASearch) {
  const MidGame mid = BoardOfTurn(3, 9);
  EngineContext fullContext;
  ClsPlateau full(RealLexicon(), fullContext);
  LoadBoard(full, mid.board);
  std::string rack = mid.rack;
  const int32_t all = full.TrouveSolution(rack);

  // A stop asked before the search is forgotten by it.
  EngineContext context;
  ClsPlateau board(RealLexicon(), context);
  LoadBoard(board, mid.board);
  board.SubLaisseBTon(true);
  std::string letters = mid.rack;
  EXPECT_EQ(board.TrouveSolution(letters), all);

  // Stopped in the pass down: some plays down, fewer than in all.
  EngineContext downContext;
  ClsPlateau down(RealLexicon(), downContext);
  LoadBoard(down, mid.board);
  struct Turned {
    ClsPlateau* board;
    const BoardSquares* real;
    int seen = 0;
  } turned{&down, &mid.board};
  down.SetYield({[](void* c) {
                   auto* t = static_cast<Turned*>(c);
                   if (SquaresOf(*t->board) != *t->real && ++t->seen == 30)
                     t->board->SubLaisseBTon(true);
                 },
                 &turned});
  letters = mid.rack;
  const int32_t count = down.TrouveSolution(letters);
  EXPECT_LT(count, all);
  EXPECT_EQ(downContext.TabSens[size_t(count)], 1);
  for (int32_t i = 1; i <= count; ++i) EXPECT_EQ(down.TabSolutions(i), full.TabSolutions(i));
  EXPECT_EQ(SquaresOf(down), mid.board);
}

TEST_F(SmallBoard, TheOwnRowMemoryCrossesPassesAndSearches) {
  Use({"AB", "BA"});
  // A b on A5 comes first across; an a on D1, turned to (3, 0), comes first
  // down, where the row above it does not exist.
  ClsPlateau& board = Board();
  board.SubCase(4, 0, "b");
  board.SubCase(0, 3, "a");

  EngineContext freshContext;
  ClsPlateau fresh(lexicon_, freshContext);
  fresh.SubWordFirst(false);
  LoadBoard(fresh, SquaresOf(board));
  std::string rack = "ab";
  fresh.TrouveSolution(rack);
  const Plays all = Findings(fresh);
  ASSERT_TRUE(Has(all, "ab", "A4"));  // through the b's own row
  ASSERT_TRUE(Has(all, "ba", "A5"));

  // Stop within the own row of the first tile down: the memory keeps it.
  struct Hook {
    ClsPlateau* board;
    int turnedYields = 0;
  } hook{&board};
  board.SetYield({[](void* c) {
                    auto* h = static_cast<Hook*>(c);
                    if (h->board->Square(3, 0) != '\0' && ++h->turnedYields == 2)
                      h->board->SubLaisseBTon(true);
                  },
                  &hook});
  rack = "ab";
  board.TrouveSolution(rack);
  board.SetYield({});
  ASSERT_GE(hook.turnedYields, 2);

  // The next search skips the b: it lies just right of the remembered tile,
  // on its row, as (4, 0) follows (3, 0).
  const Plays next = Search("ab");
  EXPECT_FALSE(Has(next, "ab", "A4"));
  EXPECT_FALSE(Has(next, "ba", "A5"));
  EXPECT_EQ(next.size(), all.size() - 2);
  // After a whole search the memory no longer gets in the way.
  EXPECT_EQ(Search("ab"), all);
}

// ------------------------------------------------- directions and counts

TEST(SolutionSet, ASecondSearchInATurnReadsTheFirstSearchsDirections) {
  int mismatches = 0, checked = 0;
  for (uint64_t seed : {4u, 8u, 15u}) {
    for (int turnWanted : {5, 9, 13}) {
      const MidGame mid = BoardOfTurn(seed, turnWanted);
      if (mid.rack.empty()) continue;
      EngineContext context;
      ClsPlateau board(RealLexicon(), context);
      LoadBoard(board, mid.board);
      std::string first = "?eaxyzo";
      const int32_t n1 = board.TrouveSolution(first);
      std::vector<int32_t> firstDirections(context.TabSens.begin() + 1,
                                           context.TabSens.begin() + 1 + n1);
      std::string second = mid.rack;
      const int32_t n2 = board.TrouveSolution(second);
      EXPECT_EQ(context.LngSens, n1 + n2);
      const auto best = board.SubSortie(5);
      if (!best) continue;
      int32_t bestIndex = 1;
      while (board.TabSolutions(bestIndex).CountP != best->CountP) ++bestIndex;
      EXPECT_EQ(context.BytSens, context.TabSens[size_t(bestIndex)]);
      if (bestIndex <= n1) {
        EXPECT_EQ(context.BytSens, firstDirections[size_t(bestIndex) - 1]);
      }
      const uint8_t direction = best->Place[0] >= 'A' ? 0 : 1;
      mismatches += context.BytSens != direction;
      ++checked;

      // After a validation sets LngSens back, the direction is the play's.
      context.LngSens = 0;
      second = mid.rack;
      board.TrouveSolution(second);
      const auto again = board.SubSortie(5);
      ASSERT_TRUE(again);
      EXPECT_EQ(context.BytSens, again->Place[0] >= 'A' ? 0 : 1);
    }
  }
  EXPECT_GT(checked, 5);
  EXPECT_GT(mismatches, 0);  // the first search's directions did show through
}

TEST(SolutionSet, FindingsAreCountedWithTheirDuplicates) {
  int searchesWithDuplicates = 0;
  SelfPlay(RealLexicon(), 12, 1, [&](const Turn&, ClsPlateau& board, EngineContext&) {
    std::map<std::pair<std::string, std::string>, int> points;
    for (int32_t i = 1; i <= board.SolutionCount(); ++i) {
      const ClsWord& play = board.TabSolutions(i);
      const auto [at, inserted] = points.emplace(std::make_pair(play.Express, play.Place), play.CountP);
      if (!inserted) {
        EXPECT_EQ(at->second, play.CountP);
      }
    }
    searchesWithDuplicates += int32_t(points.size()) < board.SolutionCount();
  });
  EXPECT_GT(searchesWithDuplicates, 3);
}

// The plays read while a search runs (from its yield hook) are those the
// list holds at its end, and what TabSolutions handed out stays in place.
TEST(SolutionSet, PlaysReadDuringASearchStayWhatTheyWere) {
  const MidGame mid = BoardOfTurn(4, 8);
  EngineContext context;
  ClsPlateau board(RealLexicon(), context);
  LoadBoard(board, mid.board);
  struct Reader {
    ClsPlateau* board = nullptr;
    int yields = 0;
    std::vector<std::pair<int32_t, const ClsWord*>> handed;
    std::vector<ClsWord> seen;
    static void Hook(void* c) {
      auto* r = static_cast<Reader*>(c);
      const int32_t count = r->board->SolutionCount();
      if (++r->yields % 97 != 0 || count == 0) return;
      const ClsWord& play = r->board->TabSolutions(count);
      r->handed.emplace_back(count, &play);
      r->seen.push_back(play);
    }
  } reader;
  reader.board = &board;
  board.SetYield({&Reader::Hook, &reader});
  std::string rack = "es?ar?t";
  const int32_t count = board.TrouveSolution(rack);
  board.SetYield({});
  ASSERT_GT(reader.handed.size(), 20u);
  for (size_t k = 0; k < reader.handed.size(); ++k) {
    const auto [index, address] = reader.handed[k];
    ASSERT_LE(index, count);
    EXPECT_FALSE(reader.seen[k].IsEmpty()) << index;
    EXPECT_EQ(reader.seen[k], board.TabSolutions(index)) << index;
    EXPECT_EQ(address, &board.TabSolutions(index)) << index;
  }
}

// Boards of one program share the working lists of a search; a board that
// searches while another's search waits at a yield works with its own, and
// both find what they find alone.
TEST(SolutionSet, ASearchStartedFromAnothersYieldFindsWhatItFindsAlone) {
  const MidGame a = BoardOfTurn(4, 8), b = BoardOfTurn(5, 10);
  const auto alone = [](const MidGame& mid, const std::string& rack) {
    EngineContext context;
    ClsPlateau board(RealLexicon(), context);
    LoadBoard(board, mid.board);
    std::string letters = rack;
    board.TrouveSolution(letters);
    return Findings(board);
  };
  const Plays expectedA = alone(a, "es?arit"), expectedB = alone(b, "lnr?eas");

  EngineContext context;
  ClsPlateau first(RealLexicon(), context), second(RealLexicon(), context);
  LoadBoard(first, a.board);
  LoadBoard(second, b.board);
  struct Inner {
    ClsPlateau* board = nullptr;
    int yields = 0;
    Plays found;
    static void Hook(void* c) {
      auto* in = static_cast<Inner*>(c);
      if (++in->yields != 300) return;
      std::string letters = "lnr?eas";
      in->board->TrouveSolution(letters);
      in->found = Findings(*in->board);
    }
  } inner;
  inner.board = &second;
  first.SetYield({&Inner::Hook, &inner});
  std::string letters = "es?arit";
  first.TrouveSolution(letters);
  first.SetYield({});
  ASSERT_GE(inner.yields, 300);
  EXPECT_EQ(inner.found, expectedB);
  EXPECT_EQ(Findings(first), expectedA);
  // And the lists go back: the next searches, one after the other, agree.
  letters = "lnr?eas";
  second.TrouveSolution(letters);
  EXPECT_EQ(Findings(second), expectedB);
  letters = "es?arit";
  first.TrouveSolution(letters);
  EXPECT_EQ(Findings(first), expectedA);
}

TEST(SolutionSet, TheFirstOfTheBestAndPlaysNearAFraction) {
  const MidGame mid = BoardOfTurn(6, 7);
  EngineContext context;
  ClsPlateau board(RealLexicon(), context);
  LoadBoard(board, mid.board);
  std::string rack = mid.rack;
  const int32_t count = board.TrouveSolution(rack);
  ASSERT_GT(count, 10);
  int best = 0;
  for (int32_t i = 1; i <= count; ++i) best = std::max<int>(best, board.TabSolutions(i).CountP);
  int32_t first = 1;
  while (board.TabSolutions(first).CountP != best) ++first;
  EXPECT_EQ(*board.SubSortie(5), board.TabSolutions(first));
  for (int level = 0; level <= 4; ++level) {
    const int target = int(std::lround((best - 2) * level / 5.0));
    int32_t chosen = 1;
    for (int32_t i = 1; i <= count; ++i)
      if (std::abs(board.TabSolutions(i).CountP - target) <
          std::abs(board.TabSolutions(chosen).CountP - target))
        chosen = i;
    EXPECT_EQ(*board.SubSortie(level), board.TabSolutions(chosen)) << "level " << level;
    // The direction stays the best play's.
    EXPECT_EQ(context.BytSens, context.TabSens[size_t(first)]);
  }
}

TEST(SolutionSet, TabSensFullEndsTheProgram) {
  FatalCatcher catcher;
  EngineContext context;
  ClsPlateau board(RealLexicon(), context);
  context.LngSens = EngineContext::kTabSensBound - 1;
  std::string rack = "maison";
  try {
    board.TrouveSolution(rack);
    FAIL() << "no index error";
  } catch (const FatalCalled& called) {
    EXPECT_NE(std::string(called.what()).find("TabSens"), std::string::npos);
  }
  FatalCatcher again;
  EXPECT_THROW(board.TabSolutions(ClsPlateau::kSolutionsBound + 1), FatalCalled);
  EXPECT_TRUE(board.TabSolutions(ClsPlateau::kSolutionsBound).IsEmpty());
}

}  // namespace
}  // namespace ostrane::test
