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

// Left 37 is 58 % of the way to column 1, 38 is 61 %; columns are clamped;
// Int(-0.3) is -1, and 0.7 of the way goes up; 6.6 rack places in is place
// 7, and the rack clamp is 8, not 6. A tile overlaps a frame when it touches
// its left or top side, not its right or bottom side.
TEST(DragGeometry, SixtyPercentRoundingClampsAndTheOverlapOfLeftAndTopSides) {
  using Ints = std::vector<int>;
  EXPECT_EQ((Ints{DropColumn(37), DropColumn(38), DropColumn(10), DropColumn(557)}), (Ints{0, 1, 0, 14}));
  EXPECT_EQ((Ints{DropRow(15 + 36 * 7 + 21), DropRow(15 + 36 * 7 + 22)}), (Ints{7, 8}));
  EXPECT_EQ((Ints{RoundSixty(-0.3, -5, 14), RoundSixty(-0.5, -5, 14), RoundSixty(-0.5, 0, 14),
                  RoundSixty(2.59, 0, 14), RoundSixty(2.6, 0, 14)}),
            (Ints{0, -1, 0, 2, 3}));
  EXPECT_EQ((Ints{DropRackPlace(575 + 237), DropRackPlace(575 + 238), DropRackPlace(575 + 36 * 12)}),
            (Ints{6, 7, 8}));
  EXPECT_EQ((Ints{TileOverlaps(16 - 35, 100, kPlateau1), TileOverlaps(16 - 36, 100, kPlateau1),
                  TileOverlaps(558, 100, kPlateau1), TileOverlaps(100, 15 - 35, kPlateau1),
                  TileOverlaps(100, 557, kPlateau1), TileOverlaps(829, 560, kPicReglette),
                  TileOverlaps(830, 560, kPicReglette)}),
            (Ints{1, 0, 0, 1, 0, 1, 0}));
}

class Drag : public GameTest {
 protected:
  using Spot = std::pair<int, int>;
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
    ASSERT_EQ(At(i), Spot(left, top));
    drag->PicGamer_MouseUp(i, 1);
  }
  Spot At(int i) const { return {form->PicGamer[size_t(i)].left, form->PicGamer[size_t(i)].top}; }
  static Spot Square(int x, int y) { return {SquareLeft(x), SquareTop(y)}; }
  static Spot Rack(int place) { return {RackLeft(place), RackTop()}; }
  std::string Rack() const {
    std::string letters;
    for (const auto& place : form->TabChevalet)
      letters += place.StrLettre.empty() ? "." : place.StrLettre + std::to_string(place.IntJeton);
    return letters;
  }
  static TileFace Letter(char c, TileFace::Tint tint) { return {TileFace::Picture::ImgLet, c - 'a', tint}; }
  static TileFace Joker(char c) { return {TileFace::Picture::ImgJok, c - 'A', TileFace::Tint::DarkRed}; }
  std::unique_ptr<TileDrag>& drag = run.drag;
};

