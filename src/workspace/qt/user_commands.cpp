#include "workspace/qt/user_commands.h"

#include <QTimer>
#include <exception>
#include <utility>

namespace tavlo {

void UserCommands::run(const std::function<void()>& action) {
  ++depth_;
  attempt(action);
  if (depth_ == 1) {
    attempt([this] { emit finished(); });
    attempt([this] { prompts_.end_command(); });
  }
  --depth_;
  if (!later_.empty()) QTimer::singleShot(0, this, [this] { run_next(); });
}

void UserCommands::run_later(std::function<void()> action) {
  later_.push_back(std::move(action));
  QTimer::singleShot(0, this, [this] { run_next(); });
}

// The end of a command that is still running asks again.
void UserCommands::run_next() {
  if (later_.empty() || running()) return;
  const std::function<void()> action = std::move(later_.front());
  later_.pop_front();
  run(action);
}

void UserCommands::attempt(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& error) {
    prompts_.show(
        {"Tavlo",
         std::string("This could not be done: ") + error.what() + ".\nThe steps before it stand.",
         BoxIcon::stop, BoxButtons::ok});
  }
}

}  // namespace tavlo
