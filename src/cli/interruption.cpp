#include "cli/interruption.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <string_view>

namespace tavlo::cli {

namespace {

std::atomic<int> writing{0};
std::atomic<int> told_to_end{0};  // the signal; 0 is none
static_assert(std::atomic<int>::is_always_lock_free, "a signal's handler uses them");

[[noreturn]] void end_by(int signal) {
  constexpr std::string_view words = "tavlo-cli: interrupted\n";
  [[maybe_unused]] const ssize_t put = ::write(STDERR_FILENO, words.data(), words.size());
  constexpr int code_of_signal = 128;
  ::_exit(code_of_signal + signal);
}

void handle(int signal) {
  told_to_end = signal;
  if (writing == 0) end_by(signal);
}

}  // namespace

void prepare_for_interruption() {
  std::signal(SIGPIPE, SIG_IGN);
  for (const int signal : {SIGINT, SIGTERM})
    if (std::signal(signal, handle) == SIG_IGN) std::signal(signal, SIG_IGN);  // as nohup wants
}

Uninterrupted::Uninterrupted() { ++writing; }

Uninterrupted::~Uninterrupted() {
  if (--writing == 0 && told_to_end != 0) end_by(told_to_end);
}

}  // namespace tavlo::cli
