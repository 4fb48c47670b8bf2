#include "app/gui/score_sheet.h"

#include <QFile>
#include <QFileInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <vector>

#include "game/game_export.h"

namespace ostrane::gui {
namespace {

QString Text(const std::string& s) { return QString::fromUtf8(s.data(), int(s.size())); }

// Lengths on the page in millimetres, turned into the device's pixels.
struct Page {
  double dotsPerMm;
  int Px(double mm) const { return int(mm * dotsPerMm + 0.5); }
};

struct Column {
  QString title;
  double width;  // mm
  Qt::Alignment align;
};

}  // namespace

int PaintScoreSheet(QPagedPaintDevice& device, const GameFile& game, const QImage& board) {
  QPainter p(&device);
  const QRect area = p.viewport();
  const Page page{double(device.logicalDpiX()) / 25.4};
  const double widthMm = area.width() / page.dotsPerMm, heightMm = area.height() / page.dotsPerMm;
  const std::vector<SheetRow> rows = SheetRows(game);
  bool tops = false;
  int topsTotal = 0, scoreAtTops = 0, score = 0, plays = 0;
  for (const SheetRow& r : rows) {
    if (!r.played) continue;
    ++plays;
    score = r.total;
    if (r.top >= 0) {
      tops = true;
      topsTotal += r.top;
      scoreAtTops += r.points;
    }
  }

  std::vector<Column> columns = {{QStringLiteral("N°"), 10, Qt::AlignRight},
                                 {QStringLiteral("Tirage"), 26, Qt::AlignLeft},
                                 {QStringLiteral("Position"), 20, Qt::AlignLeft},
                                 {QStringLiteral("Mot"), 38, Qt::AlignLeft},
                                 {QStringLiteral("Points"), 16, Qt::AlignRight},
                                 {QStringLiteral("Total"), 16, Qt::AlignRight}};
  if (tops) {
    columns.push_back({QStringLiteral("Top"), 14, Qt::AlignRight});
    columns.push_back({QStringLiteral("% du top"), 20, Qt::AlignRight});
  }
  const double rowMm = 6.0, headMm = 7.5;

  QFont title(QStringLiteral("DejaVu Sans"));
  title.setPixelSize(page.Px(7));
  title.setBold(true);
  QFont normal(QStringLiteral("DejaVu Sans"));
  normal.setPixelSize(page.Px(3.6));
  QFont bold = normal;
  bold.setBold(true);
  QFont small = normal;
  small.setPixelSize(page.Px(3));

  // The first page: the heading, the board and the summary beside it.
  const int pagesTotal = [&] {
    const double firstRows = heightMm - 22 - 113 - 8 - 10 - headMm;
    const int perFirst = std::max(1, int(firstRows / rowMm));
    const int perNext = std::max(1, int((heightMm - 20 - headMm) / rowMm));
    const int left = std::max(0, int(rows.size()) - perFirst);
    return 1 + (left + perNext - 1) / perNext;
  }();
  int pageNumber = 1;
  const auto footer = [&] {
    p.setFont(small);
    p.setPen(QColor(110, 100, 90));
    p.drawText(QRect(0, area.height() - page.Px(6), area.width(), page.Px(6)), Qt::AlignRight | Qt::AlignVCenter,
               QStringLiteral("Ostrane — %1 — page %2 / %3").arg(Text(game.name)).arg(pageNumber).arg(pagesTotal));
  };

  p.setPen(QColor(31, 92, 68));
  p.setFont(title);
  p.drawText(QRect(0, 0, area.width(), page.Px(10)), Qt::AlignLeft | Qt::AlignVCenter, Text(game.name));
  p.setFont(normal);
  p.setPen(Qt::black);
  p.drawText(QRect(0, page.Px(10), area.width(), page.Px(6)), Qt::AlignLeft | Qt::AlignVCenter,
             QStringLiteral("Feuille de partie — partie du %1").arg(Text(DateText(game.date))));
  // The board, its rows lettered on the left and its columns numbered on
  // top, as the window shows them.
  const QRect boardRect(page.Px(5), page.Px(22), page.Px(113), page.Px(113));
  p.setRenderHint(QPainter::SmoothPixmapTransform, true);
  p.drawImage(boardRect, board);
  p.setPen(QPen(QColor(80, 60, 40), page.Px(0.3)));
  p.drawRect(boardRect);
  p.setFont(small);
  p.setPen(QColor(60, 50, 40));
  const double square = boardRect.width() / 15.0;
  for (int k = 0; k < 15; ++k) {
    const int along = int(k * square + 0.5);
    p.drawText(QRect(boardRect.left() + along, boardRect.top() - page.Px(4.5), int(square), page.Px(4)),
               Qt::AlignCenter, QString::number(k + 1));
    p.drawText(QRect(0, boardRect.top() + along, page.Px(4), int(square)), Qt::AlignCenter,
               QString(QChar(u'A' + k)));
  }

  // The summary, on the board's right.
  const int sx = page.Px(124), sw = area.width() - sx;
  int sy = page.Px(22);
  const auto line = [&](const QString& text, const QFont& font) {
    p.setFont(font);
    p.setPen(Qt::black);
    p.drawText(QRect(sx, sy, sw, page.Px(6)), Qt::AlignLeft | Qt::AlignVCenter, text);
    sy += page.Px(6.5);
  };
  line(QStringLiteral("Score final"), normal);
  QFont big = bold;
  big.setPixelSize(page.Px(9));
  p.setFont(big);
  p.setPen(QColor(148, 0, 0));
  p.drawText(QRect(sx, sy, sw, page.Px(12)), Qt::AlignLeft | Qt::AlignVCenter,
             QStringLiteral("%1 points").arg(score));
  sy += page.Px(14);
  line(QStringLiteral("%1 coup%2 joué%2").arg(plays).arg(plays > 1 ? QStringLiteral("s") : QString()), normal);
  if (tops) {
    line(QStringLiteral("Tops des coups joués : %1").arg(topsTotal), normal);
    const int percent = topsTotal > 0 ? (scoreAtTops * 100 + topsTotal / 2) / topsTotal : 0;
    line(QStringLiteral("Pourcentage du top : %1 %").arg(percent), bold);
  }

  // The history, as long as it takes.
  double y = 22 + 113 + 8;
  const auto header = [&] {
    double x = 0;
    p.setFont(bold);
    p.setPen(Qt::black);
    p.fillRect(QRect(0, page.Px(y), page.Px(widthMm), page.Px(headMm)), QColor(233, 220, 192));
    for (const Column& c : columns) {
      p.drawText(QRect(page.Px(x + 1), page.Px(y), page.Px(c.width - 2), page.Px(headMm)), c.align | Qt::AlignVCenter,
                 c.title);
      x += c.width;
    }
    y += headMm;
  };
  header();
  p.setFont(normal);
  int shade = 0;
  for (const SheetRow& r : rows) {
    if (y + rowMm > heightMm - 10) {
      footer();
      device.newPage();
      ++pageNumber;
      y = 0;
      header();
      p.setFont(normal);
    }
    if (shade++ % 2) p.fillRect(QRect(0, page.Px(y), page.Px(widthMm), page.Px(rowMm)), QColor(250, 246, 236));
    QStringList cells = {QString::number(r.number), Text(r.drawn)};
    if (r.played) {
      cells << Text(r.position) << Text(r.word) << QString::number(r.points) << QString::number(r.total);
      if (tops)
        cells << (r.top >= 0 ? QString::number(r.top) : QString())
              << (r.top > 0 ? QStringLiteral("%1 %").arg((r.points * 100 + r.top / 2) / r.top) : QString());
    } else {
      cells << QString() << QStringLiteral("(sur le chevalet)");
    }
    double x = 0;
    p.setPen(Qt::black);
    for (int c = 0; c < int(columns.size()) && c < int(cells.size()); ++c) {
      p.drawText(QRect(page.Px(x + 1), page.Px(y), page.Px(columns[size_t(c)].width - 2), page.Px(rowMm)),
                 columns[size_t(c)].align | Qt::AlignVCenter, cells[c]);
      x += columns[size_t(c)].width;
    }
    y += rowMm;
  }
  p.setFont(small);
  p.setPen(QColor(90, 80, 70));
  if (y + 12 < heightMm - 8) {
    p.drawText(QRect(0, page.Px(y + 3), area.width(), page.Px(10)), Qt::AlignLeft | Qt::TextWordWrap,
               QStringLiteral("Position : la ligne puis la colonne pour un mot horizontal (H4), la colonne puis la "
                              "ligne pour un mot vertical (4H). Les jokers sont en minuscules."));
  }
  footer();
  return pageNumber;
}

bool WriteScoreSheet(const QString& file, const GameFile& game, const QImage& board, QString& error) {
  QSaveFile out(file);
  if (!out.open(QIODevice::WriteOnly)) {
    error = QStringLiteral("Le fichier « %1 » ne peut pas être écrit.").arg(QFileInfo(file).fileName());
    return false;
  }
  {
    QPdfWriter pdf(&out);
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setPageMargins(QMarginsF(12, 12, 12, 12), QPageLayout::Millimeter);
    pdf.setResolution(300);
    pdf.setTitle(QStringLiteral("Feuille de partie — %1").arg(Text(game.name)));
    pdf.setCreator(QStringLiteral("Ostrane"));
    PaintScoreSheet(pdf, game, board);
  }
  if (!out.commit()) {
    error = QStringLiteral("Le fichier « %1 » ne peut pas être écrit.").arg(QFileInfo(file).fileName());
    return false;
  }
  return true;
}

}  // namespace ostrane::gui
