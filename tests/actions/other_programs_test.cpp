// Programs beside this one: the first that is there is started, and the person hears of none.
#include "actions/other_programs.h"

#include <gtest/gtest.h>

#include "actions/fit_world.h"

namespace tavlo {
namespace {

using test::FitWorld;

TEST(OtherPrograms, SaysWhereThereIsNone) {
  FitWorld world({{100}, {200}, {300}});
  start_calculator(world.session);
  EXPECT_EQ(world.views.count("status Calculator not found"), 1);
  world.prompts.expect_box("Bad File Name", "File: quellw.exe cannot be found.");
  start_sibling(world.session, "quellw.exe");
  world.prompts.verify();
}

}  // namespace
}  // namespace tavlo
