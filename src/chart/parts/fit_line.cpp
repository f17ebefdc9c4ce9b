#include "chart/parts/fit_line.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "chart/parts/fraction_on_chart.h"
#include "chart/parts/marker_line.h"
#include "chart/record/thinning.h"
#include "chart/scales/plot_coordinates.h"
#include "life/models.h"
#include "project/fit_records.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr int samples = 1000;
constexpr int thinning_tolerance = 3;
constexpr std::int32_t thinnest_line = 8;  // that still has its full colour on a screen

/// How far the pen would reach over the edge of the plot. Wider than a quarter of
/// the plot it is no longer a line, and nothing is held back for it.
double half_pen(const ChartItem& plot, const ChartMarker& marker) {
  const std::int64_t both = std::int64_t{plot.LineWidth} + marker.LineWidth;
  const double half = static_cast<double>(std::abs(both) / 2);
  return half <= std::min(plot.Width, plot.Height) / 4.0 ? half : 0.0;
}

/// The limits of an axis, drawn in by the pen along `length` units.
Limits pulled_in(const AxisMap& map, double pen, double length) {
  if (map.code() == y_scale::density || length <= 0.0) return map.limits();
  const double by = pen / length * (map.high() - map.low());
  Limits limits{map.inverse(map.low() + by), map.inverse(map.high() - by)};
  if (needs_positive(map.code())) {
    if (!(limits.low > 0.0)) limits.low = 1e-6;
    if (!(limits.high > 0.0)) limits.high = 1e-5;
  }
  return limits;
}

/// Cuts the X limits to the part of the line inside the Y limits; false when
/// there is none.
bool clip_to_plot(const FitResult& fit, Limits y, Limits& x) {
  const Life life = life_of(fit);
  if (!(y.high > 0)) return false;
  if (const auto end = quantile(life, y.high)) x.high = std::min(x.high, *end);
  if (y.low > 0) {
    const auto start = quantile(life, y.low);
    if (!start) return false;
    x.low = std::max(x.low, *start);
  }
  return x.low < x.high;
}

/// Points of the line, evenly spaced on the paper.
std::vector<DataPair> sample(const FitResult& fit, const AxisMap& map, Limits x) {
  std::vector<DataPair> pairs;
  pairs.reserve(samples + 1);
  const double start = map.transform(x.low);
  const double step = (map.transform(x.high) - start) / samples;
  for (int i = 0; i <= samples; ++i) {
    const double at = map.inverse(start + i * step);
    const double f = Fd_YofX(fit, at);
    if (has_place(map.code(), at)) pairs.push_back({at, f});
  }
  return pairs;
}

bool scales_are_drawn(Canvas& canvas) {
  const int x_code = x_scale_of(canvas.chart.Axes(0));
  const int y_code = y_scale_of(canvas.chart.Axes(1));
  if (x_code != x_scale::linear && x_code != x_scale::log) {
    canvas.prompts.show({"", "undefined X scale in drawdata_one_Line"});
    return false;
  }
  if (y_code != y_scale::linear && y_code != y_scale::log && !is_probability_scale(y_code)) {
    canvas.prompts.show({"", "undefined Yscale in DrawData_One_Line"});
    return false;
  }
  return true;
}

void draw_line(Canvas& canvas, const ChartMarker& marker, const FitResult& fit) {
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  const AxisMap x_map = AxisMap::x(canvas.errors, plot, canvas.chart.Axes(0));
  const AxisMap y_map = AxisMap::y(canvas.errors, plot, canvas.chart.Axes(1));
  const double pen_reach = half_pen(plot, marker);
  Limits x = pulled_in(x_map, pen_reach, x_extent(plot).length());
  x.low = first_x_of_line(fit, x.low);
  const Limits y = pulled_in(y_map, pen_reach, y_extent(plot).length());
  if (!(x.low < x.high) || !clip_to_plot(fit, y, x)) return;
  std::vector<Place> line;
  for (const DataPair& pair : sample(fit, x_map, x))
    if (has_place(y_map.code(), pair.y)) line.push_back({x_map(pair.x), y_map(pair.y)});
  if (line.size() < 2) return;
  draw_marker_line(canvas, marker, thin_line(line, thinning_tolerance));
}

/// False for a population that no failure reaches, and for a mode without a fit.
bool is_determined(const FitParam& row) { return row.Scale > 0 && !is_unreached(row); }

/// One row of a mixture as a fit of its own.
FitResult single_population(FitParam row) {
  row.Fraction = 1.0;
  row.Applies = 1;
  FitResult alone;
  alone.ModelCode = model_code::weibull2;
  alone.nRows = 1;
  alone.Rows.resize(1);
  alone.Rows(1) = row;
  return alone;
}

}  // namespace

/// At the minimum life itself the model's F reads 1, and the line would be lost.
double first_x_of_line(const FitResult& fit, double low) {
  if (fit.nRows != 1) return low;
  const double minimum_life = fit.Rows(1).T0;
  return minimum_life > 0.0 && low <= minimum_life ? minimum_life * (1.0 + 1e-6) : low;
}

bool has_line(const ChartMarker& marker) {
  return marker.LineWidth != 0 && marker.LineStyle != pen_style::none;
}

void DrawData_One_Line(Canvas& canvas, const ChartMarker& marker, const FitResult& fit) {
  if (!has_line(marker)) return;
  if (!scales_are_drawn(canvas)) return;
  guarded(canvas.errors, error_words("Error drawing a fit line: ", "DrawData_One_Line routine:"),
          [&] { draw_line(canvas, marker, fit); });
}

void draw_sub_populations(Canvas& canvas, const ChartMarker& marker, const FitResult& fit) {
  const int last = std::min<int>(fit.nRows, fit.Rows.bound());
  ChartMarker thin = marker;
  thin.LineWidth = std::max(thinnest_line, std::abs(marker.LineWidth / 3));
  for (int i = 1; last > 1 && i <= last; ++i)
    if (is_determined(fit.Rows(i))) DrawData_One_Line(canvas, thin, single_population(fit.Rows(i)));
}

}  // namespace tavlo
