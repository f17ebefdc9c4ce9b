#include "life/quantile_walk.h"

#include <cmath>

#include "numerics/infinity.h"

namespace tavlo {

QuantileWalk::Place QuantileWalk::at(double ln_time) const {
  const double x = std::exp(ln_time);
  const double R = reliability(life_, x);
  const double hazard = R > 0.5 ? -std::log1p(-fraction_failed(life_, x)) : -std::log(R);
  return {std::log(hazard), std::exp(ln_density(life_, x) + ln_time) / (R * hazard)};
}

std::optional<double> QuantileWalk::operator()(double p) {
  constexpr double precision = 1e-10;
  constexpr int most_steps = 60;
  const double target = std::log(-std::log1p(-p));
  double low = last_ > 0 ? std::log(last_) : -infinity;
  double high = infinity;
  double now = low;
  for (int step = 0; last_ > 0 && step < most_steps; ++step) {
    const Place place = at(now);
    const double short_by = target - place.ln_hazard;
    (short_by > 0 ? low : high) = now;
    double next = now + short_by / place.slope;
    if (!std::isfinite(next)) break;
    if (std::abs(next - now) <= precision) return last_ = std::exp(next);
    if (next <= low || next >= high) next = high < infinity ? 0.5 * (low + high) : low + 1;
    now = next;
  }
  const auto found = quantile(life_, p);
  last_ = found.value_or(0);
  return found;
}

}  // namespace tavlo
