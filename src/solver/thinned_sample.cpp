#include "solver/thinned_sample.h"

#include <algorithm>

namespace tavlo {
namespace {

/// Appends `wanted` of the `count` rows behind row `offset`, the middle one of
/// each equal part.
void append_part(const RegressBlock& block, int offset, int count, int wanted, SolverData& data) {
  for (std::int64_t k = 0; k < wanted; ++k) {
    const int row = offset + 1 + static_cast<int>((2 * k + 1) * count / (2 * wanted));
    data.M += 1;
    data.Xs(data.M) = block.T(row);
    data.Ys(data.M) = block.F(row);
  }
}

}  // namespace

SolverState thinned_sample(const SolverState& whole, int failures) {
  SolverState sample;
  SolverData& data = sample.data;
  const int part = std::min(failures, whole.data.N);
  const int suspensions = static_cast<int>(std::int64_t{whole.data.NS} * part / whole.data.N);
  for (Slots<double>* rows : {&data.Xs, &data.Ys, &data.Xhat}) rows->resize(part + suspensions);
  append_part(whole.block, 0, whole.data.N, part, data);
  data.N = part;
  append_part(whole.block, whole.data.N, whole.data.NS, suspensions, data);
  data.K = whole.data.K;
  data.Method = whole.data.Method;
  data.CensoredLikelihood = whole.data.CensoredLikelihood;
  return sample;
}

}  // namespace tavlo
