#include "actions/polynomial_fit.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "actions/compensated_sum.h"
#include "numerics/elementary.h"
#include "numerics/matrix_solution.h"
#include "numerics/number_text.h"
#include "numerics/real.h"

namespace tavlo {
namespace {

/// A row that takes part: weight, and its coordinates less their means. Moments
/// about the means keep the digits that raw ones lose where the spread is small,
/// and the answer doesn't hang on the unit of time.
struct WeightedPoint {
  double weight;
  double u;
  double v;
};

class PolynomialFit {
 public:
  PolynomialFit(ErrorReporter& reporter, DataSet& data, const PolynomialRequest& request)
      : reporter_(reporter), data_(data), request_(request) {}

  void run(Slots<double>& coefficients, bool wants_r_squared, double& result);
  void add_words(double stage) const;
  bool solution_failed() const { return stage_ >= 4.0 && stage_ < 5.0; }
  double stage() const { return stage_; }

 private:
  [[noreturn]] void fail(int code = error_code::none) const;
  void gather();
  void centre();
  void take_moments();
  void add_to_moments(const WeightedPoint& point);
  void store_means();
  void solve();
  void uncentre(Slots<double>& coefficients) const;
  double r_squared() const;

  auto slot(int power) const { return static_cast<std::size_t>(power); }

  ErrorReporter& reporter_;
  DataSet& data_;
  const PolynomialRequest& request_;
  double stage_ = 1.0;
  int degree_ = 0;
  int rows_ = 0;
  std::vector<WeightedPoint> points_;
  double weight_ = 0;
  double u_mean_ = 0;
  double v_mean_ = 0;
  bool has_spread_ = false;
  std::vector<CompensatedSum> u_sums_;  // M(j): weight times u to the j-th power
  std::vector<CompensatedSum> v_sums_;  // V(j): the same times v
  std::vector<double> centred_;         // coefficients about the means
};

void PolynomialFit::fail(int code) const {
  reporter_.gErrCode = code;
  throw RunTimeError(run_time::invalid_argument);
}

void PolynomialFit::run(Slots<double>& coefficients, bool wants_r_squared, double& result) {
  if (request_.order == 0) fail();
  degree_ = std::abs(request_.order);
  stage_ = 1.1;
  if (coefficients.bound() < degree_) coefficients.resize(degree_);
  stage_ = 1.2;
  const bool limited = request_.row_limit > 0 && request_.row_limit < data_.Count;
  rows_ = limited ? request_.row_limit : data_.Count;
  stage_ = 2.0;
  gather();
  centre();
  take_moments();
  stage_ = 3.0;
  if (!(weight_ >= degree_)) fail();
  store_means();
  stage_ = 4.0;
  solve();
  uncentre(coefficients);
  stage_ = 5.0;
  result = wants_r_squared ? r_squared() : 0.0;
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

void PolynomialFit::centre() {
  CompensatedSum weight;
  CompensatedSum u_sum;
  CompensatedSum v_sum;
  for (const WeightedPoint& point : points_) {
    weight += point.weight;
    u_sum += point.weight * point.u;
    v_sum += point.weight * point.v;
  }
  weight_ = finite(weight.value());
  if (weight_ == 0.0) return;
  u_mean_ = finite(u_sum.value()) / weight_;
  v_mean_ = finite(v_sum.value()) / weight_;
  bool u_spread = false;
  bool v_spread = false;
  const WeightedPoint first = points_.front();
  for (WeightedPoint& point : points_) {
    u_spread = u_spread || point.u != first.u;
    v_spread = v_spread || point.v != first.v;
    point.u -= u_mean_;
    point.v -= v_mean_;
  }
  has_spread_ = u_spread && v_spread;
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
  for (const WeightedPoint& point : points_) add_to_moments(point);
  for (const auto* sums : {&u_sums_, &v_sums_})
    for (const CompensatedSum& sum : *sums) finite(sum.value());
}

void PolynomialFit::store_means() {
  const auto index = static_cast<std::size_t>(request_.index);
  DataPoint& summary = data_.Points(0);
  summary.XT[index] = request_.order > 0 ? u_mean_ : v_mean_;
  summary.YT[index] = request_.order > 0 ? v_mean_ : u_mean_;
}

void PolynomialFit::solve() {
  const int n = degree_ + 1;
  Matrix system(n, n);
  for (int row = 1; row <= n; ++row) {
    system(row, 0) = v_sums_[slot(row - 1)].value();
    for (int column = 1; column <= n; ++column)
      system(row, column) = u_sums_[slot(row + column - 2)].value();
  }
  const int code = has_spread_ ? MatSolve(reporter_, system, false) : error_code::singular_matrix;
  if (code != error_code::none) {
    stage_ += 0.01 * (code - 1000);
    fail(code);
  }
  for (int j = 0; j <= degree_; ++j) centred_.push_back(system(j + 1, 0));
}

/// The same polynomial in u itself: Horner's scheme, shifted once for each power.
void PolynomialFit::uncentre(Slots<double>& coefficients) const {
  std::vector<Real> shifted(centred_.begin(), centred_.end());
  for (int j = 0; j < degree_; ++j)
    for (int k = degree_ - 1; k >= j; --k) shifted[slot(k)] -= shifted[slot(k + 1)] * u_mean_;
  shifted[0] += v_mean_;
  for (int j = 0; j <= degree_; ++j) coefficients(j) = shifted[slot(j)].value();
}

double PolynomialFit::r_squared() const {
  CompensatedSum about_line;
  CompensatedSum about_mean;
  for (const WeightedPoint& point : points_) {
    double line = centred_.back();
    for (int j = degree_ - 1; j >= 0; --j) line = line * point.u + centred_[slot(j)];
    about_line += point.weight * (point.v - line) * (point.v - line);
    about_mean += point.weight * point.v * point.v;
  }
  return fd_RSquared(reporter_, finite(about_line.value()), finite(about_mean.value()));
}

void PolynomialFit::add_words(double stage) const {
  const std::string order = "Order: " + std::to_string(degree_);
  const std::string size = "Array size: " + std::to_string(rows_);
  const std::string points = " Points: " + number_text(weight_);
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
  if (solution_failed() && !has_spread_)
    reporter_.add_lines({"All times, or all ranks, are equal: no line goes through them."});
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
