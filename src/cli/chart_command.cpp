#include "cli/answered_session.h"
#include "cli/commands.h"
#include "cli/output.h"
#include "cli/pictures.h"
#include "cli/set_work.h"
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
  const bool is_plain = arguments.type.empty() || is_only_colours(arguments.type);
  return is_plain && arguments.profile.empty() ? Paper::of_first_fit : Paper::of_chart;
}

ExitCode fault_of(const std::optional<std::string>& words) {
  if (words) complain(*words);
  return words ? ExitCode::file_fault : ExitCode::done;
}

}  // namespace

ExitCode run(const ChartArguments& arguments) {
  SetWork work;
  work.read(arguments.common, arguments.common.files.front());
  work.rank(arguments.common.ranks, true);
  work.answer(arguments.questions);
  if (work.fault) return tell_fault(work, arguments.common.json);
  tell_messages(work.file, work.report(arguments.questions));
  AnsweredSession answered(work.file, std::move(work.data), arguments.questions, work.outcomes, {});
  Session& session = answered.session();
  if (const auto fault = dress_chart(session, arguments)) return fault_of(fault);
  show_on_chart(session, title_of(work.file), paper_of(arguments));
  const ExitCode code = all_made(work.outcomes) ? ExitCode::done : ExitCode::fit_refused;
  return worse(code, fault_of(write_pictures(session, {arguments.out}, arguments.size)));
}

}  // namespace tavlo::cli
