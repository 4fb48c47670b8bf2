// The dialogs one by one, each on its own model: what they show, what their
// keys and buttons do, and how they close.
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

#include "app/gui/dialogs.h"
#include "board_view/painters.h"
#include "lexicon/lexicon.h"
#include "records/program.h"
#include "tests/app/test_host.h"

using namespace ostrane;
using namespace ostrane::gui;
using ostrane::test::ScreenshotPath;
using ostrane::test::TestHost;

namespace {

struct World {
  TestHost host;
  Lexicon lexicon;
  Program program{lexicon, host.host};
};

// Clicks the button with this text in the next message box, keeping its text.
void AnswerNextBox(const QString& button, QString* text = nullptr) {
  QTimer::singleShot(0, [=] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box);
    if (text) *text = box->text();
    for (QAbstractButton* b : box->buttons())
      if (b->text() == button) b->click();
  });
}

}  // namespace

class DialogsTest : public QObject {
  Q_OBJECT
 private slots:
  void tourStepsShowTheirTexts() {
    World w;
    const struct {
      int step;
      const char* contains;
    } steps[] = {
        {1, "''Ostrane'' est un logiciel qui trouvera pour vous"},
        {2, "Vous venez de commencer une partie de tablinor."},
        {3, "Le programme va maintenant rechercher la meilleure solution possible."},
        {4, "Pour placer ce mot, vous devez, à l'aide de la souris"},
        {5, "Le mot ANOSMIE a été validé et rapporte 70 points."},
    };
    for (const auto& s : steps) {
      w.program.IntEtapeVisite = int16_t(s.step);
      FrmBoiteI box(w.program, "ANOSMIE", "70");
      box.Form_Load();
      BoiteIDialog dialog(box, nullptr);
      dialog.Refresh();
      dialog.show();
      QCOMPARE(dialog.windowTitle(), QStringLiteral("Informations"));
      QVERIFY2(dialog.LblInfo()->text().contains(QString::fromUtf8(s.contains)), qPrintable(dialog.LblInfo()->text()));
      QCOMPARE(dialog.LblInfoBis()->isVisible(), s.step == 1);
      QCOMPARE(dialog.ChkInfo()->isVisible(), s.step >= 3);
      QCOMPARE(dialog.LblInfoTer()->isVisible(), s.step == 4);
      if (s.step == 4) {
        QCOMPARE(dialog.LblInfoTer()->text(), QStringLiteral("ANOSMIE"));
        dialog.grab().save(ScreenshotPath(QStringLiteral("tour_step4")));
      }
      if (s.step == 1) {
        QCOMPARE(dialog.LblInfoBis()->text(), QStringLiteral("Comment ça marche ?"));
        dialog.grab().save(ScreenshotPath(QStringLiteral("tour_step1")));
      }
      QTest::mouseClick(dialog.CmdQ(), Qt::LeftButton);
      QVERIFY(box.view().unloaded);
      QVERIFY(!dialog.isVisible());
    }
  }

  void tourStepTenHasTwoPages() {
    World w;
    w.program.IntEtapeVisite = 10;
    FrmBoiteI box(w.program);
    box.Form_Load();
    BoiteIDialog dialog(box, nullptr);
    dialog.Refresh();
    dialog.show();
    QTest::mouseClick(dialog.CmdQ(), Qt::LeftButton);
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.LblInfoBis()->text(), QStringLiteral("A noter:"));
    QVERIFY(dialog.LblInfo()->text().contains(QStringLiteral("- Le jeton du joker est représenté")));
    QVERIFY(dialog.LblInfo()->text().contains(QStringLiteral("été\nété sélectionnés")));
    dialog.grab().save(ScreenshotPath(QStringLiteral("tour_step10")));
    QTest::mouseClick(dialog.CmdQ(), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
  }

