#include "actions/runs_words.h"

#include <algorithm>

#include "life/parameter_names.h"
#include "numerics/count_text.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

NamePair meanings(Family family) {
  switch (family) {
    case Family::normal: return {"Mean mu", "Standard deviation sigma"};
    case Family::lognormal: return {"Median", "Sigma factor sdF"};
    case Family::gumbel: return {"Location Xi", "Scale Del"};
    case Family::weibull:
    case Family::none: break;
  }
  return {"Characteristic life eta", "Slope beta"};
}

bool has_several(const RunsOfFit& fit) {
  return std::any_of(fit.parameters.begin(), fit.parameters.end(),
                     [](const ParameterSpread& each) { return each.population > 1; });
}

Family family_of(const RunsOfFit& fit) { return find_model(fit.request.model)->family; }

}  // namespace

std::string parameter_word(const RunsOfFit& fit, const ParameterSpread& parameter) {
  const NamePair& names = parameter_names(family_of(fit)).grid;
  switch (parameter.kind) {
    case ParameterKind::first: return names.first;
    case ParameterKind::second: return names.second;
    case ParameterKind::share: return share_word;
    case ParameterKind::minimum_life: break;
  }
  return "Min Life";
}

std::string parameter_name(const RunsOfFit& fit, const ParameterSpread& parameter) {
  const std::string number = has_several(fit) ? " " + std::to_string(parameter.population) : "";
  return parameter_word(fit, parameter) + number;
}

std::string parameter_meaning(const RunsOfFit& fit, const ParameterSpread& parameter) {
  const NamePair names = meanings(family_of(fit));
  switch (parameter.kind) {
    case ParameterKind::first: return names.first;
    case ParameterKind::second: return names.second;
    case ParameterKind::share: return "Units of a population, %";
    case ParameterKind::minimum_life: break;
  }
  return "Minimum life";
}

double shown_factor(const ParameterSpread& parameter) {
  return parameter.kind == ParameterKind::share ? 100 : 1;
}

std::vector<std::string> reading_words(const RunsOfFit& fit) {
  std::vector<std::string> lines;
  if (has_several(fit)) lines.push_back("Populations are numbered by eta, the smallest first.");
  const auto add = [&](const std::string& name, std::int64_t determined,
                       const std::optional<Spread>& spread) {
    if (determined < fit.fitted)
      lines.push_back(name + ": determined by " + grouped(determined) + " of " +
                      grouped(fit.fitted) + " fits");
    if (spread && !(spread->mean >= spread->p5 && spread->mean <= spread->p95))
      lines.push_back(name + ": a few fits far off rule mean and sd; read the percentiles");
  };
  for (const ParameterSpread& each : fit.parameters)
    add(parameter_name(fit, each), static_cast<std::int64_t>(each.values.size()), each.spread);
  for (const BLifeSpread& each : fit.b_lives)
    add("B" + number_text(each.percent), each.determined, each.spread);
  return lines;
}

std::string plan_words(const RunPlan& plan) {
  const Model& model = *find_model(plan.sample.life.model);
  return "samples of " + grouped(plan.sample.size) + " from the " + model.plain_name;
}

}  // namespace tavlo
