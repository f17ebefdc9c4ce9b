#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <span>

#include "fit/mixture/objective.h"
#include "fit/parallel.h"
#include "fit/search/optimum_search.h"
#include "fit/search/searched_fits.h"
#include "fit/search/weibull_optimum.h"

namespace tavlo {
namespace {

/// The best answer of a model on its rows, before it is put into words.
struct Best {
  std::int16_t model = 0;  ///< asked for
  bool exists = false;
  Optimum optimum;
  std::int16_t of_model = 0;  ///< the model whose optimum it is: the asked one or a contained one
  SearchOutcome outcome;
  SearchOutcome at_edge;                                    ///< of the share alone
  double lowest = std::numeric_limits<double>::infinity();  ///< of all ends, also unproven ones
  double contained_value = 0;                               ///< the best of the contained models
  std::int16_t contained_model = 0;
};

/// What the fits of one call share.
struct Task {
  const MixtureRows& rows;
  const SearchOptions& options;
  Companion& companion;
  Optimum weibull;  ///< one population on the same rows

  double usual_slope() const { return weibull.point.beta(0); }
};

/// The points from which an optimum of the larger model may branch off.
std::vector<MixturePoint> branching_points(const Best& best) {
  constexpr std::size_t most = 2;
  std::vector<MixturePoint> points;
  for (const FoundOptimum& found : best.outcome.optima)
    if (points.size() < most) points.push_back(found.optimum.point);
  if (best.exists && best.of_model == model_code::weibull2) points.push_back(best.optimum.point);
  return points;
}

/// The larger model's own best, unless a contained one is as good.
Best best_of(const Task& task, std::int16_t model, std::span<const Best> contained) {
  Best best;
  best.model = model;
  KnownGround ground{task.usual_slope(), {}, 0};
  for (const Best& inner : contained) {
    if (inner.model == model) best.at_edge = inner.outcome;  // the model itself, at its edge
    if (!inner.exists) continue;
    best.lowest = std::min(best.lowest, inner.lowest);
    for (const MixturePoint& point : branching_points(inner)) ground.contained.push_back(point);
    if (best.exists && best.optimum.value <= inner.optimum.value) continue;
    best.exists = true;
    best.optimum = inner.optimum;
    best.of_model = inner.of_model;
    if (inner.model == model) continue;
    best.contained_model = inner.of_model;
    best.contained_value = inner.optimum.value;
  }
  ground.value = best.optimum.value;
  SearchOptions options = task.options;
  options.most_starts -= best.at_edge.tried;
  best.outcome = search_optima(task.rows, populations_of(model), ground, options, task.companion);
  best.lowest = std::min(best.lowest, best.outcome.lowest);
  if (best.outcome.optima.empty()) return best;
  const Optimum& own = best.outcome.optima.front().optimum;
  // A contained optimum cut in two stands as high, but for the rounding.
  const double least = best.optimum.value - proving_gain(task.rows);
  if (best.exists && own.value >= least) return best;
  best.exists = true;
  best.optimum = own;
  best.of_model = model;
  return best;
}

Best best_weibull(const Task& task) {
  Best best;
  best.exists = true;
  best.optimum = task.weibull;
  best.of_model = model_code::weibull2;
  best.outcome.optima.push_back({task.weibull, 1, 1});
  return best;
}

/// A share of the units fails and the rest never does: an optimum at the edge of the
/// five-parameter model, which suspensions can carry.
Best best_share_alone(const Task& task) {
  Best best;
  best.model = model_code::weibull5c;
  if (task.rows.suspensions.count == 0) return best;
  const double failed =
      task.rows.failures.total / (task.rows.failures.total + task.rows.suspensions.total);
  // A share that holds all failures is no spike, however small: a large fleet has it.
  Fence fence = Fence::around(task.usual_slope());
  fence.lowest_share = std::min(fence.lowest_share, 0.1 * failed);
  for (const double share : {1.05 * failed, 1.5 * failed, 0.5 * (1 + failed)}) {
    MixturePoint start{share_alone, {}};
    start.q[0] = task.weibull.point.q[0];
    start.q[1] = task.rows.mean_x;
    start.q[2] = logit(std::min(share, 0.99));
    const auto optimum = optimum_from(task.rows, start, fence);
    best.outcome.tried += 1;
    if (!optimum || optimum->at_bound) continue;  // at the upper bound it is one Weibull of all
    take_end(task.rows, {*optimum, 1, 1}, best.outcome.optima);
  }
  if (best.outcome.optima.empty()) return best;
  best.exists = true;
  best.optimum = best.outcome.optima.front().optimum;
  best.of_model = best.model;
  return best;
}

Best best_mixture(const Task& task, std::int16_t model) {
  const Best weibull = best_weibull(task);
  if (model == model_code::weibull4) return best_of(task, model, std::array{weibull});
  if (model == model_code::weibull5c)
    return best_of(task, model, std::array{weibull, best_share_alone(task)});
  const std::array<std::int16_t, 2> smaller = {model_code::weibull4, model_code::weibull5c};
  std::array<Best, 2> inner;
  for (std::size_t i = 0; i < inner.size(); ++i) inner[i] = best_mixture(task, smaller[i]);
  return best_of(task, model, inner);
}

StartsReport starts_of(const Best& best, const Task& task, std::int16_t model) {
  StartsReport report;
  report.tried = best.outcome.tried + best.at_edge.tried;
  if (best.of_model != model) {  // the contained model's answer counts as one start
    report.agreed = std::min(report.tried, 1);
    // The contained optimum cut in two is no other one.
    for (const FoundOptimum& found : best.outcome.optima)
      if (!report.runner_up && found.optimum.value > best.optimum.value + proving_gain(task.rows))
        report.runner_up = quality_of(task.rows, found.optimum.value);
    return report;
  }
  for (const auto* optima : {&best.at_edge.optima, &best.outcome.optima})
    for (const FoundOptimum& found : *optima) {
      if (is_same_optimum(task.rows, best.optimum, found.optimum))
        report.agreed += found.agreed;
      else if (found.optimum.value > best.optimum.value + proving_gain(task.rows))
        report.runner_up = std::max(report.runner_up.value_or(-HUGE_VAL),
                                    quality_of(task.rows, found.optimum.value));
    }
  return report;
}

Proof proof_of(const Best& best, std::int16_t model) {
  Proof proof;
  proof.decrement = best.optimum.decrement;
  proof.smallest_curvature = best.optimum.curvature;
  proof.at_share_bound = best.optimum.at_bound;
  if (best.optimum.at_bound) proof.kind = Proof::Kind::bound;
  if (best.of_model == model) return proof;
  proof.kind = Proof::Kind::flat;
  proof.same_as = best.of_model;
  proof.smallest_curvature = 0;
  return proof;
}

/// The least gain that makes a person take a larger model.
double felt_gain(const MixtureRows& rows) { return rows.is_likelihood() ? 0.5 : 1e-4; }

double distinct_times(const WeightedRows& failures) {
  double times = failures.count > 0 ? 1 : 0;
  for (std::size_t i = 1; i < failures.count; ++i) times += failures.x[i] != failures.x[i - 1];
  return times;
}

/// What a regression's curve is drawn through: F at a time has one value, however many units
/// failed there.
double points_of(const MixtureRows& rows) {
  return rows.method == method_code::y_on_x ? distinct_times(rows.failures)
                                            : static_cast<double>(rows.failures.count);
}

/// Why there may be a better curve that is no answer.
std::optional<Note> note_beyond(const Best& best, const MixtureRows& rows, std::int16_t model) {
  const double gain = best.optimum.value - best.lowest;
  const bool better = gain > felt_gain(rows);
  const auto needed = static_cast<double>(populations_of(model).size());
  const bool larger = best.of_model != model_code::weibull2;
  if (!rows.is_likelihood() && points_of(rows) <= needed && (better || larger))
    return Note{NoteCode::fewer_points, best.of_model, {points_of(rows), needed}};
  // What else rises without limit says nothing against an optimum of the model's own.
  const bool whole = best.of_model == model && best.optimum.point.populations.a;
  if (!better || whole) return std::nullopt;
  return Note{NoteCode::better_beyond_fence, best.of_model, {gain}};
}

std::vector<Note> notes_of(const Best& best, const Task& task, const FitRequest& request) {
  std::vector<Note> notes;
  const bool own = best.of_model == request.model;
  const bool unreached = !best.optimum.point.populations.a;
  const double gain = own ? best.contained_value - best.optimum.value : 0.0;
  const double felt = felt_gain(task.rows);
  if (best.contained_model != 0 && gain < felt)
    notes.push_back({NoteCode::no_second_population, best.contained_model, {gain}});
  if (unreached) notes.push_back({NoteCode::population_not_reached, 0, {2}});
  if (const auto note = note_beyond(best, task.rows, request.model)) notes.push_back(*note);
  if (best.optimum.at_bound)
    notes.push_back({NoteCode::share_at_bound, 0, {best.optimum.point.share()}});
  if (own && !unreached && !best.outcome.optima.empty() && best.outcome.optima.front().finds < 2)
    notes.push_back({NoteCode::unconfirmed, 0, {}});
  return notes;
}

FitAnswer answer_of(const Best& best, const Task& task, const Sample& sample,
                    const FitRequest& request) {
  if (best.outcome.stopped) return {Refusal{RefusalCode::stopped, {}}, {}};
  if (!best.exists) return {Refusal{RefusalCode::no_proven_optimum, {}}, {}};
  Fit fit;
  fit.life = life_of(request.model, best.optimum.point, sample.exponent);
  const double shift =
      task.rows.is_likelihood() ? sample.total_failures * sample.exponent * std::numbers::ln2 : 0.0;
  fit.quality = quality_of(task.rows, best.optimum.value) - shift;
  fit.proof = proof_of(best, request.model);
  fit.starts = starts_of(best, task, request.model);
  if (fit.starts->runner_up) *fit.starts->runner_up -= shift;
  return {fit, notes_of(best, task, request)};
}

}  // namespace

FitAnswer fit_mixture(const Sample& sample, const FitRequest& request, Companion& companion) {
  const MixtureRows rows = mixture_rows(sample, request.method, request.censored);
  const auto weibull = one_weibull_optimum(rows);
  if (!weibull) return {refuse_without_weibull(rows), {}};
  const Task task{rows, request.search, companion, *weibull};
  const Best best = best_mixture(task, request.model);
  return answer_of(best, task, sample, request);
}

}  // namespace tavlo
