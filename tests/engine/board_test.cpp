// The board: squares, premium table, laying a word, turning, the walk over
// tiles, positions and reading words; and the index errors that end the
// program.
#include <gtest/gtest.h>

#include "engine/board.h"
#include "lexicon/lexicon.h"
#include "tests/engine/engine_test_support.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

const Lexicon& Words() {
  static const Lexicon lexicon = SmallLexicon({"MAISON", "MAIS", "ON", "NO", "SON"});
  return lexicon;
}

class BoardTest : public ::testing::Test {
 protected:
  EngineContext context;
  ClsPlateau board{Words(), context};

  std::string Row(int y) const {
    std::string row;
    for (int x = 0; x < 15; ++x) row += board.Square(x, y) ? board.Square(x, y) : '.';
    return row;
  }
  std::string Column(int x) const {
    std::string column;
    for (int y = 0; y < 15; ++y) column += board.Square(x, y) ? board.Square(x, y) : '.';
    return column;
  }
  int Occupied() const {
    int n = 0;
    for (int y = 0; y < 15; ++y)
      for (int x = 0; x < 15; ++x) n += board.Square(x, y) != '\0';
    return n;
  }
  ClsWord Play(std::string express, std::string place) {
    ClsWord w;
    w.Express = std::move(express);
    w.Place = std::move(place);
    return w;
  }
};

TEST_F(BoardTest, AFreshBoardIsEmptyWaitsForItsFirstWordAndHasSearchedNothing) {
  EXPECT_TRUE(board.SubWordFirst());
  EXPECT_EQ(Occupied(), 0);
  EXPECT_TRUE(board.IsEmpty());
  EXPECT_FALSE(board.SubResult());
  EXPECT_FALSE(board.SubCherche());
  EXPECT_EQ(board.LngProchain(), 1);
  EXPECT_TRUE(board.TabSolutions(0).IsEmpty());
  board.SubWordFirst(false);
  EXPECT_FALSE(board.SubWordFirst());
}

TEST_F(BoardTest, SquaresHoldOneCharacterAsGiven) {
  board.SubCase(3, 4, "a");
  board.SubCase(4, 3, "B");
  board.SubCase(14, 14, "z");
  EXPECT_EQ(board.SubCase(3, 4), "a");
  EXPECT_EQ(board.SubCase(4, 3), "B");  // (column, row): not the same square
  EXPECT_EQ(board.SubCase(14, 14), "z");
  EXPECT_EQ(board.SubCase(0, 0), "");
  board.SubCase(3, 4, "");
  EXPECT_EQ(board.SubCase(3, 4), "");
  EXPECT_EQ(board.Square(4, 3), 'B');
  EXPECT_FALSE(board.IsEmpty());
}

TEST_F(BoardTest, PremiumTableHasItsCodesCentreAndBothSymmetries) {
  int count[5] = {};
  for (int y = 0; y < 15; ++y)
    for (int x = 0; x < 15; ++x) {
      const char code = ClsPlateau::TabPrime(x, y);
      ASSERT_GE(code, '0');
      ASSERT_LE(code, '4');
      ++count[code - '0'];
      EXPECT_EQ(code, ClsPlateau::TabPrime(y, x));
      EXPECT_EQ(code, ClsPlateau::TabPrime(14 - y, 14 - x));
    }
  EXPECT_EQ(ClsPlateau::TabPrime(7, 7), '3');
  EXPECT_EQ(count[4], 8);   // word x3
  EXPECT_EQ(count[3], 17);  // word x2 with the centre
  EXPECT_EQ(count[2], 12);  // letter x3
  EXPECT_EQ(count[1], 24);  // letter x2
  EXPECT_EQ(ClsPlateau::TabPrime(0, 0), '4');
  EXPECT_EQ(ClsPlateau::TabPrime(3, 0), '1');
  EXPECT_EQ(ClsPlateau::TabPrime(5, 1), '2');
}

TEST_F(BoardTest, LayingFollowsTheFormOfThePosition) {
  EXPECT_EQ(board.SubCaserWord(Play("maison", "H8")), 0);
  EXPECT_EQ(Row(7), ".......maison..");
  EXPECT_EQ(board.SubCaserWord(Play("soN", "8h")), 0);  // upper-cased: 8H, down from (7, 7)
  EXPECT_EQ(Column(7), ".......soN.....");
  EXPECT_EQ(board.Square(7, 7), 's');
  // Tiles already there are written again as the expression has them.
  board.SubCaserWord(Play("MAISON", " H8 "));
  EXPECT_EQ(Row(7), ".......MAISON..");
}

