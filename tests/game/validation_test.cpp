// The rules a proposal must keep (line, gaps, centre, connection, cross
// words, two tiles on a first play), its score, and what validating it does:
// the board, the history line, the congratulation, the tiles used up.
#include <gtest/gtest.h>

#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

struct Laid {
  std::string tag;
  int column, row;
};

class Validation : public GameTest {
 protected:
  void SetUp() override {
    Load();
    form->CmdNew.enabled = false;
    form->VarTirage = 1;
    program.StrSac = "EEEEEEE";
  }
  void Lay(const std::string& express, const std::string& place) {
    form->ObjPlateau->SubCaserWord(ClsWord{express, place, 0});
    form->ObjPlateau->SubWordFirst(false);
    form->DrawGrille();
  }
  std::string Squares() const {
    std::string squares;
    for (int i = 0; i < 225; ++i) squares += form->ObjPlateau->Square(i % 15, i / 15);
    return squares;
  }
};

TEST_F(Validation, ProposalsAreReadAndScoredOrRefusedByTheRules) {
  const std::vector<std::pair<std::string, std::string>> chat = {{"chat", "H8"}};
  const struct {
    const char* what;
    std::vector<std::pair<std::string, std::string>> board;  // words laid before, by position
    std::vector<Laid> tiles;
    std::string express, place;  // empty: refused
    int points;
  } cases[] = {
      {"nothing laid", {}, {}, "", "", 0},
      {"one tile on the centre", {}, {{"a", 7, 7}}, "", "", 0},
      {"a first play across the centre", {}, {{"a", 7, 7}, {"s", 8, 7}}, "as", "H8", 4},
      {"a first play that misses the centre", {}, {{"a", 5, 7}, {"s", 6, 7}}, "", "", 0},
      {"a first play down the centre", {}, {{"t", 7, 6}, {"a", 7, 7}, {"s", 7, 8}}, "tas", "8G", 6},
      {"a blank keeps its capital and scores nothing", {}, {{"e", 7, 7}, {"T", 8, 7}}, "eT", "H8", 2},
      {"a blank without its letter", {}, {{"u", 7, 7}, {"Nul", 8, 7}}, "", "", 0},
      {"a blank without its letter, later", {{"bo", "H7"}}, {{"Nul", 8, 7}, {"s", 9, 7}}, "", "", 0},
      {"a blank without its letter, down", {{"bo", "H7"}}, {{"Nul", 6, 8}, {"e", 6, 9}}, "", "", 0},
      {"tiles off one line", {}, {{"a", 7, 7}, {"s", 8, 8}}, "", "", 0},
      {"a third tile off the line", {}, {{"a", 7, 7}, {"s", 8, 7}, {"e", 9, 6}}, "", "", 0},
      {"a gap between the tiles", chat, {{"s", 11, 7}, {"e", 13, 7}}, "", "", 0},
      {"a tile that lengthens a word", chat, {{"s", 11, 7}}, "chats", "H8", 11},
      {"the first tile decides where the reading starts", chat, {{"t", 3, 7}, {"e", 6, 7}}, "", "", 0},
      {"tiles that touch nothing", chat, {{"a", 1, 1}, {"s", 2, 1}}, "", "", 0},
      {"one tile alone", chat, {{"a", 3, 3}}, "", "", 0},
      // "as" under "ha": a on a letter double, the cross-words "ha" and "as" count.
      {"cross-words that are words", chat, {{"a", 8, 8}, {"s", 9, 8}}, "as", "I9", 3 + 6 + 2},
      {"a cross-word that is no word", chat, {{"a", 9, 8}, {"s", 10, 8}}, "", "", 0},  // "ts"
      {"a main word that is no word", chat, {{"x", 11, 7}}, "", "", 0},
      // "s" after "chat" over the "a" of "an": down wins, "chats" is the cross-word.
      {"one tile goes down", {{"chat", "H8"}, {"an", "I12"}}, {{"s", 11, 7}}, "sa", "12H", 3 + 11},
      {"a play down through a tile", chat, {{"a", 10, 8}, {"s", 10, 9}}, "tas", "11H", 3},
      {"under the last column", {{"chat", "H8"}, {"oser", "I12"}}, {{"s", 14, 9}}, "", "", 0},  // "rs"
      {"on the last row", {{"chat", "H8"}, {"oser", "I12"}, {"le", "15N"}}, {{"s", 13, 14}}, "se", "O14", 2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Load();
    for (const auto& [express, place] : c.board) Lay(express, place);
    for (size_t i = 0; i < c.tiles.size(); ++i)
      Put(int(i), c.tiles[i].tag, c.tiles[i].column, c.tiles[i].row);
    const std::string before = Squares();
    form->CmdValider.enabled = true;
    const ClsWord word = form->SubEvalueProposition();
    EXPECT_EQ(word.Express + " " + word.Place + " " + std::to_string(word.CountP),
              c.express + " " + c.place + " " + std::to_string(c.points));
    EXPECT_EQ(form->CmdValider.enabled, !c.express.empty());
    EXPECT_EQ(Squares(), before);  // the board the right way round
  }
}

TEST_F(Validation, AFailedDownWordLongerThanTheLexiconsLongestLeavesTheBoardTurned) {
  Lexicon small = SmallLexicon({"AS", "TA", "TAS"});
  Program other(small, fake.host);
  FrmPlateau f(other, forms);
  f.Form_Load();
  f.ObjPlateau->SubCaserWord(ClsWord{"ta", "H8", 0});
  f.ObjPlateau->SubWordFirst(false);
  for (int i = 0; i < 3; ++i) PutTile(f, i, std::string(1, "xyz"[i]), 7, 8 + i);  // "txyz": no word of 4
  EXPECT_TRUE(f.SubEvalueProposition().IsEmpty());
  EXPECT_EQ(f.ObjPlateau->Square(7, 8), 'a');  // still turned through its diagonal
  f.ObjPlateau->SubPlat();
  for (int i = 1; i < 3; ++i) PutTile(f, i, "", 0, 0);
  PutTile(f, 0, "s", 7, 8);  // "ts": 2 letters, turned back
  EXPECT_TRUE(f.SubEvalueProposition().IsEmpty());
  EXPECT_EQ(f.ObjPlateau->Square(8, 7), 'a');
}

TEST_F(Validation, APlayGoesOnTheBoardAndIntoTheHistoryAndTheRackIsDrawnAgain) {
  for (int i = 0; i < 4; ++i) Put(i, std::string(1, "chat"[i]), 6 + i, 7);
  PutOnRack(4, "s", 4);
  form->CmdValider_Click();
  EXPECT_EQ(form->ObjPlateau->GetMot("H7") + form->Plateau.Square(6, 7), "CHATc");
  EXPECT_FALSE(form->ObjPlateau->SubWordFirst());
  EXPECT_EQ(form->LblPtsJoueur.text + " " + form->LblTirage.text + " " + form->LblPts.text, "18 01 0");
  EXPECT_EQ(form->VarTirage * 10 + form->IntNbCoups, 21);
  // The unplayed "s" went back into the bag, sorted, and seven were drawn again.
  EXPECT_EQ(forms.jetonsShown, 1);
  EXPECT_EQ(program.StrSac, "S");
  EXPECT_FALSE(form->PicGamer[6].Tag.empty());

  form->VarTirage = 9;
  form->SubAjoutHisto(ClsWord{"anticonstitution", "H1", 7});
  form->SubAjoutHisto(ClsWord{"kA", "H1", 123});
  form->SubAjoutHisto(ClsWord{"oseraient", "H1", 1234});
  EXPECT_EQ(
      form->TxtHisto.text,
      "01 CHAT            18\r\n09 ANTICONSTITUTION  7\r\n10 KA             123\r\n11 OSERAIENT      1234");
  EXPECT_EQ(form->LblSolution.text, "''OSERAIENT''");
  EXPECT_EQ(form->LblTirage.text, "11");
}

TEST_F(Validation, SevenTilesOverFiftySixAreCongratulatedWhenTheTourIsOn) {
  const std::string bravo =
      " \r\n  Bravo ! Avec  le  mot OSERAIE ,\r\nvous venez de réaliser un tablinor.      \r\n ";
  const struct {
    const char* messages;
    std::string word;
    int row, points;
  } cases[] = {
      {"Oui", "oseraie", 7, 64}, {"Non", "oseraie", 7, 64}, {"Oui", "oseRaIe", 6, 56}};  // 5 + 1 + 50
  for (const auto& c : cases) {
    SetUp();
    fake.boxes.shown.clear();
    program.options.OptMessages = c.messages;
    if (c.row == 6)
      form->ObjPlateau->SubCaserWord(ClsWord{"o", "F7", 0});  // "oR" down, blanks on the premiums
    form->ObjPlateau->SubWordFirst(c.row == 7);
    for (int i = 0; i < 7; ++i) Put(i, std::string(1, c.word[size_t(i)]), (c.row == 7 ? 4 : 3) + i, c.row);
    form->CmdValider_Click();
    EXPECT_EQ(form->LblPtsJoueur.text, std::to_string(c.points));
    EXPECT_EQ(fake.boxes.Texts(), c.points > 56 && c.messages == std::string("Oui")
                                      ? std::vector<std::string>{bravo}
                                      : std::vector<std::string>{});
  }
}

TEST_F(Validation, UsedTilesShowTheirPlainFaceAndAnEmptyRackEndsTheGame) {
  program.StrSac = "";  // nothing more to draw
  Put(0, "a", 7, 7);
  Put(1, "S", 8, 7);
  form->PicGamer[0].face = TileFace{TileFace::Picture::ImgLet, 0, TileFace::Tint::Blue};
  form->PicGamer[1].face = TileFace{TileFace::Picture::ImgJok, 'S' - 'A', TileFace::Tint::DarkRed};
  form->CmdValider_Click();
  EXPECT_EQ(form->PicGamer[0].face, (TileFace{TileFace::Picture::ImgLet, 0, TileFace::Tint::None}));
  EXPECT_EQ(form->PicGamer[1].face.picture, TileFace::Picture::ImgJok);  // the blank keeps its face
  EXPECT_EQ(form->Plateau.Square(8, 7) + form->LblPtsJoueur.text, "S2");
  EXPECT_TRUE(program.BlnSacVide == -1 && !form->CmdSolution.enabled);
}

}  // namespace
}  // namespace ostrane::test