TEST_F(Drag, TheLeftButtonLiftsTheTileAboveTheOthersAndItFollowsWithinTheWindow) {
  PutOnRack(3, "s", 4);
  drag->PicGamer_MouseDown(3, 2, 10, 20, RackLeft(4) + 10, RackTop() + 20);  // the right button
  EXPECT_FALSE(drag->TimDeplaceEnabled);
  drag->PicGamer_MouseDown(3, 1, 10, 20, RackLeft(4) + 10, RackTop() + 20);
  EXPECT_EQ(drag->IntPlaceDepart, 4);
  EXPECT_FALSE(form->PicDef.visible);
  for (int i : {0, 1, 2, 4, 5, 6}) EXPECT_GT(form->PicGamer[3].zOrder, form->PicGamer[size_t(i)].zOrder);
  drag->TimDeplace_Timer(5, 5);
  EXPECT_EQ(At(3), Spot(0, 0));
  drag->TimDeplace_Timer(5000, 5000);
  EXPECT_EQ(At(3), Spot(846 - 35, 602 - 35));
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
  form->ImgXY.visible = form->LinVx.visible = form->LinVy.visible = true;
  DragTo(0, SquareLeft(11) + 5, SquareTop(7) - 9);  // a little off the square
  EXPECT_EQ(At(0), Square(11, 7));
  EXPECT_EQ(form->PicGamer[0].face, Letter('s', TileFace::Tint::Blue));
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

TEST_F(Drag, OccupiedSquaresAndPlacesOffTheBoardSendTheTileBack) {
  PutOnRack(0, "s", 1);
  PutOnRack(1, "e", 2);
  DragTo(0, SquareLeft(8), SquareTop(7));  // over the "h" of chat, far from the rack
  EXPECT_EQ(At(0), Rack(1));
  EXPECT_EQ(Rack(), ".s0e1....");
  EXPECT_EQ(form->LblPts.text, "");                      // the score is not worked out again
  EXPECT_EQ(fake.sounds.played, std::vector<int>{101});  // the sound all the same
  // Over a proposed tile: back, without trying the rack.
  DragTo(0, SquareLeft(11), SquareTop(7));
  DragTo(1, SquareLeft(11) + 3, SquareTop(7) + 3);
  EXPECT_EQ(At(1), Rack(2));
  EXPECT_EQ(Rack(), "..e1....");
  EXPECT_EQ(form->LblPts.text, "11");  // unchanged
  DragTo(0, 557, SquareTop(3) + 4);    // still over the board: column 14
  EXPECT_EQ(At(0), Square(14, 3));
  // Off the board and off the rack, sound off: back to its square, silent.
  program.options.OptSons = false;
  DragTo(0, 558, SquareTop(5));
  EXPECT_EQ(At(0), Square(14, 3));
  EXPECT_EQ(fake.sounds.played.size(), 4u);
}

TEST_F(Drag, TilesOnTheRackChangePlacesAndATileFromTheBoardPushesTheOtherToTheLowestFreePlace) {
  PutOnRack(0, "s", 0);
  PutOnRack(1, "e", 1);
  PutOnRack(2, "a", 2);
  DragTo(0, RackLeft(1) + 10, RackTop());
  EXPECT_EQ(At(0), Rack(1));
  EXPECT_EQ(At(1), Rack(0));
  EXPECT_EQ(Rack(), "e1s0a2....");
  EXPECT_EQ(form->LblPts.text, "0");
  // Back on its own place: nothing moves.
  DragTo(0, RackLeft(1) - 12, RackTop() + 10);
  EXPECT_EQ(At(0), Rack(1));
  EXPECT_EQ(Rack(), "e1s0a2....");
  // From the board onto "a": "a" goes to the lowest free place.
  DragTo(0, SquareLeft(11), SquareTop(7));
  EXPECT_TRUE(form->CmdRanger.enabled);
  DragTo(0, RackLeft(2), RackTop());
  EXPECT_EQ(drag->IntPlaceDepart, -1);
  EXPECT_EQ(Rack(), "e1a2s0....");
  EXPECT_EQ(At(2), Rack(1));
  EXPECT_EQ(form->PicGamer[0].face, Letter('s', TileFace::Tint::Black));
  EXPECT_FALSE(form->CmdRanger.enabled || form->CmdValider.enabled);  // nothing left on the board
  EXPECT_EQ(form->LblPts.text, "0");
}

TEST_F(Drag, ABlankAsksItsLetterAtEachDropOnTheBoard) {
  PutOnRack(4, "?", 3);
  PutOnRack(5, "e", 4);  // another tile on the place numbered like the blank
  form->PicGamer[4].face = TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None};
  forms.jokerLetters = {"s", "z"};
  DragTo(4, SquareLeft(11), SquareTop(7));
  EXPECT_EQ(forms.jokerLetters.size(), 1u);
  EXPECT_EQ(form->PicGamer[4].Tag, "S");
  EXPECT_EQ(form->PicGamer[4].face, Joker('S'));
  // The entry numbered like the tile goes, though "e" stands there, and the place it came from.
  EXPECT_EQ(Rack(), ".......");
  EXPECT_EQ(At(5), Rack(4));
  EXPECT_EQ(form->LblPts.text, "9");  // chatS: the blank scores nothing
  // Moved to another square, it asks again and takes the new letter.
  DragTo(4, SquareLeft(6), SquareTop(7));
  EXPECT_TRUE(forms.jokerLetters.empty());
  EXPECT_EQ(form->PicGamer[4].face, Joker('Z'));
  EXPECT_EQ(form->LblPts.text, "0");  // "zchat" is no word
  // Back to the rack: the plain blank, "?" again, but the rack entry keeps the letter.
  DragTo(4, RackLeft(5), RackTop());
  EXPECT_EQ(form->PicGamer[4].Tag, "?");
  EXPECT_EQ(form->PicGamer[4].face, (TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None}));
  EXPECT_EQ(Rack(), ".....Z4.");
}

TEST_F(Drag, ARackPlacePastTheTableEndsTheProgram) {
  FatalCatcher catcher;
  PutOnRack(0, "s", 6);
  // The window lets a tile reach 811 at most; a wider hold gets it further.
  drag->PicGamer_MouseDown(0, 1, 17, 17, RackLeft(6) + 17, RackTop() + 17);
  form->PicGamer[0].left = 575 + 238;  // 6.61 places in
  try {
    drag->PicGamer_MouseUp(0, 1);
    FAIL() << "place 7 went through";
  } catch (const FatalCalled& fatal) {
    EXPECT_NE(std::string(fatal.what()).find("Erreur d'exécution 9"), std::string::npos);
  }
  // The tile had already moved to the place that does not exist.
  EXPECT_EQ(At(0), Spot(575 + 36 * 7 + 2, RackTop()));
}

}  // namespace
}  // namespace ostrane::test
