#include "fit/minimiser/small_matrix.h"

#include <algorithm>
#include <cmath>

namespace tavlo {
namespace {

/// L of matrix = L L', in its lower triangle.
bool decompose(SmallMatrix& m, std::size_t size, double least_pivot) {
  for (std::size_t j = 0; j < size; ++j) {
    const double diagonal = m(j, j);
    double pivot = diagonal;
    for (std::size_t k = 0; k < j; ++k) pivot -= m(j, k) * m(j, k);
    if (!(pivot > least_pivot * diagonal) || !(diagonal > 0)) return false;
    m(j, j) = std::sqrt(pivot);
    for (std::size_t i = j + 1; i < size; ++i) {
      double sum = m(i, j);
      for (std::size_t k = 0; k < j; ++k) sum -= m(i, k) * m(j, k);
      m(i, j) = sum / m(j, j);
    }
  }
  return true;
}

/// Turns rows and columns p, q so that the entry (p, q) becomes 0.
void rotate(SmallMatrix& m, std::size_t size, std::size_t p, std::size_t q) {
  const double off = m(p, q);
  if (off == 0) return;
  const double theta = (m(q, q) - m(p, p)) / (2 * off);
  const double t = (theta < 0 ? -1 : 1) / (std::fabs(theta) + std::sqrt(theta * theta + 1));
  const double c = 1 / std::sqrt(t * t + 1);
  const double s = t * c;
  for (std::size_t k = 0; k < size; ++k) {
    const double kp = m(k, p), kq = m(k, q);
    m(k, p) = c * kp - s * kq;
    m(k, q) = s * kp + c * kq;
  }
  for (std::size_t k = 0; k < size; ++k) {
    const double pk = m(p, k), qk = m(q, k);
    m(p, k) = c * pk - s * qk;
    m(q, k) = s * pk + c * qk;
  }
}

}  // namespace

bool solve_definite(const SmallMatrix& matrix, const SmallVector& right, std::size_t size,
                    SmallVector& x, double least_pivot) {
  SmallMatrix m = matrix;
  if (!decompose(m, size, least_pivot)) return false;
  for (std::size_t i = 0; i < size; ++i) {
    double sum = right[i];
    for (std::size_t k = 0; k < i; ++k) sum -= m(i, k) * x[k];
    x[i] = sum / m(i, i);
  }
  for (std::size_t i = size; i-- > 0;) {
    double sum = x[i];
    for (std::size_t k = i + 1; k < size; ++k) sum -= m(k, i) * x[k];
    x[i] = sum / m(i, i);
  }
  return std::all_of(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(size),
                     [](double value) { return std::isfinite(value); });
}

double smallest_eigenvalue(SmallMatrix m, std::size_t size) {
  constexpr int most_sweeps = 20;
  for (int sweep = 0; sweep < most_sweeps; ++sweep) {
    double off = 0, all = 0;
    for (std::size_t p = 0; p < size; ++p)
      for (std::size_t q = 0; q < size; ++q) (p == q ? all : off) += m(p, q) * m(p, q);
    if (!(off > 1e-30 * all)) break;
    for (std::size_t p = 0; p < size; ++p)
      for (std::size_t q = p + 1; q < size; ++q) rotate(m, size, p, q);
  }
  double least = m(0, 0);
  for (std::size_t i = 1; i < size; ++i) least = std::min(least, m(i, i));
  return least;
}

SmallMatrix with_unit_diagonal(const SmallMatrix& matrix, std::size_t size) {
  SmallMatrix scaled = matrix;
  for (std::size_t i = 0; i < size; ++i)
    for (std::size_t j = 0; j < size; ++j)
      if (matrix(i, i) > 0 && matrix(j, j) > 0)
        scaled(i, j) /= std::sqrt(matrix(i, i)) * std::sqrt(matrix(j, j));
  return scaled;
}

}  // namespace tavlo
