#include "fit/likelihood/likelihood.h"

#include <algorithm>

#include "numerics/compensated_sum.h"
#include "numerics/infinity.h"
#include "numerics/pack_math.h"
#include "numerics/real.h"

namespace tavlo {
WeibullLikelihood::WeibullLikelihood(const Sample& sample, int mode) : sample_(sample) {
  double earliest_failure = infinity;
  double largest = -infinity;
  CompensatedSum failures;
  CompensatedSum failures_by_ln;
  const auto counts_as_failure = [&](std::size_t i) {
    return sample.failures[i] > 0 && (mode == 0 || sample.mode[i] == mode);
  };
  for (std::size_t i = 0; i < sample.size(); ++i)
    if (sample.failures[i] + sample.suspensions[i] > 0)
      largest = std::max(largest, sample.ln_time[i]);
  for (std::size_t i = 0; i < sample.size(); ++i) {
    if (!counts_as_failure(i)) continue;
    earliest_failure = std::min(earliest_failure, sample.ln_time[i]);
    failures += sample.failures[i];
    failures_by_ln += sample.failures[i] * (sample.ln_time[i] - largest);
  }
  if (largest > -infinity) ln_largest_ = largest;
  failures_ = finite(failures.value());
  failures_before_last_ = finite(failures_by_ln.value());
  has_maximum_ = earliest_failure < ln_largest_;
}

WeibullLikelihood::Sums WeibullLikelihood::sums_at(double beta) const {
  CompensatedSum powers;
  CompensatedSum powers_by_ln;
  const std::size_t rows = sample_.size();
  for (std::size_t i = 0; i < rows; i += Pack::lanes) {
    const std::size_t count = std::min<std::size_t>(Pack::lanes, rows - i);
    double weight[Pack::lanes] = {};
    double ln_time[Pack::lanes] = {};
    for (std::size_t k = 0; k < count; ++k) {
      weight[k] = sample_.failures[i + k] + sample_.suspensions[i + k];
      ln_time[k] = sample_.ln_time[i + k] - ln_largest_;
    }
    // A row without units may lie behind the largest time.
    const Pack ln_ratio = least(Pack::load(ln_time), 0.0);
    const Pack power = Pack::load(weight) * exp(beta * ln_ratio);
    power.store(weight);
    (power * ln_ratio).store(ln_time);
    for (std::size_t k = 0; k < count; ++k) {
      powers += weight[k];
      powers_by_ln += ln_time[k];
    }
  }
  return {finite(powers.value()), finite(powers_by_ln.value())};
}

// The score is B / A - L1 / r - 1 / beta; the largest time drops out of the difference.
// With s^beta A = r, beta ln s is ln(r / A), and the largest time cancels in
// r beta ln s + (beta - 1) L1 but for one r ln Xmax.
LikelihoodValue WeibullLikelihood::at(double beta) const {
  const Sums sums = sums_at(beta);
  const Real r = failures_;
  const Real ln_ratio = ln(r / sums.powers);
  const Real log_likelihood =
      r * (ln_ratio + ln(Real(beta)) - ln_largest_ - 1) + (Real(beta) - 1) * failures_before_last_;
  const Real score =
      Real(sums.powers_by_ln) / sums.powers - Real(failures_before_last_) / r - 1 / Real(beta);
  return {log_likelihood.value(), score.value(), exp(ln_ratio / beta - ln_largest_).value(), beta};
}

}  // namespace tavlo
