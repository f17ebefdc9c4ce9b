#include "chart/parts/data_points.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <unordered_set>
#include <vector>

#include "chart/parts/symbols.h"
#include "chart/scales/plot_coordinates.h"

namespace tavlo {

using namespace drawing;

namespace {

/// From so many symbols on, those that lie within a thirtieth of their size of
/// one another are drawn once: nobody can tell, and a picture stays quick.
constexpr std::size_t crowd = 3000;
constexpr int crowd_grain = 30;

/// Failures that are drawn, and the rows of the sample that they are.
struct Drawable {
  std::vector<DataPair> pairs;
  std::vector<std::size_t> rows;
};

/// Rows with failures whose values have a place on the axes. Others are left out
/// before the mapping: one of them would end it for all.
Drawable drawable_rows(const Sample& sample, int x_code, int y_code) {
  Drawable found;
  found.pairs.reserve(sample.size());
  found.rows.reserve(sample.size());
  for (std::size_t i = 0; i < sample.size(); ++i) {
    if (!(sample.failures[i] > 0.0)) continue;
    const DataPair pair{outer_time(sample, sample.time[i]), static_cast<double>(sample.rank[i])};
    if (!has_place(x_code, pair.x) || !has_place(y_code, pair.y)) continue;
    found.pairs.push_back(pair);
    found.rows.push_back(i);
  }
  return found;
}

/// The first point of each cell of a grid, in order.
std::vector<PlacedPoint> first_of_each_cell(const std::vector<PlacedPoint>& points, int cell) {
  std::vector<PlacedPoint> kept;
  std::unordered_set<std::uint64_t> seen;
  seen.reserve(std::min<std::size_t>(points.size(), 16384));
  for (const PlacedPoint& point : points) {
    if (!kept.empty() && kept.back().place == point.place) continue;
    const auto x = static_cast<std::uint32_t>(point.place.x / cell);
    const auto y = static_cast<std::uint32_t>(point.place.y / cell);
    if (seen.insert(std::uint64_t{x} << 32 | y).second) kept.push_back(point);
  }
  return kept;
}

bool is_within(std::int32_t at, const Extent& extent, double margin) {
  return at >= extent.begin - margin && at <= extent.end + margin;
}

int size_of(const ChartMarker& marker) { return std::abs(int{marker.Size}); }

/// Half way from one colour to another.
std::int32_t between(std::int32_t a, std::int32_t b) {
  std::int32_t mixed = 0;
  for (const int shift : {0, 8, 16})
    mixed |= (((a >> shift & 0xFF) + (b >> shift & 0xFF)) / 2) << shift;
  return mixed;
}

std::int32_t paper_colour(const ChartItem& plot) {
  return plot.Fill != 0 ? plot.FillColor : rgb(255, 255, 255);
}

/// From so many symbols on, those that nobody can tell apart are drawn once.
std::vector<Place> drawn_places(std::vector<PlacedPoint> points, int size) {
  if (points.size() > crowd) points = first_of_each_cell(points, std::max(1, size / crowd_grain));
  std::vector<Place> places;
  places.reserve(points.size());
  for (const PlacedPoint& point : points) places.push_back(point.place);
  return places;
}

}  // namespace

std::vector<PlacedPoint> visible_points(Canvas& canvas, const ChartMarker& marker,
                                        const DataSet& data) {
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  ChartAxis x_axis = canvas.chart.Axes(0);
  ChartAxis y_axis = canvas.chart.Axes(1);
  const auto [pairs, rows] = drawable_rows(data.sample(), x_scale_of(x_axis), y_scale_of(y_axis));
  constexpr std::int32_t nowhere = std::numeric_limits<std::int32_t>::min();
  std::vector<Place> places(pairs.size(), Place{nowhere, nowhere});
  xy2Long(canvas.errors, canvas.prompts, plot, x_axis, y_axis, places, pairs);
  const double margin = size_of(marker) / 2.0;  // at most half a symbol reaches over the edge
  std::vector<PlacedPoint> points;
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (!points.empty() && points.back().place == places[i]) continue;  // most of a million
    if (is_within(places[i].x, x_extent(plot), margin) &&
        is_within(places[i].y, y_extent(plot), margin))
      points.push_back({places[i], pairs[i], rows[i]});
  }
  return first_of_each_cell(points, 1);
}

bool has_symbols(const ChartMarker& marker) {
  if (marker.SymbolStyle == pen_style::none && marker.SymbolFill == 0) return false;
  return is_symbol(marker.Symbol);
}

void draw_symbols(Recorder& recorder, const ChartMarker& marker, const SymbolStamp& stamp,
                  const std::vector<Place>& places) {
  const bool solid = is_solid_symbol(marker.Symbol);
  const auto pen =
      Selected::pen(recorder, marker.SymbolStyle, marker.SymbolWidth, marker.SymbolColor);
  const auto brush = Selected::brush(recorder, marker.SymbolFill != 0 || solid,
                                     solid ? marker.SymbolColor : marker.FillColor);
  recorder.reserve(places.size() * stamp.record_count());
  for (const Place& place : places) stamp.draw(recorder, place);
}

ChartMarker look_in_crowd(const ChartMarker& marker, const ChartItem& plot, std::size_t points) {
  constexpr double few = 100;  // points, which have the marker's own look
  constexpr double smallest = 0.3;
  const double factor =
      std::clamp(std::pow(few / std::max(1.0, static_cast<double>(points)), 0.25), smallest, 1.0);
  ChartMarker look = marker;
  look.Size = static_cast<std::int16_t>(std::lround(size_of(marker) * factor));
  if (factor < 1.0 && marker.SymbolWidth != 0)
    look.SymbolWidth =
        std::max(1, static_cast<std::int32_t>(std::lround(std::abs(marker.SymbolWidth * factor))));
  if (points < crowd_of_points) return look;
  look.SymbolColor = look.FillColor = between(marker.SymbolColor, paper_colour(plot));
  return look;
}

void draw_data_points(Canvas& canvas, const ChartMarker& marker, const DataSet& data) {
  if (!has_symbols(marker)) return;
  const std::vector<PlacedPoint> points = visible_points(canvas, marker, data);
  const ChartMarker look =
      look_in_crowd(marker, canvas.chart.Boxes(chart_item::plot_box), points.size());
  draw_symbols(canvas.recorder, look, SymbolStamp(look.Symbol, look.Size),
               drawn_places(points, look.Size));
}

}  // namespace tavlo
