// The drag rules on the main form's model: the geometry of press, follow and
// release, drops on the board and the rack, swaps, blanks, refusals, and the
// rack place past the table that ends the program.
#include "board_view/drag_rules.h"

#include <gtest/gtest.h>

#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

using layout::RackLeft;
using layout::RackTop;
using layout::SquareLeft;
using layout::SquareTop;

TEST(DragGeometry, SixtyPercentRoundingClampsAndTheOverlapOfLeftAndTopSides) {
  const struct {
    int got, expected;
  } cases[] = {
      {DropColumn(37), 0},  // left 37 is 58 % of the way to column 1
      {DropColumn(38), 1},  // 38 is 61 %
      {DropColumn(10), 0},  {DropColumn(557), 14},  // clamped
      {DropRow(15 + 36 * 7 + 21), 7}, {DropRow(15 + 36 * 7 + 22), 8},
      {RoundSixty(-0.3, -5, 14), 0},  // Int(-0.3) is -1, and 0.7 of the way goes up
      {RoundSixty(-0.5, -5, 14), -1}, {RoundSixty(-0.5, 0, 14), 0},
      {RoundSixty(2.59, 0, 14), 2},   {RoundSixty(2.6, 0, 14), 3},
      {DropRackPlace(575 + 237), 6},  {DropRackPlace(575 + 238), 7},  // 6.6 places in: place 7
      {DropRackPlace(575 + 36 * 12), 8},  // the clamp is 8, not 6
  };
  for (size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].got, cases[i].expected) << i;
  EXPECT_TRUE(TileOverlaps(16 - 35, 100, kPlateau1));  // touches the left side
  EXPECT_FALSE(TileOverlaps(16 - 36, 100, kPlateau1));
  EXPECT_FALSE(TileOverlaps(558, 100, kPlateau1));     // touches the right side
  EXPECT_TRUE(TileOverlaps(100, 15 - 35, kPlateau1));  // touches the top side
  EXPECT_FALSE(TileOverlaps(100, 557, kPlateau1));     // touches the bottom side
  EXPECT_TRUE(TileOverlaps(829, 560, kPicReglette));
  EXPECT_FALSE(TileOverlaps(830, 560, kPicReglette));
}

class Drag : public GameTest {
 protected:
  void SetUp() override {
    Load();
    form->ObjPlateau->SubCaserWord(ClsWord{"chat", "H8", 0});
    form->ObjPlateau->SubWordFirst(false);
    form->DrawGrille();
  }
  // Press tile i at its centre and leave it with its left-top at (left, top).
  void DragTo(int i, int left, int top) {
    Tile& tile = form->PicGamer[size_t(i)];
    drag->PicGamer_MouseDown(i, 1, 17, 17, tile.left + 17, tile.top + 17);
    drag->TimDeplace_Timer(left + 17, top + 17);
    ASSERT_EQ(tile.left, left);
    ASSERT_EQ(tile.top, top);
    drag->PicGamer_MouseUp(i, 1);
  }
};

TEST_F(Drag, TheLeftButtonLiftsTheTileAboveTheOthersAndItFollowsWithinTheWindow) {
  PutOnRack(3, "s", 4);
  drag->PicGamer_MouseDown(3, 2, 10, 20, RackLeft(4) + 10, RackTop() + 20);  // the right button
  EXPECT_FALSE(drag->TimDeplaceEnabled);
  drag->PicGamer_MouseDown(3, 1, 10, 20, RackLeft(4) + 10, RackTop() + 20);
  EXPECT_EQ(drag->IntPlaceDepart, 4);
  EXPECT_FALSE(form->PicDef.visible);
  for (int i = 0; i < 7; ++i) {
    if (i != 3) {
      EXPECT_GT(form->PicGamer[3].zOrder, form->PicGamer[size_t(i)].zOrder);
    }
  }
  drag->TimDeplace_Timer(5, 5);
  EXPECT_EQ(form->PicGamer[3].left, 0);
  EXPECT_EQ(form->PicGamer[3].top, 0);
  drag->TimDeplace_Timer(5000, 5000);
  EXPECT_EQ(form->PicGamer[3].left, 846 - 35);
  EXPECT_EQ(form->PicGamer[3].top, 602 - 35);
  drag->PicGamer_MouseUp(3, 2);  // ignored: still dragging, no sound
  EXPECT_TRUE(drag->TimDeplaceEnabled);
  EXPECT_TRUE(fake.sounds.played.empty());
  drag->PicGamer_MouseUp(3, 1);
  EXPECT_FALSE(drag->TimDeplaceEnabled);
  EXPECT_EQ(fake.sounds.played, std::vector<int>{101});
}

