#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "solver/points_world.h"
#include "solver/residuals.h"
#include "solver/starting_values.h"

namespace tavlo {
namespace {

std::vector<test::TimeAndRank> random_points(std::uint64_t seed, int n) {
  std::mt19937_64 random(seed);
  std::weibull_distribution<double> late(3, 1000), early(0.8, 60);
  std::vector<double> times;
  for (int i = 0; i < n; ++i) times.push_back(random() % 4 == 0 ? early(random) : late(random));
  std::sort(times.begin(), times.end());
  return test::ranked_times(times);
}

struct Search : test::PointsWorld {
  Search(const std::vector<test::TimeAndRank>& points, int K, int method) {
    load(points, K, method);
    WeibullStatistics(solver, X);
  }

  /// GetEstimate from the present parameters; the quality of its X on all rows.
  double run(Solver& with, int status = -1) {
    int M = state.data.M;
    GetEstimate(with, M, state.data.K, X, status);
    return quality();
  }

  double quality() {
    std::vector<double> fvec(static_cast<std::size_t>(state.data.M) + 1);
    JacobianMatrix unused;
    int iflag = residual_request::evaluate_once;
    ParameterVector at = X;
    ResidualFn(solver, state.data.M, state.data.K, at, fvec, unused, iflag);
    return at[0];
  }

  ParameterVector X{};
};

TEST(PatternSearch, NeverLosesAgainstItsStart) {
  for (std::uint64_t seed = 1; seed <= 12; ++seed)
    for (const int K : {2, 4, 5, 7})
      for (const int method : {solver_method::x_on_y, solver_method::mle, solver_method::y_on_x}) {
        Search search(random_points(seed, 60), K, method);
        search.solver.quiet = true;
        const double before = search.quality();
        EXPECT_GE(search.run(search.solver), before - 1e-9 * std::fabs(before));
        EXPECT_EQ(search.state.data.Method, method);
        for (int i = 1; i <= K; ++i) EXPECT_GT(search.X[static_cast<std::size_t>(i)], 0);
        if (K == 4 || K == 7) {
          EXPECT_GE(search.X[1], search.X[3]);
        }
      }
}

TEST(PatternSearch, ImprovesAPoorStart) {
  for (const int method : {solver_method::x_on_y, solver_method::mle, solver_method::y_on_x}) {
    Search search(random_points(3, 60), 2, method);
    search.state.params.BetaA *= 0.2;
    search.X[1] *= 0.2;
    const double before = search.quality();
    EXPECT_GT(search.run(search.solver), before);
  }
}

TEST(PatternSearch, StatusTenOnlyEvaluates) {
  Search search(random_points(5, 40), 5, solver_method::y_on_x);
  const ParameterVector start = search.X;
  search.run(search.solver, 10);
  for (std::size_t slot = 1; slot <= 5; ++slot) EXPECT_DOUBLE_EQ(search.X[slot], start[slot]);
  EXPECT_EQ(search.X[0], search.state.params.SumSq);
}

TEST(PatternSearch, PopulationsThatTheModelLacksAreCleared) {
  Search search(random_points(5, 40), 4, solver_method::y_on_x);
  search.state.params.BetaC = search.state.params.EtaC = search.state.params.Extra = 0.5;
  search.run(search.solver);
  EXPECT_EQ(search.state.params.EtaC, 0);
  EXPECT_EQ(search.state.params.Extra, 0);
}

/// Each turn of the event loop takes its time.
struct SlowLoop : EventLoop {
  SlowLoop(test::TestClock& the_clock, double the_seconds)
      : clock(the_clock), seconds(the_seconds) {}
  void yield() override {
    clock.advance(seconds);
    spent += seconds;
  }
  test::TestClock& clock;
  double seconds;
  double spent = 0;
};

// A likelihood is never "good enough", so only rounds and time end its search. The
// time limit is looked at once a pass, of 14 evaluations at most.
TEST(PatternSearch, ALikelihoodEndsAfterTwentyRoundsOrFiveSeconds) {
  Search fast(random_points(7, 50), 7, solver_method::mle);
  fast.solver.quiet = true;
  const long before = fast.event_loop.turns;
  fast.run(fast.solver);
  const long evaluations = fast.event_loop.turns - before;  // one block of rows each
  EXPECT_LE(evaluations, 20 * (2 * 7 + 2) + 3);
  EXPECT_GE(evaluations, 20 * 7);

  Search slow(random_points(7, 50), 7, solver_method::mle);
  SlowLoop loop(slow.clock, 0.1);
  Solver sluggish{slow.state, slow.errors, slow.prompts, loop, slow.clock, true};
  slow.run(sluggish);
  EXPECT_GT(loop.spent, 5);
  EXPECT_LT(loop.spent, 5 + 0.1 * 17);
}

TEST(PatternSearch, AnAbortKeepsTheBestXAndTheMethod) {
  for (const long turn : {1, 2, 3, 5, 9, 30}) {
    Search search(random_points(9, 50), 7, solver_method::mle);
    struct AbortLoop : EventLoop {
      AbortLoop(SolverState& the_state, long the_last) : state(the_state), last(the_last) {}
      void yield() override {
        if (--last == 0) state.abort_flag = 2;
      }
      SolverState& state;
      long last;
    } loop{search.state, turn};
    Solver solver{search.state, search.errors, search.prompts, loop, search.clock, true};
    int M = 50, status = -1;
    GetEstimate(solver, M, 7, search.X, status);
    EXPECT_EQ(search.state.data.Method, solver_method::mle);
    for (std::size_t slot = 1; slot <= 7; ++slot) EXPECT_GT(search.X[slot], 0);
    EXPECT_GT(-loop.last, -1);  // the flag came, and the search ended soon after
    EXPECT_LT(-loop.last, 3);
  }
}

TEST(PatternSearch, HostileDataEndQuietly) {
  std::vector<std::vector<test::TimeAndRank>> sets = {{}, {{3, 0.5}}};
  for (const int n : {4, 6, 7, 30}) {
    std::vector<double> outlier, tiny, huge;
    for (int i = 1; i <= n; ++i) {
      outlier.push_back(i == n ? 1e12 : i);
      tiny.push_back(i * 1e-300);
      huge.push_back(i * 1e300);
    }
    sets.push_back(test::ranked_times(std::vector<double>(static_cast<std::size_t>(n), 7.0)));
    for (const auto& times : {outlier, tiny, huge}) sets.push_back(test::ranked_times(times));
  }
  for (const auto& points : sets)
    for (const int K : {2, 4, 5, 7})
      for (const int method : {solver_method::x_on_y, solver_method::mle, solver_method::y_on_x}) {
        test::PointsWorld world;
        world.solver.quiet = true;
        world.load(points, K, method);
        ParameterVector X{};
        WeibullStatistics(world.solver, X);
        int M = world.state.data.M, status = -1;
        GetEstimate(world.solver, M, K, X, status);
        for (const double value : X) EXPECT_TRUE(std::isfinite(value));
        EXPECT_EQ(world.state.data.Method, method);
      }
}

}  // namespace
}  // namespace tavlo
