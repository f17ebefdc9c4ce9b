// Reading text: a reading of the chart in words, for the status bar.
#pragma once

#include <string>

#include "chart/compose/readout.h"
#include "project/chart_records.h"

namespace tavlo {

/// As "X = 200.1   Y = 30.02%   Fit: F = 13.82% at X, X = 333.2 at Y", with so many
/// significant digits; what the fit doesn't say is left out. A reading that was
/// snapped begins with "Point:", "Line:" or "Grid:"; of a point its units, failure mode
/// and row are told, "3 failures of mode Seal, row 7". Fractions are per cent where the
/// labels of the Y axis are; near to 100 % they show digits enough to tell them
/// from it.
std::string reading_text(const Reading& reading, const ChartAxis& y_axis, int digits);

/// A value of the Y axis alone, as above.
std::string y_text(double y, const ChartAxis& y_axis, int digits);

/// A fraction in per cent, as above.
std::string percent_text(double fraction, int digits);

}  // namespace tavlo
