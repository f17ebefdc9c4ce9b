#include "solver/marquardt_parameter.h"

#include <gtest/gtest.h>

#include <Eigen/Dense>
#include <random>

#include "cminpack.h"
#include "solver/points_world.h"

namespace tavlo {
namespace {

/// A random triangular system whose last `dependent` columns have no diagonal.
struct Triangle {
  Triangle(std::mt19937_64& random, int the_K, int dependent)
      : K(the_K), own(K, K), r(Eigen::MatrixXd::Zero(K, K)), b(K), d(K) {
    std::normal_distribution<double> normal;
    for (int j = 1; j <= K; ++j) {
      ipvt[j] = j;
      for (int i = 1; i <= j; ++i) own(i, j) = normal(random);
      own(j, j) = j > K - dependent ? 0.0 : own(j, j) + std::copysign(0.3, own(j, j));
      for (int i = 1; i <= j; ++i) r(i - 1, j - 1) = own(i, j);
      b(j - 1) = qtb[j] = normal(random);
      d(j - 1) = diag[j] = std::exp(normal(random));
    }
  }

  int K;
  JacobianMatrix own;
  Eigen::MatrixXd r;
  Eigen::VectorXd b, d;
  PivotList ipvt{};
  VariableVector qtb{}, diag{}, x{}, sdiag{};
};

// The two promises of the parameter: x solves the damped normal equations, and its
// scaled length is delta within a tenth, or the undamped step is shorter anyway. A
// triangle without full rank may end with a shorter step.
TEST(MarquardtParameter, TheStepIsDampedAndAsLongAsAllowed) {
  std::mt19937_64 random(21);
  test::PointsWorld world;
  int damped = 0;
  for (int round = 0; round < 2000; ++round) {
    const int K = 1 + round % 7;
    const bool deficient = round % 5 == 0 && K > 1;
    Triangle system(random, K, deficient ? 1 : 0);
    const double delta = std::exp(std::normal_distribution<double>(0, 2)(random));
    double par = round % 3 == 0 ? 0.0 : 1.0;
    ASSERT_TRUE(LMPAR(world.solver, K, system.own, system.ipvt, system.diag, system.qtb, delta, par,
                      system.x, system.sdiag));
    Eigen::VectorXd x(K);
    for (int j = 1; j <= K; ++j) x(j - 1) = system.x[j];
    const double length = (system.d.array() * x.array()).matrix().norm();
    EXPECT_LE(length, 1.1 * delta * (1 + 1e-9));
    if (par == 0) continue;
    ++damped;
    if (!deficient) {
      EXPECT_GE(length, 0.9 * delta * (1 - 1e-9));
    }
    const Eigen::MatrixXd weights = par * system.d.array().square().matrix().asDiagonal();
    const Eigen::VectorXd right = system.r.transpose() * system.b;
    const Eigen::VectorXd left = (system.r.transpose() * system.r + weights) * x;
    EXPECT_LT((left - right).norm(), 1e-10 * (1 + right.norm()));
  }
  EXPECT_GT(damped, 500);
}

TEST(MarquardtParameter, AgreesWithMinpack) {
  std::mt19937_64 random(22);
  test::PointsWorld world;
  for (int round = 0; round < 500; ++round) {
    const int K = 1 + round % 7;
    Triangle system(random, K, round % 5 == 0 && K > 1 ? 1 : 0);
    const double delta = std::exp(std::normal_distribution<double>(0, 2)(random));
    double par = round % 3, other_par = par;
    Eigen::MatrixXd r = system.r;
    Eigen::VectorXd x(K), sdiag(K), work_1(K), work_2(K);
    std::vector<int> order;
    for (int j = 1; j <= K; ++j) order.push_back(system.ipvt[j]);
    lmpar(K, r.data(), K, order.data(), system.d.data(), system.b.data(), delta, &other_par,
          x.data(), sdiag.data(), work_1.data(), work_2.data());
    ASSERT_TRUE(LMPAR(world.solver, K, system.own, system.ipvt, system.diag, system.qtb, delta, par,
                      system.x, system.sdiag));
    EXPECT_NEAR(par, other_par, 1e-9 * other_par);
    for (int j = 1; j <= K; ++j) EXPECT_NEAR(system.x[j], x(j - 1), 1e-9 * x.norm());
  }
}

TEST(MarquardtParameter, OverflowIsReported) {
  test::PointsWorld world;
  world.prompts.expect_box("*** Tavlo Error ***", "in LMPAR routine", BoxAnswer::retry);
  std::mt19937_64 random(2);
  Triangle system(random, 2, 0);
  system.own(2, 2) = 1e-200;
  system.qtb[2] = 1e200;
  double par = 0;
  EXPECT_FALSE(LMPAR(world.solver, 2, system.own, system.ipvt, system.diag, system.qtb, 1, par,
                     system.x, system.sdiag));
}

}  // namespace
}  // namespace tavlo
