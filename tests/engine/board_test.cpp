// The board: laying a word, reading words, the walk over tiles, the index
// errors that end the program; and the scoring of a play. (Board files are
// read by the command-line tests.)
#include "engine/board.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/engine/engine_test_support.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

class BoardTest : public ::testing::Test {
 protected:
  EngineContext context;
  ClsPlateau board{RealLexicon(), context};

  // Row "A".."O" or column "1".."15", "." for empty squares.
  std::string Line(const std::string& name) const {
    if (name[0] >= 'A') return FormatBoardText(board).substr(size_t(name[0] - 'A') * 16, 15);
    std::string column;
    for (int y = 0; y < 15; ++y) column += std::max('.', board.Square(std::stoi(name) - 1, y));
    return column;
  }
};

// In turn: laid across, down (the position upper-cased), tiles already there
// written again as given, 8 + 7 = 15 letters fit, nine do not, a dash clears
// its square; and positions off the board, of four characters once trimmed
// or past O: nothing changes.
TEST_F(BoardTest, LayingFollowsTheFormOfThePositionAndRefusesWhatWouldLeaveTheBoard) {
  const struct {
    std::string express, place, line, expected;  // line "": the whole board as it was
  } cases[] = {{"maison", "H8", "H", ".......maison.."},
               {"soN", "8h", "8", ".......soN....."},
               {"MAISON", " H8 ", "H", ".......MAISON.."},
               {"abcdefgh", "C8", "C", ".......abcdefgh"},
               {"zzzzzzzzz", "C8", "C", ".......abcdefgh"},
               {"abcdefgh", "1H", "1", ".......abcdefgh"},
               {"zzzzzzzzz", "2H", "2", "..............."},
               {"m-i--n", "C1", "C", "m.i..n.abcdefgh"},
               {"ab", "H16", "", ""},
               {"ab", "16H", "", ""},
               {"ab", "H 8 X", "", ""},
               {"ab", "8Z", "", ""}};
  for (const auto& c : cases) {
    const std::string before = FormatBoardText(board);
    EXPECT_EQ(board.SubCaserWord(ClsWord{c.express, c.place, 0}), 0);
    EXPECT_EQ(c.line.empty() ? FormatBoardText(board) : Line(c.line), c.line.empty() ? before : c.expected)
        << c.express << " " << c.place;
  }
}

// GetMot reads in the direction of the position, letter or number first, in capitals.
TEST_F(BoardTest, GetMotReadsInTheDirectionOfThePositionInCapitals) {
  board.SubCaserWord(ClsWord{"maiSon", "H8", 0});
  board.SubCaserWord(ClsWord{"ab", "9H", 0});    // (8, 7) and (8, 8)
  board.SubCaserWord(ClsWord{"xyz", "A13", 0});  // up to the last column
  board.SubCaserWord(ClsWord{"xyz", "15M", 0});  // down to the last row
  const std::pair<std::string, std::string> words[] = {{"H8", "MAISON"}, {"h10", "ISON"}, {"9H", "AB"},
                                                       {"8H", "M"},      {"H1", ""},      {"H8 X", ""},
                                                       {"A13", "XYZ"},   {"15M", "XYZ"}};
  for (const auto& [position, word] : words) EXPECT_EQ(board.GetMot(position), word) << position;
}

TEST_F(BoardTest, AnIndexOutsideTheBoardEndsTheProgram) {
  FatalCatcher catcher;
  for (const auto& [x, y] : std::vector<std::pair<int, int>>{{-1, 0}, {15, 0}, {0, -1}, {0, 15}}) {
    try {
      board.SubCase(x, y);
      ADD_FAILURE() << "reading " << x << "," << y;
    } catch (const FatalCalled& called) {
      EXPECT_NE(std::string(called.what()).find("Erreur d'exécution 9"), std::string::npos);
    }
    EXPECT_THROW(board.SubCase(x, y, "a"), FatalCalled);
  }
  EXPECT_THROW(ClsPlateau::TabPrime(15, 3), FatalCalled);
  EXPECT_THROW(board.SubCaserWord(ClsWord{"ab", "8@", 0}), FatalCalled);  // a row letter before A
  EXPECT_THROW(board.GetMot("8Z"), FatalCalled);
  EXPECT_THROW(board.GetMot("H0"), FatalCalled);
  // The walk over the tiles ends once; going on without a restart reads past the board.
  board.SubCase(14, 14, "d");
  for (int walk = 0; walk < 2; ++walk) {  // a restart starts again
    EXPECT_EQ(board.SubFindLet(true), "");
    EXPECT_EQ(board.SubFindLet(false), "O15");
    EXPECT_EQ(board.SubFindLet(false), "");
  }
  EXPECT_THROW(board.SubFindLet(false), FatalCalled);
}

