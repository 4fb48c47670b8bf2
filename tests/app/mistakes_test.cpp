// The commands added for the mistakes of a real table, through the main
// window: plays taken back with Ctrl+Z, a draw made again with Ctrl+T, a game
// saved, opened in another program and continued, bad files refused with the
// game in progress untouched, the game as text, and its score sheet as a PDF
// read back with poppler's tools and on paper through the print dialog.
#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

#include "app/gui/additions.h"
#include "app/gui/french.h"
#include "game/game_export.h"
#include "game/game_record.h"
#include "records/game_journal.h"
#include "tests/app/session.h"

using namespace ostrane;
using namespace ostrane::gui;
using namespace ostrane::test;

namespace {

const char* const kShortBag = "AAAABEEEGIILLNNOST?";

// The whole bag, its letters dealt in a fixed mixed order (the pilot draws
// the bag's first letters).
std::string MixedBag() {
  const std::string bag = StartBag(0);
  std::string mixed;
  for (size_t i = 0; i < bag.size(); ++i) mixed += bag[i * 37 % bag.size()];
  return mixed;
}

// The main window of a new game on that bag, its first rack drawn and
// proposed.
MainWindow* StartGame(Session& s, const std::string& bag = kShortBag) {
  MainWindow* w = s.Open();
  if (!w) return nullptr;
  s.app->program().StrSac = bag;
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);
  return s.proposals == 1 ? w : nullptr;
}

// Lays and validates the proposed play `turns` times (the pilot draws the
// next rack each time); `shown` gets the state of each turn as it was shown,
// its play proposed.
bool PlayProposals(Session& s, int turns, std::vector<SavedGame>* shown = nullptr) {
  for (int k = 0; k < turns; ++k) {
    if (shown) shown->push_back(s.Model().Snapshot());
    if (!s.Model().Proposition || !LayProposition(s)) return false;
    QTest::mouseClick(s.app->Main()->CmdValider(), Qt::LeftButton);
  }
  return true;
}

QString Read(const QString& file) {
  QFile f(file);
  return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

// Runs a tool of poppler's; its standard output.
QString Run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  if (!process.waitForFinished(60000) || process.exitCode() != 0) return QString();
  return QString::fromUtf8(process.readAllStandardOutput());
}

void Press(MainWindow* w, QKeyCombination key) {
  w->activateWindow();
  QApplication::setActiveWindow(w);
  QTest::keyClick(w, key.key(), key.keyboardModifiers());
}

}  // namespace

class MistakesTest : public QObject {
  Q_OBJECT
 private slots:
  void playsAreTakenBackAndDrawsMadeAgain();
  void aSavedGameOpensAsItWasAndGoesOn();
  void aGameTakenUpKeepsItsPlaysToTakeBack();
  void badFilesLeaveTheGameInProgressAlone();
  void theGameAsTextAndItsScoreSheet();
};

