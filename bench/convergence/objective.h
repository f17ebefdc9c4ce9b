// Objective of a mixture fit as the independent search sees it: ln L or r squared with
// gradient and Hessian by the logarithms of the parameters, from formulas of its own.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "fit/request.h"
#include "fit/sample.h"
#include "life/life.h"

namespace tavlo::bench {

inline constexpr std::size_t most_parameters = 7;
using Vector = std::array<double, most_parameters>;
using Matrix = std::array<Vector, most_parameters>;

/// Which populations a model has: A and B act on all units, C on a share of them.
struct Shape {
  bool a = true, b = false, c = false;
  bool share = false;  ///< of the units that carry C

  std::size_t parameters() const {
    return 2u * (static_cast<std::size_t>(a) + b + c) + static_cast<std::size_t>(share);
  }
};

/// Of W2P, W4P, W5C, W7P.
Shape shape_of(std::int16_t model);

/// A share of the units fails by C, the rest never: W5C whose A is not reached.
inline constexpr Shape cured{false, false, true, true};

/// What is known at a point. Parameters: ln beta, ln eta of each population in the order
/// A, B, C, then the logit of the share.
struct Evaluation {
  double value = 0;  ///< ln L or r squared; not finite where it is undefined
  Vector gradient{};
  Matrix hessian{};
  Matrix squares{};  ///< sum of products of the rows' gradients: a curvature never indefinite
};

/// For one thread at a time: it remembers roots to start from.
class Objective {
 public:
  Objective(const Sample& sample, Shape shape, std::int16_t method, bool with_suspensions);

  const Shape& shape() const { return shape_; }
  std::int16_t method() const { return method_; }
  bool is_likelihood() const { return method_ == method_code::mle; }
  std::size_t parameters() const { return shape_.parameters(); }
  double failures() const { return total_; }
  /// ln times of the failures, inner unit, ascending.
  const std::vector<double>& ln_times() const { return x_; }

  double value(const Vector& v) const;
  void evaluate(const Vector& v, Evaluation& out) const;
  /// Expected failures of A, B, C.
  std::array<double, 3> expected_failures(const Vector& v) const;

  /// A life as a point (times in the person's unit there, inner ones here), and back.
  Vector point_of(const Life& life) const;
  Life life_of(const Vector& v, std::int16_t model) const;

 private:
  double start_of(std::size_t row) const;

  Shape shape_;
  std::int16_t method_;
  double unit_ = 1;   ///< a person's time of one inner unit
  double total_ = 0;  ///< failures
  double spread_ = 0;
  std::vector<double> x_, y_, weight_;      ///< failures
  std::vector<double> late_, late_weight_;  ///< suspensions
  mutable std::vector<double> last_root_;   ///< ln times at which the ordinates were last reached
};

}  // namespace tavlo::bench
