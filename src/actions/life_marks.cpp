#include "actions/life_marks.h"

#include <cmath>

#include "actions/shown_fits.h"
#include "chart/compose/unheard_reports.h"
#include "chart/parts/marks.h"
#include "chart/scales/plot_coordinates.h"
#include "numerics/run_time_error.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

using drawing::Place;

/// Corner and ends of the line: on the time axis, on the curve, at the percentages.
struct MarkPlaces {
  Place foot;
  Place curve;
  Place side;
};

bool is_within(const Limits& limits, double value) {
  return value >= limits.low && value <= limits.high;
}

std::optional<MarkPlaces> places_of(const Chart& chart, double x, double F) {
  UnheardReports unheard;
  try {
    const ChartItem& plot = chart.Boxes(chart_item::plot_box);
    const AxisMap across = AxisMap::x(unheard.errors, plot, chart.Axes(0));
    const AxisMap up = AxisMap::y(unheard.errors, plot, chart.Axes(1));
    if (!is_within(across.limits(), x) || !is_within(up.limits(), F)) return std::nullopt;
    const Limits xs = across.limits();
    const Limits ys = up.limits();
    return MarkPlaces{{across(x), up(ys.low)}, {across(x), up(F)}, {across(xs.low), up(F)}};
  } catch (const RunTimeError&) {  // axes without a range, or the value has no place on them
    return std::nullopt;
  }
}

std::optional<MarkPlaces> places_on(const Session& session, int fit_index, int chart,
                                    const LifeTable& table, const LifeAnswer& answer) {
  const Life life = life_of(session.project.fits(fit_index).Fits(table.slot));
  return places_of(session.project.charts(chart), *answer.time,
                   fraction_failed(life, *answer.time));
}

ChartItem drop_line(const MarkPlaces& places) {
  ChartItem mark = line_mark(places.foot, places.curve);
  mark.nPoints = 2;
  mark.PointsX.resize(2);
  mark.PointsY.resize(2);
  mark.PointsX(2) = static_cast<float>(places.side.x);
  mark.PointsY(2) = static_cast<float>(places.side.y);
  return mark;
}

}  // namespace

std::string why_not_marked(const Session& session, int fit_index, const LifeTable& table,
                           const LifeAnswer& answer) {
  if (table.slot == 0 || answer.answer.empty()) return "There is no up-to-date fit to mark.";
  if (!answer.time) return "This answer is no time: it has no place on a chart.";
  const int chart = chart_of_set(session, fit_index);
  if (chart == 0) return "The project has no chart.";
  if (!shown_colour(session, fit_index, table.slot)) return "The chart does not show this fit.";
  if (!places_on(session, fit_index, chart, table, answer))
    return "It lies outside the axes of the chart; change their limits first.";
  return {};
}

void mark_on_chart(Session& session, int fit_index, const LifeTable& table,
                   const LifeAnswer& answer) {
  if (!why_not_marked(session, fit_index, table, answer).empty()) return;
  const int index = chart_of_set(session, fit_index);
  Chart& chart = session.project.charts(index);
  const MarkPlaces places = *places_on(session, fit_index, index, table, answer);
  constexpr std::int32_t gap = 60;
  add_mark(chart, drop_line(places));
  add_mark(chart, text_mark({places.curve.x + gap, places.curve.y + gap},
                            answer.name + " = " + answer.answer));
  session.step = "Mark " + answer.name;
}

}  // namespace tavlo
