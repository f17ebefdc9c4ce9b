#include "actions/runs_charts.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "actions/runs_words.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

constexpr Limits nowhere{INFINITY, -INFINITY};

RunChart& chart_of(std::vector<RunChart>& charts, const RunsOfFit& fit,
                   const ParameterSpread& parameter) {
  const std::string word = parameter_word(fit, parameter);
  const auto found = std::find_if(charts.begin(), charts.end(),
                                  [&](const RunChart& chart) { return chart.word == word; });
  if (found != charts.end()) return *found;
  return charts.emplace_back(RunChart{word, parameter_meaning(fit, parameter)});
}

bool has_spread(const ParameterSpread& parameter) {
  const std::vector<double>& values = parameter.values;
  return std::adjacent_find(values.begin(), values.end(), std::not_equal_to<>()) != values.end();
}

RunSet set_of(const RunsOfFit& fit, const ParameterSpread& parameter) {
  RunSet set{parameter_name(fit, parameter) + " " + short_label(fit.request), parameter.values};
  for (double& value : set.values) value *= shown_factor(parameter);
  return set;
}

template <class Take>
void for_each_set(std::vector<RunChart>& charts, Take take) {
  for (RunChart& chart : charts)
    for (RunSet& set : chart.sets) take(set);
}

void thin(std::vector<double>& values, std::size_t most) {
  if (values.size() <= most) return;
  std::sort(values.begin(), values.end());
  for (std::size_t i = 0; i < most; ++i)
    values[i] = values[(2 * i + 1) * values.size() / (2 * most)];
  values.resize(most);
}

Limits around(Limits a, Limits b) { return {std::min(a.low, b.low), std::max(a.high, b.high)}; }

Limits range_of(const RunChart& chart) {
  Limits range = nowhere;
  for (const RunSet& set : chart.sets)
    for (const double value : set.values) range = around(range, {value, value});
  return range;
}

/// As far as values belong together: J. W. Tukey, "Exploratory Data Analysis" (1977), calls those
/// far out that lie three times the range of the middle half beyond it. Four leave the ends of
/// 100,000 Normal numbers where they are.
Limits fences_of(std::vector<double> values) {
  constexpr double reach = 4;
  const auto quartile = [&](std::size_t quarter) {
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(quarter * (values.size() - 1) / 4);
    std::nth_element(values.begin(), at, values.end());
    return *at;
  };
  const double low = quartile(1), high = quartile(3);
  return {low - reach * (high - low), high + reach * (high - low)};
}

std::size_t count_beyond(const RunChart& chart, Limits limits) {
  std::size_t count = 0;
  for (const RunSet& set : chart.sets)
    count += static_cast<std::size_t>(
        std::count_if(set.values.begin(), set.values.end(),
                      [&](double value) { return value < limits.low || value > limits.high; }));
  return count;
}

}  // namespace

std::vector<RunChart> run_charts(const RunsReport& report) {
  std::vector<RunChart> charts;
  for (const RunsOfFit& fit : report.fits)
    for (const ParameterSpread& parameter : fit.parameters)
      if (has_spread(parameter))
        chart_of(charts, fit, parameter).sets.push_back(set_of(fit, parameter));
  return charts;
}

std::optional<std::size_t> thin_to(std::size_t most_rows, std::vector<RunChart>& charts) {
  std::size_t rows = 0, sets = 0;
  for_each_set(charts, [&](const RunSet& set) {
    rows += set.values.size();
    ++sets;
  });
  if (rows <= most_rows) return std::nullopt;
  const std::size_t most = std::max<std::size_t>(2, most_rows / sets);
  for_each_set(charts, [most](RunSet& set) { thin(set.values, most); });
  return most;
}

RunAxis run_axis(const RunChart& chart, ErrorReporter& reporter, double zone) {
  constexpr double far_apart = 4;
  const Limits range = range_of(chart);
  if (chart.word == share_word) return {};  // it has ends of its own
  if (range.low > 0 && range.high / range.low > far_apart) return {true, {}, 0};
  Limits fences = nowhere;
  for (const RunSet& set : chart.sets) fences = around(fences, fences_of(set.values));
  const Limits seen = {std::max(fences.low, range.low), std::min(fences.high, range.high)};
  if (count_beyond(chart, seen) == 0 || !(seen.low < seen.high)) return {};
  const Limits limits = fitted_limits(reporter, x_scale::linear, seen, zone);
  return {false, limits, count_beyond(chart, limits)};
}

}  // namespace tavlo
