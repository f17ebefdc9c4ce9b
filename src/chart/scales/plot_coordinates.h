// Plot coordinates: the mappings between data and the chart's logical units,
// through the transform of each axis. Scale codes are those of life/models.h;
// the X codes and the Y codes differ, so one function serves both.
#pragma once

#include <cstdint>
#include <vector>

#include "chart/record/drawing_record.h"
#include "numerics/error_reporter.h"
#include "ports/prompts.h"
#include "project/chart_records.h"

namespace tavlo {

struct DataPair {
  double x = 0;
  double y = 0;
};

/// The scale codes of the axes of a chart.
int x_scale_of(const ChartAxis& axis);
int y_scale_of(const ChartAxis& axis);
bool is_probability_scale(int code);
/// Scales that a value at or below 0 has no place on.
bool needs_positive(int code);
/// Whether `value` has a place on a scale at all.
bool has_place(int code, double value);

/// The value on the axis: v, ln v, the Normal score, ln(-ln(1 - v)) or
/// -ln(-ln v). Error 5 where there is none, and for an unknown code.
double scale_transform(ErrorReporter& reporter, int code, double value);

/// Back to data. The density scale reads as Weibull.
double scale_inverse(ErrorReporter& reporter, int code, double place);

struct Limits {
  double low = 0;
  double high = 0;
};

/// The limits that an axis is drawn with, in data units: in order, and on log
/// and probability scales within their range. The record's own values may be
/// anything. Every drawing and reading takes its limits from here.
Limits GuardedLimits(const ChartAxis& axis, int code);

/// The two ends of the plot box along one direction, in logical units.
struct Extent {
  double begin = 0;
  double end = 0;
  double length() const { return end - begin; }
};
Extent x_extent(const ChartItem& plot_box);
Extent y_extent(const ChartItem& plot_box);

/// One axis laid on the chart: maps data to logical units. X runs to the right,
/// Y up, so that the upper limit lies at the top.
class AxisMap {
 public:
  static AxisMap x(ErrorReporter& reporter, const ChartItem& plot_box, const ChartAxis& axis);
  static AxisMap y(ErrorReporter& reporter, const ChartItem& plot_box, const ChartAxis& axis);
  /// For reading alone: the density scale, which nothing draws, reads as Weibull.
  static AxisMap readable_y(ErrorReporter& reporter, const ChartItem& plot_box, ChartAxis axis);

  /// Logical units, rounded half to even and held within 0 and 2147483645.
  /// Error 5 when the value has no place on the scale.
  std::int32_t operator()(double value) const;

  /// The data at a place, which is held within the plot box; at its edges exactly
  /// the limits.
  double read(double place) const;
  /// The place, held within the plot box.
  std::int32_t held(double place) const;

  double transform(double value) const;
  double inverse(double place) const;
  int code() const { return code_; }
  Limits limits() const { return limits_; }
  double low() const { return low_; }    ///< transform of the lower limit
  double high() const { return high_; }  ///< transform of the upper limit

 private:
  AxisMap(ErrorReporter& reporter, int code, const ChartAxis& axis);
  void span(Extent extent);

  ErrorReporter& reporter_;
  int code_;
  Limits limits_;
  double low_ = 0;
  double high_ = 0;
  double origin_ = 0;  ///< transform of the value at the extent's beginning
  double begin_ = 0;
  double end_ = 0;
  double factor_ = 0;
};

/// Maps pairs of data to places on the chart, X first and then Y, up to the
/// shorter of the two lists. An axis with equal limits is widened downward by
/// 5 %, in the record too.
/// A code that is not drawn shows a box; a value without a place is reported
/// ("Error calculating Plot Scale values: ") and ends the call.
void xy2Long(ErrorReporter& reporter, Prompts& prompts, const ChartItem& plot_box,
             ChartAxis& x_axis, ChartAxis& y_axis, std::vector<drawing::Place>& places,
             const std::vector<DataPair>& pairs);

}  // namespace tavlo
