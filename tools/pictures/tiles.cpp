#include "tools/pictures/tiles.h"

#include <QPainter>
#include <QPainterPath>
#include <array>
#include <cmath>

#include "tools/pictures/canvas.h"

namespace ostrane::draw {

namespace {

constexpr std::array<int, 26> kPoints = {1, 3, 3, 2, 1, 4, 2, 4, 1, 8,  10, 1,  2,
                                         1, 1, 3, 8, 1, 1, 1, 1, 4, 10, 10, 10, 10};

const QColor kInk(0x1c, 0x18, 0x14);
const QColor kGroundTop(252, 248, 234);
const QColor kGroundBottom(240, 231, 206);

// Where the letters sit: the centre of a capital's ink, the value's corner.
constexpr double kLetterCentreX = 15.0;
constexpr double kLetterCentreY = 15.0;
constexpr int kValueRight = 31;     // last column of the value's ink
constexpr int kValueBaseline = 31;  // last row of the value's ink
constexpr int kLetterPixels = 24;

QImage Ground() {
  QImage face(kFaceSize, kFaceSize, QImage::Format_ARGB32_Premultiplied);
  const int last = kFaceSize - 1;
  for (int y = 0; y < kFaceSize; ++y) {
    const QColor row = Mix(kGroundTop, kGroundBottom, double(y) / double(kTestedSize - 1));
    for (int x = 0; x < kFaceSize; ++x) {
      QColor c = row;
      // A lit top and left edge, a shadow edge right and below; the shadow is
      // in the two rows and columns that the painters never touch.
      if (x == 0 || y == 0) c = QColor(255, 254, 247);
      if (x == 1 || y == 1) c = Mix(c, Qt::white, 0.5);
      if (x == last - 1 || y == last - 1) c = QColor(214, 200, 166);
      if (x == last || y == last) c = QColor(166, 146, 108);
      if ((x >= last - 1 && y <= 1) || (y >= last - 1 && x <= 1)) c = QColor(226, 214, 184);
      if (x >= last - 1 && y >= last - 1) c = QColor(150, 130, 94);
      face.setPixelColor(x, y, c);
    }
  }
  return face;
}

QFont ValueFont() { return Font(Face::CondensedBold, 10); }

// The capital's ink, centred horizontally on its own ink and vertically on
// the height of a capital, so that letters with a tail (J, Q) keep the line.
QImage LetterInk(QChar letter, const QColor& colour, int pixels = kLetterPixels, int shiftX = 0,
                 int shiftY = 0) {
  QImage ink = NewImage(kFaceSize, kFaceSize);
  const QFont font = Font(Face::SansBold, pixels);
  const QRectF cap = InkBounds(font, QStringLiteral("H"));
  const QRectF own = InkBounds(font, QString(letter));
  const double x = std::round(kLetterCentreX - own.center().x()) + shiftX;
  const double y = std::round(kLetterCentreY - cap.center().y()) + shiftY;
  QPainter painter(&ink);
  Smooth(painter);
  painter.setFont(font);
  painter.setPen(colour);
  painter.drawText(QPointF(x, y), QString(letter));
  return ink;
}

QImage ValueInk(int points) {
  QImage ink = NewImage(kFaceSize, kFaceSize);
  const QFont font = ValueFont();
  const QString text = QString::number(points);
  const QRectF own = InkBounds(font, text);
  const double x = std::round(kValueRight + 1 - own.right());
  const double y = std::round(kValueBaseline + 1 - own.bottom());
  QPainter painter(&ink);
  Smooth(painter);
  painter.setFont(font);
  painter.setPen(kInk);
  painter.drawText(QPointF(x, y), text);
  return ink;
}

QImage StarInk() {
  QImage ink = NewImage(kFaceSize, kFaceSize);
  QPainter painter(&ink);
  Smooth(painter);
  painter.fillPath(StarPath(QPointF(28.0, 27.5), 4.2, 1.8), kInk);
  return ink;
}

QImage Compose(const QImage& ground, const QImage& a, const QImage& b) {
  QImage face = ground;
  QPainter painter(&face);
  painter.drawImage(0, 0, a);
  if (!b.isNull()) painter.drawImage(0, 0, b);
  painter.end();
  return face;
}

// True when no visible pixel of the mark has a visible pixel of the letter on
// it or next to it.
bool KeepsClear(const QImage& letter, const QImage& mark) {
  for (int y = 1; y < kFaceSize - 1; ++y)
    for (int x = 1; x < kFaceSize - 1; ++x) {
      if (qAlpha(mark.pixel(x, y)) < 48) continue;
      for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
          if (qAlpha(letter.pixel(x + dx, y + dy)) >= 48) return false;
    }
  return true;
}

int CountWhere(const QImage& image, int minAlpha) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) >= minAlpha) ++count;
  return count;
}

