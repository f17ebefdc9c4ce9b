#include "chart/parts/printed_parameters.h"

#include <algorithm>

#include "chart/parts/plain_words.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

constexpr const char* share_heading = "share";
constexpr const char* all_units = "all";

TableLine words_line(std::string words) {
  TableLine line;
  line.remark = std::move(words);
  return line;
}

TableLine name_line(std::string words) {
  TableLine line = words_line(std::move(words));
  line.names_fit = true;
  return line;
}

int row_count(const FitResult& fit) { return std::min<int>(fit.nRows, fit.Rows.bound()); }

std::string named(const char* name, const std::string& value) {
  return std::string(name) + " = " + value;
}

/// One population: its numbers with their names, and how good the fit is.
std::vector<std::string> values_of(const FitResult& fit, const Model& model) {
  const PlainNames names = plain_parameter_names(model.family);
  const PlainValues plain = plain_values(model, fit.Rows(1));
  std::vector<std::string> values = {named(names.first, plain.first),
                                     named(names.second, plain.second)};
  if (model.fixes_slope()) values.back() += " (given)";
  if (!plain.minimum_life.empty()) values.push_back(named("t0", plain.minimum_life));
  values.push_back(plain_quality(fit));
  return values;
}

/// Alone on the chart each value has a line; beside others all share one.
void add_values(std::vector<TableLine>& lines, const std::vector<std::string>& values,
                bool is_alone) {
  if (is_alone) {
    for (const std::string& value : values) lines.push_back(words_line(value));
    return;
  }
  std::string together;
  for (const std::string& value : values) together += (together.empty() ? "" : ", ") + value;
  lines.push_back(words_line(together));
}

/// The share of the units that a risk acts on.
std::string share_text(const FitResult& fit, const FitParam& risk) {
  constexpr int most_populations = 31;
  double share = 0;
  for (int i = 1; i <= std::min(row_count(fit), most_populations); ++i)
    if (risk.Applies >> (i - 1) & 1) share += fit.Rows(i).Fraction;
  constexpr double rounding = 1e-9;
  return share > 1 - rounding ? all_units : plain_share(share);
}

TableLine plain_heading(const Model& model) {
  const PlainNames names = plain_parameter_names(model.family);
  TableLine line;
  line.names_columns = true;
  line.cells[table_column::population] = share_heading;
  line.cells[table_column::first] = names.first;
  line.cells[table_column::second] = names.second;
  return line;
}

TableLine risk_line(const Model& model, const FitParam& row) {
  const PlainValues plain = plain_values(model, row);
  TableLine line;
  line.cells[table_column::first] = plain.first;
  line.cells[table_column::second] = plain.second;
  return line;
}

void add_risks(std::vector<TableLine>& lines, const FitResult& fit, const Model& model) {
  lines.push_back(plain_heading(model));
  for (int i = 1; i <= row_count(fit); ++i) {
    lines.push_back(risk_line(model, fit.Rows(i)));
    lines.back().cells[table_column::population] = share_text(fit, fit.Rows(i));
  }
  lines.push_back(words_line(plain_quality(fit)));
}

/// A mode stands under its name; one that has no fit has no quality either.
void add_modes(std::vector<TableLine>& lines, const FitResult& fit, const Model& model,
               const DataSet& data) {
  lines.push_back(plain_heading(model));
  lines.back().cells[table_column::population].clear();
  const int last = std::min(row_count(fit), static_cast<int>(fit.modes.size()));
  for (int i = 1; i <= last; ++i) {
    const ModeFit& mode = fit.modes[static_cast<std::size_t>(i) - 1];
    lines.push_back(risk_line(model, fit.Rows(i)));
    lines.back().cells[table_column::label] = mode_name(data, mode.mode);
    if (mode.quality) lines.back().quality = plain_quality(mode.method, *mode.quality);
  }
}

void add_fit(std::vector<TableLine>& lines, const FitResult& fit, const DataSet& data,
             bool is_alone) {
  const Model* const model = find_model(fit.ModelCode);
  if (!model || row_count(fit) < 1) return;
  if (!fit.modes.empty()) return add_modes(lines, fit, *model, data);
  if (row_count(fit) == 1) return add_values(lines, values_of(fit, *model), is_alone);
  add_risks(lines, fit, *model);
}

