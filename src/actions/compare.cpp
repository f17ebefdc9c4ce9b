#include "actions/compare.h"

#include <algorithm>
#include <array>

#include "actions/busy_panel.h"
#include "actions/dispatch.h"
#include "actions/intake.h"
#include "actions/log_table.h"
#include "actions/reports.h"
#include "actions/shown_fits.h"
#include "actions/words.h"
#include "analyses/comparison.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"
#include "project/rtf_writer.h"

namespace tavlo {

namespace {

constexpr const char* line_end = "\\par ";

constexpr std::array<ComparedModel, 15> models_in_boxes = {{
    {"&Normal", model_code::normal},
    {"&Log Normal", model_code::lognormal},
    {"&Gumbel -", model_code::gumbel_lower},
    {"Gumbel +", model_code::gumbel_upper},
    {"Rayleigh", model_code::rayleigh},
    {"Exponential", model_code::exponential},
    {"Weibayes", model_code::weibayes},
    {"&2 Par Weibull", model_code::weibull2},
    {"3&T Weibull ", model_code::weibull3},
    {"3&B Batch Mixture", model_code::weibull_batch},
    {"&4 Competing Risk", model_code::weibull4},
    {"5&C Competing Risk Mixture", model_code::weibull5c},
    {"5&X Exclusive Or Mixture", model_code::weibull5x},
    {"&7 Par Weibull Bathtub Mixture", model_code::weibull7},
    {"By &Failure Mode", model_code::by_failure_mode},
}};

/// A record of a file need not say in its request what it holds.
FitRequest request_of(const FitResult& fit) {
  FitRequest request = fit.request;
  request.model = fit.ModelCode;
  request.method = fit.Method;
  return request;
}

/// The fits of a set, compared by what its grid shows of them.
class FitTable {
 public:
  FitTable(Session& session, int index)
      : fits_(session.project.fits(index)),
        data_(session.project.data(data_of_fits(session.project, index))),
        first_rows_(static_cast<std::size_t>(fits_.nFits) + 1) {
    fill_fit_grid(session, index, grid_);
    for (int row = 1; row < grid_.rows(); ++row)
      if (const GridFit at = fit_at(session, index, row); at.is_first_row)
        first_rows_[static_cast<std::size_t>(at.slot)] = row;
    std::vector<ComparedFit> compared;
    for (int slot = 1; slot <= fits_.nFits; ++slot)
      compared.push_back({request_of(fits_.Fits(slot)), quality(slot)});
    comparison_ = compare(data_.sample(), compared);
  }

  const Grid& grid() const { return grid_; }
  const Comparison& found() const { return comparison_; }
  std::string label(int slot) const { return short_label(request_of(fits_.Fits(slot))); }

  /// Calls `take(slot, row of the grid or 0, what was found)` for each fit.
  template <class Take>
  void for_each_fit(Take take) const {
    for (int slot = 1; slot <= fits_.nFits; ++slot)
      take(slot, first_row(slot), comparison_.rows[static_cast<std::size_t>(slot) - 1]);
  }

 private:
  int first_row(int slot) const { return first_rows_[static_cast<std::size_t>(slot)]; }

  /// With all its digits, however many the grid shows.
  std::optional<double> quality(int slot) const {
    const FitResult& fit = fits_.Fits(slot);
    if (is_out_of_date(fit, data_) || fit.is_given || first_row(slot) == 0) return std::nullopt;
    return fit.Quality;
  }

