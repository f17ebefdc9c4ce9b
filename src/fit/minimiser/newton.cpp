#include "fit/minimiser/newton.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavlo {
namespace {

// In small gains: a variable whose own curvature is less has no effect, however definite the
// scaled Hessian looks. (Where a curve has a plateau, a share moves times by so much that the
// unscaled eigenvalues drown in its rounding.)
constexpr double felt_curvature = 1e3;
constexpr double first_damping = 1e-3;
constexpr double most_damping = 1e12;

class NewtonRun {
 public:
  NewtonRun(const ShapedFunction& function, const Terrain& terrain)
      : function_(function), terrain_(terrain) {}

  MinimiserEnd from(const SmallVector& start) {
    end_.q = start;
    if (terrain_.bounded < size()) {
      double& bounded = end_.q[terrain_.bounded];
      bounded = std::clamp(bounded, terrain_.low, terrain_.high);
    }
    if (!evaluate(end_.q, end_.shape)) return end_;
    for (int step = 0; step < terrain_.most_steps; ++step) {
      find_free();
      if (is_at_rest()) {
        settle();
        return concluded();
      }
      if (is_hopeless(step)) break;
      if (!advance()) return concluded();
      if (terrain_.inside && !terrain_.inside(end_.q)) {
        end_.kind = MinimiserEnd::Kind::cut_off;
        return end_;
      }
    }
    find_free();
    return concluded();
  }

 private:
  std::size_t size() const { return terrain_.size; }

  bool evaluate(const SmallVector& q, LocalShape& shape) {
    ++end_.evaluations;
    return function_(q, shape) && std::isfinite(shape.value);
  }

  /// Only the bounded variable can be held: at its bound, with the descent pointing out.
  void find_free() {
    free_count_ = 0;
    end_.at_bound = false;
    for (std::size_t i = 0; i < size(); ++i) {
      const bool low = i == terrain_.bounded && end_.q[i] <= terrain_.low;
      const bool high = i == terrain_.bounded && end_.q[i] >= terrain_.high;
      const double g = end_.shape.gradient[i];
      if ((low && g >= 0) || (high && g <= 0))
        end_.at_bound = true;
      else
        free_[free_count_++] = i;
    }
  }

  /// Looks at the pace every ten steps, once the first twenty are done.
  bool is_hopeless(int step) {
    constexpr int stage = 10;
    if (step % stage != 0) return false;
    const double gained = std::exchange(stage_value_, end_.shape.value) - end_.shape.value;
    const double stages_left = static_cast<double>(terrain_.most_steps - step) / stage;
    return step > stage && std::isfinite(terrain_.to_beat) &&
           end_.shape.value - gained * stages_left > terrain_.to_beat;
  }

  SmallVector free_gradient() const {
    SmallVector g{};
    for (std::size_t i = 0; i < free_count_; ++i) g[i] = end_.shape.gradient[free_[i]];
    return g;
  }

  SmallMatrix free_part(const SmallMatrix& whole) const {
    SmallMatrix part;
    for (std::size_t i = 0; i < free_count_; ++i)
      for (std::size_t j = 0; j < free_count_; ++j) part(i, j) = whole(free_[i], free_[j]);
    return part;
  }

  /// The Newton step by the true Hessian promises next to nothing.
  bool is_at_rest() {
    SmallVector step{};
    const SmallVector g = free_gradient();
    if (!solve_definite(free_part(end_.shape.hessian), g, free_count_, step)) return false;
    return half_product(g, step) <= terrain_.small_gain;
  }

  /// One more Newton step takes a proven end to its last digits.
  void settle() {
    SmallVector step{};
    if (!terrain_.judged ||
        !solve_definite(free_part(end_.shape.hessian), free_gradient(), free_count_, step))
      return;
    SmallVector q = end_.q;
    for (std::size_t i = 0; i < free_count_; ++i) q[free_[i]] -= step[i];
    if (terrain_.bounded < size()) {
      double& value = q[terrain_.bounded];
      value = std::clamp(value, terrain_.low, terrain_.high);
    }
    LocalShape shape;
    const double noise = 1e-13 * std::fabs(end_.shape.value);
    if (!evaluate(q, shape) || shape.value > end_.shape.value + noise) return;
    end_.q = q;
    end_.shape = shape;
    find_free();
  }

  double half_product(const SmallVector& a, const SmallVector& b) const {
    double sum = 0;
    for (std::size_t i = 0; i < free_count_; ++i) sum += a[i] * b[i];
    return 0.5 * sum;
  }

