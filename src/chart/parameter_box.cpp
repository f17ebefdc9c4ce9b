#include "chart/parameter_box.h"

#include <algorithm>
#include <array>

#include "chart/boxes.h"
#include "chart/crowding.h"
#include "chart/parameter_table.h"
#include "chart/plot_coordinates.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr double width_per_point = 16.0;  // a little wider than the letters: room between columns
constexpr double line_spacing = 1.5;      // in text heights
constexpr double padding = 90;
constexpr double inside_corner = 80;
constexpr std::int32_t rule_pen = 5;

/// Where the lines and columns of the box stand.
struct Layout {
  std::array<double, table_column::count + 1> starts{};  ///< the last is the quality's
  double width = 0;
  double line_height = 0;
};

double width_of(Canvas& canvas, const std::string& text, const ChartItem& item) {
  return text.empty() ? 0.0 : text_size(canvas.text_measure, text, item, width_per_point).width;
}

double column_width(Canvas& canvas, const ParameterTable& table, std::size_t column,
                    const ChartItem& item) {
  double width = 0;
  for (const TableLine& line : table.lines)
    width = std::max(width, width_of(canvas, line.cells[column], item));
  return width;
}

Layout layout_of(Canvas& canvas, const ParameterTable& table, const ChartItem& item) {
  Layout layout;
  const TextSize reference = text_size(canvas.text_measure, "8Xm", item);
  layout.line_height = line_spacing * reference.height;
  const double gap = reference.width / 4.0;
  double at = 0;
  for (std::size_t i = 0; i < table_column::count; ++i) {
    layout.starts[i] = at;
    if (table.shown[i]) at += column_width(canvas, table, i, item) + gap;
  }
  layout.starts[table_column::count] = at;
  for (const TableLine& line : table.lines) {
    const double end = line.quality.empty() ? at - gap : at + width_of(canvas, line.quality, item);
    layout.width = std::max({layout.width, end, width_of(canvas, line.heading, item)});
  }
  return layout;
}

/// The corners of the plot, the factory's first.
std::array<Place, 4> corners(const ChartItem& plot, const ChartItem& box) {
  const double left = plot.Left + inside_corner;
  const double top = plot.Top + inside_corner;
  const double right = x_extent(plot).end - box.Width - inside_corner;
  const double bottom = y_extent(plot).end - box.Height - inside_corner;
  return {Place{to_unit(left), to_unit(top)}, Place{to_unit(right), to_unit(bottom)},
          Place{to_unit(right), to_unit(top)}, Place{to_unit(left), to_unit(bottom)}};
}

Place freest_corner(const ChartItem& plot, const ChartItem& box, const DrawingRecord& content) {
  const auto hidden = [&](const Place& at) {
    return shapes_touching(content, {at.x, at.y, to_unit(static_cast<double>(at.x) + box.Width),
                                     to_unit(static_cast<double>(at.y) + box.Height)});
  };
  const auto candidates = corners(plot, box);
  return *std::min_element(candidates.begin(), candidates.end(),
                           [&](const Place& a, const Place& b) { return hidden(a) < hidden(b); });
}

/// The record's place; the factory's, on the plot's corner, means a free corner.
ChartItem placed_box(const Chart& chart, const Layout& layout, std::size_t lines,
                     const DrawingRecord& content) {
  ChartItem box = chart.Boxes(chart_item::parameter_box);
  const ChartItem& plot = chart.Boxes(chart_item::plot_box);
  box.Width = to_unit(layout.width + 2 * padding);
  box.Height = to_unit(layout.line_height * static_cast<double>(lines) + padding);
  if (box.Left != plot.Left || box.Top != plot.Top) return box;
  const Place at = freest_corner(plot, box, content);
  box.Left = at.x;
  box.Top = at.y;
  return box;
}

void draw_line(Canvas& canvas, const ParameterTable& table, const TableLine& line,
               const Layout& layout, double left, double top) {
  Recorder& recorder = canvas.recorder;
  recorder.text({to_unit(left), to_unit(top)}, line.heading);
  for (std::size_t i = 0; i < table_column::count; ++i)
    if (table.shown[i])
      recorder.text({to_unit(left + layout.starts[i]), to_unit(top)}, line.cells[i]);
  recorder.text({to_unit(left + layout.starts[table_column::count]), to_unit(top)}, line.quality);
}

/// A rule under the heading of each data set.
void draw_rules(Canvas& canvas, const ParameterTable& table, const ChartItem& box,
                const Layout& layout) {
  const auto pen = Selected::pen(canvas.recorder, pen_style::solid, rule_pen, box.LineColor);
  double y = box.Top + padding / 2;
  for (const TableLine& line : table.lines) {
    y += layout.line_height;
    if (line.heading.empty()) continue;
    const std::int32_t at = to_unit(y - layout.line_height * 0.05);
    canvas.recorder.add(Polyline{
        {{to_unit(box.Left + padding), at}, {to_unit(box.Left + padding + layout.width), at}}});
  }
}

void draw_table(Canvas& canvas, const ParameterTable& table, const ChartItem& box,
                const Layout& layout) {
  const auto font = Selected::font(canvas.recorder, box);
  canvas.recorder.text_colour(readable_text_colour(box));
  canvas.recorder.align(TextAlign::left);
  const double lead = layout.line_height * (1.0 - 1.0 / line_spacing) / 2.0;
  double top = box.Top + padding / 2 + lead;
  for (const TableLine& line : table.lines) {
    draw_line(canvas, table, line, layout, box.Left + padding, top);
    top += layout.line_height;
  }
}

}  // namespace

void draw_parameter_box(Canvas& canvas, const Session& session, const std::vector<PlotSet>& sets,
                        const DrawingRecord& content) {
  const ParameterTable table = parameter_table(session, sets);
  if (table.lines.empty()) return;
  const Layout layout = layout_of(canvas, table, canvas.chart.Boxes(chart_item::parameter_box));
  const ChartItem box = placed_box(canvas.chart, layout, table.lines.size(), content);
  draw_box(canvas.recorder, box);
  draw_rules(canvas, table, box, layout);
  draw_table(canvas, table, box, layout);
}

}  // namespace tavlo
