#include "board_view/faces.h"

#include <QFile>
#include <QGuiApplication>
#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include "lexicon/fatal.h"

namespace ostrane::view {
namespace {

// Light ground of a provisional face: every pixel of it stays above the
// painters' darkness threshold, so only the letter is recoloured.
constexpr QRgb kFaceGround = qRgb(246, 232, 196);
constexpr QRgb kFaceEdge = qRgb(196, 172, 120);
constexpr QRgb kInk = qRgb(24, 24, 24);

QImage BlankFaceImage() {
  QImage image(kFaceSize, kFaceSize, QImage::Format_RGB32);
  image.fill(kFaceGround);
  QPainter p(&image);
  p.setPen(QColor(kFaceEdge));
  p.drawLine(kFaceSize - 1, 0, kFaceSize - 1, kFaceSize - 1);
  p.drawLine(kFaceSize - 2, 1, kFaceSize - 2, kFaceSize - 1);
  p.drawLine(0, kFaceSize - 1, kFaceSize - 1, kFaceSize - 1);
  p.drawLine(1, kFaceSize - 2, kFaceSize - 1, kFaceSize - 2);
  return image;
}

void DrawLetter(QPainter& p, QChar letter) {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(22);
  font.setBold(true);
  p.setFont(font);
  p.setPen(QColor(kInk));
  p.drawText(QRect(0, 0, 28, 33), Qt::AlignCenter, QString(letter));
}

QImage Converted(const QImage& image, QImage::Format format) {
  return image.format() == format ? image : image.convertToFormat(format);
}

}  // namespace

int LetterPoints(char letter) {
  static constexpr int kPoints[26] = {1, 3, 3, 2, 1, 4, 2, 4, 1, 8, 10, 1, 2, 1, 1, 3, 8, 1, 1, 1, 1, 4, 10, 10, 10, 10};
  if (letter >= 'a' && letter <= 'z') return kPoints[letter - 'a'];
  if (letter >= 'A' && letter <= 'Z') return kPoints[letter - 'A'];
  return 0;
}

QImage DrawProvisionalLetter(char letter) {
  QImage image = BlankFaceImage();
  QPainter p(&image);
  p.setRenderHint(QPainter::TextAntialiasing, false);
  DrawLetter(p, QChar(letter).toUpper());
  QFont small(QStringLiteral("DejaVu Sans"));
  small.setPixelSize(9);
  small.setBold(true);
  p.setFont(small);
  p.drawText(QRect(20, 21, 12, 11), Qt::AlignRight | Qt::AlignBottom, QString::number(LetterPoints(letter)));
  return image;
}

QImage DrawProvisionalJoker(char letter) {
  QImage image = BlankFaceImage();
  QPainter p(&image);
  p.setRenderHint(QPainter::TextAntialiasing, false);
  DrawLetter(p, QChar(letter));
  p.setPen(QColor(kInk));
  p.drawText(QRect(22, 20, 10, 12), Qt::AlignCenter, QStringLiteral("*"));
  return image;
}

QImage DrawProvisionalBlank() {
  QImage image = BlankFaceImage();
  QPainter p(&image);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(22);
  font.setBold(true);
  p.setFont(font);
  p.setPen(QColor(214, 196, 150));  // light: the painters leave it as it is
  p.drawText(QRect(0, 0, 33, 33), Qt::AlignCenter, QStringLiteral("?"));
  return image;
}

QImage DrawProvisionalBoard(int number) {
  // Premium code of each square: 4 word x3, 3 word x2, 2 letter x3, 1 letter x2.
  static const char* const kRows[15] = {
      "400100040001004", "030002000200030", "003000101000300", "100300010003001", "000030000030000",
      "020002000200020", "001000101000100", "400100030001004", "001000101000100", "020002000200020",
      "000030000030000", "100300010003001", "003000101000300", "030002000200030", "400100040001004"};
  QColor plain(0, 120, 90), line(230, 230, 210);
  QColor premium[5] = {plain, QColor(140, 200, 240), QColor(40, 90, 200), QColor(240, 160, 170), QColor(200, 40, 40)};
  if (number == 3) {
    plain = QColor(110, 70, 40);
    premium[0] = plain;
  } else if (number == 4) {
    plain = QColor(120, 140, 120);
    premium[0] = plain;
  }
  static const char* const kLabels[5] = {"", "LD", "LT", "MD", "MT"};
  QImage image(kBoardImageSize, kBoardImageSize, QImage::Format_RGB32);
  image.fill(line);
  QPainter p(&image);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(11);
  font.setBold(true);
  p.setFont(font);
  for (int row = 0; row < 15; ++row)
    for (int column = 0; column < 15; ++column) {
      const int code = kRows[row][column] - '0';
      const QRect face(36 * column + 2, 36 * row + 2, 35, 35);
      p.fillRect(face, premium[code]);
      if (code) {
        p.setPen(code == 1 ? QColor(20, 40, 60) : QColor(250, 250, 250));
        p.drawText(face, Qt::AlignCenter, QString::fromLatin1(kLabels[code]));
      }
    }
  return image;
}

QImage DrawProvisionalArrow(bool vertical) {
  QImage image(kArrowSize, kArrowSize, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  QPolygonF arrow;
  arrow << QPointF(6, 15) << QPointF(22, 15) << QPointF(22, 7) << QPointF(36, 20.5) << QPointF(22, 34)
        << QPointF(22, 26) << QPointF(6, 26);
  if (vertical) {
    QTransform turn;
    turn.translate(20.5, 20.5).rotate(90).translate(-20.5, -20.5);
    arrow = turn.map(arrow);
  }
  p.setPen(QPen(Qt::white, 2));
  p.setBrush(QColor(220, 0, 0));
  p.drawPolygon(arrow);
  return image;
}

FaceSet::FaceSet(int scale) : scale_(scale == 2 ? 2 : 1) {
  for (int i = 0; i < 26; ++i) {
    const char c = char('a' + i);
    let_[size_t(i)] = Load(QStringLiteral("let_") + QChar(c), DrawProvisionalLetter(c), QImage::Format_RGB32);
    jok_[size_t(i)] = Load(QStringLiteral("jok_") + QChar(c), DrawProvisionalJoker(char('A' + i)), QImage::Format_RGB32);
  }
  let_[26] = Load(QStringLiteral("let_blank"), DrawProvisionalBlank(), QImage::Format_RGB32);
  jok_[26] = let_[26];  // "[" never stands on a tile; the entry exists as in the form
  static const char* const kBoards[3] = {"board_classique", "board_chocolat", "board_relief"};
  for (int i = 0; i < 3; ++i)
    plateau_[size_t(i)] = Load(QString::fromLatin1(kBoards[i]), DrawProvisionalBoard(i + 2), QImage::Format_RGB32);
  arrowH_ = Load(QStringLiteral("arrow_h"), DrawProvisionalArrow(false), QImage::Format_ARGB32_Premultiplied);
  arrowV_ = Load(QStringLiteral("arrow_v"), DrawProvisionalArrow(true), QImage::Format_ARGB32_Premultiplied);
  for (int i = 0; i < 3; ++i) {
    QImage wait(48, 48, QImage::Format_ARGB32_Premultiplied);
    wait.fill(Qt::transparent);
    QPainter p(&wait);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(90, 60, 20), 3));
    p.setBrush(QColor(230, 190, 90));
    p.drawPie(QRect(6, 6, 36, 36), 90 * 16, -120 * 16 * (i + 1));
    wait_[size_t(i)] = Load(QStringLiteral("wait_%1").arg(i + 1), wait, QImage::Format_ARGB32_Premultiplied);
  }
  auto speaker = [](bool on) {
    QImage image(24, 24, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(40, 40, 40));
    p.drawPolygon(QPolygonF({QPointF(3, 9), QPointF(7, 9), QPointF(12, 4), QPointF(12, 20), QPointF(7, 15), QPointF(3, 15)}));
    p.setPen(QPen(on ? QColor(30, 110, 30) : QColor(200, 0, 0), 2));
    p.setBrush(Qt::NoBrush);
    if (on) {
      p.drawArc(QRect(10, 7, 6, 10), -60 * 16, 120 * 16);
      p.drawArc(QRect(9, 3, 12, 18), -60 * 16, 120 * 16);
    } else {
      p.drawLine(15, 8, 21, 16);
      p.drawLine(21, 8, 15, 16);
    }
    return image;
  };
  soundOn_ = Load(QStringLiteral("sound_on"), speaker(true), QImage::Format_ARGB32_Premultiplied);
  soundOff_ = Load(QStringLiteral("sound_off"), speaker(false), QImage::Format_ARGB32_Premultiplied);
  auto tick = [](bool on) {
    QImage image(13, 13, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setPen(QColor(60, 60, 60));
    p.drawRect(0, 0, 12, 12);
    if (on) {
      p.setPen(QPen(QColor(0, 0, 0), 2));
      p.drawLine(3, 6, 5, 9);
      p.drawLine(5, 9, 10, 3);
    }
    return image;
  };
  tickOn_ = Load(QStringLiteral("tick_on"), tick(true), QImage::Format_RGB32);
  tickOff_ = Load(QStringLiteral("tick_off"), tick(false), QImage::Format_RGB32);
  QImage slot(kFaceSize, kFaceSize, QImage::Format_RGB32);
  slot.fill(QColor(200, 200, 200));
  {
    QPainter p(&slot);
    p.setPen(QColor(150, 150, 150));
    p.drawRect(0, 0, kFaceSize - 1, kFaceSize - 1);
  }
  slotEmpty_ = Load(QStringLiteral("slot_empty"), slot, QImage::Format_RGB32);
  QImage icon = DrawProvisionalLetter('o').scaled(64, 64);
  icon_ = Load(QStringLiteral("ostrane"), icon, QImage::Format_ARGB32_Premultiplied);
}

QImage FaceSet::Load(const QString& name, const QImage& fallback, QImage::Format format) {
  if (scale_ > 1) {
    const QString path = QStringLiteral(":/pictures/%1@%2x.png").arg(name).arg(scale_);
    QImage image(path);
    if (!image.isNull() && image.size() == fallback.size() * scale_) {
      ++fromResources_;
      image = Converted(image, format);
      image.setDevicePixelRatio(scale_);
      return image;
    }
  }
  const QString path = QStringLiteral(":/pictures/") + name + QStringLiteral(".png");
  if (QFile::exists(path)) {
    QImage image(path);
    if (!image.isNull() && image.size() == fallback.size()) {
      ++fromResources_;
      return Converted(image, format);
    }
  }
  return Converted(fallback, format);
}

const FaceSet& FaceSet::Shared() {
  static const FaceSet shared(qApp && qApp->devicePixelRatio() > 1.0 ? 2 : 1);
  return shared;
}

const QImage& FaceSet::ImgLet(int index) const {
  if (index < 0 || index > 26) FatalIndex("ImgLet", index);
  return let_[size_t(index)];
}

const QImage& FaceSet::ImgJok(int index) const {
  if (index < 0 || index > 26) FatalIndex("ImgJok", index);
  return jok_[size_t(index)];
}

const QImage& FaceSet::Plateau(int number) const {
  if (number < 2 || number > 4) FatalIndex("Plateau", number);
  return plateau_[size_t(number - 2)];
}

const QImage& FaceSet::Wait(int phase) const {
  if (phase < 1 || phase > 3) FatalIndex("Iabc", phase);
  return wait_[size_t(phase - 1)];
}

}  // namespace ostrane::view
