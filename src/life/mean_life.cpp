#include "life/mean_life.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace tavlo {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double beyond = std::numeric_limits<double>::quiet_NaN();

double or_beyond(double mean) { return std::isfinite(mean) ? mean : beyond; }

double mean_of_one(const Model& model, const FitParam& row) {
  if (is_unreached(row)) return infinity;
  switch (model.family) {
    case Family::normal: return row.Scale;
    case Family::lognormal:
      return or_beyond(row.T0 + row.Scale * std::exp(0.5 / (row.Shape * row.Shape)));
    case Family::gumbel: {
      const double shift = std::numbers::egamma * row.Shape;
      const bool is_upper = model.code == model_code::gumbel_upper;
      return or_beyond(1 / row.Scale + (is_upper ? shift : -shift));
    }
    case Family::weibull:
    case Family::none: break;
  }
  return or_beyond(row.T0 + std::tgamma(1 + 1 / row.Shape) / row.Scale);
}

/// Nothing worth a digit fails before the first time or survives the last one; between them
/// Simpson's rule on the logarithm of time.
double integral_of_reliability(const Life& life) {
  constexpr double none = 1e-12;
  constexpr int steps = 8192;
  const auto first = quantile(life, none);
  const auto last = quantile(life, 1 - std::numeric_limits<double>::epsilon());
  if (!first || !last || !(*first > 0)) return beyond;
  const double begin = std::log(*first);
  const double step = (std::log(*last) + 0.5 - begin) / steps;
  double sum = 0;
  for (int i = 0; i <= steps; ++i) {
    const double t = std::exp(begin + i * step);
    const double weight = i == 0 || i == steps ? 1 : (i % 2 == 1 ? 4 : 2);
    sum += weight * t * reliability(life, t);
  }
  return or_beyond(*first + sum * step / 3);
}

double mean_of_risks(const Model& model, const Life& term) {
  return term.rows.size() == 1 ? mean_of_one(model, term.rows[0]) : integral_of_reliability(term);
}

/// The risks that act in the population `bit`, as a life of their own.
Life term_of(const Life& life, std::int32_t bit) {
  Life term{life.model, {}};
  for (const FitParam& row : life.rows)
    if ((row.Applies & bit) != 0 && !is_unreached(row))
      term.rows.push_back({row.Scale, term.rows.empty() ? 1.0 : 0.0, row.Shape, row.T0, 1});
  return term;
}

}  // namespace

std::optional<double> mean_life(const Life& life) {
  const Model* const model = find_model(life.model);
  const bool by_mode = model && model->code == model_code::by_failure_mode;
  if (!model || life.rows.empty() || (model->family == Family::none && !by_mode)) return {};
  double mean = by_mode ? mean_of_risks(*model, life) : 0;
  constexpr std::size_t most_populations = 30;
  std::int32_t bit = 1;
  for (std::size_t i = 0; !by_mode && i < std::min(life.rows.size(), most_populations);
       ++i, bit *= 2) {
    const double share = life.rows[i].Fraction;
    if (!(share > 0)) continue;
    const Life term = term_of(life, bit);
    mean += share * (term.rows.empty() ? infinity : mean_of_risks(*model, term));
  }
  return std::isnan(mean) ? std::nullopt : std::optional(mean);
}

}  // namespace tavlo
