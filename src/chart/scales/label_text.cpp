// The texts of axis labels: how many decimals a value needs, plain or with an
// exponent.
#include <algorithm>
#include <cmath>

#include "chart/scales/axis_labels.h"
#include "chart/scales/round_ticks.h"
#include "chart/scales/short_number.h"
#include "numerics/number_text.h"
#include "numerics/rounding.h"

namespace tavlo {

namespace {

constexpr std::size_t longest_pattern = 16;
constexpr const char* last_pattern = "0.00E+00";
constexpr int exact_digits = 12;  // hides the noise of binary fractions

bool has_exponent(std::string_view pattern) { return pattern.find('E') != pattern.npos; }
bool is_percent(std::string_view pattern) { return pattern.find('%') != pattern.npos; }

int decimals_of(std::string_view pattern) {
  const std::size_t point = pattern.find('.');
  if (point == pattern.npos) return 0;
  const std::size_t end = std::min(pattern.find_first_not_of("0#", point + 1), pattern.size());
  return static_cast<int>(end - point - 1);
}

/// Whether the value is told by the pattern's decimals, to within `close`. Exact
/// equality would never hold for 3 x 0.1 or 0.07 x 100.
bool tells(std::string_view pattern, double value, double close = 0.0) {
  if (has_exponent(pattern)) return true;
  const double percent = is_percent(pattern) ? 100.0 : 1.0;
  const double shown = value * percent;
  const double unit = std::pow(10.0, decimals_of(pattern));
  const double tolerance = std::max(1e-9 * std::fabs(shown), close * percent);
  return std::fabs(round_half_even(shown * unit) / unit - shown) <= tolerance;
}

std::string grown_to_tell(std::string pattern, double value, double close = 0.0) {
  while (!tells(pattern, value, close)) pattern = with_one_decimal_more(pattern);
  return pattern;
}

/// How near to a limit its label comes. A limit may hold digits that nobody asked
/// for, as after a zoom: three of them place it on any axis.
double close_to_limit(int code, double value, Limits limits) {
  const double range = std::fabs(limits.high - limits.low);
  if (is_probability_scale(code))
    return std::min(3e-3 * std::min(value, 1.0 - value), 0.01 * range);
  return needs_positive(code) ? 3e-3 * std::min(std::fabs(value), range) : 1e-4 * range;
}

/// The same in the general form: enough to place it on the axis.
std::string limit_text(double value, Limits limits) {
  const double close = 1e-4 * std::fabs(limits.high - limits.low);
  for (int digits = 3; digits < exact_digits; ++digits) {
    const auto read = parse_number(number_text(value, digits));
    if (read && std::fabs(*read - value) <= close) return short_number(value, digits);
  }
  return short_number(value, exact_digits);
}

bool is_evenly_spaced(const ScalePoints& points) { return points.minor(0) > 0.0; }

/// One pattern for ticks in equal steps: "0.5", "1.0", "1.5".
std::string common_pattern(std::string pattern, const ScalePoints& points) {
  for (int i = 1; i <= points.major.bound(); ++i) pattern = grown_to_tell(pattern, points.major(i));
  return pattern;
}

/// Plain decimals suit ticks in equal steps unless the numbers are very long.
bool plain_suits(const ScalePoints& points, std::string_view pattern) {
  double largest = 0;
  for (int i = 1; i <= points.major.bound(); ++i)
    largest = std::max(largest, std::fabs(points.major(i)));
  return !has_exponent(pattern) && pattern.size() <= 9 && largest < 1e7;
}

/// How the ticks of one axis become text. An empty pattern is the general form.
struct Form {
  std::string pattern;
  bool grows = false;  ///< each value by itself

