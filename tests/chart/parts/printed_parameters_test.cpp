#include "chart/parts/printed_parameters.h"

#include <gtest/gtest.h>

#include <cmath>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

constexpr std::int16_t rr = method_code::x_on_y, mle = method_code::mle;

/// The lines that are now shown: words, or the shown cells.
std::string written(test::ChartWorld& here) {
  const ParameterTable table =
      printed_parameters(here.session, plot_sets(here.session, here.chart()));
  std::string all;
  for (const TableLine& line : table.lines) {
    const std::string words = line.title + line.heading + line.remark;
    for (std::size_t i = 0; words.empty() && i < table_column::count; ++i)
      if (table.shown[i]) all += "|" + line.cells[i];
    all += words + line.quality + "\n";
  }
  return all;
}

TEST(PrintedParameters, AreWhatPeoplePrint) {
  const struct {
    int model;
    std::int16_t method;
    double quality;
    std::vector<FitParam> rows;
    const char* written;
  } cases[] = {
      {98, rr, 0.98512, {{1 / 606.5038, 1, 1.7204, 0, 1}}, "η = 606.5\nβ = 1.72\nr² = 0.9851\n"},
      {162,
       rr,
       0.99999712,
       {{1 / 1195.1234, 1, 0.7459, 1190, 1}},
       "η = 1195.1\nβ = 0.746\nt0 = 1190\nr² = 0.999997\n"},
      {802,
       mle,
       -75.13402,
       {{1 / 100.0, 1, 2.5, 0, 1}},
       "η = 100\nβ = 2.5 (given)\nln L = -75.13\n"},
      {922, rr, 0.9, {{50, 1, 1 / std::log(2), 0, 1}}, "median = 50\nσ factor = 2\nr² = 0.9\n"},
      {98, rr, 1, {{1 / 254512345.0, 1, 0.245, 0, 1}}, "η = 2.545E+8\nβ = 0.245\nr² = 1\n"},
      // What lies within so little is told from its neighbours.
      {98, rr, 1, {{1 / 100001.4, 1, 96900, 0, 1}}, "η = 100001.4\nβ = 96900\nr² = 1\n"},
      {857, rr, 1, {{100001.4321, 1, 1 / 1.22, 0, 1}}, "μ = 100001.4\nσ = 1.22\nr² = 1\n"},
      {1057, rr, 1, {{1 / 100001.4321, 1, 1.22, 0, 1}}, "ξ = 100001.4\nδ = 1.22\nr² = 1\n"},
      // The share is that of the units on which the risk acts, not of a population.
      {482,
       rr,
       0.9985,
       {{1 / 48.286, 0.15976, 2.319, 0, 1},
        {1 / 1349.86, 0.84024, 3.443, 0, 3},
        {1 / 10783.4, 0, 0.651, 0, 3}},
       "|share|η|β\n|16 %|48.29|2.32\n|all|1350|3.44\n|all|10780|0.651\nr² = 0.9985\n"},
      {290,
       mle,
       -9,
       {{1 / 1411.5, 1, 10.63, 0, 1}, {1 / 1569.9, 0, 0.713, 0, 1}},
       "|η|β\n|1412|10.6\n|1570|0.713\nln L = -9\n"},
      {354,
       rr,
       0.5,
       {{1 / 50.0, 0.0004, 2, 0, 1}, {unreached_scale, 0.9996, 1, 0, 3}},
       "|share|η|β\n|0.04 %|50|2\n|all|not determined|not determined\nr² = 0.5\n"},
  };
  test::ChartWorld here;
  here.show_published();
  for (const auto& row : cases) {
    FitResult fit = test::fit_of(row.model, row.rows);
    fit.Method = row.method;
    fit.Quality = row.quality;
    here.show(fit);
    EXPECT_EQ(written(here), row.written);
  }
}

TEST(PrintedParameters, SeveralFitsHaveNamesAndSoDoModes) {
  test::SetsWorld here(3);
  EXPECT_EQ(written(here),
            "2-parameter Weibull, regression\n||η|β\n|Rig 1|100|2r² = 0\n|Rig 2|200|2r² = 0\n"
            "|Rig 3|300|2r² = 0\n");
  here.session.project.fits(2).Fits(1).Method = mle;
  EXPECT_EQ(written(here),
            "2-parameter Weibull, regression\n||η|β\n|Rig 1|100|2r² = 0\n|Rig 3|300|2r² = 0\n"
            "Rig 2: 2-parameter Weibull, maximum likelihood\nη = 200, β = 2, ln L = 0\n");
  FitResult modes =
      test::fit_of(model_code::by_failure_mode, {{1 / 100.0, 1, 2, 0, 1}, {1 / 900.0, 1, 3, 0, 1}});
  modes.modes = {{1, rr, 0.9, {}}, {2, mle, -7.5, {}}};
  here.session.project.data(1).ModeNames.push_back("seal");
  here.session.project.fits(1).Fits(1) = modes;
  EXPECT_NE(written(here).find("|seal|100|2r² = 0.9\n"), std::string::npos) << written(here);
  const auto all = printed_parameters(here.session, plot_sets(here.session, here.chart())).lines;
  for (std::size_t most = 1; most < all.size(); ++most) {
    std::vector<TableLine> lines = all;
    limit_lines(lines, most);
    ASSERT_LE(lines.size(), most);
    const TableLine& last = lines.size() > 1 ? lines[lines.size() - 2] : lines.back();
    EXPECT_FALSE(last.names_columns || last.remark.ends_with("Weibull, regression")) << most;
    EXPECT_FALSE(last.remark.ends_with("likelihood")) << "a name without its values, " << most;
  }
}

}  // namespace
}  // namespace tavlo
