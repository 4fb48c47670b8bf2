// The rules a proposal must keep (line, gaps, centre, connection, cross
// words, one tile on a first play), its score, and what validating it does:
// the board, the history line, the congratulation, the tiles used up.
#include <gtest/gtest.h>

#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

class Validation : public GameTest {
 protected:
  void SetUp() override { Load(); }
  void Lay(const std::string& express, const std::string& place) {
    form->ObjPlateau->SubCaserWord(ClsWord{express, place, 0});
    form->ObjPlateau->SubWordFirst(false);
    form->DrawGrille();
  }
  ClsWord Evaluate() { return form->SubEvalueProposition(); }
  // The proposal is refused: an empty word, CmdValider off, the board as it was.
  void ExpectRefused() {
    std::array<char, 225> before{};
    for (int i = 0; i < 225; ++i) before[size_t(i)] = form->ObjPlateau->Square(i % 15, i / 15);
    form->CmdValider.enabled = true;
    const ClsWord word = Evaluate();
    EXPECT_TRUE(word.IsEmpty()) << word.Express << " " << word.Place << " " << word.CountP;
    EXPECT_FALSE(form->CmdValider.enabled);
    for (int i = 0; i < 225; ++i) EXPECT_EQ(form->ObjPlateau->Square(i % 15, i / 15), before[size_t(i)]) << i;
  }
};

TEST_F(Validation, FirstPlayMustCoverTheCentreWithTwoTilesAtLeast) {
  ExpectRefused();  // nothing on the board
  Put(0, "a", 7, 7);
  ExpectRefused();  // one tile, even on the centre
  Put(1, "s", 8, 7);
  const ClsWord word = Evaluate();
  EXPECT_EQ(word.Express, "as");
  EXPECT_EQ(word.Place, "H8");
  EXPECT_EQ(word.CountP, 4);  // word x2 on the centre
  EXPECT_TRUE(form->CmdValider.enabled);

  Put(0, "a", 5, 7);
  Put(1, "s", 6, 7);
  ExpectRefused();  // misses the centre
}

TEST_F(Validation, ABlankLeftWithoutALetterMakesNoPlay) {
  // On a first play: "u" and a blank "Nul" would read as UN with a blank N.
  Put(0, "u", 7, 7);
  Put(1, "Nul", 8, 7);
  ExpectRefused();
  Put(1, "N", 8, 7);  // the same blank given its N makes the word
  EXPECT_EQ(Evaluate().Express, "uN");

  // Later: "bo" on the board, the blank after it would read BON.
  form->PicGamer[0].Tag = form->PicGamer[1].Tag = "";
  Lay("bo", "H7");
  Put(0, "Nul", 8, 7);
  ExpectRefused();
  // Nor as a tile beside others, nor in a column.
  Put(1, "s", 9, 7);
  ExpectRefused();
  form->PicGamer[1].Tag = "";
  Put(0, "Nul", 6, 8);
  Put(1, "e", 6, 9);
  ExpectRefused();

  // Through the gestures: the blank's box closed without a letter keeps the
  // tag "Nul" and the face of the N; the score stays 0 and nothing can be
  // validated.
  for (Tile& tile : form->PicGamer) tile.Tag = "";
  PutOnRack(2, "?", 2);
  forms.onJoc = [](FrmJoc& box) { box.Close(); };
  DragTile(*drag, 2, layout::SquareLeft(8) + 17, layout::SquareTop(7) + 17);
  const Tile& blank = form->PicGamer[2];
  EXPECT_EQ(blank.Tag, "Nul");
  EXPECT_EQ(blank.left, layout::SquareLeft(8));
  EXPECT_EQ(blank.face, (TileFace{TileFace::Picture::ImgJok, 13, TileFace::Tint::DarkRed}));
  EXPECT_EQ(form->LblPts.text, "0");
  EXPECT_FALSE(form->CmdValider.enabled);
  EXPECT_EQ(forms.jocShown, 1);
}

