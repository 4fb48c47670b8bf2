#pragma once
// What the program adds to the designed game, reached without moving any of
// the designed controls: a small "Plus" button under the rack opens a menu of
// the added commands, each also on a key of its own (listed in the help
// page): the analysis of the draw, taking a play back, making a draw again,
// writing the game to a file and opening one, the game as text, the score
// sheet as a PDF or on paper.

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class QAction;
class QMenu;
class QToolButton;

namespace ostrane {
class GameRecord;
class WordLists;
struct Lexicon;
struct Program;
}  // namespace ostrane

namespace ostrane::gui {

class AnalysisWindow;
class MainWindow;
class QtForms;

class Additions : public QObject {
  Q_OBJECT
 public:
  Additions(MainWindow& window, Program& program, QtForms& forms, const Lexicon& lexicon, GameRecord& record);
  ~Additions() override;

  // The commands' keys win over the word box's own (its Ctrl+Z, Ctrl+E…).
  bool eventFilter(QObject* target, QEvent* event) override;

  QToolButton* MoreButton() const { return more_; }
  QMenu* Menu() const { return menu_; }
  // The menu's command of that caption (the same on its key).
  QAction* Command(const QString& caption) const;

  // "Liste de mots…": the list in use, and the choice of another. A list
  // chosen before any game has begun is put in service at once by
  // `reopenForWordList` (which reopens the main window: it must not run
  // before the command returns).
  void OpenWordList();
  WordLists* wordLists = nullptr;
  std::function<void()> reopenForWordList;
  // The window of the word lists while it is open (for the tests).
  class WordListWindow* WordListDialog() const { return wordListWindow_; }

  // "Analyse du tirage" (F5): opens the window, or brings it to the front.
  void OpenAnalysis();
  AnalysisWindow* Analysis() const;
  // "Annuler le dernier coup" (Ctrl+Z), "Corriger le tirage" (Ctrl+T).
  void Undo();
  void CorrectDraw();
  // The commands on files, each asking for a file first; the same with the
  // file given (false, and the player told why, when it could not be done).
  void SaveGame();
  void OpenGame();
  void ExportText();
  void ScoreSheet();
  void PrintScoreSheet();
  bool SaveGameTo(const QString& file);
  bool OpenGameFrom(const QString& file);
  bool ExportTextTo(const QString& file);
  bool ScoreSheetTo(const QString& file);

 private:
  QAction* Add(const QString& caption, const QKeySequence& key, void (Additions::*command)());
  void UpdateCommands();
  void Tell(const QString& text);
  QString Folder() const;

  MainWindow& window_;
  Program& program_;
  QtForms& forms_;
  const Lexicon& lexicon_;
  GameRecord& record_;
  QToolButton* more_;
  QMenu* menu_;
  QAction* exact_;
  QPointer<AnalysisWindow> analysis_;  // a child of the main window
  class WordListWindow* wordListWindow_ = nullptr;
};

}  // namespace ostrane::gui
