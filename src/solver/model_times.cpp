#include "solver/model_times.h"

#include <limits>

#include "numerics/pack_math.h"
#include "solver/mixture_terms.h"

namespace tavlo {
namespace {

constexpr double undefined = std::numeric_limits<double>::quiet_NaN();

/// Halley's steps shrink with their third power: behind a step of this size nothing
/// is left to gain at any slope below 1000.
constexpr double last_step = 1e-6;
constexpr int most_steps = 60;

/// An ordinate and its first two derivatives by log time.
struct Curve {
  Pack y, slope, bend;
};

/// H and its first two derivatives by log time; the ordinate is ln H.
struct Risk {
  Pack H, first, second;

  void add(Pack hazard, double beta) {
    const Pack rate = hazard * beta;
    H = H + hazard;
    first = first + rate;
    second = second + rate * beta;
  }

  // -ln T has the slope w beta C, w = p exp(-C) / T the share of C's units among
  // the survivors.
  void add_share(Pack C, double beta, double p) {
    const Pack still = expm1(-C);
    const Pack share = still * p;
    const Pack w = (share + p) / (share + 1.0);
    const Pack rate = w * C * beta;
    H = H - log1p(share);
    first = first + rate;
    second = second + rate * beta * (1.0 - C * (1.0 - w));
  }
};

template <int K>
Curve curve_at(const SolverParams& q, Pack x) {
  const Hazards<Pack> h = hazards<K>(q, distances<K>(q, x));
  Risk risk;
  risk.add(h.A, q.BetaA);
  if constexpr (has_b(K)) risk.add(h.B, q.BetaB);
  if constexpr (has_c(K)) risk.add_share(h.C, q.BetaC, q.Extra);
  const Pack slope = risk.first / risk.H;
  return {normal_ln(risk.H), slope, risk.second / risk.H - slope * slope};
}

Pack halley_step(const Curve& curve, Pack target) {
  const Pack newton = (curve.y - target) / curve.slope;
  const Pack correction = 1.0 - newton * curve.bend / (curve.slope * 2.0);
  return newton / bounded(0.5, correction, 2.0);
}

/// The root for the rows of a pack. A step that leaves the bracket is replaced by its middle.
template <int K>
Pack model_time(const SolverParams& q, Pack start, Pack target) {
  Pack x = start;
  Pack low = x - farthest_model_time;
  Pack high = x + farthest_model_time;
  Pack open = 1.0;  // 0 where the time has been found
  for (int count = 0; count < most_steps && any(open > Pack(0.0)); ++count) {
    const Curve curve = curve_at<K>(q, x);
    const PackMask below = curve.y < target;
    low = select(below, x, low);
    high = select(below, high, x);
    const Pack wish = x - halley_step(curve, target);
    const PackMask inside = wish == least(greatest(wish, low), high);
    const Pack next = select(inside, wish, (low + high) * 0.5);
    const Pack distance = select(inside, abs(wish - x), 1.0);
    x = select(open > Pack(0.0), next, x);
    open = select(distance <= Pack(last_step), 0.0, open);
  }
  return select(open > Pack(0.0), undefined, x);
}

/// Only for ordinates that the model reaches without the bounds put on it.
template <int K>
Pack found_time(const SolverParams& q, Pack start, Pack target) {
  constexpr double lowest = has_c(K) ? -25.3 : 1 - exponent_limit;
  constexpr double highest = has_c(K) ? 3.23 : exponent_limit - 1;
  const PackMask reachable = target == bounded(lowest, target, highest);
  return select(reachable, model_time<K>(q, start, target), undefined);
}

template <>
Pack found_time<2>(const SolverParams& q, Pack, Pack target) {
  return target / q.BetaA + q.LnEtaA;
}

template <int K>
void find_times(const SolverParams& q, const RowBlock& block, const RowBlock::Values& targets,
                RowBlock::Values& times) {
  for (int k = 0; k < block.count; k += Pack::lanes) {
    const Pack start = Pack::load(&block.x[RowBlock::at(k)]);
    const Pack time = found_time<K>(q, start, Pack::load(&targets[RowBlock::at(k)]));
    const PackMask near = abs(time - start) <= Pack(farthest_model_time);
    select(near, time, undefined).store(&times[RowBlock::at(k)]);
  }
}

}  // namespace

void find_model_times(const SolverParams& params, int K, const RowBlock& block,
                      const RowBlock::Values& targets, RowBlock::Values& times) {
  switch (K) {
    case 2: return find_times<2>(params, block, targets, times);
    case 4: return find_times<4>(params, block, targets, times);
    case 5: return find_times<5>(params, block, targets, times);
    case 7: return find_times<7>(params, block, targets, times);
    default: times.fill(undefined);
  }
}

}  // namespace tavlo
