#include "fit/mixture/populations.h"

#include <cmath>
#include <utility>

namespace tavlo {
namespace {

constexpr std::int32_t in_first = 1;
constexpr std::int32_t in_both = 3;

FitParam unreached(double fraction, std::int32_t applies) {
  return {.Scale = unreached_scale, .Fraction = fraction, .Shape = 1, .T0 = 0, .Applies = applies};
}

FitParam row_of(const MixturePoint& point, std::size_t at, double fraction, std::int32_t applies,
                int exponent) {
  return {.Scale = std::ldexp(std::exp(-point.ln_eta(at)), -exponent),
          .Fraction = fraction,
          .Shape = point.beta(at),
          .T0 = 0,
          .Applies = applies};
}

}  // namespace

double MixturePoint::beta(std::size_t at) const { return std::exp(q[at]); }

double MixturePoint::share() const {
  if (!populations.c) return 0;
  return 1 / (1 + std::exp(-q[populations.at_share()]));
}

double total_risk(const MixturePoint& point, double x) {
  const Populations& has = point.populations;
  const auto hazard = [&](std::size_t at) {
    return std::exp(point.beta(at) * (x - point.ln_eta(at)));
  };
  double risk = 0;
  if (has.a) risk += hazard(has.at_a());
  if (has.b) risk += hazard(has.at_b());
  if (has.c) risk -= std::log1p(point.share() * std::expm1(-hazard(has.at_c())));
  return risk;
}

double logit(double p) { return std::log(p) - std::log1p(-p); }

void order_risks(MixturePoint& point) {
  const Populations& has = point.populations;
  if (!has.a || !has.b) return;
  SmallVector& q = point.q;
  if (q[has.at_a()] > q[has.at_b()] ||
      (q[has.at_a()] == q[has.at_b()] && q[has.at_a() + 1] <= q[has.at_b() + 1]))
    return;
  std::swap(q[has.at_a()], q[has.at_b()]);
  std::swap(q[has.at_a() + 1], q[has.at_b() + 1]);
}

Populations populations_of(std::int16_t model) {
  switch (model & model_mask) {
    case model_code::weibull4: return competing_risks;
    case model_code::weibull5c: return early_share;
    case model_code::weibull7: return bathtub;
    default: return one_weibull;
  }
}

Life life_of(std::int16_t model, const MixturePoint& point, int exponent) {
  const Populations wanted = populations_of(model);
  const Populations& has = point.populations;
  const std::int32_t common = wanted.c ? in_both : in_first;
  const double p = point.share();
  Life life{model, {}};
  if (wanted.c)
    life.rows.push_back(has.c ? row_of(point, has.at_c(), p, in_first, exponent)
                              : unreached(0, in_first));
  life.rows.push_back(has.a ? row_of(point, has.at_a(), 1 - p, common, exponent)
                            : unreached(1 - p, common));
  if (wanted.b)
    life.rows.push_back(has.b ? row_of(point, has.at_b(), 0, common, exponent)
                              : unreached(0, common));
  return life;
}

}  // namespace tavlo
