#include "cli/interruption.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <string_view>

#include "cli/output.h"

namespace tavlo::cli {

using namespace std::string_view_literals;

namespace {

std::atomic<int> writing{0};
std::atomic<int> told_to_end{0};  // the signal; 0 is none
std::atomic<bool> break_noted{false};
static_assert(std::atomic<int>::is_always_lock_free, "a signal's handler uses them");

[[noreturn]] void end_by(int signal) {
  for (const std::string_view words : {std::string_view(program_name()), ": interrupted\n"sv}) {
    [[maybe_unused]] const ssize_t put = ::write(STDERR_FILENO, words.data(), words.size());
  }
  constexpr int code_of_signal = 128;
  ::_exit(code_of_signal + signal);
}

void handle(int signal) {
  told_to_end = signal;
  if (writing == 0) end_by(signal);
}

constexpr unsigned patience = 2;  // seconds

/// A run that waits for its input does not hear that it is to end.
void note_break(int signal) {
  if (break_noted.exchange(true)) return handle(signal == SIGALRM ? SIGINT : signal);
  ::alarm(patience);
}

void catch_endings(void (*handler)(int)) {
  std::signal(SIGPIPE, SIG_IGN);
  for (const int signal : {SIGINT, SIGTERM})
    if (std::signal(signal, handler) == SIG_IGN) std::signal(signal, SIG_IGN);  // as nohup wants
}

}  // namespace

void prepare_for_interruption() { catch_endings(handle); }

void prepare_for_break() {
  catch_endings(note_break);
  std::signal(SIGALRM, note_break);
}

bool break_wanted() { return break_noted; }

Uninterrupted::Uninterrupted() { ++writing; }

Uninterrupted::~Uninterrupted() {
  if (--writing == 0 && told_to_end != 0) end_by(told_to_end);
}

}  // namespace tavlo::cli
