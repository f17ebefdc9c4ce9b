#include "solver/residuals.h"

#include "numerics/real.h"
#include "solver/jacobians.h"
#include "solver/parameter_translation.h"

namespace tavlo {
namespace {

constexpr const char* where = "in Tavlo Function routine";

void evaluate_residuals(Solver& solver, int n, int K, ParameterVector& X,
                        std::vector<double>& fvec) {
  switch (solver.data.Method) {
    case solver_method::x_on_y: return XonYFn(solver, n, K, X, fvec);
    case solver_method::mle: return MleFn(solver, n, K, X, fvec);
    case solver_method::y_on_x: return YonXFn(solver, n, K, X, fvec);
    default: return;
  }
}

void evaluate_jacobian(Solver& solver, int n, int K, ParameterVector& X, JacobianMatrix& fjac) {
  switch (solver.data.Method) {
    case solver_method::x_on_y: return JacXonY(solver, n, K, fjac);
    case solver_method::mle: return JacMle(solver, n, K, X, fjac);
    case solver_method::y_on_x: return JacYonX(solver, n, K, fjac);
    default: return;
  }
}

// Quick estimates on a part of the rows, and the distances of K = 3 in ln(t - t0),
// have a spread of their own.
void judge(Solver& solver, int n, int K, ParameterVector& X) {
  SolverParams& q = solver.params;
  if (solver.data.Method == solver_method::mle) {
    X[0] = q.SumSq;
    return;
  }
  const bool whole = n >= 0 && !(K == 3 && solver.data.Method == solver_method::x_on_y);
  const double inverse_spread = whole ? q.InvSpreadA : q.InvSpreadB;
  step(solver, where, [&] { X[0] = (1 - Real(q.SumSq) * inverse_spread).value(); });
  q.SumSq = X[0];
}

}  // namespace

void ResidualFn(Solver& solver, int n, int K, ParameterVector& X, std::vector<double>& fvec,
                JacobianMatrix& fjac, int& iflag) {
  TranslateParams(solver, solver.data.TransMode + 2, K, X);
  if (iflag != 0) solver.params.SumSq = 0;
  if (iflag == residual_request::residuals || iflag == residual_request::evaluate_once) {
    evaluate_residuals(solver, n, K, X, fvec);
    judge(solver, n, K, X);
  } else if (iflag == residual_request::jacobian) {
    evaluate_jacobian(solver, n, K, X, fjac);
  }
  if (solver.aborted()) iflag = -1;
}

}  // namespace tavlo