TEST_F(Drag, DropOnAFreeSquareSnapsPaintsAndScores) {
  PutOnRack(0, "s", 2);
  form->LblIndic.text = "\r\nPas de solution possible.";
  form->ImgXY.visible = true;
  form->LinVx.visible = form->LinVy.visible = true;
  DragTo(0, SquareLeft(11) + 5, SquareTop(7) - 9);  // a little off the square
  const Tile& tile = form->PicGamer[0];
  EXPECT_EQ(tile.left, SquareLeft(11));
  EXPECT_EQ(tile.top, SquareTop(7));
  EXPECT_EQ(tile.face, (TileFace{TileFace::Picture::ImgLet, 's' - 'a', TileFace::Tint::Blue}));
  EXPECT_EQ(form->TabChevalet[2].IntJeton, -1);
  EXPECT_TRUE(form->CmdRanger.enabled && form->CmdValider.enabled);  // "chats"
  EXPECT_EQ(form->LblPts.text, "11");
  EXPECT_EQ(form->LblIndic.text, "");  // a hint goes
  EXPECT_FALSE(form->ImgXY.visible || form->LinVx.visible || form->LinVy.visible);
  EXPECT_EQ(form->IntCligno, 9);
  EXPECT_EQ(fake.sounds.played, std::vector<int>{101});
  // A solution line survives a release.
  form->LblIndic.text = "Solution: CHATS\r\nPosition: H-8";
  DragTo(0, SquareLeft(12), SquareTop(7));
  EXPECT_EQ(form->LblIndic.text, "Solution: CHATS\r\nPosition: H-8");
}

TEST_F(Drag, OccupiedSquareTriesTheRackOrSendsTheTileBack) {
  PutOnRack(0, "s", 1);
  DragTo(0, SquareLeft(8), SquareTop(7));  // over the "h" of chat, far from the rack
  EXPECT_EQ(form->PicGamer[0].left, RackLeft(1));
  EXPECT_EQ(form->PicGamer[0].top, RackTop());
  EXPECT_EQ(form->TabChevalet[1].StrLettre, "s");
  EXPECT_EQ(form->LblPts.text, "");                      // the score is not worked out again
  EXPECT_EQ(fake.sounds.played, std::vector<int>{101});  // the sound all the same

  // Sound off: silent.
  program.options.OptSons = false;
  DragTo(0, 700, 100);  // nowhere
  EXPECT_EQ(form->PicGamer[0].left, RackLeft(1));
  EXPECT_EQ(fake.sounds.played.size(), 1u);
}

TEST_F(Drag, ASquareWithAProposedTileSendsTheTileBackWithoutTryingTheRack) {
  PutOnRack(0, "s", 0);
  PutOnRack(1, "e", 1);
  DragTo(0, SquareLeft(11), SquareTop(7));
  DragTo(1, SquareLeft(11) + 3, SquareTop(7) + 3);
  EXPECT_EQ(form->PicGamer[1].left, RackLeft(1));
  EXPECT_EQ(form->TabChevalet[1].StrLettre, "e");
  EXPECT_EQ(form->LblPts.text, "11");  // unchanged
}

TEST_F(Drag, TilesOnTheRackChangePlaces) {
  PutOnRack(0, "s", 0);
  PutOnRack(1, "e", 1);
  form->PicGamer[0].face = TileFace{TileFace::Picture::ImgLet, 's' - 'a', TileFace::Tint::Black};
  form->PicGamer[1].face = TileFace{TileFace::Picture::ImgLet, 'e' - 'a', TileFace::Tint::Black};
  DragTo(0, RackLeft(1) + 10, RackTop());
  EXPECT_EQ(form->PicGamer[0].left, RackLeft(1));
  EXPECT_EQ(form->PicGamer[1].left, RackLeft(0));
  EXPECT_EQ(form->TabChevalet[0].StrLettre + form->TabChevalet[1].StrLettre, "es");
  EXPECT_EQ(form->TabChevalet[0].IntJeton, 1);
  EXPECT_EQ(form->LblPts.text, "0");

  // Back on its own place: nothing moves.
  DragTo(0, RackLeft(1) - 12, RackTop() + 10);
  EXPECT_EQ(form->PicGamer[0].left, RackLeft(1));
  EXPECT_EQ(form->PicGamer[1].left, RackLeft(0));
  EXPECT_EQ(form->TabChevalet[1].StrLettre, "s");
  EXPECT_EQ(form->TabChevalet[0].StrLettre, "e");
}

TEST_F(Drag, ATileFromTheBoardPushesTheOtherToTheLowestFreePlace) {
  PutOnRack(0, "s", 0);
  PutOnRack(1, "e", 1);
  PutOnRack(2, "a", 2);
  DragTo(0, SquareLeft(11), SquareTop(7));
  EXPECT_TRUE(form->CmdRanger.enabled);
  DragTo(0, RackLeft(2), RackTop());  // onto "a"
  EXPECT_EQ(drag->IntPlaceDepart, -1);
  EXPECT_EQ(form->TabChevalet[2].StrLettre, "s");
  EXPECT_EQ(form->PicGamer[2].left, RackLeft(0));
  EXPECT_EQ(form->TabChevalet[0].StrLettre, "a");
  EXPECT_EQ(form->TabChevalet[0].IntJeton, 2);
  EXPECT_EQ(form->PicGamer[0].face, (TileFace{TileFace::Picture::ImgLet, 's' - 'a', TileFace::Tint::Black}));
  EXPECT_FALSE(form->CmdRanger.enabled);  // nothing left on the board
  EXPECT_FALSE(form->CmdValider.enabled);
  EXPECT_EQ(form->LblPts.text, "0");
}

