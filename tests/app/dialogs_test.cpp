// The dialogs one by one, each on its own model: what they show, what their
// keys and buttons do, and how they close.
#include "app/gui/dialogs.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

#include "app/gui/data_folder.h"
#include "board_view/painters.h"
#include "lexicon/lexicon.h"
#include "records/program.h"
#include "tests/app/test_host.h"

using namespace ostrane;
using namespace ostrane::gui;
using ostrane::test::ScreenshotPath;

namespace {

struct World {
  test::TestHost host;
  Lexicon lexicon;
  Program program{lexicon, host.host};
};

// Shows a dialog as its model left it.
template <class Dialog>
void Show(Dialog& dialog) {
  dialog.Refresh();
  dialog.show();
}

}  // namespace

class DialogsTest : public QObject {
  Q_OBJECT
 private slots:
  void tourStepOnePlacesItsTextAndItsCloseBoxUnloadsIt() {
    // The program's type is 9 points; step 1 shows LblInfo in 8 points, 120
    // twips (8 pixels) higher up under its heading.
    World w;
    w.program.IntEtapeVisite = 1;
    FrmBoiteI box(w.program);
    box.Form_Load();
    BoiteIDialog d(box, nullptr);
    Show(d);
    QCoreApplication::processEvents();
    QCOMPARE(d.windowTitle(), QStringLiteral("Informations"));
    QCOMPARE(d.LblInfo()->font().pointSizeF(), 8.0);
    QCOMPARE(d.LblInfo()->y() - d.LblInfoBis()->geometry().bottom() - 1, BoiteIDialog::kInfoGap - 8);
    QTimer::singleShot(0, &d, &QDialog::close);  // only CmdQ goes on to the next step
    d.RunModal();
    QVERIFY(box.view().unloaded && !d.isVisible() && w.program.IntEtapeVisite == 1);
  }

  void escapeClosesTheTourBoxOnEitherPage() {
    // Step 10 has two pages behind CmdQ; Escape leaves from the first as
    // from the second, as it leaves every other box.
    for (const bool secondPage : {false, true}) {
      World w;
      w.program.IntEtapeVisite = 10;
      FrmBoiteI box(w.program);
      box.Form_Load();
      BoiteIDialog d(box, nullptr);
      Show(d);
      if (secondPage) QTest::mouseClick(d.CmdQ(), Qt::LeftButton);
      QCOMPARE(d.LblInfoBis()->text(), secondPage ? QStringLiteral("A noter:") : QStringLiteral("Comment ça marche ?"));
      QTest::keyClick(&d, Qt::Key_Escape);
      QVERIFY(box.view().unloaded);
      QVERIFY(!d.isVisible());
    }
  }

  void pickerByMouseAndKeyboard() {
    World w;
    w.program.StrSac = "AAEEIRST?";
    w.program.IntNbSac = int16_t(w.program.StrSac.size());
    FrmJetons model(w.program, FrmJetons::MainForm{});
    JetonsDialog dialog(model, w.program, nullptr);
    model.changed = [&dialog] { dialog.Refresh(); };
    Show(dialog);
    QTest::keyClicks(&dialog, QStringLiteral("r"));  // asleep for a quarter second: no pick
    w.host.timers.Advance(250);
    QVERIFY(dialog.CmdJeton(1)->isEnabled() && !dialog.CmdJeton(26)->isEnabled());  // no Z in the bag
    QTest::keyClicks(&dialog, QStringLiteral("ratz"));                              // Z is ignored
    QCOMPARE(dialog.LblTirage()->text(), QStringLiteral("RAT"));
    QCOMPARE(dialog.ImgJ(3)->pixmap().toImage(), view::FaceSet::Shared().ImgLet('t' - 'a'));
    QTest::keyClick(&dialog, Qt::Key_Backspace);  // undo: T goes back to its place
    QCOMPARE(dialog.ImgJ(3)->pixmap().toImage(), view::FaceSet::Shared().EmptySlot());
    QTest::keyClicks(&dialog, QStringLiteral("?eeis"));  // the blank too
    QVERIFY(w.program.IntNbTire == 7 &&
            !dialog.CmdJeton(1)->isEnabled());  // seven picked: every letter closes
    dialog.close();                             // the close box is not a way out
    QVERIFY(dialog.isVisible());
    QTest::keyClick(&dialog, Qt::Key_Return);
    QVERIFY(model.closed && !dialog.isVisible());
  }

