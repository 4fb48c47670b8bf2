// Whole games played through the real windows: the start-up window's
// progress and the small-screen warning, the game's name, the tools frame,
// the tile picker clicked letter by letter, tiles dragged with the mouse onto
// the board, the blank's letter typed, validation clicked, the modal boxes
// answered, the end of the game and the table of the best scores; then the
// main window's side controls, its refusal of input while it is busy, and a
// game taken up. Time moves only when the test moves it.
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QMenu>
#include <QSpinBox>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

#include "app/gui/additions.h"
#include "app/gui/analysis_window.h"
#include "app/gui/application.h"
#include "app/gui/dialogs.h"
#include "app/gui/main_window.h"
#include "app/gui/startup_windows.h"
#include "board_view/painters.h"
#include "game/frm_plateau.h"
#include "game/layout.h"
#include "records/game_journal.h"
#include "records/program.h"
#include "tests/app/session.h"
#include "tests/app/test_host.h"

using namespace ostrane;
using namespace ostrane::gui;
using ostrane::test::AnswerNextBox;
using ostrane::test::ExecInEventLoop;
using ostrane::test::ScreenshotPath;
using ostrane::test::TestHost;
using namespace ostrane::test;

class GameTest : public QObject {
  Q_OBJECT
 private slots:
  void wholeGameThroughTheWindows();
  void wordBoxToolsFrameSoundHelpTilesStopAndQuit();
  void noInputWhileTheSearchRunsOrThePauseLasts();
  void aGameLeftUnfinishedIsTakenUp();
  void theAnalysisListsShowsAndLaysThePlays();
};

