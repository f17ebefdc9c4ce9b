#include "actions/fit_by_mode.h"

#include <gtest/gtest.h>

#include "actions/classical_fits.h"
#include "actions/random_sample.h"
#include "actions/ranking.h"
#include "life/models.h"

namespace tavlo {
namespace {

using test::relative_difference;
using test::TestWorld;

constexpr const char* always = "Fit_ByMode model not programmed yet";

FitResult request(std::int16_t method) {
  FitResult fit;
  fit.ModelCode = model_code::by_failure_mode;
  fit.Method = method;
  fit.nRows = 1;
  fit.Rows.resize(1);
  return fit;
}

/// The set with the failures of the other modes standing as suspensions.
DataSet only_mode(const DataSet& data, int mode) {
  std::vector<test::Point> points;
  for (int i = 1; i <= data.Count; ++i) {
    const DataPoint& row = data.Points(i);
    const bool counts = row.Mode == mode;
    points.push_back({static_cast<double>(row.X), counts ? row.Fails : 0.0,
                      counts ? row.Susps : row.Fails + row.Susps});
  }
  return test::make_data(points);
}

FitResult alone(TestWorld& world, const DataSet& data, int mode, std::int16_t method) {
  DataSet own = only_mode(data, mode);
  Make_Ranks(world.session.errors, true, own);
  FitResult fit = request(method);
  fit.ModelCode = model_code::weibull2;
  fit.Rows(1).Shape = -1;
  Fit_Wb123(world.session.errors, world.prompts, own, fit, 1);
  return fit;
}

int rows_of(const DataSet& data, int mode) {
  int rows = 0;
  for (int i = 1; i <= data.Count; ++i)
    rows += data.Points(i).Fails > 0 && data.Points(i).Mode == mode;
  return rows;
}

// Ties of different modes rank by their own order, so times are all different.
TEST(FitByMode, EachModeIsFittedAsIfTheOthersWereSuspensions) {
  TestWorld world;
  world.prompts.accept_all();
  test::RandomSample random(77);
  int compared = 0;
  for (int round = 0; round < 120; ++round) {
    DataSet data =
        random.weibull(random.whole(9, 60), random.log_uniform(0.5, 8), 1000, 7, 0.3, false, 3);
    Make_Ranks(world.session.errors, true, data);
    if (std::min({rows_of(data, 1), rows_of(data, 2), rows_of(data, 3)}) < 2) continue;
    for (const std::int16_t method : {method_code::x_on_y, method_code::mle, method_code::y_on_x}) {
      FitResult fit = request(method);
      Fit_by_Mode(world.session.errors, world.prompts, data, fit);
      ASSERT_EQ(fit.Rows.bound(), 3);
      EXPECT_EQ(fit.ModelCode, model_code::by_failure_mode);
      EXPECT_EQ(fit.nRows, 1);
      for (int mode = 1; mode <= 3; ++mode) {
        const FitResult own = alone(world, data, mode, method);
        EXPECT_LT(relative_difference(fit.Rows(mode).Shape, own.Rows(1).Shape), 1e-5) << round;
        EXPECT_LT(relative_difference(fit.Rows(mode).Scale, own.Rows(1).Scale), 1e-5) << round;
        ++compared;
      }
      EXPECT_LT(relative_difference(fit.Quality, alone(world, data, 3, method).Quality), 1e-5);
    }
  }
  EXPECT_GT(compared, 500);
}

struct Case {
  const char* what;
  std::vector<test::Point> points;
  std::int16_t method;
  std::vector<std::pair<const char*, const char*>> boxes;  // behind the one that always comes
  int code_after;
  FitStatus status;
};

const char* const by_likelihood =
    "For the failure mode:  mode2\nThere is only one failure and right-tail suspensions.  A Rank "
    "Regression fit cannot be calculated.  MLE will be used\nFor this failure mode.";
const char* const not_at_all =
    "For the failure mode:  mode2\nThere is only one failure and no right-tail suspensions.  A Fit "
    "by Failure Mode cannot be calculated.";

const Case cases[] = {
    {"a single failure with later units goes by likelihood",
     {{10, 1, 0, 1}, {20, 1, 0, 2}, {30, 1, 0, 1}, {40, 1, 0, 1}},
     method_code::x_on_y,
     {{"Only One Failure for Mode", by_likelihood}},
     1216,
     FitStatus::calculated},
    {"asked for by likelihood it needs no box",
     {{10, 1, 0, 1}, {20, 1, 0, 2}, {30, 1, 0, 1}, {40, 1, 0, 1}},
     method_code::mle,
     {},
     1216,
     FitStatus::calculated},
    {"a single failure in the last row ends it, with the first mode fitted",
     {{10, 1, 0, 1}, {30, 1, 0, 1}, {40, 1, 0, 2}},
     method_code::y_on_x,
     {{"Insufficient Data", not_at_all}},
     98,
     FitStatus::calculated},
    {"three units in one row are one row",
     {{10, 1, 0, 1}, {30, 1, 0, 1}, {40, 3, 0, 2}},
     method_code::y_on_x,
     {{"Insufficient Data", not_at_all}},
     98,
     FitStatus::calculated},
    {"a mode that can't be fitted is no fit of the others",
     {{10, 1, 0, 2}, {20, 1, 0, 1}, {20, 1, 0, 1}, {30, 1, 0, 2}},
     method_code::x_on_y,
     {{"", "All times, or all ranks, are equal"}, {"", "Weibull 123Par Fit: "}},
     98,
     FitStatus::not_calculated},
    {"no mode at all is no fit",
     {{10}, {30}},
     method_code::x_on_y,
     {},
     1216,
     FitStatus::not_calculated},
};

TEST(FitByMode, ModesWithOneFailure) {
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TestWorld world;
    DataSet data = test::make_data(c.points);
    Make_Ranks(world.session.errors, true, data);
    world.prompts.expect_box("", always);
    for (const auto& [title, text] : c.boxes) world.prompts.expect_box(title, text);
    FitResult fit = request(c.method);
    Fit_by_Mode(world.session.errors, world.prompts, data, fit);
    world.prompts.verify();
    EXPECT_EQ(fit.ModelCode, c.code_after);
    EXPECT_EQ(fit.Status, c.status);
    EXPECT_EQ(fit.Method, c.method);
  }
}

// Its likelihood counts every unit, so one failure of a mode among the later
// failures of another has an answer of its own.
TEST(FitByMode, OneFailureByLikelihoodAgreesWithTheModeAlone) {
  TestWorld world;
  world.prompts.accept_all();
  DataSet data = test::make_data({{10, 1, 0, 1}, {20, 1, 0, 2}, {30, 1, 0, 1}, {40, 1, 0, 1}});
  Make_Ranks(world.session.errors, true, data);
  FitResult fit = request(method_code::x_on_y);
  Fit_by_Mode(world.session.errors, world.prompts, data, fit);
  const FitResult own = alone(world, data, 2, method_code::mle);
  EXPECT_LT(relative_difference(fit.Rows(2).Shape, own.Rows(1).Shape), 1e-9);
  EXPECT_LT(relative_difference(fit.Rows(2).Scale, own.Rows(1).Scale), 1e-9);
}

}  // namespace
}  // namespace tavlo
