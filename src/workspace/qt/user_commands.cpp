#include "workspace/qt/user_commands.h"

#include <exception>

namespace tavlo {

void UserCommands::run(const std::function<void()>& action) {
  ++depth_;
  attempt(action);
  if (depth_ == 1) {
    attempt([this] { emit finished(); });
    attempt([this] { prompts_.end_command(); });
  }
  --depth_;
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
