#include "actions/reports.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "actions/words.h"
#include "life/parameter_names.h"
#include "life/shown_parameters.h"
#include "numerics/date_text.h"
#include "numerics/elementary.h"
#include "numerics/number_text.h"
#include "numerics/value_text.h"
#include "project/fit_records.h"
#include "project/rtf_writer.h"

namespace tavlo {

namespace {

constexpr const char* entry_line_end = "\\par ";
constexpr const char* tab = "\\tab ";
constexpr const char* note_mark = " *";
constexpr const char* out_of_date_mark = " (out of date)";
constexpr const char* undetermined = "not determined";

Family family_of(int model_code) {
  const Model* model = find_model(model_code);
  return model ? model->family : Family::none;
}

/// Rows of a fit that can really be read: `nRows` may differ from the array.
int last_row(const FitResult& fit) { return std::min(fit.nRows, fit.Rows.bound()); }

std::string rounded(ErrorReporter& reporter, double value, int digits) {
  return number_text(fd_Round(reporter, value, digits).value);
}

std::string rounded(ErrorReporter& reporter, std::optional<double> value, int digits) {
  return value ? rounded(reporter, *value, digits) : undetermined;
}

/// The mode that a row is the fit of; null in a fit of all modes together.
const ModeFit* mode_of_row(const FitResult& fit, int row) {
  const auto i = static_cast<std::size_t>(row) - 1;
  return i < fit.modes.size() ? &fit.modes[i] : nullptr;
}

std::string quality_words(ErrorReporter& reporter, int method, double quality, int digits) {
  return std::string(method == method_code::mle ? "Ln(L)= " : "r^2= ") + tab +
         rounded(reporter, quality, digits);
}

bool shows_populations(const FitResult& fit) {
  if (!fit.modes.empty()) return false;
  for (int row = 1; row <= last_row(fit); ++row) {
    const double share = fit.Rows(row).Fraction;
    if ((share > 1e-7 && share < 0.999999) || fit.Rows(row).Applies > 1) return true;
  }
  return false;
}

std::string population_block(const FitResult& fit, int digits) {
  const auto decimals = static_cast<std::size_t>(std::clamp(digits - 2, 2, 16));
  const std::string pattern = "00." + std::string(decimals, '0') + "%";
  std::string text = std::string(entry_line_end) + "Populations:" + entry_line_end;
  for (int row = 1; row <= last_row(fit); ++row) {
    const double share = fit.Rows(row).Fraction;
    if (fs_Dbl2Txt(share, "00.0000%") == "00.0000%") continue;
    text += tab + std::to_string(row) + ":   " + fs_Dbl2Txt(share, pattern) + entry_line_end;
  }
  return text;
}

std::string parameter_line(ErrorReporter& reporter, const FitResult& fit, const FitParam& row,
                           int digits) {
  const NamePair& labels = parameter_names(family_of(fit.ModelCode)).log;
  const ShownParameters shown = shown_parameters(fit.ModelCode, row);
  std::string text = std::string(labels.first) + tab + rounded(reporter, shown.first, digits) +
                     tab + labels.second + tab + rounded(reporter, shown.second, digits) +
                     entry_line_end;
  if ((fit.ModelCode & model_mask) == model_code::weibull3)
    text += std::string("  t0: ") + tab + rounded(reporter, row.T0, digits) + entry_line_end;
  return text;
}

std::string mode_line(ErrorReporter& reporter, const ModeFit& mode, const DataSet& data,
                      int digits) {
  const std::string head = "Failure mode: " + rtf_text(mode_name(data, mode.mode));
  if (!mode.quality) return head + entry_line_end;
  return head + tab + quality_words(reporter, mode.method, *mode.quality, digits) + entry_line_end;
}

/// The name of the fit, the units and, of a fit of all modes together, its quality.
std::string head_lines(ErrorReporter& reporter, const FitResult& fit, const Sample& sample,
                       int digits) {
  const std::string units = rtf_text(fit.Label) + tab +
                            "N= " + number_text(sample.total_failures + sample.total_suspensions) +
                            " /S= " + number_text(sample.total_suspensions) + entry_line_end;
  if (!fit.modes.empty()) return units;
  return units + quality_words(reporter, fit.Method, fit.Quality, digits);
}

std::string note_lines(const FitResult& fit, const DataSet& data) {
  std::string text;
  for (const Note& note : fit.notes) text += rtf_text(note_sentence(note, data)) + entry_line_end;
  return text;
}

std::string entry_body(Session& session, const FitResult& fit, const DataSet& data) {
  ErrorReporter& reporter = session.errors;
  const int digits = session.settings.DigitsLog;
  std::string text = head_lines(reporter, fit, data.sample(), digits);
  const bool populations = shows_populations(fit);
  if (populations) text += population_block(fit, digits);
  for (int i = 1; i <= last_row(fit); ++i) {
    const FitParam& row = fit.Rows(i);
    const ModeFit* mode = mode_of_row(fit, i);
    if (mode) text += mode_line(reporter, *mode, data, digits);
    if (mode && mode->refusal) continue;
    if (populations) text += "Applies to Pop: " + fs_BitList(row.Applies) + entry_line_end;
    text += parameter_line(reporter, fit, row, digits);
  }
  return text + note_lines(fit, data);
}

/// Names of the families among the fits, each once, joined: "eta, mu".
std::string joined_heading(const FitSet& fits, const char* NamePair::*heading) {
  std::vector<std::string> seen;
  std::string text;
  for (int k = 1; k <= fits.nFits; ++k) {
    const std::string name = parameter_names(family_of(fits.Fits(k).ModelCode)).grid.*heading;
    if (std::find(seen.begin(), seen.end(), name) != seen.end()) continue;
    text += (seen.empty() ? "" : ", ") + name;
    seen.push_back(name);
  }
  return seen.empty() ? parameter_names(Family::weibull).grid.*heading : text;
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
  grid.set_text(0, fit_column::scale, joined_heading(fits, &NamePair::first));
  grid.set_text(0, fit_column::shape, joined_heading(fits, &NamePair::second));
  grid.set_text(0, fit_column::min_life, "Min Life");
}

/// "W4P/MLEc", with a mark where there is something to know beside the numbers. Copies and
/// prints of the grid carry it along.
std::string model_cell(const FitResult& fit, const DataSet& data) {
  const char* mark = is_out_of_date(fit, data) ? out_of_date_mark
                     : fit.notes.empty()       ? ""
                                               : note_mark;
  return label_of(fit) + mark;
}

void load_numbers(Session& session, const FitResult& fit, const DataSet& data, int row, int to,
                  Grid& grid) {
  ErrorReporter& reporter = session.errors;
  const int digits = session.settings.DigitsFit;
  const FitParam& from = fit.Rows(row);
  const ModeFit* mode = mode_of_row(fit, row);
  const ShownParameters shown = shown_parameters(fit.ModelCode, from);
  if (mode && !mode->refusal && mode->quality)  // a file keeps none of modes
    grid.set_text(to, fit_column::quality, rounded(reporter, *mode->quality, digits));
  if (!mode && row == 1)
    grid.set_text(to, fit_column::quality,
                  fit.is_given ? "given" : rounded(reporter, fit.Quality, digits));
  grid.set_text(to, fit_column::sub_population,
                mode ? mode_name(data, mode->mode) : fs_BitList(from.Applies));
  grid.set_text(to, fit_column::scale, rounded(reporter, shown.first, digits));
  grid.set_text(to, fit_column::shape, rounded(reporter, shown.second, digits));
  if (mode && mode->refusal) return;
  if (row == 1 || from.Fraction > 0)  // a risk of other rows' units has no share of its own
    grid.set_text(to, fit_column::fraction, rounded(reporter, 100.0 * from.Fraction, digits));
  grid.set_text(to, fit_column::min_life, rounded(reporter, from.T0, digits));
}

void load_row(Session& session, const FitSet& fits, const DataSet& data, int slot, int row,
              Grid& grid) {
  const FitResult& fit = fits.Fits(slot);
  const bool current = is_current(fit, data);
  const int to = grid.rows();
  grid.set_rows(to + 1);
  if (row == 1) {
    grid.set_text(to, fit_column::number, std::to_string(slot));
    grid.set_text(to, fit_column::model, model_cell(fit, data));
  }
  // Numbers of a fit that no longer belongs to its data would be taken for true.
  if (current) load_numbers(session, fit, data, row, to, grid);
}

const DataSet& data_of(const Session& session, int fit_index) {
  return session.project.data(data_of_fits(session.project, fit_index));
}

}  // namespace

void AppendLog(Session& session, const std::string& text, bool as_rtf) {
  if (as_rtf) {
    session.project.log.append_rtf(text);
  } else {
    session.project.log.append_plain(text);
  }
}

void PostFitLog(Session& session, int fit_slot, int data_index, int fit_index) {
  const auto words = error_words("Error writing the log: ", "PostFitLog routine:");
  guarded(session.errors, words, [&] {
    const FitSet& fits = session.project.fits(fit_index);
    const FitResult& fit = fits.Fits(fit_slot < 1 ? fits.nFits : fit_slot);
    const std::string body = entry_body(session, fit, session.project.data(data_index));
    session.project.log.end_line();
    AppendLog(session,
              "********** Tavlo Fit ********** " +
                  format_date(session.ports.clock.now(), "    hh:mm am/pm") + entry_line_end +
                  body + entry_line_end,
              true);
  });
}

void fill_fit_grid(Session& session, int fit_index, Grid& grid) {
  const FitSet& fits = session.project.fits(fit_index);
  const DataSet& data = data_of(session, fit_index);
  grid.set_rows(1);
  load_headings(fits, grid);
  for (int k = 1; k <= fits.nFits; ++k)
    for (int row = 1; row <= last_row(fits.Fits(k)); ++row)
      load_row(session, fits, data, k, row, grid);
}

void Load_Fit(Session& session, int fit_index) {
  guarded(session.errors, error_words("Display fit error: ", "Load_Fit routine:"),
          [&] { fill_fit_grid(session, fit_index, session.gFitForm(fit_index)->grd_Fit); });
  session.ports.views.fit_grid_changed(fit_index);
}

GridFit fit_at(const Session& session, int fit_index, int grid_row) {
  const FitSet& fits = session.project.fits(fit_index);
  int row = 0;
  for (int k = 1; k <= fits.nFits; ++k) {
    const int first = row + 1;
    row += last_row(fits.Fits(k));
    if (grid_row >= 1 && grid_row <= row) return {k, grid_row == first};
  }
  return {};
}

std::string notes_at(const Session& session, int fit_index, int grid_row) {
  const FitSet& fits = session.project.fits(fit_index);
  const DataSet& data = data_of(session, fit_index);
  const int slot = fit_at(session, fit_index, grid_row).slot;
  if (slot == 0) return "";
  if (is_out_of_date_at(session, fit_index, grid_row))
    return "Out of date: " + why_out_of_date(fits.Fits(slot), data);
  if (fits.Fits(slot).is_given) return given_words;
  std::string text;
  for (const Note& note : fits.Fits(slot).notes)
    text += (text.empty() ? "" : "\n") + note_sentence(note, data);
  return text;
}

// An entry of the sheet counts before it is read: the fits don't know of it.
bool is_out_of_date_at(const Session& session, int fit_index, int grid_row) {
  const FitSet& fits = session.project.fits(fit_index);
  const int slot = fit_at(session, fit_index, grid_row).slot;
  if (slot == 0) return false;
  return is_out_of_date(fits.Fits(slot), data_of(session, fit_index));
}

void edit_log(Session& session, const RichText& text) {
  session.project.log = text;
  session.step = "Edit Log";
}

}  // namespace tavlo
