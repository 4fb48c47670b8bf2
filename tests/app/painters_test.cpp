// The painters of the board view, pixel for pixel: the recolouring rule, the
// three painters, and DrawGrille's two selections and tiles.
#include <QGuiApplication>
#include <QPainter>
#include <QtTest>

#include "board_view/faces.h"
#include "board_view/painters.h"
#include "tests/support/test_support.h"

using namespace ostrane::view;

namespace {

// What a painter must leave: the face with each pixel of the top-left 33 x 33
// whose components add up below 528 in the colour, computed here apart.
QImage Expected(const QImage& face, QRgb colour) {
  QImage out = face.convertToFormat(QImage::Format_RGB32);
  for (int y = 0; y < 33; ++y)
    for (int x = 0; x < 33; ++x) {
      const QColor c = out.pixelColor(x, y);
      if (c.red() + c.green() + c.blue() < 528) out.setPixel(x, y, colour);
    }
  return out;
}

bool SameRect(const QImage& big, int left, int top, const QImage& small) {
  const QImage a = big.copy(left, top, small.width(), small.height()).convertToFormat(QImage::Format_RGB32);
  return a == small.convertToFormat(QImage::Format_RGB32);
}

using Grid = std::array<std::array<std::string, 15>, 15>;  // [row][column]
SquareReader Reader(const Grid& grid) {
  return [&grid](int column, int row) { return grid[size_t(row)][size_t(column)]; };
}

}  // namespace

class PaintersTest : public QObject {
  Q_OBJECT
 private slots:
  void thresholdAndUntestedEdge() {
    QImage face(35, 35, QImage::Format_RGB32);
    face.fill(qRgb(176, 176, 176));       // 528: not dark
    face.setPixel(0, 0, qRgb(175, 176, 176));  // 527: dark
    face.setPixel(32, 32, qRgb(0, 0, 0));      // last tested pixel
    face.setPixel(33, 10, qRgb(0, 0, 0));      // untested column
    face.setPixel(10, 34, qRgb(0, 0, 0));      // untested row
    RecolourDark(face, kColourPose);
    QCOMPARE(face.pixel(0, 0), kColourPose);
    QCOMPARE(face.pixel(1, 0), qRgb(176, 176, 176));
    QCOMPARE(face.pixel(32, 32), kColourPose);
    QCOMPARE(face.pixel(33, 10), qRgb(0, 0, 0));
    QCOMPARE(face.pixel(10, 34), qRgb(0, 0, 0));
  }

  void colours() {
    QCOMPARE(kColourPose, qRgb(0, 75, 255));
    QCOMPARE(kColourLettre, qRgb(0, 0, 0));
    QCOMPARE(kColourBlanc, qRgb(148, 0, 0));
  }

  void everyFaceRecolouredExactly() {
    const FaceSet& faces = FaceSet::Shared();
    Painters painters(faces);
    for (int i = 0; i < 26; ++i) {
      const std::string lower(1, char('a' + i)), upper(1, char('A' + i));
      painters.SubPeintPose(lower);
      QCOMPARE(painters.PicTemp(), Expected(faces.ImgLet(i), kColourPose));
      painters.SubPeintLettre(lower);
      QCOMPARE(painters.PicTemp(), Expected(faces.ImgLet(i), kColourLettre));
      painters.SubPeintBlanc(upper);
      QCOMPARE(painters.PicTemp(), Expected(faces.ImgJok(i), kColourBlanc));
    }
  }

  void facesHaveDarkLettersOnLightGround() {
    // The painters recolour by darkness: each letter must have dark pixels to
    // take the colour, and the ground must stay light (its centre column at
    // the top and bottom of the tested area is ground on every face).
    const FaceSet& faces = FaceSet::Shared();
    for (int i = 0; i < 26; ++i)
      for (const QImage* face : {&faces.ImgLet(i), &faces.ImgJok(i)}) {
        QCOMPARE(face->size(), QSize(35, 35));
        const QImage blue = Expected(*face, kColourPose);
        int dark = 0;
        for (int y = 0; y < 33; ++y)
          for (int x = 0; x < 33; ++x) dark += blue.pixel(x, y) == kColourPose;
        QVERIFY2(dark > 15, qPrintable(QStringLiteral("face %1 has too few dark pixels").arg(i)));
        QVERIFY2(dark < 33 * 33 / 2, qPrintable(QStringLiteral("face %1 is mostly dark").arg(i)));
        const QColor corner = face->pixelColor(2, 2);
        QVERIFY(corner.red() + corner.green() + corner.blue() >= 528);
      }
    // The plain blank has nothing dark: on the rack and the board it looks
    // the same whatever painter passed.
    QCOMPARE(Expected(faces.ImgLet(26), kColourPose), faces.ImgLet(26).convertToFormat(QImage::Format_RGB32));
  }

