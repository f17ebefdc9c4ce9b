#include "chart/parts/plain_words.h"

#include <algorithm>
#include <cmath>

#include "chart/scales/short_number.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

constexpr int life_digits = 4;
constexpr int shape_digits = 3;
constexpr int most_digits = 12;

std::string value_text(std::optional<double> value, int digits) {
  return value ? short_number(*value, digits) : "not determined";
}

/// A number next to a bound must not read as the bound itself.
std::string text_beside(double value, double bound, int digits) {
  const std::string reads_as_bound = number_text(bound);
  while (value != bound && digits < most_digits && number_text(value, digits) == reads_as_bound)
    ++digits;
  return number_text(value, digits);
}

std::string counted(double count, const char* one, const char* many) {
  return number_text(count) + " " + (count == 1.0 ? one : many);
}

}  // namespace

std::string plain_fit_name(const FitResult& fit) {
  const Model* const model = find_model(fit.ModelCode);
  const Method* const method = find_method(fit.Method);
  if (!model || !method) return {};
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

std::string plain_life(std::optional<double> value) { return value_text(value, life_digits); }
std::string plain_shape(std::optional<double> value) { return value_text(value, shape_digits); }

std::string plain_share(double share) { return text_beside(100 * share, 100, shape_digits) + " %"; }

std::string plain_quality(int method, double quality) {
  if (method == method_code::mle) return "ln L = " + number_text(std::round(100 * quality) / 100);
  return "r\u00B2 = " + text_beside(quality, 1, life_digits);
}

std::string plain_quality(const FitResult& fit) { return plain_quality(fit.Method, fit.Quality); }

std::string plain_totals(const DataSet& data) {
  const DataPoint& totals = data.Points(0);
  const std::string failures = counted(totals.Fails, "failure", "failures");
  if (!(totals.Susps > 0)) return failures;
  return failures + ", " + counted(totals.Susps, "suspension", "suspensions");
}

}  // namespace tavlo
