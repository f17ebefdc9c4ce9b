#include "analyses/planned_runs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "fit/door/fit.h"
#include "fit/parallel.h"
#include "life/parameter_names.h"
#include "life/shown_parameters.h"

namespace tavlo {

namespace {

constexpr std::array b_percents = {1.0, 10.0, 50.0};

/// Numbers of one fit, in the order of the columns of a report; none of a refusal.
using Numbers = std::vector<double>;

/// Populations in the order of their place on the axis of time.
std::vector<ShownParameters> in_order(const Life& life) {
  std::vector<ShownParameters> shown;
  for (const FitParam& row : life.rows) shown.push_back(shown_parameters(life.model, row));
  std::stable_sort(shown.begin(), shown.end(), [](const auto& a, const auto& b) {
    return a.first.value_or(INFINITY) < b.first.value_or(INFINITY);
  });
  return shown;
}

bool has_share(const Model& model) { return model.rows() > 1 && model.free_parameters % 2 == 1; }
bool has_minimum_life(const Model& model) {
  return model.rows() == 1 && model.free_parameters % 2 == 1 && !model.fixes_slope();
}

/// The columns that `numbers_of` fills.
std::vector<ParameterSpread> columns_of(const Model& model) {
  const NamePair& names = parameter_names(model.family).key;
  std::vector<ParameterSpread> columns;
  for (int i = 1; i <= model.rows(); ++i) {
    columns.push_back({names.first, i, {}, {}});
    columns.push_back({names.second, i, {}, {}});
  }
  if (has_share(model)) columns.push_back({"share", 1, {}, {}});
  if (has_minimum_life(model)) columns.push_back({"t0", 1, {}, {}});
  return columns;
}

/// Parameters, B-lives, quality. Nothing of a fit of which a number is not determined.
Numbers numbers_of(const Model& model, const Fit& fit) {
  Numbers numbers;
  for (const ShownParameters& row : in_order(fit.life)) {
    numbers.push_back(row.first.value_or(NAN));
    numbers.push_back(row.second.value_or(NAN));
  }
  if (has_share(model)) numbers.push_back(fit.life.rows[0].Fraction);
  if (has_minimum_life(model)) numbers.push_back(fit.life.rows[0].T0);
  for (const double percent : b_percents)
    numbers.push_back(quantile(fit.life, percent / 100).value_or(NAN));
  numbers.push_back(fit.quality);
  const bool is_whole = std::all_of(numbers.begin(), numbers.end(),
                                    [](double number) { return std::isfinite(number); });
  return is_whole ? numbers : Numbers{};
}

/// The numbers of one place in all runs that have any.
std::vector<double> column(const std::vector<Numbers>& runs, std::size_t at) {
  std::vector<double> values;
  for (const Numbers& run : runs)
    if (!run.empty()) values.push_back(run[at]);
  return values;
}

RunsOfFit report_of(const FitRequest& request, const std::vector<Numbers>& runs) {
  const Model& model = *find_model(request.model);
  RunsOfFit report{request, 0, 0, columns_of(model), {}, {}};
  report.refused = static_cast<std::int32_t>(
      std::count_if(runs.begin(), runs.end(), [](const Numbers& run) { return run.empty(); }));
  report.fitted = static_cast<std::int32_t>(runs.size()) - report.refused;
  std::size_t at = 0;
  for (ParameterSpread& each : report.parameters) {
    each.values = column(runs, at++);
    each.spread = spread_of(each.values);
  }
  for (const double percent : b_percents)
    report.b_lives.push_back({percent, spread_of(column(runs, at++))});
  if (request.method != method_code::mle) report.r_squared = spread_of(column(runs, at));
  return report;
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

RunsReport make_runs(const RunPlan& plan, WichmannHill& random, Entropy& chance,
                     const std::function<bool(std::int32_t)>& go_on) {
  constexpr std::int32_t points_at_once = 1 << 20;
  const std::int32_t part = std::clamp(points_at_once / plan.sample.size, 1, 64);
  std::vector<std::vector<Numbers>> of_fits(plan.fits.size());
  RunsReport report;
  while (report.runs < plan.runs && go_on(report.runs)) {
    const std::int32_t count = std::min(part, plan.runs - report.runs);
    std::vector<Sample> samples;
    for (std::int32_t i = 0; i < count; ++i) {
      std::vector<SampleRow> rows = draw_points(plan.sample, random, chance).rows();
      find_at(plan.inspections, rows);
      samples.push_back(make_sample(rows, plan.sample.ranks));
    }
    for (std::size_t k = 0; k < plan.fits.size(); ++k) {
      FitRequest request = plan.fits[k];
      request.ranks = plan.sample.ranks;
      const Model& model = *find_model(request.model);
      std::vector<Numbers>& runs = of_fits[k];
      runs.resize(runs.size() + samples.size());
      for_each_index(samples.size(), [&](std::size_t i) {
        Companion nobody;
        const FitAnswer answer = fit(samples[i], request, nobody);
        if (answer.fit()) runs[runs.size() - samples.size() + i] = numbers_of(model, *answer.fit());
      });
    }
    report.runs += count;
  }
  for (std::size_t k = 0; k < plan.fits.size(); ++k)
    report.fits.push_back(report_of(plan.fits[k], of_fits[k]));
  return report;
}

}  // namespace tavlo
