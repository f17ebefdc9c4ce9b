#include "fit/starts/nested_starts.h"

#include <algorithm>
#include <cmath>

#include "fit/starts/start_comparison.h"

namespace tavlo {
namespace {

/// The log time below which the part has failed.
double log_time_at(const MixtureRows& rows, double part) {
  const WeightedRows& f = rows.failures;
  double passed = 0;
  for (std::size_t i = 0; i < f.count; ++i) {
    passed += f.w[i];
    if (passed >= part * f.total) return f.x[i];
  }
  return f.x[f.count - 1];
}

/// Takes the part `moved` of risk A's hazard at log time x to a new risk B of slope `beta`.
MixturePoint with_risk_split(const MixturePoint& from, Populations wanted, double x, double beta,
                             double moved) {
  MixturePoint to{wanted, {}};
  const std::size_t a = from.populations.at_a();
  const double z = from.beta(a) * (x - from.ln_eta(a));
  to.q[wanted.at_a()] = from.q[a];
  to.q[wanted.at_a() + 1] = x - (z + std::log1p(-moved)) / from.beta(a);
  to.q[wanted.at_b()] = std::log(beta);
  to.q[wanted.at_b() + 1] = x - (z + std::log(moved)) / beta;
  if (!wanted.c) return to;
  const std::size_t c = from.populations.at_c();
  to.q[wanted.at_c()] = from.q[c];
  to.q[wanted.at_c() + 1] = from.q[c + 1];
  to.q[wanted.at_share()] = from.q[from.populations.at_share()];
  return to;
}

MixturePoint with_early_share(const MixturePoint& from, Populations wanted, double x, double beta,
                              double share) {
  MixturePoint to{wanted, {}};
  to.q[wanted.at_a()] = from.q[from.populations.at_a()];
  to.q[wanted.at_a() + 1] = from.q[from.populations.at_a() + 1];
  if (wanted.b) {
    to.q[wanted.at_b()] = from.q[from.populations.at_b()];
    to.q[wanted.at_b() + 1] = from.q[from.populations.at_b() + 1];
  }
  to.q[wanted.at_c()] = std::log(beta);
  to.q[wanted.at_c() + 1] = x;
  to.q[wanted.at_share()] = logit(share);
  return to;
}

/// The population on every unit becomes one of nearly every unit, and the part `moved` of
/// its hazard at x a risk of all: two risks, in the clothes of an early share.
MixturePoint with_nearly_all_shared(const MixturePoint& from, Populations wanted, double x,
                                    double beta, double moved) {
  const MixturePoint risks = with_risk_split(from, competing_risks, x, beta, moved);
  MixturePoint to{wanted, {}};
  to.q[wanted.at_c()] = risks.q[competing_risks.at_a()];
  to.q[wanted.at_c() + 1] = risks.q[competing_risks.at_a() + 1];
  to.q[wanted.at_a()] = risks.q[competing_risks.at_b()];
  to.q[wanted.at_a() + 1] = risks.q[competing_risks.at_b() + 1];
  to.q[wanted.at_share()] = logit(0.99);
  return to;
}

/// Which population of `wanted` is new beside `has`.
struct Branch {
  bool risk = false;   ///< B, of all units
  bool share = false;  ///< C, of some

  Branch(const Populations& has, const Populations& wanted)
      : risk(has.a && wanted.b && !has.b && has.c == wanted.c),
        share(has.a && wanted.c && !has.c && has.b == wanted.b) {}
};

/// A new population of every size everywhere.
void add_grid(const Branch& branch, Populations wanted, const MixtureRows& rows,
              const MixturePoint& contained, StartComparison& to) {
  const double usual = contained.beta(contained.populations.at_a());
  for (const double part : {0.03, 0.1, 0.2, 0.35, 0.55, 0.75, 0.9})
    for (const double factor : {0.3, 0.6, 1.6, 4.0, 10.0})
      for (const double amount : {0.05, 0.2, 0.5, 0.95}) {
        const double x = log_time_at(rows, part);
        const double beta = usual * factor;
        if (branch.risk) to.add(with_risk_split(contained, wanted, x, beta, amount));
        if (branch.share) to.add(with_early_share(contained, wanted, x, beta, amount));
        if (branch.share && !wanted.b)
          to.add(with_nearly_all_shared(contained, wanted, x, beta, amount));
      }
}

/// Neighbouring failures as a population of their own.
struct Cluster {
  double x = 0;     ///< mean log time
  double beta = 1;  ///< of a Weibull that spreads as they do
  double part = 0;  ///< of the failures from there on
};

Cluster cluster_of(const WeightedRows& rows, std::size_t from, std::size_t to, double before,
                   double steepest) {
  double weight = 0, sum = 0, squares = 0;
  for (std::size_t i = from; i < to; ++i) {
    const double d = rows.x[i] - rows.x[from];
    weight += rows.w[i];
    sum += rows.w[i] * d;
    squares += rows.w[i] * d * d;
  }
  const double mean = sum / weight;
  const double deviation = std::sqrt(std::max(0.0, squares / weight - mean * mean));
  constexpr double unit_deviation = 1.2825;  // of ln of a unit exponential
  const double beta = std::min(unit_deviation / std::max(deviation, 1e-12), 0.7 * steepest);
  return {rows.x[from] + mean, beta, std::min(0.9, weight / (rows.total - before))};
}

void add_clusters(const Branch& branch, Populations wanted, const MixtureRows& rows,
                  const MixturePoint& contained, double steepest, StartComparison& to) {
  const MixtureRows few = thinned(rows, comparing_rows);
  const WeightedRows& f = few.failures;
  for (const std::size_t width : {3u, 5u, 8u, 13u, 21u, 30u}) {
    double before = 0;
    for (std::size_t from = 0; from + width <= f.count; before += f.w[from++]) {
      if (from % std::max<std::size_t>(1, width / 4) != 0) continue;  // the next is much alike
      const Cluster c = cluster_of(f, from, from + width, before, steepest);
      if (branch.risk) to.add(with_risk_split(contained, wanted, c.x, c.beta, c.part));
      if (branch.share) to.add(with_early_share(contained, wanted, c.x, c.beta, c.part));
    }
  }
}

}  // namespace

std::vector<MixturePoint> nested_starts(const MixtureRows& rows, Populations wanted,
                                        const MixturePoint& contained, const SlopeRange& slopes,
                                        std::size_t most) {
  const Branch branch(contained.populations, wanted);
  if (!branch.risk && !branch.share) return {};
  StartComparison grid(rows, wanted), clusters(rows, wanted);
  add_grid(branch, wanted, rows, contained, grid);
  add_clusters(branch, wanted, rows, contained, slopes.steepest, clusters);
  std::vector<MixturePoint> starts = grid.best(most);
  for (const MixturePoint& start : clusters.best_of_places(2 * most)) starts.push_back(start);
  return starts;
}

}  // namespace tavlo