  std::string text(double value) const {
    if (pattern.empty()) return short_number(value, exact_digits);
    return format_number(value, grows ? grown_to_tell(pattern, value) : pattern);
  }
};

Form form_of(const ChartAxis& axis, int code, const ScalePoints& points,
             const char* usual_percentage) {
  std::string pattern = axis.Label.Text2;
  if (pattern.empty() && is_probability_scale(code)) pattern = usual_percentage;
  const bool even = is_evenly_spaced(points);
  if (pattern.empty() && even) {
    pattern = common_pattern("0", points);
    return plain_suits(points, pattern) ? Form{pattern, false} : Form{};
  }
  if (pattern.empty() || !needs_positive(code)) return {pattern, false};
  return even ? Form{common_pattern(pattern, points), false} : Form{pattern, true};
}

std::vector<AxisLabel> labels_of(const ScalePoints& points, const Form& form) {
  std::vector<AxisLabel> labels;
  for (int i = 1; i <= points.major.bound(); ++i)
    labels.push_back({points.major(i), form.text(points.major(i))});
  return labels;
}

bool neighbours_are_alike(std::vector<AxisLabel> labels) {
  std::sort(labels.begin(), labels.end(),
            [](const AxisLabel& a, const AxisLabel& b) { return a.value < b.value; });
  return std::adjacent_find(labels.begin(), labels.end(),
                            [](const AxisLabel& a, const AxisLabel& b) {
                              return a.text == b.text && a.value != b.value;
                            }) != labels.end();
}

/// The form grows until no two neighbours read the same.
std::vector<AxisLabel> distinct_labels(const ScalePoints& points, Form& form) {
  std::vector<AxisLabel> labels = labels_of(points, form);
  while (!form.pattern.empty() && !has_exponent(form.pattern) && neighbours_are_alike(labels)) {
    form.pattern = with_one_decimal_more(form.pattern);
    labels = labels_of(points, form);
  }
  return labels;
}

/// Decades first on a log axis, so that they keep their labels in a crowd.
void put_decades_first(std::vector<AxisLabel>& labels) {
  std::stable_partition(labels.begin(), labels.end(), [](const AxisLabel& label) {
    const double power = std::log10(std::fabs(label.value));
    return std::fabs(power - std::round(power)) < 1e-9;
  });
}

/// The middle of a probability axis first, then 0.1 % and 99.9 %, and so on; the
/// levels of one decade keep the order of their table.
void put_middle_first(std::vector<AxisLabel>& labels) {
  const auto tail = [](const AxisLabel& label) {
    const double share = std::min(label.value, 1.0 - label.value);
    return share >= 0.0099 ? 0.0 : -std::round(std::log10(share));
  };
  std::stable_sort(labels.begin(), labels.end(),
                   [&](const AxisLabel& a, const AxisLabel& b) { return tail(a) < tail(b); });
}

std::string label_of_limit(const Form& form, bool is_general, int code, double value,
                           Limits limits) {
  if (is_general && (form.pattern.empty() || !tells(form.pattern, value)))
    return limit_text(value, limits);
  const double close = close_to_limit(code, value, limits);
  return format_number(value, grown_to_tell(form.pattern, value, close));
}

}  // namespace

std::string with_one_decimal_more(std::string_view pattern) {
  if (has_exponent(pattern)) return std::string(pattern);
  std::string grown(pattern);
  const std::size_t last_digit = grown.find_last_of("0#");
  if (last_digit == grown.npos) {
    grown.insert(0, "0.0");
  } else {
    grown.insert(last_digit + 1, grown.find('.') == grown.npos ? ".0" : "0");
  }
  return grown.size() > longest_pattern ? last_pattern : grown;
}

std::vector<AxisLabel> axis_labels(const ChartAxis& axis, int code, const ScalePoints& points,
                                   Limits limits) {
  Form form = form_of(axis, code, points, "0%");
  std::vector<AxisLabel> labels = distinct_labels(points, form);
  if (!is_evenly_spaced(points) && is_probability_scale(code)) put_middle_first(labels);
  const bool is_general = axis.Label.Text2.empty() && !is_probability_scale(code);
  for (const double limit : {limits.low, limits.high})
    labels.push_back({limit, label_of_limit(form, is_general, code, limit, limits)});
  if (!is_evenly_spaced(points) && !is_probability_scale(code)) put_decades_first(labels);
  return labels;
}

std::vector<AxisLabel> round_labels(const ChartAxis& axis, int code, const ScalePoints& points) {
  Form form = form_of(axis, code, points, "0 %");
  return distinct_labels(points, form);
}

}  // namespace tavlo
