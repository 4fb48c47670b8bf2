// Whole games played through the real windows: the start-up chain, the
// game's name, the tools frame, the tile picker clicked letter by letter,
// tiles dragged with the mouse onto the board, the blank's letter typed,
// validation clicked, the modal boxes answered, the end of the game and the
// table of the best scores. Time moves only when the test moves it.
#include <QCheckBox>
#include <QClipboard>
#include <QMimeData>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QToolButton>
#include <QtTest>

#include <optional>

#include "app/gui/application.h"
#include "app/gui/dialogs.h"
#include "app/gui/main_window.h"
#include "app/gui/startup_windows.h"
#include "board_view/painters.h"
#include "game/frm_plateau.h"
#include "game/layout.h"
#include "records/game_journal.h"
#include "records/game_name.h"
#include "records/program.h"
#include "tests/app/test_host.h"

using namespace ostrane;
using namespace ostrane::gui;
using ostrane::test::ScreenshotPath;
using ostrane::test::TestHost;

namespace {

// Answers whatever modal window is up, one action at a time. Each step
// schedules the next before it acts, so that a modal window the action
// opens is answered from inside its own loop.
class Pilot : public QObject {
 public:
  Pilot(TestHost& host) : host_(host) {}
  ~Pilot() override { running_ = false; }

  void Start() {
    running_ = true;
    Schedule();
  }
  void Stop() { running_ = false; }

  // What it saw.
  QStringList boxes;        // texts of the message boxes
  QStringList tourTexts;    // texts of the tour's steps
  QStringList proposals;    // word, position and points of each best play
  QString finalScore;       // FrmFini's label
  QStringList bestLines;    // the table as it was shown
  int bestSelected = -1;    // its selected line when the walk ended
  int pickers = 0;          // picking forms opened
  int jokers = 0;           // blank letters typed

  // What it does.
  std::string nextJoker = "E";  // the letter typed for the next blank
  bool askInformations = true;  // the first picker shows its help (two pages)
  bool screenshots = false;

 private:
  void Schedule() {
    QTimer::singleShot(0, this, [this] { Step(); });
  }

  void Step() {
    if (!running_) return;
    Schedule();
    QWidget* w = QApplication::activeModalWidget();
    if (!w || !w->isVisible()) return;
    if (auto* box = qobject_cast<QMessageBox*>(w)) return Answer(box);
    if (auto* d = qobject_cast<JetonsDialog*>(w)) return Pick(d);
    if (auto* d = qobject_cast<JocDialog*>(w)) return Joker(d);
    if (auto* d = qobject_cast<BoiteDDialog*>(w)) return Proposal(d);
    if (auto* d = qobject_cast<BoiteIDialog*>(w)) return Tour(d);
    if (auto* d = qobject_cast<FiniDialog*>(w)) return Fini(d);
    if (auto* d = qobject_cast<BestDialog*>(w)) return Best(d);
  }

  void Answer(QMessageBox* box) {
    boxes << box->text();
    QAbstractButton* chosen = nullptr;
    for (QAbstractButton* b : box->buttons())
      if (b->text() == QLatin1String("Oui") || b->text() == QLatin1String("OK")) chosen = b;
    if (chosen) QTest::mouseClick(chosen, Qt::LeftButton);
  }

  void Pick(JetonsDialog* d) {
    FrmJetons& m = d->Model();
    if (!d->property("counted").toBool()) {
      d->setProperty("counted", true);
      ++pickers;
    }
    if (!m.enabled) {
      host_.timers.Advance(250);  // the picker wakes up
      return;
    }
    if (askInformations) {
      askInformations = false;
      QTest::mouseClick(d->CmdInfo(), Qt::LeftButton);
      return;
    }
    const Program& program = *program_;
    if (program.IntNbTire == 5 && screenshots && !pickerShot_) {
      pickerShot_ = true;
      d->grab().save(ScreenshotPath(QStringLiteral("picker")));
    }
    if (program.IntNbTire < m.IntNbATirer && !program.StrSac.empty()) {
      const char letter = program.StrSac[0];
      const int index = letter == '?' ? FrmJetons::kBlank : letter - 'A' + 1;
      QToolButton* button = d->CmdJeton(index);
      QVERIFY2(button->isEnabled(), "the button of a letter in the bag is enabled");
      QTest::mouseClick(button, Qt::LeftButton);
      return;
    }
    QVERIFY(d->CmdValider()->isEnabled());
    QTest::mouseClick(d->CmdValider(), Qt::LeftButton);
  }

  void Joker(JocDialog* d) {
    if (d->TxtJok()->text().isEmpty()) {
      ++jokers;
      QTest::keyClicks(d->TxtJok(), QString::fromStdString(nextJoker).toLower());
      return;
    }
    host_.timers.Advance(250);  // the quarter second that shows the letter
  }

  void Proposal(BoiteDDialog* d) {
    proposals << (d->Lbl(1)->text() + QLatin1Char('|') + d->Lbl(3)->text() + QLatin1Char('|') + d->Lbl(5)->text());
    if (screenshots && !proposalShot_) {
      proposalShot_ = true;
      d->grab().save(ScreenshotPath(QStringLiteral("proposal")));
    }
    QTest::mouseClick(d->CmdQ(), Qt::LeftButton);
  }

  void Tour(BoiteIDialog* d) {
    tourTexts << d->LblInfo()->text();
    QTest::mouseClick(d->CmdQ(), Qt::LeftButton);
  }

  void Fini(FiniDialog* d) {
    finalScore = d->LblScore()->text();
    QTest::mouseClick(d->CmdQuit(), Qt::LeftButton);
  }

  void Best(BestDialog* d) {
    if (bestTicks_ < 60) {
      ++bestTicks_;
      host_.timers.Advance(10);  // the list comes, then the selection walks down
      return;
    }
    bestTicks_ = 0;
    bestLines.clear();
    for (int i = 0; i < d->LstSco()->count(); ++i) bestLines << d->LstSco()->item(i)->text();
    bestSelected = d->LstSco()->currentRow();
    if (screenshots && !bestShot_) {
      bestShot_ = true;  // the table with the new game selected
      d->grab().save(ScreenshotPath(QStringLiteral("best_scores")));
    }
    QTest::mouseClick(d->CmdFerme(), Qt::LeftButton);
  }

 public:
  const Program* program_ = nullptr;

 private:
  TestHost& host_;
  bool running_ = false;
  bool pickerShot_ = false, proposalShot_ = false, bestShot_ = false;
  int bestTicks_ = 0;
};

// A program started in a folder of its own, up to the game's name.
struct Session {
  QTemporaryDir dir;
  TestHost host;
  std::unique_ptr<Application> app;
  Pilot pilot{host};

