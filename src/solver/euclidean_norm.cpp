#include "solver/euclidean_norm.h"

#include <cmath>

#include "numerics/number_text.h"
#include "numerics/real.h"
#include "solver/column_arithmetic.h"

namespace tavlo {

double fd_Enorm(ErrorReporter& reporter, int count, const double* vector) {
  const double sum = dot_product(count, vector + 1, vector + 1);
  const auto words = [&](ErrorReporter& to) {
    to.add_lines({"Error in Euclidian Norm: ", "Sum: " + number_text(sum), "fd_Enorm:"});
  };
  return guarded(reporter, 0.0, words, [&] { return std::sqrt(finite(sum)); });
}

double euclidean_norm(Solver& solver, int count, const double* vector) {
  const double sum = dot_product(count, vector + 1, vector + 1);
  if (!std::isfinite(sum) && !solver.quiet) fd_Enorm(solver.errors, count, vector);
  return std::sqrt(finite(sum));
}

}  // namespace tavlo
