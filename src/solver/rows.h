// Rows: which points of the data a residual or Jacobian visits, and the walk over
// them in blocks. A block is evaluated in packs; only when something in it is not
// finite are its rows taken one by one, in checked arithmetic.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "numerics/pack.h"
#include "solver/solver.h"

namespace tavlo {

struct RowSelection {
  int first = 0;
  int last = -1;
  int step = 1;
};

/// `n` above 0: rows 1 to n; below 0: about twenty rows up to -n; 0: only row 0.
inline RowSelection rows_of(int n) {
  if (n > 0) return {1, n, 1};
  if (n == 0) return {0, 0, 1};
  const int step = std::max(1, -n / 20);
  return {1, -n / step * step, step};
}

/// Rows that are evaluated together. The abort flag is looked at once a block.
struct RowBlock {
  static constexpr int most = 64;
  using Values = std::array<double, most>;

  int first = 0;
  int step = 1;
  int count = 0;
  alignas(16) Values x{};

  int row(int index) const { return first + index * step; }

  /// Takes x from the rows; the last one is repeated until the packs are full.
  void load(const double* from) {
    if (step == 1) {
      std::copy_n(from + first, count, x.begin());
    } else {
      for (int k = 0; k < count; ++k) x[at(k)] = from[row(k)];
    }
    for (int k = count; k % Pack::lanes != 0; ++k) x[at(k)] = x[at(count - 1)];
  }

  /// values[k] = formula(x[k]) for the whole block.
  template <class Formula>
  void evaluate(const Formula& formula, Values& values) const {
    for (int k = 0; k < count; k += Pack::lanes)
      formula(Pack::load(&x[at(k)])).store(&values[at(k)]);
  }

  /// Whether every value is finite.
  bool is_sound(const Values& values) const {
    PackMask sound = is_finite(Pack::load(values.data()));
    for (int k = Pack::lanes; k < count; k += Pack::lanes)
      sound = sound & is_finite(Pack::load(&values[at(k)]));
    return all(sound);
  }

  static std::size_t at(int index) { return static_cast<std::size_t>(index); }
};

/// Largest log time, slope and log life with which no intermediate result of a row
/// can overflow unseen: within it a finite outcome proves a sound row.
inline constexpr double tame_size = 1e30;

inline bool is_tame(const SolverParams& p) {
  for (const double value : {p.BetaA, p.LnEtaA, p.BetaB, p.LnEtaB, p.BetaC, p.LnEtaC})
    if (!(std::fabs(value) <= tame_size)) return false;
  return std::isfinite(p.Extra);
}

inline bool is_tame(const RowBlock& block) {
  return std::all_of(block.x.begin(), block.x.begin() + block.count,
                     [](double x) { return std::fabs(x) <= tame_size; });
}

/// Calls visit(block) for the selected rows in order, x taken from `times`, and
/// lets the windows breathe after each block. False when the abort flag ended it.
template <class Visit>
bool walk_blocks(Solver& solver, const RowSelection& rows, const Slots<double>& times,
                 Visit&& visit) {
  if (rows.last > times.bound()) throw RunTimeError(run_time::subscript);
  RowBlock block;
  block.step = rows.step;
  for (int row = rows.first; row <= rows.last; row += block.count * block.step) {
    block.first = row;
    block.count = std::min(RowBlock::most, (rows.last - row) / rows.step + 1);
    block.load(times.data());
    visit(block);
    solver.event_loop.yield();
    if (solver.aborted()) return false;
  }
  return true;
}

}  // namespace tavlo
