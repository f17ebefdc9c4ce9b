#include <gtest/gtest.h>

#include "residual_world.h"
#include "solver/model_times.h"
#include "solver/residuals.h"

namespace tavlo {
namespace {

struct HorizontalResidualsTest : testing::Test, test::ResidualWorld {
  std::mt19937_64 random{29};

  void expect_cancel(const char* text) {
    world.prompts.expect_box("*** Tavlo Error ***", text, BoxAnswer::cancel);
  }
};

TEST_F(HorizontalResidualsTest, model_times_reach_the_ordinates) {
  for (const int K : test::all_models) {
    set_model(K, solver_method::x_on_y);
    double worst = 0;
    for (int round = 0; round < 25; ++round) {
      set_random_points(2 + 5 * round, random);
      set_random_parameters(random);
      evaluate(data().M);
      const test::BookModel model{q(), K};
      for (int i = 1; i <= data().M; ++i)
        worst = std::max(
            worst, std::fabs(data().Xhat(i) - static_cast<double>(model.time_of(data().Ys(i)))));
    }
    EXPECT_LT(worst, 1e-11) << K;
  }
}

// Steep slopes, kinks, lives a factor 1e12 apart, data far from the model.
TEST_F(HorizontalResidualsTest, model_times_of_wild_models) {
  const ParameterVector wild[] = {{0, 50, 1000, 0.1, 1e-3, 30, 20, 0.001},
                                  {0, 0.05, 1e9, 40, 600, 0.3, 1e12, 0.999},
                                  {0, 12, 1e6, 9, 1e-6, 60, 1, 0.5},
                                  {0, 1, 1e3, 1, 1e3, 1, 1e3, 0.5},
                                  {0, 0.2, 1e-9, 0.2, 1e9, 90, 100, 0.3}};
  set_model(7, solver_method::x_on_y);
  for (const ParameterVector& parameters : wild) {
    set_random_points(60, random);
    X = parameters;
    evaluate(60);
    const test::BookModel model{q(), 7};
    for (int i = 1; i <= 60; ++i)
      ASSERT_NEAR(data().Xhat(i), static_cast<double>(model.time_of(data().Ys(i))), 1e-11)
          << X[1] << " row " << i;
  }
}

TEST_F(HorizontalResidualsTest, a_line_has_its_closed_form) {
  set_model(2, solver_method::x_on_y);
  set_random_points(30, random);
  X = {0, 2.5, 500};
  evaluate(30);
  for (int i = 1; i <= 30; ++i)
    EXPECT_NEAR(fvec[static_cast<std::size_t>(i)],
                std::log(500) + data().Ys(i) / 2.5 - data().Xs(i), 1e-14);
}

// A slope beyond what the packs are trusted with sends all rows the slow way. With
// its life far off, population B adds nothing.
TEST_F(HorizontalResidualsTest, the_slow_way_finds_the_same_times) {
  for (const int K : {4, 7}) {
    set_model(K, solver_method::x_on_y);
    set_random_points(40, random);
    X = K == 4 ? ParameterVector{0, 2, 300, 2e30, 1e12}
               : ParameterVector{0, 2, 300, 2e30, 1e12, 1, 50, 0.2};
    evaluate(40);
    const std::vector<double> slow = fvec;
    X[3] = 9;
    evaluate(40);
    for (std::size_t i = 1; i <= 40; ++i) ASSERT_NEAR(slow[i], fvec[i], 2e-11) << K << " row " << i;
  }
}

TEST_F(HorizontalResidualsTest, three_parameters_measure_beyond_the_minimum_life) {
  set_model(3, solver_method::x_on_y);
  set_points({std::log(10), std::log(20), std::log(40), std::log(80)}, {-1.5, -0.5, 0.2, 0.9});
  X = {0, 2, 50, 12};
  evaluate(4);
  EXPECT_NEAR(fvec[1], std::log(50) - 0.75 - (-400 - 12), 1e-12);  // under t0: far off
  double sum = fvec[1] * fvec[1], b = -412, bb = 412.0 * 412;
  for (std::size_t i = 2; i <= 4; ++i) {
    const double t = std::exp(data().Xs(static_cast<int>(i))), y = data().Ys(static_cast<int>(i));
    EXPECT_NEAR(fvec[i], std::log(50) + y / 2 - std::log(t - 12), 1e-12);
    sum += fvec[i] * fvec[i];
    b += std::log(t - 12);
    bb += std::log(t - 12) * std::log(t - 12);
  }
  EXPECT_NEAR(q().InvSpreadB * (bb - b * b / 4), 1, 1e-12);
  EXPECT_NEAR(X[0], 1 - sum / (bb - b * b / 4), 1e-12);
}

// A line with a minimum life below 0 reaches -9 before time 0. No point is left out.
TEST_F(HorizontalResidualsTest, ordinates_before_time_0_count_on_the_line) {
  set_model(3, solver_method::x_on_y);
  set_points({std::log(10), std::log(20), std::log(40)}, {-9, 0, 1});
  X = {0, 2, 50, -30};
  evaluate(3);
  EXPECT_TRUE(world.prompts.shown().empty());
  double sum = 0;
  for (std::size_t i = 1; i <= 3; ++i) {
    const double t = std::exp(data().Xs(static_cast<int>(i))), y = data().Ys(static_cast<int>(i));
    EXPECT_NEAR(fvec[i], std::log(50) + y / 2 - std::log(t + 30), 1e-12);
    sum += fvec[i] * fvec[i];
  }
  EXPECT_NEAR(X[0], 1 - sum * q().InvSpreadB, 1e-12);
  EXPECT_LT(data().Xhat(1), std::log(1e-9));
  EXPECT_NEAR(std::exp(data().Xhat(3)), std::exp(0.5) * 50 - 30, 1e-9);
}

/// No reliability of a mixture comes closer to 1 than 1e-11, the ordinate -25.3.
struct OutOfReach : HorizontalResidualsTest {
  void SetUp() override {
    set_model(5, solver_method::x_on_y);
    set_points({std::log(10), std::log(20), std::log(40)}, {-30, 0, 1});
    X = {0, 2, 50, 1, 10, 0.3};
    fvec = {0, 7, 7, 7};
  }
};

TEST_F(OutOfReach, the_point_is_told_and_the_fit_can_be_cancelled) {
  expect_cancel(
      "Warning!  Can't find lower bound in Findlo routine\nChoose Retry to Continue, or Ca");
  EXPECT_EQ((evaluate(3), solver.state.abort_flag), 2);
  int iflag = 1;
  ResidualFn(solver, 3, 5, X, fvec, fjac, iflag);
  EXPECT_EQ(iflag, -1);
}

TEST_F(OutOfReach, retry_goes_on_behind_the_point) {
  world.prompts.expect_box("", "Can't find lower bound", BoxAnswer::retry);
  evaluate(3);  // the second warning comes within five seconds
  EXPECT_EQ(solver.state.abort_flag, 0);
  const double t = std::exp(data().Xhat(3));
  const double A = std::pow(t / 50, 2), C = t / 10;
  EXPECT_NEAR(0.3 * std::exp(-A - C) + 0.7 * std::exp(-A), std::exp(-std::exp(1.0)), 1e-9);
}

TEST_F(HorizontalResidualsTest, equal_ordinates_have_no_slope) {
  set_model(4, solver_method::x_on_y);
  set_points({5, 5}, {0.3, 0.3});
  X = {0, 2, 100, 1, 200};
  world.prompts.expect_box("", "Division by zero\nin XonY Function routine", BoxAnswer::retry);
  evaluate(2);
}

// The abort flag, raised at the n-th yield, ends the walk there or at the next row.
TEST_F(HorizontalResidualsTest, abort_ends_every_residual_within_a_block) {
  struct AbortingLoop : EventLoop {
    SolverState& state;
    int left, turns = 0;
    AbortingLoop(SolverState& s, int n) : state(s), left(n) {}
    void yield() override {
      ++turns;
      if (--left == 0) state.abort_flag = 1;
    }
  };
  for (const int method : {1, 2, 3}) {
    for (int n = 1; n <= 5; ++n) {
      AbortingLoop loop(world.session.solver, n);
      Solver aborting{world.session.solver, world.session.errors, world.prompts, loop, world.clock};
      set_model(4, method);
      set_random_points(64 * 6, random);
      set_random_parameters(random);
      solver.state.abort_flag = 0;
      int iflag = 1;
      ResidualFn(aborting, data().M, 4, X, fvec, fjac, iflag);
      EXPECT_EQ(iflag, -1);
      EXPECT_EQ(loop.turns, n) << method;
    }
  }
}

}  // namespace
}  // namespace tavlo
