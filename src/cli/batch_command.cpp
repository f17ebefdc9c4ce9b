#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <thread>
#include <vector>

#include "cli/batch_line.h"
#include "cli/commands.h"
#include "cli/fit_report.h"
#include "cli/line_reader.h"
#include "cli/ordered_work.h"
#include "cli/output.h"
#include "cli/progress_line.h"
#include "files/text_encoding.h"
#include "files/text_lines.h"
#include "fit/parallel.h"
#include "numerics/run_time_error.h"

namespace tavlo::cli {

namespace {

/// A handful of lines on its way, with the memory that the next one uses again.
class BatchWork {
 public:
  Handful handful;
  std::string answers;
  bool has_errors = false;

  void answer_all() {
    has_errors = false;
    answers.clear();
    for (const std::string_view line : handful.lines)
      if (line.data() == nullptr)
        refuse("null", "the line is longer than 64 MB");
      else if (const auto text = trimmed(without_byte_order_mark(without_end(line))); !text.empty())
        answer(text);
  }

  /// A long line must not hold its memory for the rest of the run.
  void forget() { *this = {}; }

 private:
  static std::string_view without_end(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
  }

  void answer(std::string_view text) {
    const std::size_t start = answers.size();
    try {
      if (const auto wrong = parser_->read(text, line_)) return refuse(line_.id, *wrong);
      fit_line();
      return;
    } catch (const RunTimeError&) {
      answers.resize(start);
      refuse(line_.id, "the rows can't be ranked");
    } catch (const std::bad_alloc&) {
      answers.resize(start);
      refuse(line_.id, "there is not enough memory for the line");
    }
  }

  void fit_line() {
    const Sample sample = make_sample(line_.rows, line_.questions.ranks);
    const std::vector<FitOutcome> outcomes = fit_all(sample, line_.questions);
    has_errors = has_errors || !all_made(outcomes);
    JsonText json(answers);
    json.open('{').key("id").raw(line_.id);
    add_fits(json, {sample, no_modes_, line_.questions, outcomes});
    json.close('}');
    answers += '\n';
  }

  void refuse(const std::string& id, const std::string& words) {
    has_errors = true;
    JsonText(answers).open('{').key("id").raw(id).key("error").string(words).close('}');
    answers += '\n';
  }

  std::unique_ptr<BatchLineParser> parser_ = std::make_unique<BatchLineParser>();
  BatchLine line_;
  std::vector<std::string> no_modes_;
};

class BatchRun {
 public:
  explicit BatchRun(std::size_t jobs) : works_(2 * jobs) {}

  ExitCode run() {
    run_in_order(works_.size(), {.read = [this](std::size_t place) { return read(works_[place]); },
                                 .work = [this](std::size_t place) { answer(works_[place]); },
                                 .write = [this](std::size_t place) { write(works_[place]); }});
    if (lines_.error() == 0) return code_;
    complain(std::string("standard input can't be read: ") + std::strerror(lines_.error()));
    return ExitCode::file_fault;
  }

 private:
  static constexpr std::size_t long_line = std::size_t{1} << 20;

  /// Long lines are answered here, one at a time: a parsed line takes several times its size.
  bool read(BatchWork& work) {
    if (broken_ || !lines_.next(work.handful)) return false;
    if (is_long(work)) work.answer_all();
    return true;
  }

  static bool is_long(const BatchWork& work) { return work.handful.text.size() > long_line; }

  static void answer(BatchWork& work) {
    if (!is_long(work)) work.answer_all();
  }

  /// Whoever sends a line and waits for its answer gets it now.
  void write(BatchWork& work) {
    count_progress("lines", 0, work.handful.lines.size());
    if (work.has_errors) code_ = ExitCode::fit_refused;
    if (!print(work.answers) || !flush_output()) broken_ = true;
    if (is_long(work)) work.forget();
  }

  LineReader lines_{STDIN_FILENO};
  std::vector<BatchWork> works_;
  std::atomic<bool> broken_ = false;  ///< nobody reads the answers
  ExitCode code_ = ExitCode::done;
};

}  // namespace

ExitCode run(const BatchArguments& arguments) {
  const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
  const auto jobs = arguments.jobs > 0 ? static_cast<unsigned>(arguments.jobs) : cores;
  set_threads(static_cast<int>(jobs));
  return BatchRun(jobs).run();
}

}  // namespace tavlo::cli
