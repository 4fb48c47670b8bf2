#include "tools/pictures/icons.h"

#include <QPainter>
#include <QPainterPath>

#include "tools/pictures/canvas.h"

namespace ostrane::draw {

namespace {

QPainterPath ArrowRight() {
  // Centred on (20.5, 20.5), the centre of the picture.
  QPainterPath path;
  path.moveTo(4.5, 15.5);
  path.lineTo(21.0, 15.5);
  path.lineTo(21.0, 7.0);
  path.lineTo(37.0, 20.5);
  path.lineTo(21.0, 34.0);
  path.lineTo(21.0, 25.5);
  path.lineTo(4.5, 25.5);
  path.closeSubpath();
  return path;
}

}  // namespace

QImage DrawArrow(bool down) {
  QImage image = NewImage(kArrowSize, kArrowSize);
  QPainter painter(&image);
  Smooth(painter);
  if (down) {
    painter.translate(20.5, 20.5);
    painter.rotate(90);
    painter.translate(-20.5, -20.5);
  }
  const QPainterPath arrow = ArrowRight();
  // A soft dark halo, then a white outline, then the red body.
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0, 0, 0, 70), 6.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(arrow);
  painter.setPen(QPen(QColor(255, 255, 255), 3.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(arrow);
  QLinearGradient body(QPointF(0, 7), QPointF(0, 34));
  body.setColorAt(0.0, QColor(255, 48, 40));
  body.setColorAt(1.0, QColor(206, 0, 0));
  painter.setPen(Qt::NoPen);
  painter.setBrush(body);
  painter.drawPath(arrow);
  painter.end();
  return image;
}

QImage DrawWait(int phase) {
  QImage image = NewImage(kWaitSize, kWaitSize);
  QPainter painter(&image);
  Smooth(painter);
  const QColor wood(150, 96, 48), woodDark(96, 58, 26);
  // Glass: two bulbs meeting at a narrow neck.
  QPainterPath glass;
  glass.moveTo(13, 9);
  glass.lineTo(35, 9);
  glass.cubicTo(35, 19, 26, 21, 25.5, 24);
  glass.cubicTo(26, 27, 35, 29, 35, 39);
  glass.lineTo(13, 39);
  glass.cubicTo(13, 29, 22, 27, 22.5, 24);
  glass.cubicTo(22, 21, 13, 19, 13, 9);
  glass.closeSubpath();
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(226, 238, 250, 200));
  painter.drawPath(glass);
  // Sand: the top bulb empties while the bottom one fills.
  const QColor sand(226, 168, 58), sandDark(190, 128, 30);
  painter.save();
  painter.setClipPath(glass);
  const double top[] = {12.0, 17.5, 22.0};   // surface of the sand above
  const double heap[] = {35.5, 31.0, 26.5};  // top of the heap below
  const int k = phase - 1;
  painter.setBrush(sand);
  painter.drawRect(QRectF(10, top[k], 28, 24.5 - top[k]));
  QPainterPath mound;
  mound.moveTo(10, 40);
  mound.lineTo(10, heap[k] + 3.5);
  mound.quadTo(24, heap[k] - 3.0, 38, heap[k] + 3.5);
  mound.lineTo(38, 40);
  mound.closeSubpath();
  painter.drawPath(mound);
  // The thin stream through the neck.
  painter.setBrush(sandDark);
  painter.drawRect(QRectF(23.3, 23.0, 1.4, heap[k] - 22.0));
  painter.restore();
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(84, 104, 124), 1.3));
  painter.drawPath(glass);
  // A highlight on the glass.
  painter.setPen(QPen(QColor(255, 255, 255, 200), 1.2, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(16, 12), QPointF(17, 17));
  painter.drawLine(QPointF(16, 36), QPointF(16.6, 32));
  // Frame: two posts and two caps.
  painter.setPen(Qt::NoPen);
  painter.setBrush(woodDark);
  painter.drawRect(QRectF(9, 8, 2.2, 32));
  painter.drawRect(QRectF(36.8, 8, 2.2, 32));
  for (double y : {4.0, 39.0}) {
    QLinearGradient cap(QPointF(0, y), QPointF(0, y + 5));
    cap.setColorAt(0.0, wood.lighter(125));
    cap.setColorAt(1.0, woodDark);
    painter.setBrush(cap);
    painter.drawRoundedRect(QRectF(6, y, 36, 5), 1.8, 1.8);
  }
  painter.end();
  return image;
}

QImage DrawSound(bool on) {
  QImage image = NewImage(kSoundSize, kSoundSize);
  QPainter painter(&image);
  Smooth(painter);
  QPainterPath speaker;
  speaker.moveTo(2.5, 9.0);
  speaker.lineTo(7.0, 9.0);
  speaker.lineTo(12.5, 4.0);
  speaker.lineTo(12.5, 20.0);
  speaker.lineTo(7.0, 15.0);
  speaker.lineTo(2.5, 15.0);
  speaker.closeSubpath();
  painter.setPen(QPen(QColor(40, 40, 46), 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(QColor(84, 86, 96));
  painter.drawPath(speaker);
  if (on) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(32, 108, 204), 1.8, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(10.0, 8.0, 8.0, 8.0), -50 * 16, 100 * 16);
    painter.drawArc(QRectF(7.5, 4.5, 15.0, 15.0), -50 * 16, 100 * 16);
  } else {
    painter.setPen(QPen(QColor(200, 30, 30), 2.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(15.5, 9.0), QPointF(21.0, 15.0));
    painter.drawLine(QPointF(21.0, 9.0), QPointF(15.5, 15.0));
  }
  painter.end();
  return image;
}

QImage DrawTick(bool ticked) {
  QImage image = NewImage(kTickSize, kTickSize);
  QPainter painter(&image);
  Smooth(painter);
  QLinearGradient fill(QPointF(0, 0), QPointF(0, kTickSize));
  fill.setColorAt(0.0, QColor(255, 255, 255));
  fill.setColorAt(1.0, QColor(232, 234, 238));
  painter.setBrush(fill);
  painter.setPen(QPen(QColor(112, 116, 124), 1.0));
  painter.drawRect(QRectF(0.5, 0.5, kTickSize - 1.0, kTickSize - 1.0));
  if (ticked) {
    QPainterPath tick;
    tick.moveTo(3.0, 6.6);
    tick.lineTo(5.4, 9.2);
    tick.lineTo(10.0, 3.4);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(20, 20, 24), 1.9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(tick);
  }
  painter.end();
  return image;
}

}  // namespace ostrane::draw
