// QtTimer: calls back from the event loop. A call that falls due in a command, or in
// another call, waits for its end. An exception in a call becomes a box, as in a command.
#pragma once

#include "ports/timer.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class QtTimer : public Timer {
 public:
  explicit QtTimer(UserCommands& commands) : commands_(commands) {}

  std::unique_ptr<RunningTimer> every(int milliseconds, std::function<void()> act) override;
  std::unique_ptr<RunningTimer> once(int milliseconds, std::function<void()> act) override;

 private:
  std::unique_ptr<RunningTimer> start(int milliseconds, bool only_once, std::function<void()> act);
  void call(const std::function<void()>& act);

  UserCommands& commands_;
  bool calling_ = false;
};

}  // namespace tavlo
