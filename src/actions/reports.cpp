#include "actions/reports.h"

#include <algorithm>
#include <vector>

#include "actions/parameter_labels.h"
#include "actions/shown_parameters.h"
#include "actions/value_text.h"
#include "numerics/date_text.h"
#include "numerics/elementary.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

constexpr const char* line_end = "\\par ";
constexpr const char* tab = "\\tab ";

Family family_of(int model_code) {
  const Model* model = find_model(model_code);
  return model ? model->family : Family::none;
}

/// Rows of a fit that can really be read: `nRows` may differ from the array.
int last_row(const FitResult& fit) { return std::min(fit.nRows, fit.Rows.bound()); }

std::string rounded(ErrorReporter& reporter, double value, int digits) {
  return number_text(fd_Round(reporter, value, digits).value);
}

bool shows_populations(const FitResult& fit) {
  for (int row = 1; row <= last_row(fit); ++row) {
    const double share = fit.Rows(row).Fraction;
    if ((share > 1e-7 && share < 0.999999) || fit.Rows(row).Applies > 1) return true;
  }
  return false;
}

std::string population_block(const FitResult& fit, int digits) {
  const auto decimals = static_cast<std::size_t>(std::clamp(digits - 2, 2, 16));
  const std::string pattern = "00." + std::string(decimals, '0') + "%";
  std::string text = std::string(line_end) + "Populations:" + line_end;
  for (int row = 1; row <= last_row(fit); ++row) {
    const double share = fit.Rows(row).Fraction;
    if (fs_Dbl2Txt(share, "00.0000%") == "00.0000%") continue;
    text += tab + std::to_string(row) + ":   " + fs_Dbl2Txt(share, pattern) + line_end;
  }
  return text;
}

std::string parameter_line(ErrorReporter& reporter, const FitResult& fit, const FitParam& row,
                           const ShownParameters& shown, int digits) {
  const ParameterLabels& labels = parameter_labels(family_of(fit.ModelCode));
  std::string text = std::string(labels.log_scale) + tab + rounded(reporter, shown.first, digits) +
                     tab + labels.log_shape + tab + rounded(reporter, shown.second, digits) +
                     line_end;
  if ((fit.ModelCode & model_mask) == model_code::weibull3)
    text += std::string("  t0: ") + tab + rounded(reporter, row.T0, digits) + line_end;
  return text;
}

/// The body of an entry; empty, after a box, for a model without axes.
std::string entry_body(Session& session, const FitResult& fit, const DataPoint& summary) {
  ErrorReporter& reporter = session.errors;
  const int digits = session.settings.DigitsLog;
  const bool likelihood = fit.Method == method_code::mle;
  std::string text = fit.Label + tab + "N= " + number_text(summary.Fails + summary.Susps) +
                     " /S= " + number_text(summary.Susps) + line_end +
                     (likelihood ? "Ln(L)= " : "r^2= ") + tab +
                     rounded(reporter, fit.Quality, digits);
  const bool populations = shows_populations(fit);
  if (populations) text += population_block(fit, digits);
  for (int i = 1; i <= last_row(fit); ++i) {
    const FitParam& row = fit.Rows(i);
    const auto shown = shown_parameters(fit.ModelCode, row);
    if (!shown) {
      session.ports.prompts.show(
          {"", "undefined axes in postfitlog", BoxIcon::exclamation, BoxButtons::ok});
      return {};
    }
    if (populations) text += "Applies to Pop: " + fs_BitList(row.Applies, false) + line_end;
    text += parameter_line(reporter, fit, row, *shown, digits);
  }
  return text;
}

/// Names of the families among the fits, each once, joined: "eta, mu".
std::string joined_heading(const FitSet& fits, const char* ParameterLabels::*heading) {
  std::vector<std::string> seen;
  std::string text;
  for (int k = 1; k <= fits.nFits; ++k) {
    const std::string name = parameter_labels(family_of(fits.Fits(k).ModelCode)).*heading;
    if (std::find(seen.begin(), seen.end(), name) != seen.end()) continue;
    text += (seen.empty() ? "" : ", ") + name;
    seen.push_back(name);
  }
  return seen.empty() ? parameter_labels(Family::weibull).*heading : text;
}

