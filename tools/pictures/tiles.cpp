#include "tools/pictures/tiles.h"

#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
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
  QImage face = NewImage(kFaceSize, kFaceSize);
  const int last = kFaceSize - 1;
  FillByPixel(face, [&](int x, int y) {
    {
      QColor c = Mix(kGroundTop, kGroundBottom, double(y) / double(kTestedSize - 1));
      // A lit top and left edge, a shadow edge right and below; the shadow is
      // in the two rows and columns that the painters never touch.
      if (x == 0 || y == 0) c = QColor(255, 254, 247);
      if (x == 1 || y == 1) c = Mix(c, Qt::white, 0.5);
      if (x == last - 1 || y == last - 1) c = QColor(214, 200, 166);
      if (x == last || y == last) c = QColor(166, 146, 108);
      if ((x >= last - 1 && y <= 1) || (y >= last - 1 && x <= 1)) c = QColor(226, 214, 184);
      if (x >= last - 1 && y >= last - 1) c = QColor(150, 130, 94);
      return c;
    }
  });
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
  for (int y = 1; y < mark.height() - 1; ++y)
    for (int x = 1; x < mark.width() - 1; ++x) {
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
  // In device pixels: the tested part, the whole face, an area's factor.
  const int s = Scale(), tested = kTestedSize * s, size = kFaceSize * s, area = s * s;
  for (int y = 0; y < tested; ++y)
    for (int x = 0; x < tested; ++x)
      Require(!IsDark(ground.pixel(x, y)), name + ": the ground is dark at some pixel");
  for (const QImage* ink : {&letter, &mark}) {
    if (ink->isNull()) continue;
    for (int y = 0; y < size; ++y)
      for (int x = 0; x < size; ++x) {
        const int alpha = qAlpha(ink->pixel(x, y));
        if (x >= tested || y >= tested)
          Require(alpha == 0,
                  name + QStringLiteral(": ink reaches the edge that is never recoloured at (%1, %2)")
                             .arg(x)
                             .arg(y));
        else if (alpha >= 160)
          Require(IsDark(face.pixel(x, y)), name + ": ink too light to be recoloured");
      }
  }
  int dark = 0;
  for (int y = 0; y < tested; ++y)
    for (int x = 0; x < tested; ++x)
      if (IsDark(face.pixel(x, y))) ++dark;
  Require(dark >= 40 * area && dark <= 500 * area, name + ": unlikely count of dark pixels");
  Require(CountWhere(letter, 160) >= 35 * area, name + ": the letter is too small");
  if (mark.isNull()) return;
  Require(CountWhere(mark, 160) >= 5 * area, name + ": the corner mark is too small");
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
  const int tested = kTestedSize * Scale();
  for (int y = 0; y < tested; ++y)
    for (int x = 0; x < tested; ++x)
      Require(!IsDark(face.pixel(x, y)), QStringLiteral("let_blank: a pixel would be recoloured"));
  Require(CountWhere(body, 160) >= 35 * Scale() * Scale(), QStringLiteral("let_blank: the mark is too small"));
  return face;
}

QImage DrawEmptySlot() {
  QImage slot = NewImage(kFaceSize, kFaceSize);
  const int last = kFaceSize - 1;
  const QColor hollow(212, 206, 190);
  FillByPixel(slot, [&](int x, int y) {
    {
      // Sunken: shadow on the top and left, light on the bottom and right.
      const int depth = std::min(std::min(x, y), std::min(last - x, last - y));
      QColor c = Mix(hollow, Qt::black, 0.04 * (1.0 - double(y) / last));
      if (depth < 2) {
        const bool shaded = std::min(x, y) < std::min(last - x, last - y);
        c = shaded ? Mix(hollow, Qt::black, depth == 0 ? 0.38 : 0.2)
                   : Mix(hollow, Qt::white, depth == 0 ? 0.75 : 0.45);
      }
      return c;
    }
  });
  // A faint dashed outline shows where the tile will go.
  QPainter painter(&slot);
  QPen pen(Mix(hollow, Qt::black, 0.18), 1.0, Qt::DashLine);
  pen.setDashPattern({2.0, 2.0});
  painter.setPen(pen);
  painter.drawRect(QRectF(5.5, 5.5, 23.0, 23.0));
  painter.end();
  return slot;
}

