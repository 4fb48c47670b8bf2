// The painters of the board view, pixel for pixel: the recolouring rule, the
// three painters, and DrawGrille's two selections and tiles.
#include "board_view/painters.h"

#include <QGuiApplication>
#include <QtTest>

#include "board_view/faces.h"
#include "tests/support/test_support.h"

using namespace ostrane::view;
using ostrane::TileFace;

namespace {

// The colours of the dark pixels, written out here apart from the program's.
const QRgb kBlue = qRgb(0, 75, 255), kBlack = qRgb(0, 0, 0), kDarkRed = qRgb(148, 0, 0);

// What a painter must leave: the face with each pixel of the top-left 33 x 33
// whose components add up below 528 in the colour, computed here apart.
QImage Expected(const QImage& face, QRgb colour, int* dark = nullptr) {
  QImage out = face.convertToFormat(QImage::Format_RGB32);
  for (int y = 0; y < 33; ++y)
    for (int x = 0; x < 33; ++x) {
      const QColor c = out.pixelColor(x, y);
      if (c.red() + c.green() + c.blue() >= 528) continue;
      out.setPixel(x, y, colour);
      if (dark) ++*dark;
    }
  return out;
}

bool SameRect(const QImage& big, int left, int top, const QImage& small) {
  return big.copy(left, top, small.width(), small.height()) == small.convertToFormat(QImage::Format_RGB32);
}

using Grid = std::array<std::array<std::string, 15>, 15>;  // [row][column]

QImage Drawn(const Grid& grid, int optImage) {
  QImage plateau(542, 542, QImage::Format_RGB32);
  plateau.fill(Qt::magenta);
  Painters painters;
  DrawGrille(
      plateau, optImage, [&grid](int column, int row) { return grid[size_t(row)][size_t(column)]; },
      painters);
  return plateau;
}

}  // namespace

class PaintersTest : public QObject {
  Q_OBJECT
 private slots:
  void recolouringRuleEveryFaceAndOddTags() {
    // 528 is not dark, 527 is; the last two rows and columns are not looked at.
    QImage face(35, 35, QImage::Format_RGB32);
    face.fill(qRgb(176, 176, 176));
    face.setPixel(0, 0, qRgb(175, 176, 176));
    for (const QPoint p : {QPoint(32, 32), QPoint(33, 10), QPoint(10, 34)}) face.setPixel(p, kBlack);
    RecolourDark(face, kBlue);
    QVERIFY(face.pixel(0, 0) == kBlue && face.pixel(32, 32) == kBlue &&
            face.pixel(1, 0) == qRgb(176, 176, 176));
    QVERIFY(face.pixel(33, 10) == kBlack && face.pixel(10, 34) == kBlack);
    // Dark letters on a light ground: each face has dark pixels to take the
    // colour, and is not mostly dark.
    const FaceSet& faces = FaceSet::Shared();
    Painters painters(faces);
    for (int i = 0; i < 26; ++i) {
      const std::string lower(1, char('a' + i)), upper(1, char('A' + i));
      int darkLet = 0, darkJok = 0;
      painters.SubPeintPose(lower);
      QCOMPARE(painters.PicTemp(), Expected(faces.ImgLet(i), kBlue, &darkLet));
      QCOMPARE(FaceImage(TileFace{TileFace::Picture::ImgLet, i, TileFace::Tint::Blue}), painters.PicTemp());
      painters.SubPeintLettre(lower);
      QCOMPARE(painters.PicTemp(), Expected(faces.ImgLet(i), kBlack));
      QCOMPARE(FaceImage(TileFace{TileFace::Picture::ImgLet, i, TileFace::Tint::Black}), painters.PicTemp());
      painters.SubPeintBlanc(upper);
      QCOMPARE(painters.PicTemp(), Expected(faces.ImgJok(i), kDarkRed, &darkJok));
      QCOMPARE(FaceImage(TileFace{TileFace::Picture::ImgJok, i, TileFace::Tint::DarkRed}),
               painters.PicTemp());
      for (const int dark : {darkLet, darkJok}) QVERIFY2(dark > 15 && dark < 33 * 33 / 2, upper.c_str());
    }
    // The plain blank has nothing dark; no picture is a null image.
    const QImage plain = faces.ImgLet(26).convertToFormat(QImage::Format_RGB32);
    QVERIFY(Expected(plain, kBlue) == plain && FaceImage(TileFace{TileFace::Picture::ImgLet, 26}) == plain);
    QVERIFY(FaceImage(TileFace{}).isNull());
    // Tags the painters leave alone, "Nul", and a blank outside the letters.
    painters.SubPeintLettre("k");
    const QImage before = painters.PicTemp();
    for (const char* tag : {"?", "E"}) painters.SubPeintPose(tag);
    painters.SubPeintLettre("Nul");
    QCOMPARE(painters.PicTemp(), before);
    painters.SubPeintBlanc("Nul");  // shows the N
    QCOMPARE(painters.PicTemp(), Expected(FaceSet::Shared().ImgJok(13), kDarkRed));
    ostrane::test::FatalCatcher catcher;
    QVERIFY_THROWS_EXCEPTION(ostrane::test::FatalCalled, painters.SubPeintBlanc("?"));
  }

  void boardPicturesOfBothSelectionsAndTheTiles() {
    Grid grid{};
    const FaceSet& faces = FaceSet::Shared();
    for (int opt = 1; opt <= 4; ++opt)  // the first selection's 1 paints the second's 2
      QCOMPARE(Drawn(grid, opt), faces.Plateau(std::max(opt, 2)).convertToFormat(QImage::Format_RGB32));
    grid[7][7] = "E";   // a blank standing for E at the centre
    grid[7][8] = "s";   // an ordinary tile beside it, not recoloured
    grid[0][14] = "z";  // the corners
    grid[14][0] = "W";
    for (int opt : {2, 0, 5}) {  // other values paint no board, only the tiles
      const QImage plateau = Drawn(grid, opt);
      QCOMPARE(plateau.pixel(0, 0) == QColor(Qt::magenta).rgb(), opt != 2);
      QVERIFY(SameRect(plateau, 254, 254, Expected(faces.ImgJok(4), kDarkRed)));
      QVERIFY(SameRect(plateau, SquareX(8), SquareY(7), faces.ImgLet('s' - 'a')));
      QVERIFY(SameRect(plateau, 506, 2, faces.ImgLet(25)));
      QVERIFY(SameRect(plateau, 2, 506, Expected(faces.ImgJok(22), kDarkRed)));
    }
    // The square's own picture stays around the tile: the grid line at 36 * 7 + 1.
    QCOMPARE(Drawn(grid, 2).pixel(253, 300),
             faces.Plateau(2).convertToFormat(QImage::Format_RGB32).pixel(253, 300));
  }
};

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  PaintersTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "painters_test.moc"
