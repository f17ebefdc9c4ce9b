#include "cli/rank_report.h"

#include "cli/json_text.h"
#include "cli/text_table.h"
#include "cli/totals_line.h"
#include "numerics/number_text.h"

namespace tavlo::cli {

namespace {

/// Text is handed on in pieces of this size.
constexpr std::size_t print_at = 1 << 16;

std::string number_json(double value) { return json_number(value).dump(); }

std::string mode_name(const DataSet& data, const DataPoint& point) {
  return point.Mode >= 1 && point.Mode <= data.nModes ? data.ModeNames(point.Mode) : "";
}

std::string row_json(const DataSet& data, const DataPoint& point) {
  return "{\"x\":" + number_json(shortest_decimal(point.X)) +
         ",\"fails\":" + number_json(point.Fails) + ",\"susps\":" + number_json(point.Susps) +
         ",\"y\":" + number_json(shortest_decimal(point.Y)) +
         ",\"mode\":" + one_line_json(mode_name(data, point)) + "}";
}

}  // namespace

void print_rank_json(const DataSet& data, const Print& print) {
  Json totals;
  add_totals(totals, data);
  std::string text = one_line_json(totals);
  text.back() = ',';  // the object goes on
  text += "\"rows\":[";
  for (int i = 1; i <= data.Count; ++i) {
    text += (i > 1 ? "," : "") + row_json(data, data.Points(i));
    if (text.size() < print_at) continue;
    print(text);
    text.clear();
  }
  print(text + "]}\n");
}

std::string rank_table(const std::string& file, const DataSet& data) {
  TextTable table({"X", "Fails", "Susps", "Y %", data.nModes > 0 ? "Mode" : ""});
  for (int i = 1; i <= data.Count; ++i) {
    const DataPoint& point = data.Points(i);
    table.add({number_text(shortest_decimal(point.X)), number_text(point.Fails),
               number_text(point.Susps), point.Fails > 0.0 ? format_number(point.Y, "0.0000%") : "",
               mode_name(data, point)});
  }
  return totals_line(file, data) + "\n" + table.text(0);
}

}  // namespace tavlo::cli