namespace {

const QRectF kIconTile(5, 4, 53, 53);
const QColor kIconInk(0x1c, 0x18, 0x14);
const QColor kIconGroundTop(255, 251, 238), kIconGroundBottom(234, 222, 192);
const QColor kIconEdge(150, 128, 90), kIconInnerEdge(255, 255, 250);

// The icon on its 64 by 64 grid, whatever the painter's scale.
void PaintAppIcon(QPainter& painter) {
  Smooth(painter);
  const QRectF tile = kIconTile;
  painter.setPen(Qt::NoPen);
  // Soft shadow below and right.
  for (int k = 3; k >= 1; --k) {
    painter.setBrush(QColor(0, 0, 0, 28));
    painter.drawRoundedRect(tile.translated(k, k), 9, 9);
  }
  QLinearGradient ground(tile.topLeft(), tile.bottomRight());
  ground.setColorAt(0.0, kIconGroundTop);
  ground.setColorAt(1.0, kIconGroundBottom);
  painter.setBrush(ground);
  painter.setPen(QPen(kIconEdge, 1.5));
  painter.drawRoundedRect(tile, 9, 9);
  painter.setPen(QPen(kIconInnerEdge, 1.0));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(tile.adjusted(2, 2, -2, -2), 7, 7);
  DrawCentred(painter, Font(Face::SansBold, 38), QStringLiteral("O"), QPointF(29.0, 29.0), kIconInk);
  const QFont small = Font(Face::CondensedBold, 13);
  DrawCentred(painter, small, QStringLiteral("1"), QPointF(49.0, 48.0), kIconInk);
}

QString Number(double value) { return QString::number(value, 'f', 2).remove(QRegularExpression("\\.?0+$")); }

// SVG path data of a path: moves, lines and cubic curves.
QString PathData(const QPainterPath& path) {
  QString d;
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPainterPath::Element e = path.elementAt(i);
    switch (e.type) {
      case QPainterPath::MoveToElement:
        if (!d.isEmpty()) d += QLatin1Char('Z');
        d += QStringLiteral("M%1 %2").arg(Number(e.x), Number(e.y)); break;
      case QPainterPath::LineToElement: d += QStringLiteral("L%1 %2").arg(Number(e.x), Number(e.y)); break;
      case QPainterPath::CurveToElement: {
        const QPainterPath::Element b = path.elementAt(i + 1), c = path.elementAt(i + 2);
        d += QStringLiteral("C%1 %2 %3 %4 %5 %6")
                 .arg(Number(e.x), Number(e.y), Number(b.x), Number(b.y), Number(c.x), Number(c.y));
        i += 2;
        break;
      }
      case QPainterPath::CurveToDataElement: break;
    }
  }
  return d + QLatin1Char('Z');
}

// The outline of text, its ink's centre on centre.
QPainterPath TextOutline(const QFont& font, const QString& text, QPointF centre) {
  QPainterPath path;
  path.addText(QPointF(0, 0), font, text);
  return path.translated(centre - path.boundingRect().center());
}

}  // namespace

QImage DrawAppIcon() {
  QImage icon = NewImage(64, 64);
  QPainter painter(&icon);
  PaintAppIcon(painter);
  painter.end();
  return icon;
}

QImage DrawAppIconAt(int pixels) {
  QImage icon(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  icon.fill(Qt::transparent);
  QPainter painter(&icon);
  painter.scale(pixels / 64.0, pixels / 64.0);
  PaintAppIcon(painter);
  painter.end();
  return icon;
}

QString AppIconSvg() {
  auto colour = [](const QColor& c) { return c.name(QColor::HexRgb); };
  const QRectF t = kIconTile, inner = kIconTile.adjusted(2, 2, -2, -2);
  QString svg = QStringLiteral(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"64\" height=\"64\" viewBox=\"0 0 64 64\">\n"
      "  <title>Ostrane</title>\n"
      "  <defs>\n"
      "    <linearGradient id=\"ground\" x1=\"%1\" y1=\"%2\" x2=\"%3\" y2=\"%4\" gradientUnits=\"userSpaceOnUse\">\n"
      "      <stop offset=\"0\" stop-color=\"%5\"/>\n"
      "      <stop offset=\"1\" stop-color=\"%6\"/>\n"
      "    </linearGradient>\n"
      "  </defs>\n")
                    .arg(Number(t.left()), Number(t.top()), Number(t.right()), Number(t.bottom()),
                         colour(kIconGroundTop), colour(kIconGroundBottom));
  for (int k = 3; k >= 1; --k)
    svg += QStringLiteral("  <rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" rx=\"9\" fill=\"#000000\" "
                          "fill-opacity=\"0.11\"/>\n")
               .arg(Number(t.left() + k), Number(t.top() + k), Number(t.width()), Number(t.height()));
  svg += QStringLiteral("  <rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" rx=\"9\" fill=\"url(#ground)\" "
                        "stroke=\"%5\" stroke-width=\"1.5\"/>\n")
             .arg(Number(t.left()), Number(t.top()), Number(t.width()), Number(t.height()), colour(kIconEdge));
  svg += QStringLiteral("  <rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" rx=\"7\" fill=\"none\" "
                        "stroke=\"%5\" stroke-width=\"1\"/>\n")
             .arg(Number(inner.left()), Number(inner.top()), Number(inner.width()), Number(inner.height()),
                  colour(kIconInnerEdge));
  const QPainterPath letter = TextOutline(Font(Face::SansBold, 38), QStringLiteral("O"), QPointF(29.0, 29.0));
  const QPainterPath value = TextOutline(Font(Face::CondensedBold, 13), QStringLiteral("1"), QPointF(49.0, 48.0));
  svg += QStringLiteral("  <path fill=\"%1\" fill-rule=\"evenodd\" d=\"%2\"/>\n").arg(colour(kIconInk), PathData(letter));
  svg += QStringLiteral("  <path fill=\"%1\" fill-rule=\"evenodd\" d=\"%2\"/>\n").arg(colour(kIconInk), PathData(value));
  return svg + QStringLiteral("</svg>\n");
}

QImage Recoloured(const QImage& face, const QColor& colour) {
  QImage out = face.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  const int edge = 2 * int(face.devicePixelRatio());  // the rows and columns left as drawn
  for (int y = 0; y < face.height() - edge; ++y)
    for (int x = 0; x < face.width() - edge; ++x)
      if (IsDark(out.pixel(x, y))) out.setPixelColor(x, y, colour);
  return out;
}

}  // namespace ostrane::draw
