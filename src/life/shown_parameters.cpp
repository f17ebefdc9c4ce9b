#include "life/shown_parameters.h"

#include <cmath>

namespace tavlo {

namespace {

std::optional<double> if_finite(double value) {
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

/// Nothing for 0 too.
std::optional<double> reciprocal(double value) { return if_finite(1 / value); }

}  // namespace

ShownParameters shown_parameters(int model_code, const FitParam& row) {
  const Model* model = find_model(model_code);
  switch (model ? model->family : Family::none) {
    case Family::normal: return {row.Scale, reciprocal(row.Shape)};
    case Family::lognormal: return {row.Scale, if_finite(std::exp(1 / row.Shape))};
    case Family::gumbel: return {reciprocal(row.Scale), row.Shape};
    case Family::weibull:
    case Family::none: break;
  }
  if (is_unreached(row) || row.Scale == 0) return {};
  return {reciprocal(row.Scale), row.Shape};
}

}  // namespace tavlo