  // With `pauses`, the pause of the first plays runs `onPause` in place of
  // the time it waits.
  explicit Session(const QByteArray& options = {}, const QByteArray& bestScores = {}, bool pauses = false) {
    if (!options.isEmpty()) Write(QStringLiteral("Option.ret"), options);
    if (!bestScores.isEmpty()) Write(QStringLiteral("bestsco.ret"), bestScores);
    Application::Settings settings;
    settings.startDirectory = dir.path();
    settings.screenHeight = [] { return 768; };
    settings.pauses = pauses;
    settings.wait = [this](int milliseconds) {
      if (onPause) onPause(milliseconds);
    };
    app = std::make_unique<Application>(host.host, settings);
    pilot.program_ = &app->program();
  }
  ~Session() {
    pilot.Stop();
    app.reset();
  }

  void Write(const QString& name, const QByteArray& bytes) {
    QFile f(dir.filePath(name));
    f.open(QIODevice::WriteOnly);
    f.write(bytes);
  }
  QByteArray Read(const QString& name) {
    QFile f(dir.filePath(name));
    f.open(QIODevice::ReadOnly);
    return f.readAll();
  }

  // The start-up chain, the screen check and the name form, time moved on
  // by hand: ends with FrmPartie on the screen.
  bool ToGameName() {
    if (!app->Start(false)) return false;
    host.timers.Advance(100);  // TimReg: the window shows
    host.timers.Advance(400);  // the tree, the long lists, the definitions
    QCoreApplication::processEvents();  // FrmEcranResol
    host.timers.Advance(100);           // TimReso
    QCoreApplication::processEvents();  // FrmPartie
    host.timers.Advance(200);           // its TimDeb shows it
    return app->GameName() && app->GameName()->isVisible();
  }

  // From the name form to the main form, ready to start.
  MainWindow* ToMain() {
    QTest::mouseClick(app->GameName()->CmdQ(), Qt::LeftButton);
    QCoreApplication::processEvents();
    if (!app->Main()) return nullptr;
    host.timers.Advance(100);  // TimDeb: the bag, and the tour's first step
    return app->Main();
  }

  MainWindow* Main() { return app->Main(); }
  FrmPlateau& Model() { return *app->Plateau(); }

  std::function<void(int milliseconds)> onPause;
};

const QByteArray kQuietOptions = "Non\r\n3\r\n120\r\nSonYes\r\nDureeYes\r\nImg plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\nResolutionE 0\r\n";

QPoint SquareCentre(int column, int row) {
  return QPoint(layout::SquareLeft(column) + layout::kTileWidth / 2, layout::SquareTop(row) + layout::kTileHeight / 2);
}

// A person's drag: press the tile where `grab` lies in it, move the pointer in
// a few steps to `target` (in the window's client area), release there.
void Drag(MainWindow* w, int tile, QPoint target, QPoint grab = QPoint(17, 17), int steps = 4) {
  TileWidget* t = w->Tile(tile);
  QTest::mousePress(t, Qt::LeftButton, Qt::NoModifier, grab);
  const QPoint start = t->pos() + grab;
  for (int k = 1; k <= steps; ++k) {
    const QPoint at = start + (target - start) * k / steps;
    QTest::mouseMove(t, t->mapFrom(w->Client(), at));
  }
  QTest::mouseRelease(t, Qt::LeftButton, Qt::NoModifier, t->mapFrom(w->Client(), target));
}

// The rack tile that shows `tag`, not on the board and not used yet.
int RackTile(FrmPlateau& m, const std::string& tag, const std::vector<int>& used) {
  for (int i = 0; i < 7; ++i) {
    const Tile& tile = m.PicGamer[size_t(i)];
    if (std::find(used.begin(), used.end(), i) != used.end()) continue;
    if (!tile.visible || !tile.enabled || tile.left < layout::kSeparatorX) continue;
    if (tile.Tag == tag) return i;
  }
  return -1;
}

// Lays the proposed play with the mouse; blanks get their letter typed.
bool LayProposition(Session& s) {
  FrmPlateau& m = s.Model();
  if (!m.Proposition) return false;
  const ClsWord word = *m.Proposition;
  const bool vertical = !word.Place.empty() && word.Place[0] >= '0' && word.Place[0] <= '9';
  const int column = m.ObjPlateau->SubColumn(word.Place);
  const int row = m.ObjPlateau->SubTrouverLigne(word.Place);
  std::vector<int> used;
  for (size_t i = 0; i < word.Express.size(); ++i) {
    const int c = vertical ? column : column + int(i);
    const int r = vertical ? row + int(i) : row;
    if (m.ObjPlateau->Square(c, r) != 0) continue;
    const char letter = word.Express[i];
    const bool blank = letter >= 'A' && letter <= 'Z';
    const int tile = RackTile(m, blank ? "?" : std::string(1, letter), used);
    if (tile < 0) return false;
    used.push_back(tile);
    if (blank) s.pilot.nextJoker = std::string(1, letter);
    Drag(s.Main(), tile, SquareCentre(c, r));
    const Tile& laid = m.PicGamer[size_t(tile)];
    if (laid.left != layout::SquareLeft(c) || laid.top != layout::SquareTop(r)) return false;
  }
  return true;
}

// Types text as a keyboard does, accents included.
void Type(QWidget* widget, const QString& text) {
  for (const QChar ch : text) {
    if (ch.unicode() < 128)
      QTest::keyClick(widget, ch.toLatin1());
    else
      QTest::sendKeyEvent(QTest::Click, widget, Qt::Key(ch.toUpper().unicode()), QString(ch), Qt::NoModifier);
  }
}

// Answers the next message box with the button of that caption, keeping its
// text; gives up when `owner` goes.
void AnswerNextBox(QObject* owner, const QString& button, QString* text) {
  auto* timer = new QTimer(owner);
  timer->setInterval(0);
  QObject::connect(timer, &QTimer::timeout, [timer, button, text] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isVisible()) return;
    *text = box->text();
    timer->stop();
    timer->deleteLater();
    for (QAbstractButton* b : box->buttons())
      if (b->text() == button) b->click();
  });
  timer->start();
}

// A game kept after two plays (CHAT through the centre, then a blank for
// the S of CHATS) and the draw of the third turn.
SavedGame KeptAfterTwoPlays() {
  SavedGame game;
  game.NomPartie = "Partie du soir";
  for (std::string& row : game.lignes) row = std::string(15, '.');
  game.lignes[7] = "......chatS....";
  game.SubWordFirst = false;
  game.Chevalet = "eeinrs?";
  std::string bag = StartBag(0);
  for (const char c : std::string("CHAT?EEINRS?")) bag.erase(bag.find(c), 1);
  game.StrSac = bag;
  game.LblPtsJoueur = "27";
  game.IntNbCoups = 2;
  game.VarTirage = 3;
  game.LblTirage = "02";
  game.TxtHisto = {"01 CHAT            18", "02 CHATS            9"};
  game.ownRowColumn = 9;
  game.ownRowRow = 7;
  game.ownRowSet = -1;
  game.randomState = 99;
  return game;
}

