#pragma once
// What every drawing of ostrane-draw shares: fresh images, the DejaVu fonts,
// text placed by its ink, and the one way a failed check ends the program.

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>

class QPainter;

namespace ostrane::draw {

// A pixel whose red, green and blue add up to less than this is "dark": the
// tile painters of the program recolour exactly those pixels.
inline constexpr int kDarkSum = 528;

inline int ColourSum(QRgb pixel) { return qRed(pixel) + qGreen(pixel) + qBlue(pixel); }
inline bool IsDark(QRgb pixel) { return ColourSum(pixel) < kDarkSum; }

// The pictures are drawn for screens of this many device pixels to the
// logical pixel (1, or 2 for high-density screens): every image is made
// Scale() times larger with that device pixel ratio, so drawings keep their
// logical coordinates and come out at the screen's resolution.
void SetScale(int scale);
int Scale();

// A width by height (logical) image, fully transparent, ready for QPainter.
QImage NewImage(int width, int height);

// Sets every device pixel of the image from the colour of the logical pixel
// it lies in: colour(x, y) for logical x, y.
template <class ColourAt>
void FillByPixel(QImage& image, ColourAt colour) {
  const int s = Scale();
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) image.setPixelColor(x, y, colour(x / s, y / s));
}

// A painter with antialiasing on for shapes and text.
void Smooth(QPainter& painter);

// Ends the program with a message when a check fails; after KeepGoing(true)
// it only counts the failure (to look at faulty pictures), see Failures().
void Require(bool ok, const QString& what);
void KeepGoing(bool on);
int Failures();

// Makes the DejaVu faces of the system known to Qt; ends the program if the
// files are missing, since other faces would give other pictures.
void LoadFonts();

enum class Face { SansBold, CondensedBold };
QFont Font(Face face, int pixelSize);

// The rectangle covered by the ink of text drawn with its baseline at (0, 0).
QRectF InkBounds(const QFont& font, const QString& text);

// Draws text so that the centre of its ink falls on centre, the baseline
// rounded to a whole pixel so that hinted glyphs stay sharp.
void DrawCentred(QPainter& painter, const QFont& font, const QString& text, QPointF centre,
                 const QColor& colour);

// A five-pointed star, point upwards.
QPainterPath StarPath(QPointF centre, double outer, double inner);

// Blends two colours: t = 0 gives a, t = 1 gives b.
QColor Mix(const QColor& a, const QColor& b, double t);

}  // namespace ostrane::draw