  const FitSet& fits_;
  const DataSet& data_;
  Grid grid_{1, fit_column::count};
  std::vector<int> first_rows_;  ///< by slot; 0 for a record without rows
  Comparison comparison_;
};

std::string percent(double chance) { return format_number(chance, "00.00%"); }

std::string test_cell(const ComparedRow& row) {
  switch (row.test) {
    case RatioTest::base: return "Base";
    case RatioTest::contained: return "  ? ";
    case RatioTest::tested: return percent(row.chance);
    case RatioTest::none:
    case RatioTest::incommensurate: break;
  }
  return "  - ";
}

std::vector<std::string> added_cells(const ComparedRow& row, bool lr_test) {
  if (lr_test) return {test_cell(row)};
  if (!row.straightness) return {"", ""};
  return {format_number(row.straightness->critical, "0.0000"), percent(row.straightness->pve)};
}

/// The grid with one or two columns more, filled on the first row of each fit.
TableRows stated_rows(const FitTable& table, bool lr_test) {
  TableRows rows;
  for (int row = 0; row < table.grid().rows(); ++row) {
    std::vector<std::string>& cells = rows.emplace_back();
    for (int column = 0; column < table.grid().columns(); ++column)
      cells.push_back(table.grid().text(row, column));
  }
  const auto add = [&rows](int row, const std::vector<std::string>& more) {
    auto& cells = rows[static_cast<std::size_t>(row)];
    cells.insert(cells.end(), more.begin(), more.end());
  };
  using Cells = std::vector<std::string>;
  add(0, lr_test ? Cells{"LR Test"} : Cells{"ccc^2", "PVE"});
  table.for_each_fit([&](int, int row, const ComparedRow& found) {
    if (row > 0) add(row, added_cells(found, lr_test));
  });
  return rows;
}

/// Why rows have no test that a person expects one of, and how they get it.
void log_untested(Session& session, const FitTable& table) {
  std::string names;
  table.for_each_fit([&](int slot, int, const ComparedRow& found) {
    if (found.test == RatioTest::incommensurate)
      names += (names.empty() ? "" : ", ") + table.label(slot);
  });
  if (names.empty()) return;
  AppendLog(session,
            rtf_text(names) +
                ": no test, as the suspensions are left out of the likelihood, which " +
                "the base takes in.  With the choice Censored there is one." + line_end,
            true);
}

void log_winner(Session& session, const FitTable& table) {
  const auto& winner = table.found().winner;
  if (!winner) return;
  if (!table.found().has_tested_row())
    return AppendLog(
        session,
        std::string("No other model could be tested against the Two Parameter Weibull.") + line_end,
        true);
  if (winner->is_base)
    return AppendLog(session,
                     std::string("Two Parameter Weibull is the best choice from Likelihood Ratio "
                                 "Test") +
                         line_end,
                     true);
  const std::string label = table.label(static_cast<int>(winner->row) + 1);
  AppendLog(session,
            "\\par   " + rtf_text(label) + " is the optimum:       " +
                significance_text(winner->significance) + "% Significance \\par ",
            true);
  constexpr double usual_level = 0.95;
  if (winner->significance < usual_level)
    AppendLog(
        session,
        std::string("With less than 95% the gain may be chance: see AIC and BIC too.") + line_end,
        true);
}

void log_straightest(Session& session, const FitTable& table) {
  const auto best = table.found().straightest();
  if (!best) return;
  AppendLog(session,
            rtf_text(table.label(static_cast<int>(*best) + 1)) + " has the highest PVE: " +
                percent(table.found().rows[*best].straightness->pve) + line_end,
            true);
  constexpr double doubtful = 0.1;
  if (table.found().rows[*best].straightness->pve <= doubtful)
    AppendLog(session,
              std::string("With 10% and less it describes the data poorly, and the others with a "
                          "PVE no better.") +
                  line_end,
              true);
}

/// The best of the comparison is what the charts show afterwards.
void show_best(Session& session, int index, bool lr_test, const Comparison& found) {
  if (lr_test && found.winner)
    follow_on_charts(session, index, static_cast<int>(found.winner->row) + 1);
  else if (const auto best = found.straightest(); best && !lr_test)
    follow_on_charts(session, index, static_cast<int>(*best) + 1);
}

/// What the stated table does not say of the likelihoods.
void log_other_criteria(Session& session, const FitTable& table) {
  TableRows rows = {{"Model", "AIC", "BIC"}};
  table.for_each_fit([&](int slot, int, const ComparedRow& found) {
    if (found.aic && found.bic)
      rows.push_back({table.label(slot), format_number(*found.aic, "0.00"),
                      format_number(*found.bic, "0.00")});
  });
  if (rows.size() == 1) return;
  AppendLog(session, std::string("Other criteria: the smaller the better.") + line_end, true);
  log_table(session, rows);
}

/// What is to be known of the fits of the table; what holds for several is said once.
void log_notes(Session& session, const FitTable& table, int index) {
  const Project& project = session.project;
  std::vector<std::pair<std::string, std::string>> notes;  // the sentence, and whose it is
  table.for_each_fit([&](int slot, int row, const ComparedRow&) {
    const FitResult& fit = project.fits(index).Fits(slot);
    const DataSet& data = project.data(data_of_fits(project, index));
    if (row == 0 || is_out_of_date(fit, data)) return;
    for (const Note& note : fit.notes) {
      const std::string sentence = note_sentence(note, data);
      const auto same = std::find_if(notes.begin(), notes.end(),
                                     [&](const auto& each) { return each.first == sentence; });
      if (same == notes.end())
        notes.emplace_back(sentence, table.label(slot));
      else
        same->second += ", " + table.label(slot);
    }
  });
  for (const auto& [sentence, names] : notes)
    AppendLog(session, rtf_text(names + ": " + sentence) + line_end, true);
}

void log_summary(Session& session, const FitTable& table, bool lr_test) {
  log_table(session, stated_rows(table, lr_test));
  if (!lr_test) return log_straightest(session, table);
  log_untested(session, table);
  log_winner(session, table);
}

constexpr const char* guide =
    "For Likelihood Ratio test, find the row with the highest percentage in the "
    "\\par 'LR Test' column.  Two Parameter Weibull MLE is the base.  If the number \\par is <50% "
    "then the base (W 2P) is better fit. \\par \\par ";

/// By maximum likelihood the base of the test comes first.
std::vector<std::int16_t> with_base(std::span<const std::int16_t> models, bool lr_test) {
  std::vector<std::int16_t> all(models.begin(), models.end());
  const bool has_base = std::find(all.begin(), all.end(), model_code::weibull2) != all.end();
  if (lr_test && !has_base) all.insert(all.begin(), model_code::weibull2);
  return all;
}

void analyse(Session& session, int index, std::int16_t method_code,
             std::span<const std::int16_t> models) {
  const bool lr_test = method_code == method_code::mle;
  bool clean = true;
  if (!CheckDirtyData(session, index, clean)) return;
  fit_models(session, index, index, with_base(models, lr_test), method_code);
  AppendLog(
      session,
      "\\par Distribution Analysis for: " + rtf_text(session.project.data(index).Title) + line_end,
      true);
  if (session.ports.progress.stop_wanted())
    AppendLog(session, std::string("Stopped before all models were fitted.") + line_end, true);
  if (session.project.fits(index).nFits == 0)
    return AppendLog(session, std::string("No model was fitted.") + line_end + line_end, true);
  const FitTable table(session, index);
  log_summary(session, table, lr_test);
  log_notes(session, table, index);
  show_best(session, index, lr_test, table.found());
  if (!lr_test) return;
  if (table.found().has_tested_row()) AppendLog(session, guide, true);
  log_other_criteria(session, table);
}

auto words_of_faults() {
  return error_words("Distribution_Analysis Setup: ", "Dist_Analysis routine:");
}

}  // namespace

std::span<const ComparedModel> compared_models() { return models_in_boxes; }

void Dist_Analysis(Session& session, int data_index, std::int16_t method_code,
                   std::span<const std::int16_t> models) {
  const Project& project = session.project;
  const bool known =
      data_index >= 1 && data_index <= std::min(project.data.bound(), project.fits.bound());
  if (!known || session.gFitForm(data_index)->busy) return;
  const BusyPanel busy(session, data_index);
  session.step = "Distribution Analysis";
  guarded(session.errors, words_of_faults(),
          [&] { analyse(session, data_index, method_code, models); });
}

void Dist_Summary(Session& session, int index, bool lr_test) {
  guarded(session.errors, words_of_faults(),
          [&] { log_summary(session, FitTable(session, index), lr_test); });
}

std::string significance_text(double chance) {
  constexpr std::size_t most = 16;
  const std::string text = number_text(100.0 * chance);
  const std::size_t point = text.find('.');
  if (point == std::string::npos) return text;
  const std::size_t digit = text.find_first_not_of('9', point + 1);
  return text.substr(0, std::min({digit == std::string::npos ? most : digit + 1, most}));
}

}  // namespace tavlo
