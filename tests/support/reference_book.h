// Reference book: the formulas of lives, likelihoods and regressions, written plainly from
// their definitions and sharing nothing with the program but its values. Tests of all
// floors judge answers by it; it is slow, and meant to be obviously right.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "fit/request.h"
#include "fit/sample.h"
#include "life/life.h"

namespace tavlo::test {

using Number = long double;
using Numbers = std::vector<Number>;

/// ln R and ln f (per unit of time) of a life at time t; 0 and -infinity where nothing
/// can have failed yet. All lives with rows in units of their own: Weibulls of one or more
/// populations, Normal, LogNormal, Gumbel.
Number ln_reliability_of(const Life& life, Number t);
Number ln_density_of(const Life& life, Number t);

/// Sum of w ln f over failures, and of w ln R over suspensions where these take part.
Number ln_likelihood_of(const Life& life, const Sample& sample, bool with_suspensions);

/// r squared of ln H (the Weibull ordinate) on ln t over the failures; from t0 where the
/// life has one. X on Y measures along ln t, Y on X along the ordinate.
Number r_squared_of(const Life& life, const Sample& sample, std::int16_t method);

/// The row that a weighted least-squares line on the model's paper stands for, about the
/// means, and its r squared: of times from t0 on, of a slope where one is given.
struct PaperLine {
  Number scale, shape, r_squared;
};
PaperLine line_of(const Sample& sample, const Model& model, std::int16_t method, Number t0 = 0,
                  Number given_slope = 0);

/// The Weibull of the highest likelihood from t0 on, of a slope where one is given: the root
/// of the likelihood equation by bisection.
Life best_weibull(const Sample& sample, bool with_suspensions, double t0 = 0,
                  Number given_slope = 0);

/// What the request wants to be large: ln L or r squared. The suspensions take part in the
/// likelihood of a searched model (W3T, W4P, W5C, W7P) only where the request says so, in
/// that of any other always.
Number quality_of(const Life& life, const Sample& sample, const FitRequest& request);

/// Expected failures of each row's population: a failure belongs to the rows by their
/// parts in the density at its time.
Numbers expected_failures_of(const Life& life, const Sample& sample);

/// The life's free parameters moved by `steps`: ln beta and ln eta of each row that
/// failures reach, then (t0 / eta, or the logit of the share) where the model has one.
/// With `hold_share` the share stays.
Life moved(const Life& life, const Numbers& steps, bool hold_share = false);
std::size_t free_parameters(const Life& life, bool hold_share = false);

/// Gradient and Hessian of a function of n steps at 0, by central differences of
/// fourth order.
struct Derivatives {
  Numbers gradient;
  std::vector<Numbers> hessian;
};
Derivatives derivatives_at_zero(const std::function<Number(const Numbers&)>& function,
                                std::size_t n);

/// Gain that a Newton step up promises; nothing where minus the Hessian is not positive
/// definite.
std::optional<Number> newton_decrement(const Derivatives& at);

/// Whether every eigenvalue of minus the Hessian is above `least`.
bool curves_more_than(Derivatives at, Number least);

/// The request's objective at a life: its derivatives with their decrement, and its slope
/// along the logit of the share (0 where there is none).
struct OptimumCheck {
  Derivatives at;
  std::optional<Number> decrement;
  Number share_slope = 0;
};
OptimumCheck check_optimum(const Life& life, const Sample& sample, const FitRequest& request,
                           bool hold_share);

}  // namespace tavlo::test
