#include "cli/runs_report.h"

#include <algorithm>

#include "actions/runs_words.h"
#include "cli/arguments.h"
#include "cli/json_text.h"
#include "cli/output.h"
#include "cli/text_table.h"
#include "numerics/number_text.h"

namespace tavlo::cli {

namespace {

std::string name_of(const FitRequest& request) {
  return command_name(*find_model(request.model)) + "/" + find_method(request.method)->command_name;
}

void add_percentiles(JsonText& json, const Spread& spread) {
  json.key("p5").number(spread.p5).key("p50").number(spread.p50).key("p95").number(spread.p95);
}

void add_spread(JsonText& json, const std::optional<Spread>& spread) {
  if (!spread) {
    for (const char* key : {"mean", "sd", "p5", "p50", "p95"}) json.key(key).null();
    return;
  }
  json.key("mean").number(spread->mean).key("sd").number(spread->sd);
  add_percentiles(json, *spread);
}

void add_fit(JsonText& json, const RunsOfFit& fit) {
  json.open('{').key("model").string(command_name(*find_model(fit.request.model)));
  json.key("method").string(find_method(fit.request.method)->command_name);
  json.key("fitted").integer(fit.fitted).key("refused").integer(fit.refused);
  json.key("parameters").open('[');
  for (const ParameterSpread& each : fit.parameters) {
    json.open('{').key("name").string(each.name).key("population").integer(each.population);
    add_spread(json, each.spread);
    json.key("determined").integer(ssize(each.values)).close('}');
  }
  json.close(']').key("b_life").open('[');
  for (const BLifeSpread& each : fit.b_lives) {
    json.open('{').key("p").number(each.percent);
    add_spread(json, each.spread);
    json.key("determined").integer(each.determined).close('}');
  }
  json.close(']').key("r_squared");
  if (fit.r_squared) {
    json.open('{');
    add_spread(json, fit.r_squared);
    json.close('}');
  } else {
    json.null();
  }
  json.close('}');
}

std::vector<std::string> cells(const std::string& name, const std::optional<Spread>& spread) {
  std::vector<std::string> row = {name};
  if (!spread) return {name, "", "", "", "", ""};
  for (const double number : {spread->mean, spread->sd, spread->p5, spread->p50, spread->p95})
    row.push_back(number_text(number, 6));
  return row;
}

}  // namespace

void print_runs_json(const RunPlan& plan, const RunsReport& report) {
  std::string text;
  JsonText json(text);
  json.open('{').key("model").string(command_name(*find_model(plan.sample.life.model)));
  json.key("size").integer(plan.sample.size).key("runs").integer(report.runs);
  json.key("fits").open('[');
  for (const RunsOfFit& fit : report.fits) add_fit(json, fit);
  json.close(']').close('}');
  print(text + "\n");
}

void print_runs_table(const RunPlan& plan, const RunsReport& report) {
  print("Runs: " + std::to_string(report.runs) + ", " + plan_words(plan) + "\n");
  for (const RunsOfFit& fit : report.fits) {
    TextTable table({name_of(fit.request), "mean", "sd", "5 %", "50 %", "95 %"});
    const bool is_numbered =
        std::any_of(fit.parameters.begin(), fit.parameters.end(),
                    [](const ParameterSpread& each) { return each.population > 1; });
    for (const ParameterSpread& each : fit.parameters)
      table.add(cells(each.name + (is_numbered ? " " + std::to_string(each.population) : ""),
                      each.spread));
    for (const BLifeSpread& each : fit.b_lives)
      table.add(cells("B" + number_text(each.percent), each.spread));
    if (fit.r_squared) table.add(cells("r squared", fit.r_squared));
    print("\n" + table.text(1));
    if (fit.refused > 0)
      print("  refused and left out: " + std::to_string(fit.refused) + " of " +
            std::to_string(report.runs) + "\n");
    for (const std::string& note : runs_notes(fit)) print("  " + note + "\n");
  }
}

}  // namespace tavlo::cli
