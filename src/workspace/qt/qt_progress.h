// QtProgress: long work on the status bar. Escape, which the BusyFilter hears, asks the
// work at hand to stop.
#pragma once

#include <QElapsedTimer>

#include "ports/event_loop.h"
#include "ports/progress.h"
#include "workspace/qt/view_signals.h"

namespace tavlo {

class QtProgress : public Progress {
 public:
  QtProgress(EventLoop& event_loop, ViewSignals& views) : event_loop_(event_loop), views_(views) {}

  void want_stop() { stop_wanted_ = true; }

  /// The next work begins; the last wish to stop was for the one before.
  void start_anew();

  /// Says the share ten times a second at most, and turns the event loop.
  void show(double share, const std::string& words) override;
  bool stop_wanted() override { return stop_wanted_; }

 private:
  EventLoop& event_loop_;
  ViewSignals& views_;
  QElapsedTimer since_shown_;
  bool stop_wanted_ = false;
};

}  // namespace tavlo
