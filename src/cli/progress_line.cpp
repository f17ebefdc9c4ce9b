#include "cli/progress_line.h"

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "numerics/count_text.h"

namespace tavlo::cli {

namespace {

using Clock = std::chrono::steady_clock;

struct Line {
  std::mutex mutex;
  std::condition_variable changed;
  std::thread drawer;
  bool is_ended = false;
  bool is_drawn = false;
  std::atomic<std::size_t> done = 0;
  std::atomic<std::size_t> total = 0;
  std::atomic<const char*> what = "";
};

Line& line() {
  static Line the_line;
  return the_line;
}

void put(std::string_view text) {
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
}

constexpr std::string_view clear_line = "\r\x1b[K";

void erase() {
  if (line().is_drawn) put(clear_line);
  line().is_drawn = false;
}

std::string words(Clock::duration age) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(age).count();
  std::string text = std::to_string(seconds) + " s";
  const std::size_t done = line().done, total = line().total;
  if (done == 0) return text;
  text += ", " + grouped(static_cast<std::int64_t>(done));
  if (total > 0) text += " of " + grouped(static_cast<std::int64_t>(total));
  return text + " " + line().what.load();
}

void draw_until_ended() {
  constexpr auto silence = std::chrono::seconds(2);
  constexpr auto pause = std::chrono::milliseconds(200);
  const auto begin = Clock::now();
  std::unique_lock lock(line().mutex);
  const auto is_ended = [] { return line().is_ended; };
  for (auto wait = Clock::duration(silence); !line().changed.wait_for(lock, wait, is_ended);) {
    put(std::string(clear_line) + words(Clock::now() - begin));
    line().is_drawn = true;
    wait = pause;
  }
  erase();
}

}  // namespace

ProgressLine::ProgressLine(bool is_wanted) {
  if (is_wanted && ::isatty(STDERR_FILENO) != 0) line().drawer = std::thread(draw_until_ended);
}

ProgressLine::~ProgressLine() {
  if (!line().drawer.joinable()) return;
  {
    const std::lock_guard lock(line().mutex);
    line().is_ended = true;
  }
  line().changed.notify_all();
  line().drawer.join();
}

void count_progress(const char* what, std::size_t total, std::size_t done) {
  line().what = what;
  line().total = total;
  line().done += done;
}

TerminalTurn::TerminalTurn() {
  line().mutex.lock();
  erase();
}

TerminalTurn::~TerminalTurn() { line().mutex.unlock(); }

}  // namespace tavlo::cli