void MistakesTest::playsAreTakenBackAndDrawsMadeAgain() {
  Session s;
  MainWindow* w = StartGame(s);
  QVERIFY(w);
  Additions* more = s.app->Added();
  GameRecord* record = s.app->Record();
  std::vector<SavedGame> shown;
  QVERIFY(PlayProposals(s, 3, &shown));
  QCOMPARE(record->Plays(), 3);
  const std::vector<RecordedTurn> turns = record->Turns();
  const ClsWord third = *turns[2].play;

  // Ctrl+Z: the third play comes off the board, its rack back on the stand,
  // and the search proposes it again.
  const int proposals = s.proposals;
  Press(w, QKeyCombination(Qt::CTRL, Qt::Key_Z));
  QCOMPARE(s.proposals, proposals + 1);
  QVERIFY(SameGame(s.Model().Snapshot(), shown[2]));
  QCOMPARE(s.Model().Proposition->Express + s.Model().Proposition->Place, third.Express + third.Place);
  QCOMPARE(w->TxtHisto()->toPlainText().split(QLatin1Char('\n')).size(), 2);
  QCOMPARE(w->LblPtsJoueur()->text().toInt(), turns[0].play->CountP + turns[1].play->CountP);
  w->grab().save(ScreenshotPath(QStringLiteral("undo")));
  // The journal followed at once: the state kept is the state shown, and its
  // record holds the two plays left.
  GameJournal journal(s.app->program().JournalFile());
  const std::optional<SavedGame> kept = journal.Load();
  QVERIFY(kept && SameGame(*kept, s.Model().Snapshot()));
  std::string error;
  const std::optional<GameFile> keptRecord = ParseGameFile(journal.LoadRecord().value_or(""), error);
  QVERIFY2(keptRecord, error.c_str());
  QCOMPARE(int(keptRecord->turns.size()), 3);
  QVERIFY(keptRecord->turns[1].play && !keptRecord->turns[2].play);

  // Back to the first rack, and no further.
  Press(w, QKeyCombination(Qt::CTRL, Qt::Key_Z));
  Press(w, QKeyCombination(Qt::CTRL, Qt::Key_Z));
  QVERIFY(SameGame(s.Model().Snapshot(), shown[0]));
  QCOMPARE(w->LblPtsJoueur()->text(), QStringLiteral("0"));
  QVERIFY(w->TxtHisto()->toPlainText().isEmpty());
  QVERIFY(!record->CanUndo());
  more->Menu()->aboutToShow();
  QVERIFY(!more->Command(QStringLiteral("Annuler le dernier coup"))->isEnabled());

  // Ctrl+T: the rack goes back to the bag and the picker opens again for
  // this draw; the pilot clicks in the same tiles.
  const int pickers = s.pickers;
  const std::string bagBefore = turns[0].beforeDraw.StrSac;
  QVERIFY(more->Command(QStringLiteral("Corriger le tirage"))->isEnabled());
  Press(w, QKeyCombination(Qt::CTRL, Qt::Key_T));
  QCOMPARE(s.pickers, pickers + 1);
  QCOMPARE(int(record->Turns().size()), 1);
  QCOMPARE(record->Turns().front().beforeDraw.StrSac, bagBefore);
  QVERIFY(SameGame(s.Model().Snapshot(), shown[0]));
  // The game goes on from there to its end.
  while (s.Model().CmdSolution.enabled) QVERIFY(PlayProposals(s, 1));
  QVERIFY(record->Plays() >= 3);
}

void MistakesTest::aSavedGameOpensAsItWasAndGoesOn() {
  QTemporaryDir files;
  const QString file = files.filePath(QStringLiteral("soir.ostrane"));
  Session a;
  QVERIFY(StartGame(a, MixedBag()));
  QVERIFY(PlayProposals(a, 3));
  QVERIFY(a.app->Added()->SaveGameTo(file));
  // The file is the record as its format writes it, byte for byte.
  QCOMPARE(Read(file).toStdString(), FormatGameFile(a.app->Record()->File()));
  QVERIFY(Read(file).startsWith(QStringLiteral("Ostrane partie enregistrée 1\r\nNom=Partie tabli 01\r\n")));

  // Another program, in a folder of its own, opens it from its ready state
  // (one pilot at a time answers the windows).
  a.piloting = false;
  Session b;
  MainWindow* w = b.Open();
  QVERIFY(w);
  QVERIFY(b.app->Added()->OpenGameFrom(file));
  QVERIFY(SameGame(b.Model().Snapshot(), a.Model().Snapshot()));
  QCOMPARE(w->LblNomP()->text(), QStringLiteral("Partie tabli 01"));
  QCOMPARE(w->LblPtsJoueur()->text(), a.app->Main()->LblPtsJoueur()->text());
  QCOMPARE(w->TxtHisto()->toPlainText(), a.app->Main()->TxtHisto()->toPlainText());
  QCOMPARE(b.app->Record()->Plays(), 3);
  w->grab().save(ScreenshotPath(QStringLiteral("opened_game")));
  // Saved again, the same bytes.
  const QString again = files.filePath(QStringLiteral("encore.ostrane"));
  QVERIFY(b.app->Added()->SaveGameTo(again));
  QCOMPARE(Read(again), Read(file));
  // It goes on in both programs alike, and its plays can be taken back.
  QVERIFY(PlayProposals(b, 1));
  b.piloting = false;
  a.Pilot();
  QVERIFY(PlayProposals(a, 1));
  a.piloting = false;
  b.Pilot();
  QVERIFY(SameGame(b.Model().Snapshot(), a.Model().Snapshot()));
  QVERIFY(b.app->Record()->CanUndo());
  // Opened over a game in progress, the player is asked first.
  QVERIFY(b.app->Added()->OpenGameFrom(file));
  QVERIFY(b.boxes.contains(QStringLiteral("La partie en cours sera remplacée par celle qui est ouverte. Continuer ?")));
  QCOMPARE(b.app->Record()->Plays(), 3);
}

