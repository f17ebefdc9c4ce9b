// Objective: what a search of mixture parameters minimises, to second order: minus ln L of
// ln t (a constant away from that of t), or 1 - r squared. No floors: a point where a row
// has no density is not defined.
#pragma once

#include <array>
#include <memory>

#include "fit/minimiser/newton.h"
#include "fit/mixture/mixture_rows.h"
#include "fit/mixture/populations.h"

namespace tavlo {

/// Failures that belong to A, B and C, each by the share that the population has in the
/// density at its time.
struct ExpectedFailures {
  double a = 0, b = 0, c = 0;
};

/// Belongs to one run: it remembers the times of the last point as starts for the next.
class Objective {
 public:
  virtual ~Objective() = default;

  /// False where a row has no value.
  virtual bool shape_at(const SmallVector& q, LocalShape& shape) = 0;
  /// The value alone; not finite where there is none. By vertical distances also for X on
  /// Y: cheap, and good enough to compare starts.
  virtual double rough_value_at(const SmallVector& q) const = 0;
  virtual ExpectedFailures expected_failures(const SmallVector& q) const = 0;
};

/// `rows` must outlive it.
std::unique_ptr<Objective> make_objective(const MixtureRows& rows, Populations populations);

/// The same, but vertical distances for X on Y where they lead to the same basins: cheap.
/// (Two populations of which one has a share are the exception.)
std::unique_ptr<Objective> make_rough_objective(const MixtureRows& rows, Populations populations);

/// Quality as a person reads it from a value of the objective: r squared, or ln L in
/// inner units of time.
double quality_of(const MixtureRows& rows, double value);

}  // namespace tavlo
