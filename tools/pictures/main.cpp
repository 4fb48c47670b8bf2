// ostrane-draw <outdir> [--scale 2] [--icons <dir>] [--sheets <dir>] [--keep-going]
// Draws every picture of the program into <outdir> as PNG files, the same
// bytes at each run, and checks each file written: its exact size, and that
// reading it back gives the picture drawn. With --scale 2 the pictures are
// drawn for high-density screens, twice as many pixels each way, into
// "<name>@2x.png". --icons writes the application icon for the desktop's icon
// theme: <dir>/<N>x<N>/apps/ostrane.png and <dir>/scalable/apps/ostrane.svg.

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QString>
#include <cstdio>
#include <vector>

#include "tools/pictures/board.h"
#include "tools/pictures/canvas.h"
#include "tools/pictures/icons.h"
#include "tools/pictures/sheet.h"
#include "tools/pictures/tiles.h"

namespace {

using namespace ostrane::draw;

struct Picture {
  QString name;
  QImage image;
  int width;
  int height;
  bool opaque;  // stored as 24-bit colour without alpha
};

std::vector<Picture> AllPictures() {
  std::vector<Picture> all;
  all.push_back({"board_classique", DrawBoard(BoardStyle::Classique), kBoardSize, kBoardSize, true});
  all.push_back({"board_chocolat", DrawBoard(BoardStyle::Chocolat), kBoardSize, kBoardSize, true});
  all.push_back({"board_relief", DrawBoard(BoardStyle::Relief), kBoardSize, kBoardSize, true});
  for (char c = 'a'; c <= 'z'; ++c)
    all.push_back({QStringLiteral("let_") + QChar(c), DrawLetterFace(c), kFaceSize, kFaceSize, true});
  all.push_back({"let_blank", DrawBlankFace(), kFaceSize, kFaceSize, true});
  for (char c = 'a'; c <= 'z'; ++c)
    all.push_back(
        {QStringLiteral("jok_") + QChar(c), DrawJokerFace(char(c - 'a' + 'A')), kFaceSize, kFaceSize, true});
  all.push_back({"arrow_h", DrawArrow(false), kArrowSize, kArrowSize, false});
  all.push_back({"arrow_v", DrawArrow(true), kArrowSize, kArrowSize, false});
  for (int phase = 1; phase <= 3; ++phase)
    all.push_back({QStringLiteral("wait_%1").arg(phase), DrawWait(phase), kWaitSize, kWaitSize, false});
  all.push_back({"sound_on", DrawSound(true), kSoundSize, kSoundSize, false});
  all.push_back({"sound_off", DrawSound(false), kSoundSize, kSoundSize, false});
  all.push_back({"tick_off", DrawTick(false), kTickSize, kTickSize, true});
  all.push_back({"tick_on", DrawTick(true), kTickSize, kTickSize, true});
  all.push_back({"slot_empty", DrawEmptySlot(), kFaceSize, kFaceSize, true});
  all.push_back({"ostrane", DrawAppIcon(), 64, 64, false});
  return all;
}

constexpr int kThemeSizes[] = {16, 22, 24, 32, 48, 64, 128, 256};

void WriteIcons(const QString& dir) {
  for (int size : kThemeSizes) {
    const QString folder = QStringLiteral("%1/%2x%2/apps").arg(dir).arg(size);
    Require(QDir().mkpath(folder), QStringLiteral("cannot make ") + folder);
    const QString path = folder + QStringLiteral("/ostrane.png");
    const QImage icon = DrawAppIconAt(size).convertToFormat(QImage::Format_ARGB32);
    Require(icon.save(path, "PNG"), QStringLiteral("cannot write ") + path);
    Require(QImage(path).size() == QSize(size, size), path + QStringLiteral(": wrong size on disk"));
  }
  const QString folder = dir + QStringLiteral("/scalable/apps");
  Require(QDir().mkpath(folder), QStringLiteral("cannot make ") + folder);
  QFile svg(folder + QStringLiteral("/ostrane.svg"));
  Require(svg.open(QIODevice::WriteOnly | QIODevice::Truncate), QStringLiteral("cannot write ") + svg.fileName());
  svg.write(AppIconSvg().toUtf8());
  std::printf("the icon in %d sizes and as vector art written to %s\n", int(std::size(kThemeSizes)), qPrintable(dir));
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  const QStringList args = app.arguments();
  QString outDir, sheetDir, iconDir;
  int scale = 1;
  for (int i = 1; i < args.size(); ++i) {
    if (args[i] == QLatin1String("--sheets") && i + 1 < args.size())
      sheetDir = args[++i];
    else if (args[i] == QLatin1String("--icons") && i + 1 < args.size())
      iconDir = args[++i];
    else if (args[i] == QLatin1String("--scale") && i + 1 < args.size())
      scale = args[++i].toInt();
    else if (args[i] == QLatin1String("--keep-going"))
      KeepGoing(true);
    else if (outDir.isEmpty())
      outDir = args[i];
    else
      outDir.clear(), i = int(args.size());
  }
  if (outDir.isEmpty() || scale < 1 || scale > 4) {
    std::fprintf(stderr, "usage: ostrane-draw <outdir> [--scale 2] [--icons <dir>] [--sheets <dir>] [--keep-going]\n");
    return 2;
  }
  LoadFonts();
  SetScale(scale);
  const QString suffix = scale == 1 ? QString() : QStringLiteral("@%1x").arg(scale);
  Require(QDir().mkpath(outDir), QStringLiteral("cannot make ") + outDir);

  const std::vector<Picture> pictures = AllPictures();
  CheckBoard(pictures[0].image, pictures[0].name);
  CheckBoard(pictures[1].image, pictures[1].name);
  CheckBoard(pictures[2].image, pictures[2].name);
  for (const Picture& p : pictures) {
    const QString path = outDir + QLatin1Char('/') + p.name + suffix + QStringLiteral(".png");
    const int width = p.width * scale, height = p.height * scale;
    Require(p.image.width() == width && p.image.height() == height, p.name + ": drawn at the wrong size");
    const QImage stored = p.opaque ? p.image.convertToFormat(QImage::Format_RGB888)
                                   : p.image.convertToFormat(QImage::Format_ARGB32);
    Require(stored.save(path, "PNG"), QStringLiteral("cannot write ") + path);
    const QImage back(path);
    Require(!back.isNull(), QStringLiteral("cannot read back ") + path);
    Require(back.width() == width && back.height() == height,
            path + QStringLiteral(": wrong size on disk"));
    Require(back.hasAlphaChannel() == !p.opaque, path + QStringLiteral(": wrong kind of pixels"));
    Require(back.convertToFormat(QImage::Format_ARGB32) == stored.convertToFormat(QImage::Format_ARGB32),
            path + QStringLiteral(": reads back different"));
  }
  std::printf("%d pictures written to %s\n", int(pictures.size()), qPrintable(outDir));
  if (!iconDir.isEmpty()) WriteIcons(iconDir);
  if (!sheetDir.isEmpty()) WriteSheets(sheetDir);
  return Failures() == 0 ? 0 : 1;
}
