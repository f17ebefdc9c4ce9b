#include "chart/parts/printed_parameters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "chart/chart_world.h"
#include "chart/parts/plain_words.h"
#include "project/plot_rows.h"

namespace tavlo {
namespace {

using test::fit_of;

/// The lines of the table, each with its shown cells.
std::string written(const ParameterTable& table) {
  std::string all;
  for (const TableLine& line : table.lines) {
    std::string words = line.title + line.heading + line.remark;
    for (std::size_t i = 0; i < table_column::count; ++i)
      if (table.shown[i]) words += "|" + line.cells[i];
    all += words + line.quality + "\n";
  }
  return all;
}

/// Bars of empty cells behind words say nothing.
std::string bare(std::string text) {
  for (const char* bars : {"|||\n", "||\n"})
    for (std::size_t at; (at = text.find(bars)) != text.npos;)
      text.replace(at, std::strlen(bars), "\n");
  return text;
}

FitResult with_quality(FitResult fit, int method, double quality) {
  fit.Method = static_cast<std::int16_t>(method);
  fit.Quality = quality;
  return fit;
}

TEST(PrintedParameters, AreWhatPeoplePrint) {
  constexpr int rr = method_code::x_on_y;
  constexpr int mle = method_code::mle;
  struct Case {
    FitResult fit;
    std::string written;
  };
  const Case cases[] = {
      {with_quality(fit_of(98, {{1 / 606.5038, 1, 1.7204, 0, 1}}), rr, 0.98512),
       "η = 606.5\nβ = 1.72\nr² = 0.9851\n"},
      {with_quality(fit_of(98, {{1 / 606.5038, 1, 1.7204, 0, 1}}), mle, -75.13402),
       "η = 606.5\nβ = 1.72\nln L = -75.13\n"},
      {with_quality(fit_of(162, {{1 / 1195.0, 1, 0.7459, 3.1261, 1}}), rr, 0.99999712),
       "η = 1195\nβ = 0.746\nt0 = 3.126\nr² = 0.999997\n"},
      {with_quality(fit_of(802, {{1 / 100.0, 1, 2.5, 0, 1}}), mle, -7),
       "η = 100\nβ = 2.5 (given)\nln L = -7\n"},
      {with_quality(fit_of(857, {{50, 1, 1 / 4.0, 0, 1}}), rr, 1), "μ = 50\nσ = 4\nr² = 1\n"},
      {with_quality(fit_of(922, {{50, 1, 1 / std::log(2), 0, 1}}), rr, 0.9),
       "median = 50\nσ factor = 2\nr² = 0.9\n"},
      {with_quality(fit_of(1057, {{1 / 50.0, 1, 3, 0, 1}}), rr, 0.9), "ξ = 50\nδ = 3\nr² = 0.9\n"},
      {with_quality(fit_of(98, {{1 / 254512345.0, 1, 0.245, 0, 1}}), rr, 0.5),
       "η = 2.545E+8\nβ = 0.245\nr² = 0.5\n"},
      // What lies within so little is told from its neighbours.
      {with_quality(fit_of(98, {{1 / 100001.4, 1, 96900, 0, 1}}), rr, 0.5),
       "η = 100001.4\nβ = 96900\nr² = 0.5\n"},
      {with_quality(fit_of(857, {{100001, 1, 1 / 1.22, 0, 1}}), rr, 0.5),
       "μ = 100001\nσ = 1.22\nr² = 0.5\n"},
      // The share is that of the units on which the risk acts, not of a population.
      {with_quality(fit_of(482, {{1 / 48.286, 0.15976, 2.319, 0, 1},
                                 {1 / 1349.86, 0.84024, 3.443, 0, 3},
                                 {1 / 10783.4, 0, 0.651, 0, 3}}),
                    rr, 0.9985),
       "|share|η|β\n|16 %|48.29|2.32\n|all|1350|3.44\n|all|10780|0.651\nr² = 0.9985|||\n"},
      {with_quality(fit_of(290, {{1 / 1411.5, 1, 10.63, 0, 1}, {1 / 1569.9, 0, 0.713, 0, 1}}), mle,
                    -9),
       "|η|β\n|1412|10.6\n|1570|0.713\nln L = -9||\n"},
      {with_quality(fit_of(354, {{1 / 50.0, 0.0004, 2, 0, 1}, {unreached_scale, 0.9996, 1, 0, 3}}),
                    rr, 0.5),
       "|share|η|β\n|0.04 %|50|2\n|all|not determined|not determined\nr² = 0.5|||\n"},
  };
  for (const Case& row : cases) {
    test::ChartWorld here;
    here.show_published();
    here.show(row.fit);
    std::string found =
        written(printed_parameters(here.session, plot_sets(here.session, here.chart())));
    EXPECT_EQ(bare(found), bare(row.written));
  }
}

TEST(PrintedParameters, SeveralFitsHaveNamesAndSoDoModes) {
  test::SetsWorld here(3);
  const auto now = [&] {
    return bare(written(printed_parameters(here.session, plot_sets(here.session, here.chart()))));
  };
  EXPECT_EQ(now(),
            "2-parameter Weibull, regression\n||η|β\n|Rig 1|100|2r² = 0\n|Rig 2|200|2r² = 0\n"
            "|Rig 3|300|2r² = 0\n");
  here.session.project.fits(2).Fits(1).Method = method_code::mle;
  EXPECT_EQ(now(),
            "2-parameter Weibull, regression\n||η|β\n|Rig 1|100|2r² = 0\n|Rig 3|300|2r² = 0\n"
            "Rig 2: 2-parameter Weibull, maximum likelihood\nη = 200, β = 2, ln L = 0\n");
  FitResult modes = fit_of(1216, {{1 / 100.0, 1, 2, 0, 1}, {1 / 900.0, 1, 3, 0, 1}});
  modes.modes = {{1, 0, 0.9, {}}, {2, 1, -7.5, {}}};
  here.session.project.data(1).ModeNames.push_back("seal");
  here.session.project.fits(1).Fits(1) = modes;
  EXPECT_NE(now().find("|seal|100|2r² = 0.9\n"), std::string::npos) << now();
}

}  // namespace
}  // namespace tavlo
