#pragma once
// What the widget tests put under the windows: timers that run only when the
// test moves time on (no test waits in real time), a fixed clock, sounds and
// documents that are recorded, no event pump during searches (a test may look in at each yield), and the real
// message boxes, answered by the test's pilot.

#include <QApplication>
#include <QDir>
#include <QString>
#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/gui/bind.h"
#include "app/gui/qt_host.h"
#include "records/host.h"

namespace ostrane::test {

class FakeTimers : public Timers {
 public:
  std::unique_ptr<Timer> Create(std::function<void()> onTick) override {
    auto slot = std::make_shared<Slot>();
    slot->onTick = std::move(onTick);
    slot->order = next_++;
    slots_.push_back(slot);
    return std::make_unique<FakeTimer>(slot, *this);
  }

  // Moves time on, firing each timer that falls due on the way, in order of
  // due time; the windows follow each tick. A tick may move time on itself.
  void Advance(long long milliseconds) {
    const long long target = now_ + milliseconds;
    for (;;) {
      std::shared_ptr<Slot> due;
      for (const auto& s : slots_)
        if (s->alive && s->enabled && s->interval > 0 && s->due <= target &&
            (!due || s->due < due->due || (s->due == due->due && s->order < due->order)))
          due = s;
      if (!due) break;
      now_ = std::max(now_, due->due);
      due->due = now_ + due->interval;
      const auto tick = due->onTick;  // the tick may drop its own timer
      tick();
      gui::Refreshable::RefreshAll();
    }
    now_ = std::max(now_, target);
    slots_.erase(std::remove_if(slots_.begin(), slots_.end(), [](const auto& s) { return !s->alive; }), slots_.end());
  }
  long long Now() const { return now_; }

 private:
  struct Slot {
    std::function<void()> onTick;
    int interval = 0;
    bool enabled = true;
    long long due = 0;
    long long order = 0;
    bool alive = true;
  };
  class FakeTimer : public Timer {
   public:
    FakeTimer(std::shared_ptr<Slot> slot, FakeTimers& owner) : slot_(std::move(slot)), owner_(owner) {}
    ~FakeTimer() override { slot_->alive = false; }
    void SetInterval(int ms) override {
      slot_->interval = ms < 0 ? 0 : ms;
      slot_->due = owner_.now_ + slot_->interval;
    }
    int Interval() const override { return slot_->interval; }
    void SetEnabled(bool enabled) override {
      if (enabled && !slot_->enabled) slot_->due = owner_.now_ + slot_->interval;
      slot_->enabled = enabled;
    }
    bool Enabled() const override { return slot_->enabled; }

   private:
    std::shared_ptr<Slot> slot_;
    FakeTimers& owner_;
  };

  std::vector<std::shared_ptr<Slot>> slots_;
  long long now_ = 0;
  long long next_ = 0;
};

class FixedClock : public Clock {
 public:
  DateTime now{2026, 11, 23, 14, 5, 9};
  DateTime Now() const override { return now; }
};

class RecordedSounds : public Sounds {
 public:
  std::vector<int> played;
  void Play(int resourceNumber) override { played.push_back(resourceNumber); }
  int Count(int resourceNumber) const { return int(std::count(played.begin(), played.end(), resourceNumber)); }
};

class RecordedShell : public Shell {
 public:
  std::vector<std::string> opened;
  bool Open(const std::string& what) override {
    opened.push_back(what);
    return true;
  }
};

// Pumps nothing; a test may look in at each yield of a search.
class NoEvents : public EventPump {
 public:
  void DoEvents() override {
    if (onDoEvents) onDoEvents();
  }
  std::function<void()> onDoEvents;
};

struct TestHost {
  TestHost() { boxes.beforeShow = [] { gui::Refreshable::RefreshAll(); }; }
  gui::QtMessageBoxes boxes;
  FakeTimers timers;
  FixedClock clock;
  RecordedSounds sounds;
  RecordedShell shell;
  NoEvents events;
  Host host{boxes, timers, clock, sounds, shell, events};
};

// Where the tests leave their pictures: build/screenshots.
inline QString ScreenshotPath(const QString& name) {
  const QString dir = QStringLiteral(OSTRANE_BUILD_DIR "/screenshots");
  QDir().mkpath(dir);
  return dir + QLatin1Char('/') + name + QStringLiteral(".png");
}

}  // namespace ostrane::test
