#pragma once
// A host under which the game's models run with nobody watching: time moves
// only when its owner moves it, questions are answered Yes (OK for a note),
// nothing is heard, no document opens, the clock shows a date it is given.
// For the command-line player and for games played again from a file.

#include "game/manual_timers.h"
#include "lexicon/messages.h"
#include "records/host.h"

namespace ostrane {

class YesBoxes : public MessageBoxes {
 public:
  Answer MsgBox(const std::string&, BoxStyle style) override {
    ++asked;
    return style.buttons == Buttons::Ok ? Answer::Ok : Answer::Yes;
  }
  int asked = 0;
};

class FixedClock : public Clock {
 public:
  DateTime Now() const override { return now; }
  DateTime now;
};

class Silence : public Sounds {
 public:
  void Play(int) override {}
};

class NoShell : public Shell {
 public:
  bool Open(const std::string&) override { return false; }
};

class NoEvents : public EventPump {
 public:
  void DoEvents() override {}
};

struct QuietHost {
  ManualTimers timers;
  YesBoxes boxes;
  FixedClock clock;
  Silence sounds;
  NoShell shell;
  NoEvents events;
  Host host{boxes, timers, clock, sounds, shell, events};
};

}  // namespace ostrane
