#include "files/sync_data.h"

#include <gtest/gtest.h>

#include "files/intake.h"
#include "files/sheet_world.h"

namespace tavlo {
namespace {

using test::SheetWorld;
using test::TestWorld;

TEST(SyncData, ARankShownRoundedDoesNotReplaceTheRank) {
  SheetWorld world({"100", "200", "300"});
  bool clean = true;
  CheckDirtyData(world.session, 1, clean, true);
  const float rank = world.data().Points(1).Y;
  world.data().Points(0).Order |= 1;  // ranks of its own: ranking leaves them alone
  Sync_Data(world.session, 1, true, false);
  EXPECT_EQ(world.data().Points(1).Y, rank);
  world.sheet().enter(1, sheet_column::y, "0.25");
  Sync_Data(world.session, 1, true, false);
  EXPECT_EQ(world.data().Points(1).Y, 0.25f);
}

TEST(SyncData, FailureModesGetTheirNumbersByName) {
  SheetWorld world({"100", "200", "300"});
  world.sheet().enter(1, sheet_column::mode, "worn");
  world.sheet().enter(3, sheet_column::mode, "broken");
  world.sheet().enter(2, sheet_column::mode, "worn");
  world.sheet().enter(2, sheet_column::comment, " lot 7 ");
  Sync_Data(world.session, 1, true, false);
  EXPECT_EQ(world.data().nModes, 2);
  EXPECT_EQ(world.data().Points(2).Mode, 1);
  EXPECT_EQ(world.data().ModeNames(world.data().Points(3).Mode), "broken");
  EXPECT_EQ(world.data().Points(2).Comment, "lot 7");
}

}  // namespace
}  // namespace tavlo
