// Small matrices: vectors and symmetric matrices of at most seven variables, with the two
// decompositions that a minimiser needs.
#pragma once

#include <array>
#include <cstddef>

namespace tavlo {

inline constexpr std::size_t most_variables = 7;

using SmallVector = std::array<double, most_variables>;

/// Symmetric; only the entries below `size` of its owner count.
struct SmallMatrix {
  std::array<SmallVector, most_variables> rows{};

  double& operator()(std::size_t i, std::size_t j) { return rows[i][j]; }
  double operator()(std::size_t i, std::size_t j) const { return rows[i][j]; }
};

/// Solves matrix x = right by Cholesky's decomposition. False where a pivot is not above
/// `least_pivot` times its diagonal entry: the matrix is not positive definite.
bool solve_definite(const SmallMatrix& matrix, const SmallVector& right, std::size_t size,
                    SmallVector& x, double least_pivot = 1e-14);

/// The smallest eigenvalue, by Jacobi's rotations.
double smallest_eigenvalue(SmallMatrix matrix, std::size_t size);

/// The matrix with rows and columns divided by the roots of its diagonal, so that its
/// diagonal is 1; a diagonal entry not above 0 leaves its row as it is.
SmallMatrix with_unit_diagonal(const SmallMatrix& matrix, std::size_t size);

}  // namespace tavlo
