#include "actions/report.h"

#include <algorithm>
#include <cmath>

#include "actions/words.h"
#include "chart/compose/make_chart.h"
#include "chart/parts/plain_words.h"
#include "chart/scales/short_number.h"
#include "life/life_answers.h"
#include "life/mean_life.h"
#include "life/shown_parameters.h"
#include "numerics/count_text.h"
#include "numerics/date_text.h"
#include "numerics/number_text.h"
#include "numerics/value_text.h"
#include "project/chart_looks.h"
#include "project/chart_types.h"
#include "project/fit_records.h"
#include "project/plot_rows.h"

namespace tavlo {

namespace {

constexpr int life_digits = 5;
constexpr std::size_t most_columns = 7;
constexpr const char* out_of_date = "out of date";
constexpr std::size_t most_rows = 100;  ///< of a data set that are shown, unless few more remain
constexpr std::size_t few_rows = 20;

using Cells = std::vector<std::string>;

const Model& model_of(const FitResult& fit) {
  const Model* const model = find_model(fit.ModelCode);
  return model ? *model : *find_model(model_code::weibull2);
}

std::string fit_name(const FitResult& fit) {
  const std::string plain = plain_fit_name(fit);
  return plain.empty() ? fit.Label : plain;
}

/// "η = 606, β = 1.72, minimum life 12".
std::string parameters(const FitResult& fit, const FitParam& row) {
  const Model& model = model_of(fit);
  const PlainNames names = plain_parameter_names(model.family);
  const PlainValues values = plain_values(model, row);
  std::string text =
      std::string(names.first) + " = " + values.first + ", " + names.second + " = " + values.second;
  if (!values.minimum_life.empty()) text += ", minimum life " + values.minimum_life;
  return text;
}

bool acts_in_all(const Life& life, std::int32_t bits) {
  std::int32_t bit = 1;
  for (const FitParam& row : life.rows) {
    if (row.Fraction > 0 && (bits & bit) == 0) return false;
    bit *= 2;
  }
  return true;
}

/// What a population is called: its mode, or its share of the units, and where its risk acts
/// when that is not in itself alone.
std::string population(const FitResult& fit, const Life& life, std::size_t i, const DataSet& data) {
  if (i < fit.modes.size()) return mode_name(data, fit.modes[i].mode);
  if (life.rows.size() < 2) return "all units";
  const double share = life.rows[i].Fraction;
  const std::int32_t bits = life.rows[i].Applies;
  const bool is_its_own = i < 30 && bits == std::int32_t{1} << i;
  if (share > 0 && (is_its_own || bits == 0)) return plain_share(share);
  const std::string where = acts_in_all(life, bits) ? "all" : fs_BitList(bits);
  return (share > 0 ? plain_share(share) + ", acts in " : "acts in ") + where;
}

std::string quality(const FitResult& fit, std::size_t i) {
  if (i < fit.modes.size())
    return fit.modes[i].quality ? plain_quality(fit.modes[i].method, *fit.modes[i].quality) : "";
  return i == 0 && fit.modes.empty() ? plain_quality(fit) : "";
}

/// Numbers of a fit that no longer belongs to its data would be taken for true.
void add_rows(ReportTable& table, const FitResult& fit, const DataSet& data) {
  if (is_out_of_date(fit, data)) return table.rows.push_back({fit_name(fit), "", out_of_date, ""});
  const Life life = life_of(fit);
  for (std::size_t i = 0; i < life.rows.size(); ++i) {
    const bool is_refused = i < fit.modes.size() && fit.modes[i].refusal;
    table.rows.push_back({i == 0 ? fit_name(fit) : "", population(fit, life, i, data),
                          is_refused ? "no fit" : parameters(fit, life.rows[i]), quality(fit, i)});
  }
}

Cells notes_of(const FitResult& fit, const DataSet& data) {
  if (std::string why = why_out_of_date(fit, data); !why.empty()) return {std::move(why)};
  Cells notes;
  if (fit.is_given) notes.push_back(sentence(given_words));
  for (const Note& note : fit.notes) notes.push_back(note_sentence(note, data));
  return notes;
}

/// What is said of each of several fits is said once.
void add_notes(ReportTable& table, const std::vector<const FitResult*>& fits, const DataSet& data) {
  std::vector<Cells> notes;
  for (const FitResult* fit : fits) notes.push_back(notes_of(*fit, data));
  const auto is_of_all = [&](const std::string& note) {
    return fits.size() > 1 && std::all_of(notes.begin(), notes.end(), [&](const Cells& each) {
             return std::find(each.begin(), each.end(), note) != each.end();
           });
  };
  for (const std::string& note : notes.front())
    if (is_of_all(note)) table.remarks.push_back("All fits: " + note);
  for (std::size_t i = 0; i < fits.size(); ++i)
    for (const std::string& note : notes[i])
      if (!is_of_all(note)) table.remarks.push_back(fit_name(*fits[i]) + ": " + note);
}

std::string life_text(double life, int digits) {
  return std::isinf(life) ? "infinite" : short_number(life, digits);
}

/// The name of the fit and its answers, as many as there are headings.
Cells life_row(const FitResult& fit, const DataSet& data, const ReportRequest& request) {
  const Life life = life_of(fit);
  Cells cells = {fit_name(fit)};
  const bool is_old = is_out_of_date(fit, data);
  if (is_old || lacks_a_mode(life)) {
    cells.resize(request.b_life.size() + request.times.size() + 2,
                 is_old ? out_of_date : "a mode has no fit");
    return cells;
  }
  const int digits = std::max(life_digits, digits_of_life(fit));
  for (const double fraction : request.b_life) {
    const auto time = b_life(life, fraction);
    cells.push_back(time ? life_text(*time, digits) : why_no_b_life(life, fraction));
  }
  for (const double time : request.times)
    cells.push_back(text_beside(surviving_share(life, time), 1, life_digits));
  const std::optional<double> mean = mean_life(life);
  cells.push_back(mean ? life_text(*mean, digits) : "not known");
  return cells;
}

bool has_life_below_zero(const FitResult& fit, const DataSet& data, const ReportRequest& request) {
  const Life life = life_of(fit);
  if (is_out_of_date(fit, data) || lacks_a_mode(life)) return false;
  return mean_life(life).value_or(0) < 0 ||
         std::ranges::any_of(request.b_life, [&](double fraction) {
           return b_life(life, fraction).value_or(0) < 0;
         });
}

Cells life_headings(const ReportRequest& request) {
  Cells cells = {"Fit"};
  for (const double fraction : request.b_life)
    cells.push_back("B" + number_text(100 * fraction, 12) + " life");
  for (const double time : request.times) cells.push_back("R(" + number_text(time) + ")");
  cells.push_back("Mean life");
  return cells;
}

/// Its columns become rows: more answers than a page is wide for.
void turn(ReportTable& table) {
  std::vector<Cells> lines = std::move(table.rows);
  lines.insert(lines.begin(), table.headings);
  table.rows.assign(lines.front().size(), {});
  for (const Cells& line : lines)
    for (std::size_t i = 0; i < line.size(); ++i) table.rows[i].push_back(line[i]);
  table.headings = table.rows.front();
  table.rows.erase(table.rows.begin());
  table.headings.front() = "Life";
}

/// The data sets that have rows, or fits.
std::vector<int> told_sets(const Project& project) {
  std::vector<int> sets;
  for (int i = 1; i <= project.data.bound(); ++i)
    if (!project.data(i).rows.empty() || (i <= project.fits.bound() && project.fits(i).nFits > 0))
      sets.push_back(i);
  return sets;
}

/// The fits of a data set, those of all its records.
std::vector<const FitResult*> fits_of(const Project& project, int set) {
  std::vector<const FitResult*> all;
  for (int i = 1; i <= project.fits.bound(); ++i) {
    const FitSet& fits = project.fits(i);
    if (data_of_fits(project, i) != set) continue;
    for (int k = 1; k <= std::min(fits.nFits, fits.Fits.bound()); ++k)
      if (fits.Fits(k).Status != FitStatus::not_calculated) all.push_back(&fits.Fits(k));
  }
  return all;
}

/// A row without a time, or that the person has left out, has no part in the analysis.
bool is_used(const SheetRow& row) { return row.has_point(); }

/// One data set as a table of its first rows, with the sums of all.
class DataTable {
 public:
  explicit DataTable(const DataSet& data)
      : data_(data),
        shown_(data.rows.size() > most_rows + few_rows ? most_rows : data.rows.size()) {
    for (std::size_t i = 0; i < data.rows.size(); ++i) count(data.rows[i]);
  }

