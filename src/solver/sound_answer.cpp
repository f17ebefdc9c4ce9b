#include "solver/sound_answer.h"

#include <algorithm>
#include <cmath>

namespace tavlo {
namespace {

constexpr double steepest_beta = 50;
constexpr double fewest_failures = 2;

// exp(-745.2) is 0 in doubles: there the likelihood replaces a reliability.
constexpr double largest_hazard = 745.13;

struct Population {
  double beta = 0;
  double eta = 0;
  double ln_beta = 0;
  double ln_eta = 0;

  Population(bool present, double the_beta, double the_eta) {
    if (!present) return;
    beta = the_beta;
    eta = the_eta;
    ln_beta = std::log(beta);
    ln_eta = std::log(eta);
  }
  bool present() const { return beta > 0; }
  bool defined() const { return beta > 0 && eta > 0 && std::isfinite(beta) && std::isfinite(eta); }
  /// Cumulative hazard at a log time.
  double hazard(double x) const { return present() ? std::exp((x - ln_eta) * beta) : 0.0; }
  /// ln of (hazard rate x time) at a log time.
  double ln_rate(double x) const { return (x - ln_eta) * beta + ln_beta; }
};

/// The three populations and the share of units that carry C.
struct Mixture {
  Mixture(const SolverParams& p, int K)
      : a(true, p.BetaA, p.EtaA),
        b(K != 5, p.BetaB, p.EtaB),
        c(K != 4, p.BetaC, p.EtaC),
        share(K == 4 ? 0.0 : p.Extra) {}

  Population a, b, c;
  double share;

  bool defined(int K) const {
    return a.defined() && (K == 5 || b.defined()) && (K == 4 || c.defined()) &&
           std::isfinite(share);
  }
  double steepest() const { return std::max({a.beta, b.beta, c.beta}); }
};

/// Densities of the populations at a failure, each times t and exp(A + B), which
/// all have in common.
struct RowShares {
  double a, b, c;
  double sum() const { return a + b + c; }
};

RowShares shares_at(const Mixture& mixture, double x) {
  const double survives_c = mixture.c.present() ? std::exp(-mixture.c.hazard(x)) : 1.0;
  const double alive = mixture.share * survives_c + 1 - mixture.share;
  // The rates may leave the range of a double; only their ratios count.
  const double ln_a = mixture.a.ln_rate(x);
  const double ln_b = mixture.b.present() ? mixture.b.ln_rate(x) : ln_a;
  const double largest = std::max(ln_a, ln_b);
  const double ln_c =
      mixture.c.present() ? mixture.c.ln_rate(x) - mixture.c.hazard(x) - largest : 0.0;
  return {std::exp(ln_a - largest) * alive,
          mixture.b.present() ? std::exp(ln_b - largest) * alive : 0.0,
          mixture.c.present() ? mixture.share * std::exp(ln_c) : 0.0};
}

/// ln of the density at a failure, per unit of time.
double ln_density(const Mixture& mixture, const RowShares& shares, double x) {
  const double ln_a = mixture.a.ln_rate(x);
  const double largest = mixture.b.present() ? std::max(ln_a, mixture.b.ln_rate(x)) : ln_a;
  return std::log(shares.sum()) + largest - mixture.a.hazard(x) - mixture.b.hazard(x) - x;
}

Flaw flaw_of_rows(const Mixture& mixture, const SolverData& data) {
  const bool likelihood = data.Method == solver_method::mle;
  const int rows = likelihood ? data.M : std::min(data.M, data.N);
  const double* x = data.Xs.data();
  double held_a = 0, held_b = 0, held_c = 0;
  for (int i = 1; i <= rows; ++i) {
    const double common_hazard = mixture.a.hazard(x[i]) + mixture.b.hazard(x[i]);
    if (likelihood && !(common_hazard < largest_hazard)) return Flaw::reliability_replaced;
    if (data.Ys.data()[i] > SolverData::largest_ordinate) continue;  // a suspension
    const RowShares shares = shares_at(mixture, x[i]);
    const double sum = shares.sum();
    if (!(sum > 0) || !std::isfinite(sum)) return Flaw::undefined;
    if (likelihood && ln_density(mixture, shares, x[i]) > 0) return Flaw::density_above_one;
    held_a += shares.a / sum;
    held_b += shares.b / sum;
    held_c += shares.c / sum;
  }
  const auto too_few = [](const Population& population, double held) {
    return population.present() && held < fewest_failures;
  };
  const bool empty =
      too_few(mixture.a, held_a) || too_few(mixture.b, held_b) || too_few(mixture.c, held_c);
  return empty ? Flaw::empty_population : Flaw::none;
}

}  // namespace

Flaw flaw_of(const SolverParams& params, const SolverData& data, int K) {
  if (K != 4 && K != 5 && K != 7) return Flaw::none;
  const Mixture mixture(params, K);
  if (!mixture.defined(K)) return Flaw::undefined;
  if (mixture.steepest() > steepest_beta) return Flaw::steep_population;
  return flaw_of_rows(mixture, data);
}

}  // namespace tavlo
