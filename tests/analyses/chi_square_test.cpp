#include "analyses/chi_square.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/error_number.h"

namespace tavlo {
namespace {

TEST(ChiSquare, HasTheQuantilesOfThePublishedTables) {
  for (const auto& [x, df, p] :
       std::vector<std::tuple<double, std::int16_t, double>>{{3.841458820694124, 1, 0.95},
                                                             {6.634896601021213, 1, 0.99},
                                                             {5.991464547107979, 2, 0.95},
                                                             {0.584374374155183, 3, 0.1},
                                                             {4.351460191095526, 5, 0.5},
                                                             {20.51500565243288, 5, 0.999},
                                                             {11.07049769351635, 5, 0.95},
                                                             {124.342113404004, 100, 0.95}})
    EXPECT_NEAR(fd_ChiSq(x, df), p, 1e-12) << x << " " << df;
}

// P(df + 2) = P(df) - (x / 2)^(df / 2) exp(-x / 2) / Gamma(df / 2 + 1), from erf and exp on.
TEST(ChiSquare, FollowsItsRecurrence) {
  double worst = 0;
  for (const long double x : {1e-12L, 1e-6L, 0.01L, 0.7L, 2.0L, 9.0L, 40.0L, 200.0L, 1000.0L})
    for (int first : {1, 2}) {
      const long double half = x / 2;
      long double p = first == 1 ? std::erf(std::sqrt(half)) : -std::expm1(-half);
      for (int df = first; df <= 343; df += 2) {
        const double got = fd_ChiSq(static_cast<double>(x), static_cast<std::int16_t>(df));
        worst = std::max(worst, std::fabs(got - static_cast<double>(p)));
        const long double a = df / 2.0L;
        p -= std::exp(a * std::log(half) - half - std::lgamma(a + 1));
      }
    }
  EXPECT_LT(worst, 1e-13);
}

TEST(ChiSquare, HasLimits) {
  constexpr double infinite = std::numeric_limits<double>::infinity();
  for (const auto& [x, df, p] :
       std::vector<std::tuple<double, std::int16_t, double>>{{1e-13, 1, 0},
                                                             {0, 3, 0},
                                                             {-5, 1, 0},
                                                             {-infinite, 1, 0},
                                                             {5, 0, 0},
                                                             {5, -32768, 0},
                                                             {1000.1, 5, 1},
                                                             {infinite, 5, 1},
                                                             {350, 400, 1},
                                                             {330, 400, 0},
                                                             {342, 344, 1},
                                                             {1001, 1192, 1},
                                                             {1001, 1193, 0}})
    EXPECT_EQ(fd_ChiSq(x, df), p) << x << " " << df;
  EXPECT_EQ(test::error_of([] { fd_ChiSq(std::nan(""), 1); }), 5);
}

}  // namespace
}  // namespace tavlo