void add_name(std::vector<TableLine>& lines, const Session& session, const PlotSet& set,
              bool is_one_data_set) {
  const std::string name = plain_fit_name(*set.fit);
  lines.push_back(name_line(is_one_data_set ? name : ": " + name));
  if (!is_one_data_set) lines.back().title = set_title(session, set);
}

void add_ranks(std::vector<TableLine>& lines, const FitResult& fit, const DataSet& data) {
  const std::string remark = ranks_remark(fit, data);
  if (!remark.empty()) lines.push_back(words_line(remark));
}

bool is_one_population(const FitResult& fit) {
  return find_model(fit.ModelCode) && row_count(fit) == 1 && fit.modes.empty();
}

/// Fits that the same columns serve.
bool are_alike(const FitResult& a, const FitResult& b) {
  return a.ModelCode == b.ModelCode && a.Method == b.Method &&
         a.request.censored == b.request.censored && is_one_population(a) && is_one_population(b);
}

/// The fit of one data set among the others of its kind.
TableLine plain_set_line(const Session& session, const PlotSet& set) {
  const Model& model = *find_model(set.fit->ModelCode);
  const PlainValues plain = plain_values(model, set.fit->Rows(1));
  TableLine line;
  line.cells[table_column::label] = set_title(session, set);
  line.cells[table_column::first] = plain.first;
  line.cells[table_column::second] = plain.second + (model.fixes_slope() ? " (given)" : "");
  line.cells[table_column::minimum_life] = plain.minimum_life;
  line.quality = plain_quality(*set.fit);
  return line;
}

/// One model by one method for several data sets: its name once, and a line for each set.
void add_alike(std::vector<TableLine>& lines, const Session& session,
               const std::vector<PlotSet>& alike) {
  const FitResult& fit = *alike.front().fit;
  lines.push_back(name_line(plain_fit_name(fit)));
  const std::size_t heading = lines.size();
  lines.push_back(plain_heading(*find_model(fit.ModelCode)));
  lines.back().cells[table_column::population].clear();
  for (const PlotSet& set : alike) {
    lines.push_back(plain_set_line(session, set));
    if (!lines.back().cells[table_column::minimum_life].empty())
      lines[heading].cells[table_column::minimum_life] = "t0";
    add_ranks(lines, *set.fit, session.project.data(set.data_index));
  }
}

/// The sets with fits, in order, those that are alike together.
std::vector<std::vector<PlotSet>> groups_of(const std::vector<PlotSet>& sets) {
  std::vector<std::vector<PlotSet>> groups;
  for (const PlotSet& set : sets) {
    if (!set.fit) continue;
    const auto group = std::find_if(groups.begin(), groups.end(), [&](const auto& other) {
      return are_alike(*other.front().fit, *set.fit);
    });
    if (group != groups.end())
      group->push_back(set);
    else
      groups.push_back({set});
  }
  return groups;
}

bool is_shown(const std::vector<TableLine>& lines, std::size_t column) {
  return std::any_of(lines.begin(), lines.end(), [column](const TableLine& line) {
    const std::string& cell = line.cells[column];
    return !cell.empty() && cell != share_heading && cell != all_units;
  });
}

}  // namespace

ParameterTable printed_parameters(const Session& session, const std::vector<PlotSet>& sets) {
  ParameterTable table;
  table.numbers_at_right = true;
  const bool is_one_data_set = show_one_data_set(sets);
  const bool is_alone = std::count_if(sets.begin(), sets.end(),
                                      [](const PlotSet& set) { return set.fit != nullptr; }) == 1;
  for (const std::vector<PlotSet>& group : groups_of(sets)) {
    if (group.size() > 1) {
      add_alike(table.lines, session, group);
      continue;
    }
    const PlotSet& set = group.front();
    const DataSet& data = session.project.data(set.data_index);
    if (!is_alone) add_name(table.lines, session, set, is_one_data_set);
    add_fit(table.lines, *set.fit, data, is_alone);
    add_ranks(table.lines, *set.fit, data);
  }
  limit_lines(table.lines, most_table_lines);
  for (std::size_t i = 0; i < table_column::count; ++i) table.shown[i] = is_shown(table.lines, i);
  return table;
}

}  // namespace tavlo
