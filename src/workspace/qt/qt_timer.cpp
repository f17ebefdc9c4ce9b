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
  constexpr int look_again = 100;  // milliseconds
  auto running = std::make_unique<OwnTimer>();
  QTimer& timer = running->timer();
  timer.setSingleShot(true);
  const auto is_due = [this, &timer, milliseconds, only_once, act = std::move(act)] {
    const bool waits = calling_ || commands_.running();
    if (waits || !only_once) timer.start(waits ? look_again : milliseconds);
    if (!waits) call(act);
  };
  QObject::connect(&timer, &QTimer::timeout, is_due);
  timer.start(milliseconds);
  return running;
}

// By a copy: its owner may end the timer, and the call with it, inside the call.
void QtTimer::call(const std::function<void()>& act) {
  const auto whole_call = act;
  calling_ = true;
  commands_.run_aside(whole_call);
  calling_ = false;
}

}  // namespace tavlo
