// Scoring of one play: premium squares (only under new tiles), blanks, the
// bonus of seven tiles, cross-words, the choice of the blank's square and the
// two-blank asymmetry. Figures are worked by hand from the premium table:
// row A "400100040001004", row B "030002000200030", row E
// "000030000030000", row H "400100030001004", row I "001000101000100".
#include <gtest/gtest.h>

#include "engine/board.h"
#include "engine/scoring.h"
#include "lexicon/lexicon.h"
#include "lexicon/tables.h"
#include "tests/engine/engine_test_support.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

const Lexicon& Words() {
  static const Lexicon lexicon = SmallLexicon({"MAISON", "MAISONS", "PAPA"});
  return lexicon;
}

class ScoringTest : public ::testing::Test {
 protected:
  EngineContext context;
  ClsPlateau board{Words(), context};

  ClsWord Score(const std::string& expression, const std::string& position) {
    const BoardSquares before = SquaresOf(board);
    ClsWord scored = board.SubScoreH(expression, position, 0);
    EXPECT_EQ(SquaresOf(board), before) << "scoring changed the board";
    return scored;
  }
  void Lay(const std::string& express, const std::string& place) {
    ClsWord w;
    w.Express = express;
    w.Place = place;
    board.SubCaserWord(w);
  }
};

TEST_F(ScoringTest, MaisonFromH4IsEighteenAcrossAndDown) {
  // m on a letter double (2 -> 4), the centre doubles the word: 9 x 2.
  const ClsWord across = Score("maison", "H4");
  EXPECT_EQ(across.Express, "maison");
  EXPECT_EQ(across.Place, "H4");
  EXPECT_EQ(across.CountP, 18);
  // Down, as the validation does it: on the turned board, told so.
  board.SubPlat();
  const ClsWord down = board.SubScoreH("maison", board.SubTurnPlace("4H"), 1);
  board.SubPlat();
  EXPECT_EQ(down.Place, "4H");
  EXPECT_EQ(down.CountP, 18);
  EXPECT_TRUE(board.IsEmpty());
}

TEST_F(ScoringTest, SevenNewTilesEarnFiftyAfterAllMultiplication) {
  EXPECT_EQ(Score("maisons", "H2").CountP, 18 + 50);
  // With the m already there only six tiles are new: no bonus.
  Lay("m", "H2");
  EXPECT_EQ(Score("maisons", "H2").CountP, 18);
}

TEST_F(ScoringTest, TenLettersWithSevenNewTilesOnThreeOldOnesEarnTheBonus) {
  Lay("b", "A2");
  Lay("e", "A5");
  Lay("h", "A8");  // on a word triple, but old: no premium
  // New: a (word x3 at A1), c, d (letter x2 at A4), f, g, i, j.
  // 1 + 3 + 3 + 4 + 1 + 4 + 2 + 4 + 1 + 8 = 31, x 3 = 93, + 50.
  const ClsWord scored = Score("abcdefghij", "A1");
  EXPECT_EQ(scored.CountP, 143);
  EXPECT_EQ(scored.Express, "abcdefghij");
}

TEST_F(ScoringTest, OldTilesOnPremiumSquaresGiveNothingInCrossWords) {
  Lay("a", "H8");  // the centre, a word double, already used
  // b at I8 (plain) under the a, c at I9 (letter double): main 3 + 6;
  // cross-word "ab" 1 + 3, with no factor from the old centre.
  EXPECT_EQ(Score("bc", "I8").CountP, 9 + 4);
}

TEST_F(ScoringTest, ANewTileOnALetterTripleCountsThreeTimesInBothWords) {
  Lay("a", "A6");
  // x at B6 (letter triple) under the a, then a at B7: main 30 + 1,
  // cross-word "ax" 1 + 30.
  EXPECT_EQ(Score("xa", "B6").CountP, 31 + 31);
}

TEST_F(ScoringTest, TheBoardsOwnLettersReplaceTheExpressionsInItsCase) {
  Lay("I", "H10");  // a blank standing for i
  const ClsWord scored = Score("maison", "H8");
  EXPECT_EQ(scored.Express, "maIson");
  // m a (centre: word x2) I=0 s o (letter x2 at H12) n: (2 + 1 + 0 + 1 + 2 + 1) x 2.
  EXPECT_EQ(scored.CountP, 14);
}

