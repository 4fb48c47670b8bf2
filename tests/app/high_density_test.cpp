// The main window on a high-density screen: CTest runs this test with
// QT_SCALE_FACTOR=2. The geometry stays the designed one in logical pixels,
// and the board, its premium squares and the tiles come from the pictures
// drawn at twice the resolution, pixel for pixel, not from 1x pictures
// enlarged.
#include <QtTest>

#include <algorithm>
#include <vector>

#include "board_view/faces.h"
#include "board_view/painters.h"
#include "tests/app/session.h"

using namespace ostrane;
using namespace ostrane::test;

namespace {

// The device pixels of `area` (in logical pixels) of a picture drawn at
// scale 2, without its ratio, to compare pixels alone.
QImage DevicePixels(const QImage& image, QRect area) {
  const qreal r = image.devicePixelRatio();
  QImage part = image.copy(QRect(area.topLeft() * r, area.size() * r)).convertToFormat(QImage::Format_RGB32);
  part.setDevicePixelRatio(1.0);
  return part;
}

// How many 2 x 2 blocks of device pixels are not of one colour: none at all
// in a 1x picture enlarged twice.
int FineBlocks(const QImage& image) {
  const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
  int fine = 0;
  for (int y = 0; y + 1 < rgb.height(); y += 2)
    for (int x = 0; x + 1 < rgb.width(); x += 2) {
      const QRgb p = rgb.pixel(x, y);
      if (rgb.pixel(x + 1, y) != p || rgb.pixel(x, y + 1) != p || rgb.pixel(x + 1, y + 1) != p) ++fine;
    }
  return fine;
}

}  // namespace

class HighDensityTest : public QObject {
  Q_OBJECT
 private slots:
  void theBoardAndTheTilesAreDrawnAtTheScreensResolution();
};

void HighDensityTest::theBoardAndTheTilesAreDrawnAtTheScreensResolution() {
  QCOMPARE(qApp->devicePixelRatio(), 2.0);  // QT_SCALE_FACTOR=2, from CTest
  const view::FaceSet& faces = view::FaceSet::Shared();
  QCOMPARE(faces.Scale(), 2);
  QCOMPARE(faces.FromResources(), 67);  // every picture has its 2x drawing
  QCOMPARE(faces.ImgLet(0).size(), QSize(70, 70));
  QCOMPARE(faces.ImgLet(0).deviceIndependentSize(), QSizeF(35, 35));

  Session s;
  MainWindow* w = s.Open();
  QVERIFY(w);
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);  // a game: the first rack drawn
  QVERIFY(s.Model().Proposition.has_value());

  // The designed geometry, in logical pixels.
  QCOMPARE(w->Board()->geometry(),
           QRect(layout::kPlateauLeft, layout::kPlateauTop, layout::kPlateauWidth, layout::kPlateauWidth));
  QCOMPARE(w->Tile(0)->size(), QSize(layout::kTileWidth, layout::kTileHeight));

  // The rack's tiles show their 2x faces, pixel for pixel.
  for (int k = 0; k < 7; ++k) {
    const Tile& tile = s.Model().PicGamer[size_t(k)];
    if (!tile.visible) continue;
    const QImage shown = w->Tile(k)->grab().toImage();
    QCOMPARE(shown.size(), QSize(70, 70));
    QVERIFY(DevicePixels(shown, QRect(0, 0, 35, 35)) == DevicePixels(view::FaceImage(tile.face), QRect(0, 0, 35, 35)));
  }

  // The first play laid and validated: on the board picture now.
  QVERIFY(LayProposition(s));
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_2x_laid")));
  QTest::mouseClick(w->CmdValider(), Qt::LeftButton);
  QCOMPARE(s.Model().IntNbCoups, int16_t(1));
  const QImage board = w->Board()->grab().toImage();
  QCOMPARE(board.size(), QSize(2 * layout::kPlateauWidth, 2 * layout::kPlateauWidth));
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_2x")));
  const QImage& picture = faces.Plateau(s.program().options.OptImage);
  std::vector<QRect> over;
  for (const Line* line : {&s.Model().LinVx, &s.Model().LinVy})
    if (line->visible) over.push_back(QRect(QPoint(line->x1, line->y1), QPoint(line->x2, line->y2)).normalized().adjusted(-2, -2, 2, 2));
  if (auto* arrow = w->Board()->findChild<QWidget*>(QStringLiteral("ImgXY")); arrow && arrow->isVisible())
    over.push_back(arrow->geometry());
  int squares = 0, tiles = 0;
  for (int row = 0; row < 15; ++row)
    for (int column = 0; column < 15; ++column) {
      const QRect square(view::SquareX(column), view::SquareY(row), view::kFaceSize, view::kFaceSize);
      const std::string letter = s.Model().Plateau.Square(column, row);
      if (letter.empty()) {
        // An empty square away from what the next proposal draws over the
        // board (its guide lines and its arrow): the board's 2x picture.
        if (std::any_of(over.begin(), over.end(), [&](const QRect& r) { return r.intersects(square); })) continue;
        QVERIFY(DevicePixels(board, square) == DevicePixels(picture, square));
        ++squares;
      } else if (letter[0] >= 'a') {
        QVERIFY(DevicePixels(board, square) == DevicePixels(faces.ImgLet(letter[0] - 'a'), QRect(0, 0, 35, 35)));
        ++tiles;
      }
    }
  QVERIFY(squares > 200);
  QVERIFY(tiles >= 2);
  // Sharp: letters and labels have edges finer than a logical pixel.
  QVERIFY2(FineBlocks(DevicePixels(board, QRect(0, 0, layout::kPlateauWidth, layout::kPlateauWidth))) > 5000,
           "the board looks enlarged from a 1x picture");
}

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  HighDensityTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "high_density_test.moc"