bool SameImage(const QImage& a, const QImage& b) {
  return a.convertToFormat(QImage::Format_RGB32) == b.convertToFormat(QImage::Format_RGB32);
}

}  // namespace

class GameTest : public QObject {
  Q_OBJECT
 private slots:
  void wholeGameThroughTheWindows();
  void tilesFollowTheMouseAndObeyTheDropRules();
  void toolsFrameFoldsMovesAndKeepsItsOptions();
  void wordCheckUnderTheBoard();
  void startUpShowsItsProgress();
  void secondCopyEndsWithItsMessage();
  void smallScreenWarnsUntilTheCheckIsSwitchedOff();
  void gameNameFormFiltersWhatIsTyped();
  void stopQuestionsAndWindowClose();
  void noInputWhileTheSearchRunsOrThePauseLasts();
  void sideCommands();
  void aGameLeftUnfinishedIsTakenUp();
  void aGameLeftUnfinishedCanBeDropped();
};

void GameTest::wholeGameThroughTheWindows() {
  // Two games already in the table, so the new one is ranked among them.
  const QByteArray best =
      "31     Partie tabli 07      02/03/26   20:15\r\n"
      "612    Dimanche soir        14/06/26   21:40\r\n";
  Session s({}, best);
  s.pilot.screenshots = true;
  s.pilot.Start();
  QVERIFY(s.ToGameName());
  QCOMPARE(s.app->GameName()->TxtNom()->text(), QStringLiteral("Partie tabli 01"));

  // A name typed with a character the form does not take.
  GameNameWindow* name = s.app->GameName();
  name->TxtNom()->selectAll();
  Type(name->TxtNom(), QStringLiteral("Été/soir"));
  QCOMPARE(name->TxtNom()->text(), QStringLiteral("tésoir"));  // "É" and "/" are not taken
  name->TxtNom()->selectAll();
  Type(name->TxtNom(), QStringLiteral("Fête à Lyon"));
  QCOMPARE(name->TxtNom()->text(), QStringLiteral("Fête à Lyon"));
  name->grab().save(ScreenshotPath(QStringLiteral("game_name")));

  MainWindow* w = s.ToMain();
  QVERIFY(w);
  QVERIFY(w->isVisible());
  QCOMPARE(s.pilot.tourTexts.size(), 1);  // step 1 of the tour
  QCOMPARE(w->LblIndic()->text(), QStringLiteral("Pour commencer,\ncliquez sur\n''Débuter une partie''."));

  // The short bag with a blank, chosen in the tools frame; it takes effect
  // at the next game, which goes through the name form again.
  QTest::mouseClick(w->Tools()->OptPioche(3), Qt::LeftButton);
  QCOMPARE(s.app->program().IntPioche, int16_t(3));
  QCOMPARE(s.app->program().StrSac.size(), size_t(102));
  QTest::mouseClick(w->CmdGame(), Qt::LeftButton);
  QCoreApplication::processEvents();
  QVERIFY(s.app->GameName());
  s.host.timers.Advance(200);
  QCOMPARE(s.app->GameName()->TxtNom()->text(), QStringLiteral("Partie tabli 02"));
  w = s.ToMain();
  QVERIFY(w);
  QCOMPARE(s.app->program().StrSac, std::string("AAAABEEEGIILLNNOST?"));
  QCOMPARE(w->LblNomP()->text(), QStringLiteral("Partie tabli 02"));

  // The first draw: the picker opens, shows its help on two pages, the
  // letters are clicked in, the search runs and the best play is shown.
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);
  QCOMPARE(s.pilot.pickers, 1);
  QVERIFY(s.pilot.tourTexts.join(QLatin1Char('\n')).contains(QStringLiteral("A noter:")) ||
          s.pilot.tourTexts.join(QLatin1Char('\n')).contains(QStringLiteral("- Le jeton du joker est représenté")));
  QCOMPARE(s.pilot.proposals.size(), 1);
  QVERIFY(s.Model().Proposition.has_value());
  QCOMPARE(test::Count(s.host.sounds.played, 103), 1);  // the end of the search
  QVERIFY(!w->CmdNew()->isEnabled());
  QVERIFY(w->CmdArret()->isVisible());
  QVERIFY(w->Board()->ImgXY()->isVisible());

  int turns = 0;
  bool shot = false;
  while (true) {
    FrmPlateau& m = s.Model();
    QVERIFY2(m.Proposition.has_value(), "every rack of this bag has a play");
    const int releasesBefore = test::Count(s.host.sounds.played, 101);
    QVERIFY(LayProposition(s));
    QVERIFY(test::Count(s.host.sounds.played, 101) > releasesBefore);  // each release clicks
    QVERIFY(!w->Board()->ImgXY()->isVisible());          // the first release took the arrow away
    QCOMPARE(w->LblPts()->text(), QString::number(m.Proposition->CountP));
    QVERIFY(w->CmdValider()->isEnabled());
    QVERIFY(w->CmdRanger()->isEnabled());
    // The proposed tiles are blue on the board, blanks dark red.
    for (int i = 0; i < 7; ++i) {
      const Tile& tile = m.PicGamer[size_t(i)];
      if (tile.Tag.empty() || tile.left >= layout::kSeparatorX) continue;
      const QImage face = w->Tile(i)->grab().toImage();
      const bool blank = tile.Tag[0] >= 'A' && tile.Tag[0] <= 'Z';
      QVERIFY(SameImage(face, view::FaceImage(TileFace{blank ? TileFace::Picture::ImgJok : TileFace::Picture::ImgLet,
                                                        blank ? tile.Tag[0] - 'A' : tile.Tag[0] - 'a',
                                                        blank ? TileFace::Tint::DarkRed : TileFace::Tint::Blue})));
    }
    if (!shot) {
      shot = true;
      w->grab().save(ScreenshotPath(QStringLiteral("main_window_proposal")));
    }
    const int score = w->LblPtsJoueur()->text().toInt();
    const int points = m.Proposition->CountP;
    QTest::mouseClick(w->CmdValider(), Qt::LeftButton);
    ++turns;
    QCOMPARE(w->LblPtsJoueur()->text().toInt(), score + points);
    QCOMPARE(w->TxtHisto()->toPlainText().split(QLatin1Char('\n')).size(), turns);
    if (!s.Model().CmdSolution.enabled) break;  // the game ran out
    QVERIFY(turns < 12);
  }
  QVERIFY(turns >= 3);
  QVERIFY(s.pilot.jokers >= 1);  // the blank was laid and its letter typed
  QVERIFY(s.pilot.pickers >= turns);
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_end")));

  // The board shows the played words: the laid tiles are in the engine's grid.
  int laid = 0;
  for (int r = 0; r < 15; ++r)
    for (int c = 0; c < 15; ++c) laid += s.Model().ObjPlateau->Square(c, r) != 0;
  QCOMPARE(laid, 19);  // the whole bag
  QCOMPARE(test::Count(s.host.sounds.played, 106), 1);

  // The end: FrmFini a second later, then the best scores.
  const QString total = w->LblPtsJoueur()->text();
  s.host.timers.Advance(1000);
  QCOMPARE(s.pilot.finalScore, total + QStringLiteral(" points"));
  QCOMPARE(w->LblIndic()->text(), QStringLiteral("\nFin de la partie."));
  s.host.timers.Advance(200);
  QVERIFY(s.pilot.boxes.join(QLatin1Char('\n')).contains(QStringLiteral("Vous avez réalisé un score de ") + total));
  QCOMPARE(s.pilot.bestLines.size(), 3);
  QVERIFY(s.pilot.bestSelected >= 0);
  QVERIFY(s.pilot.bestLines[s.pilot.bestSelected].contains(QStringLiteral("Partie tabli 02")));
  QVERIFY(s.pilot.bestLines[s.pilot.bestSelected].contains(QStringLiteral("23/11/26   14:05")));
  QVERIFY(s.Read(QStringLiteral("bestsco.ret")).contains("Partie tabli 02"));
  QVERIFY(s.pilot.boxes.join(QLatin1Char('\n')).contains(QStringLiteral("bravo"), Qt::CaseInsensitive) ||
          s.pilot.boxes.join(QLatin1Char('\n')).contains(QStringLiteral("SUPER SCORE")));

  // The table again from its button.
  QTest::mouseClick(w->CmdMeilleur(), Qt::LeftButton);
  QCOMPARE(s.pilot.bestLines.size(), 3);
  QVERIFY(w->CmdGame()->isVisible());
  s.pilot.Stop();
}

