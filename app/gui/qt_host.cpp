#include "app/gui/qt_host.h"

#include <QApplication>
#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QBuffer>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMediaDevices>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>
#include <QtEndian>

#include "data/resources.h"

namespace ostrane::gui {

// ---------------------------------------------------------------- timers

QtTimer::QtTimer(std::function<void()> onTick, const std::function<void()>* afterTick)
    : timer_(new QTimer), onTick_(std::make_shared<std::function<void()>>(std::move(onTick))) {
  timer_->setTimerType(Qt::PreciseTimer);
  QObject::connect(timer_, &QTimer::timeout, [this, afterTick] {
    // The tick may end the form that owns this timer, and the timer with it.
    const std::shared_ptr<std::function<void()>> tick = onTick_;
    if (*tick) (*tick)();
    if (afterTick && *afterTick) (*afterTick)();
  });
}

QtTimer::~QtTimer() {
  timer_->stop();
  timer_->disconnect();
  timer_->deleteLater();
}

void QtTimer::SetInterval(int milliseconds) {
  interval_ = milliseconds < 0 ? 0 : milliseconds;
  Restart();
}

void QtTimer::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  Restart();
}

bool QtTimer::Running() const { return timer_->isActive(); }

void QtTimer::Restart() {
  if (enabled_ && interval_ > 0)
    timer_->start(interval_);
  else
    timer_->stop();
}

std::unique_ptr<Timer> QtTimers::Create(std::function<void()> onTick) {
  return std::make_unique<QtTimer>(std::move(onTick), &afterTick);
}

// ---------------------------------------------------------------- clock

DateTime QtClock::Now() const {
  const QDateTime now = QDateTime::currentDateTime();
  const QDate d = now.date();
  const QTime t = now.time();
  return DateTime{d.year(), d.month(), d.day(), t.hour(), t.minute(), t.second()};
}

// ---------------------------------------------------------------- boxes

QString ModelText(const std::string& text) {
  QString s = QString::fromUtf8(text.data(), qsizetype(text.size()));
  s.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  return s;
}

Answer QtMessageBoxes::MsgBox(const std::string& text, BoxStyle style) {
  if (beforeShow) beforeShow();
  QWidget* parent = QApplication::activeModalWidget();
  if (!parent) parent = QApplication::activeWindow();
  QMessageBox box(parent);
  box.setWindowTitle(title_);
  box.setTextFormat(Qt::PlainText);
  box.setText(ModelText(text));
  switch (style.icon) {
    case Icon::None: box.setIcon(QMessageBox::NoIcon); break;
    case Icon::Critical: box.setIcon(QMessageBox::Critical); break;
    case Icon::Question: box.setIcon(QMessageBox::Question); break;
    case Icon::Warning: box.setIcon(QMessageBox::Warning); break;
    case Icon::Information: box.setIcon(QMessageBox::Information); break;
  }
  if (style.buttons == Buttons::YesNo) {
    QPushButton* yes = box.addButton(QStringLiteral("Oui"), QMessageBox::YesRole);
    QPushButton* no = box.addButton(QStringLiteral("Non"), QMessageBox::NoRole);
    box.setDefaultButton(style.defaultNo ? no : yes);
    box.setEscapeButton(no);  // closing the box is never taken for a Yes
    box.exec();
    return box.clickedButton() == yes ? Answer::Yes : Answer::No;
  }
  QPushButton* ok = box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
  box.setDefaultButton(ok);
  box.setEscapeButton(ok);
  box.exec();
  return Answer::Ok;
}

// ---------------------------------------------------------------- sounds

bool WaveClip::Playable() const {
  return sampleRate > 0 && (channels == 1 || channels == 2) && (bitsPerSample == 8 || bitsPerSample == 16) &&
         !samples.isEmpty();
}

WaveClip ParseWave(const QByteArray& bytes) {
  WaveClip clip;
  if (bytes.size() < 12 || !bytes.startsWith("RIFF") || bytes.mid(8, 4) != "WAVE") return clip;
  const auto u16 = [&](qsizetype at) { return qFromLittleEndian<quint16>(bytes.constData() + at); };
  const auto u32 = [&](qsizetype at) { return qFromLittleEndian<quint32>(bytes.constData() + at); };
  int formatTag = 0;
  qsizetype at = 12;
  while (at + 8 <= bytes.size()) {
    const QByteArray id = bytes.mid(at, 4);
    const qsizetype size = qsizetype(u32(at + 4));
    const qsizetype body = at + 8;
    if (size < 0 || body + size > bytes.size()) {
      // A data chunk cut short still plays what it holds.
      if (id == "data") clip.samples = bytes.mid(body);
      break;
    }
    if (id == "fmt " && size >= 16) {
      formatTag = u16(body);
      clip.channels = u16(body + 2);
      clip.sampleRate = int(u32(body + 4));
      clip.bitsPerSample = u16(body + 14);
    } else if (id == "data") {
      clip.samples = bytes.mid(body, size);
    }
    at = body + size + (size & 1);
  }
  if (formatTag != 1) clip.samples.clear();  // only plain PCM is played
  return clip;
}

