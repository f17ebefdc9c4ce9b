#include "actions/shown_parameters.h"

#include "life/models.h"
#include "numerics/real.h"

namespace tavlo {

namespace {

double reciprocal(double value) { return value == 0.0 ? 0.0 : (Real(1.0) / value).value(); }

}  // namespace

std::optional<ShownParameters> shown_parameters(int model_code, const FitParam& row) {
  switch (model_code & y_scale_mask) {
    case y_scale::normal: {
      const double sigma = reciprocal(row.Shape);
      const bool log_time = (model_code & x_scale_mask) == x_scale::log;
      if (row.Shape == 0.0 || !log_time) return ShownParameters{row.Scale, sigma};
      return ShownParameters{row.Scale, exp(Real(sigma)).value()};
    }
    case y_scale::weibull:
    case y_scale::density:
    case y_scale::gumbel: return ShownParameters{reciprocal(row.Scale), row.Shape};
    default: return std::nullopt;
  }
}

ShownParameters grid_parameters(int model_code, const FitParam& row) {
  const auto shown = shown_parameters(model_code, row);
  return shown ? *shown : ShownParameters{reciprocal(row.Scale), row.Shape};
}

}  // namespace tavlo
