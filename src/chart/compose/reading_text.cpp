#include "chart/compose/reading_text.h"

#include <algorithm>
#include <cmath>

#include "chart/scales/plot_coordinates.h"
#include "numerics/number_text.h"
#include "numerics/rounding.h"

namespace tavlo {

namespace {

constexpr const char* gap = "   ";
constexpr int usual_digits = 7;  // of a count

bool is_labelled_in_percent(const ChartAxis& y_axis) {
  const std::string& pattern = y_axis.Label.Text2;
  if (pattern.empty()) return is_probability_scale(y_scale_of(y_axis));
  return pattern.find('%') != std::string::npos;
}

/// More digits for a fraction near 1, whose distance from 1 has as many.
int digits_of(double fraction, int digits) {
  constexpr int most = 15;
  if (!(fraction > 0.5 && fraction < 1.0)) return digits;
  return std::min(most, digits - ToInt32(std::ceil(std::log10(1.0 - fraction))));
}

std::string fraction_text(double fraction, bool percent, int digits) {
  const int shown = digits_of(fraction, digits);
  return percent ? number_text(100.0 * fraction, shown) + "%" : number_text(fraction, shown);
}

const char* place_words(SnappedTo snapped) {
  switch (snapped) {
    case SnappedTo::point: return "Point:  ";
    case SnappedTo::line: return "Line:  ";
    case SnappedTo::grid: return "Grid:  ";
    default: return "";
  }
}

std::string units(double count, const char* one) {
  return number_text(count, usual_digits) + " " + one + (count == 1.0 ? "" : "s");
}

std::string point_sayings(const DataPoint& point) {
  std::string words = gap + units(point.failures, "failure");
  if (!point.mode.empty()) words += " of mode " + point.mode;
  if (point.suspensions > 0) words += ", " + units(point.suspensions, "suspension");
  words += ", row " + std::to_string(point.row);
  return point.title.empty() ? words : words + " of " + point.title;
}

std::string fit_sayings(const Reading& reading, bool percent, int digits) {
  std::string words;
  if (reading.fraction)
    words = "F = " + fraction_text(*reading.fraction, percent, digits) + " at X";
  if (reading.time)
    words += (words.empty() ? "X = " : ", X = ") + number_text(*reading.time, digits) + " at Y";
  return words.empty() ? words : gap + ("Fit:  " + words);
}

}  // namespace

std::string y_text(double y, const ChartAxis& y_axis, int digits) {
  const bool percent = is_labelled_in_percent(y_axis);
  const bool is_fraction = percent || is_probability_scale(y_scale_of(y_axis));
  return is_fraction ? fraction_text(y, percent, digits) : number_text(y, digits);
}

std::string percent_text(double fraction, int digits) {
  return fraction_text(fraction, true, digits);
}

std::string reading_text(const Reading& reading, const ChartAxis& y_axis, int digits) {
  const bool percent = is_labelled_in_percent(y_axis);
  const std::string y = y_text(reading.y, y_axis, digits);
  return place_words(reading.snapped) + ("X = " + number_text(reading.x, digits)) + gap +
         "Y = " + y + (reading.point ? point_sayings(*reading.point) : "") +
         fit_sayings(reading, percent, digits);
}

}  // namespace tavlo
