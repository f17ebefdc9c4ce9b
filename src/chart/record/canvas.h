// Canvas: what the parts of a chart are drawn with, and how text is measured in
// the chart's logical units.
#pragma once

#include <string>

#include "chart/record/recorder.h"
#include "numerics/error_reporter.h"
#include "ports/ports.h"
#include "project/chart_records.h"

namespace tavlo {

/// Borrowed for the time of one composition.
struct Canvas {
  Recorder& recorder;
  const Chart& chart;
  TextMeasure& text_measure;
  Prompts& prompts;
  ErrorReporter& errors;
};

/// Extent in logical units.
struct TextSize {
  double width = 0;
  double height = 0;
};

/// Room of one line of text in the font of an item; `scale` is units a point.
TextSize text_size(TextMeasure& measure, const std::string& text, const ChartItem& item,
                   double scale = units_per_point);

/// Text that would vanish on its own background is drawn in the item's line
/// colour: the factory's boxes hold white on white.
std::int32_t readable_text_colour(const ChartItem& item);

/// Nearest whole unit, held within 32 bits; 0 for what is no number.
std::int32_t to_unit(double value);

}  // namespace tavlo
