#include "project/ranking.h"

#include <gtest/gtest.h>

#include <cmath>

#include "project/fit_records.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

TEST(MakeRanks, TheKindIsKeptAndRanksOfTheirOwnAreLeftAlone) {
  test::TestWorld world;
  DataSet data = test::make_data({{10}, {20}, {30}});
  Make_Ranks(world.session.errors, true, data);
  Make_Ranks(world.session.errors, false, data);
  EXPECT_EQ(data.ranks, RankKind::exact);
  EXPECT_EQ(data.Points(0).Order, rank_state::without_benard);
  EXPECT_NEAR(static_cast<double>(data.Points(1).Y), 1 - std::pow(0.5, 1.0 / 3), 1e-7);
  data.Points(0).Order |= 1;
  data.Points(2).Y = 0.25F;
  Make_Ranks(world.session.errors, true, data);
  EXPECT_EQ(data.Points(2).Y, 0.25F);
  EXPECT_EQ(sample_of(data, RankKind::benard).rank[1], 0.25F) << "a fit takes them too";
}

TEST(MakeRanks, ARowThatCanNotBeRankedIsNamed) {
  test::TestWorld world;
  DataSet data = test::make_data({{10}, {20}});
  data.Points(2).Susps = -2;
  world.prompts.expect_box("Error: 5", "Median Rank Error: \nRow 2: -2 is no number of units.");
  Make_Ranks(world.session.errors, true, data);
  data.Points(2).Susps = 0;
  data.Points(1).X = 0;
  world.prompts.expect_box("Error: 5", "Median Rank Error: \nRow 1: Data X is 0, and a time");
  Make_Ranks(world.session.errors, true, data);
  EXPECT_GT(data.Points(2).Y, 0.0F) << "the ranks are made all the same";
}

}  // namespace
}  // namespace tavlo