void GameTest::tilesFollowTheMouseAndObeyTheDropRules() {
  Session s(kQuietOptions);
  s.pilot.askInformations = false;
  s.pilot.Start();
  QVERIFY(s.ToGameName());
  MainWindow* w = s.ToMain();
  QVERIFY(w);
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);
  FrmPlateau& m = s.Model();
  QCOMPARE(s.pilot.proposals.size(), 1);

  // A tile follows the pointer while it is held.
  const QPoint before = w->Tile(0)->pos();
  QTest::mousePress(w->Tile(0), Qt::LeftButton, Qt::NoModifier, QPoint(10, 12));
  QTest::mouseMove(w->Tile(0), QPoint(10, 12 - 200));
  QCOMPARE(w->Tile(0)->pos(), before - QPoint(0, 200));
  QCOMPARE(m.PicGamer[0].top, before.y() - 200);
  // Released over nothing (the side panel): it goes back.
  QTest::mouseRelease(w->Tile(0), Qt::LeftButton, Qt::NoModifier, QPoint(10, 12));
  QCOMPARE(w->Tile(0)->pos(), before);

  // The right button does nothing.
  QTest::mousePress(w->Tile(1), Qt::RightButton, Qt::NoModifier, QPoint(17, 17));
  QVERIFY(!s.app->Main()->Drag().TimDeplaceEnabled);
  QTest::mouseRelease(w->Tile(1), Qt::RightButton, Qt::NoModifier, QPoint(17, 17));

  // A tile snaps to a square from 60 % of the way on: left 37 stays on
  // column 0, left 38 goes to column 1 (the pointer holds the tile at 17).
  Drag(w, 0, QPoint(37 + 17, layout::SquareTop(3) + 17));
  QCOMPARE(m.PicGamer[0].left, layout::SquareLeft(0));
  Drag(w, 0, QPoint(38 + 17, layout::SquareTop(3) + 17));
  QCOMPARE(m.PicGamer[0].left, layout::SquareLeft(1));
  QCOMPARE(m.PicGamer[0].top, layout::SquareTop(3));
  QCOMPARE(w->Tile(0)->pos(), QPoint(layout::SquareLeft(1), layout::SquareTop(3)));
  QVERIFY(w->CmdRanger()->isEnabled());
  QCOMPARE(w->LblPts()->text(), QStringLiteral("0"));  // one tile on an empty board is no play

  // A second tile on the same square goes back where it came from.
  const QPoint home1 = w->Tile(1)->pos();
  Drag(w, 1, SquareCentre(1, 3));
  QCOMPARE(w->Tile(1)->pos(), home1);

  // Two rack tiles change places.
  const std::string tag2 = m.PicGamer[2].Tag, tag3 = m.PicGamer[3].Tag;
  const QPoint home2 = w->Tile(2)->pos(), home3 = w->Tile(3)->pos();
  Drag(w, 2, home3 + QPoint(17, 17));
  QCOMPARE(w->Tile(2)->pos(), home3);
  QCOMPARE(w->Tile(3)->pos(), home2);
  QCOMPARE(m.PicGamer[2].Tag, tag2);
  QCOMPARE(m.PicGamer[3].Tag, tag3);

  // A tile taken far right over the rack's end stays on the rack's last
  // place: the pointer is held back before place 7, which does not exist.
  Drag(w, 4, QPoint(layout::kFormWidth - 2, layout::RackTop() + 17));
  QVERIFY(m.PicGamer[4].left <= layout::RackLeft(6));
  QCOMPARE(m.PicGamer[4].top, layout::RackTop());

  // The tile from the board goes home with "Ranger".
  QTest::mouseClick(w->CmdRanger(), Qt::LeftButton);
  QVERIFY(m.PicGamer[0].left >= layout::kRegletteLeft);
  QVERIFY(!w->CmdRanger()->isEnabled());
  QCOMPARE(w->LblPts()->text(), QString());

  // Laid as proposed, the play scores its points.
  QVERIFY(LayProposition(s));
  QCOMPARE(w->LblPts()->text(), QString::number(m.Proposition->CountP));
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_drag")));
  s.pilot.Stop();
}

