#include "chart/parts/parameter_table.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

struct Shown {
  std::vector<std::string> cells;  // of the columns that are shown, line by line
  std::string heading;
  std::string quality;
};

Shown table_of(int code, int method, std::vector<FitParam> rows) {
  test::ChartWorld here;
  here.show(test::ranked(test::published_times()));
  FitResult fit = test::fit_of(code, std::move(rows));
  fit.Method = static_cast<std::int16_t>(method);
  fit.Quality = 0.987654321;
  here.show(fit);
  const ParameterTable table = parameter_table(here.session, plot_sets(here.session, here.chart()));
  Shown shown;
  for (const TableLine& line : table.lines) {
    shown.heading += line.heading;
    shown.quality += line.quality;
    for (std::size_t i = 0; line.heading.empty() && i < table_column::count; ++i)
      if (table.shown[i]) shown.cells.push_back(line.cells[i]);
  }
  return shown;
}

TEST(ParameterTable, ColumnsByModel) {
  using Cells = std::vector<std::string>;
  const Shown two = table_of(model_code::weibull2, 0, {{1 / 606.5, 1, 1.72, 0, 1}});
  EXPECT_EQ(two.cells, (Cells{"W2P/", "eta", "beta", "", "606.5", "1.72"}));
  EXPECT_EQ(two.heading, ":Data 1 N10 /S10");
  EXPECT_EQ(two.quality, "rr r^2= 0.98765");
  const Shown three = table_of(model_code::weibull3, 1, {{1 / 500.0, 1, 1.25, 50, 1}});
  EXPECT_EQ(three.cells, (Cells{"W3T/", "eta", "beta", "t0", "", "500", "1.25", "50"}));
  EXPECT_EQ(three.quality, "MLE Ln(L)= 0.98765");
  EXPECT_EQ(table_of(model_code::normal, 2, {{400, 1, 1 / 80.0, 0, 1}}).cells,
            (Cells{"N/", "mu", "sigma", "", "400", "80"}));
  EXPECT_EQ(
      table_of(model_code::weibull5x, 1, {{1 / 50.0, 0.25, 2, 0, 1}, {1 / 900.0, 0.75, 3, 0, 2}})
          .cells,
      (Cells{"W5X/", "Set", "Pop", "eta", "beta", "", "1", "0.25", "50", "2", "", "2", "0.75",
             "900", "3"}));
}

TEST(ParameterTable, SaysWhatIsNotDeterminedAndWhichRanksAFitHas) {
  const Shown half = table_of(model_code::weibull5c, 1,
                              {{1 / 50.0, 0.25, 2, 0, 1}, {unreached_scale, 0.75, 1, 0, 3}});
  EXPECT_EQ(half.cells.back(), "not determined");

  test::ChartWorld here;
  here.show(test::ranked({{100}, {200}, {300}}));
  FitResult fit =
      test::fit_of(model_code::by_failure_mode, {{1 / 100.0, 1, 2, 0, 1}, {1 / 900.0, 1, 3, 0, 1}});
  fit.modes = {{1, 0, 0.9, {}}, {2, 1, -7.5, {}}};
  fit.request.ranks = RankKind::exact;
  here.session.gData(1).ModeNames.push_back("seal");
  here.session.gData(1).nModes = 1;
  here.show(fit);
  const ParameterTable table = parameter_table(here.session, plot_sets(here.session, here.chart()));
  ASSERT_EQ(table.lines.size(), 5u);
  EXPECT_EQ(table.lines[2].cells[0], "seal");
  EXPECT_EQ(table.lines[2].quality, "rr r^2= 0.9");
  EXPECT_EQ(table.lines[3].quality, "MLE Ln(L)= -7.5");
  EXPECT_EQ(table.lines[4].remark, "fit: exact, points: Benard ranks");
  ++here.session.gData(1).revision;
  EXPECT_EQ(plot_sets(here.session, here.chart())[0].fit, nullptr) << "out of date: not shown";
}

}  // namespace
}  // namespace tavlo
