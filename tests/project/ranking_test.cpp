#include "project/ranking.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/test_world.h"

namespace tavlo {
namespace {

TEST(MakeRanks, TheKindIsKeptAndRanksOfTheirOwnAreLeftAlone) {
  test::TestWorld world;
  DataSet data = test::make_data({{10}, {20}, {30}});
  Make_Ranks(world.session.errors, true, data);
  Make_Ranks(world.session.errors, false, data);
  EXPECT_EQ(data.reading.ranks(), RankKind::exact);
  EXPECT_NEAR(static_cast<double>(data.sample().rank[0]), 1 - std::pow(0.5, 1.0 / 3), 1e-7);
  EXPECT_EQ(data.reading.rank_of(0), data.sample().rank[0]);
  data.own_ranks = true;
  data.rows.edit(1).rank = 0.25F;
  Make_Ranks(world.session.errors, true, data);
  EXPECT_EQ(data.sample().rank[1], 0.25F);
  EXPECT_EQ(data.reading.sample_with(RankKind::exact).rank[1], 0.25F) << "a fit takes them too";
}

TEST(MakeRanks, ARowThatCanNotBeRankedIsNamed) {
  test::TestWorld world;
  DataSet data = test::make_data({{10}, {20}});
  data.rows.edit(1).suspensions = -2;
  world.prompts.expect_box("Error: 5", "Median Rank Error: \nRow 2: -2 is no number of units.");
  Make_Ranks(world.session.errors, true, data);
  data.rows.edit(1).suspensions = 0;
  data.rows.edit(0).time = 0;
  world.prompts.expect_box("Error: 5", "Median Rank Error: \nRow 1: Data X is 0, and a time");
  Make_Ranks(world.session.errors, true, data);
  EXPECT_GT(data.reading.rank_of(1), 0.0F) << "the ranks are made all the same";
}

}  // namespace
}  // namespace tavlo
