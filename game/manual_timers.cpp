#include "game/manual_timers.h"

#include <algorithm>
#include <limits>

namespace ostrane {

class ManualTimers::ManualTimer : public Timer {
 public:
  ManualTimer(std::shared_ptr<Slot> slot, ManualTimers& owner) : slot_(std::move(slot)), owner_(owner) {}
  ~ManualTimer() override { slot_->alive = false; }
  void SetInterval(int milliseconds) override {
    slot_->interval = milliseconds;
    slot_->due = owner_.now_ + milliseconds;
  }
  int Interval() const override { return slot_->interval; }
  void SetEnabled(bool enabled) override {
    if (enabled && !slot_->enabled) slot_->due = owner_.now_ + slot_->interval;
    slot_->enabled = enabled;
  }
  bool Enabled() const override { return slot_->enabled; }

 private:
  std::shared_ptr<Slot> slot_;
  ManualTimers& owner_;
};

std::unique_ptr<Timer> ManualTimers::Create(std::function<void()> onTick) {
  // Forget the timers that are gone.
  slots_.erase(std::remove_if(slots_.begin(), slots_.end(), [](const auto& slot) { return !slot->alive; }),
               slots_.end());
  auto slot = std::make_shared<Slot>();
  slot->onTick = std::move(onTick);
  slots_.push_back(slot);
  return std::make_unique<ManualTimer>(slot, *this);
}

std::shared_ptr<ManualTimers::Slot> ManualTimers::NextDue(int64_t limit) const {
  std::shared_ptr<Slot> next;
  for (const auto& slot : slots_) {
    if (!slot->alive || !slot->enabled || slot->interval <= 0 || slot->due > limit) continue;
    if (!next || slot->due < next->due) next = slot;
  }
  return next;
}

void ManualTimers::Fire(const std::shared_ptr<Slot>& slot) {
  now_ = std::max(now_, slot->due);
  slot->due = now_ + slot->interval;
  const std::function<void()> tick = slot->onTick;  // the handler may end the timer
  tick();
}

void ManualTimers::Advance(int64_t milliseconds) {
  const int64_t target = now_ + milliseconds;
  while (const auto next = NextDue(target)) Fire(next);
  now_ = std::max(now_, target);
}

bool ManualTimers::FireNext() {
  const auto next = NextDue(std::numeric_limits<int64_t>::max());
  if (!next) return false;
  Fire(next);
  return true;
}

int ManualTimers::Running() const {
  int count = 0;
  for (const auto& slot : slots_) count += slot->alive && slot->enabled && slot->interval > 0;
  return count;
}

}  // namespace ostrane