  void tourStepsPlaceTheirText() {
    // The program's type is 9 points; step 1 shows LblInfo in 8 points,
    // 120 twips (8 pixels) higher up under its heading.
    World w;
    const auto open = [&w](int step, auto&& check) {
      w.program.IntEtapeVisite = int16_t(step);
      FrmBoiteI box(w.program, "ANOSMIE", "70");
      box.Form_Load();
      BoiteIDialog dialog(box, nullptr);
      dialog.Refresh();
      dialog.show();
      QCoreApplication::processEvents();
      check(dialog);
    };
    QCOMPARE(QApplication::font().pointSizeF(), 9.0);
    open(1, [](BoiteIDialog& d) {
      QCOMPARE(d.LblInfo()->font().pointSizeF(), 8.0);
      QCOMPARE(d.LblInfo()->y() - d.LblInfoBis()->geometry().bottom() - 1, BoiteIDialog::kInfoGap - 8);
    });
    open(5, [](BoiteIDialog& d) { QCOMPARE(d.LblInfo()->font().pointSizeF(), 9.0); });
    // Steps 3 and 4 set the text's top inside the frame: 840 and 360 twips.
    open(3, [](BoiteIDialog& d) { QCOMPARE(d.LblInfo()->y() - d.Fra()->contentsRect().top(), 56); });
    open(4, [](BoiteIDialog& d) {
      auto* head = d.findChild<QLabel*>(QStringLiteral("LblInfoHead"));
      QVERIFY(head && head->isVisible());
      QCOMPARE(head->text(), QStringLiteral("Le meilleur mot trouvé est:"));
      QCOMPARE(head->y() - d.Fra()->contentsRect().top(), 24);
    });
    // Step 10: raised too, LblInfo 330 twips taller and the frame 300 more.
    open(10, [](BoiteIDialog& d) {
      QCOMPARE(d.LblInfo()->y() - d.LblInfoBis()->geometry().bottom() - 1, BoiteIDialog::kInfoGap - 8);
      QCOMPARE(d.Fra()->contentsRect().bottom() - d.LblInfo()->geometry().bottom(), 22 + 20 + 12);
    });
  }

