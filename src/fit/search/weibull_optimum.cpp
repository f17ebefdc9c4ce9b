#include "fit/search/weibull_optimum.h"

#include <cmath>
#include <vector>

#include "fit/likelihood/log_times.h"
#include "life/models.h"

namespace tavlo {
namespace {

MixturePoint weibull_point(double beta, double ln_eta) {
  MixturePoint point{one_weibull, {}};
  point.q[0] = std::log(beta);
  point.q[1] = ln_eta;
  return point;
}

/// The line through the ordinates is the optimum already, but for the rounding.
MixturePoint on_line(const MixtureRows& rows) {
  const WeightedRows& f = rows.failures;
  double products = 0;
  for (std::size_t i = 0; i < f.count; ++i)
    products += f.w[i] * (f.x[i] - rows.mean_x) * (f.y[i] - rows.mean_y);
  const double beta =
      rows.method == method_code::x_on_y ? rows.spread_y / products : products / rows.spread_x;
  return weibull_point(beta, rows.mean_x - rows.mean_y / beta);
}

MixturePoint most_likely_on_few(const MixtureRows& all) {
  constexpr std::size_t enough = 400;
  const MixtureRows rows = thinned(all, enough);
  std::vector<double> x, w;
  for (const WeightedRows* list : {&rows.failures, &rows.suspensions}) {
    x.insert(x.end(), list->x.begin(), list->x.begin() + static_cast<long>(list->count));
    w.insert(w.end(), list->w.begin(), list->w.begin() + static_cast<long>(list->count));
  }
  const LogTimeWeibull best = most_likely_weibull({x, w, rows.failures.total, rows.mean_x}, 1);
  return weibull_point(best.beta, best.ln_eta);
}

}  // namespace

std::optional<Optimum> one_weibull_optimum(const MixtureRows& rows) {
  const WeightedRows& f = rows.failures;
  if (f.count == 0) return {};
  const bool spread = rows.spread_x > 0;
  if (!spread && rows.suspensions.count == 0) return {};
  const MixturePoint start = rows.is_likelihood() ? most_likely_on_few(rows) : on_line(rows);
  return optimum_from(rows, start, {1e300});
}

Refusal refuse_without_weibull(const MixtureRows& rows) {
  return {rows.spread_x > 0 ? RefusalCode::no_proven_optimum : RefusalCode::no_spread, {}};
}

}  // namespace tavlo