void GameTest::toolsFrameFoldsMovesAndKeepsItsOptions() {
  Session s(kQuietOptions);
  s.pilot.Start();
  QVERIFY(s.ToGameName());
  MainWindow* w = s.ToMain();
  QVERIFY(w);
  ToolsFrame* tools = w->Tools();
  QCOMPARE(tools->geometry(), QRect(16, 16, 249, 117));
  QCOMPARE(tools->OptPioche(0)->text(), QStringLiteral("Normal (102 jetons)"));
  QVERIFY(tools->OptPioche(0)->isChecked());
  QVERIFY(tools->OptJok(1)->isChecked());

  QTest::mouseClick(tools->CmdCacher(), Qt::LeftButton);
  QCOMPARE(tools->geometry(), QRect(0, 0, 24, 15));
  QTest::mouseClick(tools->CmdCacher(), Qt::LeftButton);
  QCOMPARE(tools->geometry(), QRect(16, 16, 249, 117));

  // Carried by its background and dropped on the board at (200, 300).
  const QPoint grab(120, 8);
  QTest::mousePress(tools, Qt::LeftButton, Qt::NoModifier, grab);
  const QPoint drop = tools->mapFrom(w->Client(), w->Board()->mapTo(w->Client(), QPoint(200, 300)));
  QTest::mouseMove(tools, drop);
  QTest::mouseRelease(tools, Qt::LeftButton, Qt::NoModifier, drop);
  QCOMPARE(tools->pos(), QPoint(200, 300));
  // Folded and unfolded, it is back at (16, 16).
  QTest::mouseClick(tools->CmdCacher(), Qt::LeftButton);
  QTest::mouseClick(tools->CmdCacher(), Qt::LeftButton);
  QCOMPARE(tools->pos(), QPoint(16, 16));

  QTest::mouseClick(tools->OptJok(3), Qt::LeftButton);
  QCOMPARE(s.app->program().IntJok, int16_t(3));
  QVERIFY(!tools->OptJok(1)->isChecked());

  // Full size: the board keeps its size and its place, 16 and 15 pixels
  // from the client origin, however large the window grows.
  const QPoint boardAt = w->Board()->mapTo(w, QPoint(0, 0));
  QCOMPARE(boardAt, QPoint(layout::kPlateauLeft, layout::kPlateauTop));
  QTest::mouseClick(tools->CmdMax(), Qt::LeftButton);
  QCOMPARE(s.Model().WindowState, 2);
  QVERIFY(w->windowState() & Qt::WindowMaximized);
  QCOMPARE(w->Board()->mapTo(w, QPoint(0, 0)), boardAt);
  QTest::mouseClick(tools->CmdMin(), Qt::LeftButton);
  QCOMPARE(s.Model().WindowState, 0);
  QVERIFY(!(w->windowState() & Qt::WindowMaximized));
  // The offscreen screen is no larger than the form: a window grown as a
  // maximise on a real screen grows it.
  w->resize(1280, 800);
  QCoreApplication::processEvents();
  QCOMPARE(w->size(), QSize(1280, 800));
  QCOMPARE(w->Client()->geometry(), QRect(0, 0, layout::kFormWidth, layout::kFormHeight));
  QCOMPARE(w->Board()->mapTo(w, QPoint(0, 0)), boardAt);
  QCOMPARE(w->Board()->size(), QSize(layout::kPlateauWidth, layout::kPlateauHeight));
  w->resize(layout::kFormWidth, layout::kFormHeight);
  s.pilot.Stop();
}

void GameTest::wordCheckUnderTheBoard() {
  Session s(kQuietOptions);
  s.pilot.Start();
  QVERIFY(s.ToGameName());
  MainWindow* w = s.ToMain();
  QVERIFY(w);
  QLineEdit* box = w->TxtCtrl();
  QVERIFY(!w->CmdCtrl()->isEnabled());
  box->setFocus();
  Type(box, QStringLiteral("a1é-"));  // only letters get in
  QCOMPARE(box->text(), QStringLiteral("a"));
  QVERIFY(!w->CmdCtrl()->isEnabled());
  QTest::keyClicks(box, QStringLiteral("a"));
  QVERIFY(w->CmdCtrl()->isEnabled());
  QTest::mouseClick(w->CmdCtrl(), Qt::LeftButton);
  QCOMPARE(w->LblA1()->text(), QStringLiteral("Le mot AA existe."));
  QVERIFY(w->PicDef()->isVisible());
  QVERIFY(w->LblShowDef()->text().startsWith(QLatin1Char('\n')));
  QVERIFY(w->LblShowDef()->text().contains(QStringLiteral("lave")));
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_word_check")));

  box->clear();
  QTest::keyClicks(box, QStringLiteral("zzzq"));
  QTest::keyClick(box, Qt::Key_Return);  // Enter checks when the button is the default
  QCOMPARE(w->LblA1()->text(), QStringLiteral("Le mot ZZZQ n'existe pas."));
  QCOMPARE(w->LblA1()->palette().color(QPalette::WindowText), QColor(192, 0, 0));

  box->clear();
  QTest::keyClicks(box, QStringLiteral("abcdefghijklmnopq"));
  QCOMPARE(box->text().size(), 15);  // the sixteenth key is refused

  // A paste or a drop that brings anything but letters is refused whole;
  // one of letters only gets in, and the count is one a letter.
  box->clear();
  QTest::keyClicks(box, QStringLiteral("ete"));
  QGuiApplication::clipboard()->setText(QStringLiteral("l'été"));
  QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
  QCOMPARE(box->text(), QStringLiteral("ete"));
  box->paste();
  QCOMPARE(box->text(), QStringLiteral("ete"));
  QGuiApplication::clipboard()->setText(QStringLiteral("a1"));
  box->paste();
  QCOMPARE(box->text(), QStringLiteral("ete"));
  const auto drop = [box](const QString& text) {
    QMimeData data;
    data.setText(text);
    QDropEvent event(QPointF(box->width() - 4, box->height() / 2), Qt::CopyAction, &data, Qt::LeftButton,
                     Qt::NoModifier);
    static_cast<QObject*>(box)->event(&event);  // as the drag manager hands it over
  };
  drop(QStringLiteral("é t"));
  QCOMPARE(box->text(), QStringLiteral("ete"));
  QCOMPARE(ModelText(s.Model().TxtCtrl.text), QStringLiteral("ete"));
  QGuiApplication::clipboard()->setText(QStringLiteral("s"));
  box->end(false);
  QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
  QCOMPARE(box->text(), QStringLiteral("etes"));
  drop(QStringLiteral("xy"));
  QCOMPARE(box->text().size(), 6);
  QCOMPARE(ModelText(s.Model().TxtCtrl.text), box->text());
  QCOMPARE(w->findChild<QLabel*>(QStringLiteral("LblN"))->text(), QStringLiteral("6"));
  QTest::mouseClick(w->CmdCtrl(), Qt::LeftButton);  // a check, never a fatal end
  QVERIFY(w->LblA1()->text().startsWith(QStringLiteral("Le mot ")));

  // A command that sends the focus to Foc takes it from the word box, which
  // shows it as it loses it: greyed, the invitation again, no definition,
  // Enter no longer checks.
  box->clear();
  box->setFocus();
  QVERIFY(box->hasFocus());
  QCOMPARE(s.Model().ActiveControl, FrmPlateau::Focus::TxtCtrl);
  QCOMPARE(box->palette().color(QPalette::Base), QColor(224, 224, 224));
  QTest::keyClicks(box, QStringLiteral("aa"));
  QTest::keyClick(box, Qt::Key_Return);
  QCOMPARE(w->LblA1()->text(), QStringLiteral("Le mot AA existe."));
  QVERIFY(w->PicDef()->isVisible());
  QVERIFY(w->CmdCtrl()->isDefault());
  QTest::mouseClick(w->Tools()->CmdCacher(), Qt::LeftButton);
  QCOMPARE(s.Model().ActiveControl, FrmPlateau::Focus::Foc);
  QVERIFY(w->Foc()->hasFocus());
  QVERIFY(!box->hasFocus());
  QCOMPARE(w->LblA1()->text(), QStringLiteral("Entrez un mot dans la zone de texte."));
  QCOMPARE(w->LblA1()->palette().color(QPalette::WindowText), QColor(128, 128, 128));
  QCOMPARE(box->palette().color(QPalette::Base), QColor(192, 192, 192));
  QVERIFY(!w->PicDef()->isVisible());
  QVERIFY(!w->CmdCtrl()->isDefault());
  QTest::keyClick(w->Foc(), Qt::Key_Return);  // Enter no longer checks
  QCOMPARE(w->LblA1()->text(), QStringLiteral("Entrez un mot dans la zone de texte."));
  QTest::mouseClick(w->Tools()->CmdCacher(), Qt::LeftButton);  // the frame back
  // Back into the box: its colours of a box with the focus.
  box->setFocus();
  QCOMPARE(s.Model().ActiveControl, FrmPlateau::Focus::TxtCtrl);
  QCOMPARE(box->palette().color(QPalette::Base), QColor(224, 224, 224));

  // The tick box turns the definitions off.
  QTest::mouseClick(w->ImgA(), Qt::LeftButton);
  QCOMPARE(s.app->program().options.OptDef23, int16_t(0));
  QVERIFY(!w->ImgA()->isVisible());
  s.pilot.Stop();
}

