#include "cli/runs_report.h"

#include "actions/runs_words.h"
#include "cli/arguments.h"
#include "cli/json_text.h"
#include "cli/output.h"
#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/words.h"
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

/// Why a run was refused: of the first one.
std::optional<FitWords> refusal_words(const RunsOfFit& fit) {
  if (!fit.first_refusal) return std::nullopt;
  return words_of(*fit.first_refusal, {*find_model(fit.request.model), {}});
}

FitWords left_out_words() {
  return {"suspensions-left-out",
          "the suspensions are left out of this likelihood; --censored takes them in"};
}

void add_words(JsonText& json, const std::optional<FitWords>& words) {
  if (!words) return void(json.null());
  json.open('{').key("code").string(words->code).key("text").string(words->text).close('}');
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
  add_words(json.key("refusal"), refusal_words(fit));
  json.key("notes").open('[');
  if (fit.leaves_suspensions_out) add_words(json, left_out_words());
  json.close(']').close('}');
}

std::string cell(std::optional<double> number, double factor) {
  return number ? number_text(*number * factor, 6) : "";
}

std::vector<std::string> cells(const std::string& name, std::optional<double> truth,
                               const std::optional<Spread>& spread, double factor = 1) {
  if (!spread) return {name, cell(truth, factor), "", "", "", "", ""};
  std::vector<std::string> row = {name, cell(truth, factor)};
  for (const double number : {spread->mean, spread->sd, spread->p5, spread->p50, spread->p95})
    row.push_back(cell(number, factor));
  return row;
}

TextTable table_of(const RunsOfFit& fit) {
  TextTable table({name_of(fit.request), "true", "mean", "sd", "5 %", "50 %", "95 %"});
  for (const ParameterSpread& each : fit.parameters)
    table.add(cells(parameter_name(fit, each), each.truth, each.spread, shown_factor(each)));
  for (const BLifeSpread& each : fit.b_lives)
    table.add(cells("B" + number_text(each.percent), each.truth, each.spread));
  if (fit.r_squared) table.add(cells("r squared", std::nullopt, fit.r_squared));
  return table;
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
    print("\n" + (fit.fitted > 0 ? table_of(fit).text(1) : " " + name_of(fit.request) + "\n"));
    if (const auto why = refusal_words(fit))
      print("  refused and left out: " + std::to_string(fit.refused) + " of " +
            std::to_string(report.runs) + ", the first as " + shown_text(why->text) + "\n");
    for (const std::string& note : reading_words(fit)) print("  " + note + "\n");
    if (fit.leaves_suspensions_out) print("  " + left_out_words().text + "\n");
  }
}

}  // namespace tavlo::cli
