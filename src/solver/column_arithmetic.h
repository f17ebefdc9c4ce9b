// Column arithmetic: the two loops that all linear algebra of the minimiser is
// made of. Plain doubles over contiguous memory, for columns of millions of rows.
#pragma once

namespace tavlo {

/// Sum of a[i] * b[i] for i from 0 to count - 1. Eight partial sums, always in the
/// same order: one sum alone would wait for each addition, and eight round less.
double dot_product(int count, const double* a, const double* b);

/// target[i] += factor * source[i] for i from 0 to count - 1.
void add_multiple(int count, double factor, const double* source, double* target);

/// values[i] /= divisor for i from 0 to count - 1.
void divide_all(int count, double divisor, double* values);

}  // namespace tavlo
