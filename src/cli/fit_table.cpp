#include <cmath>

#include "actions/shown_parameters.h"
#include "actions/value_text.h"
#include "cli/fit_report.h"
#include "cli/text_table.h"
#include "cli/totals_line.h"
#include "numerics/number_text.h"
#include "solver/starts_sentence.h"

namespace tavlo::cli {

namespace {

std::string number(double value) { return number_text(value, 6); }

/// The fits of one family, and the columns that they need.
struct FamilyFits {
  std::vector<const FitOutcome*> outcomes;
  bool shares = false;  ///< a fit has more than one population
  bool minimum_life = false;
};

const FitResult& fit_of(const FitReport& report, const FitOutcome& outcome) {
  return report.session.gFit(1).Fits(outcome.slot);
}

FamilyFits fits_of_family(const FitReport& report, Family family) {
  FamilyFits fits;
  for (const FitOutcome& outcome : report.outcomes) {
    if (outcome.slot == 0 || outcome.choice.model->family != family) continue;
    fits.outcomes.push_back(&outcome);
    const FitResult& fit = fit_of(report, outcome);
    fits.shares = fits.shares || fit.nRows > 1;
    fits.minimum_life = fits.minimum_life || fit.Rows(1).T0 != 0;
  }
  return fits;
}

std::vector<std::string> headings(const FitReport& report, Family family, const FamilyFits& fits) {
  const ParameterNames& names = parameter_names(family);
  std::vector<std::string> cells = {"Fit"};
  if (fits.shares) cells.insert(cells.end(), {"Units", "Acts in"});
  cells.insert(cells.end(), {names.first_heading, names.second_heading});
  if (fits.minimum_life) cells.push_back("t0");
  cells.insert(cells.end(), {"r squared", "ln L"});
  for (const double p : report.arguments.b_life) cells.push_back("B" + number(100.0 * p));
  for (const double x : report.arguments.at) cells.push_back("F(" + number(x) + ")");
  return cells;
}

/// What stands of a population: its share, its risks, its parameters.
std::vector<std::string> population(const FitResult& fit, int row, const FamilyFits& columns) {
  const FitParam& param = fit.Rows(row);
  const ShownParameters shown = grid_parameters(fit.ModelCode, param);
  std::vector<std::string> cells;
  const std::string share = number(std::round(param.Fraction * 1e5) / 1e3) + " %";
  if (columns.shares) cells = {param.Fraction > 0 ? share : "", fs_BitList(param.Applies, false)};
  cells.insert(cells.end(), {number(shown.first), number(shown.second)});
  if (columns.minimum_life) cells.push_back(param.T0 != 0 ? number(param.T0) : "");
  return cells;
}

std::vector<std::string> answers(const FitReport& report, const FitResult& fit) {
  const bool likelihood = fit.Method == method_code::mle;
  std::vector<std::string> cells = {likelihood ? "" : number(fit.Quality),
                                    likelihood ? number(fit.Quality) : ""};
  for (const LifePoint& point : b_lives(report.session, report.file, fit, report.arguments.b_life))
    cells.push_back(point.known ? number(point.x) : "?");
  for (const LifePoint& point : fractions_at(report.session, report.file, fit, report.arguments.at))
    cells.push_back(point.known ? number(point.p) : "?");
  return cells;
}

/// A row for each population; the fit's own answers stand on the first.
void add_fit(TextTable& table, std::size_t columns, const FitReport& report,
             const FitOutcome& outcome, const FamilyFits& fits) {
  const FitResult& fit = fit_of(report, outcome);
  for (int row = 1; row <= fit.nRows; ++row) {
    const char* const censored = has_censored_likelihood(report.session, fit) ? "c" : "";
    std::vector<std::string> cells = {row == 1 ? fit_name(outcome.choice) + censored : ""};
    const auto add = [&cells](const std::vector<std::string>& more) {
      cells.insert(cells.end(), more.begin(), more.end());
    };
    add(population(fit, row, fits));
    if (row == 1) add(answers(report, fit));
    cells.resize(columns);
    table.add(cells);
  }
}

std::string family_table(const FitReport& report, Family family) {
  const FamilyFits fits = fits_of_family(report, family);
  if (fits.outcomes.empty()) return "";
  const std::vector<std::string> titles = headings(report, family, fits);
  TextTable table(titles);
  for (const FitOutcome* outcome : fits.outcomes)
    add_fit(table, titles.size(), report, *outcome, fits);
  std::string text = "\n" + table.text(1);
  for (const FitOutcome* outcome : fits.outcomes)
    if (const std::string sure = starts_sentence(fit_of(report, *outcome)); !sure.empty())
      text += "  " + fit_name(outcome->choice) + ": " + sure + "\n";
  return text;
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
