#include "fit/mixture/mixture_rows.h"

#include <gtest/gtest.h>

#include "life/models.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

/// Log time and ordinate by which the part has failed, or was suspended.
std::pair<double, double> quantile(const WeightedRows& rows, double part) {
  std::size_t i = 0;
  for (double passed = rows.w[0]; passed < part * rows.total;) passed += rows.w[++i];
  return {rows.x[i], rows.y[i]};
}

TEST(MixtureRows, AThinnedSampleHasTheQuantilesOfTheWhole) {
  constexpr int most = 400;
  test::RandomNumbers random(31);
  const Sample sample =
      make_sample(test::weibull_rows(random, 20003, 2, 1000, {.digits = 7, .share_suspended = 0.4}),
                  RankKind::benard);
  for (const std::int16_t method : {method_code::mle, method_code::x_on_y}) {
    const MixtureRows all = mixture_rows(sample, method, true), few = thinned(all, most);
    for (const auto list : {&MixtureRows::failures, &MixtureRows::suspensions}) {
      const WeightedRows &whole = all.*list, &part = few.*list;
      EXPECT_LE(part.count, std::size_t{most});
      EXPECT_NEAR(part.total, whole.total, 1e-9 * whole.total);
      for (int k = 0; k < most && whole.count > 0; ++k)
        ASSERT_EQ(quantile(part, (k + 0.5) / most), quantile(whole, (k + 0.5) / most)) << k;
    }
  }
}

}  // namespace
}  // namespace tavlo
