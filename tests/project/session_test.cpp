#include "project/session.h"

#include <gtest/gtest.h>

#include "support/test_world.h"

namespace tavlo {
namespace {

TEST(UniqueIds, CountStepsOfOneAndAHalfSecondsSince2009) {
  test::TestClock clock;
  UniqueIds ids;
  // 46347 - 39814 days of 57600 steps, and 14:05:09 of the next one.
  const std::int32_t expected = 6533 * 57600 + 33806;
  EXPECT_EQ(ids.fl_NewUniqueId(clock), expected);
  EXPECT_EQ(ids.fl_NewUniqueId(clock), expected + 1) << "two within one step still differ";
  clock.advance(3.0);
  EXPECT_EQ(ids.fl_NewUniqueId(clock), expected + 2);
  clock.advance(-7200.0);
  EXPECT_EQ(ids.fl_NewUniqueId(clock), expected + 3) << "a clock set back changes nothing";
}

TEST(Session, ANewPairOfSetsIsLinkedToTheLastChart) {
  test::TestWorld world;
  Session& session = world.session;
  EXPECT_EQ(New_frm_Data(session), 2);
  EXPECT_EQ(New_frm_Fit(session), 2);
  EXPECT_EQ(session.gData(2).Title, "Data2");
  EXPECT_EQ(session.gFit(2).DataIds(1), session.gData(2).UniqueId);
  EXPECT_EQ(session.gChart(1).Markers(2).DataId, session.gData(2).UniqueId);

  reset_project(session);
  EXPECT_EQ(session.nData, 1);
  EXPECT_EQ(session.gDataForm.bound(), 1);
  EXPECT_EQ(session.gChart(1).Markers(2).DataId, 0);
}

}  // namespace
}  // namespace tavlo
