#include <utility>

#include "actions/report.h"
#include "chart/compose/auto_scale.h"
#include "chart/compose/chart_shape.h"
#include "cli/commands.h"
#include "cli/file_titles.h"
#include "cli/made_project.h"
#include "cli/output.h"
#include "cli/pictures.h"
#include "cli/set_work.h"
#include "cli/shown_sets.h"
#include "cli/shown_text.h"
#include "project/chart_looks.h"
#include "project/chart_types.h"

namespace tavlo::cli {

namespace {

/// The project of one file with the fits that are asked for, on its way into a report.
class ReportRun {
 public:
  explicit ReportRun(const ReportArguments& arguments)
      : arguments_(arguments), made_(arguments.out, arguments.questions.strict) {
    if (arguments.date) made_.set_date(*arguments.date);
  }

  ExitCode run() {
    const std::string& file = arguments_.common.files.front();
    InputFile input;
    if (const auto fault = read_file(arguments_.common, file, input)) return fail(*fault);
    const bool is_project = input.kind == InputFile::Kind::project;
    if (!is_project || arguments_.asks_for_fits) asked_ = arguments_.questions;
    std::vector<SetWork> works = works_of(arguments_.common, 0, std::move(input));
    if (is_project && arguments_.common.set == 0 && !works.empty())
      made_.go_on_with(*works.front().origin);
    else
      apply_chart_type(made_.session().project.charts(1), report_chart_type);
    for (SetWork& work : works)
      if (!take(work)) return code_;
    draw_made_chart();
    return write(file);
  }

 private:
  /// False where its rows can't be had.
  bool take(SetWork& work) {
    work.rank(true);
    if (work.fault) return fail(*work.fault) == ExitCode::done;
    work.answer(asked_);
    tell_messages(work.subject(), work.report(asked_));
    if (!all_made(work.outcomes)) code_ = worse(code_, ExitCode::fit_refused);
    names_.push_back(set_name(work, titles_));
    const std::size_t refusals = refusals_.size();
    keep_refusals(work);
    made_.add(work, names_.back());
    const int set = made_.goes_on() ? work.number : static_cast<int>(names_.size());
    for (std::size_t i = refusals; i < refusals_.size(); ++i) refusals_[i].first = set;
    return true;
  }

  void keep_refusals(const SetWork& work) {
    for (const FitOutcome& outcome : work.outcomes) {
      const Refusal* const refusal = outcome.answer.refusal();
      if (!refusal) continue;
      const WordContext context{*outcome.choice.model, work.data.mode_names,
                                work.sample.total_failures};
      refusals_.emplace_back(
          0, fit_name(outcome) + " has no fit: " + words_of(*refusal, context).text + ".");
    }
  }

  void draw_made_chart() {
    Session& session = made_.session();
    if (!made_.goes_on())
      show_on_chart(session, arguments_.common.files, names_, arguments_.title,
                    Paper::of_first_fit);
    for (int i = 1; i <= session.project.charts.bound(); ++i)
      SetAutoScale(session, session.project.charts(i));
    if (!made_.goes_on()) give_shape(session.project.charts(1), 1000, 600);
  }

  ExitCode write(const std::string& file) {
    Session& session = made_.session();
    const bool is_piped = file == "-";
    const ReportRequest request{arguments_.title.empty() ? titles_.front() : arguments_.title,
                                is_piped ? "" : shown_text(file.substr(file.rfind('/') + 1)),
                                arguments_.questions.b_life, arguments_.times, refusals_};
    const Report report = make_report(session, request);
    const auto fault = write_report(session, report, arguments_.out,
                                    arguments_.paper.value_or(usual_paper(session.ports.host)));
    return fault ? fail(*fault) : code_;
  }

  ExitCode fail(const std::string& fault) {
    complain(fault);
    return code_ = worse(code_, ExitCode::file_fault);
  }

  const ReportArguments& arguments_;
  const std::vector<std::string> titles_ = file_titles(arguments_.common.files);
  MadeProject made_;
  FitQuestions asked_;
  std::vector<std::string> names_;
  std::vector<std::pair<int, std::string>> refusals_;
  ExitCode code_ = ExitCode::done;
};

}  // namespace

ExitCode run(const ReportArguments& arguments) { return ReportRun(arguments).run(); }

}  // namespace tavlo::cli
