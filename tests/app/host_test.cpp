// The Qt platform under the forms: timer semantics, the program's message
// box, WAVE parsing and silent sounds, documents and addresses.
#include <QApplication>
#include <QDesktopServices>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QUrlQuery>
#include <QtTest>

#include "app/gui/mail_link.h"
#include "app/gui/qt_host.h"
#include "app/gui/rich_text.h"
#include <QTextDocument>
#include "app/gui/single_instance.h"

using namespace ostrane;
using namespace ostrane::gui;

namespace {

// Clicks the button with this text in the next modal box, and keeps its text.
void AnswerNextBox(const QString& button, QString* text = nullptr, QString* title = nullptr,
                   QString* defaultText = nullptr) {
  QTimer::singleShot(0, [=] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) return;
    if (text) *text = box->text();
    if (title) *title = box->windowTitle();
    if (defaultText && box->defaultButton()) *defaultText = box->defaultButton()->text();
    for (QAbstractButton* b : box->buttons())
      if (b->text() == button) b->click();
  });
}

QByteArray Wave(int formatTag, int rate, int channels, int bits, const QByteArray& samples, bool cut = false) {
  QByteArray fmt;
  QDataStream f(&fmt, QIODevice::WriteOnly);
  f.setByteOrder(QDataStream::LittleEndian);
  f << quint16(formatTag) << quint16(channels) << quint32(rate) << quint32(rate * channels * bits / 8)
    << quint16(channels * bits / 8) << quint16(bits);
  QByteArray out;
  QDataStream s(&out, QIODevice::WriteOnly);
  s.setByteOrder(QDataStream::LittleEndian);
  out.append("RIFF");
  s.device()->seek(4);
  s << quint32(0);
  out.append("WAVE");
  out.append("LIST");
  QByteArray list("INFOxyz");  // an odd chunk, padded to even
  {
    QByteArray n;
    QDataStream d(&n, QIODevice::WriteOnly);
    d.setByteOrder(QDataStream::LittleEndian);
    d << quint32(list.size());
    out.append(n).append(list).append('\0');
  }
  out.append("fmt ");
  {
    QByteArray n;
    QDataStream d(&n, QIODevice::WriteOnly);
    d.setByteOrder(QDataStream::LittleEndian);
    d << quint32(fmt.size());
    out.append(n).append(fmt);
  }
  out.append("data");
  {
    QByteArray n;
    QDataStream d(&n, QIODevice::WriteOnly);
    d.setByteOrder(QDataStream::LittleEndian);
    d << quint32(cut ? samples.size() + 100 : samples.size());
    out.append(n).append(samples);
  }
  return out;
}

}  // namespace

// Catches what the shell hands to the desktop.
class UrlCatcher : public QObject {
  Q_OBJECT
 public:
  QList<QUrl> urls;
 public slots:
  void open(const QUrl& url) { urls << url; }
};

class HostTest : public QObject {
  Q_OBJECT
 private slots:
  void timerRunsOnlyWhenEnabledWithAnInterval() {
    QtTimers timers;
    int ticks = 0;
    auto timer = timers.Create([&] { ++ticks; });
    auto* qt = static_cast<QtTimer*>(timer.get());
    QVERIFY(timer->Enabled());
    QCOMPARE(timer->Interval(), 0);
    QVERIFY(!qt->Running());
    timer->SetInterval(400);
    QVERIFY(qt->Running());
    timer->SetEnabled(false);
    QVERIFY(!qt->Running());
    QCOMPARE(timer->Interval(), 400);
    timer->SetEnabled(true);
    QVERIFY(qt->Running());
    timer->SetInterval(0);
    QVERIFY(!qt->Running());
    timer->SetInterval(-5);
    QCOMPARE(timer->Interval(), 0);
    QCOMPARE(ticks, 0);
  }

  void oneShotTimerMayDropItselfOnItsTick() {
    // A one-shot form timer clears its interval first; a tick may also end
    // the form that owns the timer. Both must leave Qt in order.
    QtTimers timers;
    std::unique_ptr<Timer> timer;
    int ticks = 0;
    timer = timers.Create([&] {
      ++ticks;
      timer->SetInterval(0);
      timer.reset();
    });
    timer->SetInterval(1);
    QTRY_COMPARE(ticks, 1);
    QVERIFY(!timer);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void messageBoxYesNoInFrench() {
    QtMessageBoxes boxes;
    QString text, title, def;
    AnswerNextBox(QStringLiteral("Non"), &text, &title, &def);
    const Answer a = boxes.MsgBox("Voulez-vous abandonner la partie en cours ?   ", kYesNoDefaultNo);
    QCOMPARE(a, Answer::No);
    QCOMPARE(title, QStringLiteral("Ostrane"));
    QCOMPARE(text, QStringLiteral("Voulez-vous abandonner la partie en cours ?   "));  // trailing blanks kept
    QCOMPARE(def, QStringLiteral("Non"));

    AnswerNextBox(QStringLiteral("Oui"), nullptr, nullptr, &def);
    QCOMPARE(boxes.MsgBox("        Quitter le programme ?", kYesNo), Answer::Yes);
    QCOMPARE(def, QStringLiteral("Oui"));
  }

  void messageBoxLinesAndEscape() {
    QtMessageBoxes boxes;
    QString text;
    QTimer::singleShot(0, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      QVERIFY(box);
      text = box->text();
      QCOMPARE(box->icon(), QMessageBox::Information);
      QTest::keyClick(box, Qt::Key_Escape);
    });
    const BoxStyle info{Buttons::YesNo, Icon::Information, false};
    QCOMPARE(boxes.MsgBox("Désolé, mais votre score\r\npas suffisant.", info), Answer::No);
    QCOMPARE(text, QStringLiteral("Désolé, mais votre score\npas suffisant."));

    AnswerNextBox(QStringLiteral("OK"));
    QCOMPARE(boxes.MsgBox("Le programme est déja lancé.", BoxStyle{Buttons::Ok, Icon::Warning, false}), Answer::Ok);
  }

