#pragma once
// The road of the windowed program: the start-up window loads the lexicon,
// the screen check may warn, a game left unfinished is offered to be taken
// up, the game's name and options are asked, the main window plays a game,
// and each new game goes back through the name.
// The windows and models of each step live here, one step at a time.

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "app/gui/qt_forms.h"
#include "lexicon/lexicon.h"
#include "records/game_journal.h"
#include "records/program.h"

namespace ostrane {
class Frm11Dem;
class FrmEcranResol;
class FrmPartie;
class FrmPlateau;
class GameRecord;
class WordLists;
}  // namespace ostrane

namespace ostrane::gui {

class StartupWindow;
class ScreenCheckWindow;
class GameNameWindow;
class MainWindow;
class Additions;

class Application : public QObject {
  Q_OBJECT
 public:
  struct Settings {
    QString startDirectory;             // CheminApp; the current directory when empty
    QString whereFilesAre;              // the about box's sentence on that folder
    std::function<int()> screenHeight;  // pixels; the primary screen when empty
    bool pauses = true;                 // the one-second pause of the first two plays
    // How the pause lets its time go by, the window taking no input
    // meanwhile: a local event loop of that length when empty.
    std::function<void(int milliseconds)> wait;
  };

  Application(Host& host, Settings settings);
  ~Application() override;

  // Starts the program. False when it ends at once: another copy runs (the
  // message has been shown).
  bool Start(bool anotherInstanceRunning);
  // Brings the window of the current step to the front.
  void BringToFront();

  Program& program() { return program_; }
  const Lexicon& lexicon() const { return lexicon_; }
  bool Ended() const { return ended_; }

  // The step now open (null when it is another).
  StartupWindow* Startup() const { return startWindow_.get(); }
  ScreenCheckWindow* ScreenCheck() const { return screenWindow_.get(); }
  GameNameWindow* GameName() const { return partieWindow_.get(); }
  MainWindow* Main() const { return mainWindow_.get(); }
  // The commands added to the main window (null while it is not open).
  Additions* Added() const { return additions_; }
  FrmPlateau* Plateau() const { return plateau_.get(); }
  FrmPartie* Partie() const { return partie_.get(); }
  // The record of the game in progress (null while the main window is not
  // open).
  GameRecord* Record() const { return record_.get(); }
  // The word list in use and the player's choice.
  WordLists& Lists() { return *lists_; }
  // The journal of the game in progress, once the start-up is done.
  GameJournal* Journal() const { return journal_.get(); }

 signals:
  // The program has ended: the event loop should stop.
  void ended();
  // A new step has opened (tests follow the road with it).
  void stepOpened();

 private:
  void Post(void (Application::*step)());
  void LoadScreenCheck();
  void AskResume();
  void LoadPartie();
  void LoadPlateau();
  void End();
  void CloseStart();
  void CloseScreenCheck();
  void ClosePartie();
  void ClosePlateau();
  // The record kept beside the journal, when it is the taken-up game's own.
  void TakeUpRecord(const SavedGame& game);
  // The word graph's side thread done with (before the lexicon changes).
  void JoinGraph();
  // Tells what the word lists have to say, if anything.
  void TellWordLists();
  // The main window made again for a word list chosen before any game.
  void ReopenForWordList();

  Host& host_;
  Settings settings_;
  Lexicon lexicon_;
  Program program_;
  QtForms forms_;
  bool ended_ = false;

  std::unique_ptr<Frm11Dem> start_;
  std::unique_ptr<StartupWindow> startWindow_;
  std::unique_ptr<FrmEcranResol> screen_;
  std::unique_ptr<ScreenCheckWindow> screenWindow_;
  std::unique_ptr<FrmPartie> partie_;
  std::unique_ptr<GameNameWindow> partieWindow_;
  std::unique_ptr<FrmPlateau> plateau_;
  std::unique_ptr<GameRecord> record_;  // follows plateau_, gone before it
  std::unique_ptr<MainWindow> mainWindow_;
  std::unique_ptr<WordLists> lists_;
  std::unique_ptr<GameJournal> journal_;
  std::optional<SavedGame> takeUp_;  // the kept game the next main form takes up
  Additions* additions_ = nullptr;   // owned by the main window
  // The word graph of the exact analysis, made beside the start-up's road
  // once the lexicon is loaded.
  std::thread graphBuilder_;
};

}  // namespace ostrane::gui
