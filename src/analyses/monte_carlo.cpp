#include "analyses/monte_carlo.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "fit/parallel.h"
#include "fit/ranks/adjusted_rank.h"
#include "fit/ranks/median_ranks.h"
#include "life/quantile_walk.h"
#include "numerics/normal.h"
#include "numerics/run_time_error.h"

namespace tavlo {

namespace {

constexpr float largest_chance = 1.0f - 0x1p-24f;
constexpr float smallest_chance = 0x1p-31f;

/// A chance rounded to single precision may reach 1, where no life has a quantile.
float single_chance(double u) {
  return std::clamp(static_cast<float>(u), smallest_chance, largest_chance);
}

/// A Weibull's minus ln of the chance to survive, which is taken in single precision.
double cumulative_hazard(float y) { return -std::log(double{std::min(1.0f - y, largest_chance)}); }

double gumbel_lower_ordinate(double y) {
  return y <= 1e-8 ? std::log(y) : std::log(-std::log(1 - y));
}

/// Times of rising chances.
class Inverse {
 public:
  explicit Inverse(const Life& life) : life_(life), walk_(life) {}

  /// Nothing where the life never reaches y.
  std::optional<double> operator()(float y) {
    const FitParam& row = life_.rows.front();
    switch (life_.model) {
      case model_code::normal: return row.Scale + normal_quantile(y) / row.Shape;
      case model_code::lognormal:
        return std::exp(std::log(row.Scale) + normal_quantile(y) / row.Shape);
      case model_code::gumbel_lower: return 1 / row.Scale + row.Shape * gumbel_lower_ordinate(y);
      case model_code::gumbel_upper:
        return 1 / row.Scale - row.Shape * std::log(-std::log(double{y}));
      case model_code::weibull2:
      case model_code::weibull3:
        return row.T0 + std::pow(cumulative_hazard(y), 1 / row.Shape) / row.Scale;
      default: return walk_(y);
    }
  }

 private:
  const Life& life_;
  QuantileWalk walk_;
};

std::vector<float> precise_chances(std::int32_t size, RankKind ranks) {
  std::vector<float> chances(static_cast<std::size_t>(size));
  const bool by_table = ranks == RankKind::exact && size <= largest_exact_count;
  std::vector<double> table;
  if (by_table) table = fn_MedianRanks(false, 0.5, size, 1e-12);
  for (std::size_t i = 1; i <= chances.size(); ++i)
    chances[i - 1] = single_chance(by_table ? table[i] : benard_rank(static_cast<double>(i), size));
  return chances;
}

std::vector<float> random_chances(std::int32_t size, WichmannHill& random, Entropy& chance) {
  std::vector<float> chances(static_cast<std::size_t>(size));
  for (float& each : chances) each = single_chance(random.next(chance));
  sort_values(chances);
  return chances;
}

/// Whether data can hold the times of a life: 0 is none where all are above it.
class TimeRange {
 public:
  explicit TimeRange(const Life& life) {
    const Family family = find_model(life.model)->family;
    const bool is_above_zero =
        (family == Family::weibull || family == Family::lognormal) && life.rows.front().T0 >= 0;
    if (is_above_zero) least_ = least;
  }
  bool holds(double time) const { return time >= least_ && time <= most; }

 private:
  // Which are numbers of single precision still when they are rounded to four digits.
  static constexpr double least = 1.1755e-38;
  static constexpr double most = 3.4e38;
  double least_ = -most;
};

/// Turns chances into times, in parts of one size so that any number of threads gives the same.
void invert(const Life& life, std::vector<float>& points) {
  constexpr std::size_t part = 8192;
  const TimeRange range(life);
  std::atomic<bool> is_held = true;
  for_each_index((points.size() + part - 1) / part, [&](std::size_t k) {
    Inverse inverse(life);
    for (std::size_t i = k * part; i < std::min(points.size(), (k + 1) * part) && is_held; ++i) {
      const auto time = inverse(points[i]);
      if (time && range.holds(*time))
        points[i] = static_cast<float>(*time);
      else
        is_held = false;
    }
  });
  if (!is_held) throw RunTimeError(run_time::overflow);
}

}  // namespace

std::vector<float> draw_chances(const SamplePlan& plan, WichmannHill& random, Entropy& chance) {
  return plan.is_precise ? precise_chances(plan.size, plan.ranks)
                         : random_chances(plan.size, random, chance);
}

DrawnPoints points_of(const SamplePlan& plan, std::vector<float> chances,
                      const WichmannHill& behind, Entropy& chance) {
  DrawnPoints drawn;
  drawn.times = std::move(chances);
  if (plan.life.rows.empty())
    std::iota(drawn.times.begin(), drawn.times.end(), 1.0f);
  else
    invert(plan.life, drawn.times);
  const bool by_likelihood = plan.method == method_code::mle;
  drawn.suspended = suspend(plan.size, plan.suspensions, by_likelihood, behind, chance);
  if (drawn.suspended.collapsed > 0) {
    drawn.times.resize(drawn.suspended.is_suspended.size());
    drawn.times.back() = drawn.times[drawn.times.size() - 2];
  }
  return drawn;
}

DrawnPoints draw_points(const SamplePlan& plan, WichmannHill& random, Entropy& chance) {
  std::vector<float> chances = draw_chances(plan, random, chance);
  return points_of(plan, std::move(chances), random, chance);
}

std::vector<SampleRow> DrawnPoints::rows() const {
  std::vector<SampleRow> rows(times.size());
  for (std::size_t i = 0; i < times.size(); ++i)
    rows[i] = suspended.is_suspended[i] ? SampleRow{times[i], 0, 1} : SampleRow{times[i], 1, 0};
  if (suspended.collapsed > 0) rows.back() = {times.back(), 0, double(suspended.collapsed)};
  return rows;
}

}  // namespace tavlo
