#include "board_view/painters.h"

#include <QPainter>

#include "lexicon/fatal.h"

namespace ostrane::view {

void RecolourDark(QImage& face, QRgb colour) {
  if (face.format() != QImage::Format_RGB32 && face.format() != QImage::Format_ARGB32)
    face = face.convertToFormat(QImage::Format_RGB32);
  // The edge left as drawn: two logical pixels, in device pixels.
  const int edge = 2 * int(face.devicePixelRatio());
  for (int y = 0; y < face.height() - edge; ++y) {
    auto* line = reinterpret_cast<QRgb*>(face.scanLine(y));
    for (int x = 0; x < face.width() - edge; ++x) {
      const QRgb pixel = line[x];
      if (qRed(pixel) + qGreen(pixel) + qBlue(pixel) < kDarkThreshold) line[x] = colour;
    }
  }
}

Painters::Painters(const FaceSet& faces) : faces_(faces), picTemp_(kFaceSize, kFaceSize, QImage::Format_RGB32) {
  picTemp_.fill(Qt::white);
}

void Painters::PaintLetter(std::string_view strCar, QRgb colour) {
  if (strCar.empty()) FatalIndex("SubPeint", -1);  // no first character to read
  const int code = static_cast<unsigned char>(strCar[0]);
  if (code < 97) return;
  picTemp_ = faces_.ImgLet(code - 97).convertToFormat(QImage::Format_RGB32);
  RecolourDark(picTemp_, colour);
}

void Painters::SubPeintPose(std::string_view strCar) { PaintLetter(strCar, kColourPose); }

void Painters::SubPeintLettre(std::string_view strCar) { PaintLetter(strCar, kColourLettre); }

void Painters::SubPeintBlanc(std::string_view strCar) {
  if (strCar.empty()) FatalIndex("SubPeintBlanc", -1);
  const int code = static_cast<unsigned char>(strCar[0]);
  picTemp_ = faces_.ImgJok(code - 65).convertToFormat(QImage::Format_RGB32);
  RecolourDark(picTemp_, kColourBlanc);
}

QImage FaceImage(const TileFace& face, const FaceSet& faces) {
  QImage image;
  switch (face.picture) {
    case TileFace::Picture::None: return image;
    case TileFace::Picture::ImgLet: image = faces.ImgLet(face.index).convertToFormat(QImage::Format_RGB32); break;
    case TileFace::Picture::ImgJok: image = faces.ImgJok(face.index).convertToFormat(QImage::Format_RGB32); break;
  }
  switch (face.tint) {
    case TileFace::Tint::None: break;
    case TileFace::Tint::Blue: RecolourDark(image, kColourPose); break;
    case TileFace::Tint::Black: RecolourDark(image, kColourLettre); break;
    case TileFace::Tint::DarkRed: RecolourDark(image, kColourBlanc); break;
  }
  return image;
}

void DrawGrille(QImage& plateau1, int optImage, const SquareReader& subCase, Painters& painters) {
  const FaceSet& faces = painters.Faces();
  QPainter p(&plateau1);
  // In logical pixels: plateau1 and the faces may be drawn at a higher
  // resolution (their device pixel ratio), the places stay the same.
  const QRect whole(QPoint(0, 0), plateau1.deviceIndependentSize().toSize());
  // The first selection is the one that paints a board for the value 1; the
  // second is the one the player sees for the values the options offer.
  if (optImage >= 1 && optImage <= 3) p.drawImage(whole, faces.Plateau(optImage + 1));
  if (optImage >= 2 && optImage <= 4) p.drawImage(whole, faces.Plateau(optImage));
  const QSize face = faces.ImgLet(0).deviceIndependentSize().toSize();
  const int w = face.width(), h = face.height();
  for (int row = 0; row <= 14; ++row)
    for (int column = 0; column <= 14; ++column) {
      const std::string square = subCase(column, row);
      if (square.empty()) continue;
      const int code = static_cast<unsigned char>(square[0]);
      const QRect target((w + 1) * column + 2, (h + 1) * row + 2, w, h);
      if (code < 97) {
        painters.SubPeintBlanc(square);
        p.drawImage(target, painters.PicTemp());
      } else {
        p.drawImage(target, faces.ImgLet(code - 97));
      }
    }
}

}  // namespace ostrane::view
