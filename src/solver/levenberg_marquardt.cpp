#include "solver/levenberg_marquardt.h"

#include "solver/residuals.h"
#include "solver/squares_minimiser.h"

namespace tavlo {

void LMDER(Solver& solver, int M, int K, ParameterVector& X, std::vector<double>& fvec,
           JacobianMatrix& fjac, VariableScales& diag, int mode, double factor, int& info) {
  const auto residuals = [&solver](int n, int k, ParameterVector& x, std::vector<double>& values,
                                   JacobianMatrix& derivatives, int& iflag) {
    ResidualFn(solver, n, k, x, values, derivatives, iflag);
  };
  info = SquaresMinimiser(solver, residuals, M, K, X, fvec, fjac, diag).run(mode, factor);
}

}  // namespace tavlo
