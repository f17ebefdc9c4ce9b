#include "files/sync_data.h"

#include <gtest/gtest.h>

#include "support/sheet_world.h"

namespace tavlo {
namespace {

using test::SheetWorld;
using test::TestWorld;

TEST(SyncData, ARankShownRoundedDoesNotReplaceTheRank) {
  SheetWorld world({"100", "200", "300"});
  Sync_Data(world.session, 1, true, true);
  const float rank = world.data().Points(1).Y;
  world.data().Points(0).Order |= 1;  // ranks of its own: ranking leaves them alone
  Sync_Data(world.session, 1, true, false);
  EXPECT_EQ(world.data().Points(1).Y, rank);
  world.sheet().enter(1, sheet_column::y, "0.25");
  Sync_Data(world.session, 1, true, false);
  EXPECT_EQ(world.data().Points(1).Y, 0.25f);
}

TEST(SyncData, ACorrectedNameLeavesNoGhostAndMakesFitsOutOfDate) {
  SheetWorld world({"100", "200", "300"});
  const char* const names[] = {"bearng", "seal", "bearng"};
  for (int r = 1; r <= 3; ++r) world.sheet().enter(r, sheet_column::mode, names[r - 1]);
  Sync_Data(world.session, 1, true, false);
  const auto revision = world.data().revision;
  for (const int r : {1, 3}) world.sheet().enter(r, sheet_column::mode, "bearing");
  Sync_Data(world.session, 1, true, false);
  EXPECT_GT(world.data().revision, revision);
  ASSERT_EQ(world.data().nModes, 2);
  EXPECT_EQ(world.data().ModeNames(1), "seal") << "a known name keeps its place";
  EXPECT_EQ(world.data().ModeNames(2), "bearing");
  EXPECT_EQ(world.data().Points(3).Mode, 2);
}

TEST(SyncData, ASetOutsideTheProjectGetsItsBox) {
  TestWorld world;
  world.prompts.expect_box(
      "Sync_Data: Array out of range.",
      "ID number out of bounds while updating Data.  Data file may be missing");
  Sync_Data(world.session, 2, true, true);
}

}  // namespace
}  // namespace tavlo
