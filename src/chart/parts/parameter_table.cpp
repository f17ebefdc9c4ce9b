#include "chart/parts/parameter_table.h"

#include <algorithm>

#include "actions/shown_parameters.h"
#include "actions/value_text.h"
#include "life/models.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

constexpr std::size_t most_lines = 50;

struct TypeLabel {
  int code;
  const char* label;
};

// Where the box's label differs from the model's name on the command line.
constexpr std::array<TypeLabel, 8> type_labels = {{{model_code::weibull_12_month, "W2P"},
                                                   {model_code::weibull_360_day, "W2P"},
                                                   {model_code::rayleigh, "R"},
                                                   {model_code::weibayes, "WB"},
                                                   {model_code::lognormal, "L"},
                                                   {model_code::lognormal3, "L"},
                                                   {model_code::custom, "WC"},
                                                   {model_code::by_failure_mode, "WF"}}};

std::string type_label(const Model& model) {
  for (const TypeLabel& own : type_labels)
    if (own.code == model.code) return std::string(own.label) + "/";
  return std::string(model.command_name) + "/";
}

struct Names {
  const char* first;
  const char* second;
};

Names parameter_names(Family family) {
  switch (family) {
    case Family::normal: return {"mu", "sigma"};
    case Family::lognormal: return {"Med", "SigF"};
    case Family::gumbel: return {"Xi", "Del"};
    default: return {"eta", "beta"};
  }
}

TableLine heading_line(const Model& model) {
  const Names names = parameter_names(model.family);
  TableLine line;
  line.cells = {
      type_label(model), "Set", "Pop", names.first, model.fixes_slope() ? "" : names.second, ""};
  if (model.code == model_code::weibull3) line.cells[table_column::minimum_life] = "t0";
  return line;
}

TableLine value_line(const Model& model, const FitParam& row, int digits) {
  const ShownParameters shown = grid_parameters(model.code, row);
  TableLine line;
  line.cells = {"",
                fs_BitList(row.Applies, false),
                number_text(row.Fraction, digits),
                number_text(shown.first, digits),
                model.fixes_slope() ? "" : number_text(shown.second, digits),
                ""};
  if (model.code == model_code::weibull3)
    line.cells[table_column::minimum_life] = number_text(row.T0, digits);
  return line;
}

std::string quality_text(const FitResult& fit, int digits) {
  const std::string value = number_text(fit.Quality, digits);
  switch (fit.Method) {
    case method_code::x_on_y: return "rr r^2= " + value;
    case method_code::y_on_x: return "rrs r^2= " + value;
    default: return "MLE Ln(L)= " + value;
  }
}

void add_fit(std::vector<TableLine>& lines, const FitResult& fit, int digits) {
  const Model* model = find_model(fit.ModelCode);
  if (!model) return;
  lines.push_back(heading_line(*model));
  const int last = std::min<int>(fit.nRows, fit.Rows.bound());
  for (int i = 1; i <= last; ++i) {
    lines.push_back(value_line(*model, fit.Rows(i), digits));
    if (i == 1) lines.back().quality = quality_text(fit, digits);
  }
}

TableLine set_line(const Session& session, const PlotSet& set) {
  TableLine line;
  const DataPoint& totals = session.gData(set.data_index).Points(0);
  line.heading = ":" + set_title(session, set) + " N" + number_text(totals.Fails) + " /S" +
                 number_text(totals.Susps);
  return line;
}

bool says_something(const std::vector<TableLine>& lines, std::size_t column) {
  return std::any_of(lines.begin(), lines.end(), [column](const TableLine& line) {
    const std::string& cell = line.cells[column];
    return !cell.empty() && cell != "1" && cell != "0" && cell != "Set" && cell != "Pop" &&
           cell != "t0";
  });
}

}  // namespace

ParameterTable parameter_table(const Session& session, const std::vector<PlotSet>& sets) {
  ParameterTable table;
  int data_index = 0;
  for (const PlotSet& set : sets) {
    if (!set.fit) continue;
    if (set.data_index != data_index) {
      data_index = set.data_index;
      table.lines.push_back(set_line(session, set));
    }
    add_fit(table.lines, *set.fit, session.settings.DigitsParBox);
  }
  if (table.lines.size() > most_lines) table.lines.resize(most_lines);
  for (std::size_t i = 0; i < table_column::count; ++i)
    table.shown[i] = says_something(table.lines, i);
  return table;
}

}  // namespace tavlo
