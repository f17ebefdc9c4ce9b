#include "solver/sound_answer.h"

#include <gtest/gtest.h>

#include "solver/points_world.h"

namespace tavlo {
namespace {

/// A hundred failures at the times of a usual bathtub.
SolverData data_of_bathtub(int method) {
  const test::PreciseMixture truth{4, 1000, 1, 3000, 2, 50, 0.15};
  const auto points = truth.sample(100);
  SolverData data;
  data.M = data.N = 100;
  data.Method = method;
  data.Xs = data.Ys = Slots<double>(100);
  for (int i = 1; i <= 100; ++i)
    data.Xs(i) = std::log(points[static_cast<std::size_t>(i) - 1].time);
  return data;
}

SolverParams bathtub() {
  SolverParams p;
  p.BetaA = 4, p.EtaA = 1000, p.BetaB = 1, p.EtaB = 3000, p.BetaC = 2, p.EtaC = 50;
  p.Extra = 0.15;
  return p;
}

TEST(SoundAnswer, EachFlawIsFound) {
  struct Case {
    const char* name;
    Flaw by_regression;
    Flaw by_likelihood;
    void (*spoil)(SolverParams&);
  };
  const Case cases[] = {
      {"none", Flaw::none, Flaw::none, [](SolverParams&) {}},
      {"no life", Flaw::undefined, Flaw::undefined, [](SolverParams& p) { p.EtaB = 0; }},
      {"not a number", Flaw::undefined, Flaw::undefined, [](SolverParams& p) { p.BetaA = NAN; }},
      {"steep", Flaw::steep_population, Flaw::steep_population,
       [](SolverParams& p) { p.BetaC = 51; }},
      {"B too late", Flaw::empty_population, Flaw::empty_population,
       [](SolverParams& p) { p.EtaB = 1e6; }},
      {"C too rare", Flaw::empty_population, Flaw::empty_population,
       [](SolverParams& p) { p.Extra = 0.001; }},
      {"no survivors", Flaw::empty_population, Flaw::reliability_replaced,
       [](SolverParams& p) { p.EtaA = 150; }},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    SolverParams params = bathtub();
    each.spoil(params);
    const Flaw regression = flaw_of(params, data_of_bathtub(solver_method::y_on_x), 7);
    EXPECT_EQ(regression, each.by_regression);
    EXPECT_EQ(flaw_of(params, data_of_bathtub(solver_method::mle), 7), each.by_likelihood);
  }
}

TEST(SoundAnswer, ADensityAboveOneIsAFlawOfALikelihood) {
  SolverData data = data_of_bathtub(solver_method::mle);
  SolverParams params = bathtub();
  for (int i = 1; i <= data.M; ++i) data.Xs(i) -= std::log(1e5);  // another unit of time
  for (double* eta : {&params.EtaA, &params.EtaB, &params.EtaC}) *eta /= 1e5;
  EXPECT_EQ(flaw_of(params, data, 7), Flaw::density_above_one);
  data.Method = solver_method::x_on_y;
  EXPECT_EQ(flaw_of(params, data, 7), Flaw::none);
}

// C's failures by its hazard p f_C S_AB alone, summed here without the common
// factors that the routine leaves out: the flaw begins where two are left.
TEST(SoundAnswer, APopulationEndsAtTwoFailures) {
  const SolverData data = data_of_bathtub(solver_method::y_on_x);
  for (double share = 0.001; share < 0.02; share += 0.001) {
    SolverParams params = bathtub();
    params.Extra = share;
    double held = 0;
    for (int i = 1; i <= data.N; ++i) {
      const double t = std::exp(data.Xs(i));
      const double C = std::pow(t / 50, 2), A = std::pow(t / 1000, 4), B = t / 3000;
      const double of_c = share * std::exp(-C) * 2 * C;
      held += of_c / (of_c + (share * std::exp(-C) + 1 - share) * (4 * A + B));
    }
    EXPECT_EQ(flaw_of(params, data, 7), held < 2 ? Flaw::empty_population : Flaw::none) << held;
  }
}

}  // namespace
}  // namespace tavlo