TEST_F(Validation, FirstPlayDownTheCentreColumn) {
  Put(0, "t", 7, 6);
  Put(1, "a", 7, 7);
  Put(2, "s", 7, 8);
  const ClsWord word = Evaluate();
  EXPECT_EQ(word.Express, "tas");
  EXPECT_EQ(word.Place, "8G");
  EXPECT_EQ(word.CountP, 6);
  EXPECT_TRUE(form->ObjPlateau->IsEmpty());  // turned and turned back
}

TEST_F(Validation, TilesMustLieInOneLine) {
  Put(0, "a", 7, 7);
  Put(1, "s", 8, 8);
  ExpectRefused();
  Put(1, "s", 8, 7);
  Put(2, "e", 9, 6);  // a third tile off the row of the first two
  ExpectRefused();
}

TEST_F(Validation, TilesMustNotLeaveAGap) {
  Lay("chat", "H8");
  Put(0, "s", 11, 7);
  Put(1, "e", 13, 7);  // one free square between the two tiles
  ExpectRefused();
  form->PicGamer[1].Tag = "";
  const ClsWord word = Evaluate();
  EXPECT_EQ(word.Express, "chats");
  EXPECT_EQ(word.Place, "H8");
  EXPECT_EQ(word.CountP, 11);
  // The first tile of the list decides where the reading starts.
  Put(0, "t", 3, 7);
  Put(1, "e", 6, 7);
  ExpectRefused();
}

TEST_F(Validation, LaterPlaysMustTouchTheBoard) {
  Lay("chat", "H8");
  Put(0, "a", 1, 1);
  Put(1, "s", 2, 1);
  ExpectRefused();
  Put(0, "a", 3, 3);  // one tile alone: no direction
  form->PicGamer[1].Tag = "";
  ExpectRefused();
}

TEST_F(Validation, CrossWordsMustBeWords) {
  Lay("chat", "H8");
  // "as" along row I, under "ha": the cross words "ha" and "as" are words.
  Put(0, "a", 8, 8);
  Put(1, "s", 9, 8);
  ClsWord word = Evaluate();
  EXPECT_EQ(word.Express, "as");
  EXPECT_EQ(word.Place, "I9");
  EXPECT_GT(word.CountP, 2);  // the cross words count
  // Under "at": "aa" and "ts" -- "ts" is no word.
  Put(0, "a", 9, 8);
  Put(1, "s", 10, 8);
  ExpectRefused();
  // The main word itself must be a word.
  Put(0, "x", 11, 7);
  form->PicGamer[1].Tag = "";
  ExpectRefused();
}

TEST_F(Validation, ASingleTileTakesTheDirectionOfItsNeighbours) {
  Lay("chat", "H8");
  Lay("an", "I12");
  // "s" after "chat", over the "a" of "an": down wins, "chats" is the cross word.
  Put(0, "s", 11, 7);
  const ClsWord word = Evaluate();
  EXPECT_EQ(word.Express, "sa");
  EXPECT_EQ(word.Place, "12H");
  EXPECT_EQ(word.CountP, 3 + 11);
}

TEST_F(Validation, AVerticalPlayThroughATileOfTheBoard) {
  Lay("chat", "H8");
  Put(0, "a", 10, 8);
  Put(1, "s", 10, 9);
  const ClsWord word = Evaluate();
  EXPECT_EQ(word.Express, "tas");
  EXPECT_EQ(word.Place, "11H");
  EXPECT_EQ(word.CountP, 3);
  EXPECT_EQ(form->ObjPlateau->Square(10, 7), 't');  // the board the right way round
  EXPECT_EQ(form->ObjPlateau->Square(7, 7), 'c');
}

TEST_F(Validation, WordsEndAtTheLastColumnAndTheLastRow) {
  Lay("chat", "H8");
  Lay("oser", "I12");  // row I, columns 12 to 15
  Put(0, "s", 14, 9);  // under the "r" of the last column: "rs" is no word
  ExpectRefused();
  Put(0, "a", 13, 9);  // under the "e": "ea" is no word either
  ExpectRefused();
  Lay("le", "15N");  // down the last column to the last row
  Put(0, "s", 13, 14);
  const ClsWord word = Evaluate();
  EXPECT_EQ(word.Express, "se");
  EXPECT_EQ(word.Place, "O14");
  EXPECT_EQ(word.CountP, 2);
}

