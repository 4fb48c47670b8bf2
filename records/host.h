#pragma once
// What the forms ask of the platform they run on: timers, the date and time,
// sounds, opening documents, letting the window breathe. The windowed
// program gives Qt-backed versions; tests give scripted ones, so that time
// and answers are under the test's control. Message boxes are MessageBoxes
// (lexicon/messages.h).

#include <functional>
#include <memory>
#include <string>

#include "lexicon/messages.h"

namespace ostrane {

// A timer of a form. It fires every Interval() milliseconds while it is
// enabled and its interval is not 0; setting a new interval starts the count
// again. A one-shot timer sets its own interval to 0 first thing when it fires.
class Timer {
 public:
  virtual ~Timer() = default;
  virtual void SetInterval(int milliseconds) = 0;
  virtual int Interval() const = 0;
  virtual void SetEnabled(bool enabled) = 0;
  virtual bool Enabled() const = 0;
};

class Timers {
 public:
  virtual ~Timers() = default;
  // A new timer, enabled, with interval 0 (so not running yet).
  virtual std::unique_ptr<Timer> Create(std::function<void()> onTick) = 0;
};

struct DateTime {
  int year = 2000, month = 1, day = 1;
  int hour = 0, minute = 0, second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;
};

// Plays sound 101 to 106 of the program's own, from memory, without waiting;
// a new sound cuts the one before; a failure is silence.
class Sounds {
 public:
  virtual ~Sounds() = default;
  virtual void Play(int resourceNumber) = 0;
};

// Opens a file or an address with the desktop's default handler. Returns
// false on failure, which the callers keep to themselves.
class Shell {
 public:
  virtual ~Shell() = default;
  virtual bool Open(const std::string& fileOrAddress) = 0;
};

// Lets pending events run (timers, the stop button) during long work.
class EventPump {
 public:
  virtual ~EventPump() = default;
  virtual void DoEvents() = 0;
};

// Everything above, handed to the forms by whoever creates them.
struct Host {
  MessageBoxes& boxes;
  Timers& timers;
  Clock& clock;
  Sounds& sounds;
  Shell& shell;
  EventPump& events;
};

}  // namespace ostrane
