// Squares minimiser: the Levenberg-Marquardt iteration behind LMDER, for any
// function in the calling form of ResidualFn. The control flow is that of MINPACK's
// lmder (More, Garbow, Hillstrom, ANL-80-74); each of its phases is one function.
#pragma once

#include <functional>
#include <vector>

#include "solver/jacobian_matrix.h"
#include "solver/solver.h"
#include "solver/variable_vector.h"

namespace tavlo {

/// n, K, X, fvec, fjac, iflag as for ResidualFn: iflag 1 asks for residuals, 2 for
/// the Jacobian; a negative iflag on return ends the search. A trial X that the
/// function changes counts as changed.
using SquaresFunction =
    std::function<void(int, int, ParameterVector&, std::vector<double>&, JacobianMatrix&, int&)>;

class SquaresMinimiser {
 public:
  /// See LMDER for the arguments; `fvec` has slots 0 to M.
  SquaresMinimiser(Solver& solver, SquaresFunction function, int M, int K, ParameterVector& X,
                   std::vector<double>& fvec, JacobianMatrix& fjac, VariableVector& diag);

  /// The info of LMDER. X and fvec end at the best point so far.
  int run(int mode, double factor);

  /// Evaluations of the residuals.
  int evaluations() const { return evaluations_; }

 private:
  bool input_is_proper() const;
  void iterate();
  double norm(const VariableVector& v);
  VariableVector scaled(const double* x) const;

  bool evaluate(ParameterVector& X, std::vector<double>& fvec, int request);
  bool evaluate_start();
  bool evaluate_trial();
  bool linearise();
  void set_first_scale();
  void rotate_residuals();
  double gradient_norm() const;
  void widen_scale();

  bool try_step();
  bool propose_step();
  void predict_reduction();
  void adapt_trust();
  void shrink_trust();
  bool is_accepted() const;
  void accept();
  void test_convergence();

  Solver& solver_;
  const SquaresFunction function_;
  const int M_;
  const int K_;
  ParameterVector& X_;
  std::vector<double>& fvec_;
  JacobianMatrix& fjac_;
  VariableVector& diag_;
  bool own_scale_ = true;
  double factor_ = 1;

  int info_ = 0;
  bool is_sound_ = false;  ///< every row could be evaluated at X
  int evaluations_ = 0;
  int accepted_steps_ = 0;

  // The linear model at X.
  double residual_norm_ = 0;
  double x_norm_ = 0;  ///< of the scaled X
  double gradient_ = 0;
  PivotList ipvt_{};
  VariableVector rdiag_{};
  VariableVector column_norm_{};
  VariableVector qtf_{};
  std::vector<double> rotated_;  ///< Q' fvec

  // The trial. Its residuals live from trial to trial, so that a row which can't be
  // evaluated keeps its last value.
  double delta_ = 0;  ///< bound on the scaled step
  double par_ = 0;
  ParameterVector trial_X_{};
  std::vector<double> trial_fvec_;
  VariableVector step_{};
  double step_norm_ = 0;
  double actual_ = 0;  ///< relative reduction of the sum of squares
  double predicted_ = 0;
  double slope_ = 0;  ///< directional derivative along the step
  double ratio_ = 0;
  double trial_norm_ = 0;  ///< infinite where a sound X has led to an undefined trial
  bool trial_is_sound_ = false;
};

}  // namespace tavlo
