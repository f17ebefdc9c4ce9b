#include "cli/fit_report.h"
#include "cli/text_table.h"
#include "cli/totals_line.h"
#include "fit/shown_parameters.h"
#include "numerics/number_text.h"

namespace tavlo::cli {

namespace {

std::string number(double value) { return number_text(value, 6); }

std::vector<std::string> headings(const FitReport& report, Family family) {
  const ParameterNames& names = parameter_names(family);
  std::vector<std::string> cells = {"Fit", names.first_heading, names.second_heading, "r squared",
                                    "ln L"};
  for (const double p : report.arguments.b_life) cells.push_back("B" + number(100.0 * p));
  for (const double x : report.arguments.at) cells.push_back("F(" + number(x) + ")");
  return cells;
}

std::vector<std::string> first_row(const FitReport& report, const FitOutcome& outcome,
                                   const FitResult& fit) {
  const ShownParameters shown = grid_parameters(fit.ModelCode, fit.Rows(1));
  const bool likelihood = fit.Method == method_code::mle;
  std::vector<std::string> cells = {fit_name(outcome.choice), number(shown.first),
                                    number(shown.second), likelihood ? "" : number(fit.Quality),
                                    likelihood ? number(fit.Quality) : ""};
  for (const LifePoint& point : b_lives(report.session, report.file, fit, report.arguments.b_life))
    cells.push_back(point.known ? number(point.x) : "?");
  for (const LifePoint& point : fractions_at(report.session, report.file, fit, report.arguments.at))
    cells.push_back(point.known ? number(point.p) : "?");
  return cells;
}

/// Populations behind the first: only their parameters.
std::vector<std::string> further_row(const FitResult& fit, int row, std::size_t cells) {
  const ShownParameters shown = grid_parameters(fit.ModelCode, fit.Rows(row));
  std::vector<std::string> line(cells);
  line[1] = number(shown.first);
  line[2] = number(shown.second);
  return line;
}

void add_fit(TextTable& table, const FitReport& report, const FitOutcome& outcome) {
  const FitResult& fit = report.session.gFit(1).Fits(outcome.slot);
  const std::vector<std::string> first = first_row(report, outcome, fit);
  table.add(first);
  for (int i = 2; i <= fit.nRows; ++i) table.add(further_row(fit, i, first.size()));
}

std::string family_table(const FitReport& report, Family family) {
  TextTable table(headings(report, family));
  bool any = false;
  for (const FitOutcome& outcome : report.outcomes) {
    if (outcome.slot == 0 || outcome.choice.model->family != family) continue;
    add_fit(table, report, outcome);
    any = true;
  }
  return any ? "\n" + table.text(1) : "";
}

std::string refusals(const FitReport& report) {
  std::string lines;
  for (const FitOutcome& outcome : report.outcomes)
    if (outcome.slot == 0) lines += "  " + fit_name(outcome.choice) + "  no fit\n";
  return lines.empty() ? lines : "\n" + lines;
}

}  // namespace

const ParameterNames& parameter_names(Family family) {
  static constexpr ParameterNames weibull = {"eta", "beta", "eta", "beta"};
  static constexpr ParameterNames normal = {"mu", "sigma", "mu", "sigma"};
  static constexpr ParameterNames lognormal = {"median", "sigma_factor", "median", "sigma factor"};
  static constexpr ParameterNames gumbel = {"xi", "del", "Xi", "Del"};
  switch (family) {
    case Family::normal: return normal;
    case Family::lognormal: return lognormal;
    case Family::gumbel: return gumbel;
    case Family::weibull:
    case Family::none: break;
  }
  return weibull;
}

std::string fit_table(const FitReport& report) {
  std::string text = totals_line(report.file, report.session.gData(1));
  for (const Family family :
       {Family::weibull, Family::gumbel, Family::normal, Family::lognormal, Family::none})
    text += family_table(report, family);
  return text + refusals(report);
}

}  // namespace tavlo::cli
