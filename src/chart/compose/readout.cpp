#include "chart/compose/readout.h"

#include <algorithm>

#include "chart/parts/data_points.h"
#include "chart/parts/fit_line.h"
#include "chart/parts/fraction_on_chart.h"
#include "chart/parts/plot_sets.h"
#include "chart/record/distance.h"
#include "chart/record/font_metrics.h"
#include "project/fit_records.h"

namespace tavlo {

using drawing::Place;

Readout::Readout(const Session& session, const Chart& chart) {
  try {
    const ChartItem& plot = chart.Boxes(chart_item::plot_box);
    x_.emplace(AxisMap::x(unheard_.errors, plot, chart.Axes(0)));
    y_.emplace(AxisMap::readable_y(unheard_.errors, plot, chart.Axes(1)));
    collect(session, chart);
  } catch (const RunTimeError&) {  // axes without a range, or of an unknown scale
    x_.reset();
  }
}

void Readout::collect(const Session& session, const Chart& chart) {
  MetricTextMeasure no_text;
  for (const PlotSet& set : plot_sets(session, chart)) {
    DrawingRecord drawing;
    Recorder recorder(drawing);
    Canvas canvas{recorder, chart, no_text, unheard_.prompts, unheard_.errors};
    const DataSet& data = session.project.data(set.data_index);
    if (has_symbols(*set.marker))
      for (const PlacedPoint& point : visible_points(canvas, *set.marker, data))
        points_.push_back({point.place, point.value, set.row});
    if (!set.fit) continue;
    last_fit_ = *set.fit;
    DrawData_One_Line(canvas, *set.marker, *set.fit);
    for (drawing::Record& record : drawing.records)
      if (auto* line = std::get_if<drawing::Polyline>(&record))
        lines_.push_back({std::move(line->places), *set.fit, set.row});
  }
}

void Readout::add_fit_sayings(Reading& reading) {
  if (!last_fit_) return;
  reading.fraction = Fd_YofX(*last_fit_, reading.x);
  const Limits x = x_->limits();
  const auto time = quantile(life_of(*last_fit_), reading.y);
  if (time && *time >= x.low && *time <= x.high) reading.time = time;
}

std::optional<Reading> Readout::at(Place place) {
  if (!x_) return std::nullopt;
  try {
    Reading reading{x_->read(place.x), y_->read(place.y), {}, {}, SnappedTo::nothing, 0, {}};
    reading.place = {x_->held(place.x), y_->held(place.y)};
    add_fit_sayings(reading);
    return reading;
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

std::optional<Reading> Readout::snapped_to_point(Place place, double reach) {
  const auto nearest =
      std::min_element(points_.begin(), points_.end(), [&](const Point& a, const Point& b) {
        return distance(a.place, place) < distance(b.place, place);
      });
  if (nearest == points_.end() || distance(nearest->place, place) > reach) return std::nullopt;
  return Reading{nearest->value.x, nearest->value.y, {}, {}, SnappedTo::point,
                 nearest->row,     nearest->place};
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

std::optional<Reading> Readout::precise_at(Place place, double reach) {
  if (!x_) return std::nullopt;
  try {
    std::optional<Reading> snapped = snapped_to_point(place, reach);
    if (!snapped) snapped = snapped_to_line(place, reach);
    if (!snapped) return at(place);
    add_fit_sayings(*snapped);
    return snapped;
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

}  // namespace tavlo
