#include "project/chart_records.h"

#include <array>
#include <cstddef>

#include "life/models.h"

namespace tavlo {

namespace {

constexpr std::int32_t white = rgb(255, 255, 255);
constexpr std::int32_t navy = rgb(0, 0, 128);
constexpr std::int32_t blue = rgb(0, 0, 255);

ChartItem chart_box() {
  ChartItem box;
  box.Width = 10000;
  box.Height = 6000;
  box.FillColor = rgb(234, 255, 255);
  box.LineColor = navy;
  box.LineWidth = 20;
  return box;
}

ChartItem plot_box() {
  ChartItem box = chart_box();
  box.Left = 1250;
  box.Top = 650;
  box.Width = 8000;
  box.Height = 4500;
  box.FillColor = rgb(255, 255, 234);
  return box;
}

ChartItem legend() {
  ChartItem box;
  box.FontSize = 12;
  box.Mode = 1;
  return box;
}

/// The box starts at the corner of the plot box and takes its size from its text.
ChartItem parameter_box() {
  ChartItem box;
  box.FontSize = 12;
  box.Left = 1250;
  box.Top = 650;
  box.Width = 1;
  box.Height = 1;
  box.LineColor = blue;
  box.LineWidth = 20;
  box.FillColor = white;
  return box;
}

ChartItem title(float size, const char* text) {
  ChartItem item;
  item.FontSize = size;
  item.FillColor = white;
  item.LineColor = white;
  item.LineStyle = pen_style::none;
  item.LineWidth = 10;
  item.TextColor = 0;
  item.Left = 1000;
  item.Top = 200;
  item.Width = 2400;
  item.Height = 300;
  item.Mode = 2;
  item.Fill = 0;
  item.Text2 = text;
  return item;
}

/// A small line at the foot of the chart.
ChartItem note(std::int16_t mode, const char* text) {
  ChartItem item = title(8, text);
  item.LineColor = 0;
  item.TextColor = blue;
  item.Mode = mode;
  return item;
}

Slots<ChartItem> standard_boxes() {
  Slots<ChartItem> boxes(9);
  boxes(chart_item::chart_box) = chart_box();
  boxes(chart_item::plot_box) = plot_box();
  boxes(chart_item::legend) = legend();
  boxes(chart_item::parameter_box) = parameter_box();
  boxes(chart_item::main_title) = title(18, "Results");
  boxes(chart_item::sub_title) = title(14, "sub_title");
  boxes(chart_item::x_title) = title(14, "Life");
  boxes(chart_item::y_title) = title(14, "Occurrence CDF%");
  boxes(chart_item::file_name) = note(0, "(new)");
  boxes(chart_item::date) = note(1, "dd mmm yyyy");
  return boxes;
}

struct MarkerLook {
  std::int32_t fill;
  std::int32_t symbol_line;
  std::int32_t fit_line;
  std::int16_t symbol;
  std::int16_t size = 150;
  std::int32_t symbol_width = 15;
};

constexpr MarkerLook look(std::int32_t fill, std::int32_t line, std::int16_t symbol,
                          std::int16_t size = 150, std::int32_t symbol_width = 15) {
  return {fill, line, line, symbol, size, symbol_width};
}

// The factory looks of the plot sets 1 to 20: no two share colour and symbol.
constexpr std::array<MarkerLook, 20> marker_looks = {{
    look(rgb(234, 255, 255), rgb(96, 0, 0), 1),
    look(rgb(204, 255, 204), rgb(0, 64, 0), 5),
    {rgb(0, 255, 255), navy, blue, 7},
    look(rgb(255, 134, 255), rgb(128, 0, 128), 6),
    look(rgb(255, 153, 0), rgb(176, 106, 0), 8),
    look(rgb(255, 255, 0), rgb(255, 0, 0), 23, 200),
    look(rgb(224, 224, 224), rgb(64, 64, 64), 24, 200),
    look(rgb(255, 255, 0), rgb(160, 64, 0), 12, 150, 10),
    look(rgb(0, 255, 0), rgb(0, 96, 0), 16, 150, 10),
    look(rgb(255, 0, 0), rgb(160, 0, 0), 18, 150, 10),
    look(rgb(234, 255, 255), rgb(96, 0, 0), 17, 150, 10),
    look(rgb(204, 255, 204), rgb(0, 64, 0), 19, 150, 10),
    look(rgb(0, 255, 255), navy, 25, 100, 10),
    look(rgb(255, 134, 255), rgb(128, 0, 128), 26, 100, 10),
    look(rgb(255, 153, 0), rgb(176, 106, 0), 2),
    look(rgb(255, 255, 0), rgb(255, 0, 0), 3),
    look(rgb(224, 224, 224), rgb(64, 64, 64), 4),
    look(rgb(255, 255, 0), rgb(160, 64, 0), 9),
    look(rgb(0, 255, 0), rgb(0, 96, 0), 10),
    look(rgb(255, 0, 0), rgb(160, 0, 0), 11),
}};

ChartMarker marker(const MarkerLook& from) {
  ChartMarker set;
  set.FillColor = from.fill;
  set.SymbolColor = from.symbol_line;
  set.LineColor = from.fit_line;
  set.Symbol = from.symbol;
  set.Size = from.size;
  set.SymbolWidth = from.symbol_width;
  return set;
}

Slots<ChartMarker> standard_markers() {
  Slots<ChartMarker> markers(static_cast<int>(marker_looks.size()));
  for (int i = 1; i <= markers.bound(); ++i) {
    markers(i) = marker(marker_looks[static_cast<std::size_t>(i) - 1]);
    markers(i).Label = "Data " + std::to_string(i);
  }
  markers(1).LineWidth = 96;
  markers(0) = markers(1);
  markers(0).Label.clear();
  return markers;
}

Slots<ChartAxis> standard_axes() {
  ChartAxis axis;
  axis.Label.FontSize = 14;
  axis.Label.TextColor = navy;
  axis.Label.LineStyle = pen_style::none;
  axis.Label.Mode = 1;
  Slots<ChartAxis> axes(1, axis);
  axes(1).Max = 0.99;
  axes(1).Min = 0.01;
  axes(1).ScaleType = y_scale::weibull;
  return axes;
}

}  // namespace

Chart fuStandard_Chart() {
  Chart chart;
  chart.Boxes = standard_boxes();
  chart.Markers = standard_markers();
  chart.Axes = standard_axes();
  return chart;
}

}  // namespace tavlo
