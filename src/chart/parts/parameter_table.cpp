#include "chart/parts/parameter_table.h"

#include <algorithm>

#include "life/models.h"
#include "life/parameter_names.h"
#include "life/shown_parameters.h"
#include "numerics/number_text.h"
#include "numerics/value_text.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

constexpr const char* undetermined = "not determined";

TableLine heading_line(const Model& model) {
  const NamePair& names = parameter_names(model.family).chart;
  TableLine line;
  line.names_columns = true;
  line.cells = {std::string(model.box_label) + "/",      "Set", "Pop", names.first,
                model.fixes_slope() ? "" : names.second, ""};
  if (model.code == model_code::weibull3) line.cells[table_column::minimum_life] = "t0";
  return line;
}

std::string value_text(std::optional<double> value, int digits) {
  return value ? number_text(*value, digits) : undetermined;
}

TableLine value_line(const Model& model, const FitParam& row, int digits) {
  const ShownParameters shown = shown_parameters(model.code, row);
  TableLine line;
  line.cells = {"",
                fs_BitList(row.Applies),
                row.Fraction > 0 ? number_text(row.Fraction, digits) : "",
                value_text(shown.first, digits),
                model.fixes_slope() ? "" : value_text(shown.second, digits),
                ""};
  if (model.code == model_code::weibull3)
    line.cells[table_column::minimum_life] = number_text(row.T0, digits);
  return line;
}

std::string quality_text(int method, bool censored, double quality, int digits) {
  const std::string value = number_text(quality, digits);
  switch (method) {
    case method_code::x_on_y: return "rr r^2= " + value;
    case method_code::y_on_x: return "rrs r^2= " + value;
    default: return (censored ? "MLEc Ln(L)= " : "MLE Ln(L)= ") + value;
  }
}

/// A mode stands under its name; one that has no fit has no quality either.
void name_mode(TableLine& line, const ModeFit& mode, const DataSet& data, int digits) {
  line.cells[table_column::label] = mode_name(data, mode.mode);
  line.quality = mode.quality ? quality_text(mode.method, false, *mode.quality, digits) : "";
}

void add_rows(std::vector<TableLine>& lines, const FitResult& fit, const Model& model,
              const DataSet& data, int digits) {
  const int last = std::min<int>(fit.nRows, fit.Rows.bound());
  for (int i = 1; i <= last; ++i) {
    const auto mode = static_cast<std::size_t>(i) - 1;
    lines.push_back(value_line(model, fit.Rows(i), digits));
    if (mode < fit.modes.size())
      name_mode(lines.back(), fit.modes[mode], data, digits);
    else if (i == 1)
      lines.back().quality =
          fit.is_given ? "given"
                       : quality_text(fit.Method, fit.request.censored, fit.Quality, digits);
  }
}

const char* rank_words(RankKind ranks) { return ranks == RankKind::exact ? "exact" : "Benard"; }

/// With suspensions there is one kind of ranks only.
bool ranks_differ(const FitResult& fit, const DataSet& data) {
  return fit.Method != method_code::mle && !(data.sample().total_suspensions > 0) &&
         fit.request.ranks != data.reading.ranks();
}

void add_fit(std::vector<TableLine>& lines, const FitResult& fit, const DataSet& data, int digits) {
  const Model* model = find_model(fit.ModelCode);
  if (!model) return;
  lines.push_back(heading_line(*model));
  add_rows(lines, fit, *model, data, digits);
  TableLine line;
  line.remark = ranks_remark(fit, data);
  if (!line.remark.empty()) lines.push_back(line);
}

TableLine set_line(const Session& session, const PlotSet& set) {
  TableLine line;
  const Sample& sample = session.project.data(set.data_index).sample();
  line.title = ":" + set_title(session, set);
  line.heading =
      " N" + number_text(sample.total_failures) + " /S" + number_text(sample.total_suspensions);
  return line;
}

bool has_values(const TableLine& line) {
  return line.heading.empty() && !line.names_columns && !line.names_fit;
}

bool says_something(const std::vector<TableLine>& lines, std::size_t column) {
  return std::any_of(lines.begin(), lines.end(), [column](const TableLine& line) {
    const std::string& cell = line.cells[column];
    return !cell.empty() && cell != "1" && cell != "0" && cell != "Set" && cell != "Pop" &&
           cell != "t0";
  });
}

}  // namespace

std::string ranks_remark(const FitResult& fit, const DataSet& data) {
  if (!ranks_differ(fit, data)) return {};
  return std::string("fit: ") + rank_words(fit.request.ranks) +
         ", points: " + rank_words(data.reading.ranks()) + " ranks";
}

void limit_lines(std::vector<TableLine>& lines, std::size_t most) {
  if (lines.size() <= most) return;
  lines.resize(most - 1);
  while (!lines.empty() && !has_values(lines.back())) lines.pop_back();
  lines.emplace_back().remark = "\u2026";
}

ParameterTable parameter_table(const Session& session, const std::vector<PlotSet>& sets) {
  ParameterTable table;
  int data_index = 0;
  for (const PlotSet& set : sets) {
    if (!set.fit) continue;
    if (set.data_index != data_index) {
      data_index = set.data_index;
      table.lines.push_back(set_line(session, set));
    }
    add_fit(table.lines, *set.fit, session.project.data(set.data_index),
            session.settings.DigitsParBox);
  }
  limit_lines(table.lines, most_table_lines);
  for (std::size_t i = 0; i < table_column::count; ++i)
    table.shown[i] = says_something(table.lines, i);
  return table;
}

}  // namespace tavlo