  ReportTable made() const {
    ReportTable table;
    table.headings = {"Row", "Time", "Failures", "Suspensions"};
    table.is_text = {false, false, false, false};
    if (has_modes_) table.headings.push_back("Failure mode");
    if (has_comments_) table.headings.push_back("Comment");
    table.is_text.resize(table.headings.size(), true);
    for (std::size_t i = 0; i < shown_; ++i)
      if (!data_.rows[i].is_blank()) table.rows.push_back(cells_of(i));
    add_totals(table);
    add_remarks(table);
    return table;
  }

 private:
  void count(const SheetRow& row) {
    if (row.is_blank()) return;
    has_modes_ = has_modes_ || row.mode > 0;
    has_comments_ = has_comments_ || !row.text(sheet_column::comment).empty();
    if (!is_used(row)) {
      ++left_out_;
      return;
    }
    failures_ += row.failures;
    suspensions_ += row.suspensions;
  }

  /// A number, or the text that can't be read as one.
  static std::string cell(const SheetRow& row, int column, double value, int digits) {
    const std::string& text = row.text(column);
    if (!text.empty()) return text;
    return row.has(column) ? number_text(value, digits) : "";
  }

  Cells cells_of(std::size_t i) const {
    constexpr int digits_of_a_time = 7;
    constexpr int digits_of_a_count = 12;
    const SheetRow& row = data_.rows[i];
    Cells cells = {std::to_string(i + 1) + (is_used(row) ? "" : " *"),
                   cell(row, sheet_column::x, static_cast<double>(row.time), digits_of_a_time),
                   cell(row, sheet_column::fails, row.failures, digits_of_a_count),
                   cell(row, sheet_column::susps, row.suspensions, digits_of_a_count)};
    if (has_modes_) cells.push_back(row.mode > 0 ? mode_name(data_, row.mode) : "");
    if (has_comments_) cells.push_back(row.text(sheet_column::comment));
    return cells;
  }

