// Jacobian rows: evaluates a formula of derivatives over rows and writes it into
// the columns, block by block, with the checked arithmetic as the fallback.
#pragma once

#include <array>

#include "solver/jacobian_matrix.h"
#include "solver/rows.h"

namespace tavlo {

/// Derivatives of one row, in the order of the model's slots of X.
template <int K, class T>
using Derivatives = std::array<T, static_cast<std::size_t>(K)>;

/// One factor for each column.
template <int K>
using ColumnFactors = std::array<double, static_cast<std::size_t>(K)>;

/// The chain factors of the model's slots of X.
template <int K>
ColumnFactors<K> chain_factors(const SolverParams& q) {
  if constexpr (K == 2) return {q.dBetaA, q.dEtaA};
  if constexpr (K == 3) return {q.dBetaA, q.dEtaA, q.dExtra};
  if constexpr (K == 4) return {q.dBetaA, q.dEtaA, q.dBetaB, q.dEtaB};
  if constexpr (K == 5) return {q.dBetaA, q.dEtaA, q.dBetaC, q.dEtaC, q.dExtra};
  if constexpr (K == 7) return {q.dBetaA, q.dEtaA, q.dBetaB, q.dEtaB, q.dBetaC, q.dEtaC, q.dExtra};
}

template <int K>
struct JacobianBlock {
  std::array<RowBlock::Values, static_cast<std::size_t>(K)> columns{};

  template <class Formula>
  void evaluate(const RowBlock& block, const Formula& formula) {
    for (int k = 0; k < block.count; k += Pack::lanes) {
      const auto row = formula(Pack::load(&block.x[RowBlock::at(k)]));
      for (std::size_t j = 0; j < row.size(); ++j) row[j].store(&columns[j][RowBlock::at(k)]);
    }
  }

  bool is_sound(const RowBlock& block) const {
    return std::all_of(columns.begin(), columns.end(),
                       [&](const RowBlock::Values& column) { return block.is_sound(column); });
  }

  void write(const RowBlock& block, JacobianMatrix& fjac) const {
    for (int j = 0; j < K; ++j)
      std::copy_n(columns[RowBlock::at(j)].begin(), block.count,
                  fjac.column_data(j + 1) + block.first);
  }
};

/// Writes the derivatives `row` of row i.
template <int K>
void write_row(JacobianMatrix& fjac, int i, const Derivatives<K, Real>& row) {
  for (int j = 0; j < K; ++j) fjac(i, j + 1) = row[RowBlock::at(j)].value();
}

/// Writes the derivatives `row()` of row i. A row that can't be evaluated is left as it
/// was, without a box: it only bends the direction of the next step, and what is wrong
/// with a point is told by its residual.
template <int K, class Row>
void write_row_if_defined(JacobianMatrix& fjac, int i, Row&& row) {
  try {
    write_row<K>(fjac, i, row());
  } catch (const RunTimeError&) {
    return;
  }
}

/// The rows of one block: in packs where `is_tame_block`, else and where that fails
/// one by one by `checked(i, x)`.
template <int K, class Formula, class Checked>
void differentiate_block(const RowBlock& block, bool is_tame_block, const Formula& formula,
                         JacobianMatrix& fjac, Checked&& checked) {
  if (is_tame_block) {
    JacobianBlock<K> derivatives;
    derivatives.evaluate(block, formula);
    if (derivatives.is_sound(block)) return derivatives.write(block, fjac);
  }
  for (int k = 0; k < block.count; ++k)
    write_row_if_defined<K>(fjac, block.row(k),
                            [&] { return checked(block.row(k), Real(block.x[RowBlock::at(k)])); });
}

/// Rows 1 to n at the log times `times` of a formula that needs nothing but them.
template <int K, class Formula>
void differentiate_rows(Solver& solver, const char* where, int n, const Slots<double>& times,
                        const Formula& formula, JacobianMatrix& fjac) {
  const bool tame = is_tame(solver.params);
  step(solver, where, [&] {
    walk_blocks(solver, RowSelection{1, n, 1}, times, [&](const RowBlock& block) {
      differentiate_block<K>(block, tame && is_tame(block), formula, fjac,
                             [&](int, Real x) { return formula(x); });
    });
  });
}

}  // namespace tavlo
