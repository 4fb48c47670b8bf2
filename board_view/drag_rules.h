#pragma once
// The drag rules of the seven tiles: press, follow and release as plain
// geometry on the main form's model, in pixels of the window's client area.
// The window reports that tile i was pressed (and where the pointer was),
// asks the rules to follow the pointer while TimDeplaceEnabled, and reports
// the release; everything a drop changes lands in the FrmPlateau model.

#include <cstdint>
#include <functional>

#include "engine/solution_set.h"
#include "game/layout.h"

namespace ostrane {

class FrmPlateau;

// A rectangle of the window: the board Plateau1, the rack PicReglette.
struct Rect {
  int left = 0, top = 0, width = 0, height = 0;
};
inline constexpr Rect kPlateau1{layout::kPlateauLeft, layout::kPlateauTop, layout::kPlateauWidth,
                                layout::kPlateauHeight};
inline constexpr Rect kPicReglette{layout::kRegletteLeft, layout::kRegletteTop, layout::kRegletteWidth,
                                   layout::kRegletteHeight};

// Whether a tile (35 x 35) at (left, top) overlaps the rectangle: touching
// its left or top side counts, touching its right or bottom side does not.
bool TileOverlaps(int left, int top, const Rect& area);

// An offset in squares or places rounded the drag's way (up only from 60 %
// of the way on), then clamped to [low, high].
int RoundSixty(double offset, int low, int high);

// The square a released tile goes to, and the rack place (clamped to 0..8:
// places 7 and 8 do not exist, and reaching them is a fatal index error).
int DropColumn(int left);
int DropRow(int top);
int DropRackPlace(int left, int intPasJeton = layout::kPasJeton);

class TileDrag {
 public:
  static constexpr int kLeftButton = 1;

  explicit TileDrag(FrmPlateau& form) : form_(form) {}

  // The fields of a drag.
  int16_t IntPriseX = 0, IntPriseY = 0;         // where the pointer holds the tile
  int16_t IntJetonTire = 0;                     // the tile being dragged
  int16_t IntDepartX = 0, IntDepartY = 0;       // where a refused drop sends it back
  int16_t IntMargeDroite = 0, IntMargeBas = 0;  // how far from the right and bottom edges it stops
  int16_t IntPlaceDepart = -1;                  // rack place it came from, -1 from the board
  // TimDeplace runs (1 ms) while a tile is dragged.
  bool TimDeplaceEnabled = false;

  // Press on tile `index`: (x, y) is the pointer inside the tile, (pointerX,
  // pointerY) the pointer in the window. Only the left button counts; a
  // disabled or hidden tile takes no press.
  void PicGamer_MouseDown(int index, int button, int x, int y, int pointerX, int pointerY);
  // One tick of TimDeplace: the dragged tile follows the pointer.
  void TimDeplace_Timer(int pointerX, int pointerY);
  // Release of tile `index` where it now stands. Only the left button counts.
  void PicGamer_MouseUp(int index, int button);

  FrmPlateau& form() { return form_; }

 private:
  enum class BoardDrop { Laid, Occupied, Proposed };
  BoardDrop DropOnBoard(int index);
  void DropOnRack(int index);
  void SendBack(int index);
  void ShowScore();

  FrmPlateau& form_;
};

// A player's gesture: press tile `index` at its centre, follow the pointer to
// (pointerX, pointerY) and release there. With the pointer at a square's
// centre the tile's left-top lands on that square's place.
void DragTile(TileDrag& drag, int index, int pointerX, int pointerY);

// Lays a play (Express along Place, as the best-play box shows it) with
// gestures: for each letter whose square is free, drags a rack tile of that
// letter there, a blank for an upper-case letter. `onBlank` is told the
// letter just before a blank is dropped, so that whoever answers FrmJoc can
// type it. Returns false when the rack lacks a tile the play needs.
bool LayWord(FrmPlateau& form, TileDrag& drag, const ClsWord& word,
             const std::function<void(char letter)>& onBlank = nullptr);

}  // namespace ostrane
