// Global search: the best optimum that thousands of starts find, by an objective and an
// optimiser that share nothing with the program. The opinion that its answers are held against.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "convergence/objective.h"

namespace tavlo::bench {

struct Optimum {
  Vector point{};
  Shape shape;
  double value = 0;
  double decrement = 0;
  bool at_share_bound = false;
};

/// The limits of an answer: slopes at most `steepest`, two failures in each population,
/// a share of 0.001 to 0.999.
struct Fence {
  double steepest = 50;
};
inline constexpr double fewest_failures = 2;
inline constexpr double least_share = 0.001;

/// 50, or 25 times the slope of W2P on the rows of the objective.
Fence fence_of(const Objective& single);

/// Why a point is no answer; `none` for a proven optimum inside the fence.
enum class Flaw { none, undefined, steep, share_outside, too_few_failures, climbs, not_definite };
const char* words_of(Flaw flaw);

/// Judges a point by the objective's own gradient and Hessian. `decrement` is the gain that
/// a Newton step promises. Where the point stands on the share's bound the share is held,
/// and the gradient must point out.
Flaw judge(const Objective& objective, const Fence& fence, Optimum& at);

/// Climbs from a point to a proven optimum inside the fence.
std::optional<Optimum> climb(const Objective& objective, const Fence& fence, const Vector& start,
                             int iterations = 300);

/// The best proven optimum of W2P, or nothing where the likelihood has none.
std::optional<Optimum> best_single(const Objective& single);

/// The best proven optimum from `starts` random starts and from each of `given`.
std::optional<Optimum> best_of_many(const Objective& objective, const Fence& fence, int starts,
                                    std::uint64_t seed, const std::vector<Vector>& given = {});

/// The best answer of a model in the sense above: an optimum of its own, or that of a model
/// that it contains. `contained` is the best of the contained models alone.
struct BestAnswer {
  std::optional<Optimum> best, contained;
};

/// W4P, W5C or W7P by a method. Of W7P the contained W4P and W5C get a third of the starts each.
BestAnswer best_answer(const Sample& sample, std::int16_t model, std::int16_t method, bool censored,
                       int starts, std::uint64_t seed, const std::vector<Life>& given = {});

/// Fence of the rows that a request takes.
Fence fence_for(const Sample& sample, std::int16_t method, bool censored);

}  // namespace tavlo::bench
