#include <cmath>

#include "actions/starts_words.h"
#include "cli/fit_report.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/totals_line.h"
#include "life/life_answers.h"
#include "life/parameter_names.h"
#include "life/shown_parameters.h"
#include "numerics/number_text.h"
#include "numerics/value_text.h"
#include "project/fit_records.h"

namespace tavlo::cli {

namespace {

std::string number(double value) { return number_text(value, 6); }

std::string known(const std::optional<double>& value, const char* otherwise) {
  return value ? number(*value) : otherwise;
}

/// The fits of one family, and the columns that they need.
struct FamilyFits {
  std::vector<const FitOutcome*> outcomes;
  bool shares = false;  ///< a fit has more than one population
  bool minimum_life = false;
  bool modes = false;
};

FamilyFits fits_of_family(const FitReport& report, Family family) {
  FamilyFits fits;
  for (const FitOutcome& outcome : report.outcomes) {
    const Fit* const fit = outcome.answer.fit();
    if (!fit || outcome.choice.model->family != family) continue;
    fits.outcomes.push_back(&outcome);
    fits.modes = fits.modes || !fit->modes.empty();
    fits.shares = fits.shares || (fit->life.rows.size() > 1 && fit->modes.empty());
    for (const FitParam& row : fit->life.rows) fits.minimum_life = fits.minimum_life || row.T0 != 0;
  }
  return fits;
}

std::vector<std::string> headings(const FitReport& report, Family family, const FamilyFits& fits) {
  const NamePair& names = parameter_names(family).table;
  std::vector<std::string> cells = {"Fit"};
  if (fits.modes) cells.push_back("Mode");
  if (fits.shares) cells.insert(cells.end(), {"Units", "Acts in"});
  cells.insert(cells.end(), {names.first, names.second});
  if (fits.minimum_life) cells.push_back("t0");
  cells.insert(cells.end(), {"r squared", "ln L"});
  for (const double p : report.questions.b_life) cells.push_back("B" + number(100.0 * p));
  for (const double x : report.questions.at) cells.push_back("F(" + number(x) + ")");
  return cells;
}

/// What stands of a population: its mode, its share, its risks, its parameters.
std::vector<std::string> population(const FitReport& report, const Fit& fit, std::size_t i,
                                    const FamilyFits& columns) {
  const FitParam& row = fit.life.rows[i];
  const ShownParameters shown = shown_parameters(fit.life.model, row);
  const bool has_mode = i < fit.modes.size();
  const char* const missing = has_mode && fit.modes[i].refusal ? "no fit" : "not determined";
  std::vector<std::string> cells;
  if (columns.modes)
    cells = {has_mode ? shown_text(mode_name(report.mode_names, fit.modes[i].mode)) : ""};
  const std::string share = number(std::round(row.Fraction * 1e5) / 1e3) + " %";
  if (columns.shares) {
    cells.push_back(row.Fraction > 0 ? share : "");
    cells.push_back(fs_BitList(row.Applies));
  }
  cells.insert(cells.end(), {known(shown.first, missing), known(shown.second, missing)});
  if (columns.minimum_life) cells.push_back(row.T0 != 0 ? number(row.T0) : "");
  return cells;
}

/// r squared, ln L: one of them stands.
std::vector<std::string> quality(int method, double value) {
  if (method == method_code::mle) return {"", format_number(value, "0.00")};
  return {number(value), ""};
}

std::vector<std::string> quality_of_row(const FitOutcome& outcome, const Fit& fit, std::size_t i) {
  if (i < fit.modes.size() && fit.modes[i].quality)
    return quality(fit.modes[i].method, *fit.modes[i].quality);
  const bool is_first = fit.modes.empty() && i == 0;
  return is_first ? quality(outcome.request.method, fit.quality) : std::vector<std::string>{"", ""};
}

std::vector<std::string> answers(const FitQuestions& questions, const Life& life) {
  std::vector<std::string> cells;
  for (const double p : questions.b_life)
    cells.push_back(known(quantile(life, p), why_no_b_life(life, p)));
  for (const double x : questions.at) cells.push_back(number(fraction_failed(life, x)));
  return cells;
}

/// A row for each population; the fit's own answers stand on the first.
void add_fit(TextTable& table, std::size_t columns, const FitReport& report,
             const FitOutcome& outcome, const FamilyFits& fits) {
  const Fit& fit = *outcome.answer.fit();
  for (std::size_t i = 0; i < fit.life.rows.size(); ++i) {
    std::vector<std::string> cells = {i == 0 ? fit_name(outcome) : ""};
    const auto add = [&cells](const std::vector<std::string>& more) {
      cells.insert(cells.end(), more.begin(), more.end());
    };
    add(population(report, fit, i, fits));
    add(quality_of_row(outcome, fit, i));
    if (i == 0) add(answers(report.questions, fit.life));
    cells.resize(columns);
    table.add(cells);
  }
}

/// The lines beneath the table, or beneath the name of a fit that was refused.
std::string remarks(const FitReport& report, const FitOutcome& outcome) {
  const std::string start = "  " + fit_name(outcome) + ": ";
  const Fit* const fit = outcome.answer.fit();
  const bool likelihood = outcome.request.method == method_code::mle;
  std::string lines;
  if (fit && fit->starts)
    lines += start + starts_words(*fit->starts, fit->proof, likelihood) + "\n";
  for (const FitWords& note : notes_of(report, outcome))
    lines += start + shown_text(note.text) + "\n";
  return lines;
}

std::string family_table(const FitReport& report, Family family) {
  const FamilyFits fits = fits_of_family(report, family);
  if (fits.outcomes.empty()) return "";
  const std::vector<std::string> titles = headings(report, family, fits);
  TextTable table(titles);
  for (const FitOutcome* outcome : fits.outcomes)
    add_fit(table, titles.size(), report, *outcome, fits);
  std::string text = "\n" + table.text(fits.modes ? 2 : 1);
  for (const FitOutcome* outcome : fits.outcomes) text += remarks(report, *outcome);
  return text;
}

std::string refusals(const FitReport& report) {
  std::string lines;
  for (const FitOutcome& outcome : report.outcomes)
    if (!outcome.answer.fit())
      lines += "  " + fit_name(outcome) + "  no fit\n" + remarks(report, outcome);
  return lines.empty() ? lines : "\n" + lines;
}

}  // namespace

std::string fit_table(const std::string& subject, const FitReport& report) {
  std::string text = totals_line(subject, report.sample);
  for (const Family family :
       {Family::weibull, Family::gumbel, Family::normal, Family::lognormal, Family::none})
    text += family_table(report, family);
  return text + refusals(report);
}

}  // namespace tavlo::cli