TEST_F(BoardTest, LayingRefusesWhatWouldLeaveTheBoard) {
  board.SubCaserWord(Play("abcdefgh", "H8"));  // 8 + 7 = 15: fits
  EXPECT_EQ(Row(7), ".......abcdefgh");
  board.SubCaserWord(Play("zzzzzzzzz", "H8"));  // nine letters: refused, nothing changes
  EXPECT_EQ(Row(7), ".......abcdefgh");
  board.SubCaserWord(Play("abcdefgh", "1H"));  // down from row 7: 8 + 7 = 15
  EXPECT_EQ(Column(0), ".......abcdefgh");
  board.SubCaserWord(Play("zzzzzzzzz", "2H"));
  EXPECT_EQ(Column(1), "...............");
  const int before = Occupied();
  board.SubCaserWord(Play("ab", "H16"));
  board.SubCaserWord(Play("ab", "H0"));
  board.SubCaserWord(Play("ab", "0H"));
  board.SubCaserWord(Play("ab", "16H"));
  board.SubCaserWord(Play("ab", "H 8 X"));  // four characters once trimmed
  board.SubCaserWord(Play("ab", ""));
  EXPECT_EQ(Occupied(), before);
}

TEST_F(BoardTest, ADashInAnExpressionClearsItsSquare) {
  board.SubCaserWord(Play("maison", "C1"));
  board.SubCaserWord(Play("m-i--n", "C1"));
  EXPECT_EQ(Row(2), "m.i..n.........");
}

TEST_F(BoardTest, TurningTwiceGivesTheBoardBackAndOnceTransposes) {
  board.SubCaserWord(Play("maison", "B3"));
  board.SubCaserWord(Play("soN", "12D"));
  board.SubCase(14, 0, "q");
  const BoardSquares before = SquaresOf(board);
  board.SubPlat();
  for (int y = 0; y < 15; ++y)
    for (int x = 0; x < 15; ++x) EXPECT_EQ(board.Square(x, y), before[size_t(x) * 15 + size_t(y)]);
  board.SubPlat();
  EXPECT_EQ(SquaresOf(board), before);
}

TEST_F(BoardTest, TurningYieldsBeforeBetweenAndAfterItsCopies) {
  struct Seen {
    ClsPlateau* board;
    std::vector<char> corner;
  } seen{&board, {}};
  board.SubCase(3, 0, "x");
  board.SetYield({[](void* c) {
                    auto* s = static_cast<Seen*>(c);
                    s->corner.push_back(s->board->Square(0, 3));
                  },
                  &seen});
  board.SubPlat();
  // The board changes only after the second yield.
  EXPECT_EQ(seen.corner, (std::vector<char>{'\0', '\0', 'x'}));
}

TEST_F(BoardTest, TheWalkGoesRowByRowAndEndsOnce) {
  EXPECT_EQ(board.SubFindLet(true), "");
  EXPECT_EQ(board.SubFindLet(false), "");  // empty board
  board.SubCase(4, 2, "a");
  board.SubCase(1, 2, "b");
  board.SubCase(0, 9, "c");
  board.SubCase(14, 14, "d");
  board.SubFindLet(true);
  EXPECT_EQ(board.SubFindLet(false), "C2");
  EXPECT_EQ(board.SubFindLet(false), "C5");
  EXPECT_EQ(board.SubFindLet(false), "J1");
  EXPECT_EQ(board.SubFindLet(false), "O15");
  EXPECT_EQ(board.SubFindLet(false), "");
  // Going on without a restart reads past the board.
  FatalCatcher catcher;
  EXPECT_THROW(board.SubFindLet(false), FatalCalled);
  EXPECT_EQ(board.SubFindLet(true), "");
  EXPECT_EQ(board.SubFindLet(false), "C2");
}

TEST_F(BoardTest, PositionsAreReadLetterFirstOrNumberFirst) {
  EXPECT_EQ(board.SubTrouverLigne("H8"), 7);
  EXPECT_EQ(board.SubColumn("H8"), 7);
  EXPECT_EQ(board.SubTrouverLigne("8H"), 7);
  EXPECT_EQ(board.SubColumn("8H"), 7);
  EXPECT_EQ(board.SubTrouverLigne("A15"), 0);
  EXPECT_EQ(board.SubColumn("A15"), 14);
  EXPECT_EQ(board.SubTrouverLigne("15O"), 14);
  EXPECT_EQ(board.SubColumn("1A"), 0);
  // A number outside 1..15 has no column; the row is still read.
  EXPECT_EQ(board.SubColumn("H16"), -1);
  EXPECT_EQ(board.SubColumn("H0"), -1);
  EXPECT_EQ(board.SubTrouverLigne("H16"), 7);
  EXPECT_EQ(board.SubColumn("16H"), -1);
  EXPECT_EQ(board.SubTrouverLigne("16H"), 7);
  // Any last character is taken as the row letter.
  EXPECT_EQ(board.SubTrouverLigne("8Z"), 25);
  EXPECT_EQ(board.SubTrouverLigne("8P"), 15);
  EXPECT_EQ(board.SubTrouverLigne(""), -1);
  EXPECT_EQ(board.SubColumn(""), -1);
}