void GameTest::startUpShowsItsProgress() {
  Session s;
  QVERIFY(s.app->Start(false));
  StartupWindow* start = s.app->Startup();
  QVERIFY(start);
  QVERIFY(!start->isVisible());
  s.host.timers.Advance(100);
  QVERIFY(start->isVisible());
  QCOMPARE(start->LblVerA()->text(), QStringLiteral("Version 1.23"));
  QCOMPARE(start->ImgProgress()->x(), -264);
  s.host.timers.Advance(100);  // the tree: a step of progress at each ten-thousandth word
  QCOMPARE(start->LblInfo2()->text(), QStringLiteral("Chargement des mots du dictionnaire..."));
  QVERIFY(!start->LblInfo2()->font().bold());
  QVERIFY(QRegularExpression(QStringLiteral("^\\d\\d %$")).match(start->LblCharge()->text()).hasMatch());
  const int steps = (s.app->lexicon().Dico.NbMotsDico() - 1) / 10000;
  QCOMPARE(start->ImgProgress()->x(), (-3960 + steps * 220) / 15);
  start->grab().save(ScreenshotPath(QStringLiteral("start_up")));
  s.host.timers.Advance(20);
  QCOMPARE(start->LblCharge()->text(), QStringLiteral("95 %"));
  s.host.timers.Advance(100);
  QCOMPARE(start->LblCharge()->text(), QStringLiteral("100 %"));
  QCOMPARE(start->ImgProgress()->x(), (-3960 + steps * 220 + 6 * 50) / 15);
  s.host.timers.Advance(70);
  QCoreApplication::processEvents();
  QVERIFY(!s.app->Startup());
  QVERIFY(s.app->ScreenCheck());
  QVERIFY(s.app->lexicon().Dico.NbMotsDico() > 100000);
}

void GameTest::secondCopyEndsWithItsMessage() {
  Session s;
  QString text;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box);
    text = box->text();
    icon = box->icon();
    box->button(QMessageBox::Ok) ? box->button(QMessageBox::Ok)->click() : box->buttons().first()->click();
  });
  QSignalSpy ended(s.app.get(), &Application::ended);
  QVERIFY(!s.app->Start(true));
  QCOMPARE(text, QStringLiteral("Le programme est déja lancé."));
  QCOMPARE(icon, QMessageBox::Warning);
  QCOMPARE(ended.count(), 1);
  QVERIFY(s.app->Ended());
  QVERIFY(!QFile::exists(s.dir.filePath(QStringLiteral("Option.ret"))));
}

void GameTest::smallScreenWarnsUntilTheCheckIsSwitchedOff() {
  QTemporaryDir dir;
  TestHost host;
  Application::Settings settings;
  settings.startDirectory = dir.path();
  settings.screenHeight = [] { return 600; };
  settings.pauses = false;
  Application app(host.host, settings);
  QVERIFY(app.Start(false));
  host.timers.Advance(500);
  QCoreApplication::processEvents();
  host.timers.Advance(100);
  ScreenCheckWindow* check = app.ScreenCheck();
  QVERIFY(check);
  QVERIFY(check->isVisible());
  QVERIFY(check->Rtb1()->toPlainText().contains(QStringLiteral("Affichage d'Ostrane")));
  check->grab().save(ScreenshotPath(QStringLiteral("screen_check")));
  QTest::mouseClick(check->ChkResolution(), Qt::LeftButton);
  QCOMPARE(app.program().options.OptResol, uint8_t(1));
  QCoreApplication::processEvents();
  QVERIFY(app.GameName());
}

void GameTest::gameNameFormFiltersWhatIsTyped() {
  Session s;
  QVERIFY(s.ToGameName());
  GameNameWindow* form = s.app->GameName();
  form->TxtNom()->selectAll();
  QTest::keyClick(form->TxtNom(), Qt::Key_Backspace);
  QTest::keyClicks(form->TxtNom(), QStringLiteral("x"));
  QCOMPARE(form->Lbl0()->text(), QStringLiteral("Donnez un nom à cette partie:"));
  QVERIFY(!form->CmdQ()->isEnabled());
  QString said;
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box);
    said = box->text();
    box->buttons().first()->click();
  });
  QTest::keyClick(form->TxtNom(), Qt::Key_Return);
  QCOMPARE(said, QStringLiteral("Vous devez donner un nom à la partie.      "));
  QVERIFY(form->isVisible());
  QTest::keyClicks(form->TxtNom(), QStringLiteral("yz/abcdefghij/k"));
  // Only the first ten characters are examined: the later slash stays.
  QCOMPARE(form->TxtNom()->text(), QStringLiteral("xyzabcdefg"
                                                  "hij/k"));
  QCOMPARE(form->Lbl0()->text(), QStringLiteral("Nom de la partie:"));
  // Unticking the sounds and picking "Relief" reach the options at closing.
  QCheckBox* sons = form->Check(FrmPartie::Check::ChkSons);
  QTest::mouseClick(sons, Qt::LeftButton, Qt::NoModifier, QPoint(8, sons->height() / 2));
  QRadioButton* relief = form->OptAff(4);
  QTest::mouseClick(relief, Qt::LeftButton, Qt::NoModifier, QPoint(8, relief->height() / 2));
  QCOMPARE(s.app->program().options.OptImage, int16_t(4));
  QTest::keyClick(form->TxtNom(), Qt::Key_Return);
  QCoreApplication::processEvents();
  QVERIFY(s.app->Main());
  QVERIFY(!s.app->program().options.OptSons);
  QCOMPARE(s.app->program().NomPartie, std::string("xyzabcdefghij/k"));
  QCOMPARE(s.Model().Plateau.image, 4);
  QVERIFY(SameImage(s.Main()->Board()->Picture(), view::FaceSet::Shared().Plateau(4)));
}

