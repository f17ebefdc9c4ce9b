#include "solver/bracketed_secant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

namespace tavlo {
namespace {

TEST(XnewTest, target_met_closes_the_bracket) {
  SecantBracket bracket{0, -1, 2, 3};
  double x = 1;
  Xnew(0.5, x, 0.5, bracket);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(bracket.xLo, 1);
  EXPECT_EQ(bracket.xHi, 1);
  EXPECT_EQ(bracket.yLo, 0.5);
  EXPECT_EQ(bracket.yHi, 0.5);
}

struct Step {
  const char* name;
  double target, x, y;
  SecantBracket before;
  double next;
  SecantBracket after;
};

TEST(XnewTest, steps_by_hand) {
  const Step steps[] = {
      {"line, nearer to the lower end", 0, 2, 2, {-8, -8, 12, 22}, 0, {-8, -8, 2, 2}},
      {"to the upper end", 5, 4, 4, {0, -6, 10, 7}, 6, {4, 4, 10, 7}},
      // From (8, 1) towards (10, 2): 12 is outside; then the lower side: 8 + 2 * 8 / 3.
      {"leaves the bracket, both ways", 3, 8, 1, {0, -2, 10, 3.5}, 9.6, {8, 1, 10, 3.5}},
      {"flat: middle", 1, 5, 0, {0, 0, 10, 0}, 7.5, {5, 0, 10, 0}},
      {"equal ends", 1, 3, 0, {3, 0, 3, 0}, 3, {3, 0, 3, 0}},
  };
  for (const Step& s : steps) {
    SecantBracket bracket = s.before;
    double x = s.x;
    Xnew(s.target, x, s.y, bracket);
    EXPECT_NEAR(x, s.next, 1e-12) << s.name;
    EXPECT_EQ(bracket.xLo, s.after.xLo) << s.name;
    EXPECT_EQ(bracket.yLo, s.after.yLo) << s.name;
    EXPECT_EQ(bracket.xHi, s.after.xHi) << s.name;
    EXPECT_EQ(bracket.yHi, s.after.yHi) << s.name;
  }
}

TEST(XnewTest, keeps_off_the_ends) {
  struct Case {
    double wish, next;
  };
  // On the line y = x in the bracket 0..1, narrowed at 1 by the point itself.
  for (const Case c : {Case{0.00005, 0.0001}, {0.0005, 0.00075}, {0.5, 0.5}}) {
    SecantBracket bracket{0, 0, 1, 1};
    double x = 0.9999999;
    Xnew(c.wish, x, x, bracket);
    EXPECT_NEAR(x, c.next, 1e-9) << c.wish;
  }
  for (const Case c : {Case{0.99995, 0.9999}, {0.9995, 0.99925}}) {
    SecantBracket bracket{0, 0, 1, 1};
    double x = 1e-7;
    Xnew(c.wish, x, x, bracket);
    EXPECT_NEAR(x, c.next, 1e-6) << c.wish;
  }
}

// Rising functions of many kinds: the root never leaves the bracket, every trial
// lies in it, and the bracket closes to 1e-11 within the steps that are allowed.
TEST(XnewTest, closes_on_the_root_of_random_rising_functions) {
  std::mt19937_64 random(41);
  std::uniform_real_distribution<double> unit(0, 1);
  int most = 0;
  for (int round = 0; round < 2000; ++round) {
    const double root = -3 + 6 * unit(random), steep = std::exp(6 * unit(random) - 2);
    const std::function<double(double)> kinds[] = {
        [&](double x) { return steep * (x - root); },
        [&](double x) { return std::tanh(steep * (x - root)); },
        [&](double x) { return std::cbrt(x - root) * steep; },
        [&](double x) { return std::expm1(x - root) * steep; },
        [&](double x) { return std::pow(x - root, 3) + 1e-3 * (x - root); },
        [&](double x) { return x < root ? 0.1 * (x - root) : 50 * (x - root); }};
    const auto& f = kinds[round % 6];
    const double target = 0;
    SecantBracket bracket{-5, f(-5), 5, f(5)};
    double x = 0;
    int steps = 0;
    for (; steps < 302 && bracket.xHi - bracket.xLo > 1e-11; ++steps) {
      Xnew(target, x, f(x), bracket);
      ASSERT_LE(bracket.xLo, x);
      ASSERT_GE(bracket.xHi, x);
      ASSERT_LE(bracket.xLo, root + 1e-12);
      ASSERT_GE(bracket.xHi, root - 1e-12);
    }
    most = std::max(most, steps);
    EXPECT_NEAR(x, root, 1e-11) << round;
  }
  EXPECT_LT(most, 302);
}

}  // namespace
}  // namespace tavlo
