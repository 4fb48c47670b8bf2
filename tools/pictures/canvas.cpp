#include "tools/pictures/canvas.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace ostrane::draw {

namespace {

const char* const kFontDir = "/usr/share/fonts/truetype/dejavu/";

struct FaceFile {
  Face face;
  const char* file;
  int weight;
};

const FaceFile kFaces[] = {
    {Face::SansBold, "DejaVuSans-Bold.ttf", QFont::Bold},
    {Face::CondensedBold, "DejaVuSansCondensed-Bold.ttf", QFont::Bold},
};

QString g_families[2];
int g_scale = 1;
bool g_keepGoing = false;
int g_failures = 0;

}  // namespace

void SetScale(int scale) { g_scale = scale; }
int Scale() { return g_scale; }

QImage NewImage(int width, int height) {
  QImage image(width * g_scale, height * g_scale, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(g_scale);
  image.fill(Qt::transparent);
  return image;
}

void Smooth(QPainter& painter) {
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setRenderHint(QPainter::TextAntialiasing, true);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
}

void Require(bool ok, const QString& what) {
  if (ok) return;
  std::fprintf(stderr, "ostrane-draw: %s\n", qPrintable(what));
  ++g_failures;
  if (!g_keepGoing) std::exit(1);
}

void KeepGoing(bool on) { g_keepGoing = on; }
int Failures() { return g_failures; }

void LoadFonts() {
  for (const FaceFile& f : kFaces) {
    const QString path = QString::fromLatin1(kFontDir) + QString::fromLatin1(f.file);
    const int id = QFontDatabase::addApplicationFont(path);
    Require(id >= 0, QStringLiteral("cannot load the font ") + path);
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    Require(!families.isEmpty(), QStringLiteral("no family in ") + path);
    g_families[int(f.face)] = families.front();
  }
}

QFont Font(Face face, int pixelSize) {
  const FaceFile& f = kFaces[int(face)];
  QFont font(g_families[int(face)]);
  font.setPixelSize(pixelSize);
  font.setWeight(QFont::Weight(f.weight));
  if (face == Face::CondensedBold) font.setStretch(QFont::Condensed);
  font.setKerning(true);
  font.setStyleStrategy(
      QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias | QFont::NoFontMerging));
  font.setHintingPreference(QFont::PreferFullHinting);
  return font;
}

QRectF InkBounds(const QFont& font, const QString& text) {
  // Measured on the pixels that drawText really covers (hinting included),
  // with the baseline at (0, 0).
  const int margin = 4 * font.pixelSize() + 8;
  QImage scratch = NewImage(margin * 2 + 4 * font.pixelSize() * int(text.size()), margin * 2);
  QPainter painter(&scratch);
  Smooth(painter);
  painter.setFont(font);
  painter.setPen(Qt::black);
  painter.drawText(QPointF(margin, margin), text);
  painter.end();
  int left = scratch.width(), right = -1, top = scratch.height(), bottom = -1;
  for (int y = 0; y < scratch.height(); ++y)
    for (int x = 0; x < scratch.width(); ++x)
      if (qAlpha(scratch.pixel(x, y)) > 0) {
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
      }
  Require(right >= 0, QStringLiteral("no ink for the text ") + text);
  // Device pixel x covers [x, x + 1) / scale in logical units.
  const double s = g_scale;
  return QRectF(left / s - margin, top / s - margin, (right - left + 1) / s, (bottom - top + 1) / s);
}

void DrawCentred(QPainter& painter, const QFont& font, const QString& text, QPointF centre,
                 const QColor& colour) {
  const QRectF ink = InkBounds(font, text);
  // The baseline on a whole device pixel.
  const double x = std::round((centre.x() - ink.center().x()) * g_scale) / g_scale;
  const double y = std::round((centre.y() - ink.center().y()) * g_scale) / g_scale;
  painter.setFont(font);
  painter.setPen(colour);
  painter.drawText(QPointF(x, y), text);
}

QPainterPath StarPath(QPointF centre, double outer, double inner) {
  QPainterPath path;
  for (int k = 0; k < 10; ++k) {
    const double r = (k % 2 == 0) ? outer : inner;
    const double a = -M_PI / 2 + k * M_PI / 5;
    const QPointF point(centre.x() + r * std::cos(a), centre.y() + r * std::sin(a));
    if (k == 0)
      path.moveTo(point);
    else
      path.lineTo(point);
  }
  path.closeSubpath();
  return path;
}

QColor Mix(const QColor& a, const QColor& b, double t) {
  auto lerp = [t](int p, int q) { return int(std::lround(p + (q - p) * t)); };
  return QColor(lerp(a.red(), b.red()), lerp(a.green(), b.green()), lerp(a.blue(), b.blue()),
                lerp(a.alpha(), b.alpha()));
}

}  // namespace ostrane::draw
