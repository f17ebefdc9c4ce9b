#include "solver/start_points.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavlo {
namespace {

constexpr std::uint64_t seed = 20110311;

/// First slot (the beta; the eta is next) of each population of the model.
std::vector<std::size_t> populations(int K) {
  if (K == 7) return {1, 3, 5};
  return {1, 3};
}

struct Exchange {
  std::size_t first, second;
};

/// Pairs of populations whose exchange gives another start. A and B of W4P and
/// W7P play the same part, so theirs gives the same one.
std::vector<Exchange> exchanges(int K) {
  if (K == 7) return {{1, 5}, {3, 5}};
  if (K == 5) return {{1, 3}};
  return {};
}

ParameterVector exchanged(ParameterVector X, Exchange pair) {
  std::swap(X[pair.first], X[pair.second]);
  std::swap(X[pair.first + 1], X[pair.second + 1]);
  return X;
}

}  // namespace

StartPoints::StartPoints(std::vector<ParameterVector> promising, int K)
    : K_(K), promising_(std::move(promising)), random_(seed) {}

ParameterVector StartPoints::next(const ParameterVector& best) {
  if (promising_used_ < promising_.size()) return promising_[promising_used_++];
  const auto pairs = exchanges(K_);
  const auto exchange = static_cast<std::size_t>(exchanges_used_);
  if (exchange < pairs.size()) {
    exchanges_used_ += 1;
    return exchanged(best, pairs[exchange]);
  }
  return stepped(best);
}

/// Uniform in -1 to 1, the same on every machine.
double StartPoints::symmetric() {
  return std::ldexp(static_cast<double>(random_() >> 11), -52) - 1.0;
}

/// A random step in the logarithms of betas and etas and the logit of the share,
/// each third one wide.
ParameterVector StartPoints::stepped(ParameterVector X) {
  const double width = steps_used_ % 3 == 2 ? 1.5 : 0.7;
  steps_used_ += 1;
  for (const std::size_t beta : populations(K_)) {
    X[beta] = std::clamp(X[beta] * std::exp(width * symmetric()), 0.2, 20.0);
    X[beta + 1] *= std::exp(width * symmetric());
  }
  if (K_ == 4) return X;
  const auto share = static_cast<std::size_t>(K_);
  const double odds = X[share] / (1 - X[share]) * std::exp(2 * width * symmetric());
  X[share] = std::clamp(odds / (1 + odds), 0.001, 0.999);
  return X;
}

}  // namespace tavlo
