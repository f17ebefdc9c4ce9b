#include "numerics/matrix_solution.h"

#include <gtest/gtest.h>

#include <Eigen/Dense>
#include <random>

#include "support/test_world.h"

namespace tavlo {
namespace {

struct MatSolveTest : testing::Test {
  test::ScriptedPrompts prompts;
  test::TestClock clock;
  ErrorReporter reporter{prompts, clock};
};

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

TEST_F(MatSolveTest, pivots_are_sought_in_both_directions) {
  // A zero on the first diagonal element met, going up and going down.
  for (const auto& rows :
       {std::vector<std::vector<double>>{{5, 0, 1, 2}, {5, 3, 1, 1}, {5, 1, 4, 0}},
        std::vector<std::vector<double>>{{5, 4, 1, 0}, {5, 1, 0, 4}, {5, 1, 4, 0}}}) {
    for (const bool flag : {false, true}) {
      Matrix system = system_of(rows);
      ASSERT_EQ(MatSolve(reporter, system, flag), 0);
      for (const auto& row : rows)
        EXPECT_NEAR(row[1] * system(1, 0) + row[2] * system(2, 0) + row[3] * system(3, 0), row[0],
                    1e-14);
    }
  }
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

TEST_F(MatSolveTest, overflow_is_reported_and_leaves_the_array) {
  prompts.expect_box("Error in Matrix Solution",
                     "Ill-Conditioned Matrix.\n  An overflow error occured while solving the \n"
                     "matrix. \nMatSolve routine:\nMatrix Problem");
  const auto rows = std::vector<std::vector<double>>{{1e300, 1e-200, 1}, {1e-300, 1e-200, -1}};
  Matrix system = system_of(rows);
  EXPECT_EQ(MatSolve(reporter, system, false), 1006);
  expect_same(system, system_of(rows));
}

TEST_F(MatSolveTest, too_small_arrays_are_refused) {
  prompts.expect_box("Array too small", "Rows/Columns: 1\nDimension 0 of Array \nis unavailable");
  prompts.expect_box("Undefined Array", "Rows/Columns: 0\nIncoming array must be\n dimensioned");
  prompts.expect_box("Undefined Array", "Rows/Columns: -1\nIncoming array must be\n dimensioned");
  Matrix one(1, 5);
  Matrix none(0, 0);
  Matrix empty;
  EXPECT_EQ(MatSolve(reporter, one, false), 1003);
  EXPECT_EQ(MatSolve(reporter, none, false), 1004);
  EXPECT_EQ(MatSolve(reporter, empty, false), 1004);
  EXPECT_THROW(one(2, 0), RunTimeError);
  EXPECT_THROW(one(0, -1), RunTimeError);
}

}  // namespace
}  // namespace tavlo