void GameTest::stopQuestionsAndWindowClose() {
  Session s(kQuietOptions);
  s.pilot.Start();
  QVERIFY(s.ToGameName());
  MainWindow* w = s.ToMain();
  QVERIFY(w);
  // Closing before any play asks only whether to quit; "Non" keeps the game.
  QString asked;
  s.pilot.Stop();
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box);
    asked = box->text();
    for (QAbstractButton* b : box->buttons())
      if (b->text() == QLatin1String("Non")) b->click();
  });
  w->close();
  QCOMPARE(asked, QStringLiteral("        Quitter le programme ?"));
  QVERIFY(!s.app->Ended());
  QVERIFY(w->isVisible());

  // Stopping a started game: the question, then the board is cleared.
  s.pilot.Start();
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);
  s.pilot.Stop();
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box);
    asked = box->text();
    for (QAbstractButton* b : box->buttons())
      if (b->text() == QLatin1String("Oui")) b->click();
  });
  QTest::mouseClick(w->CmdArret(), Qt::LeftButton);
  QCOMPARE(asked, QStringLiteral("Voulez-vous abandonner la partie en cours ?   "));
  QVERIFY(!w->CmdArret()->isVisible());
  QVERIFY(w->CmdGame()->isVisible());
  for (int i = 0; i < 7; ++i) QVERIFY(!w->Tile(i)->isVisible());

  // Quitting, answered Yes: the options are saved and the program ends.
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box);
    for (QAbstractButton* b : box->buttons())
      if (b->text() == QLatin1String("Oui")) b->click();
  });
  QTest::mouseClick(w->CmdQuitte(), Qt::LeftButton);
  QVERIFY(s.app->Ended());
  QVERIFY(s.Read(QStringLiteral("Option.ret")).startsWith("Non\r\n5\r\n120\r\n"));
}

void GameTest::noInputWhileTheSearchRunsOrThePauseLasts() {
  Session s(kQuietOptions, {}, /*pauses=*/true);
  s.pilot.askInformations = false;
  s.pilot.Start();
  QVERIFY(s.ToGameName());
  MainWindow* w = s.ToMain();
  QVERIFY(w);
  FrmPlateau& m = s.Model();

  // What a player could try while the window is busy: a second search, the
  // way out, the close box, typing. None of it may start anything.
  const auto tryEverything = [&] {
    const int boxesBefore = int(s.pilot.boxes.size());
    const int proposalsBefore = int(s.pilot.proposals.size());
    QTest::mouseClick(w->CmdSolution(), Qt::LeftButton);
    QTest::mouseClick(w->CmdQuitte(), Qt::LeftButton);
    QTest::mouseClick(w->CmdArret(), Qt::LeftButton);
    QTest::mouseClick(w->Tools()->CmdCacher(), Qt::LeftButton);
    QTest::mouseClick(w->Tile(0), Qt::LeftButton);
    QTest::keyClicks(w->TxtCtrl(), QStringLiteral("ab"));
    QTest::keyClick(w->TxtCtrl(), Qt::Key_Return);
    QVERIFY(!w->close());
    QCOMPARE(int(s.pilot.boxes.size()), boxesBefore);
    QCOMPARE(int(s.pilot.proposals.size()), proposalsBefore);
    QVERIFY(!s.app->Ended());
    QCOMPARE(m.BlnOutilsPlies, int16_t(0));
    QCOMPARE(w->TxtCtrl()->text(), QString());
    QVERIFY(!s.app->Main()->Drag().TimDeplaceEnabled);
  };
  // The waiting pictures turn at TimerEpie's ticks: the timers and the
  // painting go on meanwhile.
  const auto timersGoOn = [&] {
    const int shownBefore = m.IntImageEpie;
    s.host.timers.Advance(FrmPlateau::kTimerEpie);
    const int shown = shownBefore % 3 + 1;
    QVERIFY(w->Iabc(shown)->isVisibleTo(w->PicWait()));
  };

  int searchLooks = 0, pauseLooks = 0;
  s.host.events.onDoEvents = [&] {
    if (searchLooks > 0) return;  // once is enough: the search yields often
    ++searchLooks;
    // The panel, the hourglass and the tiles just drawn are on the screen.
    QVERIFY(!m.enabled);
    QVERIFY(w->InputRefused());
    QVERIFY(w->PicWait()->isVisible());
    QCOMPARE(w->cursor().shape(), Qt::WaitCursor);
    for (int k = 0; k < 7; ++k) {
      QVERIFY(w->Tile(k)->isVisible());
      QCOMPARE(w->Tile(k)->pos(), QPoint(m.PicGamer[size_t(k)].left, m.PicGamer[size_t(k)].top));
    }
    tryEverything();
    timersGoOn();
  };
  s.onPause = [&](int milliseconds) {
    ++pauseLooks;
    QCOMPARE(milliseconds, 1000);
    // The form is given back, yet the pause takes nothing in.
    QVERIFY(m.enabled);
    QVERIFY(w->InputRefused());
    QVERIFY(w->PicWait()->isVisible());
    QCOMPARE(w->cursor().shape(), Qt::ArrowCursor);
    tryEverything();
    timersGoOn();
  };

  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);
  QCOMPARE(searchLooks, 1);
  QCOMPARE(pauseLooks, 1);
  QCOMPARE(s.pilot.proposals.size(), 1);  // one search, one box
  QVERIFY(!w->InputRefused());
  QVERIFY(!w->PicWait()->isVisible());
  // Afterwards the window takes input again.
  QTest::keyClicks(w->TxtCtrl(), QStringLiteral("ab"));
  QCOMPARE(w->TxtCtrl()->text(), QStringLiteral("ab"));
  s.host.events.onDoEvents = nullptr;
  s.pilot.Stop();
}

