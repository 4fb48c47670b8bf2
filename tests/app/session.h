#pragma once
// A program started in a folder of its own under the offscreen platform,
// with the pilot that answers its modal windows, and the gestures of a
// person: typing, dragging a tile, laying the proposed play.
#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "app/gui/application.h"
#include "app/gui/dialogs.h"
#include "app/gui/qt_forms.h"
#include "app/gui/main_window.h"
#include "app/gui/startup_windows.h"
#include "game/frm_plateau.h"
#include "game/layout.h"
#include "records/program.h"
#include "tests/app/test_host.h"

namespace ostrane::test {

using namespace ostrane::gui;

// Types text as a keyboard does, accents included.
inline void Type(QWidget* widget, const QString& text) {
  for (const QChar ch : text)
    QTest::sendKeyEvent(QTest::Click, widget, Qt::Key(ch.toUpper().unicode()), QString(ch), Qt::NoModifier);
}

inline const QByteArray kQuietOptions =
    "Non\r\n3\r\n120\r\nSonYes\r\nDureeYes\r\nImg plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\nResolutionE "
    "0\r\n";

// Counts the requests to quit that reach the application: a window road that
// leaves no window on the screen for a moment must not end the program.
struct QuitWatch : QObject {
  int quits = 0;
  QuitWatch() { qApp->installEventFilter(this); }
  ~QuitWatch() override { qApp->removeEventFilter(this); }
  bool eventFilter(QObject* target, QEvent* event) override {
    if (target == qApp && event->type() == QEvent::Quit) {
      ++quits;
      return true;  // the test goes on, to see what the program shows next
    }
    return false;
  }
};

// A program started in a folder of its own, and its pilot: while `piloting`,
// whatever modal window is up is answered, one action at a time, and the
// first picture of each is kept. Each step schedules the next before it
// acts, so that a modal window the action opens is answered from inside its
// own loop.
struct Session : QObject {
  QuitWatch quitWatch;
  QTemporaryDir dir;
  TestHost host;
  std::unique_ptr<Application> app;
  std::function<void(int milliseconds)> onPause;  // runs in place of the pauses' waits
  std::function<void()> onPicker;                 // each picker, as it opens
  bool piloting = false, screenshots = false;
  bool askInformations = false;  // the first picker shows its help (two pages)
  bool clearBest = false;        // the table of the best scores is cleared
  std::string nextJoker = "E";   // the letter typed for the next blank
  // What the pilot saw.
  QStringList boxes;      // texts of the message boxes
  QStringList tourTexts;  // texts of the tour's steps
  QString finalScore;     // FrmFini's label
  QStringList bestLines;  // the table as it was shown, and its selected line
  int bestSelected = -1, proposals = 0, pickers = 0, jokers = 0, bestTicks = 0;
  QStringList shot;

  explicit Session(const QByteArray& options = kQuietOptions, bool pauses = false, int screenHeight = 768) {
    if (!options.isEmpty()) Write(QStringLiteral("Option.ret"), options);
    Application::Settings settings;
    settings.startDirectory = dir.path();
    settings.screenHeight = [screenHeight] { return screenHeight; };
    settings.pauses = pauses;
    settings.wait = [this](int milliseconds) {
      if (onPause) onPause(milliseconds);
    };
    app = std::make_unique<Application>(host.host, settings);
  }
  void Write(const QString& name, const QByteArray& bytes) {
    QFile f(dir.filePath(name));
    QVERIFY(f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size());
  }

  // The start-up chain, the screen check and the name form, time moved on
  // by hand: ends with FrmPartie on the screen.
  bool ToGameName() {
    if (!app->Start(false)) return false;
    host.timers.Advance(100);           // TimReg: the window shows
    host.timers.Advance(400);           // the tree, the long lists, the definitions
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
    if (app->Main()) host.timers.Advance(100);  // TimDeb: the bag, and the tour's first step
    return app->Main();
  }
  // The pilot on, through the name form to the main form.
  MainWindow* Open() {
    Pilot();
    return ToGameName() ? ToMain() : nullptr;
  }
  FrmPlateau& Model() { return *app->Plateau(); }
  const Program& program() { return app->program(); }