  void bestPlayWithItsDefinitionAndTheAboutBoxWithItsMail() {
    World w;
    FrmBoiteD box(w.program);
    for (int i = 0; i < 6; ++i) box.Lbl[size_t(i)].visible = true;
    box.Lbl[1].text = "AA";
    box.Lbl[3].text = "H-8  Horizontal";
    box.LblDef.text = "Définition: n.m. Coulée de lave, à Hawaii.";
    box.Fra.visible = box.LblDef.visible = box.ChkShowDef.visible = true;
    box.heightTwips = FrmBoiteD::kGrownHeight;
    box.topTwips = FrmBoiteD::kGrownTop;
    BoiteDDialog dialog(box, nullptr);
    Show(dialog);
    QCOMPARE(dialog.windowTitle() + dialog.Lbl(0)->text() + dialog.Lbl(3)->text(),
             QStringLiteral("OstraneMeilleure suggestion:H-8  Horizontal"));
    QVERIFY(!dialog.LblMsg()->isVisible() && dialog.LblDef()->isVisible());
    QCOMPARE(dialog.ChkShowDef()->text(),
             QStringLiteral("Ne pas afficher la définition des mots courts (2 et 3 lettres)."));
    dialog.grab().save(ScreenshotPath(QStringLiteral("proposal_definition")));
    QTest::mouseClick(dialog.ChkShowDef(), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
    QCOMPARE(w.program.options.OptDef23, int16_t(0));
    QTest::keyClick(&dialog, Qt::Key_Escape);  // the hidden Foc
    QVERIFY(box.closed && !dialog.isVisible());
    // The about box, and the mail form it opens.
    QTemporaryDir dir;
    bool mainEnabled = true;
    FrmAbout about(w.program, [&](bool on) { mainEnabled = on; });
    about.Form_Load();
    AboutDialog aboutDialog(about, w.host.shell, dir.path(), nullptr);
    Show(aboutDialog);
    aboutDialog.grab().save(ScreenshotPath(QStringLiteral("about")));
    // This build has no contact address: the box says so and no form opens.
    QString said;
    test::OnNextBox([&said](QMessageBox* box) {
      said = box->text();
      box->buttons().first()->click();
    });
    QTest::mouseClick(aboutDialog.CmdMail(), Qt::LeftButton);
    QCOMPARE(said, QStringLiteral("Aucune adresse de contact n'est configurée pour cette version d'Ostrane."));
    QVERIFY(w.host.shell.opened.empty());
    // The mail form itself hands subject and message to the mail program.
    MailDialog mail(w.host.shell, &aboutDialog);
    mail.show();
    QTest::keyClicks(mail.TxtSujet(), QStringLiteral("Bonjour"));
    QTest::keyClicks(mail.TxtMessage(), QStringLiteral("Un mot."));
    mail.grab().save(ScreenshotPath(QStringLiteral("mail")));
    QTest::mouseClick(mail.CmdEnvoyer(), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(w.host.shell.opened.back()),
             QStringLiteral("mailto:?&Subject=Bonjour&Body=Un%20mot%2E"));  // no "to=" in this build
    QTest::mouseClick(aboutDialog.CmdFerme(), Qt::LeftButton);
    QVERIFY(about.view().unloaded && mainEnabled && !aboutDialog.isVisible());
  }

  void theFilesStayInTheStartFolderOnlyWhenItTakesThem() {
    QTemporaryDir home;
    const QString testName = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName(QStringLiteral("ostrane"));  // as the program names itself
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("donnees")).toUtf8());
    const QString user = home.filePath(QStringLiteral("donnees/ostrane"));
    QCOMPARE(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation), user);

    // Started by hand from a folder of the player's: that folder, as always.
    QTemporaryDir start;
    DataFolder chosen = ChooseDataFolder(start.path(), false);
    QCOMPARE(chosen.path, start.path());
    QVERIFY(chosen.kind == DataFolder::Kind::Start);
    QVERIFY2(QDir(start.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty(),
             "the probe leaves nothing behind");

    // From the menu: the user's data folder, made on the way.
    QVERIFY(!QDir(user).exists());
    chosen = ChooseDataFolder(start.path(), true);
    QCOMPARE(chosen.path, user);
    QVERIFY(chosen.kind == DataFolder::Kind::User);
    QVERIFY(QDir(user).exists());

    // The root of the disk, a folder that is gone, a file in a folder's place.
    QCOMPARE(ChooseDataFolder(QStringLiteral("/"), false).path, user);
    QCOMPARE(ChooseDataFolder(start.filePath(QStringLiteral("parti")), false).path, user);
    QFile file(start.filePath(QStringLiteral("fichier")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QCOMPARE(ChooseDataFolder(file.fileName(), false).path, user);

    // The about box says which.
    World w;
    FrmAbout about(w.program, [](bool) {});
    about.Form_Load();
    AboutDialog dialog(about, w.host.shell, user, nullptr);
    dialog.SetWhereFilesAre(chosen.Sentence());
    Show(dialog);
    QVERIFY(dialog.LblFiles()->isVisible());
    QCOMPARE(dialog.LblFiles()->text(),
             QStringLiteral("Les options, les meilleurs scores et la partie en cours sont gardés dans votre "
                            "dossier de données : ") + user);
    dialog.grab().save(ScreenshotPath(QStringLiteral("about_data_folder")));
    const DataFolder byHand{start.path(), DataFolder::Kind::Start};
    QCOMPARE(byHand.Sentence(),
             QStringLiteral("Les options, les meilleurs scores et la partie en cours sont gardés dans le "
                            "dossier de départ du programme : ") + start.path());
    qunsetenv("XDG_DATA_HOME");
    QCoreApplication::setApplicationName(testName);
  }
};

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  DialogsTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "dialogs_test.moc"
