#include "chart/data_points.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <unordered_set>
#include <vector>

#include "chart/plot_coordinates.h"
#include "chart/symbols.h"

namespace tavlo {

using namespace drawing;

namespace {

/// From so many symbols on, those that lie within a thirtieth of their size of
/// one another are drawn once: nobody can tell, and a picture stays quick.
constexpr std::size_t crowd = 3000;
constexpr int crowd_grain = 30;

/// Rows with failures whose values have a place on the axes. Others are left out
/// before the mapping: one of them would end it for all.
std::vector<DataPair> drawable_pairs(const DataSet& data, int x_code, int y_code) {
  std::vector<DataPair> pairs;
  const int last = std::min<int>(data.Count, data.Points.bound());
  for (int i = 1; i <= last; ++i) {
    const DataPoint& row = data.Points.data()[i];
    if (row.Fails > 0.0 && has_place(x_code, row.X) && has_place(y_code, row.Y))
      pairs.push_back({row.X, row.Y});
  }
  return pairs;
}

/// The first place of each cell of a grid, in order.
std::vector<Place> first_of_each_cell(const std::vector<Place>& places, int cell) {
  std::vector<Place> kept;
  std::unordered_set<std::uint64_t> seen;
  seen.reserve(std::min<std::size_t>(places.size(), 16384));
  for (const Place& place : places) {
    if (!kept.empty() && kept.back() == place) continue;
    const auto x = static_cast<std::uint32_t>(place.x / cell);
    const auto y = static_cast<std::uint32_t>(place.y / cell);
    if (seen.insert(std::uint64_t{x} << 32 | y).second) kept.push_back(place);
  }
  return kept;
}

bool is_within(std::int32_t at, const Extent& extent, double margin) {
  return at >= extent.begin - margin && at <= extent.end + margin;
}

/// Places whose symbol can be seen; at most half a symbol reaches over the edge.
std::vector<Place> visible(const std::vector<Place>& places, const ChartItem& plot, double margin) {
  const Extent across = x_extent(plot);
  const Extent down = y_extent(plot);
  std::vector<Place> kept;
  for (const Place& place : places)
    if (is_within(place.x, across, margin) && is_within(place.y, down, margin))
      kept.push_back(place);
  return kept;
}

std::vector<Place> places_of(Canvas& canvas, const DataSet& data, int size) {
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  ChartAxis x_axis = canvas.chart.Axes(0);
  ChartAxis y_axis = canvas.chart.Axes(1);
  std::vector<DataPair> pairs = drawable_pairs(data, x_scale_of(x_axis), y_scale_of(y_axis));
  constexpr std::int32_t nowhere = std::numeric_limits<std::int32_t>::min();
  std::vector<Place> places(pairs.size(), Place{nowhere, nowhere});
  xy2Long(canvas.errors, canvas.prompts, plot, x_axis, y_axis, places, pairs);
  places = first_of_each_cell(visible(places, plot, size / 2.0), 1);
  if (places.size() > crowd) places = first_of_each_cell(places, std::max(1, size / crowd_grain));
  return places;
}

}  // namespace

void draw_data_points(Canvas& canvas, const ChartMarker& marker, const DataSet& data) {
  const bool fill = marker.SymbolFill != 0;
  if (marker.SymbolStyle == pen_style::none && !fill) return;
  const int size = std::abs(int{marker.Size});
  const SymbolStamp stamp(marker.Symbol, size);
  if (stamp.record_count() == 0) return;
  const std::vector<Place> places = places_of(canvas, data, size);
  const bool solid = is_solid_symbol(marker.Symbol);
  const auto pen =
      Selected::pen(canvas.recorder, marker.SymbolStyle, marker.SymbolWidth, marker.SymbolColor);
  const auto brush = Selected::brush(canvas.recorder, fill || solid,
                                     solid ? marker.SymbolColor : marker.FillColor);
  canvas.recorder.reserve(places.size() * stamp.record_count());
  for (const Place& place : places) stamp.draw(canvas.recorder, place);
}

}  // namespace tavlo
