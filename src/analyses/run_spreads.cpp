#include "analyses/run_spreads.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

#include "life/parameter_names.h"
#include "life/shown_parameters.h"

namespace tavlo {

namespace {

constexpr std::array b_percents = {1.0, 10.0, 50.0};

struct Population {
  ShownParameters shown;
  double share;
};

/// Populations in the order of their place on the axis of time.
std::vector<Population> in_order(const Life& life) {
  std::vector<Population> all;
  for (const FitParam& row : life.rows)
    all.push_back({shown_parameters(life.model, row), row.Fraction});
  std::stable_sort(all.begin(), all.end(), [](const Population& a, const Population& b) {
    return a.shown.first.value_or(INFINITY) < b.shown.first.value_or(INFINITY);
  });
  return all;
}

bool has_minimum_life(const Model& model) {
  return model.rows() == 1 && model.free_parameters % 2 == 1 && !model.fixes_slope();
}

/// The columns that `numbers_of` fills.
std::vector<ParameterSpread> columns_of(const Model& model) {
  const NamePair& names = parameter_names(model.family).key;
  std::vector<ParameterSpread> columns;
  for (int i = 1; i <= model.rows(); ++i) {
    columns.push_back({ParameterKind::first, names.first, i, {}, {}, {}});
    columns.push_back({ParameterKind::second, names.second, i, {}, {}, {}});
  }
  for (int i = 1; model.has_shares() && i <= model.rows(); ++i)
    columns.push_back({ParameterKind::share, "share", i, {}, {}, {}});
  if (has_minimum_life(model))
    columns.push_back({ParameterKind::minimum_life, "t0", 1, {}, {}, {}});
  return columns;
}

RunNumbers parameters_of(const Model& model, const Life& life) {
  RunNumbers numbers;
  const std::vector<Population> populations = in_order(life);
  for (const auto& [shown, share] : populations) {
    numbers.push_back(shown.first.value_or(NAN));
    numbers.push_back(shown.second.value_or(NAN));
  }
  if (model.has_shares())
    for (const Population& each : populations) numbers.push_back(each.share);
  if (has_minimum_life(model)) numbers.push_back(life.rows[0].T0);
  return numbers;
}

/// A data set can hold the number. A mean with a larger one says nothing either.
bool is_held(double number) {
  return std::fabs(number) <= static_cast<double>(std::numeric_limits<float>::max());
}

/// The numbers of one place in all runs that determine it.
std::vector<double> column(const std::vector<RunNumbers>& runs, std::size_t at) {
  std::vector<double> values;
  for (const RunNumbers& run : runs)
    if (!run.empty() && !std::isnan(run[at])) values.push_back(run[at]);
  return values;
}

/// What the life that is sampled has itself.
void add_truth(const Life& life, RunsOfFit& report) {
  for (BLifeSpread& each : report.b_lives) each.truth = quantile(life, each.percent / 100);
  if (life.model != report.request.model) return;
  const RunNumbers numbers = parameters_of(*find_model(life.model), life);
  for (std::size_t i = 0; i < report.parameters.size(); ++i)
    report.parameters[i].truth = numbers[i];
}

}  // namespace

std::optional<Spread> spread_of(std::vector<double> numbers) {
  if (numbers.empty()) return std::nullopt;
  std::sort(numbers.begin(), numbers.end());
  const auto count = static_cast<double>(numbers.size());
  const auto percentile = [&](double p) {
    const double place = p * (count - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, numbers.size() - 1);
    return std::lerp(numbers[below], numbers[above], place - static_cast<double>(below));
  };
  const double mean = std::accumulate(numbers.begin(), numbers.end(), 0.0) / count;
  double squares = 0;
  for (const double each : numbers) squares += (each - mean) * (each - mean);
  const double sd = count > 1 ? std::sqrt(squares / (count - 1)) : 0;
  return Spread{mean, sd, percentile(0.05), percentile(0.5), percentile(0.95)};
}

RunNumbers numbers_of(const Model& model, const Fit& fit) {
  RunNumbers numbers = parameters_of(model, fit.life);
  for (const double percent : b_percents)
    numbers.push_back(quantile(fit.life, percent / 100).value_or(NAN));
  numbers.push_back(fit.quality);
  for (double& each : numbers)
    if (!is_held(each)) each = NAN;
  return numbers;
}

void add_spreads(const Life& life, const FitRequest& request, const std::vector<RunNumbers>& runs,
                 RunsOfFit& report) {
  const Model& model = *find_model(request.model);
  report.request = request;
  report.parameters = columns_of(model);
  report.refused = static_cast<std::int32_t>(
      std::count_if(runs.begin(), runs.end(), [](const RunNumbers& run) { return run.empty(); }));
  report.fitted = static_cast<std::int32_t>(runs.size()) - report.refused;
  std::size_t at = 0;
  for (ParameterSpread& each : report.parameters) {
    each.values = column(runs, at++);
    each.spread = spread_of(each.values);
  }
  for (const double percent : b_percents) {
    const std::vector<double> values = column(runs, at++);
    report.b_lives.push_back(
        {percent, {}, static_cast<std::int32_t>(values.size()), spread_of(values)});
  }
  if (request.method != method_code::mle) report.r_squared = spread_of(column(runs, at));
  add_truth(life, report);
}

}  // namespace tavlo
