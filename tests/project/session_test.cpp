#include "project/session.h"

#include <gtest/gtest.h>

#include "support/test_world.h"

namespace tavlo {
namespace {

TEST(UniqueIds, DifferWhateverTheClockSays) {
  test::TestClock clock;
  UniqueIds ids;
  const std::int32_t first = ids.fl_NewUniqueId(clock);
  EXPECT_EQ(first, 6533 * 57600 + 33806) << "steps of one and a half seconds since 2009";
  clock.advance(-7200.0);
  EXPECT_EQ(ids.fl_NewUniqueId(clock), first + 1);
}

TEST(Session, ANewPairOfSetsIsLinkedToTheLastChart) {
  test::TestWorld world;
  Session& session = world.session;
  EXPECT_EQ(New_frm_Data(session), 2);
  EXPECT_EQ(New_frm_Fit(session), 2);
  EXPECT_EQ(session.project.data(2).Title, "Data2");
  EXPECT_EQ(session.project.fits(2).DataIds(1), session.project.data(2).UniqueId);
  EXPECT_EQ(session.project.charts(1).Markers(2).DataId, session.project.data(2).UniqueId);

  reset_project(session);
  EXPECT_EQ(session.project.data.bound(), 1);
  EXPECT_EQ(session.project.charts(1).Markers(2).DataId, 0);
}

TEST(Session, NewChartsHaveTheTypeThatWasChosenLast) {
  test::TestWorld world;
  Session& session = world.session;
  session.settings.ChartType = "Report";
  EXPECT_EQ(New_frm_Chart(session), 2);
  EXPECT_EQ(session.project.charts(1).Profile, "Standard");
  EXPECT_EQ(session.project.charts(2).Profile, "Report");
  EXPECT_EQ(session.project.charts(2).Markers(1).DataId, session.project.data(1).UniqueId);
  reset_project(session);
  EXPECT_EQ(session.project.charts(1).Profile, "Report");
}

}  // namespace
}  // namespace tavlo
