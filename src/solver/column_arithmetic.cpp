#include "solver/column_arithmetic.h"

#include <array>

namespace tavlo {

double dot_product(int count, const double* a, const double* b) {
  constexpr int lanes = 8;
  std::array<double, lanes> sums{};
  int i = 0;
  for (; i + lanes <= count; i += lanes)
    for (int lane = 0; lane < lanes; ++lane) sums[lane] += a[i + lane] * b[i + lane];
  double rest = 0;
  for (; i < count; ++i) rest += a[i] * b[i];
  const double even = (sums[0] + sums[2]) + (sums[4] + sums[6]);
  const double odd = (sums[1] + sums[3]) + (sums[5] + sums[7]);
  return even + odd + rest;
}

void add_multiple(int count, double factor, const double* source, double* target) {
  for (int i = 0; i < count; ++i) target[i] += factor * source[i];
}

void divide_all(int count, double divisor, double* values) {
  for (int i = 0; i < count; ++i) values[i] /= divisor;
}

}  // namespace tavlo
