#include "cli/interruption.h"

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <string_view>

#include "cli/output.h"

namespace tavlo::cli {

using namespace std::string_view_literals;

namespace {

std::atomic<int> writing{0};
std::atomic<int> told_to_end{0};              // the signal; 0 is none
std::atomic<std::int64_t> break_noted_at{0};  // of now(); 0 is not yet
std::atomic<bool> is_ending{false};
static_assert(std::atomic<std::int64_t>::is_always_lock_free, "a signal's handler uses them");

/// Milliseconds since some moment before the program's start.
std::int64_t now() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// A signal that comes twice may meet two threads: the first ends the program, the other waits for
/// it. With the signals blocked, the one that ends is not stopped by itself.
[[noreturn]] void end_by(int signal) {
  sigset_t all;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
  while (is_ending.exchange(true)) ::pause();
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

constexpr unsigned patience = 2;         // seconds
constexpr std::int64_t one_break = 300;  // milliseconds

/// A run that waits for its input does not hear that it is to end: it is ended by the alarm or by a
/// second signal. One that follows at once is the first again: `timeout` and some shells tell the
/// program and then its group.
void note_break(int signal) {
  std::int64_t noted = 0;
  if (break_noted_at.compare_exchange_strong(noted, now())) {
    ::alarm(patience);
  } else if (signal == SIGALRM) {
    handle(SIGINT);
  } else if (now() - noted > one_break) {
    handle(signal);
  }
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

bool break_wanted() { return break_noted_at != 0; }

Uninterrupted::Uninterrupted() { ++writing; }

Uninterrupted::~Uninterrupted() {
  if (--writing == 0 && told_to_end != 0) end_by(told_to_end);
}

}  // namespace tavlo::cli
