#include "analyses/monte_carlo.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <limits>
#include <numeric>

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
  std::sort(chances.begin(), chances.end());
  return chances;
}

/// Turns chances into times, in parts of one size so that any number of threads gives the same.
/// Gives the number of points not found, which keep the time before them.
std::int64_t invert(const Life& life, std::vector<float>& points) {
  constexpr std::size_t part = 8192;
  std::atomic<std::int64_t> unreached = 0;
  std::atomic<bool> is_too_large = false;
  for_each_index((points.size() + part - 1) / part, [&](std::size_t k) {
    Inverse inverse(life);
    double last = 0;
    for (std::size_t i = k * part; i < std::min(points.size(), (k + 1) * part); ++i) {
      const auto time = inverse(points[i]);
      if (!time) ++unreached;
      last = time.value_or(last);
      if (std::abs(last) > std::numeric_limits<float>::max()) is_too_large = true;
      points[i] = is_too_large ? 0.0f : static_cast<float>(last);
    }
  });
  if (is_too_large) throw RunTimeError(run_time::overflow);
  return unreached;
}

/// The shares of the populations make up all units; a row that is a risk alone has none.
bool are_shares(const std::vector<FitParam>& rows) {
  constexpr double rounding = 1e-6;  // of percents as typed
  double sum = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto acts = [i](const FitParam& risk) { return (risk.Applies >> i & 1) != 0; };
    const double share = rows[i].Fraction;
    if (share < 0 || (share > 0 && std::none_of(rows.begin(), rows.end(), acts))) return false;
    sum += share;
  }
  return std::abs(sum - 1) <= rounding;
}

std::optional<PlanFault> fault_of(const Model& model, const FitParam& row) {
  for (const double number : {row.Scale, row.Shape, row.T0, row.Fraction})
    if (!std::isfinite(number)) return PlanFault::number;
  const bool is_anywhere = model.family == Family::normal || model.family == Family::gumbel;
  if (is_anywhere ? model.family == Family::gumbel && row.Scale == 0 : !(row.Scale > 0))
    return PlanFault::scale;
  if (row.Shape > 0) return std::nullopt;
  return is_anywhere ? PlanFault::scale : PlanFault::slope;
}

}  // namespace

bool is_sampled(std::int16_t model) {
  constexpr std::array sampled = {
      model_code::weibull2,  model_code::weibull3,     model_code::weibull4,
      model_code::weibull5c, model_code::weibull7,     model_code::normal,
      model_code::lognormal, model_code::gumbel_lower, model_code::gumbel_upper};
  return std::find(sampled.begin(), sampled.end(), model) != sampled.end();
}

std::optional<PlanFault> fault_of(const SamplePlan& plan) {
  if (plan.size < 1) return PlanFault::size;
  const std::int16_t code = plan.life.model;
  const Model* model = find_model(code);
  if (!is_sampled(code) || ssize(plan.life.rows) != model->rows()) return PlanFault::model;
  for (const FitParam& row : plan.life.rows)
    if (const auto fault = fault_of(*model, row)) return fault;
  return are_shares(plan.life.rows) ? std::nullopt : std::optional(PlanFault::shares);
}

DrawnPoints draw_points(const SamplePlan& plan, WichmannHill& random, Entropy& chance) {
  DrawnPoints drawn;
  drawn.times = plan.is_precise ? precise_chances(plan.size, plan.ranks)
                                : random_chances(plan.size, random, chance);
  if (plan.life.rows.empty())
    std::iota(drawn.times.begin(), drawn.times.end(), 1.0f);
  else
    drawn.unreached = invert(plan.life, drawn.times);
  const bool by_likelihood = plan.method == method_code::mle;
  drawn.suspended = suspend(plan.size, plan.suspensions, by_likelihood, random, chance);
  if (drawn.suspended.collapsed > 0) {
    drawn.times.resize(drawn.suspended.is_suspended.size());
    drawn.times.back() = drawn.times[drawn.times.size() - 2];
  }
  return drawn;
}

std::vector<SampleRow> DrawnPoints::rows() const {
  std::vector<SampleRow> rows(times.size());
  for (std::size_t i = 0; i < times.size(); ++i)
    rows[i] = suspended.is_suspended[i] ? SampleRow{times[i], 0, 1} : SampleRow{times[i], 1, 0};
  if (suspended.collapsed > 0) rows.back() = {times.back(), 0, double(suspended.collapsed)};
  return rows;
}

}  // namespace tavlo
