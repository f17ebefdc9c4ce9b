#include "actions/planned_test.h"

#include "actions/announce.h"
#include "actions/busy_panel.h"
#include "actions/busy_pointer.h"
#include "actions/reports.h"
#include "actions/runs_log.h"
#include "actions/runs_records.h"
#include "actions/runs_words.h"
#include "actions/sample_words.h"
#include "numerics/count_text.h"

namespace tavlo {

namespace {

RunsReport runs_of(Session& session, const RunPlan& plan, WichmannHill& random) {
  const BusyPanel panel(session, 1);
  const BusyPointer pointer(session.ports.views);
  Progress& progress = session.ports.progress;
  return make_runs(plan, random, session.ports.entropy, [&](std::int32_t made) {
    progress.show(made / static_cast<double>(plan.runs),
                  grouped(made) + " of " + grouped(plan.runs) + " runs");
    return !progress.stop_wanted();
  });
}

/// Nothing where a sample has a time that data can't hold, which is told.
std::optional<RunsReport> runs_or_words(Session& session, const RunPlan& plan,
                                        WichmannHill& random) {
  try {
    return runs_of(session, plan, random);
  } catch (const RunTimeError& error) {
    if (error.number() != run_time::overflow) throw;
    AppendLog(session,
              std::string("Monte Carlo Runs: given up, as ") + words_of_time_out_of_range + "\n",
              false);
    return std::nullopt;
  }
}

}  // namespace

void make_planned_test(Session& session, const RunPlan& plan, WichmannHill& random) {
  announce(session);
  const std::optional<RunsReport> report = runs_or_words(session, plan, random);
  if (!report) return;
  log_runs(session, plan, *report);
  add_run_records(session, plan, *report);
}

}  // namespace tavlo
