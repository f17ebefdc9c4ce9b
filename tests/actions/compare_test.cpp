#include "actions/compare.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "actions/fit_world.h"
#include "actions/intake.h"
#include "actions/log_table.h"
#include "actions/undo.h"
#include "support/case_list.h"
#include "support/shown_rich_text.h"

namespace tavlo {
namespace {

using Codes = std::vector<std::int16_t>;

/// Ball bearings: million revolutions to failure, and some still running after 60.
struct CompareWorld : test::FitWorld {
  explicit CompareWorld(double running = 0)
      : FitWorld({{17.88},
                  {28.92},
                  {33},
                  {41.52},
                  {42.12},
                  {45.6},
                  {48.48},
                  {51.84},
                  {54.12},
                  {60, 0, running},
                  {67.8},
                  {68.64},
                  {84.12},
                  {93.12},
                  {98.64},
                  {105.12},
                  {127.92},
                  {173.4}}) {
    prompts.accept_all();
    session.history.restart(session.project);
  }

  /// What the comparison adds to the log.
  std::string compared(std::int16_t method, const Codes& models) {
    const std::string before = log();
    Dist_Analysis(session, 1, method, models);
    return log().substr(before.size());
  }
};

TEST(Compare, TheWinnerIsTheSameHoweverManyDigitsAreShown) {
  std::set<std::string> last_lines;
  for (const std::int16_t digits : Codes{2, 6}) {
    CompareWorld world;
    world.session.settings.DigitsFit = digits;
    const std::string log = world.compared(method_code::x_on_y, {98, 857, 922});
    last_lines.insert(log.substr(log.find("has the highest PVE") - 10));
  }
  EXPECT_EQ(last_lines.size(), 1u);
}

TEST(Compare, LogsTheTableTheWinnerAndTheCriteria) {
  for (const auto& row : test::case_list("comparison_logs.txt")) {
    std::istringstream words(row[0]);
    double running = 0;
    std::int16_t method = 0;
    words >> running >> method;
    const Codes codes{std::istream_iterator<std::int16_t>(words), {}};
    CompareWorld world(running);
    world.panel().censored = row[0].ends_with("c");
    EXPECT_EQ(world.compared(method, codes), row[1]) << row[0];
  }
}

TEST(Compare, IsOneStepAndHoldsEachFitOnce) {
  CompareWorld world;
  const Project before = world.session.project;
  world.prompts.expect_line("", "2.5");  // of the Weibayes, and never again; 5X has no routine
  for (int i = 0; i < 2; ++i) {
    world.compared(method_code::x_on_y, Codes{802, 738, 418});
    ASSERT_EQ(world.fits().nFits, 2);
    EXPECT_EQ(world.record(1).request.slope, 2.5);
    EXPECT_EQ(world.record(2).request.slope, 2.0);
  }
  announce(world.session);
  end_step(world.session);
  ASSERT_TRUE(undo(world.session));
  EXPECT_EQ(world.session.project.fits, before.fits);
  EXPECT_EQ(world.session.project.log, before.log);
  EXPECT_FALSE(undo(world.session));
  world.progress.stop = true;
  EXPECT_EQ(world.compared(0, Codes{98, 857}),
            "\nDistribution Analysis for: Data1\nStopped before all models were fitted.\n"
            "No model was fitted.\n\n");
  for (const int index : {-1, 0, 2}) Dist_Analysis(world.session, index, 0, Codes{98});
  world.panel().busy = true;
  EXPECT_EQ(world.compared(0, Codes{98}), "") << "without a set, and while its panel is busy";
}

TEST(Compare, OldFitsAndThoseWithoutRowsAreNotJudged) {
  CompareWorld world;
  const std::string title = "C:\\new {x} \\par \xC3\xA9\xF0\x9F\x98\x80 }";
  world.data().Title = title;
  const std::string text = world.compared(method_code::x_on_y, Codes{98});
  EXPECT_NE(text.find("Distribution Analysis for: " + title + "\n"), std::string::npos) << text;
  FitResult empty = world.record(1);
  empty.nRows = 0;
  world.session.project.fits(1).Fits.push_back(empty);
  world.session.project.fits(1).nFits = 2;
  world.put({{10}, {20}, {50}});
  Dist_Summary(world.session, 1, false);
  EXPECT_EQ(world.log().find('%', world.log().rfind("PVE")), std::string::npos) << world.log();
}

TEST(Compare, TablesAreNoWiderThanPaper) {
  CompareWorld world;
  std::string words;
  for (int i = 0; i < 99; ++i) words += "word ";
  log_table(world.session, {{"#", words, "Model"}, {"1", "x", std::string(999, 'w')}});
  const std::string table = test::shown(world.session.project.log);
  EXPECT_NE(table.find(",10914: "), std::string::npos) << table;
}

TEST(Compare, EachNewFitOfThePanelIsSetBesideTheOthers) {
  CompareWorld world;
  world.panel().nModel = 98;
  world.panel().nMethod = 0;
  for (int i = 0; i < 2; ++i) {
    CheckAndFit(world.session, 1);
    EXPECT_NE(world.log().find("PVE\n1\t0.966072\tW/rr\t"), std::string::npos) << world.log();
    EXPECT_EQ(world.log().find("PVE"), world.log().rfind("PVE")) << "a fit that stands is not new";
  }
}

TEST(Compare, SignificanceKeepsItsNinesAndOneDigitMore) {
  using Case = std::pair<double, const char*>;
  for (const auto& [chance, text] :
       {Case{0.75312, "75.3"}, Case{0.999973, "99.997"}, Case{0.995, "99.5"}, Case{0.95, "95"},
        Case{1, "100"}, Case{0.999999999999999, "99.9999999999999"}, Case{0.5000001, "50.0"}})
    EXPECT_EQ(significance_text(chance), text);
}

}  // namespace
}  // namespace tavlo
