#include "chart/parts/parameter_box.h"

#include <algorithm>
#include <array>

#include "chart/parts/boxes.h"
#include "chart/parts/crowding.h"
#include "chart/parts/fitting_text.h"
#include "chart/parts/movable_boxes.h"
#include "chart/parts/parameter_table.h"
#include "chart/parts/printed_parameters.h"
#include "chart/record/chart_style.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr double width_per_point = 16.0;  // a little wider than the letters: room between columns
constexpr double widest_label = 0.3;      // of the plot
constexpr double padding = 90;
constexpr double inside_corner = 80;
constexpr std::int32_t rule_pen = 5;

/// Where the lines and columns of the box stand.
struct Layout {
  std::array<double, table_column::count + 1> starts{};  ///< the last is the quality's
  std::array<double, table_column::count> ends{};
  double width = 0;
  double line_height = 0;
};

double width_of(Canvas& canvas, const std::string& text, const ChartItem& item) {
  return text.empty() ? 0.0 : text_size(canvas.text_measure, text, item, width_per_point).width;
}

/// Of what runs over all columns.
double words_width(Canvas& canvas, const TableLine& line, const ChartItem& item) {
  return width_of(canvas, line.title + line.heading + line.remark, item);
}

double column_width(Canvas& canvas, const ParameterTable& table, std::size_t column,
                    const ChartItem& item) {
  double width = 0;
  for (const TableLine& line : table.lines)
    width = std::max(width, width_of(canvas, line.cells[column], item));
  return width;
}

/// The widest line but for the headings, which are cut to it.
double rows_width(Canvas& canvas, const ParameterTable& table, const Layout& layout, double gap,
                  const ChartItem& item) {
  const double at = layout.starts[table_column::count];
  double width = 0;
  for (const TableLine& line : table.lines)
    width = std::max(width,
                     line.quality.empty() ? at - gap : at + width_of(canvas, line.quality, item));
  return width;
}

Layout layout_of(Canvas& canvas, const ParameterTable& table, const ChartItem& item) {
  Layout layout;
  const TextSize reference = text_size(canvas.text_measure, "8Xm", item);
  layout.line_height = chart_style(canvas.chart).line_spacing * reference.height;
  const double gap = reference.width / 4.0;
  const double plot_width = canvas.chart.Boxes(chart_item::plot_box).Width;
  double at = 0;
  for (std::size_t i = 0; i < table_column::count; ++i) {
    layout.starts[i] = at;
    if (!table.shown[i]) continue;
    const double width = column_width(canvas, table, i, item);
    layout.ends[i] =
        at + (i == table_column::label ? std::min(width, widest_label * plot_width) : width);
    at = layout.ends[i] + gap;
  }
  layout.starts[table_column::count] = at;
  layout.width = rows_width(canvas, table, layout, gap, item);
  const double most =
      std::max(layout.width, chart_style(canvas.chart).widest_parameters * plot_width);
  for (const TableLine& line : table.lines)
    layout.width = std::max(layout.width, std::min(most, words_width(canvas, line, item)));
  return layout;
}

/// Room that the box may take: at first only a part of the plot, so that the
/// points have theirs; letters shrink to an easily read size for it. A longer
/// table takes the whole plot, in the smallest letters at need.
struct Allowance {
  double share;
  float smallest_font;
};
constexpr double just_under = 0.995;  // so that rounding takes no line away
constexpr std::array<Allowance, 2> allowances = {{{0.62, 9}, {1.0, 6}}};

double height_of(const Layout& layout, std::size_t lines) {
  return layout.line_height * static_cast<double>(lines) + padding;
}

/// The font that the table fits the plot with.
float fitting_font(Canvas& canvas, const ParameterTable& table) {
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  ChartItem item = canvas.chart.Boxes(chart_item::parameter_box);
  for (const auto& [share, smallest_font] : allowances) {
    const Layout layout = layout_of(canvas, table, item);
    const double down = (share * plot.Height - 2 * inside_corner - padding) /
                        (height_of(layout, table.lines.size()) - padding);
    const double across = (plot.Width - 2 * inside_corner - 2 * padding) / layout.width;
    const double factor = std::min(down, across);
    if (factor >= 1.0) break;
    const auto shrunk = static_cast<float>(just_under * drawn_font_size(item.FontSize) * factor);
    item.FontSize = std::max(std::min(item.FontSize, smallest_font), shrunk);
  }
  return item.FontSize;
}

/// Lines that no letters are small enough for are left out, with the headings that
/// would lose their values.
void cut_to_plot(ParameterTable& table, const Layout& layout, const ChartItem& plot) {
  const double room = plot.Height - 2 * inside_corner - padding;
  limit_lines(table.lines,
              static_cast<std::size_t>(std::clamp(room / layout.line_height, 1.0, 1e6)));
}