void GameTest::wholeGameThroughTheWindows() {
  // Two games already in the table, so the new one is ranked among them; a
  // screen of 600 lines.
  Session s({}, false, 600);
  s.Write(QStringLiteral("bestsco.ret"),
          "31     Partie tabli 07      02/03/26   20:15\r\n612    Dimanche soir        14/06/26   21:40\r\n");
  s.screenshots = s.askInformations = true;
  s.Pilot();
  // The start-up window shows its progress.
  QVERIFY(s.app->Start(false));
  StartupWindow* start = s.app->Startup();
  QVERIFY(start && !start->isVisible());
  s.host.timers.Advance(100);
  QVERIFY(start->isVisible() && start->ImgProgress()->x() == -264 &&
          start->LblVerA()->text() == "Version 1.23");
  s.host.timers.Advance(100);  // the tree: a step of progress at each ten-thousandth word
  QCOMPARE(start->LblInfo2()->text(), QStringLiteral("Chargement des mots du dictionnaire..."));
  QVERIFY(QRegularExpression(QStringLiteral("^\\d\\d %$")).match(start->LblCharge()->text()).hasMatch());
  const int steps = (s.app->lexicon().Dico.NbMotsDico() - 1) / 10000;
  QVERIFY(steps >= 10 && start->ImgProgress()->x() == (-3960 + steps * 220) / 15);
  start->grab().save(ScreenshotPath(QStringLiteral("start_up")));
  s.host.timers.Advance(20);
  QCOMPARE(start->LblCharge()->text(), QStringLiteral("95 %"));
  s.host.timers.Advance(100);
  QCOMPARE(start->LblCharge()->text(), QStringLiteral("100 %"));
  QCOMPARE(start->ImgProgress()->x(), (-3960 + steps * 220 + 6 * 50) / 15);
  s.host.timers.Advance(180);
  QCoreApplication::processEvents();
  s.host.timers.Advance(100);
  // A screen of 600 lines: the warning, until its tick switches it off.
  ScreenCheckWindow* check = s.app->ScreenCheck();
  QVERIFY(!s.app->Startup() && check && check->isVisible());
  QVERIFY(check->Rtb1()->toPlainText().contains(QStringLiteral("Affichage d'Ostrane")));
  check->grab().save(ScreenshotPath(QStringLiteral("screen_check")));
  QTest::mouseClick(check->ChkResolution(), Qt::LeftButton);
  QCoreApplication::processEvents();
  QVERIFY(s.app->program().options.OptResol == 1 && s.app->GameName());
  s.host.timers.Advance(200);  // the name form's TimDeb shows it
  GameNameWindow* name = s.app->GameName();
  QCOMPARE(name->TxtNom()->text(), QStringLiteral("Partie tabli 01"));
  name->TxtNom()->selectAll();
  Type(name->TxtNom(), QStringLiteral("Été/soir à"));
  QCOMPARE(name->TxtNom()->text(), QStringLiteral("tésoir à"));  // "É" and "/" are not taken
  QRadioButton* relief = name->OptAff(4);                        // the "Relief" board
  QTest::mouseClick(relief, Qt::LeftButton, Qt::NoModifier, QPoint(8, relief->height() / 2));
  name->grab().save(ScreenshotPath(QStringLiteral("game_name")));
  MainWindow* w = s.ToMain();
  QVERIFY(w && s.tourTexts.size() == 1);  // step 1 of the tour
  QVERIFY(SameImage(w->Board()->Picture(), view::FaceSet::Shared().Plateau(4)));

  // The short bag with a blank, chosen in the tools frame; it takes effect
  // at the next game, which goes through the name form again.
  QTest::mouseClick(w->Tools()->OptPioche(3), Qt::LeftButton);
  QTest::mouseClick(w->CmdGame(), Qt::LeftButton);
  QCoreApplication::processEvents();  // the main window goes
  QCoreApplication::processEvents();  // the name form waits for its TimDeb meanwhile
  QCOMPARE(s.quitWatch.quits, 0);     // between the two windows, the program stays
  s.host.timers.Advance(200);
  QCOMPARE(s.app->GameName()->TxtNom()->text(), QStringLiteral("Partie tabli 02"));
  QVERIFY((w = s.ToMain()));
  QCOMPARE(s.app->program().StrSac, std::string("AAAABEEEGIILLNNOST?"));

  // The first draw: the picker opens, shows its help on two pages, the
  // letters are clicked in, the search runs and the best play is shown.
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);
  QVERIFY(s.tourTexts.join(QLatin1Char('\n')).contains(QStringLiteral("- Le jeton du joker est représenté")));
  QVERIFY(s.pickers == 1 && s.proposals == 1);
  QCOMPARE(std::ranges::count(s.host.sounds.played, 103), 1);  // the end of the search
  QVERIFY(!w->CmdNew()->isEnabled() && w->CmdArret()->isVisible() && w->Board()->ImgXY()->isVisible());

  int turns = 0;
  for (FrmPlateau& m = s.Model(); m.CmdSolution.enabled; ++turns) {
    QVERIFY2(m.Proposition.has_value() && turns < 12, "every rack of this bag has a play");
    QVERIFY(LayProposition(s));
    QVERIFY(!w->Board()->ImgXY()->isVisible());  // the first release took the arrow away
    QCOMPARE(w->LblPts()->text(), QString::number(m.Proposition->CountP));
    QVERIFY(w->CmdRanger()->isEnabled());
    for (int i = 0; i < 7; ++i) {  // the proposed tiles are blue on the board, blanks dark red
      const Tile& tile = m.PicGamer[size_t(i)];
      if (!tile.visible || !m.TileAcrossPlateau(i)) continue;
      QCOMPARE(tile.face.tint, tile.Tag[0] < 'a' ? TileFace::Tint::DarkRed : TileFace::Tint::Blue);
      QVERIFY(SameImage(w->Tile(i)->grab().toImage(), view::FaceImage(tile.face)));
    }
    if (turns == 0) w->grab().save(ScreenshotPath(QStringLiteral("main_window_proposal")));
    const int score = w->LblPtsJoueur()->text().toInt() + m.Proposition->CountP;
    QTest::mouseClick(w->CmdValider(), Qt::LeftButton);
    QCOMPARE(w->LblPtsJoueur()->text().toInt(), score);
    QCOMPARE(w->TxtHisto()->toPlainText().split(QLatin1Char('\n')).size(), turns + 1);
  }
  QVERIFY(turns >= 3 && s.pickers >= turns && s.jokers >= 1);  // the blank was laid and its letter typed
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_end")));
  QCOMPARE(std::ranges::count(s.host.sounds.played, 106), 1);

  // The end: FrmFini a second later, then the best scores.
  const QString total = w->LblPtsJoueur()->text();
  s.host.timers.Advance(1000);
  QCOMPARE(s.finalScore, total + QStringLiteral(" points"));
  QCOMPARE(w->LblIndic()->text(), QStringLiteral("\nFin de la partie."));
  s.host.timers.Advance(200);
  QVERIFY(s.boxes.join(QLatin1Char('\n')).contains(QStringLiteral("Vous avez réalisé un score de ") + total));
  QCOMPARE(s.bestLines.size(), 3);
  QVERIFY(
      s.bestLines.value(s.bestSelected).contains(QStringLiteral("Partie tabli 02      23/11/26   14:05")));
  // The table again from its button, cleared on request: the question
  // answered Yes, the list empty, the file gone.
  s.clearBest = true;
  QTest::mouseClick(w->CmdMeilleur(), Qt::LeftButton);
  QVERIFY(s.bestLines.isEmpty() && w->CmdGame()->isVisible());
  QCOMPARE(s.boxes.last(), QStringLiteral("Voulez-vous vraiment effacer la liste des meilleurs scores ?"));
  QVERIFY(!QFile::exists(s.dir.filePath(QStringLiteral("bestsco.ret"))));
}

