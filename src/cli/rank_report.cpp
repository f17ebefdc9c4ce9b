#include "cli/rank_report.h"

#include "cli/fit_report.h"
#include "cli/json_text.h"
#include "cli/output.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/totals_line.h"
#include "cli/words.h"
#include "numerics/number_text.h"

namespace tavlo::cli {

namespace {

/// The row as entered that stands at place `i` in ascending order.
const SampleRow& entered_row(const RankedRows& ranked, std::size_t i) {
  return ranked.data.rows[static_cast<std::size_t>(ranked.sample.entry[i]) - 1];
}

std::string mode_of(const RankedRows& ranked, const SampleRow& row) {
  return row.mode == 0 ? "" : mode_name(ranked.data.mode_names, row.mode);
}

}  // namespace

void print_rank_json(const std::string& set, const RankedRows& ranked) {
  std::string text;
  JsonText json(text);
  json.open('{').key("set").string(set);
  add_totals(json, ranked.sample);
  json.key("rows").open('[');
  for (std::size_t i = 0; i < ranked.sample.size(); ++i) {
    const SampleRow& row = entered_row(ranked, i);
    json.open('{').key("x").number(row.time).key("fails").number(row.failures);
    json.key("susps").number(row.suspensions).key("y").number(ranked.sample.rank[i]);
    json.key("mode").string(mode_of(ranked, row)).close('}');
    constexpr std::size_t piece = 1 << 16;
    if (text.size() < piece) continue;
    if (!print({text.data(), text.size() - 1})) return;
    text.erase(0, text.size() - 1);  // the last bracket tells that a comma follows
  }
  json.close(']').close('}');
  print(text + "\n");
}

void print_rank_table(const std::string& subject, const RankedRows& ranked) {
  TextTable table({"X", "Fails", "Susps", "Y %", ranked.data.mode_names.empty() ? "" : "Mode"});
  for (std::size_t i = 0; i < ranked.sample.size(); ++i) {
    const SampleRow& row = entered_row(ranked, i);
    const double rank = shortest_decimal(ranked.sample.rank[i]);
    table.add({number_text(shortest_decimal(row.time)), number_text(row.failures),
               number_text(row.suspensions),
               row.failures > 0.0 ? format_number(rank, "0.0000%") : "",
               shown_text(mode_of(ranked, row))});
  }
  print(totals_line(subject, ranked.sample) + "\n" + table.text(0));
}

}  // namespace tavlo::cli
