#pragma once
// The painters of the board view. Three of them prepare the face of one tile
// in the scratch picture PicTemp, recolouring the dark pixels of a face; and
// DrawGrille paints the board picture and every tile of the engine's grid
// into the visible board. They decide nothing about the game.

#include <QImage>
#include <QRgb>

#include <functional>
#include <string>
#include <string_view>

#include "board_view/faces.h"
#include "game/controls.h"

namespace ostrane::view {

// Colours given to the dark pixels of a face.
inline constexpr QRgb kColourPose = qRgb(0, 75, 255);    // a proposed tile on the board: blue
inline constexpr QRgb kColourLettre = qRgb(0, 0, 0);     // a tile on the rack: black
inline constexpr QRgb kColourBlanc = qRgb(148, 0, 0);    // a blank with its letter: dark red
static_assert(TintColor(TileFace::Tint::Blue) == Color::Rgb(0, 75, 255));
static_assert(TintColor(TileFace::Tint::DarkRed) == Color::Rgb(148, 0, 0));

// The recolouring step: every pixel of the top-left (width - 2) x (height - 2)
// whose red + green + blue is below 528 takes the colour. The last two rows
// and columns keep the tile's edge as drawn.
void RecolourDark(QImage& face, QRgb colour);

class Painters {
 public:
  explicit Painters(const FaceSet& faces = FaceSet::Shared());

  // A lower-case letter: ImgLet of that letter with its dark pixels blue.
  // Anything whose first character is below "a" leaves PicTemp as it was.
  void SubPeintPose(std::string_view strCar);
  // The same in black: a tile on the rack.
  void SubPeintLettre(std::string_view strCar);
  // An upper-case letter: ImgJok of that letter with its dark pixels in dark
  // red. "Nul" shows the "N".
  void SubPeintBlanc(std::string_view strCar);

  const QImage& PicTemp() const { return picTemp_; }
  const FaceSet& Faces() const { return faces_; }

 private:
  void PaintLetter(std::string_view strCar, QRgb colour);
  const FaceSet& faces_;
  QImage picTemp_;
};

// The picture a tile shows, from the model's description of it: the face
// picture, recoloured as the painters do when a tint is given. A face with
// no picture is a null image.
QImage FaceImage(const TileFace& face, const FaceSet& faces = FaceSet::Shared());

// Reads one square of the engine's grid: "" for none, a lower-case letter for
// a tile, an upper-case letter for a blank.
using SquareReader = std::function<std::string(int column, int row)>;

// Where a tile painted on square (column, row) has its left-top corner inside
// the board picture.
inline int SquareX(int column) { return (kFaceSize + 1) * column + 2; }
inline int SquareY(int row) { return (kFaceSize + 1) * row + 2; }

// Repaints the whole of plateau1 (542 by 542): the board picture of the two
// selections on optImage (the first: 1, 2, 3 paint Plateau2, 3, 4; the
// second: 2, 3, 4 paint Plateau2, 3, 4), then every tile of the grid, row by
// row: blanks through SubPeintBlanc, ordinary tiles as ImgLet shows them.
void DrawGrille(QImage& plateau1, int optImage, const SquareReader& subCase, Painters& painters);

}  // namespace ostrane::view
