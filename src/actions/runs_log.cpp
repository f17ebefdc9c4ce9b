#include "actions/runs_log.h"

#include "actions/log_table.h"
#include "actions/reports.h"
#include "actions/runs_words.h"
#include "actions/words.h"
#include "numerics/count_text.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

std::string cell(std::optional<double> number, double factor) {
  constexpr int digits = 6;
  return number ? number_text(*number * factor, digits) : "";
}

std::vector<std::string> row_of(const std::string& name, std::optional<double> truth,
                                const std::optional<Spread>& spread, double factor = 1) {
  std::vector<std::string> row = {name, cell(truth, factor)};
  if (spread)
    for (const double number : {spread->mean, spread->sd, spread->p5, spread->p50, spread->p95})
      row.push_back(cell(number, factor));
  return row;
}

TableRows table_of(const RunsOfFit& fit) {
  TableRows rows = {{short_label(fit.request), "true", "mean", "sd", "5 %", "50 %", "95 %"}};
  for (const ParameterSpread& each : fit.parameters)
    rows.push_back(row_of(parameter_name(fit, each), each.truth, each.spread, shown_factor(each)));
  for (const BLifeSpread& each : fit.b_lives)
    rows.push_back(row_of("B" + number_text(each.percent), each.truth, each.spread));
  if (fit.r_squared) rows.push_back(row_of("r²", std::nullopt, fit.r_squared));
  return rows;
}

std::string head_line(const RunPlan& plan, const RunsReport& report) {
  const std::string all = grouped(plan.runs);
  if (report.runs == plan.runs) return all + " runs";
  if (report.runs == 0) return "stopped before the first of " + all + " runs";
  return "stopped after " + grouped(report.runs) + " of " + all + " runs";
}

/// The first run is the first data set.
std::string reason(const Session& session, const RunsOfFit& fit) {
  if (!fit.first_refusal) return {};
  return "; the first one: " + refusal_reason(*fit.first_refusal, session.project.data(1));
}

std::string counts(const Session& session, const RunsOfFit& fit) {
  const std::string refused = "refused " + grouped(fit.refused);
  if (fit.fitted == 0) return "no run was fitted, " + refused + reason(session, fit);
  if (fit.refused == 0) return "fitted " + grouped(fit.fitted);
  return "fitted " + grouped(fit.fitted) + ", " + refused + ", which the table leaves out";
}

}  // namespace

void log_runs(Session& session, const RunPlan& plan, const RunsReport& report) {
  AppendLog(session,
            "Monte Carlo Runs: " + head_line(plan, report) + ", " + plan_words(plan) +
                ", seeds as above\n",
            false);
  for (const RunsOfFit& fit : report.fits) {
    if (report.runs == 0) break;
    AppendLog(session, full_label(fit.request) + ": " + counts(session, fit) + "\n", false);
    if (fit.fitted == 0) continue;
    log_table(session, table_of(fit));
    for (const std::string& note : reading_words(fit)) AppendLog(session, note + "\n", false);
    if (fit.leaves_suspensions_out)
      AppendLog(session,
                "The suspensions are left out of this likelihood; with the choice Censored they "
                "take part.\n",
                false);
  }
}

}  // namespace tavlo
