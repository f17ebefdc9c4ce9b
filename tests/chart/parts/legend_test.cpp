#include "chart/parts/legend.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"
#include "chart/parts/crowding.h"
#include "project/plot_rows.h"

namespace tavlo {
namespace {

using drawing::Rectangle;
using test::has_text;

/// A chart of so many data sets, each with a fit of its own.
struct SetsWorld : test::ChartWorld {
  explicit SetsWorld(int count) {
    for (int i = 1; i <= count; ++i) {
      if (i > 1) New_frm_Data(session);
      if (i > 1) New_frm_Fit(session);
      const double eta = 100.0 * i;
      DataSet data = test::ranked({{0.3 * eta}, {0.7 * eta}, {1.1 * eta}});
      data.UniqueId = session.gData(i).UniqueId;
      data.Title = "Rig " + std::to_string(i);
      session.gData(i) = std::move(data);
      session.gFit(i).nFits = 1;
      session.gFit(i).Fits.resize(1);
      session.gFit(i).Fits(1) = test::fit_of(model_code::weibull2, {{1 / eta, 1, 2, 0, 1}});
    }
  }
  ChartItem& legend() { return chart().Boxes(chart_item::legend); }
};

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
  SetsWorld here(3);
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
    SetsWorld here(sets);
    here.session.gData(2).Title = std::string(40000, 'W');
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

}  // namespace
}  // namespace tavlo