void GameTest::wordBoxToolsFrameSoundHelpTilesStopAndQuit() {
  Session s;
  MainWindow* w = s.Open();
  QVERIFY(w);
  s.piloting = false;
  // The word box takes letters from the keys, and a paste or a drop of
  // letters only.
  QLineEdit* box = w->TxtCtrl();
  box->setFocus();
  Type(box, QStringLiteral("a1é-a"));
  QTest::keyClick(box, Qt::Key_Return);  // Enter checks while the box has the focus
  QCOMPARE(w->LblA1()->text(), QStringLiteral("Le mot AA existe."));
  QVERIFY(w->PicDef()->isVisible() && w->LblShowDef()->text().contains(QStringLiteral("lave")));
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_word_check")));
  const auto drop = [box](const QString& text) {
    QMimeData data;
    data.setText(text);
    QDropEvent event(QPointF(box->width() - 4, box->height() / 2), Qt::CopyAction, &data, Qt::LeftButton,
                     Qt::NoModifier);
    static_cast<QObject*>(box)->event(&event);  // as the drag manager hands it over
  };
  for (const QString& text : {QStringLiteral("l'été"), QStringLiteral("a1"), QStringLiteral("s")}) {
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
    drop(text + text);
  }
  QCOMPARE(ModelText(s.Model().TxtCtrl.text), QStringLiteral("aasss"));
  // The tools frame folds, taking the focus from the word box, which shows
  // it: greyed, no definition, Enter no longer checks.
  ToolsFrame* tools = w->Tools();
  QCOMPARE(tools->OptPioche(0)->text(), QStringLiteral("Normal (102 jetons)"));
  QCOMPARE(tools->geometry(), QRect(16, 16, 249, 117));
  QTest::mouseClick(tools->CmdCacher(), Qt::LeftButton);
  QCOMPARE(tools->geometry(), QRect(0, 0, 24, 15));
  QVERIFY(w->Foc()->hasFocus() && !w->PicDef()->isVisible());
  QCOMPARE(box->palette().color(QPalette::Base), QColor(192, 192, 192));
  QTest::keyClick(w->Foc(), Qt::Key_Return);
  QCOMPARE(w->LblA1()->text(), QStringLiteral("Entrez un mot dans la zone de texte."));
  // Unfolded, it is carried by its background.
  QTest::mouseClick(tools->CmdCacher(), Qt::LeftButton);
  QTest::mousePress(tools, Qt::LeftButton, Qt::NoModifier, QPoint(120, 8));
  const QPoint to = tools->mapFrom(w->Client(), w->Board()->mapTo(w->Client(), QPoint(200, 300)));
  QTest::mouseMove(tools, to);
  QTest::mouseRelease(tools, Qt::LeftButton, Qt::NoModifier, to);
  QCOMPARE(tools->pos(), QPoint(200, 300));
  // The board keeps its size and its place however large the window grows.
  w->resize(1280, 800);
  QCoreApplication::processEvents();
  QCOMPARE(QRect(w->Board()->mapTo(w, QPoint(0, 0)), w->Board()->size()),
           QRect(layout::kPlateauLeft, layout::kPlateauTop, layout::kPlateauWidth, layout::kPlateauHeight));
  AnswerNextBox(QStringLiteral("Non"));  // the close box asks; "Non" keeps the window
  QVERIFY(!w->close() && !s.app->Ended() && w->isVisible());
  // Sound off is silent, and on again plays sound 3; help and the on-line
  // dictionary go to the desktop.
  QTest::mouseClick(w->CmdSon(), Qt::LeftButton);
  QCOMPARE(w->CmdSon()->toolTip(), QStringLiteral("Sons désactivés"));
  QTest::mouseClick(w->CmdSon(), Qt::LeftButton);
  QCOMPARE(s.host.sounds.played, std::vector<int>{103});
  QTest::mouseClick(w->CmdAide(), Qt::LeftButton);
  QTest::mouseClick(w->CmdChercheWeb(), Qt::LeftButton);
  QCOMPARE(s.host.shell.opened, (std::vector<std::string>{"z_a_aide.htm", ChercheWebAddress("aasss")}));

  // A game started: a tile released over nothing (the side panel) goes
  // back; one dropped on a square takes its place.
  s.Pilot();
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);
  s.piloting = false;
  const QPoint before = w->Tile(0)->pos();
  Drag(w, 0, before + QPoint(17, 17 - 200));
  QCOMPARE(w->Tile(0)->pos(), before);
  Drag(w, 0, SquareCentre(1, 3));
  QCOMPARE(w->Tile(0)->pos(), QPoint(layout::SquareLeft(1), layout::SquareTop(3)));
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_drag")));
  // Stopped: the board is cleared. Quitting, answered Yes: the options are
  // saved and the program ends.
  AnswerNextBox(QStringLiteral("Oui"));
  QTest::mouseClick(w->CmdArret(), Qt::LeftButton);
  for (int i = 0; i < 7; ++i) QVERIFY(!w->Tile(i)->isVisible());
  AnswerNextBox(QStringLiteral("Oui"));
  QTest::mouseClick(w->CmdQuitte(), Qt::LeftButton);
  QVERIFY(s.app->Ended());
  QFile options(s.dir.filePath(QStringLiteral("Option.ret")));
  QVERIFY(options.open(QIODevice::ReadOnly) && options.readAll().startsWith("Non\r\n5\r\n120\r\n"));
}

