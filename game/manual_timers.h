#pragma once
// Timers that run only when their owner moves time on: for the command-line
// player and for tests, where time must be under control. A timer fires when
// its due time is reached by Advance; firing re-arms it for one more
// interval. A handler may move time on itself (a modal form that waits for
// its own timer); time never goes back.

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "records/host.h"

namespace ostrane {

class ManualTimers : public Timers {
 public:
  std::unique_ptr<Timer> Create(std::function<void()> onTick) override;

  // Moves time on by `milliseconds`, firing every timer that falls due on
  // the way, in order of due time (creation order on a tie).
  void Advance(int64_t milliseconds);
  // Moves time on to the next due timer and fires it. False when no timer
  // runs.
  bool FireNext();
  // The time, in milliseconds since the timers were made.
  int64_t Now() const { return now_; }
  // Timers that would fire, given time.
  int Running() const;

 private:
  struct Slot {
    std::function<void()> onTick;
    int interval = 0;
    bool enabled = true;
    int64_t due = 0;
    bool alive = true;
  };
  class ManualTimer;

  std::shared_ptr<Slot> NextDue(int64_t limit) const;
  void Fire(const std::shared_ptr<Slot>& slot);

  std::vector<std::shared_ptr<Slot>> slots_;
  int64_t now_ = 0;
};

}  // namespace ostrane
