#include "board_view/drag_rules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "game/frm_joc.h"
#include "game/frm_plateau.h"
#include "lexicon/fatal.h"
#include "records/program.h"

namespace ostrane {
namespace {

using layout::kTileHeight;
using layout::kTileWidth;

int RoundHalfEven(double value) { return int(std::nearbyint(value)); }

int FirstCode(const std::string& text) { return text.empty() ? 0 : static_cast<unsigned char>(text[0]); }

}  // namespace

bool TileOverlaps(int left, int top, const Rect& area) {
  return left + kTileWidth >= area.left && area.left + area.width > left && top + kTileHeight >= area.top &&
         area.top + area.height > top;
}

int RoundSixty(double offset, int low, int high) {
  const double whole = std::floor(offset);
  int result = int(whole);
  if (offset - whole >= 0.6) ++result;
  if (result < low) result = low;
  if (result > high) result = high;
  return result;
}

int DropColumn(int left) {
  return RoundSixty((left - kPlateau1.left) / ((kPlateau1.width - 2) / 15.0), 0, 14);
}

int DropRow(int top) { return RoundSixty((top - kPlateau1.top) / ((kPlateau1.height - 2) / 15.0), 0, 14); }

int DropRackPlace(int left, int intPasJeton) {
  return RoundSixty(double(left - kPicReglette.left) / intPasJeton, 0, 8);
}

void TileDrag::PicGamer_MouseDown(int index, int button, int x, int y, int pointerX, int pointerY) {
  if (button != kLeftButton) return;
  if (index < 0 || index > 6) FatalIndex("PicGamer", index);
  Tile& tile = form_.PicGamer[size_t(index)];
  if (!tile.enabled || !tile.visible) return;
  const int L = tile.left, T = tile.top;
  form_.PicDef.visible = false;
  IntJetonTire = int16_t(index);
  IntPriseX = int16_t(x - (L + x - pointerX));
  IntPriseY = int16_t(y - (T + y - pointerY));
  IntDepartX = int16_t(L);
  IntDepartY = int16_t(T);
  IntMargeDroite = int16_t(kTileWidth - (L + x - pointerX));
  IntMargeBas = int16_t(kTileHeight - (T + y - pointerY));
  int top = 0;
  for (const Tile& other : form_.PicGamer) top = std::max(top, other.zOrder);
  tile.zOrder = top + 1;
  if (kPlateau1.left + kPlateau1.width < L) {
    IntPlaceDepart = int16_t(RoundHalfEven((L - kPicReglette.left) / ((kPicReglette.width - 2) / 7.0)));
  } else {
    IntPlaceDepart = -1;
  }
  TimDeplaceEnabled = true;
}

void TileDrag::TimDeplace_Timer(int pointerX, int pointerY) {
  if (!TimDeplaceEnabled) return;
  int x = pointerX - IntPriseX;
  int y = pointerY - IntPriseY;
  if (x < 0) x = 0;
  if (y < 0) y = 0;
  if (!(layout::kFormWidth - IntMargeDroite > x)) x = layout::kFormWidth - IntMargeDroite;
  if (!(layout::kFormHeight - IntMargeBas > y)) y = layout::kFormHeight - IntMargeBas;
  Tile& tile = form_.PicGamer[size_t(IntJetonTire)];
  tile.left = x;
  tile.top = y;
}

void TileDrag::PicGamer_MouseUp(int index, int button) {
  if (button != kLeftButton) return;
  if (index < 0 || index > 6) FatalIndex("PicGamer", index);
  TimDeplaceEnabled = false;
  if (form_.program().options.OptSons) form_.SubJoueSon(1);
  if (form_.LblIndic.text.substr(0, 8) != "Solution") form_.LblIndic.text = "";
  form_.LinVx.visible = false;
  form_.LinVy.visible = false;
  form_.ImgXY.visible = false;
  form_.IntCligno = 9;

  const Tile& tile = form_.PicGamer[size_t(index)];
  if (TileOverlaps(tile.left, tile.top, kPlateau1)) {
    switch (DropOnBoard(index)) {
      case BoardDrop::Laid:
      case BoardDrop::Proposed:
        return;
      case BoardDrop::Occupied:
        break;
    }
  }
  if (TileOverlaps(tile.left, tile.top, kPicReglette)) {
    DropOnRack(index);
    return;
  }
  SendBack(index);
}

void TileDrag::SendBack(int index) {
  Tile& tile = form_.PicGamer[size_t(index)];
  tile.left = IntDepartX;
  tile.top = IntDepartY;
}

void TileDrag::ShowScore() {
  const ClsWord word = form_.SubEvalueProposition();
  form_.LblPts.text = std::to_string(word.CountP);
  form_.LblPtsBis.text = "pts";
}

TileDrag::BoardDrop TileDrag::DropOnBoard(int index) {
  Tile& tile = form_.PicGamer[size_t(index)];
  const int row = DropRow(tile.top);
  const int column = DropColumn(tile.left);
  if (!form_.ObjPlateau->SubCase(column, row).empty()) return BoardDrop::Occupied;

  tile.left = RoundHalfEven((kPlateau1.width - 2) * column / 15.0 + kPlateau1.left + 2);
  tile.top = RoundHalfEven((kPlateau1.height - 2) * row / 15.0 + kPlateau1.top + 2);
  for (int i = 0; i < 7; ++i) {
    if (i == index) continue;
    const Tile& other = form_.PicGamer[size_t(i)];
    if (other.left == tile.left && other.top == tile.top) {
      SendBack(index);
      return BoardDrop::Proposed;
    }
  }

  Program& program = form_.program();
  if (FirstCode(tile.Tag) < 97 && kPlateau1.left + kPlateau1.width > tile.left) {
    program.StrJoker = "";
    FrmJoc joc(program);
    form_.forms().Show(joc);
    tile.Tag = program.StrJoker;
    form_.TabChevalet[size_t(index)].StrLettre = "";
    form_.SubPeintBlanc(tile.Tag);
    tile.face = form_.PicTemp;
  } else {
    form_.SubPeintPose(tile.Tag);
    tile.face = form_.PicTemp;
  }

  form_.CmdRanger.enabled = true;
  if (IntPlaceDepart >= 0) {
    if (IntPlaceDepart > 6) FatalIndex("TabChevalet", IntPlaceDepart);
    form_.TabChevalet[size_t(IntPlaceDepart)] = FrmPlateau::Chevalet{"", -1};
  }
  ShowScore();
  return BoardDrop::Laid;
}

void TileDrag::DropOnRack(int index) {
  Tile& tile = form_.PicGamer[size_t(index)];
  const int pas = form_.IntPasJeton;
  const int place = DropRackPlace(tile.left, pas);
  tile.left = kPicReglette.left + pas * place + 2;
  tile.top = kPicReglette.top + 2;
  // The clamp above stays at 8: places 7 and 8 are past the rack's table.
  if (place > 6) FatalIndex("TabChevalet", place);

  auto& rack = form_.TabChevalet;
  if (rack[size_t(place)].StrLettre.empty()) {
    rack[size_t(place)] = FrmPlateau::Chevalet{tile.Tag, int16_t(index)};
    if (IntPlaceDepart >= 0) {
      if (IntPlaceDepart > 6) FatalIndex("TabChevalet", IntPlaceDepart);
      rack[size_t(IntPlaceDepart)] = FrmPlateau::Chevalet{"", -1};
    }
  } else {
    rack[size_t(place)] = FrmPlateau::Chevalet{tile.Tag, int16_t(index)};
    for (int i = 0; i < 7; ++i) {
      if (i == index) continue;
      Tile& other = form_.PicGamer[size_t(i)];
      if (other.left != tile.left || other.top != tile.top) continue;
      if (IntPlaceDepart >= 0) {
        if (IntPlaceDepart > 6) FatalIndex("TabChevalet", IntPlaceDepart);
        rack[size_t(IntPlaceDepart)] = FrmPlateau::Chevalet{other.Tag, int16_t(i)};
        other.left = kPicReglette.left + pas * IntPlaceDepart + 2;
        other.top = kPicReglette.top + 2;
      } else {
        for (int j = 0; j < 7; ++j) {
          if (!rack[size_t(j)].StrLettre.empty()) continue;
          rack[size_t(j)] = FrmPlateau::Chevalet{other.Tag, int16_t(i)};
          other.left = kPicReglette.left + pas * j + 2;
          other.top = kPicReglette.top + 2;
          break;
        }
      }
      break;
    }
  }

  bool onBoard = false;
  for (const Tile& any : form_.PicGamer) {
    if (!any.Tag.empty() && TileOverlaps(any.left, any.top, kPlateau1)) {
      onBoard = true;
      break;
    }
  }
  if (!onBoard) form_.CmdRanger.enabled = false;
  ShowScore();

  if (FirstCode(tile.Tag) < 97) {
    tile.face = TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None};
    tile.Tag = "?";
  } else {
    form_.SubPeintLettre(tile.Tag);
    tile.face = form_.PicTemp;
  }
}

