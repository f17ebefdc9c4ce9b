#include "analyses/critical_r_squared.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "numerics/normal.h"
#include "numerics/run_time_error.h"

namespace tavlo {

namespace {

constexpr std::size_t level_count = 25;
using Levels = std::array<double, level_count>;

constexpr Levels levels = {0.0005, 0.001, 0.002, 0.005, 0.01, 0.02,  0.03, 0.05, 0.07,
                           0.1,    0.15,  0.2,   0.25,  0.3,  0.4,   0.5,  0.6,  0.7,
                           0.8,    0.9,   0.95,  0.98,  0.99, 0.995, 0.999};
constexpr std::size_t critical_level = 9;
static_assert(levels[critical_level] == 0.1);

/// The quantiles of v = -ln(1 - r squared) among samples of one size. v is 20 where all
/// points lie on the line within rounding.
struct Node {
  double failures;
  Levels v;

  double critical() const { return v[critical_level]; }
};

using Table = std::array<Node, 31>;

constexpr std::array<Table, 4> tables = {{
#include "analyses/critical_r_squared.inc"
}};

const Table& table_of(PaperKind kind, bool three_parameters) {
  return tables[(kind == PaperKind::lognormal ? 2 : 0) + (three_parameters ? 1 : 0)];
}

Levels scores_of_levels() {
  Levels scores{};
  std::transform(levels.begin(), levels.end(), scores.begin(), normal_quantile);
  return scores;
}

/// The normal score of the percentile of v: straight between the levels, and on along the last
/// two beyond them. Levels that share the largest v count as one.
double score(const Node& node, double v) {
  static const Levels scores = scores_of_levels();
  const auto begin = node.v.begin();
  const auto last = std::lower_bound(begin, node.v.end(), node.v.back());
  const auto above = std::clamp(std::upper_bound(begin, last, v), begin + 1, last);
  const auto i = static_cast<std::size_t>(above - begin);
  const double part = (v - node.v[i - 1]) / (node.v[i] - node.v[i - 1]);
  return std::lerp(scores[i - 1], scores[i], part);
}

double probability(double score) { return 0.5 * std::erfc(-score / std::numbers::sqrt2); }

/// Where a number of failures stands: between two nodes, or behind the last by a part above 1
/// of the last interval.
struct Place {
  const Node& below;
  const Node& above;
  double part;

  double critical_v() const { return std::lerp(below.critical(), above.critical(), part); }

  /// Behind the last node its whole distribution moves with the critical value.
  double score_of(double v) const {
    if (part > 1) return score(above, v - (critical_v() - above.critical()));
    return std::lerp(score(below, v), score(above, v), part);
  }
};

Place place_of(const Table& table, double failures) {
  const double n = std::max(failures, table.front().failures);
  const auto above = std::find_if(table.begin() + 1, table.end() - 1,
                                  [n](const Node& node) { return n <= node.failures; });
  const Node& below = *(above - 1);
  return {below, *above, std::log(n / below.failures) / std::log(above->failures / below.failures)};
}

}  // namespace

CriticalRSquared fd_Ccc2(PaperKind kind, double failures, bool three_parameters, double r_squared) {
  if (!std::isfinite(failures) || !std::isfinite(r_squared))
    throw RunTimeError(run_time::invalid_argument);
  const Place place = place_of(table_of(kind, three_parameters), failures);
  CriticalRSquared answer{-std::expm1(-place.critical_v()), 0};
  if (r_squared >= 1)
    answer.pve = 1;
  else if (r_squared > 0)
    answer.pve = probability(place.score_of(-std::log1p(-r_squared)));
  return answer;
}

}  // namespace tavlo