TEST_F(ScoringTest, TilesRightOfTheExpressionCountAsPartOfTheWord) {
  Lay("son", "H10");
  // "mai" from H7, then the s o n already there: (2 + 1 + 1 + 1 + 1 + 1) x 2.
  const ClsWord scored = Score("mai", "H7");
  EXPECT_EQ(scored.CountP, 14);
  EXPECT_EQ(scored.Express, "mai");
}

TEST_F(ScoringTest, ABlankScoresNothingButKeepsTheWordFactorOfItsSquare) {
  // The blank m on the letter double of H4: 0 + 5, x 2 for the centre.
  const ClsWord scored = Score("maison (m)", "H4");
  EXPECT_EQ(scored.Express, "Maison");
  EXPECT_EQ(scored.CountP, 10);
  // The blank z on the word double of B2: (0 + 1 + 1 + 1) x 2.
  EXPECT_EQ(Score("zero (z)", "B2").CountP, 6);
  // On the letter triple of B6 it is still 0.
  EXPECT_EQ(Score("zero (z)", "B6").Express, "Zero");
  EXPECT_EQ(Score("zero (z)", "B6").CountP, 3);
}

TEST_F(ScoringTest, EachFreeOccurrenceIsTriedAsTheBlankAndTheLastOfEqualsWins) {
  // From H1: p on the word triple, a on B... the blank on the second a
  // (letter double at H4) loses the double: 3 + 0 + 3 + 2 = 8, x 3.
  const ClsWord best = Score("papa (a)", "H1");
  EXPECT_EQ(best.Express, "pApa");
  EXPECT_EQ(best.CountP, 24);
  // On plain squares both score 7: the last occurrence is kept.
  EXPECT_EQ(Score("papa (a)", "E6").Express, "papA");
  // An occurrence on an occupied square is not a blank.
  Lay("a", "E9");
  const ClsWord onTile = Score("papa (a)", "E6");
  EXPECT_EQ(onTile.Express, "pApa");
  EXPECT_EQ(onTile.CountP, 7);
  // No free occurrence at all: an empty play.
  EXPECT_TRUE(Score("papa (z)", "E6").IsEmpty());
}

TEST_F(ScoringTest, TwoBlanksScoreTheFirstAloneAndShowBoth) {
  // Every pair (p, a) is tried; each scores with only its p as a blank:
  // 0 + 1 + 3 + 1 = 5 whichever p. The last pair is kept.
  const ClsWord scored = Score("papa (pa)", "E6");
  EXPECT_EQ(scored.Express, "paPA");
  EXPECT_EQ(scored.CountP, 5);
  EXPECT_EQ(scored.Place, "E6");
  // The rules would give 3 + 1 = 4: the second blank keeps its face value.
}

TEST_F(ScoringTest, TwoBlanksOfOneLetterNeedTwoFreeOccurrences) {
  EXPECT_EQ(Score("papa (aa)", "E6").Express, "pApA");
  Lay("a", "E9");
  EXPECT_TRUE(Score("papa (aa)", "E6").IsEmpty());
  EXPECT_TRUE(Score("papa ()", "E6").IsEmpty());
}

TEST_F(ScoringTest, TheSecondCopyIsMadeBeforeTheBoardsLettersAreWrittenIn) {
  Lay("A", "E7");  // a blank a on the board, under the word's second letter
  const ClsWord scored = Score("papa (pp)", "E6");
  // The kept copy still shows the expression's a where the board has a blank.
  EXPECT_EQ(scored.Express, "PaPa");
  EXPECT_EQ(board.Square(6, 4), 'A');
  // Scored with the first p alone as a blank: 0 + 0 (old blank) + 3 + 1.
  EXPECT_EQ(scored.CountP, 4);
}

TEST_F(ScoringTest, DownPlaysComeBackWithTheTurnedPosition) {
  board.SubPlat();
  const ClsWord scored = board.SubScoreH("papa (a)", "E6", 1);
  board.SubPlat();
  EXPECT_EQ(scored.Place, "5F");
  EXPECT_TRUE(board.SubScoreH("papa (z)", "E6", 1).Place.empty());
}