void GameTest::noInputWhileTheSearchRunsOrThePauseLasts() {
  Session s(kQuietOptions, /*pauses=*/true);
  MainWindow* w = s.Open();
  QVERIFY(w);
  FrmPlateau& m = s.Model();
  // What a player could try while the window is busy: a second search, the
  // way out, the close box, typing. None of it may start anything; the
  // timers go on meanwhile, and the waiting pictures turn at TimerEpie.
  int looks = 0;
  const auto tryEverything = [&] {
    ++looks;
    const int boxesBefore = int(s.boxes.size()), proposalsBefore = s.proposals;
    for (QWidget* control : std::initializer_list<QWidget*>{w->CmdSolution(), w->CmdQuitte(), w->CmdArret(),
                                                            w->Tools()->CmdCacher(), w->Tile(0)})
      QTest::mouseClick(control, Qt::LeftButton);
    QTest::keyClicks(w->TxtCtrl(), QStringLiteral("ab"));
    QTest::keyClick(w->TxtCtrl(), Qt::Key_Return);
    QVERIFY(!w->close() && w->InputRefused() && w->PicWait()->isVisible());
    QVERIFY(int(s.boxes.size()) == boxesBefore && s.proposals == proposalsBefore);
    QVERIFY(!s.app->Ended() && m.BlnOutilsPlies == 0 && !w->Drag().TimDeplaceEnabled &&
            w->TxtCtrl()->text().isEmpty());
    const int shown = m.IntImageEpie % 3 + 1;
    s.host.timers.Advance(FrmPlateau::kTimerEpie);
    for (int i = 1; i <= 3; ++i) QCOMPARE(w->Iabc(i)->isVisibleTo(w->PicWait()), i == shown);
  };
  // During the search the hourglass and the tiles just drawn are on the
  // screen (once is enough: the search yields often); during the pause of
  // a second the form is given back, yet takes nothing in.
  s.host.events.onDoEvents = [&] {
    if (looks > 0) return;
    QVERIFY(!m.enabled && w->cursor().shape() == Qt::WaitCursor && w->Tile(6)->isVisible());
    QCOMPARE(w->findChild<QLabel*>(QStringLiteral("LblWait"))->text(),
             QStringLiteral("Recherche de la meilleure solution possible. Patientez     "));
    w->grab().save(ScreenshotPath(QStringLiteral("main_window_waiting")));
    tryEverything();
  };
  s.onPause = [&](int milliseconds) {
    QVERIFY(milliseconds == 1000 && m.enabled && w->cursor().shape() == Qt::ArrowCursor);
    tryEverything();
  };
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);
  s.host.events.onDoEvents = nullptr;
  QVERIFY(looks == 2 && s.proposals == 1);                    // one search, one pause, one box
  QVERIFY(!w->InputRefused() && !w->PicWait()->isVisible());  // afterwards the window takes input again
}