  void add_totals(ReportTable& table) const {
    Cells cells = {"All", "", number_text(failures_), number_text(suspensions_)};
    cells.resize(table.headings.size());
    table.rows.push_back(cells);
    table.has_totals = true;
  }

  void add_remarks(ReportTable& table) const {
    if (const std::size_t rows = data_.rows.size(); rows > shown_)
      table.remarks.push_back("Shown are the first " + grouped(shown_) + " of " + grouped(rows) +
                              " rows; " + grouped(rows - shown_) +
                              " are not shown. The sums are those of all rows.");
    if (left_out_ > 0)
      table.remarks.push_back(grouped(left_out_) +
                              (left_out_ == 1 ? " row, marked *, is" : " rows, marked *, are") +
                              " left out of the analysis and of the sums.");
    if (suspensions_ > 0)
      table.remarks.push_back(
          "A suspension is a unit that had not failed at its time, or failed for another reason.");
  }

  const DataSet& data_;
  std::size_t shown_;
  std::size_t left_out_ = 0;
  double failures_ = 0;
  double suspensions_ = 0;
  bool has_modes_ = false;
  bool has_comments_ = false;
};

/// Makes the parts of a report one after another.
class ReportMaker {
 public:
  ReportMaker(Session& session, const ReportRequest& request)
      : session_(session),
        project_(session.project),
        request_(request),
        sets_(told_sets(session.project)) {}

  Report made() {
    Report report;
    report.title = request_.title;
    report.date = format_date(session_.ports.clock.now(), "yyyy-mm-dd");
    report.maker = "Tavlo " TAVLO_VERSION;
    if (!request_.file.empty()) report.facts.push_back({"File", request_.file});
    report.facts.push_back({"Date", report.date});
    for (const int set : sets_)
      report.facts.push_back({sets_.size() == 1 ? "Units" : project_.data(set).Title, units(set)});
    report.parts = {fits_part(), life_part(), chart_part(), data_part()};
    std::erase_if(report.parts, [](const ReportPart& part) {
      return part.tables.empty() && part.drawings.empty() && part.lines.empty();
    });
    return report;
  }

 private:
  std::string units(int set) const { return plain_totals(project_.data(set).sample()); }