TEST_F(ScoringTest, LetterValues) {
  EXPECT_EQ(ClsPlateau::SubScoreLetters("a"), 1);
  EXPECT_EQ(ClsPlateau::SubScoreLetters("k"), 10);
  EXPECT_EQ(ClsPlateau::SubScoreLetters("q"), 8);
  EXPECT_EQ(ClsPlateau::SubScoreLetters("d"), 2);
  EXPECT_EQ(ClsPlateau::SubScoreLetters("Z"), 0);
  EXPECT_EQ(ClsPlateau::SubScoreLetters("?"), 0);
  EXPECT_EQ(ClsPlateau::SubScoreLetters(""), 0);
  int total = 0;
  for (char c = 'a'; c <= 'z'; ++c) total += ClsPlateau::SubScoreLetters(c);
  EXPECT_EQ(total, 1 + 3 + 3 + 2 + 1 + 4 + 2 + 4 + 1 + 8 + 10 + 1 + 2 + 1 + 1 + 3 + 8 + 1 + 1 +
                       1 + 1 + 4 + 10 + 10 + 10 + 10);
}

TEST_F(ScoringTest, AWordPastTheLastColumnEndsTheProgram) {
  FatalCatcher catcher;
  EXPECT_THROW(board.SubScoreH("maison", "H12", 0), FatalCalled);
  EXPECT_THROW(board.SubScoreH("maison (z)", "H12", 0), FatalCalled);
}

// The search's scoring by arithmetic on the row against SubScoreH, which lays
// copies on a copy of the board: the same ClsWord, letter case and place
// included, for many boards (tiles and blanks, crowded or not) and words laid
// over free squares and tiles, with no, one or two blank letters, often the
// same letter twice and letters that the word holds several times.
TEST(PassScoring, GivesWhatSubScoreHGivesOnManyBoardsAndExpressions) {
  EngineContext context;
  ClsPlateau board(RealLexicon(), context);
  Rng random(4242);
  const std::string common = "eaisnrtolu";
  const auto letter = [&] {
    return random.Below(3) != 0 ? common[random.Below(uint32_t(common.size()))]
                                : char('a' + random.Below(26));
  };
  int64_t compared = 0, withTwo = 0, withOne = 0, beforeLaying = 0;
  for (int boardNumber = 0; boardNumber < 300; ++boardNumber) {
    const int density = 5 + int(random.Below(60));
    for (int y = 0; y < 15; ++y)
      for (int x = 0; x < 15; ++x) {
        char c = '\0';
        if (int(random.Below(100)) < density) {
          c = letter();
          if (random.Below(12) == 0) c = UpperAscii(c);  // a blank on the board
        }
        board.SetSquare(x, y, c);
      }
    PassScores scores;
    const BoardSquares squares = SquaresOf(board);
    scores.Begin(squares.data());
    ASSERT_TRUE(scores.Usable());
    for (int play = 0; play < 200; ++play) {
      const int row = int(random.Below(15));
      const int start = int(random.Below(15));
      const int length = 1 + int(random.Below(uint32_t(15 - start)));
      std::string word;
      for (int i = 0; i < length; ++i) {
        const char tile = board.Square(start + i, row);
        // The search hands the board's tiles in lower case; now and then
        // another letter stands there, which only the kept copy may show.
        word += (tile != '\0' && random.Below(4) != 0) ? LowerAscii(tile) : letter();
      }
      std::string blanks;
      const int blankCount = int(random.Below(3));
      for (int k = 0; k < blankCount; ++k)
        blanks += random.Below(5) != 0 ? word[random.Below(uint32_t(length))] : letter();
      if (blankCount == 2 && random.Below(4) == 0) blanks[1] = blanks[0];
      const int orientation = int(random.Below(2));
      const std::string expression = blankCount > 0 ? word + " (" + blanks + ")" : word;
      const std::string position = char('A' + row) + std::to_string(start + 1);

      const ClsWord expected = board.SubScoreH(expression, position, orientation);
      FlatPlay flat;
      flat.Set("stale", "X1", 9);
      scores.Score(word, blankCount > 0, blanks, row, start, orientation, flat);
      ClsWord got;
      got.Express.assign(flat.Express());
      got.Place.assign(flat.Place());
      got.CountP = flat.CountP;
      ASSERT_EQ(flat.whole, -1);
      ASSERT_EQ(got, expected) << "expression '" << expression << "' at " << position
                               << " orientation " << orientation << " on board " << boardNumber
                               << ": '" << got.Express << "' " << got.Place << " " << got.CountP
                               << " against '" << expected.Express << "' " << expected.Place << " "
                               << expected.CountP;
      ++compared;
      withOne += blankCount == 1 && !expected.IsEmpty();
      withTwo += blankCount == 2 && !expected.IsEmpty();
      if (blankCount == 2 && !expected.IsEmpty()) {
        for (int i = 0; i < length; ++i)
          if (board.Square(start + i, row) != '\0' && expected.Express[size_t(i)] != board.Square(start + i, row)) {
            ++beforeLaying;
            break;
          }
      }
    }
  }
  EXPECT_EQ(compared, 60000);
  EXPECT_GT(withOne, 5000);
  EXPECT_GT(withTwo, 2000);
  EXPECT_GT(beforeLaying, 200);  // kept copies showing the word's letters over tiles
}

