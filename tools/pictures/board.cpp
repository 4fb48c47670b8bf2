#include "tools/pictures/board.h"

#include <QPainter>
#include <QPainterPath>
#include <array>
#include <cmath>

#include "tools/pictures/canvas.h"

namespace ostrane::draw {

namespace {

// The premium squares, row 0 first; the n-th character is column n - 1.
constexpr std::array<const char*, kSquares> kPremiums = {
    "400100040001004", "030002000200030", "003000101000300", "100300010003001", "000030000030000",
    "020002000200020", "001000101000100", "400100030001004", "001000101000100", "020002000200020",
    "000030000030000", "100300010003001", "003000101000300", "030002000200030", "400100040001004"};

struct Palette {
  QColor line;                 // grid lines and the outer edge
  std::array<QColor, 5> fill;  // by premium code
  std::array<QColor, 5> ink;   // label colour by premium code
  QColor star;                 // the centre star
  QColor starEdge;
  int bevel;     // 0 flat, else width of the bevel in pixels
  double shade;  // strength of the soft gradient on flat squares
};

Palette PaletteOf(BoardStyle style) {
  switch (style) {
    case BoardStyle::Classique:
      return {QColor(0xe4, 0xea, 0xd8),
              {QColor(0x2f, 0x7d, 0x5c), QColor(0xa8, 0xd8, 0xf0), QColor(0x1f, 0x5c, 0xb4),
               QColor(0xf6, 0xb3, 0xbd), QColor(0xd4, 0x2a, 0x2a)},
              {QColor(), QColor(0x0b, 0x3a, 0x6a), QColor(0xff, 0xff, 0xff), QColor(0x7d, 0x10, 0x2c),
               QColor(0xff, 0xff, 0xff)},
              QColor(0xc8, 0x1e, 0x4a),
              QColor(0x7d, 0x10, 0x2c),
              0,
              0.06};
    case BoardStyle::Chocolat:
      return {QColor(0x3a, 0x21, 0x13),
              {QColor(0x8e, 0x5b, 0x3a), QColor(0xe2, 0xbc, 0x86), QColor(0x4c, 0x2a, 0x18),
               QColor(0xe6, 0xa8, 0x98), QColor(0x8c, 0x1f, 0x22)},
              {QColor(), QColor(0x4a, 0x28, 0x14), QColor(0xf3, 0xd3, 0x9c), QColor(0x6e, 0x1a, 0x1e),
               QColor(0xfb, 0xe8, 0xd0)},
              QColor(0x8c, 0x1f, 0x22),
              QColor(0x4a, 0x10, 0x12),
              0,
              0.10};
    case BoardStyle::Relief:
      return {QColor(0x27, 0x30, 0x31),
              {QColor(0x6b, 0x8a, 0x88), QColor(0x92, 0xc8, 0xe4), QColor(0x2e, 0x5c, 0xa8),
               QColor(0xec, 0xa0, 0x92), QColor(0xc4, 0x34, 0x2e)},
              {QColor(), QColor(0x0e, 0x36, 0x5e), QColor(0xff, 0xff, 0xff), QColor(0x78, 0x18, 0x16),
               QColor(0xff, 0xff, 0xff)},
              QColor(0xc4, 0x34, 0x2e),
              QColor(0x6a, 0x14, 0x12),
              2,
              0.0};
  }
  return {};
}

// Colour of pixel (i, j) of a square face of kTileSize pixels.
QColor FacePixel(const Palette& p, const QColor& base, int i, int j) {
  const int last = kTileSize - 1;
  if (p.bevel > 0) {
    const int depth = std::min(std::min(i, j), std::min(last - i, last - j));
    if (depth < p.bevel) {
      // Top and left edges catch the light, bottom and right ones are in
      // shadow; the corners are cut along their diagonal.
      const bool lit = std::min(i, j) < std::min(last - i, last - j);
      const double strength = 0.5 - 0.12 * depth;
      return lit ? Mix(base, Qt::white, strength) : Mix(base, Qt::black, strength * 0.8);
    }
    return base;
  }
  // Flat squares: a faint light from the top left.
  const double t = (double(i) + double(j)) / double(2 * last);  // 0 top left .. 1 bottom right
  return t < 0.5 ? Mix(base, Qt::white, p.shade * (0.5 - t) * 2)
                 : Mix(base, Qt::black, p.shade * (t - 0.5) * 2);
}

void DrawLabel(QPainter& painter, const Palette& p, char code, QPointF topLeft) {
  const bool word = code == '3' || code == '4';
  const QString head = word ? QStringLiteral("MOT") : QStringLiteral("LETTRE");
  const QString times = (code == '1' || code == '3') ? QStringLiteral("×2") : QStringLiteral("×3");
  const QColor ink = p.ink[code - '0'];
  // The head word as large as it fits on the flat of the square, a pixel
  // from its edges.
  const int room = kTileSize - 2 * std::max(p.bevel, 1);
  QFont headFont = Font(Face::CondensedBold, word ? 10 : 9);
  while (InkBounds(headFont, head).width() > room && headFont.pixelSize() > 7)
    headFont = Font(Face::CondensedBold, headFont.pixelSize() - 1);
  Require(InkBounds(headFont, head).width() <= room, QStringLiteral("a premium label is too wide"));
  const QFont timesFont = Font(Face::SansBold, 14);
  const double cx = topLeft.x() + kTileSize / 2.0;
  const QPointF headCentre(cx, topLeft.y() + 10.5);
  const QPointF timesCentre(cx, topLeft.y() + 24.0);
  if (p.bevel > 0) {
    // The large figure is engraved: an edge under its ink. The head word is
    // too small for it.
    const QColor glow = Mix(p.fill[code - '0'], Qt::white, 0.35);
    const QColor deep = Mix(p.fill[code - '0'], Qt::black, 0.45);
    const bool darkInk = ink.lightness() < 128;
    const QColor under = darkInk ? glow : deep;
    DrawCentred(painter, timesFont, times, timesCentre + QPointF(1, 1), under);
  }
  DrawCentred(painter, headFont, head, headCentre, ink);
  DrawCentred(painter, timesFont, times, timesCentre, ink);
}

}  // namespace

char PremiumCode(int column, int row) { return kPremiums[row][column]; }

QImage DrawBoard(BoardStyle style) {
  const Palette p = PaletteOf(style);
  QImage board = NewImage(kBoardSize, kBoardSize);
  FillByPixel(board, [&](int x, int y) {
    // Grid lines every kPitch pixels; a square's face from 2 to kPitch within.
    const int column = (x - 2) / kPitch, row = (y - 2) / kPitch;
    const int i = x - 2 - kPitch * column, j = y - 2 - kPitch * row;
    if (x < 2 || y < 2 || column >= kSquares || row >= kSquares || i >= kTileSize || j >= kTileSize)
      return p.line;
    return FacePixel(p, p.fill[PremiumCode(column, row) - '0'], i, j);
  });
  QPainter painter(&board);
  Smooth(painter);
  for (int row = 0; row < kSquares; ++row) {
    for (int column = 0; column < kSquares; ++column) {
      const char code = PremiumCode(column, row);
      if (code == '0') continue;
      const QPointF topLeft(kPitch * column + 2, kPitch * row + 2);
      if (column == 7 && row == 7) {
        const QPointF centre = topLeft + QPointF(kTileSize / 2.0, kTileSize / 2.0 + 0.5);
        const QPainterPath star = StarPath(centre, 14.0, 5.8);
        if (p.bevel > 0) painter.fillPath(star.translated(1, 1), Mix(p.fill[3], Qt::white, 0.4));
        painter.fillPath(star, p.star);
        painter.setPen(QPen(p.starEdge, 1.0));
        painter.drawPath(star);
        continue;
      }
      DrawLabel(painter, p, code, topLeft);
    }
  }
  painter.end();
  return board;
}

void CheckBoard(const QImage& board, const QString& name) {
  const int s = Scale();
  Require(board.width() == kBoardSize * s && board.height() == kBoardSize * s, name + ": wrong size");
  // The corner pixel (2, 2) of each face carries only the square's colour.
  std::array<QRgb, 5> seen{};
  std::array<bool, 5> known{};
  for (int row = 0; row < kSquares; ++row) {
    for (int column = 0; column < kSquares; ++column) {
      const int code = PremiumCode(column, row) - '0';
      const QRgb pixel = board.pixel((kPitch * column + 4) * s, (kPitch * row + 4) * s);
      if (!known[code]) {
        known[code] = true;
        seen[code] = pixel;
      }
      Require(seen[code] == pixel, name + ": squares of one premium differ");
    }
  }
  for (int a = 0; a < 5; ++a)
    for (int b = a + 1; b < 5; ++b) Require(seen[a] != seen[b], name + ": two premiums share a colour");
}

}  // namespace ostrane::draw
