#include "tools/pictures/sheet.h"

#include <QDir>
#include <QPainter>

#include "tools/pictures/board.h"
#include "tools/pictures/canvas.h"
#include "tools/pictures/icons.h"
#include "tools/pictures/tiles.h"

namespace ostrane::draw {

namespace {

const QColor kProposed(0, 75, 255);
const QColor kRack(0, 0, 0);
const QColor kBlank(148, 0, 0);
const QColor kPanel(236, 233, 226);

QImage Scaled(const QImage& image, int factor) {
  return image.scaled(image.width() * factor, image.height() * factor, Qt::IgnoreAspectRatio,
                      Qt::FastTransformation);
}

void Save(const QImage& image, const QString& path) {
  Require(image.save(path, "PNG"), QStringLiteral("cannot write ") + path);
}

// A board as the window shows it: a few words laid, a proposal in blue, a
// blank in dark red, the arrow on the first square of the proposal.
QImage BoardInPlay(BoardStyle style) {
  QImage board = DrawBoard(style);
  QPainter painter(&board);
  auto at = [](int column, int row) { return QPoint(kPitch * column + 2, kPitch * row + 2); };
  const char* laid = "tablinor";
  for (int i = 0; laid[i]; ++i) painter.drawImage(at(4 + i, 7), DrawLetterFace(laid[i]));
  painter.drawImage(at(6, 6), DrawLetterFace('q'));
  painter.drawImage(at(6, 8), Recoloured(DrawJokerFace('E'), kBlank));
  const char* proposed = "jeux";
  for (int i = 0; proposed[i]; ++i)
    painter.drawImage(at(9, 8 + i), Recoloured(DrawLetterFace(proposed[i]), kProposed));
  painter.drawImage(at(9, 8) + QPoint(17 - 20, 17 - 20 + 1), DrawArrow(true));
  painter.drawImage(at(1, 3) + QPoint(17 - 20, 17 - 20 + 1), DrawArrow(false));
  painter.end();
  return board;
}

QImage Faces() {
  const int factor = 3, cell = kFaceSize * factor + 6, perRow = 13;
  QImage sheet(perRow * cell + 6, 9 * cell + 6, QImage::Format_ARGB32_Premultiplied);
  sheet.fill(kPanel);
  QPainter painter(&sheet);
  auto put = [&](int index, int line, const QImage& face) {
    painter.drawImage(6 + (index % perRow) * cell, 6 + (line + index / perRow) * cell, Scaled(face, factor));
  };
  for (int i = 0; i < 26; ++i) {
    put(i, 0, DrawLetterFace(char('a' + i)));
    put(i, 2, DrawJokerFace(char('A' + i)));
    put(i, 4, Recoloured(DrawLetterFace(char('a' + i)), i % 2 ? kRack : kProposed));
    put(i, 6, Recoloured(DrawJokerFace(char('A' + i)), kBlank));
  }
  put(0, 8, DrawBlankFace());
  put(1, 8, DrawEmptySlot());
  put(2, 8, Recoloured(DrawBlankFace(), kProposed));
  painter.end();
  return sheet;
}

QImage Smalls() {
  const int factor = 4;
  QImage sheet(1500, 480, QImage::Format_ARGB32_Premultiplied);
  sheet.fill(kPanel);
  QPainter painter(&sheet);
  int x = 8;
  auto put = [&](const QImage& image, const QColor& back) {
    const QImage big = Scaled(image, factor);
    painter.fillRect(QRect(x - 2, 6, big.width() + 4, big.height() + 4), back);
    painter.drawImage(x, 8, big);
    x += big.width() + 12;
  };
  put(DrawArrow(false), QColor(0xd4, 0x2a, 0x2a));
  put(DrawArrow(true), QColor(0xa8, 0xd8, 0xf0));
  for (int phase = 1; phase <= 3; ++phase) put(DrawWait(phase), kPanel.darker(104));
  put(DrawSound(true), kPanel);
  put(DrawSound(false), kPanel);
  put(DrawTick(false), kPanel);
  put(DrawTick(true), kPanel);
  x = 8;
  painter.translate(0, 210);
  put(DrawAppIcon(), kPanel);
  painter.drawImage(x, 8, DrawAppIcon());
  painter.drawImage(x + 80, 8, DrawArrow(false));
  painter.drawImage(x + 130, 8, DrawWait(2));
  painter.drawImage(x + 190, 8, DrawSound(true));
  painter.drawImage(x + 220, 8, DrawSound(false));
  painter.drawImage(x + 250, 8, DrawTick(false));
  painter.drawImage(x + 270, 8, DrawTick(true));
  painter.end();
  return sheet;
}

}  // namespace

void WriteSheets(const QString& dir) {
  QDir().mkpath(dir);
  QImage boards(3 * (kBoardSize + 10) + 10, kBoardSize + 20, QImage::Format_ARGB32_Premultiplied);
  boards.fill(kPanel);
  QPainter painter(&boards);
  int x = 10;
  for (BoardStyle style : {BoardStyle::Classique, BoardStyle::Chocolat, BoardStyle::Relief}) {
    painter.drawImage(x, 10, BoardInPlay(style));
    x += kBoardSize + 10;
  }
  painter.end();
  Save(boards, dir + QStringLiteral("/sheet_boards.png"));
  for (BoardStyle style : {BoardStyle::Classique, BoardStyle::Chocolat, BoardStyle::Relief}) {
    const QImage corner = DrawBoard(style).copy(0, 0, 8 * kPitch + 2, 8 * kPitch + 2);
    Save(Scaled(corner, 3), dir + QStringLiteral("/sheet_corner_%1.png").arg(int(style)));
  }
  Save(Faces(), dir + QStringLiteral("/sheet_faces.png"));
  Save(Smalls(), dir + QStringLiteral("/sheet_small.png"));
}

}  // namespace ostrane::draw
