#include "chart/parts/legend.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"
#include "chart/parts/crowding.h"
#include "project/chart_looks.h"
#include "project/chart_types.h"
#include "project/plot_rows.h"

namespace tavlo {
namespace {

using drawing::Rectangle;
using test::has_text;

Rectangle legend_area(const DrawingRecord& drawing) {
  for (const ItemArea& area : drawing.areas)
    if (area.item == chart_item::legend) return area.area;
  return {};
}

bool is_inside(const Rectangle& inner, const Rectangle& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

constexpr Rectangle chart_area{0, 0, 10000, 6000}, plot_area{1250, 650, 9250, 5150};

TEST(Legend, StandsLowerRightUntilItIsMovedAndKeepsOffThePoints) {
  test::SetsWorld here(3);
  here.chart().Boxes(chart_item::parameter_box).Left = 1300;  // out of the way
  const Rectangle area = legend_area(here.draw());
  EXPECT_TRUE(is_inside(area, plot_area));
  EXPECT_EQ(area.right, 9250 - 80);
  EXPECT_EQ(area.bottom, 5150 - 80);
  here.legend().Left = 2000;
  here.legend().Top = 900;
  EXPECT_EQ(legend_area(here.draw()).left, 2000);
  here.legend().Left = 1000000;
  here.legend().Top = -1000000;
  const Rectangle held = legend_area(here.draw());
  EXPECT_EQ(held.right, 10000);
  EXPECT_EQ(held.top, 0);
}

TEST(Legend, AnyNumberOfSetsAndAnyTitleFitTheChart) {
  for (const int sets : {2, 20, 60}) {
    test::SetsWorld here(sets);
    here.session.project.data(2).Title = std::string(40000, 'W');
    for (const float size : {12.0f, 1e38f}) {
      here.legend().FontSize = size;
      here.chart().Boxes(chart_item::parameter_box).FontSize = size;
      const DrawingRecord drawing = here.draw();
      for (const ItemArea& area : drawing.areas)
        EXPECT_TRUE(is_inside(area.area, size == 12.0f ? plot_area : chart_area))
            << sets << " sets, item " << area.item << ", font " << size;
      EXPECT_EQ(has_text(drawing, "Rig 20"), sets >= 20) << sets << " sets, font " << size;
      EXPECT_EQ(has_text(drawing, "and 30 more"), sets == 60) << size;
    }
  }
}

// The second fit of a set takes the row whose label is "Data 2".
TEST(Legend, NamesTheSetNotTheRowItHas) {
  test::SetsWorld here(2);
  Project& project = here.session.project;
  std::swap(here.chart().Markers(2).DataId, here.chart().Markers(3).DataId);
  for (const auto& [title, words] :
       {std::pair{"Data2", "Data 2"}, {"Data9", "Data 9"}, {"", "Data 3"}, {"Pumps", "Pumps"}}) {
    project.data(1).Title = "Data1";
    project.data(2).Title = title;
    const DrawingRecord drawing = here.draw();
    EXPECT_TRUE(has_text(drawing, "Data 1") && has_text(drawing, words)) << words;
    EXPECT_TRUE(has_text(drawing, ":" + std::string(words) + " N3 /S0")) << words;
  }
}

// A long name gives way, not what tells the rows apart or the numbers behind it.
TEST(Legend, OfSeveralSetsNamesEachFitInTheChartsWords) {
  struct Case {
    const char *look, *first, *second, *totals;
  };
  const Case cases[] = {
      {"Standard", ", W2P/rr", ", W2P/MLE", " N3 /S0"},
      {report_chart_type, ", 2-parameter Weibull, regression",
       ", 2-parameter Weibull, maximum likelihood", "2-parameter Weibull, regression"}};
  for (const Case& row : cases) {
    test::SetsWorld here(2);
    apply_chart_type(here.chart(), row.look);
    FitSet& fits = here.session.project.fits(1);
    fits.Fits.push_back(fits.Fits(1));
    fits.Fits(2).Method = method_code::mle;
    fits.nFits = 2;
    const int further =
        add_plot_set(here.chart(), here.session.project.data(1).UniqueId, fits.UniqueId, 2);
    here.chart().Markers(1).Label = here.chart().Markers(further).Label = std::string(400, 'W');
    const std::vector<std::string> shown = test::texts(here.draw());
    for (const std::string words : {row.first, row.second, row.totals})
      EXPECT_TRUE(std::ranges::any_of(
          shown, [&](const auto& text) { return text.ends_with(words) && text.size() < 400; }))
          << row.look << words;
  }
}

}  // namespace
}  // namespace tavlo
