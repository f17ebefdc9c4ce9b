#include "fit/search/weibull_optimum.h"

#include <cmath>

namespace tavlo {

std::optional<Optimum> one_weibull_optimum(const MixtureRows& rows) {
  const WeightedRows& f = rows.failures;
  if (f.count == 0 || !(rows.spread_x > 0)) return {};
  const double deviation = std::sqrt(rows.spread_x / f.total);
  constexpr double unit_deviation = 1.2825;  // of ln of a unit exponential
  MixturePoint start{one_weibull, {}};
  start.q[0] = std::log(unit_deviation / deviation);
  start.q[1] = rows.mean_x + 0.5772 * deviation / unit_deviation;
  return optimum_from(rows, start, {1e300});
}

}  // namespace tavlo