  void tourStepTenClosesByItsCloseBox() {
    // Only CmdQ shows the second page; the window's close box unloads the box.
    World w;
    w.program.IntEtapeVisite = 10;
    FrmBoiteI box(w.program);
    box.Form_Load();
    BoiteIDialog dialog(box, nullptr);
    bool wasOpen = false;
    QTimer::singleShot(0, [&] {
      wasOpen = dialog.isVisible();
      dialog.close();
    });
    dialog.RunModal();
    QVERIFY(wasOpen);
    QVERIFY(box.view().unloaded);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.LblInfoBis()->text(), QStringLiteral("Comment ça marche ?"));
    QCOMPARE(w.program.IntEtapeVisite, int16_t(10));
  }

  void tourTickSilencesTheTour() {
    World w;
    w.program.IntEtapeVisite = 3;
    FrmBoiteI box(w.program);
    box.Form_Load();
    BoiteIDialog dialog(box, nullptr);
    dialog.Refresh();
    dialog.show();
    QTest::mouseClick(dialog.ChkInfo(), Qt::LeftButton, Qt::NoModifier, QPoint(8, dialog.ChkInfo()->height() / 2));
    QCOMPARE(w.program.options.OptMessages, std::string("Non"));
  }

  void pickerByMouseAndKeyboard() {
    World w;
    w.program.StrSac = "AAEEIRST?";
    w.program.IntNbSac = int16_t(w.program.StrSac.size());
    FrmJetons model(w.program, FrmJetons::MainForm{});
    JetonsDialog dialog(model, w.program, nullptr);
    model.changed = [&dialog] { dialog.Refresh(); };
    dialog.Refresh();
    dialog.show();
    QVERIFY(!dialog.CmdJeton(1)->isEnabled() || !model.enabled);
    QTest::keyClicks(&dialog, QStringLiteral("r"));  // asleep for a quarter second: no pick
    QCOMPARE(w.program.IntNbTire, int16_t(0));
    w.host.timers.Advance(250);
    QVERIFY(dialog.CmdJeton(1)->isEnabled());
    QVERIFY(!dialog.CmdJeton(26)->isEnabled());  // no Z in the bag
    QVERIFY(dialog.CmdJeton(27)->isEnabled());   // a blank is
    QTest::keyClicks(&dialog, QStringLiteral("ratz"));  // Z is not in the bag: ignored
    QCOMPARE(dialog.LblTirage()->text(), QStringLiteral("RAT"));
    QCOMPARE(w.program.StrSac, std::string("AEEIS?"));
    QVERIFY(!dialog.ImgJ(3)->pixmap().isNull());
    QVERIFY(dialog.ImgJ(3)->pixmap().toImage().convertToFormat(QImage::Format_RGB32) ==
            view::FaceSet::Shared().ImgLet('t' - 'a').convertToFormat(QImage::Format_RGB32));
    QTest::keyClick(&dialog, Qt::Key_Backspace);  // undo: T goes back to its place
    QCOMPARE(w.program.StrSac, std::string("AEEIST?"));
    QCOMPARE(dialog.LblTirage()->text(), QStringLiteral("RAT"));  // the label keeps what was typed
    QVERIFY(dialog.ImgJ(3)->pixmap().toImage().convertToFormat(QImage::Format_RGB32) ==
            view::FaceSet::Shared().EmptySlot().convertToFormat(QImage::Format_RGB32));
    QTest::mouseClick(dialog.CmdJeton(27), Qt::LeftButton);  // the blank with the mouse
    QVERIFY(!dialog.CmdJeton(27)->isEnabled());              // there was only one
    QTest::keyClicks(&dialog, QStringLiteral("eei"));
    QCOMPARE(w.program.IntNbTire, int16_t(6));
    QVERIFY(dialog.CmdValider()->isEnabled());  // the bag is nearly empty: stopping early is allowed
    QTest::keyClicks(&dialog, QStringLiteral("s"));
    QCOMPARE(w.program.IntNbTire, int16_t(7));
    QVERIFY(!dialog.CmdJeton(1)->isEnabled());  // seven picked: every letter closes
    dialog.grab().save(ScreenshotPath(QStringLiteral("picker_full")));
    dialog.close();  // the close box is not a way out
    QVERIFY(dialog.isVisible());
    QTest::keyClick(&dialog, Qt::Key_Return);
    QVERIFY(model.closed);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(w.program.IntNbTire, int16_t(6));
  }

  void blankLetterBox() {
    World w;
    {
      FrmJoc model(w.program);
      JocDialog dialog(model, nullptr);
      model.changed = [&dialog] { dialog.Refresh(); };
      dialog.Refresh();
      dialog.show();
      QTest::keyClicks(dialog.TxtJok(), QStringLiteral("3"));
      QCOMPARE(dialog.TxtJok()->text(), QString());
      QTest::keyClicks(dialog.TxtJok(), QStringLiteral("k"));
      QCOMPARE(dialog.TxtJok()->text(), QStringLiteral("K"));
      QCOMPARE(w.program.StrJoker, std::string("K"));
      dialog.grab().save(ScreenshotPath(QStringLiteral("blank_letter")));
      QVERIFY(dialog.isVisible());
      w.host.timers.Advance(250);
      QVERIFY(model.closed);
      QVERIFY(!dialog.isVisible());
    }
    {
      FrmJoc model(w.program);
      JocDialog dialog(model, nullptr);
      dialog.Refresh();
      dialog.show();
      dialog.close();  // the close box: no letter
      QCOMPARE(w.program.StrJoker, std::string("Nul"));
      QVERIFY(model.closed);
    }
  }

  void bestPlayWithItsDefinition() {
    World w;
    FrmBoiteD box(w.program);
    for (int i = 0; i < 6; ++i) box.Lbl[size_t(i)].visible = true;
    box.Fra.visible = true;
    box.Lbl[1].text = "AA";
    box.Lbl[3].text = "H-8  Horizontal";
    box.Lbl[5].text = "4";
    box.LblDef.text = "Définition: n.m. Coulée de lave, à Hawaii.";
    box.LblDef.visible = true;
    box.ChkShowDef.visible = true;
    box.heightTwips = FrmBoiteD::kGrownHeight;
    box.topTwips = FrmBoiteD::kGrownTop;
    BoiteDDialog dialog(box, nullptr);
    dialog.Refresh();
    dialog.show();
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Ostrane"));
    QCOMPARE(dialog.Lbl(0)->text(), QStringLiteral("Meilleure suggestion:"));
    QCOMPARE(dialog.Lbl(1)->text(), QStringLiteral("AA"));
    QCOMPARE(dialog.Lbl(3)->text(), QStringLiteral("H-8  Horizontal"));
    QVERIFY(!dialog.LblMsg()->isVisible());
    QVERIFY(dialog.LblDef()->isVisible());
    QCOMPARE(dialog.ChkShowDef()->text(), QStringLiteral("Ne pas afficher la définition des mots courts (2 et 3 lettres)."));
    dialog.grab().save(ScreenshotPath(QStringLiteral("proposal_definition")));
    QTest::mouseClick(dialog.ChkShowDef(), Qt::LeftButton, Qt::NoModifier, QPoint(8, dialog.ChkShowDef()->height() / 2));
    QCOMPARE(w.program.options.OptDef23, int16_t(0));
    QTest::keyClick(&dialog, Qt::Key_Escape);  // the hidden Foc
    QVERIFY(box.closed);
    QVERIFY(!dialog.isVisible());
  }

  void noSolution() {
    World w;
    FrmBoiteD box(w.program);
    box.LblMsg.text = "Pas de solution possible.";
    box.LblMsg.visible = true;
    BoiteDDialog dialog(box, nullptr);
    dialog.Refresh();
    dialog.show();
    QVERIFY(dialog.LblMsg()->isVisible());
    QVERIFY(!dialog.Lbl(1)->isVisible());
    QTest::mouseClick(dialog.CmdQ(), Qt::LeftButton);
    QVERIFY(box.closed);
  }

  void finalScore() {
    bool unloaded = false;
    FrmFini fini("245", [&] { unloaded = true; });
    fini.Form_Load();
    FiniDialog dialog(fini, nullptr);
    dialog.Refresh();
    dialog.show();
    QCOMPARE(dialog.LblScore()->text(), QStringLiteral("245 points"));
    dialog.grab().save(ScreenshotPath(QStringLiteral("final_score")));
    QTest::mouseClick(dialog.CmdQuit(), Qt::LeftButton);
    QVERIFY(unloaded);
    QVERIFY(!dialog.isVisible());
  }

  void aboutBoxSiteAndMail() {
    World w;
    QTemporaryDir dir;
    bool mainEnabled = true;
    FrmAbout about(w.program, [&](bool on) { mainEnabled = on; });
    about.Form_Load();
    QVERIFY(!mainEnabled);
    AboutDialog dialog(about, w.host.shell, dir.path(), nullptr);
    dialog.Refresh();
    dialog.show();
    dialog.grab().save(ScreenshotPath(QStringLiteral("about")));
    QTest::mouseClick(dialog.CmdSite(), Qt::LeftButton);
    QCOMPARE(w.host.shell.opened.back(), ProgramSiteAddress());
    QTimer::singleShot(0, [&] {
      auto* mail = qobject_cast<MailDialog*>(QApplication::activeModalWidget());
      QVERIFY(mail);
      QTest::keyClicks(mail->TxtSujet(), QStringLiteral("Bonjour"));
      QTest::keyClicks(mail->TxtMessage(), QStringLiteral("Un mot."));
      mail->grab().save(ScreenshotPath(QStringLiteral("mail")));
      QTest::mouseClick(mail->CmdEnvoyer(), Qt::LeftButton);
    });
    QTest::mouseClick(dialog.CmdMail(), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(w.host.shell.opened.back()),
             QStringLiteral("mailto:?to=contact@ostrane.example.org&Subject=Bonjour&Body=Un%20mot%2E"));
    QTest::mouseClick(dialog.CmdFerme(), Qt::LeftButton);
    QVERIFY(about.view().unloaded);
    QVERIFY(mainEnabled);
    QVERIFY(!dialog.isVisible());
  }

  void bestScoresClearedOnRequest() {
    World w;
    QTemporaryDir dir;
    w.program.CheminApp = dir.path().toStdString();
    {
      QFile f(dir.filePath(QStringLiteral("bestsco.ret")));
      QVERIFY(f.open(QIODevice::WriteOnly));
      f.write("120    Mardi                23/11/26   14:05\r\n"
              "340    Lundi                22/11/26   20:30\r\n");
    }
    w.program.BestNouveau = 0;
    bool mainEnabled = false;
    FrmBest best(w.program, [&](bool on) { mainEnabled = on; });
    best.Form_Load();
    BestDialog dialog(best, nullptr);
    best.changed = [&dialog] { dialog.Refresh(); };
    dialog.Refresh();
    dialog.show();
    w.host.timers.Advance(100);
    QCOMPARE(dialog.LstSco()->count(), 2);
    QVERIFY(dialog.LstSco()->item(0)->text().startsWith(QStringLiteral("001  340    Lundi")));
    QVERIFY(dialog.CmdEff()->isEnabled());
    QString asked;
    AnswerNextBox(QStringLiteral("Oui"), &asked);
    QTest::mouseClick(dialog.CmdEff(), Qt::LeftButton);
    QCOMPARE(asked, QStringLiteral("Voulez-vous vraiment effacer la liste des meilleurs scores ?"));
    QCOMPARE(dialog.LstSco()->count(), 0);
    QVERIFY(!dialog.CmdEff()->isEnabled());
    QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("bestsco.ret"))));
    QTest::mouseClick(dialog.CmdFerme(), Qt::LeftButton);
    QVERIFY(mainEnabled);
    QCOMPARE(w.program.BestNouveau, int16_t(-1));
  }
};

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  DialogsTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "dialogs_test.moc"
