#include "chart/compose/chart_shape.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"
#include "chart/parts/marks.h"

namespace tavlo {
namespace {

constexpr std::pair<int, int> sizes[] = {{400, 900}, {900, 400},  {1000, 600},
                                         {600, 600}, {1920, 500}, {300, 1200}};

TEST(ChartShape, IsThatOfThePictureWithLettersOfOneSize) {
  for (const auto& [width, height] : sizes) {
    test::ChartWorld here;
    here.show_published();
    here.chart().SubPopulations = true;
    give_shape(here.chart(), width, height);
    const DrawingRecord drawing = here.draw();
    const double scale = static_cast<double>(width) / drawing.width;
    EXPECT_NEAR(scale, static_cast<double>(height) / drawing.height, 1e-3 * scale);
    EXPECT_NEAR(scale * scale, width * height / 6e7, 1e-3 * scale * scale) << width;
    for (const char* text : {"Results", "Life", "Occurrence CDF%", "10%", "100", "606.5"})
      EXPECT_TRUE(test::has_text(drawing, text)) << text << " " << width << "x" << height;
    for (const drawing::Ellipse& point : test::all<drawing::Ellipse>(drawing))
      EXPECT_EQ(point.right - point.left, 150);
    EXPECT_EQ(test::all<drawing::Ellipse>(drawing).size(), 10u);
    for (const drawing::Rectangle& box : test::all<drawing::Rectangle>(drawing)) {
      EXPECT_GE(std::min(box.left, box.top), 0) << width << "x" << height;
      EXPECT_TRUE(box.right <= drawing.width && box.bottom <= drawing.height);
    }
  }
}

TEST(ChartShape, MarksAndMovedBoxesStayOnThePlot) {
  for (const auto& [width, height] : sizes) {
    Chart chart = fuStandard_Chart();
    const ChartItem& plot = chart.Boxes(chart_item::plot_box);
    ChartItem& parameters = chart.Boxes(chart_item::parameter_box);
    parameters.Left = 1250 + 2000;
    parameters.Top = 650 + 1125;
    add_mark(chart, line_mark({1250, 650}, {9250, 5150}));
    give_shape(chart, width, height);
    EXPECT_NEAR(parameters.Left, plot.Left + plot.Width / 4, 1);
    EXPECT_NEAR(parameters.Top, plot.Top + plot.Height / 4, 1);
    EXPECT_NEAR(chart.Texts(1).PointsX(0), plot.Left, 1);
    EXPECT_NEAR(chart.Texts(1).PointsX(1), plot.Left + plot.Width, 1);
    EXPECT_NEAR(chart.Texts(1).PointsY(1), plot.Top + plot.Height, 1);
  }
  // In a picture as low as it may be the margins yield, each by the same part.
  Chart low = fuStandard_Chart();
  low.Boxes(chart_item::plot_box).Height = 1500;
  low.Boxes(chart_item::plot_box).Top = 3000;
  const ChartItem before = low.Boxes(chart_item::plot_box);
  const double below = low.Boxes(chart_item::chart_box).Height - 4500;
  give_shape(low, 2000, 400);
  const ChartItem& plot = low.Boxes(chart_item::plot_box);
  const std::int32_t high = low.Boxes(chart_item::chart_box).Height;
  EXPECT_NEAR(plot.Height, 0.4 * high, 2);
  EXPECT_NEAR((high - plot.Top - plot.Height) / below, static_cast<double>(plot.Top) / before.Top,
              2e-3);
  Chart chart = fuStandard_Chart();
  give_shape(chart, 1000, 600);
  EXPECT_EQ(chart, fuStandard_Chart()) << "its own shape";
}

}  // namespace
}  // namespace tavlo
