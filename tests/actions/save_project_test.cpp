#include "actions/save_project.h"

#include <gtest/gtest.h>

#include "actions/fit_world.h"
#include "actions/recovery.h"
#include "actions/undo.h"
#include "files/project_file.h"

namespace tavlo {
namespace {

constexpr const char* path = "/data/pumps.tavlo";
constexpr const char* former = "/data/pumps.tavlo~";

/// A project with a fit that is not saved, a copy of it, and two older files of its name.
struct SaveWorld : test::FitWorld {
  SaveWorld() : FitWorld(test::infant_and_wear_out()) {
    fit();
    prompts.accept_all();
    files.files = {{path, "old"}, {former, "older"}};
    begin_recovery(session, "/recovery");
    keep_copy(session, CopyReason::current);
    finish_copies(session, true);
  }

  /// The file holds the project as it is.
  bool is_saved() {
    ProjectBytes bytes;
    Project read;
    return !write_project(session.project, bytes) && bytes.bytes == files.files.at(path) &&
           !read_project(bytes.bytes, read) && !is_unsaved(session);
  }
};

// One box, the old file whole, the project as it was, and the next save is a save.
TEST(SaveProject, AnyFileOperationMayFail) {
  int failed = 0;
  for (int n = 1; n < 30; ++n) {
    SaveWorld world;
    const Project before = world.session.project;
    const std::size_t boxes = world.prompts.shown().size();
    world.files.fail_at(n);
    if (save_project_as(world.session, path)) {
      EXPECT_TRUE(world.is_saved()) << n;
    } else {
      ++failed;
      EXPECT_EQ(world.prompts.shown().size(), boxes + 1) << n;
      EXPECT_EQ(world.files.files.at(path), "old") << n;
      EXPECT_EQ(world.files.files.at(former), "older") << n;
      EXPECT_TRUE(world.session.project == before && is_unsaved(world.session)) << n;
      EXPECT_TRUE(save_project_as(world.session, path) && world.is_saved()) << n;
    }
    EXPECT_EQ(world.files.files.at(former), "old") << n;
  }
  EXPECT_EQ(failed, 1);  // the one that replaces the file and keeps it
}

// A file says of each set of which kind its ranks are: a line through others is out of date there.
TEST(SaveProject, AFileHoldsNoFitOfTheOtherKindOfRanks) {
  SaveWorld world;
  FitResult& fit = world.session.project.fits(1).Fits(1);
  for (const RankKind kind : {RankKind::exact, RankKind::benard}) {
    fit.request.ranks = kind;
    ProjectBytes bytes;
    Project read;
    ASSERT_FALSE(write_project(world.session.project, bytes));
    ASSERT_FALSE(read_project(bytes.bytes, read));
    EXPECT_EQ(read.fits(1).Fits(1).Status == FitStatus::calculated,
              kind == world.session.project.data(1).reading.ranks());
  }
}

// Whatever the project's own file is called, it is saved there as a project.
TEST(SaveProject, AProjectKeepsTheNameOfItsFile) {
  SaveWorld world;
  ASSERT_TRUE(save_project_as(world.session, "/data/pumps.txt"));
  world.prompts.expect_file("Save Project", "/data/pumps.txt");
  ASSERT_TRUE(save_project(world.session, 1));
  Project read;
  EXPECT_FALSE(read_project(world.files.files.at("/data/pumps.txt"), read));
}

}  // namespace
}  // namespace tavlo