void MistakesTest::aGameTakenUpKeepsItsPlaysToTakeBack() {
  // The program dies with two plays made, once in the third draw's picker and
  // once with the third rack proposed; the next start takes the game up from
  // its journal, and the record kept beside it gives the plays back to take
  // back.
  std::vector<SavedGame> shown;
  QByteArray journal[2], record[2];
  {
    Session a;
    const auto keep = [&](int k) {
      journal[k] = Read(a.dir.filePath(QStringLiteral("partie.ret"))).toUtf8();
      record[k] = Read(a.dir.filePath(QStringLiteral("partie.enr"))).toUtf8();
    };
    a.onPicker = [&] {
      if (a.Model().IntNbCoups == 2) keep(0);
    };
    QVERIFY(StartGame(a, MixedBag()));
    QVERIFY(PlayProposals(a, 2, &shown));
    keep(1);
    a.piloting = false;
  }
  for (int k = 0; k < 2; ++k) {
    QVERIFY(record[k].startsWith("Ostrane partie enregistrée 1\r\n"));
    Session b;
    b.Write(QStringLiteral("partie.ret"), journal[k]);
    b.Write(QStringLiteral("partie.enr"), record[k]);
    b.Pilot();
    QVERIFY(!b.ToGameName() && b.app->Main());  // taken up, answered Yes
    QVERIFY(b.boxes.value(0).endsWith(QStringLiteral("Voulez-vous la reprendre ?")));
    QCOMPARE(b.app->Record()->Plays(), 2);
    Press(b.app->Main(), QKeyCombination(Qt::CTRL, Qt::Key_Z));
    QVERIFY(SameGame(b.Model().Snapshot(), shown[1]));
    QCOMPARE(b.app->Main()->TxtHisto()->toPlainText().split(QLatin1Char('\n')).size(), 1);
    b.piloting = false;
  }
  // A record of another game is left aside: the game goes on, with no play
  // to take back.
  Session c;
  c.Write(QStringLiteral("partie.ret"), journal[1]);
  c.Write(QStringLiteral("partie.enr"), record[1].replace("Nom=Partie tabli 01", "Nom=Une autre"));
  c.Pilot();
  QVERIFY(!c.ToGameName() && c.app->Main());
  QCOMPARE(c.app->Record()->Plays(), 0);
  QVERIFY(!c.app->Record()->CanUndo());
}

void MistakesTest::badFilesLeaveTheGameInProgressAlone() {
  QTemporaryDir files;
  Session s;
  QVERIFY(StartGame(s));
  QVERIFY(PlayProposals(s, 2));
  const QString good = files.filePath(QStringLiteral("bonne.ostrane"));
  QVERIFY(s.app->Added()->SaveGameTo(good));
  const QStringList lines = Read(good).split(QStringLiteral("\r\n"));
  const int firstPlay = int(lines.indexOf(QRegularExpression(QStringLiteral("^Coup=.*"))));
  QVERIFY(firstPlay > 0);
  const SavedGame before = s.Model().Snapshot();
  const auto refused = [&](const QString& name, const QString& text, const QString& saying) {
    const QString file = files.filePath(name);
    QFile f(file);
    if (!f.open(QIODevice::WriteOnly) || f.write(text.toUtf8()) < 0) return false;
    f.close();
    const int boxes = int(s.boxes.size());
    const bool opened = s.app->Added()->OpenGameFrom(file);
    const QString told = s.boxes.mid(boxes).join(QLatin1Char('\n'));
    if (!told.contains(saying)) qWarning() << "told:" << told;
    return !opened && told.contains(saying) && SameGame(s.Model().Snapshot(), before);
  };
  QVERIFY(refused(QStringLiteral("lettre.ostrane"), QStringLiteral("Chère amie,\r\n"),
                  QString::fromUtf8(kNotAGame)));
  QStringList cut = lines.mid(0, firstPlay + 1);
  QVERIFY(refused(QStringLiteral("coupee.ostrane"), cut.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"),
                  QStringLiteral("après la ligne %1").arg(firstPlay + 1)));
  QStringList wrong = lines;
  wrong[firstPlay] = QStringLiteral("Coup=zzz H8 30");
  QVERIFY(refused(QStringLiteral("fausse.ostrane"), wrong.join(QStringLiteral("\r\n")),
                  QStringLiteral("Ligne %1 : ").arg(firstPlay + 1)));
  QVERIFY(s.boxes.last().startsWith(QStringLiteral("La partie « fausse.ostrane » ne peut pas être ouverte.\n")));
  QVERIFY(!s.app->Added()->OpenGameFrom(files.filePath(QStringLiteral("absente.ostrane"))));
  QCOMPARE(s.boxes.last(), QStringLiteral("Le fichier « absente.ostrane » ne peut pas être lu."));
  QVERIFY(SameGame(s.Model().Snapshot(), before));
  // A save that cannot be written says so.
  QVERIFY(!s.app->Added()->SaveGameTo(files.filePath(QStringLiteral("pas/de/dossier.ostrane"))));
  QCOMPARE(s.boxes.last(), QStringLiteral("La partie n'a pas pu être enregistrée dans « dossier.ostrane »."));
}