/// The box in one size of letters, and where it would stand.
struct Setting {
  ChartItem box;
  Layout layout;
  double hidden = 0;  ///< of the points and lines
};

/// At the record's place; the factory's, on the plot's corner, means a free place.
void place(const Canvas& canvas, Setting& setting, std::size_t lines, const Obstacles& content) {
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  ChartItem& box = setting.box;
  box.Width = to_unit(setting.layout.width + 2 * padding);
  box.Height = to_unit(height_of(setting.layout, lines));
  if (has_own_place(canvas.chart, chart_item::parameter_box))
    return keep_on_chart(box, canvas.chart);
  const TextSize size{static_cast<double>(box.Width), static_cast<double>(box.Height)};
  const FreePlace at = freest_place(plot, size, chart_style(canvas.chart).parameters, content, {});
  box.Left = at.place.x;
  box.Top = at.place.y;
  setting.hidden = at.hidden;
}

Setting setting_of(Canvas& canvas, ParameterTable& table, float font, const Obstacles& content) {
  Setting setting{canvas.chart.Boxes(chart_item::parameter_box), {}, 0};
  setting.box.FontSize = font;
  setting.layout = layout_of(canvas, table, setting.box);
  cut_to_plot(table, setting.layout, canvas.chart.Boxes(chart_item::plot_box));
  place(canvas, setting, table.lines.size(), content);
  return setting;
}

/// Letters shrink to an easily read size where the box would hide less for it.
Setting best_setting(Canvas& canvas, ParameterTable& table, const Obstacles& content) {
  constexpr float step = 0.9F;
  constexpr float easily_read = 9;
  const float largest = fitting_font(canvas, table);
  Setting best = setting_of(canvas, table, largest, content);
  for (float font = largest * step; best.hidden > 0 && font >= easily_read; font *= step) {
    Setting smaller = setting_of(canvas, table, font, content);
    if (smaller.hidden < best.hidden) best = std::move(smaller);
  }
  return best;
}

void draw_cell(Recorder& recorder, const ParameterTable& table, const Layout& layout,
               std::size_t column, const std::string& text, Place line) {
  const bool at_right = table.numbers_at_right && column != table_column::label;
  if (at_right) recorder.align(TextAlign::right);
  const double along = at_right ? layout.ends[column] : layout.starts[column];
  recorder.text({to_unit(line.x + along), line.y}, text);
  if (at_right) recorder.align(TextAlign::left);
}

void draw_line(Canvas& canvas, const ParameterTable& table, const TableLine& line,
               const Layout& layout, double left, double top) {
  Recorder& recorder = canvas.recorder;
  recorder.text({to_unit(left), to_unit(top)}, line.heading);
  recorder.text({to_unit(left), to_unit(top)}, line.remark);
  for (std::size_t i = 0; i < table_column::count; ++i)
    if (table.shown[i])
      draw_cell(recorder, table, layout, i, line.cells[i], {to_unit(left), to_unit(top)});
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
  const double lead =
      layout.line_height * (1.0 - 1.0 / chart_style(canvas.chart).line_spacing) / 2.0;
  double top = box.Top + padding / 2 + lead;
  for (const TableLine& line : table.lines) {
    draw_line(canvas, table, line, layout, box.Left + padding, top);
    top += layout.line_height;
  }
}

/// Names give way where there is no room, numbers don't.
void cut_words(Canvas& canvas, TableLine& line, const ChartItem& box, const Layout& layout) {
  const auto cut = [&](const std::string& text, double room) {
    return cut_to_width(canvas.text_measure, text, box, room, width_per_point);
  };
  for (std::string* words : {&line.heading, &line.remark})
    if (!words->empty())
      *words =
          cut(cut(line.title, layout.width - width_of(canvas, *words, box)) + *words, layout.width);
  std::string& label = line.cells[table_column::label];
  label = cut(label, layout.ends[table_column::label] - layout.starts[table_column::label]);
}

ParameterTable table_of(const Canvas& canvas, const Session& session,
                        const std::vector<PlotSet>& sets) {
  const bool is_plain = chart_style(canvas.chart).wording == Wording::plain;
  return is_plain ? printed_parameters(session, sets) : parameter_table(session, sets);
}

}  // namespace

void draw_parameter_box(Canvas& canvas, const Session& session, const std::vector<PlotSet>& sets,
                        const Obstacles& content) {
  ParameterTable table = table_of(canvas, session, sets);
  if (table.lines.empty()) return;
  const auto& [box, layout, hidden] = best_setting(canvas, table, content);
  if (hidden >= 1 && chart_style(canvas.chart).parameters_give_way) return;
  for (TableLine& line : table.lines) cut_words(canvas, line, box, layout);
  canvas.recorder.note_area(chart_item::parameter_box, area_of(box));
  draw_box(canvas.recorder, box);
  draw_rules(canvas, table, box, layout);
  draw_table(canvas, table, box, layout);
}

}  // namespace tavlo
