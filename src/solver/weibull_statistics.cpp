#include <cmath>

#include "numerics/real.h"
#include "solver/mixture_functions.h"
#include "solver/parameter_translation.h"
#include "solver/starting_values.h"

namespace tavlo {
namespace {

/// Below this many failures the plot shows no pieces to start from.
constexpr int fewest_failures = 7;

/// Sums over the failures, x the log time and y the ordinate, and what follows
/// from them; `spread` is N times a sum about the means.
struct LineSums {
  Real n, x, y, xx, yy, xy;

  void add(Real x_of_row, Real y_of_row) {
    x += x_of_row;
    y += y_of_row;
    xx += x_of_row * x_of_row;
    yy += y_of_row * y_of_row;
    xy += x_of_row * y_of_row;
  }

  Real spread_xx() const { return n * xx - x * x; }
  Real spread_yy() const { return n * yy - y * y; }
  Real spread_xy() const { return n * xy - x * y; }

  /// Life of the line of this slope through the means; 0 for a falling line.
  double life(Real slope) const { return slope > 0 ? exp(-(y / slope - x) / n).value() : 0.0; }

  double r_squared() const {
    const Real product = spread_xx() * spread_yy();
    return (spread_xy() * spread_xy() / (product == 0 ? Real(100) : product)).value();
  }
};

class Preparation {
 public:
  explicit Preparation(Solver& solver) : solver_(solver), block_(solver.state.block) {}

  void run(ParameterVector& X) {
    reset();
    const int rows = data_.M;
    for (int i = 1; i <= rows; ++i) take_row(i);
    append_suspensions();
    complete_data();
    set_lines();
    attempt([&] { X[0] = sums_.r_squared(); });
    attempt([&] { set_spread(); });
    if (solver_.table(2, solver_method::x_on_y, 1) <= 0) start_table(X[0]);
    take_start(X);
  }

 private:
  template <class Statement>
  void attempt(Statement&& statement) {
    step(solver_, "in Weibull Statistics routine", statement);
  }

  void reset() {
    solver_.params = SolverParams{};
    data_.N = data_.NS = 0;
    block_.Weight = Slots<std::int32_t>(data_.M);
    block_.T = block_.LnT = block_.F = block_.Y = Slots<double>(data_.M);
  }

  /// Suspensions wait in Xhat until all failures are in place.
  void take_row(int i) {
    const double time = data_.Xs(i);
    const double rank = data_.Ys(i);
    if (time > 0 && rank < 1) return take_failure(time, rank);
    if (time != 0) data_.Xhat(++data_.NS) = std::fabs(time);
  }

  /// The failures move up in their arrays, never beyond the row being read. A
  /// rank of 0 has no ordinate and counts as a failure at the ordinate 0.
  void take_failure(double time, double rank) {
    const int row = ++data_.N;
    block_.T(row) = time;
    block_.F(row) = rank;
    block_.Weight(row) = 1;
    attempt([&] { data_.Xs(row) = block_.LnT(row) = ln(Real(time)).value(); });
    if (rank == 0) data_.Ys(row) = 0;
    if (rank != 0) attempt([&] { data_.Ys(row) = block_.Y(row) = fd_WblY(rank); });
    attempt([&] { sums_.add(data_.Xs(row), data_.Ys(row)); });
  }

  void append_suspensions() {
    constexpr double mark = SolverData::suspension_mark;
    for (int j = 1; j <= data_.NS; ++j) {
      const int row = data_.N + j;
      const double time = data_.Xhat(j);
      attempt([&] { data_.Xs(row) = block_.LnT(row) = ln(Real(time)).value(); });
      block_.T(row) = time;
      block_.F(row) = block_.Y(row) = data_.Ys(row) = mark;
    }
  }

  void complete_data() {
    block_.N = data_.N;
    block_.S = data_.NS;
    block_.Rows = data_.N + data_.NS;
    data_.M = data_.Method == solver_method::mle ? block_.Rows : data_.N;
    for (int i = 1; i <= data_.M; ++i) data_.Xhat(i) = data_.Xs(i);
    data_.Xhat(0) = data_.Xhat(data_.M);
    data_.Ys(0) = data_.Ys(data_.M);
    sums_.n = data_.N;
  }

  /// Y on X in population A, X on Y in population B. A divisor that allows no
  /// line takes the place of the slope, which no fit then accepts.
  void set_lines() {
    SolverParams& params = solver_.params;
    attempt([&] {
      const Real divisor = sums_.spread_xx();
      params.BetaA = (divisor > 0 ? sums_.spread_xy() / divisor : divisor).value();
    });
    attempt([&] { params.EtaA = sums_.life(params.BetaA); });
    attempt([&] {
      const Real divisor = sums_.spread_xy();
      params.BetaB = (divisor > 0 ? sums_.spread_yy() / divisor : divisor).value();
    });
    attempt([&] { params.EtaB = sums_.life(params.BetaB); });
  }

  void set_spread() {
    const bool horizontal = data_.Method == solver_method::x_on_y;
    const Real spread = horizontal ? sums_.xx - sums_.x * sums_.x / sums_.n
                                   : sums_.yy - sums_.y * sums_.y / sums_.n;
    solver_.params.InvSpreadA = (1 / spread).value();
  }

  void start_table(double r_squared) {
    const SolverParams& params = solver_.params;
    XrefZero(solver_);
    enter_line(solver_method::x_on_y, r_squared, params.BetaB, params.EtaB, 1);
    enter_line(solver_method::mle, r_squared, params.BetaB, params.EtaB, 2);
    enter_line(solver_method::y_on_x, r_squared, params.BetaA, params.EtaA, 1);
    solver_.params.SumSq = r_squared;
    RelaxationEstimate(solver_, data_.N);
  }

  void enter_line(int method, double r_squared, double slope, double life, double status) {
    SolutionTable& table = solver_.table;
    table(2, method, 0) = r_squared;
    table(2, method, 1) = slope;
    table(2, method, 2) = life;
    table(2, method, 8) = status;
  }

  /// Without pieces of the plot the parameters stay the two lines.
  void take_start(ParameterVector& X) {
    for (int slot = 1; slot <= 8; ++slot) X[slot] = solver_.table(data_.K, data_.Method, slot);
    if (data_.N >= fewest_failures)
      TranslateParams(solver_, translation::x_to_parameters, data_.K, X);
  }

  Solver& solver_;
  SolverData& data_ = solver_.data;
  RegressBlock& block_;
  LineSums sums_;
};

}  // namespace

void WeibullStatistics(Solver& solver, ParameterVector& X) {
  step(solver, "in Weibull Statistics routine", [&] { Preparation(solver).run(X); });
}

}  // namespace tavlo