void DragTile(TileDrag& drag, int index, int pointerX, int pointerY) {
  const Tile& tile = drag.form().PicGamer[size_t(index)];
  const int x = kTileWidth / 2, y = kTileHeight / 2;
  drag.PicGamer_MouseDown(index, TileDrag::kLeftButton, x, y, tile.left + x, tile.top + y);
  drag.TimDeplace_Timer(pointerX, pointerY);
  drag.PicGamer_MouseUp(index, TileDrag::kLeftButton);
}

bool LayWord(FrmPlateau& form, TileDrag& drag, const ClsWord& word,
             const std::function<void(char letter)>& onBlank) {
  ClsPlateau& board = *form.ObjPlateau;
  const bool vertical = !word.Place.empty() && word.Place[0] >= '0' && word.Place[0] <= '9';
  const int column = board.SubColumn(word.Place);
  const int row = board.SubTrouverLigne(word.Place);
  if (column < 0 || row < 0) return false;
  std::array<bool, 7> used{};
  for (size_t i = 0; i < word.Express.size(); ++i) {
    const int c = vertical ? column : column + int(i);
    const int r = vertical ? row + int(i) : row;
    if (c > 14 || r > 14) return false;
    if (board.Square(c, r) != 0) continue;
    const char letter = word.Express[i];
    const bool blank = letter >= 'A' && letter <= 'Z';
    int chosen = -1;
    for (int k = 0; k < 7 && chosen < 0; ++k) {
      const Tile& tile = form.PicGamer[size_t(k)];
      if (used[size_t(k)] || !tile.visible || !tile.enabled || form.TileAcrossPlateau(k)) continue;
      // A blank is "?" on the rack, or still shows the letter it last stood for.
      const bool isBlank = tile.Tag == "?" || tile.Tag == "Nul" || (tile.Tag.size() == 1 && tile.Tag[0] >= 'A' && tile.Tag[0] <= 'Z');
      if (blank ? isBlank : tile.Tag == std::string(1, letter)) chosen = k;
    }
    if (chosen < 0) return false;
    used[size_t(chosen)] = true;
    if (blank && onBlank) onBlank(letter);
    DragTile(drag, chosen, layout::SquareLeft(c) + kTileWidth / 2, layout::SquareTop(r) + kTileHeight / 2);
  }
  return true;
}

}  // namespace ostrane