// Scoring of one play: premium squares (only under new tiles), blanks, the
// bonus of seven tiles, cross-words, the choice of the blank's square and the
// two-blank asymmetry; and every play of seeded games against the rules. (The
// search's own scoring is held to a literal scoring in search_test.cpp.)
// Figures worked by hand from the premium rows A "400100040001004", B
// "030002000200030", E "000030000030000", H "400100030001004", I
// "001000101000100".
TEST(Scoring, HandWorkedPlays) {
  const struct {
    std::string laid, expression, position;  // tiles laid first: "express place ..."
    int orientation;
    std::string express, place;
    int points;
  } cases[] = {
      // m on a letter double (2 -> 4), the centre doubles the word: 9 x 2.
      {"", "maison", "H4", 0, "maison", "H4", 18},
      {"", "maison", "D8", 1, "maison", "4H", 18},         // down: on the turned board, the turned position
      {"", "maisons", "H2", 0, "maisons", "H2", 18 + 50},  // the bonus after all multiplication
      {"m H2", "maisons", "H2", 0, "maisons", "H2", 18},   // six new tiles: no bonus
      // New: a (word x3 at A1), c, d (letter x2 at A4), f, g, i, j; h on an old word triple.
      {"b A2 e A5 h A8", "abcdefghij", "A1", 0, "abcdefghij", "A1",
       (1 + 3 + 3 + 4 + 1 + 4 + 2 + 4 + 1 + 8) * 3 + 50},
      // b under the old centre, c on a letter double: 3 + 6, and "ab" 1 + 3 with no factor.
      {"a H8", "bc", "I8", 0, "bc", "I8", 9 + 4},
      {"a A6", "xa", "B6", 0, "xa", "B6", 31 + 31},      // x on a letter triple, in both words
      {"I H10", "maison", "H8", 0, "maIson", "H8", 14},  // the board's letters in its case
      {"son H10", "mai", "H7", 0, "mai", "H7", 14},      // tiles right of it are part of the word
      // A blank scores nothing but keeps the word factor of its square.
      {"", "maison (m)", "H4", 0, "Maison", "H4", 10},
      {"", "zero (z)", "B2", 0, "Zero", "B2", 6},
      // Each free occurrence is tried as the blank, the last of the best kept.
      {"", "papa (a)", "H1", 0, "pApa", "H1", (3 + 0 + 3 + 2) * 3},
      {"", "papa (a)", "E6", 0, "papA", "E6", 7},
      {"", "papa (a)", "E6", 1, "papA", "5F", 7},
      {"a E9", "papa (a)", "E6", 0, "pApa", "E6", 7},  // not on an occupied square
      {"", "papa (z)", "E6", 0, "", "", 0},
      {"", "papa (z)", "E6", 1, "", "", 0},
      // Two blanks: every pair, scored with the first alone as a blank (the
      // rules would give 4 here), both shown.
      {"", "papa (pa)", "E6", 0, "paPA", "E6", 5},
      {"", "papa (aa)", "E6", 0, "pApA", "E6", 7},
      {"a E9", "papa (aa)", "E6", 0, "", "", 0},
      {"", "papa ()", "E6", 0, "", "", 0},
      // The copy shown is made before the board's letters are written in.
      {"A E7", "papa (pp)", "E6", 0, "PaPa", "E6", 4},
  };
  EngineContext context;
  for (const auto& c : cases) {
    ClsPlateau board(RealLexicon(), context);
    std::istringstream laid(c.laid);
    for (std::string express, place; laid >> express >> place;)
      board.SubCaserWord(ClsWord{express, place, 0});
    const BoardSquares before = SquaresOf(board);
    const ClsWord scored = board.SubScoreH(c.expression, c.position, c.orientation);
    EXPECT_EQ(scored.Express + " " + scored.Place + " " + std::to_string(scored.CountP),
              c.express + " " + c.place + " " + std::to_string(c.points))
        << c.laid << ": " << c.expression << " " << c.position;
    EXPECT_EQ(SquaresOf(board), before) << "scoring changed the board";
  }
  FatalCatcher catcher;
  ClsPlateau board(RealLexicon(), context);
  EXPECT_THROW(board.SubScoreH("maison", "H12", 0), FatalCalled);  // past the last column
  EXPECT_THROW(board.SubScoreH("maison (z)", "H12", 0), FatalCalled);
}

// Every play the engine finds in seeded games, its best ones included,
// scored again by the rules alone (the judge of engine_test_support.cpp).
TEST(ScoringAgainstTheRules, EveryFindingOfSeededGamesIsLegalAndExact) {
  int64_t checked = 0, turns = 0, blanks = 0, bonuses = 0;
  SelfPlay(RealLexicon(), 2024, 12, [&](const Turn& turn, ClsPlateau& board, EngineContext&) {
    const auto best = board.SubSortie(5);
    for (int32_t i = 1; i <= board.SolutionCount() && !HasFailure(); ++i) {
      const ClsWord& play = board.TabSolutions(i);
      if (play.IsEmpty()) continue;  // a first play whose blank was not needed
      const Verdict verdict = Judge(RealLexicon(), turn.board, play, turn.rack, turn.firstPlay);
      ASSERT_TRUE(verdict.legal) << "game " << turn.game << " turn " << turn.number << ": " << verdict.why;
      ASSERT_NE(std::find(verdict.points.begin(), verdict.points.end(), play.CountP), verdict.points.end())
          << play.Express << " " << play.Place << " " << play.CountP << " against the rules "
          << verdict.points[0];
      ++checked;
      if (play != *best) continue;
      blanks += std::count_if(play.Express.begin(), play.Express.end(),
                              [](char c) { return c >= 'A' && c <= 'Z'; });
      bonuses += verdict.tilesLaid == 7;
    }
    turns += best.has_value();
  });
  EXPECT_GT(turns, 150);
  EXPECT_GT(checked, 40000);
  EXPECT_GT(blanks, 5);  // the games did lay blanks
  EXPECT_GT(bonuses, 0);
}

}  // namespace
}  // namespace ostrane::test
