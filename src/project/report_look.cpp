#include "project/report_look.h"

#include <array>
#include <cstddef>

namespace tavlo {

namespace {

constexpr std::int32_t white = rgb(255, 255, 255);
constexpr std::int32_t ink = rgb(32, 33, 36);
constexpr std::int32_t frame = rgb(95, 99, 104);
constexpr std::int32_t grid = rgb(218, 220, 224);

void lay_out(Chart& chart) {
  ChartItem& box = chart.Boxes(chart_item::chart_box);
  box.FillColor = white;
  box.LineStyle = pen_style::none;
  ChartItem& plot = chart.Boxes(chart_item::plot_box);
  plot.FillColor = white;
  plot.LineColor = frame;
  plot.LineWidth = 10;
  plot.Left = 1230;
  plot.Top = 600;
  plot.Width = 8440;
  plot.Height = 4560;
}

/// The boxes have a ground, so that no grid line runs through their words, and a frame
/// like the grid, at which its lines end. The parameter box at the corner of the plot has no place
/// of its own.
void dress_insets(Chart& chart) {
  for (const int item : {chart_item::legend, chart_item::parameter_box}) {
    ChartItem& box = chart.Boxes(item);
    box.FontSize = 12;
    box.FillColor = white;
    box.LineColor = grid;
    box.LineWidth = 8;
    box.TextColor = ink;
  }
  constexpr std::int16_t always = 2;
  chart.Boxes(chart_item::legend).Mode = always;
  chart.Boxes(chart_item::parameter_box).Left = chart.Boxes(chart_item::plot_box).Left;
  chart.Boxes(chart_item::parameter_box).Top = chart.Boxes(chart_item::plot_box).Top;
}

void word_titles(Chart& chart) {
  ChartItem& main = chart.Boxes(chart_item::main_title);
  main.Text2.clear();
  main.FontBold = true;
  main.FontSize = 16;
  main.Top = 215;
  chart.Boxes(chart_item::x_title).Text2 = "Time to failure";
  chart.Boxes(chart_item::y_title).Text2 = "Fraction failed";
  chart.Boxes(chart_item::y_title).Top = 150;
  chart.Boxes(chart_item::date).Text2 = "(none)";
  for (const int item :
       {chart_item::main_title, chart_item::sub_title, chart_item::x_title, chart_item::y_title})
    chart.Boxes(item).TextColor = ink;
  for (const int item : {chart_item::x_title, chart_item::y_title}) chart.Boxes(item).FontSize = 13;
}

void rule_axes(Chart& chart) {
  for (ChartAxis& axis : chart.Axes) {
    axis.MajorColor = grid;
    axis.MajorWidth = 8;
    axis.MinorColor = frame;
    axis.MinorStyle = pen_style::solid;
    axis.MinorWidth = 8;
    axis.Label.FontSize = 13;
    axis.Label.TextColor = ink;
  }
}

// The palette of M. Okabe and K. Ito, "Color Universal Design" (2002, revised 2008).
// Its yellow is left out, since it can't be seen on white, and black comes last, since
// the points are drawn in it.
constexpr std::array<std::int32_t, 7> colours = {
    rgb(0, 114, 178),    // blue
    rgb(213, 94, 0),     // vermillion
    rgb(0, 158, 115),    // bluish green
    rgb(204, 121, 167),  // reddish purple
    rgb(230, 159, 0),    // orange
    rgb(86, 180, 233),   // sky blue
    rgb(0, 0, 0),        // black
};

// Circle, square, triangle, diamond, inverted triangle.
constexpr std::array<std::int16_t, 5> symbols = {1, 2, 5, 3, 4};
// Solid, dash, dash-dot, dot: what tells lines apart where a printer has no colours. Four
// styles and seven colours meet anew only after 28 rows.
constexpr std::array<std::int32_t, 4> line_styles = {0, 1, 3, 2};

void dress_plot_sets(Chart& chart) {
  for (int i = 1; i <= chart.nMarkers; ++i) {
    const auto turn = static_cast<std::size_t>(i - 1);
    ChartMarker& marker = chart.Markers(i);
    marker.LineColor = marker.SymbolColor = colours[turn % colours.size()];
    marker.LineStyle = line_styles[turn % line_styles.size()];
    marker.LineWidth = 34;
    marker.FillColor = white;
    marker.Symbol = symbols[turn % symbols.size()];
    marker.Size = 105;
    marker.SymbolWidth = 16;
  }
  chart.Markers(1).SymbolColor = ink;
}

}  // namespace

void use_report_look(Chart& chart) {
  lay_out(chart);
  dress_insets(chart);
  word_titles(chart);
  rule_axes(chart);
  dress_plot_sets(chart);
}

}  // namespace tavlo