void GameTest::sideCommands() {
  Session s(kQuietOptions);
  QVERIFY(s.ToGameName());
  MainWindow* w = s.ToMain();
  QVERIFY(w);
  // Sound off, then on again: switching it on plays sound 3.
  QVERIFY(s.app->program().options.OptSons);
  QTest::mouseClick(w->CmdSon(), Qt::LeftButton);
  QVERIFY(!s.app->program().options.OptSons);
  QCOMPARE(w->CmdSon()->toolTip(), QStringLiteral("Sons désactivés"));
  QVERIFY(s.host.sounds.played.empty());
  QTest::mouseClick(w->CmdSon(), Qt::LeftButton);
  QVERIFY(s.app->program().options.OptSons);
  QCOMPARE(s.host.sounds.played, std::vector<int>{103});
  // Help and the on-line dictionary go to the desktop.
  QTest::mouseClick(w->CmdAide(), Qt::LeftButton);
  QCOMPARE(s.host.shell.opened.back(), std::string("z_a_aide.htm"));
  QTest::mouseClick(w->CmdChercheWeb(), Qt::LeftButton);
  QCOMPARE(s.host.shell.opened.back(), std::string(ChercheWebAddress()));
  // The about box disables the main form while it is open.
  bool mainWasDisabled = false;
  QTimer::singleShot(0, [&] {
    auto* about = qobject_cast<AboutDialog*>(QApplication::activeModalWidget());
    QVERIFY(about);
    mainWasDisabled = !s.Model().enabled;
    QTest::mouseClick(about->CmdFerme(), Qt::LeftButton);
  });
  QTest::mouseClick(w->CmdAbout(), Qt::LeftButton);
  QVERIFY(mainWasDisabled);
  QVERIFY(s.Model().enabled);
  QCOMPARE(w->CmdAbout()->toolTip(), QStringLiteral("A propos de Ostrane"));

  // The waiting panel's pictures change at each tick of TimerEpie.
  s.Model().PicWait.visible = true;
  for (int tick = 1; tick <= 4; ++tick) {
    s.host.timers.Advance(51000);
    const int shown = (tick - 1) % 3 + 1;
    for (int i = 1; i <= 3; ++i) QCOMPARE(w->Iabc(i)->isVisibleTo(w->PicWait()), i == shown);
  }
  w->Refresh();
  QVERIFY(w->PicWait()->isVisible());
  QCOMPARE(w->findChild<QLabel*>(QStringLiteral("LblWait"))->text(),
           QStringLiteral("Recherche de la meilleure solution possible. Patientez     "));
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_waiting")));
}

void GameTest::aGameLeftUnfinishedIsTakenUp() {
  Session s(kQuietOptions);
  const SavedGame kept = KeptAfterTwoPlays();
  s.Write(QStringLiteral("partie.ret"), QByteArray::fromStdString(FormatSavedGame(kept)));
  s.pilot.askInformations = false;
  s.pilot.Start();
  // After the screen check the question comes, answered Yes: no name form,
  // the main window with the game as it was left.
  QVERIFY(!s.ToGameName());
  QVERIFY(!s.app->GameName());
  QVERIFY(!s.pilot.boxes.isEmpty());
  QCOMPARE(s.pilot.boxes[0], ModelText(ResumeQuestion(kept)));
  QCOMPARE(s.pilot.boxes[0],
           QStringLiteral("Une partie n'a pas été terminée : « Partie du soir » (2 coups, 27 points).\n"
                          "Voulez-vous la reprendre ?"));
  MainWindow* w = s.Main();
  QVERIFY(w);
  QVERIFY(w->isVisible());
  QCOMPARE(w->LblNomP()->text(), QStringLiteral("Partie du soir"));
  QCOMPARE(w->LblPtsJoueur()->text(), QStringLiteral("27"));
  QCOMPARE(w->TxtHisto()->toPlainText(), QStringLiteral("01 CHAT            18\n02 CHATS            9"));
  QCOMPARE(s.Model().ObjPlateau->GetMot("H7"), std::string("CHATS"));
  // The same tiles on the rack, no picker, and the best play proposed.
  QCOMPARE(s.pilot.pickers, 0);
  QCOMPARE(s.pilot.proposals.size(), 1);
  for (int k = 0; k < 7; ++k) {
    QVERIFY(w->Tile(k)->isVisible());
    QCOMPARE(w->Tile(k)->pos(), QPoint(layout::RackLeft(k), layout::RackTop()));
    QCOMPARE(s.Model().PicGamer[size_t(k)].Tag, std::string(1, kept.Chevalet[size_t(k)]));
  }
  QVERIFY(w->CmdArret()->isVisible());
  QVERIFY(!w->CmdNew()->isEnabled());
  QVERIFY(!w->CmdGame()->isVisible());
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_taken_up")));

  // The game goes on: the play laid and validated, the next draw picked, and
  // the journal follows.
  QVERIFY(LayProposition(s));
  const int points = s.Model().Proposition->CountP;
  QTest::mouseClick(w->CmdValider(), Qt::LeftButton);
  QCOMPARE(w->LblPtsJoueur()->text().toInt(), 27 + points);
  QCOMPARE(s.pilot.pickers, 1);
  const std::optional<SavedGame> now = GameJournal(s.app->program().JournalFile()).Load();
  QVERIFY(now.has_value());
  QCOMPARE(now->IntNbCoups, int16_t(3));
  QCOMPARE(now->LblPtsJoueur, w->LblPtsJoueur()->text().toStdString());
  QCOMPARE(now->Chevalet.size(), size_t(7));
  s.pilot.Stop();
}

void GameTest::aGameLeftUnfinishedCanBeDropped() {
  {
    Session s(kQuietOptions);
    const SavedGame kept = KeptAfterTwoPlays();
    s.Write(QStringLiteral("partie.ret"), QByteArray::fromStdString(FormatSavedGame(kept)));
    QString asked;
    AnswerNextBox(s.app.get(), QStringLiteral("Non"), &asked);
    QVERIFY(s.ToGameName());
    QCOMPARE(asked, ModelText(ResumeQuestion(kept)));
    QVERIFY(!QFile::exists(s.dir.filePath(QStringLiteral("partie.ret"))));
    QCOMPARE(s.app->GameName()->TxtNom()->text(), QStringLiteral("Partie tabli 01"));
    MainWindow* w = s.ToMain();
    QVERIFY(w);
    QCOMPARE(w->LblNomP()->text(), QStringLiteral("Partie tabli 01"));
    QCOMPARE(w->LblPtsJoueur()->text(), QStringLiteral("0"));
    QVERIFY(w->CmdNew()->isEnabled());
  }
  {
    // A damaged journal is removed without a question.
    Session s(kQuietOptions);
    s.Write(QStringLiteral("partie.ret"), "Ostrane partie 1\r\nNom=Partie du soir\r\nLigne=");
    QString asked;
    AnswerNextBox(s.app.get(), QStringLiteral("Oui"), &asked);
    QVERIFY(s.ToGameName());
    QVERIFY(asked.isEmpty());
    QVERIFY(!QFile::exists(s.dir.filePath(QStringLiteral("partie.ret"))));
  }
}

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  GameTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "game_test.moc"
