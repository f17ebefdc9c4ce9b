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
  std::size_t from = 0, to = 0;  ///< rows
  double excess = 0;             ///< how unlikely so many are together, by the contained model
};

/// Failures that the contained model expects up to each row.
std::vector<double> expected_up_to(const MixtureRows& rows, const MixturePoint& contained) {
  const WeightedRows &f = rows.failures, &s = rows.suspensions;
  std::vector<double> expected(f.count);
  double at_risk = f.total + s.total, risk_before = 0, sum = 0;
  for (std::size_t i = 0, k = 0; i < f.count; ++i) {
    for (; k < s.count && s.x[k] < f.x[i]; ++k) at_risk -= s.w[k];
    const double risk = total_risk(contained, f.x[i]);
    sum += at_risk * (risk - risk_before);
    expected[i] = sum;
    risk_before = risk;
    at_risk -= f.w[i];
  }
  return expected;
}

/// The scan statistic of J. Naus (1965) and M. Kulldorff (1997): the log likelihood ratio of
/// the failures in a window against those expected in it, for windows of all widths.
std::vector<Cluster> clusters_of(const MixtureRows& rows, const MixturePoint& contained) {
  const WeightedRows& f = rows.failures;
  const std::vector<double> expected = expected_up_to(rows, contained);
  std::vector<Cluster> clusters;
  for (std::size_t width = 3; width <= f.count; width += std::max<std::size_t>(1, width / 2))
    for (std::size_t from = 0; from + width <= f.count;
         from += std::max<std::size_t>(1, width / 4)) {
      const std::size_t to = from + width;
      double held = 0;  // beyond the first, which opens the window
      for (std::size_t i = from + 1; i < to; ++i) held += f.w[i];
      const double usual = std::max(expected[to - 1] - expected[from], 0.01 * held);
      if (held > usual)
        clusters.push_back({from, to, held * std::log(held / usual) - (held - usual)});
    }
  std::stable_sort(clusters.begin(), clusters.end(),
                   [](const Cluster& a, const Cluster& b) { return a.excess > b.excess; });
  return clusters;
}

bool overlap(const Cluster& a, const Cluster& b) {
  const std::size_t common =
      std::min(a.to, b.to) - std::min(std::max(a.from, b.from), std::min(a.to, b.to));
  return 2 * common > std::max(a.to - a.from, b.to - b.from);
}

/// A Weibull that spreads as the cluster does.
void add_cluster(const Branch& branch, Populations wanted, const MixtureRows& rows,
                 const MixturePoint& contained, double steepest, const Cluster& cluster,
                 StartComparison& to) {
  const WeightedRows& f = rows.failures;
  double before = 0, weight = 0, sum = 0, squares = 0;
  for (std::size_t i = 0; i < cluster.from; ++i) before += f.w[i];
  for (std::size_t i = cluster.from; i < cluster.to; ++i) {
    const double d = f.x[i] - f.x[cluster.from];
    weight += f.w[i];
    sum += f.w[i] * d;
    squares += f.w[i] * d * d;
  }
  const double mean = sum / weight;
  const double deviation = std::sqrt(std::max(0.0, squares / weight - mean * mean));
  constexpr double unit_deviation = 1.2825;  // of ln of a unit exponential
  const double beta = std::min(unit_deviation / std::max(deviation, 1e-12), 0.7 * steepest);
  const double x = f.x[cluster.from] + mean, part = std::min(0.9, weight / (f.total - before));
  if (branch.risk) to.add(with_risk_split(contained, wanted, x, beta, part));
  if (branch.share) to.add(with_early_share(contained, wanted, x, beta, part));
}

void add_clusters(const Branch& branch, Populations wanted, const MixtureRows& rows,
                  const MixturePoint& contained, double steepest, StartComparison& to) {
  constexpr std::size_t most = 60;
  std::vector<Cluster> chosen;
  for (const Cluster& cluster : clusters_of(rows, contained)) {
    const auto same = [&](const Cluster& other) { return overlap(cluster, other); };
    if (std::any_of(chosen.begin(), chosen.end(), same)) continue;
    chosen.push_back(cluster);
    add_cluster(branch, wanted, rows, contained, steepest, cluster, to);
    if (chosen.size() == most) return;
  }
}

}  // namespace

std::vector<MixturePoint> nested_starts(const MixtureRows& rows, Populations wanted,
                                        const MixturePoint& contained, const SlopeRange& slopes,
                                        std::size_t most, std::size_t compared_on) {
  const Branch branch(contained.populations, wanted);
  if (!branch.risk && !branch.share) return {};
  constexpr std::size_t all_rows = 800;
  StartComparison grid(rows, wanted, compared_on), clusters(rows, wanted, all_rows);
  add_grid(branch, wanted, rows, contained, grid);
  add_clusters(branch, wanted, rows, contained, slopes.steepest, clusters);
  std::vector<MixturePoint> starts = grid.best(most);
  for (const MixturePoint& start : clusters.best_of_places(2 * most)) starts.push_back(start);
  return starts;
}

}  // namespace tavlo
