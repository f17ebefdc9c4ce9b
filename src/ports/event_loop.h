// EventLoop: lets the windows breathe while a long calculation runs.
#pragma once

namespace tavlo {

class EventLoop {
 public:
  virtual ~EventLoop() = default;

  /// Called at every row of a long loop, so it must cost a few nanoseconds:
  /// implementations look at the clock now and then and turn the event loop at
  /// most every 15 ms.
  virtual void yield() = 0;
};

}  // namespace tavlo
