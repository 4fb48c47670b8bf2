#pragma once
// The platform under the forms, on Qt: timers on QTimer, the program's
// message box, the clock, sounds played from memory through QAudioSink,
// documents opened by the desktop, and the event pump of long work.

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <string>

#include "lexicon/messages.h"
#include "lexicon/yield.h"
#include "records/host.h"

class QAudioSink;
class QBuffer;
class QTimer;
class QWidget;

namespace ostrane::gui {

// Interval semantics of the forms' timers: a timer runs while it is enabled
// and its interval is above 0; setting an interval starts the count again.
class QtTimer final : public Timer {
 public:
  // `afterTick`, when set, runs after each tick (the windows follow the
  // models); it must outlive the timer.
  explicit QtTimer(std::function<void()> onTick, const std::function<void()>* afterTick = nullptr);
  ~QtTimer() override;
  void SetInterval(int milliseconds) override;
  int Interval() const override { return interval_; }
  void SetEnabled(bool enabled) override;
  bool Enabled() const override { return enabled_; }
  bool Running() const;

 private:
  void Restart();
  QTimer* timer_;  // deleted later: a tick may drop its own timer
  std::shared_ptr<std::function<void()>> onTick_;  // kept alive by a running tick
  int interval_ = 0;
  bool enabled_ = true;
};

class QtTimers final : public Timers {
 public:
  std::unique_ptr<Timer> Create(std::function<void()> onTick) override;
  // Runs after every tick of every timer made here: the windows show what
  // the tick changed.
  std::function<void()> afterTick;
};

class QtClock final : public Clock {
 public:
  DateTime Now() const override;
};

// Every message of the program: a box titled with the program's name, the
// buttons in French, CR LF shown as line breaks, trailing blanks kept.
class QtMessageBoxes final : public MessageBoxes {
 public:
  explicit QtMessageBoxes(QString title = QStringLiteral("Ostrane")) : title_(std::move(title)) {}
  Answer MsgBox(const std::string& text, BoxStyle style) override;
  const QString& Title() const { return title_; }
  // Runs before each box is shown: the windows show the state it is about.
  std::function<void()> beforeShow;

 private:
  QString title_;
};

// The text of a model (UTF-8, lines closed by CR LF) as Qt shows it.
QString ModelText(const std::string& text);

// A RIFF WAVE file taken apart: its PCM format and sample bytes.
struct WaveClip {
  int sampleRate = 0;
  int channels = 0;
  int bitsPerSample = 0;
  QByteArray samples;
  bool Playable() const;  // PCM of 8 or 16 bits, 1 or 2 channels
};
// Reads the chunks "fmt " and "data". A clip that is not PCM, or is cut
// short, comes back not playable.
WaveClip ParseWave(const QByteArray& bytes);

// The six sounds of the program, read from the resources ("sounds/101.wav"
// and so on) and played without waiting. A new sound cuts the one before;
// without an audio device, or with a sound that cannot be played, nothing
// is heard and nothing is said.
class QtSounds final : public QObject, public Sounds {
  Q_OBJECT
 public:
  QtSounds();
  ~QtSounds() override;
  void Play(int resourceNumber) override;

  // What was asked last, whether heard or not (tests and the status of the
  // audio output).
  int LastRequested() const { return lastRequested_; }
  int Requests() const { return requests_; }
  bool LastStarted() const { return lastStarted_; }

  static QByteArray SoundBytes(int resourceNumber);

 signals:
  void requested(int resourceNumber);

 private:
  void StopCurrent();
  QAudioSink* sink_ = nullptr;
  QBuffer* buffer_ = nullptr;
  int lastRequested_ = 0;
  int requests_ = 0;
  bool lastStarted_ = false;
};

// Opens files and addresses with the desktop's handlers. A name of the
// program's help ("z_a_aide.htm") is looked for in the start directory and
// otherwise written from the program's resources to a folder of its own
// first. Failures only return false.
class QtShell final : public Shell {
 public:
  bool Open(const std::string& fileOrAddress) override;
  // Where a bare file name is opened from: the start directory when it holds
  // it, else a copy of the resource "help/<name>" (empty when neither).
  static QString LocalDocument(const QString& name);
  // The last thing handed to the desktop, as a URL.
  const QString& LastOpened() const { return lastOpened_; }

 private:
  QString lastOpened_;
};

// Lets the window breathe during long work: pending events run, at most
// every few milliseconds, so that a search that yields at each of its many
// candidates is not slowed by the event loop.
class QtEventPump final : public EventPump {
 public:
  static constexpr int kMinimumGapMs = 8;
  void DoEvents() override;
  YieldHook SearchHook();
  int Pumps() const { return pumps_; }

 private:
  static void Throttled(void* self);
  QElapsedTimer sinceLast_;
  int pumps_ = 0;
};

// All of the above, owned together.
struct QtHost {
  QtMessageBoxes boxes;
  QtTimers timers;
  QtClock clock;
  QtSounds sounds;
  QtShell shell;
  QtEventPump events;
  Host host{boxes, timers, clock, sounds, shell, events};
};

}  // namespace ostrane::gui