  void waveParsing() {
    const QByteArray samples(101, '\x80');
    WaveClip clip = ParseWave(Wave(1, 11025, 1, 8, samples));
    QVERIFY(clip.Playable());
    QCOMPARE(clip.sampleRate, 11025);
    QCOMPARE(clip.channels, 1);
    QCOMPARE(clip.bitsPerSample, 8);
    QCOMPARE(clip.samples, samples);

    clip = ParseWave(Wave(1, 22050, 1, 16, samples, /*cut=*/true));
    QVERIFY(clip.Playable());
    QCOMPARE(clip.samples, samples);  // what a short file holds still plays

    QVERIFY(!ParseWave(Wave(85, 22050, 1, 16, samples)).Playable());  // compressed: silence
    QVERIFY(!ParseWave(QByteArray("RIFF\0\0\0\0WAVX", 12)).Playable());
    QVERIFY(!ParseWave(QByteArray()).Playable());
    QVERIFY(!ParseWave(QByteArray("RIFF")).Playable());
  }

  void programSoundsAreWaves() {
    for (int n = 101; n <= 106; ++n) {
      const QByteArray bytes = QtSounds::SoundBytes(n);
      if (bytes.isEmpty()) QSKIP("the sounds are not among the resources of this build");
      const WaveClip clip = ParseWave(bytes);
      QVERIFY2(clip.Playable(), qPrintable(QString::number(n)));
      QVERIFY(clip.samples.size() > 1000);
    }
  }