TEST_F(Validation, ABlankKeepsItsCapitalAndScoresNothing) {
  Put(0, "e", 7, 7);
  Put(1, "T", 8, 7);
  const ClsWord word = Evaluate();
  EXPECT_EQ(word.Express, "eT");
  EXPECT_EQ(word.CountP, 2);
}

TEST_F(Validation, AVerticalWordLongerThanTheLexiconLeavesTheBoardTurned) {
  // With a lexicon whose longest word is short, a failed vertical word that is
  // longer is not turned back: the condition stands as it is.
  Lexicon small = SmallLexicon({"AS", "TA", "TAS"});
  Program other(small, fake.host);
  other.options.OptMessages = "Non";
  FrmPlateau f(other, forms);
  f.Form_Load();
  f.ObjPlateau->SubCaserWord(ClsWord{"ta", "H8", 0});
  f.ObjPlateau->SubWordFirst(false);
  auto put = [&](int i, const char* tag, int c, int r) {
    f.PicGamer[size_t(i)].Tag = tag;
    f.PicGamer[size_t(i)].left = layout::SquareLeft(c);
    f.PicGamer[size_t(i)].top = layout::SquareTop(r);
  };
  put(0, "x", 7, 8);
  put(1, "y", 7, 9);
  put(2, "z", 7, 10);  // "txyz" down from the "t": 4 letters, no word
  EXPECT_TRUE(f.SubEvalueProposition().IsEmpty());
  EXPECT_EQ(f.ObjPlateau->Square(7, 8), 'a');  // still turned through its diagonal
  f.ObjPlateau->SubPlat();
  put(1, "", 0, 0);
  put(2, "", 0, 0);
  put(0, "s", 7, 8);  // "ts": 2 letters, turned back
  EXPECT_TRUE(f.SubEvalueProposition().IsEmpty());
  EXPECT_EQ(f.ObjPlateau->Square(8, 7), 'a');
}

// ------------------------------------------------------------ validating

class Validating : public Validation {
 protected:
  void SetUp() override {
    Validation::SetUp();
    form->CmdNew.enabled = false;
    form->IntNbCoups = 0;
    form->VarTirage = 1;
    program.StrSac = "EEEEEEE";
  }
};

TEST_F(Validating, APlayGoesOnTheBoardAndIntoTheHistory) {
  Put(0, "c", 6, 7);
  Put(1, "h", 7, 7);
  Put(2, "a", 8, 7);
  Put(3, "t", 9, 7);
  PutOnRack(4, "s", 4);
  form->TabChevalet[0] = form->TabChevalet[1] = FrmPlateau::Chevalet{"", -1};
  form->CmdValider_Click();
  EXPECT_EQ(form->ObjPlateau->SubCase(6, 7), "c");
  EXPECT_EQ(form->ObjPlateau->SubCase(9, 7), "t");
  EXPECT_FALSE(form->ObjPlateau->SubWordFirst());
  EXPECT_EQ(form->Plateau.Square(6, 7), "c");
  EXPECT_EQ(form->LblPtsJoueur.text, "18");
  EXPECT_EQ(form->TxtHisto.text, "01 CHAT            18");
  EXPECT_EQ(form->LblTirage.text, "01");
  EXPECT_EQ(form->VarTirage, 2);
  EXPECT_EQ(form->IntNbCoups, 1);
  EXPECT_EQ(form->LblPts.text, "0");
  EXPECT_EQ(form->LblPtsBis.text, "pts");
  // The unplayed "s" went back into the bag, sorted, and seven were drawn again.
  EXPECT_EQ(forms.jetonsShown, 1);
  EXPECT_EQ(program.StrSac, "S");
  for (int i = 0; i < 7; ++i) EXPECT_FALSE(form->PicGamer[size_t(i)].Tag.empty()) << i;
}