TEST_F(BoardTest, TurningAPositionSwapsItsFormAndComesBack) {
  EXPECT_EQ(board.SubTurnPlace("H8"), "8H");
  EXPECT_EQ(board.SubTurnPlace("8H"), "H8");
  EXPECT_EQ(board.SubTurnPlace("C5"), "3E");
  EXPECT_EQ(board.SubTurnPlace("3E"), "C5");
  EXPECT_EQ(board.SubTurnPlace("A15"), "1O");
  for (char row = 'A'; row <= 'O'; ++row)
    for (int column = 1; column <= 15; ++column) {
      const std::string across = row + std::to_string(column);
      const std::string turned = board.SubTurnPlace(across);
      EXPECT_EQ(board.SubTurnPlace(turned), across);
      EXPECT_TRUE(turned[0] >= '1' && turned[0] <= '9');
    }
}

TEST_F(BoardTest, GetMotReadsInTheDirectionOfThePositionInCapitals) {
  board.SubCaserWord(Play("maiSon", "H8"));
  board.SubCaserWord(Play("ab", "9H"));  // (8, 7) and (8, 8)
  EXPECT_EQ(board.GetMot("H8"), "MAISON");
  EXPECT_EQ(board.GetMot("h10"), "ISON");
  EXPECT_EQ(board.GetMot("9H"), "AB");
  EXPECT_EQ(board.GetMot("8H"), "M");
  EXPECT_EQ(board.GetMot("H1"), "");      // an empty square
  EXPECT_EQ(board.GetMot("H8 X"), "");    // more than three characters
  board.SubCaserWord(Play("xyz", "A13"));  // up to the last column
  EXPECT_EQ(board.GetMot("A13"), "XYZ");
  board.SubCaserWord(Play("xyz", "15M"));  // down to the last row
  EXPECT_EQ(board.GetMot("15M"), "XYZ");
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
  // A wrong row letter behind the number is not refused by the laying as
  // such: past O the length test refuses it, before A it fails on the square.
  EXPECT_EQ(board.SubCaserWord(Play("ab", "8Z")), 0);
  EXPECT_TRUE(board.IsEmpty());
  EXPECT_THROW(board.SubCaserWord(Play("ab", "8@")), FatalCalled);
  EXPECT_THROW(board.GetMot("8Z"), FatalCalled);
  EXPECT_THROW(board.GetMot("H0"), FatalCalled);
}

TEST_F(BoardTest, BoardTextRoundTripsAndNamesWhatIsWrong) {
  BoardSquares squares = Board({"...............", "...............", "...............",
                                "...............", "...............", "...............",
                                "...............", ".......maiSon..", "...............",
                                "...............", "...............", "...............",
                                "...............", "...............", "q.............z"});
  LoadBoard(board, squares);
  EXPECT_FALSE(board.SubWordFirst());
  EXPECT_EQ(board.GetMot("H8"), "MAISON");
  EXPECT_EQ(board.Square(10, 7), 'S');
  BoardSquares again{};
  std::string error;
  ASSERT_TRUE(ParseBoardText(FormatBoardText(board), again, error));
  EXPECT_EQ(again, squares);

  EXPECT_FALSE(ParseBoardText("...\n", again, error));
  EXPECT_EQ(error, "1 lines, 15 expected");
  std::string text = FormatBoardText(board);
  text[16 * 3 + 4] = '7';
  EXPECT_FALSE(ParseBoardText(text, again, error));
  EXPECT_EQ(error, "line 4, column 5: '7' is neither '.' nor a letter");
  text = FormatBoardText(board);
  text.insert(16 * 2, ".");
  EXPECT_FALSE(ParseBoardText(text, again, error));
  EXPECT_EQ(error, "line 3: 16 characters, 15 expected");
  // Windows line ends and a trailing empty line are fine.
  std::string crlf;
  for (char c : FormatBoardText(board)) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
  EXPECT_TRUE(ParseBoardText(crlf + "\r\n", again, error)) << error;
  LoadBoard(board, BoardSquares{});
  EXPECT_TRUE(board.SubWordFirst());
}

}  // namespace
}  // namespace ostrane::test