TEST(PassScoring, ABoardWithACharacterAboveZIsLeftToSubScoreH) {
  BoardSquares squares{};
  squares[7 * 15 + 7] = 'a';
  PassScores scores;
  scores.Begin(squares.data());
  EXPECT_TRUE(scores.Usable());
  squares[3] = '{';
  scores.Begin(squares.data());
  EXPECT_FALSE(scores.Usable());
}

// Every play the engine proposes in seeded games, scored again by the
// rules alone (engine_test_support.cpp's judge).
TEST(ScoringAgainstTheRules, EveryBestPlayOfSeededGamesIsLegalAndExact) {
  int turns = 0, blanks = 0, bonuses = 0;
  SelfPlay(RealLexicon(), 2024, 12, [&](const Turn& turn, ClsPlateau& board, EngineContext&) {
    const auto best = board.SubSortie(5);
    if (!best) return;
    ++turns;
    const Verdict verdict = Judge(RealLexicon(), turn.board, *best, turn.rack, turn.firstPlay);
    ASSERT_TRUE(verdict.legal) << "game " << turn.game << " turn " << turn.number << ": "
                               << verdict.why;
    EXPECT_NE(std::find(verdict.points.begin(), verdict.points.end(), best->CountP),
              verdict.points.end())
        << best->Express << " " << best->Place << " " << best->CountP << " vs the rules "
        << verdict.points.front();
    for (char c : best->Express) blanks += (c >= 'A' && c <= 'Z');
    bonuses += verdict.tilesLaid == 7;
  });
  EXPECT_GT(turns, 150);
  EXPECT_GT(blanks, 5);  // the games did lay blanks
  EXPECT_GT(bonuses, 0);
}

TEST(ScoringAgainstTheRules, EveryFindingOfSomeGamesIsLegalAndExact) {
  int64_t checked = 0;
  SelfPlay(RealLexicon(), 77, 3, [&](const Turn& turn, ClsPlateau& board, EngineContext&) {
    for (int32_t i = 1; i <= board.SolutionCount(); ++i) {
      const ClsWord& play = board.TabSolutions(i);
      if (play.IsEmpty()) continue;  // a first play whose blank was not needed
      const Verdict verdict = Judge(RealLexicon(), turn.board, play, turn.rack, turn.firstPlay);
      ASSERT_TRUE(verdict.legal) << "game " << turn.game << " turn " << turn.number << ": "
                                 << verdict.why;
      ASSERT_NE(std::find(verdict.points.begin(), verdict.points.end(), play.CountP),
                verdict.points.end())
          << play.Express << " " << play.Place << " " << play.CountP;
      ++checked;
    }
  });
  EXPECT_GT(checked, 10000);
}

}  // namespace
}  // namespace ostrane::test
