#include <algorithm>
#include <cmath>

#include "numerics/real.h"
#include "solver/bracket_search.h"
#include "solver/model_times.h"
#include "solver/residuals.h"
#include "solver/rows.h"

namespace tavlo {
namespace {

constexpr const char* where = "in XonY Function routine";
constexpr double tolerance = 10000 * 1e-15;  ///< of a model time, in log time
constexpr int most_secants = 302;
constexpr double found_below = 9.5;  ///< an ordinate above it is the mark of no end

/// Rows whose model time the quick way did not find.
using LeftRows = std::vector<int>;

/// Model times of all rows in Xhat; false when the abort flag ended it.
bool find_in_packs(Solver& solver, const RowSelection& rows, int K, LeftRows& left) {
  SolverData& data = solver.data;
  const bool tame = is_tame(solver.params);
  return walk_blocks(solver, rows, data.Xs, [&](const RowBlock& block) {
    RowBlock targets = block, times = block;
    targets.load(data.Ys.data());
    if (tame && is_tame(block)) {
      find_model_times(solver.params, K, block, targets.x, times.x);
    } else {
      times.x.fill(std::nan(""));
    }
    for (int k = 0; k < block.count; ++k) {
      const double time = times.x[RowBlock::at(k)];
      if (std::isfinite(time))
        data.Xhat.data()[block.row(k)] = time;
      else
        left.push_back(block.row(k));
    }
  });
}

/// The rows that are left, one by one: bracket, then secant steps within it. Here
/// what is wrong with a row is told.
class ModelTimeSearch {
 public:
  ModelTimeSearch(Solver& solver, const RowSelection& rows, int n, int K, double slope,
                  ParameterVector& X, std::vector<double>& fvec)
      : solver_(solver), fvec_(fvec), search_{solver, n,    K,          slope,
                                              X,      fvec, lowest_to_, highest_from_} {
    YonXFn(solver, n, K, X, fvec);
    const double* Ys = solver.data.Ys.data();
    for (int i = rows.first; i <= rows.last; i += rows.step) fvec[RowBlock::at(i)] += Ys[i];
    note_extremes();
  }

  /// False when Cancel or the abort flag ends the evaluation.
  bool find(int i) {
    const double target = solver_.data.Ys(i);
    SecantBracket bracket{0, no_end, 0, no_end};
    Findlo(search_, i, target, bracket);
    if (bracket.yHi > found_below) Findhi(search_, i, target, bracket);
    if (solver_.aborted()) return false;
    double x = ((Real(bracket.xLo) + bracket.xHi) / 2).value();
    const double y = ordinate_at(search_, x);
    const bool bracketed =
        bracket.yLo <= target && target <= bracket.yHi && bracket.yLo <= found_below;
    if (!bracketed) {
      ReportRetryBox(solver_, 0, "Error in Estimating X in Regression");
      if (solver_.aborted()) return false;
    }
    if (!refine(target, x, y, bracket)) return false;
    solver_.data.Xhat(i) = x;
    return true;
  }

 private:
  bool refine(double target, double& x, double y, SecantBracket& bracket) {
    for (int count = 0; count < most_secants; ++count) {
      step(solver_, "in Xnew routine", [&] { Xnew(target, x, y, bracket); });
      y = ordinate_at(search_, x);
      if (solver_.aborted()) return false;
      if (bracket.xHi - bracket.xLo <= tolerance) return true;
    }
    return true;
  }

  void note_extremes() {
    lowest_to_ = highest_from_ = fvec_;
    for (std::size_t i = 2; i < fvec_.size(); ++i)
      lowest_to_[i] = std::min(lowest_to_[i - 1], fvec_[i]);
    for (std::size_t i = fvec_.size() - 1; i >= 2; --i)
      highest_from_[i - 1] = std::max(highest_from_[i], fvec_[i - 1]);
  }

