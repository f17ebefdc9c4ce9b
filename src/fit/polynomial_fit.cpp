#include "fit/polynomial_fit.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "fit/compensated_sum.h"
#include "numerics/elementary.h"
#include "numerics/matrix_solution.h"
#include "numerics/number_text.h"
#include "numerics/real.h"

namespace tavlo {
namespace {

/// Below this share of the raw sum of squares, the spread is rounding of equal
/// values: the elimination would not notice and give a huge slope.
constexpr double no_spread = 1e-12;

/// A row that takes part: weight, independent and dependent coordinate.
struct WeightedPoint {
  double weight;
  double u;
  double v;
};

class PolynomialFit {
 public:
  PolynomialFit(ErrorReporter& reporter, DataSet& data, const PolynomialRequest& request)
      : reporter_(reporter), data_(data), request_(request) {}

  void run(Slots<double>& coefficients, bool wants_r_squared, double& r_squared);
  void add_words(double stage) const;
  bool solution_failed() const { return stage_ >= 4.0 && stage_ < 5.0; }
  double stage() const { return stage_; }

 private:
  [[noreturn]] void fail(int code = error_code::none) const;
  void gather();
  void take_moments();
  void add_to_moments(const WeightedPoint& point);
  void store_means();
  bool has_spread() const;
  void solve(Slots<double>& coefficients);
  double r_squared_of(const Slots<double>& coefficients) const;

  auto slot(int power) const { return static_cast<std::size_t>(power); }