TEST_F(Drag, ABlankAsksItsLetterAtEachDropOnTheBoard) {
  PutOnRack(4, "?", 3);
  PutOnRack(5, "e", 4);  // another tile on the place numbered like the blank
  form->PicGamer[4].face = TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None};
  forms.jokerLetters = {"s", "z"};
  DragTo(4, SquareLeft(11), SquareTop(7));
  EXPECT_EQ(forms.jocShown, 1);
  EXPECT_EQ(form->PicGamer[4].Tag, "S");
  EXPECT_EQ(form->PicGamer[4].face,
            (TileFace{TileFace::Picture::ImgJok, 'S' - 'A', TileFace::Tint::DarkRed}));
  EXPECT_EQ(form->TabChevalet[4].StrLettre, "");  // the entry numbered like the tile, though "e" stands there
  EXPECT_EQ(form->PicGamer[5].left, RackLeft(4));
  EXPECT_EQ(form->TabChevalet[3].StrLettre, "");  // and the place it came from
  EXPECT_EQ(form->LblPts.text, "9");              // chatS: the blank scores nothing
  // Moved to another square, it asks again and takes the new letter.
  DragTo(4, SquareLeft(6), SquareTop(7));
  EXPECT_EQ(forms.jocShown, 2);
  EXPECT_EQ(form->PicGamer[4].Tag, "Z");
  EXPECT_EQ(form->PicGamer[4].face.index, 'Z' - 'A');
  EXPECT_EQ(form->LblPts.text, "0");  // "zchat" is no word
  // Back to the rack: the plain blank, "?" again, but the rack entry keeps the letter.
  DragTo(4, RackLeft(5), RackTop());
  EXPECT_EQ(form->PicGamer[4].Tag, "?");
  EXPECT_EQ(form->PicGamer[4].face, (TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None}));
  EXPECT_EQ(form->TabChevalet[5].StrLettre, "Z");
  EXPECT_EQ(form->TabChevalet[5].IntJeton, 4);
}

TEST_F(Drag, ABlankLeftWithoutALetterIsNul) {
  PutOnRack(0, "?", 0);
  forms.onJoc = [](FrmJoc& joc) {
    joc.TxtJok_Change("5");  // refused: the box empties at once
    EXPECT_EQ(joc.TxtJok.text, "");
    joc.Close();
  };
  DragTo(0, SquareLeft(11), SquareTop(7));
  EXPECT_EQ(form->PicGamer[0].Tag, "Nul");
  EXPECT_EQ(form->PicGamer[0].face,
            (TileFace{TileFace::Picture::ImgJok, 13, TileFace::Tint::DarkRed}));  // "N"
  EXPECT_EQ(program.StrJoker, "Nul");
  EXPECT_EQ(form->LblPts.text, "0");  // never a lawful proposal
  EXPECT_FALSE(form->CmdValider.enabled);
}

TEST_F(Drag, EdgesOfTheBoard) {
  PutOnRack(0, "s", 0);
  DragTo(0, 557, SquareTop(3) + 4);  // still over the board: column 14
  EXPECT_EQ(form->PicGamer[0].left, SquareLeft(14));
  EXPECT_EQ(form->PicGamer[0].top, SquareTop(3));
  DragTo(0, 558, SquareTop(5));  // off the board and off the rack: back
  EXPECT_EQ(form->PicGamer[0].left, SquareLeft(14));
  EXPECT_EQ(form->PicGamer[0].top, SquareTop(3));
}

TEST_F(Drag, ARackPlacePastTheTableEndsTheProgram) {
  FatalCatcher catcher;
  PutOnRack(0, "s", 6);
  // The window lets a tile reach 811 at most; a wider hold gets it further.
  Tile& tile = form->PicGamer[0];
  drag->PicGamer_MouseDown(0, 1, 17, 17, tile.left + 17, tile.top + 17);
  tile.left = 575 + 238;  // 6.61 places in
  try {
    drag->PicGamer_MouseUp(0, 1);
    FAIL() << "place 7 went through";
  } catch (const FatalCalled& fatal) {
    EXPECT_NE(std::string(fatal.what()).find("Erreur d'exécution 9"), std::string::npos);
  }
  // The tile had already moved to the place that does not exist.
  EXPECT_EQ(tile.left, 575 + 36 * 7 + 2);
  EXPECT_EQ(tile.top, RackTop());
}

TEST_F(Drag, LayWordLaysAPlayWithGestures) {
  PutOnRack(0, "a", 0);
  PutOnRack(1, "s", 1);
  PutOnRack(2, "?", 2);
  // "tas" down from the "t" of chat, then the blank.
  ASSERT_TRUE(LayWord(*form, *drag, ClsWord{"tas", "11H", 3}));
  EXPECT_EQ(form->LblPts.text, "3");
  EXPECT_TRUE(form->CmdValider.enabled);
  EXPECT_FALSE(LayWord(*form, *drag, ClsWord{"chatte", "H8", 0}));  // no "t" or "e" left
}

}  // namespace
}  // namespace ostrane::test
