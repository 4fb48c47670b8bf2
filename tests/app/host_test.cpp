// The Qt platform under the forms: timer semantics, the program's message
// box, WAVE parsing and silent sounds, documents and addresses, the guard
// against a second copy.
#include <QDesktopServices>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QtTest>

#include "app/gui/mail_link.h"
#include "app/gui/rich_text.h"
#include "app/gui/single_instance.h"
#include "tests/app/test_host.h"

using namespace ostrane;
using namespace ostrane::gui;

namespace {

// A RIFF WAVE file: a LIST chunk before "fmt " and "data"; a `cut` file
// says it holds 100 bytes more than it does.
QByteArray Wave(int formatTag, int rate, int channels, int bits, const QByteArray& samples,
                bool cut = false) {
  QByteArray fmt, out("RIFF\0\0\0\0WAVE", 12);
  QDataStream f(&fmt, QIODevice::WriteOnly), s(&out, QIODevice::WriteOnly | QIODevice::Append);
  for (QDataStream* d : {&f, &s}) d->setByteOrder(QDataStream::LittleEndian);
  f << quint16(formatTag) << quint16(channels) << quint32(rate) << quint32(rate * channels * bits / 8)
    << quint16(channels * bits / 8) << quint16(bits);
  const auto chunk = [&s](const char* id, const QByteArray& body, int extra) {
    s.writeRawData(id, 4);
    s << quint32(body.size() + extra);
    s.writeRawData(body.constData(), int(body.size()));
  };
  chunk("LIST", QByteArray("INFOxyz", 8), -1);  // an odd chunk, padded to even
  chunk("fmt ", fmt, 0);
  chunk("data", samples, cut ? 100 : 0);
  return out;
}

// Catches what the shell hands to the desktop.
class UrlCatcher : public QObject {
  Q_OBJECT
 public:
  QList<QUrl> urls;
 public slots:
  void open(const QUrl& url) { urls << url; }
};

}  // namespace

class HostTest : public QObject {
  Q_OBJECT
 private slots:
  void timerRunsOnlyWhenEnabledWithAnIntervalAndMayDropItselfOnItsTick() {
    QtTimers timers;
    std::unique_ptr<Timer> timer;
    int ticks = 0;
    timer = timers.Create([&] {
      // A one-shot form timer clears its interval first; a tick may also end
      // the form that owns the timer. Both must leave Qt in order.
      ++ticks;
      timer->SetInterval(0);
      timer.reset();
    });
    auto* qt = static_cast<QtTimer*>(timer.get());
    QVERIFY(timer->Enabled() && timer->Interval() == 0 && !qt->Running());
    timer->SetInterval(400);
    QVERIFY(qt->Running());
    timer->SetEnabled(false);
    QVERIFY(!qt->Running() && timer->Interval() == 400);
    timer->SetEnabled(true);
    QVERIFY(qt->Running());
    timer->SetInterval(-5);
    QVERIFY(!qt->Running() && timer->Interval() == 0 && ticks == 0);
    timer->SetInterval(1);
    QTRY_COMPARE(ticks, 1);
    QVERIFY(!timer);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void messageBoxesInFrenchWithTheirTextAsGiven() {
    // Titled "Ostrane", trailing blanks kept, CR LF shown as a line break,
    // the default button as asked; Escape answers No.
    QtMessageBoxes boxes;
    const auto ask = [&boxes](const char* text, BoxStyle style, const QString& press, Answer answer) {
      QString seen;
      test::OnNextBox([&](QMessageBox* box) {
        seen = box->windowTitle() + '|' + box->text() + '|' + box->defaultButton()->text() + '|' +
               QString::number(box->icon());
        if (press.isEmpty()) return QTest::keyClick(box, Qt::Key_Escape);
        for (QAbstractButton* b : box->buttons())
          if (b->text() == press) b->click();
      });
      return boxes.MsgBox(text, style) == answer ? seen : QStringLiteral("another answer");
    };
    QCOMPARE(ask("Voulez-vous abandonner la partie en cours ?   ", kYesNoDefaultNo, QStringLiteral("Non"),
                 Answer::No),
             QStringLiteral("Ostrane|Voulez-vous abandonner la partie en cours ?   |Non|0"));
    QCOMPARE(ask("Désolé, mais votre score\r\npas suffisant.", {Buttons::YesNo, Icon::Information, false}, {},
                 Answer::No),
             QStringLiteral("Ostrane|Désolé, mais votre score\npas suffisant.|Oui|1"));
  }

  void waveParsing() {
    const QByteArray samples(101, '\x80');
    WaveClip clip = ParseWave(Wave(1, 11025, 1, 8, samples));
    QVERIFY(clip.Playable() && clip.sampleRate == 11025 && clip.channels == 1 && clip.bitsPerSample == 8);
    QCOMPARE(clip.samples, samples);
    clip = ParseWave(Wave(1, 22050, 1, 16, samples, /*cut=*/true));  // what a short file holds still plays
    QVERIFY(clip.Playable() && clip.samples == samples);
    QVERIFY(!ParseWave(Wave(85, 22050, 1, 16, samples)).Playable());  // compressed: silence
    for (const QByteArray& bad : {QByteArray("RIFF\0\0\0\0WAVX", 12), QByteArray(), QByteArray("RIFF")})
      QVERIFY(!ParseWave(bad).Playable());
  }

  void soundsWithoutDeviceAreSilentAndTheProgramsSoundsAreWaves() {
    // The test platform has no audio output: playing returns at once, says
    // nothing, and a new sound simply replaces the old.
    QtSounds sounds;
    QSignalSpy spy(&sounds, &QtSounds::requested);
    for (int n : {101, 103, 104, 107, 0, -1}) sounds.Play(n);
    QVERIFY(spy.count() == 6 && sounds.LastRequested() == -1 && !sounds.LastStarted());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());  // no box came up
    for (int n = 101; n <= 106; ++n) {
      const QByteArray bytes = QtSounds::SoundBytes(n);
      if (bytes.isEmpty()) QSKIP("the sounds are not among the resources of this build");
      const WaveClip clip = ParseWave(bytes);
      QVERIFY2(clip.Playable() && clip.samples.size() > 1000, qPrintable(QString::number(n)));
    }
  }

