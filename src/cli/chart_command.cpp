#include <algorithm>
#include <cmath>
#include <utility>

#include "cli/answered_session.h"
#include "cli/commands.h"
#include "cli/file_titles.h"
#include "cli/output.h"
#include "cli/pictures.h"
#include "cli/set_work.h"
#include "cli/shown_sets.h"
#include "files/profiles.h"
#include "project/chart_looks.h"
#include "project/chart_types.h"

namespace tavlo::cli {

namespace {

/// Gives chart 1 the looks that were asked for; what is wrong with them, or nothing.
std::optional<std::string> dress_chart(Session& session, const ChartArguments& arguments) {
  Chart& chart = session.project.charts(1);
  if (arguments.sub_populations) chart.SubPopulations = true;
  if (!arguments.type.empty()) apply_chart_type(chart, arguments.type);
  if (arguments.profile.empty()) return std::nullopt;
  return apply_profile_file(session.ports.file_system, arguments.profile, chart);
}

/// Axes that somebody has chosen are not changed by a fit.
Paper paper_of(const ChartArguments& arguments) {
  const bool is_plain = arguments.type.empty() || is_only_looks(arguments.type);
  return is_plain && arguments.profile.empty() ? Paper::of_first_fit : Paper::of_chart;
}

ExitCode fault_of(const std::optional<std::string>& words) {
  if (words) complain(*words);
  return words ? ExitCode::file_fault : ExitCode::done;
}

/// The rows of every data set, ranked; a fault is told of each that has one.
void rank_all(const ChartArguments& arguments, std::vector<SetWork>& works) {
  for (SetWork& work : works) {
    work.rank(true);
    if (work.fault) tell_fault(work, arguments.common.json);
  }
}

bool is_sound(const SetWork& work) { return !work.fault; }

/// False when a fit was refused.
bool answer_all(std::vector<SetWork>& works, const std::vector<FitQuestions>& questions) {
  bool all = true;
  for (SetWork& work : works) {
    const FitQuestions& asked = questions[work.file_number];
    work.answer(asked);
    tell_messages(work.subject(), work.report(asked));
    all = all_made(work.outcomes) && all;
  }
  return all;
}

ExitCode draw_sets(const ChartArguments& arguments, std::vector<SetWork> works) {
  rank_all(arguments, works);
  if (!std::all_of(works.begin(), works.end(), is_sound)) return ExitCode::file_fault;
  const bool all_answered = answer_all(works, arguments.questions);
  AnsweredSession answered(arguments.out, arguments.questions.front().strict);
  Session& session = answered.session();
  if (const auto fault = dress_chart(session, arguments)) return fault_of(fault);
  const std::vector<std::string> titles = file_titles(arguments.common.files);
  std::vector<std::string> names;
  for (SetWork& work : works) {
    answered.add(work);
    names.push_back(set_name(work, titles));
  }
  show_on_chart(session, arguments.common.files, names, arguments.title, paper_of(arguments));
  const ExitCode code = all_answered ? ExitCode::done : ExitCode::fit_refused;
  return worse(code, fault_of(write_pictures(session, {arguments.out}, arguments.size)));
}

/// The size of a picture in the proportions of a chart, where none was asked for.
PixelSize size_of(const Chart& chart, PixelSize size) {
  const ChartItem& box = chart.Boxes(chart_item::chart_box);
  if (size.is_given || box.Width <= 0 || box.Height <= 0) return size;
  const double height = static_cast<double>(size.width) * box.Height / box.Width;
  size.height = static_cast<int>(std::lround(std::clamp(height, 200.0, 5000.0)));
  return size;
}

/// The first chart of a project as it was saved.
ExitCode draw_saved_chart(const ChartArguments& arguments, Project project) {
  if (asks_for_other_ranks(arguments.common, project))
    warn(arguments.common.files.front(),
         "--ranks is not applied: the chart is drawn as it was saved (--set N "
         "draws a data set anew)");
  AnsweredSession answered(arguments.out, arguments.questions.front().strict);
  Session& session = answered.session();
  session.project = std::move(project);
  follow_records(session);
  if (const auto fault = dress_chart(session, arguments)) return fault_of(fault);
  Chart& chart = session.project.charts(1);
  if (!arguments.title.empty()) chart.Boxes(chart_item::main_title).Text2 = arguments.title;
  return fault_of(write_pictures(session, {arguments.out}, size_of(chart, arguments.size)));
}

/// One project, of which nothing but its chart is wanted.
bool may_be_saved_chart(const ChartArguments& arguments) {
  return arguments.common.files.size() == 1 && arguments.common.set == 0 &&
         arguments.questions.front().choices.empty();
}

}  // namespace

ExitCode run(const ChartArguments& arguments) {
  const CommonArguments& common = arguments.common;
  std::vector<SetWork> works;
  if (may_be_saved_chart(arguments)) {
    InputFile input;
    if (const auto fault = read_file(common, common.files.front(), input)) return fault_of(fault);
    if (input.kind == InputFile::Kind::project)
      return draw_saved_chart(arguments, std::move(input.project));
    works = works_of(common, 0, std::move(input));
  } else {
    SetQueue sets(common);
    for (SetWork work; sets.next(work);) works.push_back(std::move(work));
  }
  return draw_sets(arguments, std::move(works));
}

}  // namespace tavlo::cli
