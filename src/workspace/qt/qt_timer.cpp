#include "workspace/qt/qt_timer.h"

#include <QTimer>

namespace tavlo {

namespace {

/// Ends its QTimer later: the call at work may be the timer's own.
class OwnTimer : public RunningTimer {
 public:
  OwnTimer() : timer_(new QTimer) {}
  ~OwnTimer() override {
    timer_->stop();
    timer_->disconnect();
    timer_->deleteLater();
  }
  OwnTimer(const OwnTimer&) = delete;
  OwnTimer& operator=(const OwnTimer&) = delete;

  QTimer& timer() { return *timer_; }

 private:
  QTimer* timer_;
};

}  // namespace

std::unique_ptr<RunningTimer> QtTimer::every(int milliseconds, std::function<void()> act) {
  return start(milliseconds, false, std::move(act));
}

std::unique_ptr<RunningTimer> QtTimer::once(int milliseconds, std::function<void()> act) {
  return start(milliseconds, true, std::move(act));
}

std::unique_ptr<RunningTimer> QtTimer::start(int milliseconds, bool only_once,
                                             std::function<void()> act) {
  auto running = std::make_unique<OwnTimer>();
  QTimer& timer = running->timer();
  timer.setSingleShot(only_once);
  // A copy of the call: its owner may end this timer, and the call with it, inside it.
  QObject::connect(&timer, &QTimer::timeout, [this, act = std::move(act)] {
    const auto whole_call = act;
    commands_.run_aside(whole_call);
  });
  timer.start(milliseconds);
  return running;
}

}  // namespace tavlo
