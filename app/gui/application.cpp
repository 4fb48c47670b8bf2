#include "app/gui/application.h"

#include <QApplication>
#include <QDir>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include "app/gui/additions.h"
#include "app/gui/main_window.h"
#include "app/gui/startup_windows.h"
#include "data/resources.h"
#include "game/analysis.h"
#include "board_view/replay.h"
#include "game/frm_plateau.h"
#include "game/game_record.h"
#include "records/game_name.h"
#include "records/screen_check.h"
#include "records/start_up.h"
#include "records/word_lists.h"

namespace ostrane::gui {

Application::Application(Host& host, Settings settings)
    : host_(host),
      settings_(std::move(settings)),
      program_(lexicon_, host),
      forms_(program_, settings_.startDirectory.isEmpty() ? QDir::currentPath() : settings_.startDirectory),
      lists_(std::make_unique<WordLists>(program_, lexicon_, ReadResource, UserCacheFolder())) {
  if (settings_.startDirectory.isEmpty()) settings_.startDirectory = QDir::currentPath();
  forms_.onEnd = [this] { End(); };
  forms_.whereFilesAre = settings_.whereFilesAre;
  // The road goes from window to window with none on the screen for a while
  // (a question closed before the main window opens, the main window gone
  // before the name form's timer shows it): the program ends when its own
  // road says so, never because the last window closed.
  QGuiApplication::setQuitOnLastWindowClosed(false);
}

Application::~Application() {
  JoinGraph();
  ClosePlateau();
  ClosePartie();
  CloseScreenCheck();
  CloseStart();
}

void Application::Post(void (Application::*step)()) {
  QTimer::singleShot(0, this, [this, step] {
    if (!ended_) (this->*step)();
  });
}

bool Application::Start(bool anotherInstanceRunning) {
  const std::filesystem::path directory = settings_.startDirectory.toStdString();
  // The program's own settings, beside "Option.ret": the word list they name
  // is the one the start-up loads.
  ReadSettings(directory / kSettingsFileName, program_.settings);
  Frm11Dem::Links links;
  links.read = lists_->StartReader();
  links.loadNext = [this] { Post(&Application::LoadScreenCheck); };
  links.endProgram = [this] { End(); };
  start_ = std::make_unique<Frm11Dem>(program_, lexicon_, std::move(links));
  startWindow_ = std::make_unique<StartupWindow>(*start_);
  StartupWindow* window = startWindow_.get();
  start_->changed = [window] { window->Refresh(); };
  const bool running = start_->Form_Load(directory, anotherInstanceRunning);
  if (running) window->Refresh();
  emit stepOpened();
  if (running) TellWordLists();
  return running;
}

void Application::LoadScreenCheck() {
  CloseStart();
  lists_->Started();
  // The lexicon is loaded: its word graph is made meanwhile, on the side.
  if (!graphBuilder_.joinable()) graphBuilder_ = std::thread([this] { lexicon_.Graph(); });
  FrmEcranResol::Links links;
  links.screenHeight = settings_.screenHeight
                           ? settings_.screenHeight
                           : [] { return QGuiApplication::primaryScreen()->geometry().height(); };
  links.loadFrmPartie = [this] { Post(&Application::AskResume); };
  links.endProgram = [this] { End(); };
  screen_ = std::make_unique<FrmEcranResol>(program_, std::move(links));
  screenWindow_ = std::make_unique<ScreenCheckWindow>(*screen_, settings_.startDirectory);
  ScreenCheckWindow* window = screenWindow_.get();
  screen_->changed = [window] { window->Refresh(); };
  screen_->Form_Load();
  emit stepOpened();
}

void Application::AskResume() {
  CloseScreenCheck();
  journal_ = std::make_unique<GameJournal>(program_.JournalFile());
  takeUp_ = OfferResume(program_, *journal_);
  if (takeUp_) {
    // The game goes on with the word list it was played with.
    JoinGraph();
    lists_->ForTakenUpGame(*takeUp_);
    TellWordLists();
    LoadPlateau();
  } else {
    LoadPartie();
  }
}

void Application::LoadPartie() {
  CloseScreenCheck();
  ClosePlateau();
  partie_ = std::make_unique<FrmPartie>(program_, [this] { Post(&Application::LoadPlateau); });
  partieWindow_ = std::make_unique<GameNameWindow>(*partie_);
  partie_->Form_Load();
  partieWindow_->Refresh();
  emit stepOpened();
}

void Application::LoadPlateau() {
  ClosePartie();
  if (!takeUp_) {
    // A new game: with the word list the settings name.
    JoinGraph();
    lists_->BeforeNewGame();
    TellWordLists();
  }
  plateau_ = std::make_unique<FrmPlateau>(program_, forms_);
  plateau_->journal = journal_.get();
  OfferExactAnalysis(*plateau_, lexicon_.Graph());
  record_ = std::make_unique<GameRecord>(*plateau_, host_.clock);
  if (takeUp_) TakeUpRecord(*takeUp_);
  // Kept beside the journal at each turn, so that a game taken up keeps its
  // plays to take back.
  record_->onChanged = [this] {
    if (journal_ && plateau_ && plateau_->BlnAbandon == 0) journal_->SaveRecord(FormatGameFile(record_->File()));
  };
  if (takeUp_) {
    plateau_->TakeUp(std::move(*takeUp_));
    takeUp_.reset();
  }
  if (settings_.pauses) {
    // The pause keeps the window painted and its timers running, but takes
    // no input.
    plateau_->Sleep = [this](int milliseconds) {
      if (mainWindow_) mainWindow_->Pause(milliseconds, settings_.wait);
    };
  } else {
    plateau_->Sleep = nullptr;
  }
  mainWindow_ = std::make_unique<MainWindow>(*plateau_);
  forms_.SetMainWindow(mainWindow_.get());
  additions_ = new Additions(*mainWindow_, program_, forms_, lexicon_, *record_);
  additions_->wordLists = lists_.get();
  additions_->reopenForWordList = [this] { Post(&Application::ReopenForWordList); };
  mainWindow_->unload = [this](FrmPlateau::Unload next) {
    if (next == FrmPlateau::Unload::EndProgram) End();
    if (next == FrmPlateau::Unload::ToPartie) Post(&Application::LoadPartie);
  };
  plateau_->Form_Load();
  if (ended_) return;
  mainWindow_->Open();
  emit stepOpened();
}

void Application::End() {
  if (ended_) return;
  ended_ = true;
  if (mainWindow_) mainWindow_->hide();
  emit ended();
}

void Application::BringToFront() {
  QWidget* front = nullptr;
  if (mainWindow_ && mainWindow_->isVisible()) front = mainWindow_.get();
  if (!front && partieWindow_ && partieWindow_->isVisible()) front = partieWindow_.get();
  if (!front && screenWindow_ && screenWindow_->isVisible()) front = screenWindow_.get();
  if (!front && startWindow_ && startWindow_->isVisible()) front = startWindow_.get();
  if (QWidget* modal = QApplication::activeModalWidget()) front = modal;
  if (!front) return;
  if (front->isMinimized()) front->showNormal();
  front->raise();
  front->activateWindow();
}

void Application::CloseStart() {
  if (start_) start_->changed = nullptr;
  startWindow_.reset();
  start_.reset();
}

void Application::CloseScreenCheck() {
  if (screen_) screen_->changed = nullptr;
  screenWindow_.reset();
  screen_.reset();
}

void Application::ClosePartie() {
  partieWindow_.reset();
  partie_.reset();
}

void Application::ClosePlateau() {
  additions_ = nullptr;
  forms_.SetMainWindow(nullptr);
  mainWindow_.reset();
  record_.reset();
  plateau_.reset();
}

void Application::JoinGraph() {
  if (graphBuilder_.joinable()) graphBuilder_.join();
}

void Application::TellWordLists() {
  if (lists_->Told().empty()) return;
  program_.StrMsg = lists_->Told();
  program_.ShowMessage(kOkOnly);
}

void Application::ReopenForWordList() {
  ClosePlateau();
  // The list is put in service and the player told before the main window
  // comes back, as for a new game: its guided tour then comes after the word.
  JoinGraph();
  lists_->BeforeNewGame();
  if (!lists_->Told().empty()) {
    TellWordLists();
  } else {
    std::string text = lists_->InUse();
    if (!text.empty()) text[0] = 'L';
    program_.StrMsg = text + " est en service.";
    program_.ShowMessage(kOkOnly);
  }
  if (!ended_) LoadPlateau();
}

void Application::TakeUpRecord(const SavedGame& game) {
  if (!journal_) return;
  const std::optional<std::string> text = journal_->LoadRecord();
  if (!text) return;
  std::string error;
  const std::optional<GameFile> file = ParseGameFile(*text, error);
  if (!file) return;
  std::optional<Replayed> replayed =
      Replay(lexicon_, &lexicon_.Graph(), program_.options, *file, error, /*uptoTheNextDraw=*/game.Chevalet.empty());
  // A record of another game (or of an older state of it) is left aside: the
  // game goes on without plays to take back.
  if (!replayed || !SameGame(replayed->state, game)) return;
  record_->Adopt(*file, std::move(replayed->turns));
}

}  // namespace ostrane::gui