  void poseIgnoresBlanksAndCapitals() {
    Painters painters;
    painters.SubPeintLettre("k");
    const QImage before = painters.PicTemp();
    painters.SubPeintPose("?");
    QCOMPARE(painters.PicTemp(), before);
    painters.SubPeintPose("E");
    QCOMPARE(painters.PicTemp(), before);
    painters.SubPeintLettre("Nul");
    QCOMPARE(painters.PicTemp(), before);
  }

  void blankNulShowsTheN() {
    Painters painters;
    painters.SubPeintBlanc("Nul");
    QCOMPARE(painters.PicTemp(), Expected(FaceSet::Shared().ImgJok(13), kColourBlanc));
  }

  void blankOutsideTheLettersIsFatal() {
    ostrane::test::FatalCatcher catcher;
    Painters painters;
    bool thrown = false;
    try {
      painters.SubPeintBlanc("?");
    } catch (const ostrane::test::FatalCalled& e) {
      thrown = true;
      QVERIFY(QString::fromUtf8(e.what()).contains(QStringLiteral("ImgJok")));
    }
    QVERIFY(thrown);
  }

  void emptyBoardShowsTheBoardImage() {
    Grid grid{};
    Painters painters;
    for (int opt = 2; opt <= 4; ++opt) {
      QImage plateau(542, 542, QImage::Format_RGB32);
      plateau.fill(Qt::magenta);
      DrawGrille(plateau, opt, Reader(grid), painters);
      QCOMPARE(plateau, FaceSet::Shared().Plateau(opt).convertToFormat(QImage::Format_RGB32));
    }
    QImage plateau(542, 542, QImage::Format_RGB32);
    DrawGrille(plateau, 1, Reader(grid), painters);  // the first selection alone
    QCOMPARE(plateau, FaceSet::Shared().Plateau(2).convertToFormat(QImage::Format_RGB32));
  }

  void tilesOfTheGrid() {
    Grid grid{};
    grid[7][7] = "E";    // a blank standing for E at the centre
    grid[7][8] = "s";    // an ordinary tile beside it
    grid[0][14] = "z";   // a corner
    grid[14][0] = "W";
    Painters painters;
    QImage plateau(542, 542, QImage::Format_RGB32);
    DrawGrille(plateau, 2, Reader(grid), painters);
    const FaceSet& faces = FaceSet::Shared();
    QCOMPARE(SquareX(7), 254);
    QVERIFY(SameRect(plateau, 254, 254, Expected(faces.ImgJok(4), kColourBlanc)));
    QVERIFY(SameRect(plateau, SquareX(8), SquareY(7), faces.ImgLet('s' - 'a')));  // not recoloured
    QVERIFY(SameRect(plateau, 506, 2, faces.ImgLet(25)));
    QVERIFY(SameRect(plateau, 2, 506, Expected(faces.ImgJok(22), kColourBlanc)));
    // The square's own picture stays around the tile: the grid line at 36 * 7 + 1.
    QCOMPARE(plateau.pixel(253, 300), faces.Plateau(2).convertToFormat(QImage::Format_RGB32).pixel(253, 300));
  }

  void facesFromTheModelsDescription() {
    using ostrane::TileFace;
    const FaceSet& faces = FaceSet::Shared();
    QVERIFY(FaceImage(TileFace{}).isNull());
    QCOMPARE(FaceImage(TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None}),
             faces.ImgLet(26).convertToFormat(QImage::Format_RGB32));
    QCOMPARE(FaceImage(TileFace{TileFace::Picture::ImgLet, 3, TileFace::Tint::Blue}), Expected(faces.ImgLet(3), kColourPose));
    QCOMPARE(FaceImage(TileFace{TileFace::Picture::ImgLet, 3, TileFace::Tint::Black}), Expected(faces.ImgLet(3), kColourLettre));
    QCOMPARE(FaceImage(TileFace{TileFace::Picture::ImgJok, 13, TileFace::Tint::DarkRed}), Expected(faces.ImgJok(13), kColourBlanc));
    // The painters and the description agree.
    Painters painters(faces);
    painters.SubPeintPose("q");
    QCOMPARE(FaceImage(TileFace{TileFace::Picture::ImgLet, 'q' - 'a', TileFace::Tint::Blue}), painters.PicTemp());
  }

  void otherValuesPaintNoBoard() {
    Grid grid{};
    grid[3][4] = "a";
    Painters painters;
    for (int opt : {0, 5}) {
      QImage plateau(542, 542, QImage::Format_RGB32);
      plateau.fill(Qt::magenta);
      DrawGrille(plateau, opt, Reader(grid), painters);
      QCOMPARE(plateau.pixel(0, 0), QColor(Qt::magenta).rgb());
      QVERIFY(SameRect(plateau, SquareX(4), SquareY(3), FaceSet::Shared().ImgLet(0)));
    }
  }
};

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  PaintersTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "painters_test.moc"
