#pragma once
// A whole Host for tests of the forms: timers that run only when the test
// moves time on, message boxes answered from a script, a fixed clock, and
// sounds, documents and event pumping that are only recorded.

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "game/manual_timers.h"
#include "lexicon/messages.h"
#include "records/host.h"

namespace ostrane::test {

struct ShownMessage {
  std::string text;
  BoxStyle style;
};

// Answers Yes/No questions from `answers` (Yes once it is empty), or from
// `onQuestion` when it is set; Ok boxes answer Ok. Remembers every box.
class AnsweringBoxes : public MessageBoxes {
 public:
  Answer MsgBox(const std::string& text, BoxStyle style) override;
  // The texts shown, in order.
  std::vector<std::string> Texts() const;
  // Whether a box with exactly this text was shown.
  bool Showed(const std::string& text) const;

  std::deque<Answer> answers;
  std::function<Answer(const std::string& text, BoxStyle style)> onQuestion;
  std::vector<ShownMessage> shown;
};

class SetClock : public Clock {
 public:
  DateTime Now() const override { return now; }
  DateTime now{2024, 5, 18, 14, 23, 17};
};

class RecordedSounds : public Sounds {
 public:
  void Play(int resourceNumber) override { played.push_back(resourceNumber); }
  std::vector<int> played;
};

class RecordedShell : public Shell {
 public:
  bool Open(const std::string& fileOrAddress) override {
    opened.push_back(fileOrAddress);
    return result;
  }
  std::vector<std::string> opened;
  bool result = true;
};

class CountedEvents : public EventPump {
 public:
  void DoEvents() override {
    ++count;
    if (onDoEvents) onDoEvents();
  }
  int count = 0;
  std::function<void()> onDoEvents;
};

// Everything above, and the Host made of it.
struct FakeHost {
  ManualTimers timers;
  AnsweringBoxes boxes;
  SetClock clock;
  RecordedSounds sounds;
  RecordedShell shell;
  CountedEvents events;
  Host host{boxes, timers, clock, sounds, shell, events};
};

}  // namespace ostrane::test
