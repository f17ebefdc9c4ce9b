#include "chart/parts/printed_parameters.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"
#include "numerics/number_text.h"
#include "support/case_list.h"

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
  test::ChartWorld here;
  here.show_published();
  for (const auto& row : test::case_list("printed_parameters.txt")) {
    FitResult fit = test::fit_of(std::stoi(row[0]), test::fit_rows(row[3]));
    fit.Method = row[1] == "mle" ? mle : rr;
    fit.Quality = *parse_number(row[2]);
    here.show(fit);
    EXPECT_EQ(written(here), row[4]);
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
