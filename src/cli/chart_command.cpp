#include <algorithm>

#include "cli/answered_session.h"
#include "cli/commands.h"
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
  chart.SubPopulations = arguments.sub_populations;
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

/// The rows of every file, ranked; a fault is told of each that has one.
std::vector<SetWork> read_all(const ChartArguments& arguments) {
  std::vector<SetWork> works(arguments.common.files.size());
  for (std::size_t i = 0; i < works.size(); ++i) {
    works[i].read(arguments.common, arguments.common.files[i]);
    works[i].rank(arguments.common.ranks, true);
    if (works[i].fault) tell_fault(works[i], arguments.common.json);
  }
  return works;
}

bool is_sound(const SetWork& work) { return !work.fault; }

/// False when a fit was refused.
bool answer_all(std::vector<SetWork>& works, const std::vector<FitQuestions>& questions) {
  bool all = true;
  for (std::size_t i = 0; i < works.size(); ++i) {
    works[i].answer(questions[i]);
    tell_messages(works[i].file, works[i].report(questions[i]));
    all = all_made(works[i].outcomes) && all;
  }
  return all;
}

}  // namespace

ExitCode run(const ChartArguments& arguments) {
  std::vector<SetWork> works = read_all(arguments);
  if (!std::all_of(works.begin(), works.end(), is_sound)) return ExitCode::file_fault;
  const bool all_answered = answer_all(works, arguments.questions);
  AnsweredSession answered(arguments.out, arguments.questions.front().strict,
                           arguments.common.ranks);
  Session& session = answered.session();
  if (const auto fault = dress_chart(session, arguments)) return fault_of(fault);
  for (SetWork& work : works) answered.add(work);
  show_on_chart(session, arguments.common.files, arguments.title, paper_of(arguments));
  const ExitCode code = all_answered ? ExitCode::done : ExitCode::fit_refused;
  return worse(code, fault_of(write_pictures(session, {arguments.out}, arguments.size)));
}

}  // namespace tavlo::cli
