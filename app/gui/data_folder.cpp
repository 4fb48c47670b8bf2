#include "app/gui/data_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace ostrane::gui {

QString DataFolder::Sentence() const {
  const QString shown = QDir::toNativeSeparators(path);
  if (kind == Kind::User)
    return QStringLiteral("Les options, les meilleurs scores et la partie en cours sont gardés dans votre "
                          "dossier de données : %1")
        .arg(shown);
  return QStringLiteral("Les options, les meilleurs scores et la partie en cours sont gardés dans le dossier "
                        "de départ du programme : %1")
      .arg(shown);
}

bool TakesFiles(const QString& folder) {
  const QFileInfo info(folder);
  if (!info.isDir() || QDir(info.absoluteFilePath()).isRoot()) return false;
  QTemporaryFile probe(QDir(folder).filePath(QStringLiteral(".ostrane-XXXXXX")));
  return probe.open();
}

DataFolder ChooseDataFolder(const QString& startFolder, bool userFolderAsked) {
  if (!userFolderAsked && TakesFiles(startFolder)) return {startFolder, DataFolder::Kind::Start};
  const QString user = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  if (!user.isEmpty() && QDir().mkpath(user)) return {user, DataFolder::Kind::User};
  return {startFolder, DataFolder::Kind::Start};
}

}  // namespace ostrane::gui
