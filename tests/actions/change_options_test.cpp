// What a change of the options does to the session.
#include "actions/change_options.h"

#include <gtest/gtest.h>

#include "actions/fit_world.h"
#include "actions/intake.h"
#include "actions/new_project.h"
#include "actions/undo.h"

namespace tavlo {
namespace {

using test::FitWorld;

TEST(ChangeOptions, DigitsAreTheSizeOfTheNumberTypedAndFifteenAtMost) {
  const NumberPunctuation point{.DecimalPoint = '.'}, comma{.DecimalPoint = ','};
  for (const auto& [typed, digits] : {std::pair{"4", 4},
                                      {"-6", 6},
                                      {"40", 15},
                                      {"1e300", 15},
                                      {" 3 ", 3},
                                      {"2.5", 2},
                                      {"3.5", 4},
                                      {"abc", 0},
                                      {"", 0},
                                      {"nan", 0},
                                      {"1e999", 0}})
    EXPECT_EQ(digits_of(typed, point), digits) << typed;
  EXPECT_EQ(digits_of("7,6", comma), 8);
}

TEST(ChangeOptions, DigitsAreShownAtOnceAndChangeNothingElse) {
  FitWorld world({{100}, {200}, {300}});
  world.fit();
  const std::string shape = world.grid().text(1, fit_column::shape);
  const Project before = world.session.project;
  Settings chosen = world.session.settings;
  chosen.DigitsFit = 3;
  chosen.DigitsData = 2;
  change_options(world.session, chosen);
  EXPECT_EQ(world.panel().grd_Fit.text(1, fit_column::shape), shape.substr(0, 4));
  EXPECT_EQ(world.session.gDataForm(1)->text(1, sheet_column::y).size(), 4u);
  for (const char* told : {"sheet 1", "grid 1", "chart 1"}) EXPECT_GT(world.views.count(told), 0);
  EXPECT_EQ(world.session.project, before);
  for (const int digits : {0, 15}) {
    chosen.DigitsFit = chosen.DigitsData = chosen.DigitsParBox = chosen.DigitsLog = digits;
    change_options(world.session, chosen);
    world.fit(98);
  }
}

// Beside a suspension there is one kind of ranks.
TEST(ChangeOptions, AnotherKindOfRanksMakesOldWhatItChanges) {
  for (const double suspended : {0.0, 2.0}) {
    FitWorld world({{100}, {200}, {300, 1, suspended}});
    world.fit();
    mark_saved(world.session);
    Settings chosen = world.session.settings;
    chosen.Benard = false;
    change_options(world.session, chosen);
    EXPECT_EQ(is_unsaved(world.session), suspended == 0) << "a file keeps that fits are old";
    EXPECT_EQ(is_out_of_date(world.record(1), world.data()), suspended == 0);
    const double before = world.record(1).Quality;
    choose_standard_fit(world.panel());
    CheckAndFit(world.session, 1);
    EXPECT_FALSE(is_out_of_date(world.record(1), world.data()));
    EXPECT_EQ(world.record(1).Quality == before, suspended > 0);
    EXPECT_EQ(world.fits().nFits, 1);
  }
}

}  // namespace
}  // namespace tavlo
