#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "fit/search/minimum_life_likelihood.h"
#include "fit/search/optimum.h"
#include "fit/search/searched_fits.h"
#include "fit/search/weibull_optimum.h"

namespace tavlo {
namespace {

using namespace minimum_life_variable;

/// All times from the first failure, in inner units.
TimesFromFirst times_of(const Sample& sample, double first, bool censored) {
  TimesFromFirst times;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    const double time = sample.time[i] - first;
    if (sample.failures[i] > 0) times.failures.add(time, 0, sample.failures[i]);
    if (censored && sample.suspensions[i] > 0)
      times.suspensions.add(time, 0, sample.suspensions[i]);
  }
  return times;
}

/// Neighbours put together at their mean time. The earliest rows decide on t0, the latest on
/// the slope: they stand alone, and a group takes in the more the farther it is from both.
WeightedRows grouped(const WeightedRows& rows, double growth) {
  WeightedRows groups;
  for (std::size_t from = 0; from < rows.count;) {
    const auto outside = static_cast<double>(std::min(from, rows.count - from));
    const auto wanted = static_cast<std::size_t>(std::max(1.0, growth * outside));
    const std::size_t to = std::min(rows.count, from + wanted);
    double weight = 0, sum = 0;
    for (; from < to; ++from) {
      weight += rows.w[from];
      sum += rows.w[from] * rows.x[from];
    }
    groups.add(wanted == 1 ? rows.x[from - 1] : sum / weight, 0, weight);
  }
  return groups;
}

std::optional<MinimiserEnd> maximum_near(const MinimumLifeLikelihood& likelihood,
                                         const SmallVector& start, const Fence& fence) {
  Terrain terrain;
  terrain.size = count;
  terrain.longest_step.fill(1.0);
  // Far from the first failure the three variables all but move together: a maximum there
  // is flat, and one nevertheless.
  terrain.least_curvature = 1e-10;
  terrain.inside = [&](const SmallVector& q) {
    return q[ln_beta] < std::log(fence.steepest) && q[ln_distance] > -36 && q[ln_distance] < 36;
  };
  const ShapedFunction function = [&](const SmallVector& q, LocalShape& shape) {
    return likelihood.shape_at(q, shape);
  };
  MinimiserEnd end = minimise(function, terrain, start);
  constexpr double proving_gain = 1e-6;
  const bool proven = end.kind == MinimiserEnd::Kind::minimum && end.decrement <= proving_gain;
  return proven && terrain.inside(end.q) ? std::optional(end) : std::nullopt;
}

struct Maxima {
  std::vector<MinimiserEnd> proven;  ///< best first
  /// Where there is none, the likelihood rises or all but rises as t0 goes to -infinity.
  bool rises_outward = false;
};

Maxima maxima_of(const TimesFromFirst& times, double growth, const Fence& fence) {
  Maxima maxima;
  const TimesFromFirst few{grouped(times.failures, growth), grouped(times.suspensions, growth)};
  const ProfileScan scan = scan_minimum_life(few);
  const MinimumLifeLikelihood rough(few);
  const MinimumLifeLikelihood whole(times);
  for (const ProfilePoint& point : scan.maxima) {
    const SmallVector scanned = {std::log(point.beta), point.ln_eta, std::log(point.distance)};
    const auto sketched = maximum_near(rough, scanned, fence);
    const auto end = maximum_near(whole, sketched ? sketched->q : scanned, fence);
    if (end) maxima.proven.push_back(*end);
  }
  const bool beyond_fence = maxima.proven.empty() && !scan.maxima.empty();
  maxima.rises_outward = scan.rises_outward || beyond_fence;
  std::stable_sort(maxima.proven.begin(), maxima.proven.end(),
                   [](const auto& a, const auto& b) { return a.shape.value < b.shape.value; });
  return maxima;
}

/// A second look through finer groups before a large sample is refused.
Maxima maxima_of(const TimesFromFirst& times, const Fence& fence) {
  constexpr double coarse = 1.0 / 25, fine = 1.0 / 250;
  Maxima maxima = maxima_of(times, coarse, fence);
  const bool any_grouped = static_cast<double>(times.failures.count) * coarse > 2;
  return maxima.proven.empty() && any_grouped ? maxima_of(times, fine, fence) : maxima;
}

Fit fit_of(const Sample& sample, const FitRequest& request, const Maxima& maxima, double first) {
  const MinimiserEnd& best = maxima.proven.front();
  const double shift = sample.total_failures * sample.exponent * std::numbers::ln2;
  Fit fit;
  fit.life = {request.model,
              {{.Scale = std::ldexp(std::exp(-best.q[ln_eta]), -sample.exponent),
                .Fraction = 1,
                .Shape = std::exp(best.q[ln_beta]),
                .T0 = outer_time(sample, first - std::exp(best.q[ln_distance])),
                .Applies = 1}}};
  fit.quality = -best.shape.value - shift;
  fit.proof = Proof{};
  fit.proof->decrement = best.decrement;
  fit.proof->smallest_curvature = best.curvature;
  return fit;
}

double first_failure(const Sample& sample) {
  for (std::size_t i = 0; i < sample.size(); ++i)
    if (sample.failures[i] > 0) return sample.time[i];
  return 0;
}

}  // namespace

FitAnswer fit_minimum_life_by_likelihood(const Sample& sample, const FitRequest& request,
                                         Companion& companion) {
  FitAnswer answer;
  const MixtureRows rows = mixture_rows(sample, request.method, request.censored);
  const auto weibull = one_weibull_optimum(rows);
  if (!weibull) return {refuse_without_weibull(rows), {}};
  companion.turn();
  const double first = first_failure(sample);
  const Maxima maxima =
      maxima_of(times_of(sample, first, request.censored), Fence::around(weibull->point.beta(0)));
  // Below the Weibull without a minimum life a maximum is no answer: the likelihood rises
  // on the other side of a valley.
  constexpr double rounding = 1e-6;
  const double to_beat = weibull->value + rows.mean_x * rows.failures.total + rounding;
  if (maxima.proven.empty() || maxima.proven.front().shape.value > to_beat) {
    answer.result = Refusal{RefusalCode::no_interior_maximum, {maxima.rises_outward ? -1.0 : 1.0}};
    return answer;
  }
  answer.result = fit_of(sample, request, maxima, first);
  return answer;
}

}  // namespace tavlo