  ErrorReporter& reporter_;
  DataSet& data_;
  const PolynomialRequest& request_;
  double stage_ = 1.0;
  int degree_ = 0;
  int rows_ = 0;
  std::vector<WeightedPoint> points_;
  std::vector<CompensatedSum> u_sums_;  // M(j): weight times u to the j-th power
  std::vector<CompensatedSum> v_sums_;  // V(j): the same times v
  CompensatedSum v_squares_;
};

void PolynomialFit::fail(int code) const {
  reporter_.gErrCode = code;
  throw RunTimeError(run_time::invalid_argument);
}

void PolynomialFit::run(Slots<double>& coefficients, bool wants_r_squared, double& r_squared) {
  if (request_.order == 0) fail();
  degree_ = std::abs(request_.order);
  stage_ = 1.1;
  if (coefficients.bound() < degree_) coefficients.resize(degree_);
  stage_ = 1.2;
  const bool limited = request_.row_limit > 0 && request_.row_limit < data_.Count;
  rows_ = limited ? request_.row_limit : data_.Count;
  stage_ = 2.0;
  gather();
  take_moments();
  stage_ = 3.0;
  if (!(u_sums_[0].value() >= degree_)) fail();
  store_means();
  stage_ = 4.0;
  solve(coefficients);
  stage_ = 5.0;
  r_squared = wants_r_squared ? r_squared_of(coefficients) : 0.0;
}

/// Copies the rows that take part: the records are wide, and both passes over
/// them would otherwise cost their whole memory.
void PolynomialFit::gather() {
  if (rows_ > data_.Points.bound()) throw RunTimeError(run_time::subscript);
  const DataPoint* rows = data_.Points.data();
  const auto index = static_cast<std::size_t>(request_.index);
  if (index > 2) throw RunTimeError(run_time::subscript);
  points_.reserve(static_cast<std::size_t>(rows_));
  for (int i = 1; i <= rows_; ++i) {
    const DataPoint& row = rows[i];
    if (index == 2 && row.Mode != rows[0].Mode) continue;
    const double weight = row.Fails <= 0 && request_.all_rows ? 1.0 : row.Fails;
    if (weight <= 0) continue;
    if (request_.order > 0)
      points_.push_back({weight, row.XT[index], row.YT[index]});
    else
      points_.push_back({weight, row.YT[index], row.XT[index]});
  }
}

void PolynomialFit::add_to_moments(const WeightedPoint& point) {
  double term = point.weight;
  for (int j = 0; j <= degree_; ++j) {
    u_sums_[slot(j)] += term;
    v_sums_[slot(j)] += term * point.v;
    term *= point.u;
  }
  for (int j = degree_ + 1; j <= 2 * degree_; ++j) {
    u_sums_[slot(j)] += term;
    term *= point.u;
  }
}

void PolynomialFit::take_moments() {
  u_sums_.assign(slot(2 * degree_) + 1, {});
  v_sums_.assign(slot(degree_) + 1, {});
  for (const WeightedPoint& point : points_) {
    add_to_moments(point);
    v_squares_ += point.weight * point.v * point.v;
  }
  for (const auto* sums : {&u_sums_, &v_sums_})
    for (const CompensatedSum& sum : *sums) finite(sum.value());
  finite(v_squares_.value());
}

void PolynomialFit::store_means() {
  const Real count = u_sums_[0].value();
  const double u_mean = (u_sums_[1].value() / count).value();
  const double v_mean = (v_sums_[0].value() / count).value();
  const auto index = static_cast<std::size_t>(request_.index);
  DataPoint& summary = data_.Points(0);
  summary.XT[index] = request_.order > 0 ? u_mean : v_mean;
  summary.YT[index] = request_.order > 0 ? v_mean : u_mean;
}

bool PolynomialFit::has_spread() const {
  const double count = u_sums_[0].value();
  const auto spread = [count](const CompensatedSum& squares, const CompensatedSum& sum) {
    const double about_mean = squares.value() - sum.value() * (sum.value() / count);
    return about_mean > no_spread * squares.value();
  };
  return spread(u_sums_[2], u_sums_[1]) && spread(v_squares_, v_sums_[0]);
}

void PolynomialFit::solve(Slots<double>& coefficients) {
  const int n = degree_ + 1;
  Matrix system(n, n);
  for (int row = 1; row <= n; ++row) {
    system(row, 0) = v_sums_[slot(row - 1)].value();
    for (int column = 1; column <= n; ++column)
      system(row, column) = u_sums_[slot(row + column - 2)].value();
  }
  const int code = has_spread() ? MatSolve(reporter_, system, false) : error_code::singular_matrix;
  if (code != error_code::none) {
    stage_ += 0.01 * (code - 1000);
    fail(code);
  }
  for (int j = 0; j <= degree_; ++j) coefficients(j) = system(j + 1, 0);
}

double PolynomialFit::r_squared_of(const Slots<double>& coefficients) const {
  const double v_mean = (v_sums_[0].value() / Real(u_sums_[0].value())).value();
  const double* c = coefficients.data();
  CompensatedSum about_line;
  CompensatedSum about_mean;
  for (const WeightedPoint& point : points_) {
    double line = c[degree_];
    for (int j = degree_ - 1; j >= 0; --j) line = line * point.u + c[j];
    about_line += point.weight * (point.v - line) * (point.v - line);
    about_mean += point.weight * (point.v - v_mean) * (point.v - v_mean);
  }
  return fd_RSquared(reporter_, finite(about_line.value()), finite(about_mean.value()));
}

void PolynomialFit::add_words(double stage) const {
  const std::string order = "Order: " + std::to_string(degree_);
  const std::string size = "Array size: " + std::to_string(rows_);
  const std::string points = " Points: " + number_text(u_sums_.empty() ? 0.0 : u_sums_[0].value());
  reporter_.add_lines({"Polynomial Fit Subroutine: "});
  if (stage < 1.09)
    reporter_.add_lines({"Order must be > 0", order});
  else if (stage < 1.19)
    reporter_.add_lines({"Error in Incoming Array Size"});
  else if (stage < 1.99)
    reporter_.add_lines({"Error in Incoming Array Size", order, size});
  else if (stage < 2.99)
    reporter_.add_lines({"Error building vector", size + points});
  else if (stage < 3.99)
    reporter_.add_lines({"Insufficient data points", order + points});
  else if (stage < 4.99)
    reporter_.add_lines({"Matrix solution error"});
  else
    reporter_.add_lines({"R squared calculation error"});
  reporter_.add_lines({"PolyFitD routine:"});
}

}  // namespace

bool PolyFitD(ErrorReporter& reporter, DataSet& data, const PolynomialRequest& request,
              Slots<double>& coefficients, double& r_squared) {
  const bool wants_r_squared = r_squared >= 0;
  PolynomialFit fit(reporter, data, request);
  const auto words = [&](ErrorReporter&) { fit.add_words(fit.stage()); };
  const bool solved = guarded(reporter, false, words, [&] {
    try {
      fit.run(coefficients, wants_r_squared, r_squared);
      return true;
    } catch (const RunTimeError&) {
      if (!request.means_suffice || !fit.solution_failed()) throw;
      reporter.gErrCode = error_code::none;
      return false;
    }
  });
  if (!solved) r_squared = -fit.stage();
  return solved;
}

}  // namespace tavlo
