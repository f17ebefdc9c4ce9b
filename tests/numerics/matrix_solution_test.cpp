#include "numerics/matrix_solution.h"

#include <gtest/gtest.h>

#include <Eigen/Dense>
#include <random>

#include "support/reporter_test.h"

namespace tavlo {
namespace {

using MatSolveTest = test::ReporterTest;

/// Rows of coefficients with the right-hand side in front.
Matrix system_of(const std::vector<std::vector<double>>& rows) {
  const int n = static_cast<int>(rows.size());
  Matrix system(n, n);
  for (int i = 1; i <= n; ++i)
    for (int c = 0; c <= n; ++c)
      system(i, c) = rows[static_cast<std::size_t>(i) - 1][static_cast<std::size_t>(c)];
  return system;
}

void expect_same(const Matrix& a, const Matrix& b) {
  for (int i = 0; i <= a.last_row(); ++i)
    for (int c = 0; c <= a.last_column(); ++c) EXPECT_EQ(a(i, c), b(i, c)) << i << ", " << c;
}

/// Largest difference from a library's solution, relative to the condition.
double error_against_library(ErrorReporter& reporter, std::mt19937_64& random, int n, bool flag) {
  std::normal_distribution<double> normal;
  Eigen::MatrixXd coefficients(n, n);
  Eigen::VectorXd right(n);
  Matrix system(n, n);
  for (int i = 0; i < n; ++i) {
    system(i + 1, 0) = right(i) = normal(random);
    for (int c = 0; c < n; ++c) system(i + 1, c + 1) = coefficients(i, c) = normal(random);
  }
  EXPECT_EQ(MatSolve(reporter, system, flag), 0);
  const Eigen::VectorXd expected = coefficients.fullPivLu().solve(right);
  Eigen::VectorXd found(n);
  for (int i = 0; i < n; ++i) found(i) = system(i + 1, 0);
  const Eigen::VectorXd singular = coefficients.jacobiSvd().singularValues();
  const double condition = singular(0) / singular(n - 1);
  return (found - expected).norm() / (expected.norm() * condition);
}

TEST_F(MatSolveTest, random_systems_agree_with_a_library) {
  std::mt19937_64 random(3);
  double worst = 0;
  for (int round = 0; round < 6000; ++round)
    worst = std::max(worst, error_against_library(reporter, random, 2 + round % 6, round % 4 < 2));
  RecordProperty("worst", std::to_string(worst * 1e15) + "e-15");
  EXPECT_LE(worst, 4e-15);
}

TEST_F(MatSolveTest, identical_rows_are_reported_and_leave_the_array) {
  for (const bool flag : {false, true}) {
    prompts.expect_box("Singular Matrix cannot be solved",
                       "Matrix Solution subroutine: \nRows/Columns: 2\nSingular matrix.  The \n"
                       "Determinant is zero and the matrix cannot be \n"
                       "solved.  Check for duplicated rows.\nMatSolve routine:\nSingular Matrix");
    Matrix system = system_of({{3, 1, 2}, {3, 1, 2}});
    EXPECT_EQ(MatSolve(reporter, system, flag), 1005);
    expect_same(system, system_of({{3, 1, 2}, {3, 1, 2}}));
    EXPECT_EQ(reporter.gErrLast, 1005);
  }
}

}  // namespace
}  // namespace tavlo
