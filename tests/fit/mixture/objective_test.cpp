#include "fit/mixture/objective.h"

#include <gtest/gtest.h>

#include "life/models.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

TEST(Objective, HasNoValueOfParametersBeyondAllNumbers) {
  test::RandomNumbers random(1);
  const Sample sample = make_sample(
      test::weibull_rows(random, 30, 2, 1000, {.share_suspended = 0.3}), RankKind::benard);
  for (const std::int16_t method : {method_code::x_on_y, method_code::mle, method_code::y_on_x})
    for (const Populations has : {one_weibull, competing_risks, early_share, bathtub, share_alone})
      for (std::size_t i = 0; i < 2 * has.count(); ++i) {
        const MixtureRows rows = mixture_rows(sample, method, true);
        const auto objective = make_objective(rows, has);
        SmallVector q{};
        LocalShape shape;
        EXPECT_EQ(objective->shape_at(q, shape), has.a || method != method_code::x_on_y);
        q[i] = i % 2 == 0 ? 1000 : HUGE_VAL;
        EXPECT_FALSE(objective->shape_at(q, shape) && std::isfinite(shape.value)) << method << i;
      }
}

}  // namespace
}  // namespace tavlo
