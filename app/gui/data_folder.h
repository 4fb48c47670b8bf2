#pragma once
// Where the program keeps its files ("Option.ret", "bestsco.ret", the game
// journal, ostrane.ini): in the folder it was started from, as it always did,
// when a player starts it by hand from a folder of theirs; in the user's data
// folder when the applications menu starts it, or when the start folder
// cannot take files (a folder that is not writable, the root of the disk).

#include <QString>

namespace ostrane::gui {

struct DataFolder {
  enum class Kind { Start, User };
  QString path;
  Kind kind = Kind::Start;

  // The sentence of the about box that says where the files are.
  QString Sentence() const;
};

// True when files can be made in that folder: it is not the root of the file
// system and a file can really be created there (permissions, read-only
// mounts, a file in the folder's place).
bool TakesFiles(const QString& folder);

// The start folder when it takes files and the user's folder was not asked
// for; else the user's data folder (QStandardPaths::AppDataLocation, made when
// missing). When that cannot be made either, the start folder all the same.
DataFolder ChooseDataFolder(const QString& startFolder, bool userFolderAsked);

}  // namespace ostrane::gui