// Checks of one face made of a ground, the letter's ink and a mark's ink (the
// value or the star; may be null).
void CheckFace(const QString& name, const QImage& ground, const QImage& letter, const QImage& mark) {
  const QImage face = Compose(ground, letter, mark);
  for (int y = 0; y < kTestedSize; ++y)
    for (int x = 0; x < kTestedSize; ++x)
      Require(!IsDark(ground.pixel(x, y)), name + ": the ground is dark at some pixel");
  for (const QImage* ink : {&letter, &mark}) {
    if (ink->isNull()) continue;
    for (int y = 0; y < kFaceSize; ++y)
      for (int x = 0; x < kFaceSize; ++x) {
        const int alpha = qAlpha(ink->pixel(x, y));
        if (x >= kTestedSize || y >= kTestedSize)
          Require(alpha == 0,
                  name + QStringLiteral(": ink reaches the edge that is never recoloured at (%1, %2)")
                             .arg(x)
                             .arg(y));
        else if (alpha >= 160)
          Require(IsDark(face.pixel(x, y)), name + ": ink too light to be recoloured");
      }
  }
  int dark = 0;
  for (int y = 0; y < kTestedSize; ++y)
    for (int x = 0; x < kTestedSize; ++x)
      if (IsDark(face.pixel(x, y))) ++dark;
  Require(dark >= 40 && dark <= 500, name + ": unlikely count of dark pixels");
  Require(CountWhere(letter, 160) >= 35, name + ": the letter is too small");
  if (mark.isNull()) return;
  Require(CountWhere(mark, 160) >= 5, name + ": the corner mark is too small");
  Require(KeepsClear(letter, mark), name + ": the letter runs into its corner mark");
}

// The letter for a face with a corner mark: centred if it keeps clear of the
// mark, else moved a little left and up, and last made a size smaller (the
// wide letters worth 10).
QImage FittedLetter(QChar letter, const QImage& mark) {
  struct Try {
    int pixels, dx, dy;
  };
  constexpr Try kTries[] = {{kLetterPixels, 0, 0},       {kLetterPixels, -1, 0},
                            {kLetterPixels, -1, -1},     {kLetterPixels - 1, -1, 0},
                            {kLetterPixels - 1, -1, -1}, {kLetterPixels - 2, -1, -1},
                            {kLetterPixels - 2, -2, -1}};
  for (const Try& t : kTries) {
    QImage ink = LetterInk(letter, kInk, t.pixels, t.dx, t.dy);
    if (KeepsClear(ink, mark)) return ink;
  }
  return LetterInk(letter, kInk);  // the check of the face reports it
}
}  // namespace

int LetterPoints(char letter) { return kPoints[letter - 'a']; }

QImage DrawLetterFace(char letter) {
  const QImage ground = Ground();
  const QImage value = ValueInk(LetterPoints(letter));
  const QImage glyph = FittedLetter(QChar(letter).toUpper(), value);
  CheckFace(QStringLiteral("let_") + QChar(letter), ground, glyph, value);
  return Compose(ground, glyph, value);
}

QImage DrawJokerFace(char letter) {
  const QImage ground = Ground();
  const QImage star = StarInk();
  const QImage glyph = FittedLetter(QChar(letter).toUpper(), star);
  CheckFace(QStringLiteral("jok_") + QChar(letter), ground, glyph, star);
  return Compose(ground, glyph, star);
}

