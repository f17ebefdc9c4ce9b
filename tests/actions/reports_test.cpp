#include "actions/reports.h"

#include <gtest/gtest.h>

#include "project/ranking.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

using test::TestWorld;

FitResult fit_of(std::int16_t code, std::int16_t method, const std::vector<FitParam>& rows) {
  FitResult fit;
  fit.ModelCode = code;
  fit.Method = method;
  fit.Label = fs_ModelNames(code, method).short_name;
  fit.Quality = -0.87654321;
  fit.Status = FitStatus::calculated;
  fit.nRows = static_cast<int>(rows.size());
  for (const FitParam& row : rows) fit.Rows.push_back(row);
  return fit;
}

std::string logged(const FitResult& fit) {
  TestWorld world;
  Session& session = world.session;
  DataSet data = test::make_data({{1, 10, 2}});
  Make_Ranks(session.errors, true, data);
  session.project.data(1) = std::move(data);
  session.project.fits(1).Fits.push_back(fit);
  session.project.fits(1).nFits = 1;
  PostFitLog(session, 0, 1, 1);
  const std::string text = session.project.log.plain();
  const std::string head = "********** Tavlo Fit **********     02:05 pm\n";
  EXPECT_EQ(text.substr(0, head.size()), head);
  return text.substr(std::min(head.size(), text.size()));
}

TEST(PostFitLog, SaysEachFamilyInItsOwnWords) {
  struct Case {
    std::int16_t code, method;
    std::vector<FitParam> rows;
    std::string text;
  };
  const std::string units = "\tN= 12 /S= 2\n", likelihood = "Ln(L)= \t-0.8765432",
                    r_squared = "r^2= \t-0.8765432";
  const std::string mixed = "W5C/MLE" + units + likelihood +
                            "\nPopulations:\n\t1:   25.00000%\n\t2:   75.00000%\n"
                            "Applies to Pop: 1\n eta: \t100\tbeta: \t1\nApplies to Pop: 1,2\n";
  const FitParam weibull = {0.002, 1, 1.5, 0, 1}, later = {0.002, 1, 1.5, 7.25, 1},
                 line = {100, 1, 0.5, 0, 1}, gumbel = {0.01, 1, 20, 0, 1},
                 early = {0.01, 0.25, 1, 0, 1}, wear = {0.001, 0.75, 3, 0, 3},
                 unreached = {unreached_scale, 0.75, 1, 0, 3};
  const std::string eta_beta = " eta: \t500\tbeta: \t1.5\n";
  const Case cases[] = {
      {98, 1, {weibull}, "W/MLE" + units + likelihood + eta_beta + "\n"},
      {162, 0, {later}, "W3T/rr" + units + r_squared + eta_beta + "  t0: \t7.25\n\n"},
      {857, 0, {line}, "N/rr" + units + r_squared + " mu: \t100\tsigma: \t2\n\n"},
      {922, 2, {line}, "LN/rrs" + units + r_squared + " Med: \t100\tsigF: \t7.389056\n\n"},
      {1137, 0, {gumbel}, "G+/rr" + units + r_squared + " Xi: \t100\tDel: \t20\n\n"},
      {354, 1, {early, wear}, mixed + " eta: \t1000\tbeta: \t3\n\n"},
      {354, 1, {early, unreached}, mixed + " eta: \tnot determined\tbeta: \tnot determined\n\n"}};
  for (const Case& c : cases) EXPECT_EQ(logged(fit_of(c.code, c.method, c.rows)), c.text);
  FitResult claims_more = fit_of(98, 1, {weibull});
  claims_more.nRows = 3;
  EXPECT_EQ(logged(claims_more), cases[0].text);
  const FitResult risks = fit_of(290, 1, {{0.01, 1, 1, 0, 1}, {0.001, 0, 3, 0, 1}});
  EXPECT_EQ(logged(risks).find("Populations:"), std::string::npos) << "risks of one population";
}

TEST(LoadFit, HeadingsFollowTheMixOfFamilies) {
  TestWorld world;
  FitSet& fits = world.session.project.fits(1);
  fits.Fits.push_back(fit_of(922, 0, {{100, 1, 0.5, 0, 1}}));
  fits.Fits.push_back(fit_of(857, 1, {{100, 1, 0.5, 0, 1}}));
  fits.Fits.push_back(fit_of(98, 1, {{0.002, 0.4, 1.5, 3, 1}, {0, 0.6, 2, 0, 2}}));
  fits.nFits = 3;
  Load_Fit(world.session, 1);
  const Grid& grid = world.session.gFitForm(1)->grd_Fit;
  EXPECT_EQ(grid.rows(), 5);
  EXPECT_EQ(grid.text(0, fit_column::scale), "Med, mu, eta");
  EXPECT_EQ(grid.text(0, fit_column::shape), "sdF, sigma, beta");
  EXPECT_EQ(grid.text(1, fit_column::shape), "7.38906");
  EXPECT_EQ(grid.text(3, fit_column::fraction) + " " + grid.text(3, fit_column::min_life), "40 3");
  EXPECT_EQ(grid.text(4, fit_column::number), "") << "further rows of a fit repeat nothing";
  EXPECT_EQ(grid.text(4, fit_column::scale), "not determined") << "no reciprocal of 0";
}

}  // namespace
}  // namespace tavlo
