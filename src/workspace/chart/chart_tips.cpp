#include "workspace/chart/chart_tips.h"

#include <QCoreApplication>

#include "chart/compose/chart_parts.h"
#include "chart/compose/reading_text.h"
#include "chart/parts/legend.h"
#include "chart/parts/plot_sets.h"
#include "workspace/chart/movable_parts.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr double tip_reach = 8;  // pixels
constexpr int tip_digits = 7;

QString tip_words(const char* text) { return QCoreApplication::translate("ChartTips", text); }

QString tip_of_part(ChartPart part) {
  switch (part) {
    case ChartPart::titles: return tip_words("Titles: a double click opens their format");
    case ChartPart::x_axis:
      return tip_words("X axis: the wheel zooms it alone, a double click opens its format");
    case ChartPart::y_axis:
      return tip_words("Y axis: the wheel zooms it alone, a double click opens its format");
    case ChartPart::insets:
      return tip_words("Drag it to another place; a double click opens its format");
    case ChartPart::notes:
      return tip_words("File name and date: a double click opens their format");
    case ChartPart::boxes:
    case ChartPart::plot_sets: break;
  }
  return {};
}

/// Which data and which fit the line is.
QString tip_of_line(ChartStage& stage, int row) {
  for (const PlotSet& set : plot_sets(stage.session(), stage.chart()))
    if (set.row == row && set.fit)
      return to_qt(set_title(stage.session(), set) + ", " + fit_name(*set.fit));
  return {};
}

QString tip_of_plot(ChartStage& stage, drawing::Place place) {
  const auto reading = stage.readout().precise_at(place, stage.units(tip_reach));
  if (!reading) return {};
  if (reading->snapped == SnappedTo::line) return tip_of_line(stage, reading->row);
  if (reading->snapped != SnappedTo::point) return {};
  return to_qt(reading_text(*reading, stage.chart().Axes(1), tip_digits)) +
         tip_words("\nA click selects its row in the sheet");
}

}  // namespace

QString chart_tip(ChartStage& stage, const QPointF& at) {
  const drawing::Place place = stage.place(at);
  if (part_at(stage, place).is_mark())
    return tip_words("A mark: drag it to another place, double click to change it, Del deletes it");
  const ChartPart part =
      chart_part_at(stage.session(), stage.chart(), stage.drawing(), place, stage.units(tip_reach));
  const bool is_in_plot = part == ChartPart::boxes || part == ChartPart::plot_sets;
  return is_in_plot ? tip_of_plot(stage, place) : tip_of_part(part);
}

}  // namespace tavlo