TEST_F(Validating, HistoryLinesKeepTheirColumns) {
  form->VarTirage = 9;
  form->SubAjoutHisto(ClsWord{"anticonstitution", "H1", 7});
  form->SubAjoutHisto(ClsWord{"kA", "H1", 123});
  form->SubAjoutHisto(ClsWord{"oseraient", "H1", 1234});
  EXPECT_EQ(form->TxtHisto.text,
            "09 ANTICONSTITUTION  7\r\n"
            "10 KA" +
                std::string(13, ' ') + "123\r\n" + "11 OSERAIENT" + std::string(6, ' ') + "1234");
  EXPECT_EQ(form->LblSolution.text, "''OSERAIENT''");
  EXPECT_EQ(form->LblTirage.text, "11");
  EXPECT_EQ(form->IntNbCoups, 3);
}

TEST_F(Validating, SevenTilesOverFiftySixAreCongratulated) {
  program.options.OptMessages = "Oui";
  const std::string word = "oseraie";
  for (int i = 0; i < 7; ++i) Put(i, std::string(1, word[size_t(i)]), 4 + i, 7);
  ASSERT_GT(form->SubEvalueProposition().CountP, 56);
  form->CmdValider_Click();
  EXPECT_TRUE(fake.boxes.Showed(
      " \r\n  Bravo ! Avec  le  mot OSERAIE ,\r\nvous venez de réaliser un tablinor.      \r\n "));
  EXPECT_EQ(fake.boxes.shown.front().style.buttons, Buttons::Ok);
}

TEST_F(Validating, NoCongratulationWithoutTheTourOrUnderFiftySeven) {
  program.options.OptMessages = "Non";
  const std::string word = "oseraie";
  for (int i = 0; i < 7; ++i) Put(i, std::string(1, word[size_t(i)]), 4 + i, 7);
  form->CmdValider_Click();
  EXPECT_TRUE(fake.boxes.shown.empty());
  EXPECT_EQ(std::stoi(form->LblPtsJoueur.text), 64);
}

TEST_F(Validating, TwoBlanksInSevenTilesMayStayUnderTheBonusLine) {
  program.options.OptMessages = "Oui";
  Lay("o", "F7");                      // the "o" above the blank "R": cross word "oR"
  const std::string word = "oseRaIe";  // the blanks on the letter premiums of row G
  for (int i = 0; i < 7; ++i) Put(i, std::string(1, word[size_t(i)]), 3 + i, 6);
  const ClsWord w = form->SubEvalueProposition();
  EXPECT_EQ(w.Express, "oseRaIe");
  EXPECT_EQ(w.CountP, 5 + 1 + 50);
  form->CmdValider_Click();
  for (const ShownMessage& box : fake.boxes.shown) EXPECT_EQ(box.text.find("Bravo"), std::string::npos);
  EXPECT_EQ(form->LblPtsJoueur.text, "56");
}

TEST_F(Validating, UsedTilesLoseTheirLetterAndShowTheirPlainFace) {
  program.StrSac = "";  // nothing more to draw: the game ends here
  Put(0, "a", 7, 7);
  Put(1, "S", 8, 7);
  Tile& blank = form->PicGamer[1];
  blank.face = TileFace{TileFace::Picture::ImgJok, 'S' - 'A', TileFace::Tint::DarkRed};
  form->PicGamer[0].face = TileFace{TileFace::Picture::ImgLet, 0, TileFace::Tint::Blue};
  form->CmdValider_Click();
  EXPECT_EQ(form->PicGamer[0].face, (TileFace{TileFace::Picture::ImgLet, 0, TileFace::Tint::None}));
  EXPECT_EQ(blank.face.picture, TileFace::Picture::ImgJok);  // the blank keeps its face
  EXPECT_EQ(form->ObjPlateau->SubCase(8, 7), "S");
  EXPECT_EQ(form->Plateau.Square(8, 7), "S");
  // The rack is empty after the draw: the game is over.
  EXPECT_EQ(program.BlnSacVide, -1);
  EXPECT_FALSE(form->CmdSolution.enabled);
  EXPECT_EQ(form->LblPtsJoueur.text, "2");
}

}  // namespace
}  // namespace ostrane::test