void GameTest::aGameLeftUnfinishedIsTakenUp() {
  // Answered Yes: no name form, the main window with the game as it was
  // left, the same tiles on the rack, no picker, the best play proposed.
  // A game kept after two plays (CHAT through the centre, then a blank for
  // the S of CHATS) and the draw of the third turn.
  SavedGame kept;
  kept.NomPartie = "Partie du soir";
  for (std::string& row : kept.lignes) row = std::string(15, '.');
  kept.lignes[7] = "......chatS....";
  kept.SubWordFirst = false;
  kept.StrSac = StartBag(0);
  for (const char c : std::string("CHAT?EEINRS?")) kept.StrSac.erase(kept.StrSac.find(c), 1);
  kept.LblPtsJoueur = "27";
  kept.IntNbCoups = 2;
  kept.VarTirage = 3;
  kept.LblTirage = "02";
  kept.TxtHisto = {"01 CHAT            18", "02 CHATS            9"};
  kept.Chevalet = "eeinrs?";
  Session s;
  s.Write(QStringLiteral("partie.ret"), QByteArray::fromStdString(FormatSavedGame(kept)));
  s.Pilot();
  QVERIFY(!s.ToGameName() && !s.app->GameName());
  QCOMPARE(s.boxes.value(0), QStringLiteral("Une partie n'a pas été terminée : « Partie du soir » (2 coups, "
                                            "27 points).\nVoulez-vous la reprendre ?"));
  MainWindow* w = s.app->Main();
  QCoreApplication::processEvents();
  QCOMPARE(s.quitWatch.quits, 0);  // the question closed, the program stays for the game
  QVERIFY(w && w->isVisible() && w->CmdArret()->isVisible() && !w->CmdNew()->isEnabled());
  QCOMPARE(w->LblNomP()->text() + w->LblPtsJoueur()->text(), QStringLiteral("Partie du soir27"));
  QCOMPARE(w->TxtHisto()->toPlainText(), QStringLiteral("01 CHAT            18\n02 CHATS            9"));
  QVERIFY(s.pickers == 0 && s.proposals == 1);
  for (int k = 0; k < 7; ++k)
    QVERIFY(w->Tile(k)->pos() == QPoint(layout::RackLeft(k), layout::RackTop()) &&
            s.Model().PicGamer[size_t(k)].Tag == std::string(1, kept.Chevalet[size_t(k)]));
  w->grab().save(ScreenshotPath(QStringLiteral("main_window_taken_up")));
}

