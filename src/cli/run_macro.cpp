#include "cli/run_macro.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>

#include "analyses/macro_jobs.h"
#include "analyses/macro_row.h"
#include "cli/interruption.h"
#include "cli/line_reader.h"
#include "cli/macro_results.h"
#include "cli/output.h"
#include "cli/set_work.h"
#include "cli/words.h"
#include "files/text_encoding.h"
#include "fit/door/fit.h"

namespace tavlo::cli {

namespace {

namespace fs = std::filesystem;

constexpr const char* run_place = "in Run Macro routine: ";
constexpr const char* row_place = "in WriteData routine: ";

/// The lines of a file, however many there are.
class LinesOfFile {
 public:
  explicit LinesOfFile(const std::string& path)
      : file_(::open(path.c_str(), O_RDONLY | O_CLOEXEC)), error_(file_ < 0 ? errno : 0) {}
  ~LinesOfFile() {
    if (file_ >= 0) ::close(file_);
  }
  LinesOfFile(const LinesOfFile&) = delete;
  LinesOfFile& operator=(const LinesOfFile&) = delete;

  /// 0, or the error of the system that has ended the reading.
  int error() const { return error_; }

  bool next(std::string& line) {
    if (error_ != 0) return false;
    while (next_ == handful_.lines.size()) {
      next_ = 0;
      if (!reader_.next(handful_)) {
        handful_.lines.clear();
        error_ = reader_.error();
        return false;
      }
    }
    line = handful_.lines[next_++];  // one that is too long for any name comes empty
    if (is_first_) line = without_byte_order_mark(line);
    is_first_ = false;
    if (line.ends_with('\r')) line.pop_back();
    return true;
  }

 private:
  int file_;
  int error_;
  LineReader reader_{file_};
  Handful handful_;
  std::size_t next_ = 0;
  bool is_first_ = true;
};

/// Doubts are answered with OK and faults of a step end the fit, both told.
class MacroCompanion : public Companion {
 public:
  bool stop_wanted() override { return break_wanted(); }
  bool fault(const char* where, const RunTimeError& error) override {
    faults.push_back(std::string(where) + ": " + error.description());
    return false;
  }
  bool doubt(Doubt code) override {
    doubts.push_back(code);
    return true;
  }

  std::vector<std::string> faults;
  std::vector<Doubt> doubts;
};

class MacroRun {
 public:
  MacroRun(const std::string& file, const MacroHouse& house)
      : file_(file), house_(house), results_("Tavlo Results for " + file) {}

  int run();

 private:
  bool run_job(const MacroJob& job);
  std::optional<std::string> find_data(const std::string& name) const;
  std::optional<SetWork> read_data(const MacroJob& job, const std::string& path);
  void fit_data(const MacroJob& job, FitRequest request, const SetWork& work);
  void tell_answer(const SetWork& work, const FitRequest& request, const FitAnswer& answer,
                   const MacroCompanion& companion);
  void tell(const std::string& what) const {
    complain(file_ + ":" + std::to_string(line_) + ": " + what);
  }
  void tell_warning(const std::string& what) const {
    warn(file_ + ":" + std::to_string(line_), what);
  }
  void fail(ExitCode code, const std::string& what) {
    code_ = worse(code_, code);
    tell(what);
  }