  /// Moves to a lower point; false when none is found.
  bool advance() {
    while (damping_ < most_damping) {
      const Trial trial = propose();
      LocalShape shape;
      const bool sound = trial.promise > 0 && evaluate(trial.q, shape);
      const double gain = sound ? end_.shape.value - shape.value : -1;
      // At the end rounding hides what a step gains; the promise is the better judge.
      const double noise = 1e-14 * std::fabs(end_.shape.value);
      const bool unseen = sound && trial.promise <= noise && gain >= -4 * noise;
      if (gain > 1e-4 * trial.promise || unseen) {
        widen(gain / trial.promise);
        end_.q = trial.q;
        end_.shape = shape;
        return !unseen;
      }
      damping_ *= growth_;
      growth_ *= 2;
    }
    return false;
  }

  void widen(double ratio) {
    const double f = 2 * ratio - 1;
    damping_ = std::max(damping_ * std::clamp(1 - f * f * f, 0.1, 2.0), 1e-12);
    growth_ = 4;
  }

  struct Trial {
    SmallVector q{};
    double promise = 0;
  };

  Trial propose() const {
    const SmallVector g = free_gradient();
    SmallMatrix curvature = free_part(end_.shape.hessian);
    const SmallMatrix products = free_part(end_.shape.products);
    SmallVector step{};
    if (!damped_step(curvature, products, g, step)) {
      curvature = products;
      if (!damped_step(curvature, products, g, step)) return {end_.q, 0};
    }
    return shortened(curvature, g, step);
  }

  bool damped_step(SmallMatrix curvature, const SmallMatrix& products, const SmallVector& g,
                   SmallVector& step) const {
    double largest = 0;
    for (std::size_t i = 0; i < free_count_; ++i) largest = std::max(largest, products(i, i));
    for (std::size_t i = 0; i < free_count_; ++i)
      curvature(i, i) += damping_ * std::max(products(i, i), 1e-6 * largest);
    return solve_definite(curvature, g, free_count_, step, 1e-12);
  }

  /// The step cut to the longest allowed and to the bound, with what it promises.
  Trial shortened(const SmallMatrix& curvature, const SmallVector& g, SmallVector step) const {
    double scale = 1;
    for (std::size_t i = 0; i < free_count_; ++i)
      scale =
          std::min(scale, terrain_.longest_step[free_[i]] / std::max(std::fabs(step[i]), 1e-300));
    Trial trial{end_.q, 0};
    for (std::size_t i = 0; i < free_count_; ++i) {
      double& value = trial.q[free_[i]];
      const double from = value;
      value -= scale * step[i];
      if (free_[i] == terrain_.bounded) value = std::clamp(value, terrain_.low, terrain_.high);
      step[i] = from - value;
    }
    double bend = 0;
    for (std::size_t i = 0; i < free_count_; ++i)
      for (std::size_t j = 0; j < free_count_; ++j) bend += step[i] * curvature(i, j) * step[j];
    trial.promise = 2 * half_product(g, step) - 0.5 * bend;
    return trial;
  }

  /// Judges the point where the run ended.
  MinimiserEnd concluded() {
    if (!terrain_.judged) return end_;
    const SmallMatrix hessian = free_part(end_.shape.hessian);
    const SmallVector g = free_gradient();
    end_.curvature = smallest_eigenvalue(hessian, free_count_);
    const double relative =
        smallest_eigenvalue(with_unit_diagonal(hessian, free_count_), free_count_);
    SmallVector step{};
    const bool definite = relative > terrain_.least_curvature &&
                          least_diagonal(hessian) > felt_curvature * terrain_.small_gain &&
                          solve_definite(hessian, g, free_count_, step);
    end_.decrement = definite ? half_product(g, step) : gain_of_products(g);
    const bool at_rest = end_.decrement <= 100 * terrain_.small_gain;
    end_.kind = !at_rest   ? MinimiserEnd::Kind::unfinished
                : definite ? MinimiserEnd::Kind::minimum
                           : MinimiserEnd::Kind::flat;
    return end_;
  }

  double least_diagonal(const SmallMatrix& matrix) const {
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < free_count_; ++i) least = std::min(least, matrix(i, i));
    return least;
  }

  double gain_of_products(const SmallVector& g) const {
    SmallVector step{};
    SmallMatrix products = free_part(end_.shape.products);
    for (std::size_t i = 0; i < free_count_; ++i) products(i, i) *= 1 + 1e-9;
    return solve_definite(products, g, free_count_, step, 1e-15) ? half_product(g, step) : 1e300;
  }

  const ShapedFunction& function_;
  const Terrain& terrain_;
  MinimiserEnd end_;
  std::array<std::size_t, most_variables> free_{};
  std::size_t free_count_ = 0;
  double damping_ = first_damping;
  double growth_ = 4;
  double stage_value_ = 0;  ///< at the last look at the pace
};

}  // namespace

MinimiserEnd minimise(const ShapedFunction& function, const Terrain& terrain, SmallVector start) {
  return NewtonRun(function, terrain).from(start);
}

}  // namespace tavlo
