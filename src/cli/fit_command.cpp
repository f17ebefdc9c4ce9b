#include <algorithm>

#include "cli/answered_session.h"
#include "cli/commands.h"
#include "cli/ordered_work.h"
#include "cli/output.h"
#include "cli/pictures.h"
#include "cli/set_work.h"
#include "cli/shown_sets.h"

namespace tavlo::cli {

namespace {

/// The files of one command line, a few of them at work at the same time.
class FitRun {
 public:
  explicit FitRun(const FitArguments& arguments) : arguments_(arguments) {}

  ExitCode run() {
    const std::size_t in_flight = std::min(in_flight_, arguments_.common.files.size());
    run_in_order(in_flight, {.read = [this](std::size_t place) { return read(works_[place]); },
                             .work = [this](std::size_t place) { answer(works_[place]); },
                             .write = [this](std::size_t place) { tell(works_[place]); }});
    write_log();
    return code_;
  }

 private:
  bool read(SetWork& work) {
    const std::vector<std::string>& files = arguments_.common.files;
    if (next_ == files.size() || !output_stands()) return false;
    work.read(arguments_.common, files[next_++]);
    return true;
  }

  void answer(SetWork& work) const {
    work.rank(arguments_.common.ranks, wants_session());
    tell_suspensions(work);
    work.answer(arguments_.questions);
  }

  /// Said before the long part, where it is one file that somebody waits for.
  void tell_suspensions(const SetWork& work) const {
    if (!work.fault && arguments_.common.files.size() == 1) tell_suspensions_left_out(work);
  }

  void tell_suspensions_left_out(const SetWork& work) const {
    for (const FitChoice& choice : arguments_.questions.choices) {
      const FitRequest request = request_of(choice, arguments_.questions);
      if (!leaves_suspensions_out(work.sample, request)) continue;
      return complain(work.file + ": warning: suspensions are left out of the likelihood of " +
                      command_name(*choice.model) + " (--censored takes them in)");
    }
  }

  void tell(SetWork& work) {
    if (printed_ && !arguments_.common.json) print("\n");
    printed_ = true;
    code_ =
        worse(code_, work.fault ? tell_fault(work, arguments_.common.json) : tell_answers(work));
    work = {};
  }

  ExitCode tell_answers(SetWork& work) {
    if (arguments_.common.files.size() > 1) tell_suspensions_left_out(work);
    const FitReport report = work.report(arguments_.questions);
    tell_messages(work.file, report);
    print(arguments_.common.json ? json_line(work.file, report) : fit_table(work.file, report));
    const ExitCode code = all_made(work.outcomes) ? ExitCode::done : ExitCode::fit_refused;
    return wants_session() ? worse(code, keep(work)) : code;
  }

  static std::string json_line(const std::string& file, const FitReport& report) {
    std::string line;
    JsonText json(line);
    json.open('{').key("file").string(file).key("set").string("Data1");
    add_fits(json, report);
    json.close('}');
    return line + "\n";
  }

  bool wants_session() const { return !arguments_.charts.empty() || !arguments_.log.empty(); }

  /// Draws the charts and writes the log's entries.
  ExitCode keep(SetWork& work) {
    const FitQuestions& questions = arguments_.questions;
    AnsweredSession answered(work.file, questions.strict, questions.ranks);
    Session& session = answered.session();
    session.project.log = std::move(log_);
    answered.add(work);
    log_ = std::move(session.project.log);
    if (arguments_.charts.empty()) return ExitCode::done;
    session.project.charts(1).SubPopulations = arguments_.sub_populations;
    show_on_chart(session, {work.file}, "", Paper::of_first_fit);
    const auto fault = write_pictures(session, arguments_.charts, arguments_.size);
    if (fault) complain(*fault);
    return fault ? ExitCode::file_fault : ExitCode::done;
  }

  void write_log() {
    const std::string& path = arguments_.log;
    if (path.empty()) return;
    const bool rich = extension(path) == ".rtf";
    const FileResult written = SafeFiles().write_whole(path, rich ? log_.rtf() : log_.plain());
    if (written) return;
    complain(path + ": " + written.message);
    code_ = worse(code_, ExitCode::file_fault);
  }

  static constexpr std::size_t in_flight_ = 3;

  const FitArguments& arguments_;
  SetWork works_[in_flight_];
  std::size_t next_ = 0;
  bool printed_ = false;
  RichText log_;
  ExitCode code_ = ExitCode::done;
};

}  // namespace

ExitCode run(const FitArguments& arguments) { return FitRun(arguments).run(); }

}  // namespace tavlo::cli
