#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "solver/plot_pieces.h"
#include "solver/residuals.h"
#include "solver/starting_values.h"

namespace tavlo {
namespace {

constexpr int fewest_points = 7;

/// Candidates are compared on so many rows at most, spread evenly over the ranks.
constexpr int most_compared_rows = 1000;

/// Slot 0 of a row of the table that holds a start and not yet a solution.
constexpr double start_mark = 2;

/// A sample of the points in a solver of its own, for Y on X.
class SamplePlot {
 public:
  SamplePlot(const Solver& solver, const double* x, const double* y, int rows)
      : solver_{state_, solver.errors, solver.prompts, solver.event_loop, solver.clock, true} {
    take_rows(x, y, rows, std::min(rows, most_compared_rows));
    const double spread = spread_of_ordinates();
    state_.params.InvSpreadA = spread > 0 ? 1 / spread : 0.0;
  }
  SamplePlot(const SamplePlot&) = delete;
  SamplePlot& operator=(const SamplePlot&) = delete;

  /// r squared of a model of K parameters; minus infinity when a row can't be
  /// evaluated.
  double r_squared(int K, ParameterVector X) {
    std::vector<double> fvec(static_cast<std::size_t>(state_.data.M) + 1, nothing);
    JacobianMatrix unused;
    int iflag = residual_request::evaluate_once;
    ResidualFn(solver_, state_.data.M, K, X, fvec, unused, iflag);
    const bool complete =
        std::all_of(fvec.begin() + 1, fvec.end(), [](double v) { return std::isfinite(v); });
    return complete && std::isfinite(X[0]) ? X[0] : -std::numeric_limits<double>::infinity();
  }

 private:
  /// A row that can't be evaluated keeps it.
  static constexpr double nothing = std::numeric_limits<double>::quiet_NaN();

  void take_rows(const double* x, const double* y, int rows, int count) {
    SolverData& sample = state_.data;
    sample.Method = solver_method::y_on_x;
    sample.M = sample.N = count;
    sample.Xs = sample.Ys = sample.Xhat = Slots<double>(count);
    for (int i = 1; i <= count; ++i) {
      const auto row = 1 + static_cast<int>(std::int64_t{rows - 1} * (i - 1) / (count - 1));
      sample.Xs(i) = x[row];
      sample.Ys(i) = y[row];
    }
  }

  double spread_of_ordinates() const {
    double sum = 0;
    double squares = 0;
    for (int i = 1; i <= state_.data.M; ++i) {
      sum += state_.data.Ys(i);
      squares += state_.data.Ys(i) * state_.data.Ys(i);
    }
    return squares - sum * sum / state_.data.M;
  }

  SolverState state_;
  Solver solver_;
};

using Candidates = std::vector<ParameterVector>;

void add_candidate(Candidates& candidates, const ParameterVector& X) {
  const auto is_finite = [](double value) { return std::isfinite(value); };
  if (!std::all_of(X.begin(), X.end(), is_finite)) return;
  if (std::find(candidates.begin(), candidates.end(), X) == candidates.end())
    candidates.push_back(X);
}

/// Starts of a mixture from each pair of breaks, relaxed and as the pieces show them.
Candidates candidates_of(const std::vector<PlotPieces>& pieces, int K) {
  Candidates candidates;
  for (const PlotPieces& each : pieces) {
    const MixtureStart start = start_from(each, K);
    add_candidate(candidates, relaxed(start, each, K).to_x());
    add_candidate(candidates, start.to_x());
  }
  return candidates;
}

void rank_candidates(SamplePlot& plot, int K, Candidates& candidates) {
  for (ParameterVector& X : candidates) X[0] = plot.r_squared(K, X);
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const auto& a, const auto& b) { return a[0] > b[0]; });
}

std::vector<PlotPieces> likely_pieces(const double* x, const double* y, int rows) {
  std::vector<PlotPieces> pieces;
  for (const PlotBreaks breaks : likely_breaks(x, y, rows))
    pieces.push_back(pieces_of(x, y, rows, breaks));
  return pieces;
}

/// The line of the chord's slope under the plot, with a tenth of the first time as
/// minimum life.
ParameterVector three_parameter_start(const double* x, const double* y, int rows) {
  const double slope = (y[rows] - y[1]) / (x[rows] - x[1]);
  double ln_eta = x[1] - y[1] / slope;
  for (int i = 2; i <= rows; ++i) ln_eta = std::max(ln_eta, x[i] - y[i] / slope);
  return {0, slope, std::exp(ln_eta), 0.1 * std::exp(x[1])};
}

void enter_start(SolutionTable& table, int K, const Candidates& candidates) {
  if (candidates.empty()) return;
  for (int method = 0; method <= solver_method::y_on_x; ++method) {
    table(K, method, 0) = start_mark;
    for (int slot = 1; slot <= 7; ++slot)
      table(K, method, slot) = candidates.front()[static_cast<std::size_t>(slot)];
    table(K, method, 8) = 0;
  }
}

}  // namespace

void RelaxationEstimate(Solver& solver, int M) {
  auto& candidates = solver.state.candidates;
  for (Candidates& of_model : candidates) of_model.clear();
  if (M < fewest_points) return;
  step(solver, "in Relaxation Estimate routine", [&] {
    if (M > std::min(solver.data.Xs.bound(), solver.data.Ys.bound()))
      throw RunTimeError(run_time::subscript);
    const double* x = solver.data.Xs.data();
    const double* y = solver.data.Ys.data();
    const std::vector<PlotPieces> pieces = likely_pieces(x, y, M);
    if (pieces.empty()) return;
    add_candidate(candidates[3], three_parameter_start(x, y, M));
    enter_start(solver.table, 3, candidates[3]);
    SamplePlot plot(solver, x, y, M);
    for (const int K : {4, 5, 7}) {
      Candidates& of_model = candidates[static_cast<std::size_t>(K)];
      of_model = candidates_of(pieces, K);
      rank_candidates(plot, K, of_model);
      enter_start(solver.table, K, of_model);
    }
  });
}

}  // namespace tavlo
