// Residuals: what the minimiser makes small. Vertical distances on Weibull paper,
// horizontal ones, or roots of the terms of a log likelihood.
#pragma once

#include <vector>

#include "solver/jacobian_matrix.h"
#include "solver/solver.h"

namespace tavlo {

/// What ResidualFn is asked for.
namespace residual_request {
inline constexpr int residuals = 1;
inline constexpr int jacobian = 2;
inline constexpr int evaluate_once = 10;  ///< residuals outside of an iteration
}  // namespace residual_request

/// The function that the minimiser calls: moves X into the parameters, then
/// evaluates residuals into `fvec` (slots 0 to M) and the quality into X[0] (r
/// squared, or ln L for MLE; also SumSq), or the Jacobian into `fjac`. `n` above
/// 0: rows 1 to n; below 0: about twenty rows up to -n; 0: only row 0. A set abort
/// flag turns `iflag` to -1.
void ResidualFn(Solver& solver, int n, int K, ParameterVector& X, std::vector<double>& fvec,
                JacobianMatrix& fjac, int& iflag);

/// Model ordinate less Ys; adds the squares to SumSq.
void YonXFn(Solver& solver, int n, int K, ParameterVector& X, std::vector<double>& fvec);
/// Log time at which the model reaches Ys (kept in Xhat), less Xs.
void XonYFn(Solver& solver, int n, int K, ParameterVector& X, std::vector<double>& fvec);
/// -sqrt(-g), g the log density of a failure or log reliability of a suspension.
void MleFn(Solver& solver, int n, int K, ParameterVector& X, std::vector<double>& fvec);

}  // namespace tavlo
