// Newton's minimiser: Levenberg-Marquardt on the products of first derivatives (the squares'
// own curvature, or the products of scores) far from a minimum, Newton's method with the
// true Hessian where that is definite. Knows functions, no models.
//
// Damping after K. Madsen, H. B. Nielsen, O. Tingleff, Methods for Non-Linear Least Squares
// Problems (2004), algorithm 3.16.
#pragma once

#include <functional>
#include <limits>

#include "fit/minimiser/small_matrix.h"

namespace tavlo {

/// A function at a point, to second order.
struct LocalShape {
  double value = 0;
  SmallVector gradient{};
  SmallMatrix hessian;
  SmallMatrix products;  ///< sum of the products of first derivatives: never indefinite
};

/// The function to minimise: false where it is not defined.
using ShapedFunction = std::function<bool(const SmallVector& q, LocalShape& shape)>;

/// What a minimiser must know of a function beside its values.
struct Terrain {
  std::size_t size = 0;
  SmallVector longest_step{};            ///< of each variable
  std::size_t bounded = most_variables;  ///< the variable held between `low` and `high`, if any
  double low = 0;
  double high = 0;
  /// False where a run is not worth going on: it leaves for a spike.
  std::function<bool(const SmallVector& q)> inside;
  double small_gain = 1e-9;  ///< a decrement below it ends a run
  int most_steps = 80;
  /// A run gives up when at its pace it gets nowhere near this value in the steps left.
  double to_beat = -std::numeric_limits<double>::infinity();
  /// Of a Hessian with unit diagonal: below it the point lies on a ridge, as where one
  /// population is cut in two, and how far the run came decides on the sign.
  double least_curvature = 1e-6;
  bool judged = true;  ///< false: the end is a point on the way, its kind doesn't matter
};

struct MinimiserEnd {
  enum class Kind {
    minimum,    ///< gradient about 0 and the Hessian of the free variables definite
    flat,       ///< gradient about 0, the Hessian not definite
    cut_off,    ///< left for a spike
    unfinished  ///< out of steps, or undefined at the start
  };
  Kind kind = Kind::unfinished;
  SmallVector q{};
  LocalShape shape;
  bool at_bound = false;  ///< the bounded variable stands at its bound, held there by the gradient
  double decrement = 0;   ///< half of gradient x Newton step: what a further step promises
  double curvature = 0;   ///< smallest eigenvalue of the Hessian of the free variables
  int evaluations = 0;
};

MinimiserEnd minimise(const ShapedFunction& function, const Terrain& terrain, SmallVector start);

}  // namespace tavlo
