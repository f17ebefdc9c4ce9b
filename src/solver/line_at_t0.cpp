#include "solver/line_at_t0.h"

#include <cmath>

#include "numerics/real.h"
#include "numerics/rounding.h"
#include "solver/mixture_functions.h"

namespace tavlo {
namespace {

bool is_failure(double F) { return F > 0 && F < 1; }

void refuse_rows_not_above(double t0, const RegressBlock& block) {
  if (block.Rows > block.T.bound()) throw RunTimeError(run_time::subscript);
  const double* F = block.F.data();
  const double* T = block.T.data();
  bool all_above = true;
  for (int i = 1; i <= block.Rows; ++i) all_above &= !is_failure(F[i]) || T[i] > t0;
  if (!all_above) throw RunTimeError(run_time::invalid_argument);
}

/// Sums over the failures, x taken from a log time among them: far below the first
/// time all ln(t - t0) are nearly alike, and sums of x itself would lose what tells
/// them apart.
struct ShiftedSums {
  Real shift, n, x, xx, xy, y, yy;

  Real spread_xx() const { return n * xx - x * x; }
  Real spread_yy() const { return n * yy - y * y; }
  Real spread_xy() const { return n * xy - x * y; }

  /// Puts the sums of the plain x into their slots.
  void store(T0Trial& trial) const {
    trial[t0_trial::sum_x] = (x + n * shift).value();
    trial[t0_trial::sum_xx] = (xx + shift * (2 * x + n * shift)).value();
    trial[t0_trial::sum_xy] = (xy + shift * y).value();
  }
};

/// A failure near the middle of the rows.
int middle_failure(const RegressBlock& block) {
  int row = (block.Rows + 1) / 2;
  while (row > 1 && !is_failure(block.F(row))) --row;
  return row;
}

/// Takes ln(t - t0) of the failures and its sums.
ShiftedSums take_log_times(RegressBlock& block, const T0Trial& trial) {
  const double t0 = trial[t0_trial::t0];
  refuse_rows_not_above(t0, block);
  double sum_x = 0;
  double sum_xx = 0;
  double sum_xy = 0;
  const double* F = block.F.data();
  const double* T = block.T.data();
  const double* Y = block.Y.data();
  const std::int32_t* weight = block.Weight.data();
  double* LnT = block.LnT.data();
  const double shift = ln(Real(T[middle_failure(block)]) - t0).value();
  for (int i = 1; i <= block.Rows; ++i) {
    if (!is_failure(F[i])) continue;
    LnT[i] = std::log(T[i] - t0);
    const double x = LnT[i] - shift;
    const double weighted = weight[i] * x;
    sum_x += weighted;
    sum_xx += weighted * x;
    sum_xy += weighted * Y[i];
  }
  return {shift,
          block.N,
          finite(sum_x),
          finite(sum_xx),
          finite(sum_xy),
          trial[t0_trial::sum_y],
          trial[t0_trial::sum_yy]};
}

void take_line(const ShiftedSums& sums, T0Trial& trial, int kind) {
  const bool x_on_y = kind == t0_kind::x_on_y;
  const Real beta =
      x_on_y ? 1 / (sums.spread_xy() / sums.spread_yy()) : sums.spread_xy() / sums.spread_xx();
  trial[t0_trial::slope] = beta.value();
  trial[t0_trial::life] = exp(sums.shift + (sums.x - sums.y / beta) / sums.n).value();
}

double r_squared(const ShiftedSums& sums) {
  return (sums.spread_xy() * sums.spread_xy() / (sums.spread_xx() * sums.spread_yy())).value();
}

// A row of rank 0 has no ordinate and no part in the line, yet it counts here with
// the ordinate 0. Kept on purpose; ranking gives no such row.
void take_derivative(const RegressBlock& block, T0Trial& trial, int kind) {
  const double t0 = trial[t0_trial::t0];
  const double beta = trial[t0_trial::slope];
  const double ln_eta = ln(Real(trial[t0_trial::life])).value();
  double sum = 0;
  const double* F = block.F.data();
  const double* T = block.T.data();
  const double* Y = block.Y.data();
  const double* LnT = block.LnT.data();
  const std::int32_t* weight = block.Weight.data();
  for (int i = 1; i <= block.Rows; ++i)
    if (F[i] < 1) sum += weight[i] * ((ln_eta - LnT[i]) * beta + Y[i]) / (T[i] - t0);
  const Real factor = kind == t0_kind::x_on_y ? 2 / Real(beta) : 2 * Real(beta);
  trial[t0_trial::derivative] = (sum * factor).value();
}

}  // namespace

void take_ordinates(RegressBlock& block, T0Trial& trial) {
  block.N = block.S = 0;
  Real sum_y = 0;
  Real sum_yy = 0;
  for (int i = 1; i <= block.Rows; ++i) {
    if (!is_failure(block.F(i))) {
      block.S += block.Weight(i);
      if (block.F(i) >= 1) block.F(i) = IntFloor(block.F(i)) + 1;
      continue;
    }
    block.N += block.Weight(i);
    const double y = block.Y(i) = fd_WblY(block.F(i));
    sum_y += block.Weight(i) * y;
    sum_yy += block.Weight(i) * y * y;
  }
  trial[t0_trial::sum_y] = sum_y.value();
  trial[t0_trial::sum_yy] = sum_yy.value();
}

void regress(RegressBlock& block, T0Trial& trial, int kind) {
  T0Trial next = trial;
  const ShiftedSums sums = take_log_times(block, next);
  sums.store(next);
  if (kind != t0_kind::keep_y_sums) {
    take_line(sums, next, kind);
    take_derivative(block, next, kind);
  }
  next[t0_trial::r_squared] = r_squared(sums);
  trial = next;
}

void RegressT0(Solver& solver, RegressBlock& block, T0Trial& trial, int kind) {
  step(solver, "in Findto Function routine", [&] {
    if (kind != t0_kind::keep_y_sums) take_ordinates(block, trial);
    regress(block, trial, kind);
  });
}

}  // namespace tavlo
