#include <algorithm>

#include "cli/answered_session.h"
#include "cli/argument_values.h"
#include "cli/commands.h"
#include "cli/file_titles.h"
#include "cli/fit_groups.h"
#include "cli/made_project.h"
#include "cli/ordered_work.h"
#include "cli/output.h"
#include "cli/pictures.h"
#include "cli/progress_line.h"
#include "cli/set_work.h"
#include "cli/shown_sets.h"

namespace tavlo::cli {

namespace {

/// The data sets of one command line, a few of them at work at the same time.
class FitRun {
 public:
  explicit FitRun(const FitArguments& arguments) : arguments_(arguments) {}

  ExitCode run() {
    const std::size_t in_flight = std::min(in_flight_, arguments_.common.files.size());
    run_in_order(in_flight, {.read = [this](std::size_t place) { return read(works_[place]); },
                             .work = [this](std::size_t place) { answer(works_[place]); },
                             .write = [this](std::size_t place) { tell(works_[place]); }});
    is_whole_ ? write_files() : tell_unwritten();
    return code_;
  }

 private:
  /// A reader of the results who goes away ends the run only where nobody else waits for them.
  bool read(SetWork& work) { return (wants_session() || output_stands()) && sets_.next(work); }

  void answer(SetWork& work) const {
    work.rank(wants_session());
    tell_suspensions(work);
    work.answer(arguments_.questions);
  }

  /// Said before the long part, where it is one file that somebody waits for.
  void tell_suspensions(const SetWork& work) const {
    if (!work.fault && arguments_.common.files.size() == 1) tell_suspensions_left_out(work);
  }

  void tell_suspensions_left_out(const SetWork& work) const {
    cli::tell_suspensions_left_out(work.subject(), work.sample, arguments_.questions);
  }

  void tell(SetWork& work) {
    if (printed_ && !arguments_.common.json) print("\n");
    printed_ = true;
    if (work.fault) is_whole_ = false;
    code_ =
        worse(code_, work.fault ? tell_fault(work, arguments_.common.json) : tell_answers(work));
    work = {};
    count_progress("data sets");
  }

  ExitCode tell_answers(SetWork& work) {
    if (arguments_.common.files.size() > 1) tell_suspensions_left_out(work);
    const FitReport report = work.report(arguments_.questions);
    tell_messages(work.subject(), report);
    print(arguments_.common.json ? json_line(work, report) : fit_table(work.subject(), report));
    if (wants_session()) keep(work);
    return all_made(work.outcomes) ? ExitCode::done : ExitCode::fit_refused;
  }

  static std::string json_line(const SetWork& work, const FitReport& report) {
    std::string line;
    JsonText json(line);
    json.open('{').key("file").string(work.file).key("set").string(work.title());
    add_fits(json, report);
    json.close('}');
    return line + "\n";
  }

  bool wants_session() const {
    return !arguments_.charts.empty() || !arguments_.log.empty() || !arguments_.project.empty();
  }

  /// Keeps what the outputs are made of.
  void keep(SetWork& work) {
    if (!arguments_.log.empty()) add_to_log(work);
    if (!arguments_.charts.empty()) add_to_chart(work);
    if (!arguments_.project.empty()) add_to_project(work);
  }

  void add_to_log(SetWork& work) {
    AnsweredSession answered(work.subject(), arguments_.questions.strict);
    Session& session = answered.session();
    session.project.log = std::move(log_);
    answered.add(work);
    log_ = std::move(session.project.log);
  }

  void add_to_chart(SetWork& work) {
    if (!charted_) charted_.emplace(work.file, arguments_.questions.strict);
    charted_->add(work);
    charted_names_.push_back(set_name(work, titles_));
  }

  void add_to_project(SetWork& work) {
    if (!made_) {
      made_.emplace(arguments_.project, arguments_.questions.strict);
      const bool is_whole =
          arguments_.common.files.size() == 1 && (arguments_.common.set == 0 || work.sets() == 1);
      if (is_whole && work.kind == InputFile::Kind::project) made_->go_on_with(*work.origin);
    }
    if (!made_->goes_on()) tell_left_behind(work);
    made_->add(work, set_name(work, titles_));
    made_names_.push_back(set_name(work, titles_));
  }

  void tell_left_behind(const SetWork& work) {
    if (work.kind != InputFile::Kind::project || work.file_number + 1 == left_behind_) return;
    left_behind_ = work.file_number + 1;
    warn(work.file, "its charts and its log are not taken into " + arguments_.project);
  }

  void write_files() {
    write_log();
    write_charts();
    write_project();
  }

  /// A part of what was asked for must not take the place of a file that holds more.
  void tell_unwritten() const {
    std::vector<std::string> files = arguments_.charts;
    for (const std::string& file : {arguments_.log, arguments_.project})
      if (!file.empty()) files.push_back(file);
    for (const std::string& file : files)
      complain(file + ": not written, as some of the data can't be had");
  }

  void write_log() {
    const std::string& path = arguments_.log;
    if (path.empty()) return;
    const bool rich = extension(path) == ".rtf";
    const FileResult written = SafeFiles().write_whole(path, rich ? log_.rtf() : log_.plain());
    if (!written) fail(path + ": " + written.message);
  }

  void write_charts() {
    if (!charted_) return;
    Session& session = charted_->session();
    session.project.charts(1).SubPopulations = arguments_.sub_populations;
    show_on_chart(session, arguments_.common.files, charted_names_, "", Paper::of_first_fit);
    if (const auto fault = write_pictures(session, arguments_.charts, arguments_.size))
      fail(*fault);
  }

  void write_project() {
    if (!made_) return;
    if (!made_->goes_on())
      show_on_chart(made_->session(), arguments_.common.files, made_names_, "",
                    Paper::of_first_fit);
    if (const auto fault = made_->write()) fail(*fault);
  }

  void fail(const std::string& fault) {
    complain(fault);
    code_ = worse(code_, ExitCode::file_fault);
  }

  static constexpr std::size_t in_flight_ = 3;

  const FitArguments& arguments_;
  const std::vector<std::string> titles_ = file_titles(arguments_.common.files);
  SetQueue sets_{arguments_.common};
  SetWork works_[in_flight_];
  bool printed_ = false;
  bool is_whole_ = true;  ///< all data sets could be had
  RichText log_;
  std::optional<AnsweredSession> charted_;
  std::vector<std::string> charted_names_;
  std::optional<MadeProject> made_;
  std::vector<std::string> made_names_;
  std::size_t left_behind_ = 0;  ///< the number of the last file that was told of, from 1
  ExitCode code_ = ExitCode::done;
};

}  // namespace

ExitCode run(const FitArguments& arguments) {
  return arguments.by.empty() ? FitRun(arguments).run() : fit_groups(arguments);
}

}  // namespace tavlo::cli