  void shellOpensAddressesAndDocumentsAndFailsSilently() {
    QtShell shell;
    UrlCatcher catcher;
    for (const char* scheme : {"mailto", "file"}) QDesktopServices::setUrlHandler(scheme, &catcher, "open");
    QVERIFY(shell.Open("mailto:?to=contact@ostrane.fr&Subject=Bonjour&Body=Un%20mot%0D%0A"));
    QVERIFY(catcher.urls.last().scheme() == "mailto" &&
            catcher.urls.last().toEncoded().contains("Body=Un%20mot%0D%0A"));
    // A document of the start directory is opened from there; what is not
    // there is a plain false, nothing shown.
    QTemporaryDir dir;
    const QString old = QDir::currentPath();
    QDir::setCurrent(dir.path());
    QFile rtf(dir.filePath(QStringLiteral("lecran.rtf")));
    QVERIFY(rtf.open(QIODevice::WriteOnly) && rtf.write("{\\rtf1 x}") > 0);
    rtf.close();
    QVERIFY(shell.Open("lecran.rtf") && !shell.Open("absent.htm") && !shell.Open(""));
    QCOMPARE(catcher.urls.size(), 2);
    QCOMPARE(catcher.urls.last().toLocalFile(), QFileInfo(rtf).absoluteFilePath());
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
    for (const char* scheme : {"mailto", "file"}) QDesktopServices::unsetUrlHandler(scheme);
    // The help page comes from the resources when the folder has none.
    const QString help = QtShell::LocalDocument(QStringLiteral("z_a_aide.htm"));
    QDir::setCurrent(old);
    if (help.isEmpty()) QSKIP("the help page is not among the resources of this build");
    QFile f(help);
    QVERIFY(f.open(QIODevice::ReadOnly) && f.readAll().contains("Ostrane"));
  }

  void secondCopyAsksTheFirstToShowAndACrashedCopysLockIsTakenOver() {
    const QString key = QStringLiteral("ostrane-test-%1").arg(QCoreApplication::applicationPid());
    SingleInstance first(key);
    QSignalSpy shown(&first, &SingleInstance::showRequested);
    QVERIFY(first.Acquire());
    QVERIFY(!SingleInstance(key).Acquire());
    QTRY_COMPARE(shown.count(), 1);

    // What a copy killed with its lock held leaves: its process id is gone.
    const QString stale = key + QStringLiteral("-stale");
    QFile f(SingleInstance(stale).LockPath());
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(QByteArray("999999\nostrane\n") + QSysInfo::machineHostName().toUtf8() + "\n");
    f.close();
    QVERIFY(SingleInstance(stale).Acquire());
  }

  void mailLinksSplitTheirAddressesAndEncodeTheBodyInCodePage1252() {
    QCOMPARE(QString::fromStdString(MailLink("a@b;;c@d;", "e@f", "g@h", "Un été", "é b.\r\n")),
             QStringLiteral("mailto:?to=a@b&to=c@d&cc=e@f&bcc=g@h&Subject=Un été&Body=%E9%20b%2E%0D%0A"));
    QCOMPARE(QString::fromStdString(MailLink("", "", "", "", "")), QStringLiteral("mailto:?"));
  }

  void richTextOfTheProgramsDocuments() {
    // A text that is no RTF is shown as it is; \u characters and escapes.
    QTextDocument doc;
    doc.setHtml(RtfToHtml("Ligne <1>\nLigne 2") +
                RtfToHtml("{\\rtf1\\uc1 caf\\'e9 \\u8364? {\\b gras}\\par fin}"));
    QCOMPARE(doc.toPlainText(), QStringLiteral("Ligne <1>\nLigne 2\ncafé € gras\nfin"));
    const QByteArray lecran = ReadDocument(QStringLiteral("/nonexistent"), QStringLiteral("lecran.rtf"));
    if (lecran.isEmpty()) QSKIP("the documents are not among the resources of this build");
    // The heading's colour and weight; \~ is a non-breaking space, shown as
    // a plain one; the bullets; no control word nor the font table left.
    const QString html = RtfToHtml(lecran);
    doc.setHtml(html);
    const QString text = doc.toPlainText();
    for (const char* part : {"color:#1f5c44", "font-weight:bold", "au moins 700\u00a0pixels"})
      QVERIFY2(html.contains(QString::fromUtf8(part)), part);
    for (const char* part : {"Affichage d'Ostrane", "« Ignorer la vérification", "\u2022"})
      QVERIFY2(text.contains(QString::fromUtf8(part)), part);
    QVERIFY(!text.contains(QLatin1Char('\\')) && !text.contains(QStringLiteral("DejaVu")));
  }
};

QTEST_MAIN(HostTest)
#include "host_test.moc"
