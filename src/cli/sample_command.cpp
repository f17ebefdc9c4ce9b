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
  const SamplePlan& plan = arguments.plan.sample;
  const bool is_by_chance = !plan.is_precise || plan.suspensions.random > 0;
  if (!arguments.seeds && is_by_chance) complain("--seeds " + text_of(random.states()));
  return random;
}

ExitCode print_sample(const RunPlan& plan, WichmannHill& random, Entropy& chance) {
  DrawnPoints points = draw_points(plan.sample, random, chance);
  if (points.unreached > 0)
    complain("warning: " + std::to_string(points.unreached) +
             " points are beyond the reach of the life and stand at the time before them");
  if (plan.inspections.is_none()) {
    write_points(points, ">", "\n", print);
    return ExitCode::done;
  }
  std::vector<SampleRow> rows = points.rows();
  find_at(plan.inspections, rows);
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
        make_runs(arguments.plan, random, chance, [](std::int32_t) { return output_stands(); });
    arguments.json ? print_runs_json(arguments.plan, report)
                   : print_runs_table(arguments.plan, report);
    return ExitCode::done;
  } catch (const RunTimeError&) {
    complain("a time of this sample is beyond 3.4e38, the largest that data hold");
    return ExitCode::fit_refused;
  }
}

}  // namespace tavlo::cli