std::string quality_heading(const FitSet& fits) {
  bool regression = false;
  bool likelihood = false;
  for (int k = 1; k <= fits.nFits; ++k)
    (fits.Fits(k).Method == method_code::mle ? likelihood : regression) = true;
  if (regression && likelihood) return "r², Ln(L)";
  return likelihood ? "Ln(L)" : "r²";
}

void load_headings(const FitSet& fits, Grid& grid) {
  grid.set_text(0, fit_column::number, "#");
  grid.set_text(0, fit_column::quality, quality_heading(fits));
  grid.set_text(0, fit_column::model, "Model");
  grid.set_text(0, fit_column::sub_population, "Sub-pop");
  grid.set_text(0, fit_column::fraction, "u %");
  grid.set_text(0, fit_column::scale, joined_heading(fits, &ParameterLabels::grid_scale));
  grid.set_text(0, fit_column::shape, joined_heading(fits, &ParameterLabels::grid_shape));
  grid.set_text(0, fit_column::min_life, "Min Life");
}

void load_row(Session& session, const FitResult& fit, int slot, int row, Grid& grid) {
  ErrorReporter& reporter = session.errors;
  const int digits = session.settings.DigitsFit;
  const FitParam& from = fit.Rows(row);
  const int to = grid.rows();
  grid.set_rows(to + 1);
  if (row == 1) {
    grid.set_text(to, fit_column::number, std::to_string(slot));
    grid.set_text(to, fit_column::model, fs_ModelNames(fit.ModelCode, fit.Method).short_name);
  }
  // Numbers of a fit that no longer belongs to its data would be taken for true.
  if (fit.Status != FitStatus::calculated) return;
  if (row == 1) grid.set_text(to, fit_column::quality, rounded(reporter, fit.Quality, digits));
  const ShownParameters shown = grid_parameters(fit.ModelCode, from);
  grid.set_text(to, fit_column::sub_population, fs_BitList(from.Applies, false));
  grid.set_text(to, fit_column::fraction, rounded(reporter, 100.0 * from.Fraction, digits));
  grid.set_text(to, fit_column::scale, rounded(reporter, shown.first, digits));
  grid.set_text(to, fit_column::shape, rounded(reporter, shown.second, digits));
  grid.set_text(to, fit_column::min_life, rounded(reporter, from.T0, digits));
}

}  // namespace

void AppendLog(Session& session, const std::string& text, bool as_rtf) {
  if (as_rtf) {
    session.log.append_rtf(text);
  } else {
    session.log.append_plain(text);
  }
  session.ports.views.log_changed();
}

void PostFitLog(Session& session, int fit_slot, int data_index, int fit_index) {
  const auto words = error_words("Error writing the log: ", "PostFitLog routine:");
  guarded(session.errors, words, [&] {
    const FitSet& fits = session.gFit(fit_index);
    const FitResult& fit = fits.Fits(fit_slot < 1 ? fits.nFits : fit_slot);
    const std::string body = entry_body(session, fit, session.gData(data_index).Points(0));
    if (body.empty()) return;
    AppendLog(session,
              "********** Tavlo Fit ********** " +
                  format_date(session.ports.clock.now(), "    hh:mm am/pm") + line_end + body +
                  line_end,
              true);
  });
}

void Load_Fit(Session& session, int fit_index) {
  guarded(session.errors, error_words("Display fit error: ", "Load_Fit routine:"), [&] {
    const FitSet& fits = session.gFit(fit_index);
    Grid& grid = session.gFitForm(fit_index)->grd_Fit;
    grid.set_rows(1);
    load_headings(fits, grid);
    for (int k = 1; k <= fits.nFits; ++k)
      for (int row = 1; row <= last_row(fits.Fits(k)); ++row)
        load_row(session, fits.Fits(k), k, row, grid);
  });
  session.ports.views.fit_grid_changed(fit_index);
}

}  // namespace tavlo
