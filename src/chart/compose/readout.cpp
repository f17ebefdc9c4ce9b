#include "chart/compose/readout.h"

#include <algorithm>
#include <utility>

#include "chart/parts/axis_grid.h"
#include "chart/parts/data_points.h"
#include "chart/parts/fit_line.h"
#include "chart/parts/fraction_on_chart.h"
#include "chart/parts/plot_sets.h"
#include "chart/record/distance.h"
#include "chart/record/font_metrics.h"
#include "project/fit_records.h"

namespace tavlo {

using drawing::Place;

namespace {

/// The place in the sample of a row of the sheet, if it is a failure.
std::optional<std::size_t> failure_of_row(const Sample& sample, int row) {
  const auto entry = std::find(sample.entry.begin(), sample.entry.end(), row);
  const auto i = static_cast<std::size_t>(entry - sample.entry.begin());
  if (entry == sample.entry.end() || !(sample.failures[i] > 0)) return std::nullopt;
  return i;
}

double time_of(const Sample& sample, std::size_t i) { return outer_time(sample, sample.time[i]); }

}  // namespace

bool is_as_read(const DataSet& data, int row) {
  const auto i = failure_of_row(data.sample(), row);
  if (!i || data.is_read() || row > static_cast<int>(data.rows.size())) return i && data.is_read();
  const SheetRow& now = data.rows[static_cast<std::size_t>(row) - 1];
  return static_cast<float>(time_of(data.sample(), *i)) == now.time &&
         data.sample().failures[*i] == now.failures;
}

Readout::Readout(const Session& session, const Chart& chart) : session_(session), chart_(chart) {
  try {
    const ChartItem& plot = chart.Boxes(chart_item::plot_box);
    x_.emplace(AxisMap::x(unheard_.errors, plot, chart.Axes(0)));
    y_.emplace(AxisMap::readable_y(unheard_.errors, plot, chart.Axes(1)));
  } catch (const RunTimeError&) {  // axes without a range, or of an unknown scale
    x_.reset();
  }
}

// A chart that is zoomed step by step is asked for its points once it stands.
void Readout::collect() {
  if (std::exchange(is_collected_, true)) return;
  collect_sets(session_, chart_);
  collect_grid(session_, chart_);
}

void Readout::collect_sets(const Session& session, const Chart& chart) {
  MetricTextMeasure no_text;
  const std::vector<PlotSet> sets = plot_sets(session, chart);
  has_several_sets_ = !show_one_data_set(sets);
  for (const PlotSet& set : sets) {
    DrawingRecord drawing;
    Recorder recorder(drawing);
    Canvas canvas{recorder, chart, no_text, unheard_.prompts, unheard_.errors};
    const DataSet& data = session.project.data(set.data_index);
    if (has_symbols(*set.marker))
      for (const PlacedPoint& point : visible_points(canvas, *set.marker, data))
        points_.push_back({point.place, point.value, set.row, set.data_index, point.row});
    if (!set.fit) continue;
    last_fit_ = *set.fit;
    DrawData_One_Line(canvas, *set.marker, *set.fit);
    for (drawing::Record& record : drawing.records)
      if (auto* line = std::get_if<drawing::Polyline>(&record))
        lines_.push_back({std::move(line->places), *set.fit, set.row});
  }
}

std::vector<Readout::GridLine> Readout::lines_of(Canvas& canvas, const AxisMap& map,
                                                 bool is_y) const {
  std::vector<GridLine> lines;
  for (const double value : grid_lines(canvas, is_y)) lines.push_back({map(value), value});
  return lines;
}

/// A grid without a pen is not seen, and nothing is held by what is not seen.
void Readout::collect_grid(const Session& session, const Chart& chart) {
  DrawingRecord drawing;
  Recorder recorder(drawing);
  Canvas canvas{recorder, chart, session.ports.text_measure, unheard_.prompts, unheard_.errors};
  if (chart.Axes(0).MajorStyle != pen_style::none) x_lines_ = lines_of(canvas, *x_, false);
  if (chart.Axes(1).MajorStyle != pen_style::none) y_lines_ = lines_of(canvas, *y_, true);
}

DataPoint Readout::facts_of(const Point& point) const {
  const DataSet& data = session_.project.data(point.data_index);
  const Sample& sample = data.sample();
  const std::size_t i = point.sample_row;
  if (i >= sample.entry.size()) return {data.UniqueId};  // read anew since, and not drawn yet
  DataPoint facts{data.UniqueId, sample.entry[i], sample.failures[i], sample.suspensions[i]};
  if (!sample.mode.empty() && sample.mode[i] > 0) facts.mode = mode_name(data, sample.mode[i]);
  if (has_several_sets_) facts.title = data.Title;
  return facts;
}

std::optional<Place> Readout::place_of(DataPair value) const {
  if (!x_ || !has_place(x_->code(), value.x) || !has_place(y_->code(), value.y))
    return std::nullopt;
  const Place place{(*x_)(value.x), (*y_)(value.y)};
  const bool is_seen = place.x == x_->held(place.x) && place.y == y_->held(place.y);
  return is_seen ? std::optional(place) : std::nullopt;
}

std::optional<Place> Readout::place_of_row(std::int32_t data_id, int row) const {
  for (const PlotSet& set : plot_sets(session_, chart_)) {
    if (set.marker->DataId != data_id || !has_symbols(*set.marker)) continue;
    const Sample& sample = session_.project.data(set.data_index).sample();
    const auto i = failure_of_row(sample, row);
    if (!i) return std::nullopt;
    return place_of({time_of(sample, *i), static_cast<double>(sample.rank[*i])});
  }
  return std::nullopt;
}

Obstacles Readout::obstacles() {
  constexpr std::int32_t half_point = 60;  // units, of a symbol in its usual size
  Obstacles obstacles;
  if (!x_) return obstacles;
  collect();
  for (const auto& [place, value, row, data_index, sample_row] : points_)
    obstacles.add(drawing::Rectangle{place.x - half_point, place.y - half_point,
                                     place.x + half_point, place.y + half_point});
  for (const Line& line : lines_) obstacles.add_line(line.places);
  return obstacles;
}

void Readout::add_fit_sayings(Reading& reading) {
  if (!last_fit_) return;
  reading.fraction = Fd_YofX(*last_fit_, reading.x);
  const Limits x = x_->limits();
  const auto time = quantile(life_of(*last_fit_), reading.y);
  if (time && *time >= x.low && *time <= x.high) reading.time = time;
}

Reading Readout::free_at(Place place) const {
  Reading reading{x_->read(place.x), y_->read(place.y), {}, {}, SnappedTo::nothing, 0, {}};
  reading.place = {x_->held(place.x), y_->held(place.y)};
  return reading;
}

std::optional<Reading> Readout::snapped_to_point(Place place, double reach) {
  const auto nearest =
      std::min_element(points_.begin(), points_.end(), [&](const Point& a, const Point& b) {
        return distance(a.place, place) < distance(b.place, place);
      });
  if (nearest == points_.end() || distance(nearest->place, place) > reach) return std::nullopt;
  Reading reading{nearest->value.x, nearest->value.y, {}, {}, SnappedTo::point,
                  nearest->row,     nearest->place};
  reading.point = facts_of(*nearest);
  return reading;
}

std::optional<Reading> Readout::snapped_to_line(Place place, double reach) {
  std::optional<Reading> found;
  for (const Line& line : lines_) {
    const NearestPlace nearest = nearest_of_line(line.places, place);
    if (nearest.distance > reach) continue;
    reach = nearest.distance;
    const double x = x_->read(nearest.x);
    found = Reading{x,
                    Fd_YofX(line.fit, x),
                    {},
                    {},
                    SnappedTo::line,
                    line.row,
                    {to_unit(nearest.x), to_unit(nearest.y)}};
  }
  return found;
}

std::optional<Reading> Readout::snapped_to_grid(Place place, double reach) const {
  Reading reading = free_at(place);
  const auto snap = [reach](const std::vector<GridLine>& lines, std::int32_t& at, double& value) {
    const auto nearest = std::ranges::min_element(
        lines, {}, [at](const GridLine& line) { return std::abs(line.place - at); });
    if (nearest == lines.end() || std::abs(nearest->place - at) > reach) return false;
    at = nearest->place;
    value = nearest->value;
    return true;
  };
  reading.on_x_line = snap(x_lines_, reading.place.x, reading.x);
  reading.on_y_line = snap(y_lines_, reading.place.y, reading.y);
  if (reading.on_x_line || reading.on_y_line) reading.snapped = SnappedTo::grid;
  return reading;
}

template <class... Tries>
std::optional<Reading> Readout::first_of(const Tries&... tries) {
  if (!x_) return std::nullopt;
  try {
    collect();
    std::optional<Reading> reading;
    (void)((reading = tries(), reading.has_value()) || ...);
    if (reading) add_fit_sayings(*reading);
    return reading;
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

std::optional<Reading> Readout::at(Place place) {
  return first_of([&] { return free_at(place); });
}

std::optional<Reading> Readout::precise_at(Place place, double reach) {
  return first_of([&] { return snapped_to_point(place, reach); },
                  [&] { return snapped_to_line(place, reach); },
                  [&] { return snapped_to_grid(place, reach); });
}

std::optional<Reading> Readout::near_at(Place place, double reach) {
  return first_of([&] { return snapped_to_point(place, reach); },
                  [&] { return snapped_to_grid(place, reach); });
}

}  // namespace tavlo
