#pragma once
// Geometry of the main window, in pixels of its client area. The models place
// tiles, arrows and lines with these numbers; the window lays its widgets out
// with the same ones and never repeats them.

namespace ostrane::layout {

// The main window (FrmPlateau).
inline constexpr int kFormWidth = 846;
inline constexpr int kFormHeight = 602;

// The board Plateau1.
inline constexpr int kPlateauLeft = 16;
inline constexpr int kPlateauTop = 15;
inline constexpr int kPlateauWidth = 542;
inline constexpr int kPlateauHeight = 542;
inline constexpr int kSquares = 15;
inline constexpr int kPitch = (kPlateauWidth - 2) / kSquares;  // 36

// A tile face (PicGamer, ImgLet, ImgJok, PicTemp).
inline constexpr int kTileWidth = 35;
inline constexpr int kTileHeight = 35;

// The rack strip PicReglette and one place on it (IntPasJeton).
inline constexpr int kRegletteLeft = 575;
inline constexpr int kRegletteTop = 545;
inline constexpr int kRegletteWidth = 255;
inline constexpr int kRegletteHeight = 39;
inline constexpr int kPasJeton = (kRegletteWidth - 3) / 7;  // 36
inline constexpr int kRackPlaces = 7;

// The separator line between the board and the side panel: a tile lies on the
// board side when its right edge is at most here.
inline constexpr int kSeparatorX = 566;

// The tools frame FraTools, unfolded and folded.
inline constexpr int kFraToolsLeft = 16;
inline constexpr int kFraToolsTop = 16;
inline constexpr int kFraToolsWidth = 249;
inline constexpr int kFraToolsHeight = 117;
inline constexpr int kFraToolsFoldedLeft = 0;
inline constexpr int kFraToolsFoldedTop = 0;
inline constexpr int kFraToolsFoldedWidth = 24;
inline constexpr int kFraToolsFoldedHeight = 15;

// The direction arrow ImgXY.
inline constexpr int kImgXYWidth = 41;
inline constexpr int kImgXYHeight = 41;

// Where a tile stands on square (column, row), in window coordinates.
constexpr int SquareLeft(int column) { return kPlateauLeft + kPitch * column + 2; }
constexpr int SquareTop(int row) { return kPlateauTop + kPitch * row + 2; }
// The same inside Plateau1 (how the board picture places its faces).
constexpr int SquareX(int column) { return (kTileWidth + 1) * column + 2; }
constexpr int SquareY(int row) { return (kTileHeight + 1) * row + 2; }

// Where a tile stands on rack place p (0 to 6), in window coordinates.
constexpr int RackLeft(int place) { return kRegletteLeft + kPasJeton * place + 2; }
constexpr int RackTop() { return kRegletteTop + 2; }

}  // namespace ostrane::layout
