#include "actions/reports.h"

#include <gtest/gtest.h>

#include "project/ranking.h"
#include "support/case_list.h"
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
  for (const auto& row : test::case_list("logged_fits.txt")) {
    const auto number = [&](std::size_t i) { return static_cast<std::int16_t>(std::stoi(row[i])); };
    FitResult fit = fit_of(number(0), number(1), test::fit_rows(row[2]));
    EXPECT_EQ(logged(fit), row[3]);
    fit.nRows += 3;
    EXPECT_EQ(logged(fit), row[3]) << "a record that claims more";
  }
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