QImage DrawBlankFace() {
  const QImage ground = Ground();
  // A "?" pressed into the face: a light edge below and right, a tan body.
  const QImage edge = LetterInk(QLatin1Char('?'), QColor(255, 255, 252));
  const QImage body = LetterInk(QLatin1Char('?'), QColor(204, 188, 152));
  QImage face = ground;
  QPainter painter(&face);
  painter.drawImage(1, 1, edge);
  painter.drawImage(0, 0, body);
  painter.end();
  for (int y = 0; y < kTestedSize; ++y)
    for (int x = 0; x < kTestedSize; ++x)
      Require(!IsDark(face.pixel(x, y)), QStringLiteral("let_blank: a pixel would be recoloured"));
  Require(CountWhere(body, 160) >= 35, QStringLiteral("let_blank: the mark is too small"));
  return face;
}

QImage DrawEmptySlot() {
  QImage slot(kFaceSize, kFaceSize, QImage::Format_ARGB32_Premultiplied);
  const int last = kFaceSize - 1;
  const QColor hollow(212, 206, 190);
  for (int y = 0; y < kFaceSize; ++y)
    for (int x = 0; x < kFaceSize; ++x) {
      // Sunken: shadow on the top and left, light on the bottom and right.
      const int depth = std::min(std::min(x, y), std::min(last - x, last - y));
      QColor c = Mix(hollow, Qt::black, 0.04 * (1.0 - double(y) / last));
      if (depth < 2) {
        const bool shaded = std::min(x, y) < std::min(last - x, last - y);
        c = shaded ? Mix(hollow, Qt::black, depth == 0 ? 0.38 : 0.2)
                   : Mix(hollow, Qt::white, depth == 0 ? 0.75 : 0.45);
      }
      slot.setPixelColor(x, y, c);
    }
  // A faint dashed outline shows where the tile will go.
  QPainter painter(&slot);
  QPen pen(Mix(hollow, Qt::black, 0.18), 1.0, Qt::DashLine);
  pen.setDashPattern({2.0, 2.0});
  painter.setPen(pen);
  painter.drawRect(QRectF(5.5, 5.5, 23.0, 23.0));
  painter.end();
  return slot;
}

QImage DrawAppIcon() {
  QImage icon = NewImage(64, 64);
  QPainter painter(&icon);
  Smooth(painter);
  const QRectF tile(5, 4, 53, 53);
  painter.setPen(Qt::NoPen);
  // Soft shadow below and right.
  for (int k = 3; k >= 1; --k) {
    painter.setBrush(QColor(0, 0, 0, 28));
    painter.drawRoundedRect(tile.translated(k, k), 9, 9);
  }
  QLinearGradient ground(tile.topLeft(), tile.bottomRight());
  ground.setColorAt(0.0, QColor(255, 251, 238));
  ground.setColorAt(1.0, QColor(234, 222, 192));
  painter.setBrush(ground);
  painter.setPen(QPen(QColor(150, 128, 90), 1.5));
  painter.drawRoundedRect(tile, 9, 9);
  painter.setPen(QPen(QColor(255, 255, 250), 1.0));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(tile.adjusted(2, 2, -2, -2), 7, 7);
  DrawCentred(painter, Font(Face::SansBold, 38), QStringLiteral("O"), QPointF(29.0, 29.0),
              QColor(0x1c, 0x18, 0x14));
  const QFont small = Font(Face::CondensedBold, 13);
  DrawCentred(painter, small, QStringLiteral("1"), QPointF(49.0, 48.0), QColor(0x1c, 0x18, 0x14));
  painter.end();
  return icon;
}

QImage Recoloured(const QImage& face, const QColor& colour) {
  QImage out = face.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y <= face.height() - 3; ++y)
    for (int x = 0; x <= face.width() - 3; ++x)
      if (IsDark(out.pixel(x, y))) out.setPixelColor(x, y, colour);
  return out;
}

}  // namespace ostrane::draw