void MistakesTest::theGameAsTextAndItsScoreSheet() {
  QTemporaryDir files;
  Session s;
  MainWindow* w = StartGame(s);
  QVERIFY(w);
  QVERIFY(PlayProposals(s, 3));
  const GameFile game = s.app->Record()->File();

  const QString text = files.filePath(QStringLiteral("partie.txt"));
  QVERIFY(s.app->Added()->ExportTextTo(text));
  QCOMPARE(Read(text).toStdString(), GameText(game));
  QVERIFY(Read(text).startsWith(QStringLiteral("Ostrane — Partie tabli 01\n")));

  const QString pdf = files.filePath(QStringLiteral("feuille.pdf"));
  QVERIFY(s.app->Added()->ScoreSheetTo(pdf));
  const QString info = Run(QStringLiteral("pdfinfo"), {pdf});
  QVERIFY2(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+1\\n"))), qPrintable(info));
  QVERIFY(info.contains(QStringLiteral("Feuille de partie — Partie tabli 01")));
  const QString sheet = Run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
  QVERIFY(sheet.contains(QStringLiteral("Partie tabli 01")));
  QVERIFY(sheet.contains(QStringLiteral("partie du 23/11/2026 à 14:05")));
  QVERIFY(sheet.contains(QStringLiteral("%1 points").arg(w->LblPtsJoueur()->text())));
  QVERIFY(sheet.contains(QStringLiteral("% du top")));  // the exact analysis worked the tops out
  int total = 0;
  for (const SheetRow& row : SheetRows(game)) {
    if (!row.played) continue;
    total += row.points;
    // Each play on a line of its own: its word, position, points and running total.
    const QRegularExpression line(QStringLiteral("%1\\s+%2\\s+%3\\s+%4\\s+%5")
                                      .arg(QRegularExpression::escape(QString::fromStdString(row.drawn)),
                                           QString::fromStdString(row.position), QString::fromStdString(row.word))
                                      .arg(row.points)
                                      .arg(total));
    QVERIFY2(sheet.contains(line), qPrintable(line.pattern() + QStringLiteral(" in\n") + sheet));
  }
  // The page as a picture, to be looked at.
  QVERIFY(Run(QStringLiteral("pdftoppm"), {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("70"),
                                          QStringLiteral("-singlefile"), pdf,
                                          ScreenshotPath(QStringLiteral("score_sheet_page")).chopped(4)})
              .isEmpty());
  QVERIFY(QImage(ScreenshotPath(QStringLiteral("score_sheet_page"))).width() > 500);

  // On paper: the print dialog, answered by printing to a file.
  const QString printed = files.filePath(QStringLiteral("imprimee.pdf"));
  bool asked = false, french = false;
  QTimer::singleShot(0, [&] {
    auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    asked = dialog->windowTitle() == QStringLiteral("Imprimer la feuille de partie");
    // The person chooses to print to a file, names it, and prints.
    auto* printers = dialog->findChild<QComboBox*>(QStringLiteral("printers"));
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("filename"));
    if (!printers || !name) return dialog->reject();
    printers->setCurrentIndex(printers->count() - 1);  // "Print to File (PDF)", the last
    name->setText(printed);
    for (QAbstractButton* b : dialog->findChildren<QAbstractButton*>()) french |= b->text() == QStringLiteral("Annuler");
    dialog->accept();
  });
  s.app->Added()->PrintScoreSheet();
  QVERIFY(asked);
  QVERIFY2(french, "the toolkit's dialogs speak French");
  const QString paper = Run(QStringLiteral("pdftotext"), {printed, QStringLiteral("-")});
  QVERIFY(paper.contains(QStringLiteral("Feuille de partie — partie du 23/11/2026 à 14:05")));
  QVERIFY(paper.contains(QStringLiteral("%1 points").arg(w->LblPtsJoueur()->text())));
}

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  SpeakFrench(app);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  MistakesTest test;
  return ExecInEventLoop(test, argc, argv);
}

#include "mistakes_test.moc"
