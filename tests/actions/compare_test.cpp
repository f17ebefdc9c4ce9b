#include "actions/compare.h"

#include <gtest/gtest.h>

#include "actions/fit_world.h"
#include "actions/undo.h"
#include "numerics/number_text.h"

namespace tavlo {
namespace {

using test::FitWorld;
using Codes = std::vector<std::int16_t>;

/// Ball bearings: million revolutions to failure.
const std::vector<test::Point> bearings = {{17.88},  {28.92},  {33},     {41.52}, {42.12}, {45.6},
                                           {48.48},  {51.84},  {51.96},  {54.12}, {55.56}, {67.8},
                                           {68.64},  {68.88},  {84.12},  {93.12}, {98.64}, {105.12},
                                           {105.84}, {127.92}, {128.04}, {173.4}};

struct CompareWorld : FitWorld {
  explicit CompareWorld(const std::vector<test::Point>& points = bearings) : FitWorld(points) {
    prompts.accept_all();
    session.history.restart(session.project);
  }

  /// What the comparison adds to the log.
  std::string compared(std::int16_t method, const Codes& models) {
    const std::string before = log();
    Dist_Analysis(session, 1, method, models);
    announce(session);
    return log().substr(before.size());
  }
};

TEST(Compare, RegressionsStandInATableWithTheirCriticalValues) {
  CompareWorld world;
  const std::string text = world.compared(method_code::x_on_y, Codes{857, 922, 98, 354, 674});
  SCOPED_TRACE(text);
  EXPECT_NE(text.find("\nDistribution Analysis for: Data1\n"), std::string::npos);
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);)
    if (line.find('\t') != std::string::npos) lines.push_back(line);
  ASSERT_EQ(lines.size(), 7u) << "heading, five fits, one of them with two rows";
  EXPECT_NE(lines[0].find("Min Life\tccc^2\tPVE"), std::string::npos);
  for (std::size_t i = 1; i < lines.size(); ++i) {
    const bool has_cells = lines[i].find('%') != std::string::npos;
    EXPECT_EQ(has_cells, lines[i].find("W5C") == std::string::npos && lines[i][0] != '\t' &&
                             lines[i].find("E/rr") == std::string::npos)
        << lines[i];
  }
  EXPECT_EQ(text.find("optimum"), std::string::npos);
  EXPECT_EQ(text.find("criteria"), std::string::npos);
}

TEST(Compare, LikelihoodsAreTestedAgainstTheBaseAndTheWinnerIsNamed) {
  CompareWorld world;
  const Project before = world.session.project;
  const std::string text = world.compared(method_code::mle, Codes{162, 290, 674});
  SCOPED_TRACE(text);
  EXPECT_EQ(world.record(1).ModelCode, model_code::weibull2) << "nobody leaves the base out";
  for (const char* words :
       {"\tLR Test\n", "\tBase\n", "\t  ? \n", "W3T/MLE is the optimum:       8",
        "% Significance \nFor Likelihood Ratio test, find the row with the highest percentage in "
        "the \n'LR Test' column.  Two Parameter Weibull MLE is the base.  If the number \nis <50% "
        "then the base (W 2P) is better fit. \n\n",
        "Other criteria: the smaller the better.\n", "Model\tAIC\tBIC\nW/MLE\t2", "\nE/MLE\t2"})
    EXPECT_NE(text.find(words), std::string::npos) << words;
  EXPECT_EQ(text.find("no test"), std::string::npos);
  EXPECT_EQ(world.fits().nFits, 4);
  world.compared(method_code::mle, Codes{162});
  EXPECT_EQ(world.fits().nFits, 4) << "each fit once";
  end_step(world.session);
  ASSERT_TRUE(undo(world.session));
  EXPECT_EQ(world.session.project.fits, before.fits);
  EXPECT_EQ(world.session.project.log, before.log);
  EXPECT_FALSE(undo(world.session)) << "one step";
}

