#include "analyses/chi_square.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/case_list.h"
#include "support/error_number.h"

namespace tavlo {
namespace {

TEST(ChiSquare, HasThePublishedQuantilesAndTheLimits) {
  for (const auto& row : test::case_list("chi_squares.txt")) {
    const auto df = static_cast<std::int16_t>(std::stoi(row[0].substr(row[0].find(' '))));
    const double p = fd_ChiSq(test::number_in(row[0]), df), wanted = test::number_in(row[1]);
    EXPECT_NEAR(p, wanted, wanted == 0 || wanted == 1 ? 0 : 1e-12) << row[0];
  }
  EXPECT_EQ(test::error_of([] { fd_ChiSq(std::nan(""), 1); }), 5);
}

// P(df + 2) = P(df) - (x / 2)^(df / 2) exp(-x / 2) / Gamma(df / 2 + 1), from erf and exp on.
TEST(ChiSquare, FollowsItsRecurrence) {
  for (const long double x : {1e-12L, 1e-6L, 0.01L, 0.7L, 2.0L, 9.0L, 40.0L, 200.0L, 1000.0L})
    for (const int first : {1, 2}) {
      const long double half = x / 2;
      long double p = first == 1 ? std::erf(std::sqrt(half)) : -std::expm1(-half);
      for (int df = first; df <= 343; df += 2) {
        EXPECT_NEAR(fd_ChiSq(static_cast<double>(x), static_cast<std::int16_t>(df)),
                    static_cast<double>(p), 1e-13);
        p -= std::exp(df / 2.0L * std::log(half) - half - std::lgamma(df / 2.0L + 1));
      }
    }
}

}  // namespace
}  // namespace tavlo
