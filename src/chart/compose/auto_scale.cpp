#include "chart/compose/auto_scale.h"

#include <algorithm>

#include "chart/parts/plot_sets.h"
#include "chart/scales/chart_view.h"
#include "chart/scales/fitted_limits.h"
#include "chart/scales/limit_rules.h"
#include "life/models.h"
#include "numerics/infinity.h"

namespace tavlo {

namespace {

/// Grows to hold each value it is given; empty at first.
struct Range {
  Limits limits{infinity, -infinity};
  void add(double value) {
    limits.low = std::min(limits.low, value);
    limits.high = std::max(limits.high, value);
  }
  bool empty() const { return limits.low > limits.high; }
};

struct DataExtent {
  Range x;
  Range y;
};

/// The failures of a set.
void add_set(const Sample& sample, DataExtent& extent) {
  for (std::size_t i = 0; i < sample.size(); ++i) {
    if (!(sample.failures[i] > 0.0)) continue;
    extent.x.add(outer_time(sample, sample.time[i]));
    extent.y.add(static_cast<double>(sample.rank[i]));
  }
}

/// A limit that the user holds enters the rule in place of the data's.
Limits with_held_limits(const ChartAxis& axis, Limits data) {
  return usable_range({axis.AutoMin ? data.low : axis.Min, axis.AutoMax ? data.high : axis.Max});
}

void set_limits(ErrorReporter& reporter, ChartAxis& axis, int code, const Range& range,
                double zone) {
  if (range.empty()) return;
  const Limits data = with_held_limits(axis, usable_range(range.limits));
  // One value alone says nothing of how wide a range the data have.
  const bool fits =
      axis.Label.Int4 == limit_rule::fit_to_data && range.limits.low < range.limits.high;
  take_data_limits(axis, (fits ? fitted_limits : round_limits)(reporter, code, data, zone));
}

/// A twelve-month chart keeps its first month off the left edge. Its odd digits
/// tell it from a limit that somebody typed.
void shift_first_month(ChartAxis& axis) {
  if (axis.AutoMin && axis.Min == 1.0 && axis.ScaleType == model_code::weibull_12_month)
    take_data_limits(axis, {0.8000012345, axis.Max});
}

}  // namespace

void SetAutoScale(Session& session, Chart& chart) {
  DataExtent extent;
  for (const PlotSet& set : plot_sets(session, chart))
    add_set(session.project.data(set.data_index).sample(), extent);
  const auto words = error_words("SetAutoScale_Error: ", "SetAutoScale routine:");
  const double zone = session.settings.PlotBorderZone;
  guarded(session.errors, words, [&] {
    ChartAxis& axis = chart.Axes(0);
    set_limits(session.errors, axis, x_scale_of(axis), extent.x, zone);
    if (x_scale_of(axis) != x_scale::linear) shift_first_month(axis);
  });
  guarded(session.errors, words, [&] {
    ChartAxis& axis = chart.Axes(1);
    set_limits(session.errors, axis, y_scale_of(axis), extent.y, zone);
  });
}

}  // namespace tavlo