  void soundsWithoutDeviceAreSilent() {
    // The test platform has no audio output: playing returns at once, says
    // nothing, and a new sound simply replaces the old.
    QtSounds sounds;
    QSignalSpy spy(&sounds, &QtSounds::requested);
    for (int n : {101, 103, 104, 107, 0, -1}) sounds.Play(n);
    QCOMPARE(spy.count(), 6);
    QCOMPARE(sounds.LastRequested(), -1);
    QVERIFY(!sounds.LastStarted());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());  // no box came up
  }

  void shellOpensAddressesAndHelp() {
    QtShell shell;
    UrlCatcher catcher;
    QDesktopServices::setUrlHandler(QStringLiteral("https"), &catcher, "open");
    QDesktopServices::setUrlHandler(QStringLiteral("mailto"), &catcher, "open");
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &catcher, "open");
    QVERIFY(shell.Open("https://www.ostrane.fr/documents/recherche.htm"));
    QCOMPARE(catcher.urls.last().toString(), QStringLiteral("https://www.ostrane.fr/documents/recherche.htm"));
    QVERIFY(shell.Open("mailto:?to=contact@ostrane.fr&Subject=Bonjour&Body=Un%20mot%0D%0A"));
    QCOMPARE(catcher.urls.last().scheme(), QStringLiteral("mailto"));
    QVERIFY(catcher.urls.last().toEncoded().contains("Body=Un%20mot%0D%0A"));

    // A document of the start directory is opened from there.
    QTemporaryDir dir;
    const QString old = QDir::currentPath();
    QDir::setCurrent(dir.path());
    {
      QFile f(dir.filePath(QStringLiteral("lecran.rtf")));
      QVERIFY(f.open(QIODevice::WriteOnly));
      f.write("{\\rtf1 x}");
    }
    QVERIFY(shell.Open("lecran.rtf"));
    QCOMPARE(catcher.urls.last().toLocalFile(), QFileInfo(dir.filePath(QStringLiteral("lecran.rtf"))).absoluteFilePath());
    QVERIFY(!shell.Open("absent.htm"));
    QVERIFY(!shell.Open(""));
    // The help page comes from the resources when the folder has none.
    const QString help = QtShell::LocalDocument(QStringLiteral("z_a_aide.htm"));
    QDir::setCurrent(old);
    if (help.isEmpty()) QSKIP("the help page is not among the resources of this build");
    QFile f(help);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QVERIFY(f.readAll().contains("Ostrane"));
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    QDesktopServices::unsetUrlHandler(QStringLiteral("mailto"));
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
  }

  void secondCopyAsksTheFirstToShow() {
    const QString key = QStringLiteral("ostrane-test-%1").arg(QCoreApplication::applicationPid());
    SingleInstance first(key);
    QSignalSpy shown(&first, &SingleInstance::showRequested);
    QVERIFY(first.Acquire());
    {
      SingleInstance second(key);
      QVERIFY(!second.Acquire());
    }
    QTRY_COMPARE(shown.count(), 1);
  }

  void lockOfACrashedCopyIsTakenOver() {
    const QString key = QStringLiteral("ostrane-test-stale-%1").arg(QCoreApplication::applicationPid());
    SingleInstance probe(key);
    {
      // What a copy killed with its lock held leaves: its process id is gone.
      QFile f(probe.LockPath());
      QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
      f.write(QByteArray("999999\nostrane\n") + QSysInfo::machineHostName().toUtf8() + "\n");
    }
    SingleInstance next(key);
    QVERIFY(next.Acquire());
  }

  void mailLinks() {
    QCOMPARE(QString::fromStdString(SubEncodeUrl("a b\nZ9")), QStringLiteral("a%20b%0AZ9"));
    QCOMPARE(QString::fromStdString(SubEncodeUrl("é@.")), QStringLiteral("%E9%40%2E"));  // code page 1252 bytes
    QCOMPARE(QString::fromStdString(SubEncodeUrl("\r\n")), QStringLiteral("%0D%0A"));
    QCOMPARE(QString::fromStdString(MailLink("contact@ostrane.fr", "", "", "Bonjour", "Un mot")),
             QStringLiteral("mailto:?to=contact@ostrane.fr&Subject=Bonjour&Body=Un%20mot"));
    QCOMPARE(QString::fromStdString(MailLink("a@b;;c@d;", "e@f", "g@h", "", "")),
             QStringLiteral("mailto:?to=a@b&to=c@d&cc=e@f&bcc=g@h"));
    QCOMPARE(QString::fromStdString(MailLink("", "", "", "", "")), QStringLiteral("mailto:?"));
    QtShell shell;
    UrlCatcher catcher;
    QDesktopServices::setUrlHandler(QStringLiteral("mailto"), &catcher, "open");
    SubOuvreCourrier(shell, kContactAddress, "", "", "Question", "Ligne 1\r\nLigne 2");
    QDesktopServices::unsetUrlHandler(QStringLiteral("mailto"));
    QCOMPARE(catcher.urls.size(), 1);
    QVERIFY(catcher.urls[0].toEncoded().contains("Body=Ligne%201%0D%0ALigne%202"));
    QCOMPARE(QUrlQuery(catcher.urls[0]).queryItemValue(QStringLiteral("Subject")), QStringLiteral("Question"));
  }

  void richTextOfTheProgramsDocuments() {
    const QByteArray lecran = ReadDocument(QStringLiteral("/nonexistent"), QStringLiteral("lecran.rtf"));
    if (lecran.isEmpty()) QSKIP("the documents are not among the resources of this build");
    const QString html = RtfToHtml(lecran);
    QTextDocument doc;
    doc.setHtml(html);
    const QString text = doc.toPlainText();
    QVERIFY(text.startsWith(QStringLiteral("Affichage d'Ostrane")));
    QVERIFY(html.contains(QStringLiteral("au moins 700\u00a0pixels")));  // \~ is a non-breaking space
    QVERIFY(text.contains(QStringLiteral("\u2022")));               // the bullets
    QVERIFY(text.contains(QStringLiteral("« Ignorer la vérification")));  // shown with a plain space
    QVERIFY(!text.contains(QLatin1Char('\\')));                     // no control word left
    QVERIFY(!text.contains(QStringLiteral("DejaVu")));               // nor the font table
    QVERIFY(html.contains(QStringLiteral("color:#1f5c44")));        // the heading's colour
    QVERIFY(html.contains(QStringLiteral("font-weight:bold")));
    // A text that is no RTF is shown as it is.
    doc.setHtml(RtfToHtml("Ligne <1>\nLigne 2"));
    QCOMPARE(doc.toPlainText(), QStringLiteral("Ligne <1>\nLigne 2"));
    // \u characters and escapes.
    doc.setHtml(RtfToHtml("{\\rtf1\\uc1 caf\\'e9 \\u8364? {\\b gras}\\par fin}"));
    QCOMPARE(doc.toPlainText(), QStringLiteral("café € gras\nfin"));
  }

  void eventPumpRunsPendingWorkAndThrottlesTheSearch() {
    QtEventPump pump;
    bool ran = false;
    QMetaObject::invokeMethod(qApp, [&] { ran = true; }, Qt::QueuedConnection);
    pump.DoEvents();
    QVERIFY(ran);
    const YieldHook hook = pump.SearchHook();
    const int before = pump.Pumps();
    for (int i = 0; i < 1000; ++i) hook();  // a burst right after a pump
    QVERIFY(pump.Pumps() - before < 5);
  }
};

QTEST_MAIN(HostTest)
#include "host_test.moc"
