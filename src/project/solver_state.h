// Solver state: what the mixture solver holds between its routines and from one
// fit to the next. Plain values of the session; only the solver changes them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "numerics/slots.h"
#include "project/records.h"

namespace tavlo {

/// Methods as the solver numbers them; also an index of the SolutionTable.
namespace solver_method {
inline constexpr int x_on_y = 1;
inline constexpr int mle = 2;
inline constexpr int y_on_x = 3;
}  // namespace solver_method

/// X of the solver: slot 0 the quality of the last evaluation, 1 to K the
/// parameters (or their logarithms), 8 the status of the solution it came from.
using ParameterVector = std::array<double, 9>;

/// The parameters of the fit at work, by name.
struct SolverParams {
  double BetaA = 0, EtaA = 0, LnEtaA = 0;  ///< slope, characteristic life, its logarithm
  double BetaB = 0, EtaB = 0, LnEtaB = 0;
  double BetaC = 0, EtaC = 0, LnEtaC = 0;
  double Extra = 0;  ///< minimum life of K = 3; share that carries population C of K = 5, 7

  /// Derivative of a parameter with respect to its slot of X.
  double dBetaA = 1, dEtaA = 1, dBetaB = 1, dEtaB = 1, dBetaC = 1, dEtaC = 1, dExtra = 1;

  double SumSq = 0;       ///< running sum of the residuals, then the quality
  double InvSpreadA = 0;  ///< reciprocal spreads that turn SumSq into r squared
  double InvSpreadB = 0;
};

/// The points of the fit at work: failures in rows 1 to N, then suspensions.
struct SolverData {
  static constexpr double suspension_mark = 10.1;  ///< Ys of a suspension
  static constexpr double largest_ordinate = 9.9;  ///< any Ys above is a suspension

  Slots<double> Xs;                 ///< ln time; slot 0 is the trial of a single-point evaluation
  Slots<double> Ys;                 ///< Weibull ordinate of the median rank
  Slots<double> Xhat;               ///< X on Y: ln time at which the model reaches Ys
  std::int32_t M = 0;               ///< rows of the residual vector
  std::int32_t N = 0;               ///< failures
  std::int32_t NS = 0;              ///< suspensions
  int K = 0;                        ///< number of parameters: 2, 3, 4, 5 or 7; the model's index
  int Method = 0;                   ///< see solver_method
  int TransMode = 1;                ///< 1: X holds parameters; 2: their logarithms, but for a t0
  bool CensoredLikelihood = false;  ///< suspensions take part in a likelihood
};

/// Solutions by model K (0 to 7), method (0 to 3) and slot (0 to 8). Slot 0 is
/// the quality, 1.1 where there is no solution yet; 1 to 7 the parameters; 8 the
/// status. Row (0-7, method 0) and K = 6 are working storage.
class SolutionTable {
 public:
  static constexpr double unsolved = 1.1;
  double& operator()(int K, int method, int slot) { return cells_[index(K, method, slot)]; }
  double operator()(int K, int method, int slot) const { return cells_[index(K, method, slot)]; }

 private:
  static constexpr std::size_t index(int K, int method, int slot) {
    return (static_cast<std::size_t>(K) * 4 + static_cast<std::size_t>(method)) * 9 +
           static_cast<std::size_t>(slot);
  }
  std::array<double, 8 * 4 * 9> cells_{};
};

/// Data of the search for a minimum life; rows from 1.
struct RegressBlock {
  Slots<std::int32_t> Weight;
  std::int32_t N = 0, Rows = 0, S = 0;  ///< failures, rows, suspensions
  Slots<double> T;                      ///< time
  Slots<double> LnT;                    ///< ln(t - t0) at the current trial
  Slots<double> F;                      ///< median rank; 10.1 for a suspension
  Slots<double> Y;                      ///< Weibull ordinate; 10.1 for a suspension
};

struct SolverState {
  SolverParams params;
  SolverData data;
  SolutionTable table;
  RegressBlock block;
  /// A start for each K that the relaxation tried, best first is not promised.
  std::array<std::vector<ParameterVector>, 8> candidates;
  OldStartsReport starts;  ///< of the last mixture fit
  std::string remark;  ///< what the last fit had to say beyond its numbers, for the status panel

  /// One failure (or suspension, rank 1) as loaded.
  struct LoadedPoint {
    float time = 0, rank = 0;
    friend bool operator==(const LoadedPoint&, const LoadedPoint&) = default;
  };
  std::vector<LoadedPoint> loaded;  ///< the points that the table's solutions belong to

  int abort_flag = 0;  ///< above 0 every loop of the solver stops; 2 is Cancel in a retry box
  int progress_flag = 0;
  bool minimum_life_warned = false;  ///< the warning on W3T by MLE has been shown in this run
  int retry_error = 0;               ///< run-time error of the last retry box
  double retry_seconds = -1e9;       ///< steady seconds of the last retry box
  std::int64_t failed_steps = 0;     ///< steps that failed so far, told in a box or not
};

}  // namespace tavlo
