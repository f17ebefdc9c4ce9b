#include "solver/parameter_translation.h"

#include <gtest/gtest.h>

#include <limits>

#include "residual_world.h"

namespace tavlo {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct TranslationTest : testing::Test, test::ResidualWorld {
  TranslationTest() {
    set_points({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, std::vector<double>(10, 0.0));
    for (SolverParams* p : {&q()}) p->BetaA = p->EtaA = p->BetaB = p->EtaB = 1;
  }
  void translate(int direction, int K) { TranslateParams(solver, direction, K, X); }
};

TEST_F(TranslationTest, parameters_come_back_from_both_forms) {
  std::mt19937_64 random(53);
  for (const int K : test::all_models) {
    for (const int trans_mode : {1, 2}) {
      set_model(K, solver_method::y_on_x, trans_mode);
      for (int round = 0; round < 50; ++round) {
        set_random_parameters(random);
        const ParameterVector before = X;
        translate(trans_mode + 2, K);
        EXPECT_NEAR(q().LnEtaA, std::log(q().EtaA), 1e-14);
        X.fill(9);
        translate(trans_mode, K);
        for (int i = 1; i <= 7; ++i) {
          const double expected = i <= K ? before[static_cast<std::size_t>(i)] : 0;
          EXPECT_NEAR(X[static_cast<std::size_t>(i)], expected, 1e-12) << K << " slot " << i;
        }
        EXPECT_EQ(X[0], 9);
        EXPECT_EQ(X[8], 9);
      }
    }
  }
}

TEST_F(TranslationTest, chain_factors) {
  X = {0, std::log(2), std::log(50), 12};
  translate(translation::x_logarithms_to_parameters, 3);
  EXPECT_EQ(q().dBetaA, q().BetaA);
  EXPECT_NEAR(q().dEtaA, 50, 1e-12);
  EXPECT_EQ(q().dExtra, 12);  // although X holds t0 itself
  X = {0, 2, 50, -12};
  translate(translation::x_to_parameters, 3);
  EXPECT_EQ(q().Extra, -12);
  for (const double factor : {q().dBetaA, q().dEtaA, q().dBetaB, q().dEtaC, q().dExtra})
    EXPECT_EQ(factor, 1);
}

TEST_F(TranslationTest, absent_populations) {
  q().BetaB = 3, q().LnEtaB = 4, q().BetaC = 5, q().Extra = 0.5;
  X = {0, std::log(2), std::log(50)};
  translate(translation::x_logarithms_to_parameters, 2);
  EXPECT_EQ(q().BetaB, 3);  // only the model's own slots move
  translate(translation::x_to_parameters, 2);
  EXPECT_EQ(q().BetaB + q().LnEtaB + q().BetaC + q().Extra, 0);
}

TEST_F(TranslationTest, signs) {
  X = {0, -2, -50, -1, -100};
  translate(translation::x_to_parameters, 4);
  EXPECT_EQ(q().BetaA, 2);
  EXPECT_EQ(q().EtaB, 100);
  EXPECT_EQ(q().LnEtaA, std::log(50));
  q().BetaA = -3;
  q().EtaB = 0;
  translate(translation::logarithms_to_x, 4);
  EXPECT_EQ(q().BetaA, 0);
  EXPECT_EQ(X[1], 0);
  EXPECT_EQ(X[4], 0);
  X = {0, 2, 0};
  translate(translation::x_to_parameters, 2);
  EXPECT_EQ(q().LnEtaA, 0);
}

TEST_F(TranslationTest, share_is_held) {
  struct Case {
    double p, held;
  };
  for (const int K : {5, 7})
    for (const Case c : {Case{1.7, std::log(1.7)},
                         {5000, std::log(std::log(std::log(5000)))},
                         {0.0001, 0.001},
                         {-2, 0.001},
                         {0.9995, 0.999},
                         {1, 0.999},
                         {0.3, 0.3}}) {
      q().Extra = c.p;
      translate(translation::parameters_to_x, K);
      EXPECT_EQ(q().Extra, c.held) << c.p;
      EXPECT_EQ(X[static_cast<std::size_t>(K)], c.held);
    }
  q().Extra = 5000;
  translate(translation::parameters_to_x, 3);  // a minimum life is no share
  EXPECT_EQ(q().Extra, 5000);
}

TEST_F(TranslationTest, overflowed_parameters_get_usual_values) {
  q().BetaA = q().EtaA = q().BetaB = q().EtaB = q().BetaC = infinity;
  q().EtaC = 77;
  q().Extra = 0.5;
  translate(translation::parameters_to_x, 7);
  EXPECT_EQ(q().BetaA, 4);
  EXPECT_DOUBLE_EQ(q().EtaA, std::exp(6));
  EXPECT_EQ(q().BetaB, 6);
  EXPECT_DOUBLE_EQ(q().EtaB, std::exp(10));
  EXPECT_EQ(q().BetaC, 5);
  EXPECT_EQ(q().EtaC, 77);
  q().EtaC = 9;
  q().EtaB = 11;  // (9 + 1) * 1.1
  translate(translation::parameters_to_x, 7);
  EXPECT_DOUBLE_EQ(q().EtaC, std::exp(3));
}

TEST_F(TranslationTest, a_slot_that_overflows_keeps_its_parameter) {
  q().EtaA = 60;
  X = {0, std::log(2), 800, std::log(3), std::log(70)};
  world.prompts.expect_box("", "Overflow\nin Translating Parameters routine", BoxAnswer::retry);
  translate(translation::x_logarithms_to_parameters, 4);
  EXPECT_EQ(q().EtaA, 60);
  EXPECT_NEAR(q().EtaB, 70, 1e-12);
}

TEST_F(TranslationTest, endless_share_ends) {
  q().Extra = infinity;
  world.prompts.expect_box("", "Overflow\nin Translating", BoxAnswer::retry);
  translate(translation::parameters_to_x, 5);
  EXPECT_EQ(q().Extra, 0.999);
}

TEST_F(TranslationTest, clearing_the_table_leaves_working_storage) {
  SolutionTable& table = solver.table;
  for (int K = 0; K <= 7; ++K)
    for (int method = 0; method <= 3; ++method)
      for (int slot = 0; slot <= 8; ++slot) table(K, method, slot) = 5;
  XrefZero(solver);
  for (int K = 0; K <= 7; ++K)
    for (int method = 0; method <= 3; ++method)
      for (int slot = 0; slot <= 8; ++slot) {
        const bool cleared = method > 0 && K >= 2 && K != 6;
        EXPECT_EQ(table(K, method, slot), cleared ? (slot == 0 ? 1.1 : 0) : 5) << K << method;
      }
}

}  // namespace
}  // namespace tavlo
