// Timer: calls back after a time, or again and again, but only between the commands of the
// person: a call never finds a project that is half-changed.
#pragma once

#include <functional>
#include <memory>

namespace tavlo {

/// A call that is due; it is off when this ends, even in the middle of the call.
class RunningTimer {
 public:
  virtual ~RunningTimer() = default;
};

class Timer {
 public:
  virtual ~Timer() = default;

  /// Calls `act` every so many milliseconds. A call may come late, and calls that were
  /// missed meanwhile come once.
  [[nodiscard]] virtual std::unique_ptr<RunningTimer> every(int milliseconds,
                                                            std::function<void()> act) = 0;

  /// Calls `act` once after so many milliseconds.
  [[nodiscard]] virtual std::unique_ptr<RunningTimer> once(int milliseconds,
                                                           std::function<void()> act) = 0;
};

}  // namespace tavlo