  void Pilot() {
    piloting = true;
    QTimer::singleShot(0, this, [this] { Step(); });
  }
  void Shot(QWidget* w, const QString& name) {
    if (screenshots && !shot.contains(name)) w->grab().save(ScreenshotPath(name));
    shot << name;
  }
  void Step() {
    if (!piloting) return;
    Pilot();
    QWidget* w = QApplication::activeModalWidget();
    if (!w || !w->isVisible()) return;
    if (auto* box = qobject_cast<QMessageBox*>(w)) {
      boxes << box->text();
      for (QAbstractButton* b : box->buttons())
        if (b->text() == QLatin1String("Oui") || b->text() == QLatin1String("OK")) return b->click();
    } else if (auto* d = qobject_cast<JetonsDialog*>(w)) {
      Pick(d);
    } else if (auto* d = qobject_cast<JocDialog*>(w)) {
      if (!d->TxtJok()->text().isEmpty()) {
        Shot(d, QStringLiteral("blank_letter"));
        return host.timers.Advance(250);  // the quarter second that shows the letter
      }
      ++jokers;
      Type(d->TxtJok(), QString::fromStdString(nextJoker).toLower());
    } else if (auto* d = qobject_cast<BoiteDDialog*>(w)) {
      Shot(d, QStringLiteral("proposal"));
      ++proposals;
      QTest::mouseClick(d->CmdQ(), Qt::LeftButton);
    } else if (auto* d = qobject_cast<BoiteIDialog*>(w)) {
      tourTexts << d->LblInfo()->text();
      const bool secondPage = d->LblInfoBis()->text() == QLatin1String("A noter:");
      Shot(d, QStringLiteral("tour_step%1").arg(secondPage ? 10 : program().IntEtapeVisite));
      QTest::mouseClick(d->CmdQ(), Qt::LeftButton);
    } else if (auto* d = qobject_cast<FiniDialog*>(w)) {
      finalScore = d->LblScore()->text();
      Shot(d, QStringLiteral("final_score"));
      QTest::mouseClick(d->CmdQuit(), Qt::LeftButton);
    } else if (auto* d = qobject_cast<BestDialog*>(w)) {
      // The list comes, then the selection walks down.
      if (bestTicks++ < 60) return host.timers.Advance(10);
      if (clearBest && d->CmdEff()->isEnabled()) return QTest::mouseClick(d->CmdEff(), Qt::LeftButton);
      bestTicks = 0;
      bestLines.clear();
      for (int i = 0; i < d->LstSco()->count(); ++i) bestLines << d->LstSco()->item(i)->text();
      bestSelected = d->LstSco()->currentRow();
      Shot(d, QStringLiteral("best_scores"));  // the table with the new game selected
      QTest::mouseClick(d->CmdFerme(), Qt::LeftButton);
    }
  }
  void Pick(JetonsDialog* d) {
    if (!d->property("counted").toBool() && onPicker) onPicker();
    pickers += !d->property("counted").toBool();
    d->setProperty("counted", true);
    if (!d->Model().enabled) return host.timers.Advance(250);  // the picker wakes up
    if (askInformations) {
      askInformations = false;
      return QTest::mouseClick(d->CmdInfo(), Qt::LeftButton);
    }
    if (program().IntNbTire == 5) Shot(d, QStringLiteral("picker"));
    if (program().IntNbTire == 7) Shot(d, QStringLiteral("picker_full"));
    if (program().IntNbTire < d->Model().IntNbATirer && !program().StrSac.empty()) {
      const char letter = program().StrSac[0];
      QToolButton* button = d->CmdJeton(letter == '?' ? FrmJetons::kBlank : letter - 'A' + 1);
      QVERIFY2(button->isEnabled(), "the button of a letter in the bag is enabled");
      return QTest::mouseClick(button, Qt::LeftButton);
    }
    QTest::mouseClick(d->CmdValider(), Qt::LeftButton);
  }
};

inline QPoint SquareCentre(int column, int row) {
  return QPoint(layout::SquareLeft(column) + layout::kTileWidth / 2,
                layout::SquareTop(row) + layout::kTileHeight / 2);
}

// A person's drag: press the tile where `grab` lies in it, move the pointer in
// a few steps to `target` (in the window's client area), release there.
inline void Drag(MainWindow* w, int tile, QPoint target, QPoint grab = QPoint(17, 17), int steps = 4) {
  TileWidget* t = w->Tile(tile);
  QTest::mousePress(t, Qt::LeftButton, Qt::NoModifier, grab);
  const QPoint start = t->pos() + grab;
  for (int k = 1; k <= steps; ++k)
    QTest::mouseMove(t, t->mapFrom(w->Client(), start + (target - start) * k / steps));
  QTest::mouseRelease(t, Qt::LeftButton, Qt::NoModifier, t->mapFrom(w->Client(), target));
}

// Lays the proposed play with the mouse, each tile taken from the rack by
// what it shows; blanks get their letter typed.
inline bool LayProposition(Session& s) {
  FrmPlateau& m = s.Model();
  const ClsWord word = m.Proposition.value_or(ClsWord{});
  const bool vertical = !word.Place.empty() && word.Place[0] <= '9';
  const int column = m.ObjPlateau->SubColumn(word.Place), row = m.ObjPlateau->SubTrouverLigne(word.Place);
  std::array<bool, 7> used{};
  for (int i = 0; i < int(word.Express.size()); ++i) {
    const int c = vertical ? column : column + i, r = vertical ? row + i : row;
    const char letter = word.Express[size_t(i)];
    const std::string tag = letter < 'a' ? "?" : std::string(1, letter);
    const auto taken = [&](int k) {
      const Tile& t = m.PicGamer[size_t(k)];
      return used[size_t(k)] || !t.visible || !t.enabled || m.TileAcrossPlateau(k) || t.Tag != tag;
    };
    int k = 0;
    while (m.ObjPlateau->Square(c, r) == 0 && k < 7 && taken(k)) ++k;
    if (m.ObjPlateau->Square(c, r) != 0) continue;
    if (k == 7) return false;
    used[size_t(k)] = true;
    s.nextJoker = std::string(1, letter);  // typed when it is a blank
    Drag(s.app->Main(), k, SquareCentre(c, r));
    if (m.PicGamer[size_t(k)].left != layout::SquareLeft(c) ||
        m.PicGamer[size_t(k)].top != layout::SquareTop(r))
      return false;
  }
  return !word.Express.empty();
}

// Runs a Qt Test object inside the application's event loop, as the program
// runs: only there does a road that leaves no window on the screen end it.
inline int ExecInEventLoop(QObject& test, int argc, char** argv) {
  int result = 1;
  QTimer::singleShot(0, qApp, [&] {
    result = QTest::qExec(&test, argc, argv);
    QCoreApplication::exit(result);
  });
  QApplication::exec();
  return result;
}

inline bool SameImage(const QImage& a, const QImage& b) {
  return a.convertToFormat(QImage::Format_RGB32) == b.convertToFormat(QImage::Format_RGB32);
}

}  // namespace ostrane::test
