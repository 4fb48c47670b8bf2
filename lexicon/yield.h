#pragma once
// The points where a long search lets the window breathe: the front end sets
// a function (which may throttle itself); without one, nothing happens.

namespace ostrane {

struct YieldHook {
  void (*fn)(void* context) = nullptr;
  void* context = nullptr;
  void operator()() const {
    if (fn) fn(context);
  }
};

}  // namespace ostrane