  Solver& solver_;
  std::vector<double>& fvec_;
  std::vector<double> lowest_to_;
  std::vector<double> highest_from_;
  BracketSearch search_;
};

bool find_model_times_of(Solver& solver, const RowSelection& rows, int n, int K, ParameterVector& X,
                         std::vector<double>& fvec) {
  SolverData& data = solver.data;
  double slope = 0;
  data.Ys(0) = 0;
  step(solver, where, [&] {
    slope = ((Real(data.Xs(n)) - data.Xs(1)) / (Real(data.Ys(n)) - data.Ys(1))).value();
  });
  LeftRows left;
  if (!find_in_packs(solver, rows, K, left)) return false;
  if (left.empty()) return true;
  ModelTimeSearch search(solver, rows, n, K, slope, X, fvec);
  bool goes_on = true;
  for (const int i : left) {
    step(solver, where, [&] { goes_on = search.find(i); });
    if (!goes_on || solver.aborted()) return false;
  }
  return true;
}

void keep_distances(Solver& solver, const RowSelection& rows, std::vector<double>& fvec) {
  const SolverData& data = solver.data;
  const double *Xs = data.Xs.data(), *Xhat = data.Xhat.data();
  double sum = 0;
  for (int i = rows.first; i <= rows.last; i += rows.step) {
    const double distance = Xhat[i] - Xs[i];
    fvec[RowBlock::at(i)] = distance;
    sum += distance * distance;
  }
  step(solver, where, [&] { solver.params.SumSq = finite(sum); });
}

/// The log time t0 + exp(beyond), or that of time 0, the nearest, where there is none.
double log_time(Real beyond, double t0) {
  constexpr double time_0 = -708;
  const Real time = exp(beyond) + t0;
  return time > 0 ? std::max(ln(time).value(), time_0) : time_0;
}

/// ln(exp(x) - t0); a time at or below the minimum life only has to be far off.
double log_beyond(double x, double t0) {
  const Real u = exp(Real(x)) - t0;
  return (u <= 0 ? -400 - Real(t0) : ln(u)).value();
}

/// K = 3 measures in ln(t - t0), where the model is a straight line. With a negative t0
/// it reaches low ordinates before time 0; the line goes on there, so that every point
/// counts, and the quality is r squared of the line.
class LineBeyondT0 {
 public:
  LineBeyondT0(Solver& solver, std::vector<double>& fvec)
      : data_(solver.data), q_(solver.params), fvec_(fvec) {}

  void take(int i) {
    const Real estimated = Real(data_.Ys(i)) / q_.BetaA + q_.LnEtaA;
    data_.Xhat(i) = log_time(estimated, q_.Extra);
    const double observed = log_beyond(data_.Xs(i), q_.Extra);
    const double distance = (estimated - observed).value();
    double& residual = fvec_[RowBlock::at(i)];
    residual = distance < -500 ? -500 - q_.Extra : distance;
    q_.SumSq += residual * residual;
    sum_ += observed;
    sum_of_squares_ += observed * observed;
  }

  void keep_spread() {
    q_.InvSpreadB = (1 / (Real(sum_of_squares_) - Real(sum_) * sum_ / data_.N)).value();
  }

 private:
  SolverData& data_;
  SolverParams& q_;
  std::vector<double>& fvec_;
  double sum_ = 0, sum_of_squares_ = 0;  ///< of the observed ln(t - t0)
};

void keep_distances_beyond_t0(Solver& solver, const RowSelection& rows, std::vector<double>& fvec) {
  LineBeyondT0 line(solver, fvec);
  walk_blocks(solver, rows, solver.data.Xs, [&](const RowBlock& block) {
    for (int k = 0; k < block.count; ++k) step(solver, where, [&] { line.take(block.row(k)); });
  });
  step(solver, where, [&] { line.keep_spread(); });
}

}  // namespace

void XonYFn(Solver& solver, int n, int K, ParameterVector& X, std::vector<double>& fvec) {
  if (K < 2 || K > 7 || K == 6) return;
  const RowSelection rows = rows_of(n);
  step(solver, where, [&] {
    const SolverData& data = solver.data;
    if (rows.last >= static_cast<int>(fvec.size()) || rows.last > data.Ys.bound() ||
        rows.last > data.Xhat.bound())
      throw RunTimeError(run_time::subscript);
    if (K != 3 && !find_model_times_of(solver, rows, n, K, X, fvec)) return;
    solver.params.SumSq = 0;
    if (K == 3)
      keep_distances_beyond_t0(solver, rows, fvec);
    else
      keep_distances(solver, rows, fvec);
  });
}

}  // namespace tavlo
