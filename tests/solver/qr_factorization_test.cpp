#include "solver/qr_factorization.h"

#include <gtest/gtest.h>

#include <Eigen/QR>
#include <random>

#include "solver/points_world.h"
#include "solver/qr_solution.h"

namespace tavlo {
namespace {

/// A random matrix with columns of very different lengths, as our own and Eigen's.
struct System {
  System(int M_, int K_, std::uint64_t seed) : M(M_), K(K_), own(M_, K_), a(M_, K_) {
    std::mt19937_64 random(seed);
    std::normal_distribution<double> normal;
    for (int j = 1; j <= K; ++j) {
      const double length = std::exp(4 * normal(random));
      for (int i = 1; i <= M; ++i) own(i, j) = a(i - 1, j - 1) = length * normal(random);
    }
  }

  void set_column(int j, const Eigen::VectorXd& values) {
    a.col(j - 1) = values;
    for (int i = 1; i <= M; ++i) own(i, j) = values(i - 1);
  }

  bool factor() { return QRFAC(world.solver, M, K, own, ipvt, rdiag, acnorm); }

  /// R with its columns back in the order of the variables.
  Eigen::MatrixXd r_in_order() const {
    Eigen::MatrixXd r = Eigen::MatrixXd::Zero(K, K);
    for (int j = 1; j <= K; ++j) {
      for (int i = 1; i < j; ++i) r(i - 1, ipvt[j] - 1) = own(i, j);
      r(j - 1, ipvt[j] - 1) = rdiag[j];
    }
    return r;
  }

  int M, K;
  JacobianMatrix own;
  Eigen::MatrixXd a;
  test::PointsWorld world;
  PivotList ipvt{};
  VariableVector rdiag{}, acnorm{};
};

/// |R'R - A'A| relative to the lengths of the columns: R is right but for signs.
double worst_product_error(const System& system) {
  const Eigen::MatrixXd r = system.r_in_order();
  const Eigen::VectorXd length = system.a.colwise().norm().array() + 1e-300;
  const Eigen::MatrixXd error = r.transpose() * r - system.a.transpose() * system.a;
  return (error.array() / (length * length.transpose()).array()).abs().maxCoeff();
}

TEST(QrFactorization, AgreesWithEigen) {
  struct Shape {
    int M, K;
  };
  for (const Shape shape :
       {Shape{1, 1}, {2, 2}, {7, 7}, {8, 7}, {50, 3}, {1023, 5}, {1024, 7}, {1025, 7}, {5000, 7}})
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
      System system(shape.M, shape.K, seed);
      ASSERT_TRUE(system.factor());
      EXPECT_LT(worst_product_error(system), 1e-13) << shape.M << "x" << shape.K;
      const Eigen::ColPivHouseholderQR<Eigen::MatrixXd> other(system.a);
      for (int j = 1; j <= shape.K; ++j) {
        EXPECT_EQ(system.ipvt[j], other.colsPermutation().indices()(j - 1) + 1);
        EXPECT_NEAR(std::fabs(system.rdiag[j] / other.matrixR()(j - 1, j - 1)), 1, 1e-9);
        EXPECT_NEAR(system.acnorm[j] / system.a.col(j - 1).norm(), 1, 1e-14);
      }
    }
}

// Where a column nearly repeats another, the quick form of its remaining norm has
// no digits left and the norm must be taken anew.
TEST(QrFactorization, KeepsTheDiagonalOfNearlyDependentColumns) {
  for (const double part : {1e-3, 1e-6, 1e-9}) {
    System system(200, 3, 5);
    const double length = system.a.col(0).norm();
    system.set_column(2, system.a.col(0) + part * length * Eigen::VectorXd::LinSpaced(200, 0, 1));
    ASSERT_TRUE(system.factor());
    EXPECT_LT(worst_product_error(system), 1e-13);
    const Eigen::ColPivHouseholderQR<Eigen::MatrixXd> other(system.a);
    EXPECT_NEAR(std::fabs(system.rdiag[3] / other.matrixR()(2, 2)), 1, 1e-15 / part + 1e-10);
  }
}

TEST(QrFactorization, ZeroColumnsEndLastWithAZeroDiagonal) {
  System system(20, 3, 9);
  system.set_column(1, Eigen::VectorXd::Zero(20));
  ASSERT_TRUE(system.factor());
  EXPECT_EQ(system.ipvt[3], 1);
  EXPECT_EQ(system.rdiag[3], 0);
}

TEST(QrFactorization, EntriesThatAreNotFiniteAreReported) {
  System system(20, 3, 9);
  system.own(7, 2) = std::numeric_limits<double>::infinity();
  system.world.prompts.expect_box("Error: 6", "Error in Euclidian Norm: \nSum: ");
  system.world.prompts.expect_box("*** Tavlo Error ***", "in QRFAC routine", BoxAnswer::retry);
  EXPECT_FALSE(system.factor());
  System quiet(20, 3, 9);
  quiet.own(7, 2) = std::numeric_limits<double>::quiet_NaN();
  quiet.world.solver.quiet = true;
  EXPECT_FALSE(quiet.factor());
}

/// Solves the system with sqrt(weights) added as rows below it, by Eigen.
Eigen::VectorXd joint_solution(const System& system, const Eigen::VectorXd& b,
                               const VariableVector& diag) {
  Eigen::MatrixXd joint = Eigen::MatrixXd::Zero(system.M + system.K, system.K);
  joint.topRows(system.M) = system.a;
  for (int j = 1; j <= system.K; ++j) joint(system.M + j - 1, j - 1) = diag[j];
  Eigen::VectorXd right = Eigen::VectorXd::Zero(system.M + system.K);
  right.head(system.M) = b;
  return joint.colPivHouseholderQr().solve(right);
}

TEST(QrSolution, AgreesWithEigenOnTheJointSystem) {
  std::mt19937_64 random(3);
  std::normal_distribution<double> normal;
  for (int round = 0; round < 200; ++round) {
    const int K = 1 + round % 7;
    System system(30, K, static_cast<std::uint64_t>(round));
    ASSERT_TRUE(system.factor());
    Eigen::VectorXd b(30);
    for (double& value : b) value = normal(random);
    // Q'b from the normal equations: R' (Q'b) = A'b, columns in pivot order.
    Eigen::MatrixXd r = Eigen::MatrixXd::Zero(K, K);
    Eigen::VectorXd atb(K);
    VariableVector qtb{}, diag{}, x{}, sdiag{};
    for (int j = 1; j <= K; ++j) {
      for (int i = 1; i < j; ++i) r(i - 1, j - 1) = system.own(i, j);
      r(j - 1, j - 1) = system.own(j, j) = system.rdiag[j];
      atb(j - 1) = system.a.col(system.ipvt[j] - 1).dot(b);
      // Some variables without weight.
      diag[j] = normal(random) > 1 ? 0 : std::exp(2 * normal(random));
    }
    const Eigen::VectorXd q = r.transpose().triangularView<Eigen::Lower>().solve(atb);
    for (int j = 1; j <= K; ++j) qtb[j] = q(j - 1);
    ASSERT_TRUE(QRSOLV(system.world.solver, K, system.own, system.ipvt, diag, qtb, x, sdiag));
    const Eigen::VectorXd expected = joint_solution(system, b, diag);
    for (int j = 1; j <= K; ++j)
      EXPECT_NEAR(x[j], expected(j - 1), 1e-10 * expected.cwiseAbs().maxCoeff()) << round;
    for (int j = 1; j <= K; ++j) EXPECT_EQ(system.own(j, j), system.rdiag[j]);
  }
}

}  // namespace
}  // namespace tavlo
