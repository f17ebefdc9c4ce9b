#include "chart/parts/parameter_table.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

TEST(ParameterTable, SaysWhatIsNotDeterminedAndWhichRanksAFitHas) {
  test::ChartWorld here;
  here.show(test::ranked({{100}, {200}, {300}}));
  here.show(test::fit_of(model_code::weibull5c,
                         {{1 / 50.0, 0.25, 2, 0, 1}, {unreached_scale, 0.75, 1, 0, 3}}));
  const auto table_now = [&] {
    return parameter_table(here.session, plot_sets(here.session, here.chart()));
  };
  const auto cells = table_now().lines.back().cells;
  EXPECT_NE(std::find(cells.begin(), cells.end(), "not determined"), cells.end());
  FitResult fit =
      test::fit_of(model_code::by_failure_mode, {{1 / 100.0, 1, 2, 0, 1}, {1 / 900.0, 1, 3, 0, 1}});
  fit.modes = {{1, 0, 0.9, {}}, {2, 1, -7.5, {}}};
  fit.request.ranks = RankKind::exact;
  here.session.project.data(1).ModeNames.push_back("seal");
  here.show(fit);
  const ParameterTable table = table_now();
  ASSERT_EQ(table.lines.size(), 5u);
  EXPECT_EQ(table.lines[2].cells[0], "seal");
  EXPECT_EQ(table.lines[2].quality, "rr r^2= 0.9");
  EXPECT_EQ(table.lines[3].quality, "MLE Ln(L)= -7.5");
  EXPECT_EQ(table.lines[4].remark, "fit: exact, points: Benard ranks");
  ++here.session.project.data(1).read_revision;
  EXPECT_EQ(plot_sets(here.session, here.chart())[0].fit, nullptr) << "out of date: not shown";
}

}  // namespace
}  // namespace tavlo
