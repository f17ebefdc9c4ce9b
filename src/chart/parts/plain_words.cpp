#include "chart/parts/plain_words.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "chart/scales/short_number.h"
#include "life/shown_parameters.h"
#include "numerics/count_text.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

constexpr int life_digits = 4;
constexpr int shape_digits = 3;
constexpr int most_digits = 12;

std::string plain_value(std::optional<double> value, int digits) {
  return value ? short_number(*value, digits) : "not determined";
}

/// How wide lives lie around the first parameter, in its unit.
double spread_of(Family family, double first, double second, double minimum_life) {
  switch (family) {
    case Family::normal:
    case Family::gumbel: return second;
    case Family::lognormal: return first * std::log(second);
    case Family::weibull:
    case Family::none: break;
  }
  return (first - (minimum_life < first ? minimum_life : 0.0)) / second;
}

/// Lives from 100000 to 100002 are not told apart by four digits.
int digits_of_row(Family family, const ShownParameters& shown, double minimum_life) {
  if (!shown.first || !shown.second) return life_digits;
  const double spread = spread_of(family, *shown.first, *shown.second, minimum_life);
  const double wanted = 2.0 + std::ceil(std::log10(std::fabs(*shown.first / spread)));
  return wanted > life_digits ? static_cast<int>(std::min<double>(wanted, most_digits))
                              : life_digits;
}

}  // namespace

std::string text_beside(double value, double bound, int digits) {
  constexpr int all_digits = 17;
  const std::string reads_as_bound = number_text(bound);
  while (value != bound && digits < all_digits && number_text(value, digits) == reads_as_bound)
    ++digits;
  return number_text(value, digits);
}

int digits_of_life(const FitResult& fit) {
  const Model* const model = find_model(fit.ModelCode);
  int digits = life_digits;
  for (int i = 1; model && i <= std::min(fit.nRows, fit.Rows.bound()); ++i)
    digits = std::max(
        digits,
        digits_of_row(model->family, shown_parameters(model->code, fit.Rows(i)), fit.Rows(i).T0));
  return digits;
}

std::string plain_fit_name(const FitResult& fit) {
  const Model* const model = find_model(fit.ModelCode);
  const Method* const method = find_method(fit.Method);
  if (!model || !method) return {};
  if (fit.is_given) return std::string(model->plain_name) + ", as given";
  std::string name = std::string(model->plain_name) + ", " + method->plain_name;
  return fit.request.censored ? name + " with suspensions" : name;
}

PlainNames plain_parameter_names(Family family) {
  switch (family) {
    case Family::normal: return {"\u03BC", "\u03C3"};
    case Family::lognormal: return {"median", "\u03C3 factor"};
    case Family::gumbel: return {"\u03BE", "\u03B4"};
    case Family::weibull:
    case Family::none: break;
  }
  return {"\u03B7", "\u03B2"};
}

PlainValues plain_values(const Model& model, const FitParam& row) {
  const ShownParameters shown = shown_parameters(model.code, row);
  const int digits = digits_of_row(model.family, shown, row.T0);
  return {plain_value(shown.first, digits), plain_value(shown.second, shape_digits),
          row.T0 != 0 ? short_number(row.T0, digits) : ""};
}

std::string plain_share(double share) { return text_beside(100 * share, 100, shape_digits) + " %"; }

std::string plain_quality(int method, double quality) {
  if (method == method_code::mle) return "ln L = " + number_text(std::round(100 * quality) / 100);
  return "r\u00B2 = " + text_beside(quality, 1, life_digits);
}

std::string plain_quality(const FitResult& fit) {
  return fit.is_given ? "as given" : plain_quality(fit.Method, fit.Quality);
}

std::string plain_totals(const Sample& sample) {
  const std::string failures = counted(sample.total_failures, "failure");
  if (!(sample.total_suspensions > 0)) return failures;
  return failures + ", " + counted(sample.total_suspensions, "suspension");
}

}  // namespace tavlo
