#include "fit/likelihood/slope_equation.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavlo {
namespace {

constexpr double score_tolerance = 1e-12;
constexpr int most_secants = 60;
constexpr double halving = -1;  ///< no step: the middle of the bracket is taken
constexpr int most_trials = 2000;

class SlopeSearch {
 public:
  SlopeSearch(const WeibullLikelihood& likelihood, double start) : likelihood_(likelihood) {
    take(start);
  }

  /// True when the last trial solves the equation.
  bool run() {
    if (!is_solved()) take(inside_bracket(first_step()));
    while (!is_solved() && trials_ < most_trials) {
      const double beta = inside_bracket(trials_ < most_secants ? secant_step() : halving);
      if (beta == last_.shape || beta == before_.shape) return true;  // no double in between
      take(beta);
    }
    return is_solved();
  }

  const LikelihoodValue& last() const { return last_; }

 private:
  /// The score rises by about 1/beta^2, so a relative error of beta needs its
  /// product with beta; small slopes take the score itself.
  bool is_solved() const {
    return std::fabs(last_.score) * std::max(1.0, last_.shape) < score_tolerance;
  }

  void take(double beta) {
    before_ = last_;
    last_ = likelihood_.at(beta);
    ++trials_;
    (last_.score < 0 ? low_ : high_) = beta;
  }

  double first_step() const { return (2 / (1 / last_.shape + last_.score) + last_.shape) / 3; }

  /// The root of the score if it were a straight line in 1/beta.
  double secant_step() const {
    const double D = last_.score / before_.shape - before_.score / last_.shape;
    return (last_.score - before_.score) / D;
  }

  /// A step that isn't finite fails both comparisons.
  double inside_bracket(double beta) const {
    if (beta > low_ && beta < high_) return beta;
    return std::isinf(high_) ? 2 * low_ : low_ + (high_ - low_) / 2;
  }

  const WeibullLikelihood& likelihood_;
  LikelihoodValue before_;
  LikelihoodValue last_;
  double low_ = 0;
  double high_ = std::numeric_limits<double>::infinity();
  int trials_ = 0;
};

}  // namespace

std::optional<LikelihoodValue> solve_slope(const WeibullLikelihood& likelihood) {
  if (!likelihood.has_maximum()) return std::nullopt;
  SlopeSearch search(likelihood, 1.0);
  if (!search.run()) return std::nullopt;
  return search.last();
}

}  // namespace tavlo
