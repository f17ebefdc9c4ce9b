#include "life/mean_life.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "numerics/infinity.h"

namespace tavlo {

namespace {

double weibull_mean(const FitParam& row) {
  return row.T0 + std::tgamma(1 + 1 / row.Shape) / row.Scale;
}

/// E(X) of one population that all units belong to.
std::optional<double> closed_mean(const Model& model, const FitParam& row) {
  switch (model.family) {
    case Family::weibull: return weibull_mean(row);
    case Family::normal: return row.Scale;
    case Family::lognormal: return row.T0 + row.Scale * std::exp(0.5 / (row.Shape * row.Shape));
    case Family::gumbel: {
      const double side = model.code == model_code::gumbel_upper ? 1 : -1;
      return 1 / row.Scale + side * std::numbers::egamma * row.Shape;
    }
    case Family::none: break;
  }
  return model.code == model_code::by_failure_mode ? std::optional(weibull_mean(row))
                                                   : std::nullopt;
}

using Risks = std::vector<const FitParam*>;

double survival(const Risks& risks, double x) {
  double hazard = 0;
  for (const FitParam* risk : risks)
    if (x > risk->T0) hazard += std::pow((x - risk->T0) * risk->Scale, risk->Shape);
  return std::exp(-hazard);
}

double time_of_hazard(const FitParam& risk, double hazard) {
  return risk.T0 + std::pow(hazard, 1 / risk.Shape) / risk.Scale;
}

/// Where the survival bends: the places at which a risk alone has gone through these hazards.
/// Between two of them it is smooth enough for a rule of Gauss; behind the last one nobody
/// is left.
std::vector<double> bends(const Risks& risks) {
  constexpr double over = 745;
  double end = infinity;
  for (const FitParam* risk : risks) end = std::min(end, time_of_hazard(*risk, over));
  std::vector<double> places = {0, end};
  for (const FitParam* risk : risks) {
    places.push_back(risk->T0);
    for (const double hazard :
         {1e-18, 1e-12, 1e-9, 1e-6, 1e-4, 1e-3, 1e-2, 0.1, 0.3, 1., 3., 10., 30., 100., 300.})
      places.push_back(time_of_hazard(*risk, hazard));
  }
  std::erase_if(places, [&](double x) { return !(x >= 0 && x <= end); });
  std::sort(places.begin(), places.end());
  places.erase(std::unique(places.begin(), places.end()), places.end());
  return places;
}

/// By Gauss' rule of ten points (Abramowitz and Stegun, table 25.4) on four equal parts.
template <class Function>
double integral(const Function& function, double from, double to) {
  constexpr std::array<double, 5> places = {0.1488743389816312, 0.4333953941292472,
                                            0.6794095682990244, 0.8650633666889845,
                                            0.9739065285171717};
  constexpr std::array<double, 5> weights = {0.2955242247147529, 0.2692667193099963,
                                             0.2190863625159820, 0.1494513491505806,
                                             0.0666713443086881};
  constexpr int parts = 4;
  const double half = (to - from) / (2 * parts);
  double sum = 0;
  for (int part = 0; part < parts; ++part) {
    const double middle = from + (2 * part + 1) * half;
    for (std::size_t i = 0; i < places.size(); ++i)
      sum +=
          weights[i] * (function(middle - half * places[i]) + function(middle + half * places[i]));
  }
  return half * sum;
}

/// The least of what the risks draw: the integral of the survival from 0 on. A minimum life
/// is never below 0.
double mean_of_least(const Risks& risks) {
  if (risks.size() == 1) return weibull_mean(*risks.front());
  const std::vector<double> places = bends(risks);
  if (places.size() < 2 || !std::isfinite(places.back())) return infinity;
  const auto by_time = [&](double x) { return survival(risks, x); };
  const auto by_logarithm = [&](double u) { return std::exp(u) * survival(risks, std::exp(u)); };
  // Of small slopes a piece spans decades. The first one has no logarithm, and next to no area.
  double sum = integral(by_time, places[0], places[1]);
  for (std::size_t i = 2; i < places.size(); ++i)
    sum += integral(by_logarithm, std::log(places[i - 1]), std::log(places[i]));
  return sum;
}

bool can_fail(const FitParam& row) { return row.Scale > 0 && !is_unreached(row); }

constexpr std::int32_t every_risk = 0;

/// The mean until the first failure of the risks that act in the term of this bit.
double mean_until_first(const Life& life, std::int32_t bit) {
  Risks risks;
  for (const FitParam& row : life.rows)
    if (can_fail(row) && (bit == every_risk || (row.Applies & bit) != 0)) risks.push_back(&row);
  return risks.empty() ? infinity : mean_of_least(risks);
}

/// Terms as `Life` has them: the share of a row with a share, in which the risks of its bit act.
double mean_of_mixture(const Life& life) {
  double mean = 0;
  std::int32_t bit = 1;
  for (std::size_t i = 0; i < std::min<std::size_t>(life.rows.size(), 30); ++i, bit *= 2)
    if (const double share = life.rows[i].Fraction; share > 0)
      mean += share * mean_until_first(life, bit);
  return mean;
}

bool is_determined(const Model& model, const FitParam& row) {
  const bool scale_may_be_any = model.family == Family::normal || model.family == Family::gumbel;
  return (scale_may_be_any ? std::isfinite(row.Scale) : row.Scale > 0) &&
         std::isfinite(row.Scale) && (row.Shape > 0 || is_unreached(row)) &&
         std::isfinite(row.Shape);
}

}  // namespace

double share_that_fails(const Life& life) { return fraction_failed(life, infinity); }

std::optional<double> mean_life(const Life& life) {
  const Model* model = find_model(life.model);
  if (!model || life.rows.empty()) return std::nullopt;
  for (const FitParam& row : life.rows)
    if (!is_determined(*model, row)) return std::nullopt;
  const bool by_mode = model->code == model_code::by_failure_mode;
  const bool weibulls = by_mode || model->family == Family::weibull;
  const FitParam& first = life.rows.front();
  const bool survivors = weibulls && (!can_fail(first) || first.Fraction < 1);
  if (life.rows.size() == 1)
    return survivors && !by_mode ? std::optional(infinity) : closed_mean(*model, first);
  if (!weibulls) return std::nullopt;
  return by_mode ? mean_until_first(life, every_risk) : mean_of_mixture(life);
}

}  // namespace tavlo