TEST(Compare, ALikelihoodThatLeavesSuspensionsOutHasNoTest) {
  auto points = test::infant_and_wear_out();
  for (int i = 0; i < 25; ++i) points.push_back({300.0 + 40 * i, 0, 1});
  CompareWorld world(points);
  const std::string base_wins =
      "\nTwo Parameter Weibull is the best choice from Likelihood Ratio Test\nFor ";
  const std::string without = world.compared(method_code::mle, Codes{354, 290});
  EXPECT_NE(without.find("\nW5C/MLE, W4P/MLE: no test, as the suspensions are left out of the "
                         "likelihood, which the base takes in.  With the choice Censored there is "
                         "one." +
                         base_wins),
            std::string::npos)
      << without;
  EXPECT_EQ(without.find("%\n"), std::string::npos) << without;
  EXPECT_NE(without.find("Model\tAIC\tBIC\nW/MLE"), std::string::npos);
  EXPECT_EQ(without.find("BIC\nW/MLE\t", without.find("\nW5C/MLE\t")), std::string::npos);
  world.panel().censored = true;
  const std::string with = world.compared(method_code::mle, Codes{354});
  EXPECT_NE(with.find("W5C/MLEc is the optimum:"), std::string::npos) << with;
  EXPECT_EQ(with.find(base_wins), std::string::npos);
}

TEST(Compare, OldAndForeignFitsAreShownAndNotJudged) {
  CompareWorld world;
  world.compared(method_code::x_on_y, Codes{98});
  FitResult foreign = world.record(1);
  foreign.ModelCode = 986;
  foreign.nRows = 0;
  world.session.project.fits(1).Fits.push_back(foreign);
  world.session.project.fits(1).nFits = 2;
  world.put({{10}, {20}, {50}});
  Dist_Summary(world.session, 1, false);
  const std::string log = world.log();
  EXPECT_NE(log.find("W/rr (out of date)", log.find("PVE", log.find("PVE") + 1)),
            std::string::npos);
  EXPECT_EQ(log.find('%', log.find("out of date")), std::string::npos) << log;
}

TEST(Compare, AWeibayesAsksForItsSlopeOnceAndMissingRoutinesAreTold) {
  CompareWorld world;
  world.prompts.expect_line("", "2.5");
  world.compared(method_code::x_on_y, Codes{802, 738, 418});
  EXPECT_EQ(world.fits().nFits, 2);
  EXPECT_EQ(world.record(1).request.slope, 2.5);
  EXPECT_EQ(world.record(2).request.slope, 2.0);
  world.compared(method_code::x_on_y, Codes{802, 738});
  EXPECT_EQ(world.fits().nFits, 2);
}

TEST(Compare, HostileTitlesStandAsTheyAre) {
  CompareWorld world;
  const std::string title = "C:\\new {x} \\par \xC3\xA9\xF0\x9F\x98\x80 }";
  world.data().Title = title;
  const std::string text = world.compared(method_code::x_on_y, Codes{98});
  EXPECT_NE(text.find("Distribution Analysis for: " + title + "\n"), std::string::npos) << text;
  const RichText& log = world.session.project.log;
  EXPECT_EQ(RichText::from_rtf(log.rtf()).plain(), log.plain());
}

TEST(Compare, NothingHappensWithoutASetOrWhileItsPanelIsBusy) {
  CompareWorld world;
  const Project before = world.session.project;
  for (const int index : {-1, 0, 2}) Dist_Analysis(world.session, index, 0, Codes{98});
  world.panel().busy = true;
  Dist_Analysis(world.session, 1, 0, Codes{98});
  EXPECT_EQ(world.session.project, before);
}

TEST(Compare, SignificanceKeepsItsNinesAndOneDigitMore) {
  for (const auto& [chance, text] :
       std::vector<std::pair<double, const char*>>{{0.75312, "75.3"},
                                                   {0.999973, "99.997"},
                                                   {0.995, "99.5"},
                                                   {0.95, "95"},
                                                   {1, "100"},
                                                   {0.999999999999999, "99.9999999999999"},
                                                   {0.5000001, "50.0"}})
    EXPECT_EQ(significance_text(chance), text);
}

}  // namespace
}  // namespace tavlo
