#include <algorithm>

#include "actions/sample_words.h"
#include "analyses/sample_text.h"
#include "cli/commands.h"
#include "cli/output.h"
#include "cli/runs_report.h"
#include "files/system_ports.h"
#include "numerics/run_time_error.h"

namespace tavlo::cli {

namespace {

std::string text_of(const WichmannHill::States& states) {
  std::string text;
  for (const std::int32_t state : states) text += (text.empty() ? "" : ",") + std::to_string(state);
  return text;
}

WichmannHill seeded(const SampleArguments& arguments, Entropy& chance) {
  WichmannHill random;
  random.seed({-1, -1, -1, -1}, chance);
  for (int i = 0; arguments.seeds && i < WichmannHill::streams; ++i)
    random.enter(i, (*arguments.seeds)[static_cast<std::size_t>(i)]);
  const bool is_at_rest = random.is_at_rest();
  if (is_at_rest) random.seed({-1, -1, -1, -1}, chance);
  const SamplePlan& plan = arguments.plan.sample;
  const bool is_by_chance = !plan.is_precise || plan.suspensions.random > 0;
  if ((!arguments.seeds || is_at_rest) && is_by_chance)
    complain("--seeds " + text_of(random.states()));
  return random;
}

/// Where a minus may mark a suspension, other commands read them so.
void warn_of_negative(bool any) {
  if (any) warn("", "there are negative times; --negative-is-value reads them so");
}

ExitCode print_sample(const RunPlan& plan, WichmannHill& random, Entropy& chance) {
  const DrawnPoints points = draw_points(plan.sample, random, chance);
  if (plan.inspections.is_none()) {
    warn_of_negative(points.times.front() < 0);
    write_points(points, ">", "\n", print);
    return ExitCode::done;
  }
  std::vector<SampleRow> rows = points.rows();
  find_at(plan.inspections, rows);
  warn_of_negative(
      std::any_of(rows.begin(), rows.end(), [](const SampleRow& row) { return row.time < 0; }));
  write_rows(rows, ">", "\n", print);
  return ExitCode::done;
}

}  // namespace

ExitCode run(const SampleArguments& arguments) {
  RandomEntropy chance;
  WichmannHill random = seeded(arguments, chance);
  try {
    if (!arguments.is_planned) return print_sample(arguments.plan, random, chance);
    const RunsReport report =
        make_runs(arguments.plan, random, chance, [](std::int32_t) { return true; });
    arguments.json ? print_runs_json(arguments.plan, report)
                   : print_runs_table(arguments.plan, report);
    const bool all_fitted = std::all_of(report.fits.begin(), report.fits.end(),
                                        [](const RunsOfFit& fit) { return fit.fitted > 0; });
    return all_fitted ? ExitCode::done : ExitCode::fit_refused;
  } catch (const RunTimeError& error) {
    if (error.number() != run_time::overflow) throw;
    complain(words_of_time_out_of_range);
    return ExitCode::fit_refused;
  }
}

}  // namespace tavlo::cli