  /// Names a table where there are several.
  std::string name_of(int set) const { return sets_.size() > 1 ? project_.data(set).Title : ""; }

  std::vector<std::string> refusals_of(int set) const {
    std::vector<std::string> words;
    for (const auto& [of, text] : request_.refusals)
      if (of == set) words.push_back(text);
    return words;
  }

  ReportPart fits_part() const {
    ReportPart part{"Fits"};
    for (const int set : sets_) {
      const auto fits = fits_of(project_, set);
      const auto refusals = refusals_of(set);
      if (fits.empty())
        part.lines.push_back((sets_.size() > 1 ? name_of(set) + ": " : std::string()) +
                             (refusals.empty() ? "No fit has been made." : "There is no fit."));
      if (fits.empty()) part.lines.insert(part.lines.end(), refusals.begin(), refusals.end());
      if (fits.empty()) continue;
      ReportTable table{name_of(set),
                        {"Fit", "Population", "Parameters", "Fit quality"},
                        {true, true, true, false},
                        {}};
      for (const FitResult* fit : fits) add_rows(table, *fit, project_.data(set));
      add_notes(table, fits, project_.data(set));
      table.remarks.insert(table.remarks.end(), refusals.begin(), refusals.end());
      part.tables.push_back(std::move(table));
    }
    return part;
  }

  ReportPart life_part() const {
    ReportPart part{"Life"};
    for (const int set : sets_) {
      const auto fits = fits_of(project_, set);
      if (fits.empty()) continue;
      ReportTable table{name_of(set), life_headings(request_), {true}, {}};
      for (const FitResult* fit : fits) {
        table.rows.push_back(life_row(*fit, project_.data(set), request_));
        if (has_life_below_zero(*fit, project_.data(set), request_))
          table.remarks.push_back(fit_name(*fit) + ": " + below_zero);
      }
      if (table.headings.size() > most_columns) turn(table);
      table.is_text.resize(table.headings.size(), false);
      part.tables.push_back(std::move(table));
    }
    if (!part.tables.empty())
      part.lines = {
          "The B10 life is the time by which 10 % of the units have failed; others likewise." +
          std::string(request_.times.empty() ? "" : " R is the share that survives a time.")};
    return part;
  }

  ReportPart chart_part() {
    ReportPart part{"Chart"};
    if (sets_.empty()) return part;
    for (int i = 1; i <= project_.charts.bound(); ++i)
      if (DrawingRecord drawing = drawn(project_.charts(i));
          drawing.width > 0 && drawing.height > 0)
        part.drawings.push_back(std::move(drawing));
    if (part.drawings.size() > 1) part.title = "Charts";
    return part;
  }

  bool shows_old_fit(const ChartMarker& marker) const {
    const int index = fit_set_of(project_, marker);
    if (index == 0) return false;
    const FitSet& fits = project_.fits(index);
    const bool is_there = marker.FitNumber >= 1 && marker.FitNumber <= fits.nFits;
    return is_there && is_out_of_date(fits.Fits(marker.FitNumber),
                                      project_.data(data_of_fits(project_, index)));
  }

  /// Without fits that no longer belong to their data. A chart that nobody has dressed gets the
  /// look that stands well among words.
  DrawingRecord drawn(Chart chart) {
    if (has_factory_look(chart)) apply_chart_look(chart, report_chart_type);
    if (chart.Profile == report_chart_type) chart.Profile = page_chart_type;
    for (int row = 1; row <= std::min(chart.nMarkers, chart.Markers.bound()); ++row)
      if (shows_old_fit(chart.Markers(row))) chart.Markers(row).FitNumber = 0;
    return compose_chart(session_, chart, session_.ports.prompts, session_.errors);
  }

  ReportPart data_part() const {
    ReportPart part{"Data"};
    for (const int set : sets_) {
      part.tables.push_back(DataTable(project_.data(set)).made());
      part.tables.back().title = name_of(set);
    }
    if (sets_.empty()) part.lines = {"There are no data."};
    return part;
  }

  Session& session_;
  const Project& project_;
  const ReportRequest& request_;
  std::vector<int> sets_;
};

}  // namespace

Report make_report(Session& session, const ReportRequest& request) {
  return ReportMaker(session, request).made();
}

}  // namespace tavlo