QtSounds::QtSounds() = default;

QtSounds::~QtSounds() { StopCurrent(); }

QByteArray QtSounds::SoundBytes(int resourceNumber) {
  const std::string bytes = ReadResource("sounds/" + std::to_string(resourceNumber) + ".wav");
  return QByteArray(bytes.data(), qsizetype(bytes.size()));
}

void QtSounds::StopCurrent() {
  if (sink_) {
    sink_->disconnect();
    sink_->stop();
    sink_->deleteLater();
    sink_ = nullptr;
  }
  if (buffer_) {
    buffer_->deleteLater();
    buffer_ = nullptr;
  }
}

void QtSounds::Play(int resourceNumber) {
  ++requests_;
  lastRequested_ = resourceNumber;
  lastStarted_ = false;
  emit requested(resourceNumber);
  StopCurrent();
  const WaveClip clip = ParseWave(SoundBytes(resourceNumber));
  if (!clip.Playable()) return;
  const QAudioDevice device = QMediaDevices::defaultAudioOutput();
  if (device.isNull()) return;
  QAudioFormat format;
  format.setSampleRate(clip.sampleRate);
  format.setChannelCount(clip.channels);
  format.setSampleFormat(clip.bitsPerSample == 8 ? QAudioFormat::UInt8 : QAudioFormat::Int16);
  if (!device.isFormatSupported(format)) return;
  buffer_ = new QBuffer(this);
  buffer_->setData(clip.samples);
  if (!buffer_->open(QIODevice::ReadOnly)) return;
  sink_ = new QAudioSink(device, format, this);
  QAudioSink* sink = sink_;
  connect(sink, &QAudioSink::stateChanged, this, [this, sink](QAudio::State state) {
    if (state == QAudio::IdleState && sink == sink_) StopCurrent();
  });
  sink_->start(buffer_);
  lastStarted_ = sink_->error() == QAudio::NoError && sink_->state() != QAudio::StoppedState;
  if (!lastStarted_) StopCurrent();
}

// ---------------------------------------------------------------- shell

QString QtShell::LocalDocument(const QString& name) {
  const QFileInfo here(QDir::current(), name);
  if (here.isFile()) return here.absoluteFilePath();
  const std::string bytes = ReadResource("help/" + name.toStdString());
  if (bytes.empty()) return {};
  QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  if (folder.isEmpty() || !QDir().mkpath(folder)) folder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
  const QString path = QDir(folder).filePath(name);
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return {};
  file.write(bytes.data(), qint64(bytes.size()));
  file.close();
  return path;
}

bool QtShell::Open(const std::string& fileOrAddress) {
  const QString text = QString::fromUtf8(fileOrAddress.data(), qsizetype(fileOrAddress.size()));
  if (text.isEmpty()) return false;
  QUrl url;
  static const char* const kSchemes[] = {"http:", "https:", "mailto:", "file:"};
  bool address = false;
  for (const char* scheme : kSchemes) address = address || text.startsWith(QLatin1String(scheme), Qt::CaseInsensitive);
  if (address) {
    url = QUrl(text, QUrl::TolerantMode);
  } else {
    const QString local = QFileInfo(text).isAbsolute() ? text : LocalDocument(text);
    if (local.isEmpty() || !QFileInfo(local).exists()) return false;
    url = QUrl::fromLocalFile(local);
  }
  if (!url.isValid()) return false;
  lastOpened_ = url.toString();
  return QDesktopServices::openUrl(url);
}

// ---------------------------------------------------------------- events

void QtEventPump::DoEvents() {
  // A search yields at every candidate: running the event loop that often
  // would cost more than the search. A few milliseconds apart is enough for
  // the window to keep up.
  if (sinceLast_.isValid() && sinceLast_.elapsed() < kMinimumGapMs) return;
  ++pumps_;
  QCoreApplication::processEvents(QEventLoop::AllEvents);
  sinceLast_.start();
}

void QtEventPump::Throttled(void* self) { static_cast<QtEventPump*>(self)->DoEvents(); }

YieldHook QtEventPump::SearchHook() { return YieldHook{&QtEventPump::Throttled, this}; }

}  // namespace ostrane::gui
