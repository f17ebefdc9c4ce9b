#include "fit/search/weibull_optimum.h"

#include <algorithm>
#include <cmath>

namespace tavlo {
namespace {

/// ln eta of the highest likelihood at a slope; it suits a regression too.
double best_ln_eta(const MixtureRows& rows, double beta) {
  const double top = rows.suspensions.count == 0
                         ? rows.failures.x[rows.failures.count - 1]
                         : std::max(rows.failures.x[rows.failures.count - 1],
                                    rows.suspensions.x[rows.suspensions.count - 1]);
  double sum = 0;
  for (const WeightedRows* list : {&rows.failures, &rows.suspensions})
    for (std::size_t i = 0; i < list->count; ++i)
      sum += list->w[i] * std::exp(beta * (list->x[i] - top));
  return top + std::log(sum / rows.failures.total) / beta;
}

}  // namespace

std::optional<Optimum> one_weibull_optimum(const MixtureRows& rows) {
  const WeightedRows& f = rows.failures;
  if (f.count == 0) return {};
  const bool spread = rows.spread_x > 0;
  if (!spread && rows.suspensions.count == 0) return {};
  constexpr double unit_deviation = 1.2825;  // of ln of a unit exponential
  MixturePoint start{one_weibull, {}};
  start.q[0] = spread ? std::log(unit_deviation / std::sqrt(rows.spread_x / f.total)) : 0.0;
  start.q[1] = best_ln_eta(rows, start.beta(0));
  return optimum_from(rows, start, {1e300});
}

}  // namespace tavlo
