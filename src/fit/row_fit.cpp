#include "fit/row_fit.h"

#include <cmath>
#include <numbers>

namespace tavlo {
namespace {

void scale_up(const Model& model, FitParam& row, int exponent) {
  row.T0 = std::ldexp(row.T0, exponent);
  switch (model.family) {
    case Family::normal:
      row.Scale = std::ldexp(row.Scale, exponent);
      row.Shape = std::ldexp(row.Shape, -exponent);
      return;
    case Family::lognormal: row.Scale = std::ldexp(row.Scale, exponent); return;
    case Family::gumbel:
      row.Scale = std::ldexp(row.Scale, -exponent);
      row.Shape = std::ldexp(row.Shape, exponent);
      return;
    case Family::weibull:
    case Family::none:
      if (!is_unreached(row)) row.Scale = std::ldexp(row.Scale, -exponent);
  }
}

/// A normal mu may be 0; all other scales are divisors or lives.
bool is_held(const Model& model, const FitParam& row) {
  const bool shape = std::isnormal(row.Shape) && std::isfinite(1 / row.Shape);
  if (model.family == Family::normal) return shape && std::isfinite(row.Scale);
  return shape && std::isnormal(row.Scale) && std::isfinite(1 / row.Scale);
}

}  // namespace

Life in_outer_unit(Life inner, int exponent) {
  if (const Model* model = find_model(inner.model))
    for (FitParam& row : inner.rows) scale_up(*model, row, exponent);
  return inner;
}

double ln_likelihood_in_outer_unit(double inner, double failures, int exponent) {
  return inner - failures * (exponent * std::numbers::ln2);
}

std::variant<Refusal, FitParam> outer_row(std::int16_t model, const FitParam& inner, int exponent) {
  const FitParam row = in_outer_unit({model, {inner}}, exponent).rows.front();
  if (!is_held(*find_model(model), row)) return Refusal{RefusalCode::scale_beyond_numbers, {}};
  return row;
}

}  // namespace tavlo