void GameTest::theAnalysisListsShowsAndLaysThePlays() {
  Session s;
  MainWindow* w = s.Open();
  QVERIFY(w);
  s.app->program().StrSac = "EGILNOSTAAAABEEILN?";  // the short bag, its richest letters first
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);  // the first draw, proposed
  QVERIFY(s.proposals == 1);
  s.piloting = false;
  // F5 opens the analysis beside the main window (the "Plus" menu holds it too).
  QVERIFY(s.app->Added() && s.app->Added()->MoreButton()->isVisible());
  QCOMPARE(s.app->Added()->Menu()->actions().first()->text(), QStringLiteral("Analyse du tirage…"));
  w->activateWindow();
  QApplication::setActiveWindow(w);
  QTest::keyClick(w, Qt::Key_F5);
  AnalysisWindow* a = s.app->Added()->Analysis();
  QVERIFY(a && a->isVisible());
  QCOMPARE(a->windowTitle(), QStringLiteral("Analyse du tirage"));
  const std::vector<ExactPlay>& plays = a->Model().Plays();
  QVERIFY(plays.size() > 10);
  const int top = plays.front().points;
  QCOMPARE(a->Table()->rowCount(), std::min<int>(int(plays.size()), Analysis::kPageSize));
  QCOMPARE(a->Table()->item(0, 4)->text(), QString::number(plays.front().points));
  QVERIFY(a->ProposalLabel()->text().startsWith(QStringLiteral("Proposé : ")));
  a->grab().save(ScreenshotPath(QStringLiteral("analysis_list")));
  // A filter: words holding "E" of four letters.
  QTest::keyClicks(a->Letters(), QStringLiteral("e"));
  a->Length()->setValue(4);
  for (int r = 0; r < a->Table()->rowCount(); ++r)
    QVERIFY(a->Table()->item(r, 1)->text().size() >= 4 && a->Table()->item(r, 1)->text().contains('E'));
  a->Letters()->clear();
  a->Length()->setValue(0);
  // A click shows the play over the board, nothing laid.
  const QRect second = a->Table()->visualItemRect(a->Table()->item(1, 1));
  QTest::mouseClick(a->Table()->viewport(), Qt::LeftButton, Qt::NoModifier, second.center());
  const ExactPlay shown = plays[1];
  QCOMPARE(int(w->Board()->GhostShown().size()), int(shown.tiles));
  for (int i = 0; i < 7; ++i) QVERIFY(!s.Model().TileAcrossPlateau(i));
  w->grab().save(ScreenshotPath(QStringLiteral("analysis_ghost")));
  // A double click lays it from the rack: the validation scores it.
  QTest::mouseDClick(a->Table()->viewport(), Qt::LeftButton, Qt::NoModifier, second.center());
  QVERIFY(w->Board()->GhostShown().empty());
  QCOMPARE(w->LblPts()->text(), QString::number(shown.points));
  QVERIFY(w->CmdValider()->isEnabled());
  w->grab().save(ScreenshotPath(QStringLiteral("analysis_laid")));
  s.Pilot();
  QTest::mouseClick(w->CmdValider(), Qt::LeftButton);
  s.piloting = false;
  QCOMPARE(w->LblPtsJoueur()->text(), QString::number(shown.points));
  QVERIFY(a->TopsLabel()->text().contains(QStringLiteral(" sur %1 ").arg(top)));
  // The option, kept in the program's own settings file.
  QTest::mouseClick(a->ProposeExact(), Qt::LeftButton, Qt::NoModifier, QPoint(8, a->ProposeExact()->height() / 2));
  QVERIFY(s.program().settings.proposeExact);
  QFile settings(s.dir.filePath(QStringLiteral("ostrane.ini")));
  QVERIFY(settings.open(QIODevice::ReadOnly) && settings.readAll().contains("proposer_coup_exact=oui"));
}

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  GameTest test;
  return ExecInEventLoop(test, argc, argv);
}

#include "game_test.moc"
