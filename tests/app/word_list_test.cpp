// The player's own word list through the windows: chosen from "Liste de
// mots…" before a game (in service at once, the main window made again) and
// during one (waiting for the next game), kept in the settings and in the
// journal, and a list named by the settings that is gone at the start.
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QtTest>

#include "app/gui/additions.h"
#include "app/gui/word_list_window.h"
#include "data/embedded_lexicon.h"
#include "lexicon/word_file.h"
#include "records/word_lists.h"
#include "tests/app/session.h"

using namespace ostrane;
using namespace ostrane::gui;
using namespace ostrane::test;

namespace {

// Runs `act` on the word lists' window once it is up.
void OnWordListWindow(Session& s, std::function<void(WordListWindow*)> act) {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, [timer, &s, act = std::move(act)] {
    WordListWindow* window = s.app->Added() ? s.app->Added()->WordListDialog() : nullptr;
    if (!window || !window->isVisible()) return;
    timer->stop();
    timer->deleteLater();
    act(window);
  });
  timer->start(0);
}

void Check(MainWindow* w, const QString& word) {
  w->TxtCtrl()->setFocus();
  w->TxtCtrl()->clear();
  QTest::keyClicks(w->TxtCtrl(), word);
  QTest::keyClick(w->TxtCtrl(), Qt::Key_Return);
}

// "la liste intégrée (374 993 mots)", as the program counts its own list.
QString Embedded() {
  return QStringLiteral("la liste intégrée (%1 mots)")
      .arg(QString::fromStdString(FrenchCount(EmbeddedLexicon().WordCount())));
}

QString Read(const QString& file) {
  QFile f(file);
  return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

}  // namespace

class WordListTest : public QObject {
  Q_OBJECT
 private slots:
  void aListChosenBeforeAnyGameServesAtOnce();
  void aListChosenDuringAGameWaitsForTheNext();
  void aListGoneAtTheStartLeavesTheEmbeddedOne();
};

void WordListTest::aListChosenBeforeAnyGameServesAtOnce() {
  Session s;
  const QString list = s.dir.filePath(QStringLiteral("mes mots.txt"));
  QFile f(list);
  QVERIFY(f.open(QIODevice::WriteOnly));
  f.write("# Mes mots\nMaître\nmaîtres\nÉCOLE\nécoles\nl'eau\nchat\nchats\n");
  f.close();
  MainWindow* w = s.Open();
  QVERIFY(w);
  QCOMPARE(s.app->Added()->Command(QStringLiteral("Liste de mots…"))->shortcut(),
           QKeySequence(Qt::CTRL | Qt::Key_L));
  QString inUse;
  OnWordListWindow(s, [&](WordListWindow* window) {
    inUse = window->InUseLabel()->text();
    window->grab().save(ScreenshotPath(QStringLiteral("word_list_window")));
    QVERIFY(!window->EmbeddedButton()->isEnabled());
    window->ChooseFrom(list);  // no game begun: the window closes, the list serves at once
  });
  s.app->Added()->OpenWordList();
  QCoreApplication::processEvents();  // the main window is made again
  s.host.timers.Advance(100);         // its TimDeb
  QCOMPARE(inUse, QStringLiteral("L") + Embedded().mid(1) + QStringLiteral("."));
  QCOMPARE(s.boxes.last(), QStringLiteral("La liste « mes mots.txt » (6 mots, 1 ligne ignorée) est en service."));
  w = s.app->Main();
  QVERIFY(w && w->isVisible());
  QCOMPARE(s.app->program().settings.wordList, list.toStdString());
  QVERIFY(Read(s.dir.filePath(QStringLiteral("ostrane.ini"))).contains(QStringLiteral("liste_de_mots=") + list));
  s.piloting = false;
  Check(w, QStringLiteral("maitres"));
  QCOMPARE(w->LblA1()->text(), QStringLiteral("Le mot MAITRES existe."));
  w->grab().save(ScreenshotPath(QStringLiteral("word_list_in_service")));
  Check(w, QStringLiteral("maison"));
  QCOMPARE(w->LblA1()->text(), QStringLiteral("Le mot MAISON n'existe pas."));
  // A game on it: the journal names the list.
  s.Pilot();
  s.app->program().StrSac = "CHATSECOLEMAITRES";
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);
  QVERIFY(Read(s.dir.filePath(QStringLiteral("partie.ret"))).contains(QStringLiteral(" ") + list + "\r\nFin\r\n"));
  QVERIFY(s.Model().Proposition.has_value());
  const std::string word = s.Model().Proposition->Express;
  QVERIFY2(word == "chats" || word == "chat" || word == "ecoles" || word == "ecole", word.c_str());
}

void WordListTest::aListChosenDuringAGameWaitsForTheNext() {
  Session s;
  const QString list = s.dir.filePath(QStringLiteral("mots.txt"));
  const QString bad = s.dir.filePath(QStringLiteral("image.txt"));
  for (const auto& [file, bytes] : {std::pair{list, QByteArray("chat\nchats\n")},
                                    std::pair{bad, QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16)}}) {
    QFile f(file);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
  }
  MainWindow* w = s.Open();
  QVERIFY(w);
  QTest::mouseClick(w->CmdNew(), Qt::LeftButton);  // a game begins
  bool refused = true, chosen = false;
  QString waiting;
  OnWordListWindow(s, [&](WordListWindow* window) {
    refused = !window->ChooseFrom(bad);
    chosen = window->ChooseFrom(list);
    waiting = window->ChosenLabel()->isVisible() ? window->ChosenLabel()->text() : QString();
    window->grab().save(ScreenshotPath(QStringLiteral("word_list_waiting")));
    QVERIFY(window->EmbeddedButton()->isEnabled());
    window->accept();
  });
  s.app->Added()->OpenWordList();
  QVERIFY(refused && chosen);
  QCOMPARE(s.boxes.value(s.boxes.size() - 2),
           QStringLiteral("Le fichier « image.txt » n'est pas un fichier texte : ce n'est pas une liste de mots.\n"
                          "La liste en service ne change pas."));
  QCOMPARE(s.boxes.last(), QStringLiteral("La liste « mots.txt » (2 mots) servira à partir de la prochaine partie."));
  QCOMPARE(waiting, QStringLiteral("Pour la prochaine partie : la liste « mots.txt » (2 mots)."));
  QCOMPARE(QString::fromStdString(s.app->Lists().InUse()), Embedded());
  QVERIFY(s.app->Main() == w);  // the game goes on in its window, with its list
}

void WordListTest::aListGoneAtTheStartLeavesTheEmbeddedOne() {
  Session s;
  const QString gone = s.dir.filePath(QStringLiteral("disparue.txt"));
  s.Write(QStringLiteral("ostrane.ini"), "[Ostrane]\nliste_de_mots=" + gone.toUtf8() + "\n");
  MainWindow* w = s.Open();
  QVERIFY(w);
  QCOMPARE(s.boxes.value(0), QStringLiteral("Le fichier « %1 » n'existe pas.\nLa liste intégrée reste en service.").arg(gone));
  QCOMPARE(QString::fromStdString(s.app->Lists().InUse()), Embedded());
  s.piloting = false;
  Check(w, QStringLiteral("maison"));
  QCOMPARE(w->LblA1()->text(), QStringLiteral("Le mot MAISON existe."));
}

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  WordListTest test;
  return ExecInEventLoop(test, argc, argv);
}

#include "word_list_test.moc"
