#include "fit/search/optimum.h"

#include <algorithm>
#include <cmath>

#include "fit/mixture/objective.h"

namespace tavlo {
namespace {

/// A decrement that ends a run.
double small_gain(const MixtureRows& rows) { return rows.is_likelihood() ? 1e-9 : 1e-13; }

Terrain terrain_of(const MixtureRows& rows, const Populations& populations, const Fence& fence) {
  Terrain terrain;
  terrain.size = populations.size();
  terrain.small_gain = small_gain(rows);
  terrain.longest_step.fill(1.0);
  if (populations.c) {
    terrain.bounded = populations.at_share();
    terrain.low = logit(fence.lowest_share);
    terrain.high = logit(Fence::highest_share);
    terrain.longest_step[terrain.bounded] = 2.0;
  }
  terrain.inside = [steepest = std::log(fence.steepest),
                    count = populations.count()](const SmallVector& q) {
    for (std::size_t i = 0; i < 2 * count; i += 2)
      if (!(q[i] < steepest)) return false;
    return true;
  };
  return terrain;
}

/// A population without failures to speak of is a ridge, one with few a spike.
bool is_carried(const Objective& objective, const MixturePoint& point) {
  const ExpectedFailures held = objective.expected_failures(point.q);
  const Populations& has = point.populations;
  const auto enough = [](double failures) { return failures >= Fence::fewest_failures; };
  return (!has.a || enough(held.a)) && (!has.b || enough(held.b)) && (!has.c || enough(held.c));
}

}  // namespace

double proving_gain(const MixtureRows& rows) { return rows.is_likelihood() ? 1e-6 : 1e-10; }

Fence Fence::around(double usual) { return {std::max(50.0, 25 * usual)}; }

std::optional<Optimum> optimum_from(const MixtureRows& rows, const MixturePoint& start,
                                    const Fence& fence, double to_beat, double* ridge) {
  const Populations& populations = start.populations;
  const auto objective = make_objective(rows, populations);
  const ShapedFunction function = [&](const SmallVector& q, LocalShape& shape) {
    return objective->shape_at(q, shape);
  };
  Terrain terrain = terrain_of(rows, populations, fence);
  terrain.to_beat = to_beat;
  MixturePoint from = start;
  order_risks(from);
  MinimiserEnd end = minimise(function, terrain, from.q);
  if (ridge && end.kind != MinimiserEnd::Kind::cut_off && end.evaluations > 1)
    *ridge = end.shape.value;
  if (end.kind != MinimiserEnd::Kind::minimum || end.decrement > proving_gain(rows)) return {};
  Optimum optimum{{populations, end.q}, end.shape.value, end.shape.hessian,
                  end.at_bound,         end.decrement,   end.curvature};
  order_risks(optimum.point);
  if (!(optimum.point.q == end.q)) {  // the Hessian belongs to the order
    LocalShape shape;
    if (!objective->shape_at(optimum.point.q, shape)) return {};
    optimum.hessian = shape.hessian;
  }
  if (!terrain.inside(optimum.point.q) || !is_carried(*objective, optimum.point)) return {};
  return optimum;
}

std::optional<Sketch> sketch_from(const MixtureRows& rows, const MixturePoint& start,
                                  const Fence& fence) {
  constexpr int few_steps = 6;
  const auto objective = make_rough_objective(rows, start.populations);
  const ShapedFunction function = [&](const SmallVector& q, LocalShape& shape) {
    return objective->shape_at(q, shape);
  };
  Terrain terrain = terrain_of(rows, start.populations, fence);
  terrain.most_steps = few_steps;
  terrain.judged = false;
  const MinimiserEnd end = minimise(function, terrain, start.q);
  if (end.kind == MinimiserEnd::Kind::cut_off || end.evaluations < 2) return {};
  Sketch sketch{{start.populations, end.q}, end.shape.value};
  order_risks(sketch.point);
  if (!is_carried(*objective, sketch.point)) return {};
  return sketch;
}

bool is_same_optimum(const MixtureRows& rows, const Optimum& a, const Optimum& b) {
  if (a.point.populations != b.point.populations) return false;
  const std::size_t size = a.point.populations.size();
  double gain = 0;
  for (std::size_t i = 0; i < size; ++i)
    for (std::size_t j = 0; j < size; ++j)
      gain += 0.5 * (a.point.q[i] - b.point.q[i]) * a.hessian(i, j) * (a.point.q[j] - b.point.q[j]);
  return gain <= (rows.is_likelihood() ? 1e-4 : 1e-8);
}

}  // namespace tavlo