  std::string file_;
  const MacroHouse& house_;
  MacroResults results_;
  ExitCode code_ = ExitCode::done;
  long line_ = 0;
};

std::optional<std::string> MacroRun::find_data(const std::string& name) const {
  std::error_code error;
  if (fs::exists(name, error)) return name;
  const std::string bare = name.substr(name.find_last_of("\\/") + 1);
  for (const std::string& folder : house_.folders)
    if (const fs::path path = fs::path(folder) / bare;
        !folder.empty() && !bare.empty() && fs::exists(path, error))
      return path.string();
  return std::nullopt;
}

/// The first data set of a file of any kind that the program reads.
std::optional<SetWork> MacroRun::read_data(const MacroJob& job, const std::string& path) {
  std::error_code error;
  if (fs::equivalent(path, job.result_file, error)) {
    fail(ExitCode::file_fault, run_place + path + " is the data file and the result file");
    return std::nullopt;
  }
  CommonArguments common;
  common.files = {path};
  common.set = 1;
  common.reading = house_.reading;
  InputFile input;
  if (const auto fault = read_file(common, path, input)) {
    fail(ExitCode::file_fault, run_place + *fault);
    return std::nullopt;
  }
  if (input.sets() > 1)
    tell_warning(path + " holds " + std::to_string(input.sets()) +
                 " data sets; the first is taken");
  SetWork work = works_of(common, 0, std::move(input)).front();
  if (work.kind != InputFile::Kind::project) work.ranks = house_.ranks;
  work.rank(true);
  if (work.fault) {
    fail(ExitCode::fit_refused, run_place + *work.fault);
    return std::nullopt;
  }
  return work;
}

void MacroRun::tell_answer(const SetWork& work, const FitRequest& request, const FitAnswer& answer,
                           const MacroCompanion& companion) {
  const Model& model = *find_model(request.model);
  const WordContext context{model, work.data.mode_names, work.sample.total_failures};
  for (const std::string& fault : companion.faults) tell(fault);
  for (const Doubt doubt : companion.doubts) tell_warning(words_of(doubt, context).text);
  for (const Note& note : answer.notes) tell_warning(words_of(note, context).text);
  if (const Refusal* const refusal = answer.refusal())
    fail(ExitCode::fit_refused, work.file + ": " + command_name(model) + ": no fit: " +
                                    words_of(*refusal, context).text + "; no row is written");
}

void MacroRun::fit_data(const MacroJob& job, FitRequest request, const SetWork& work) {
  request.ranks = work.ranks;
  MacroCompanion companion;
  FitAnswer answer;
  try {
    answer = fit(work.sample, request, companion);
  } catch (const RunTimeError& error) {
    answer = {Refusal{RefusalCode::arithmetic, {static_cast<double>(error.number())}}, {}};
  }
  if (break_wanted()) return;
  tell_answer(work, request, answer, companion);
  if (!answer.fit()) return;
  const std::string row =
      macro_row(job, answer.fit()->quality, macro_parameters(answer.fit()->life));
  if (const auto fault = results_.append(job.result_file, row))
    fail(ExitCode::file_fault, row_place + *fault);
}

/// False where the run ends with this job.
bool MacroRun::run_job(const MacroJob& job) {
  line_ = job.line;
  const auto request = request_of(job);
  if (!request) {
    fail(ExitCode::fit_refused,
         run_place +
             (job.error != 0 ? std::string(run_time_description(job.error))
                             : "a job needs a model of 2, 3, 4, 5 or 7 parameters, 1 or 2, and a "
                               "method of 1, 2 or 3") +
             "; no row is written");
    return true;
  }
  const auto path = find_data(job.data_file);
  if (!path) {
    fail(ExitCode::file_fault, "File not found:  " + job.data_file + " Macro will stop execution.");
    return false;
  }
  if (const auto work = read_data(job, *path)) fit_data(job, *request, *work);
  return true;
}

int MacroRun::run() {
  LinesOfFile lines(file_);
  MacroReader jobs([&lines](std::string& line) { return lines.next(line); });
  for (auto job = jobs.next(); job && !break_wanted() && run_job(*job);) job = jobs.next();
  if (lines.error() != 0) {
    code_ = ExitCode::file_fault;
    complain(file_ + ": " + std::strerror(lines.error()));
  }
  if (const auto fault = results_.finish()) fail(ExitCode::file_fault, run_place + *fault);
  if (!break_wanted()) return static_cast<int>(code_);
  complain(file_ + ": the run was broken off");
  return broken_off;
}

}  // namespace

int RunMacro(const std::string& macro_file, const MacroHouse& house) {
  return MacroRun(macro_file, house).run();
}

}  // namespace tavlo::cli
