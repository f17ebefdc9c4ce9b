#include "chart/parts/titles.h"

#include <algorithm>

#include "chart/parts/fitting_text.h"
#include "chart/record/chart_style.h"
#include "chart/scales/axis_labels.h"
#include "chart/scales/plot_coordinates.h"
#include "numerics/date_text.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr double note_bottom = 100;     // notes end this far above the chart's lower edge
constexpr double note_right = 50;       // the date ends this far from the right edge
constexpr double file_name_left = 320;  // clear of the mark
constexpr std::int32_t mark_pen = 13;

struct ChartEdges {
  double left, top, right, bottom;
};

ChartEdges edges_of(const ChartItem& box) {
  return {static_cast<double>(box.Left), static_cast<double>(box.Top),
          static_cast<double>(box.Left) + box.Width, static_cast<double>(box.Top) + box.Height};
}

/// The program's mark: a rising step line in a frame, at home on paper of this kind.
void draw_mark(Recorder& recorder, const ChartItem& box) {
  const double x = edges_of(box).left;
  const double y = edges_of(box).bottom;
  const auto place = [&](int right, int up) { return Place{to_unit(x + right), to_unit(y - up)}; };
  const auto pen = Selected::pen(recorder, pen_style::solid, mark_pen, box.LineColor);
  recorder.add(
      Polyline{{place(80, 120), place(240, 120), place(240, 200), place(80, 200), place(80, 120)}});
  recorder.add(Polyline{
      {place(100, 134), place(140, 146), place(165, 160), place(190, 170), place(220, 186)}});
}

void draw_note(Canvas& canvas, const ChartItem& item, const std::string& text, double x,
               TextAlign align) {
  if (text.empty()) return;
  const double bottom = edges_of(canvas.chart.Boxes(chart_item::chart_box)).bottom;
  const double height = text_size(canvas.text_measure, text, item).height;
  const auto font = Selected::font(canvas.recorder, item);
  canvas.recorder.text_colour(item.TextColor);
  canvas.recorder.align(align);
  canvas.recorder.text({to_unit(x), to_unit(bottom - note_bottom - height)}, text);
}

/// File name, path, or both as the item asks; display text, so the joint is the
/// same on every system.
std::string file_note(const ChartItem& item) {
  switch (item.Mode) {
    case 1: return item.Text2;
    case 2: return item.Text1;
    case 3: return item.Text1.empty() ? item.Text2 : item.Text1 + "\\" + item.Text2;
    default: return {};
  }
}

std::string date_note(const ChartItem& item, const DateTime& now) {
  if (item.Text2.empty() || item.Text2 == "(none)") return {};
  return format_date(now, item.Text2);
}

/// The file at the left and the date at the right of the chart's foot.
void draw_notes(Canvas& canvas, const DateTime& now) {
  constexpr double between = 200;
  const ChartItem& file = canvas.chart.Boxes(chart_item::file_name);
  const ChartItem& date = canvas.chart.Boxes(chart_item::date);
  const ChartEdges box = edges_of(canvas.chart.Boxes(chart_item::chart_box));
  const std::string date_text = date_note(date, now);
  const double date_width =
      date_text.empty() ? 0.0 : text_size(canvas.text_measure, date_text, date).width + between;
  const double left = box.left + file_name_left;
  const double room = box.right - note_right - date_width - left;
  draw_note(canvas, file, cut_to_width(canvas.text_measure, file_note(file), file, room), left,
            TextAlign::left);
  draw_note(canvas, date, date_text, box.right - note_right, TextAlign::right);
}

void draw_background(Recorder& recorder, const ChartItem& item, double left, double top,
                     double right, double bottom) {
  const auto pen = Selected::pen(recorder, item.LineStyle, item.LineWidth, item.LineColor);
  const auto brush = Selected::brush(recorder, item.Fill != 0, item.FillColor);
  recorder.add(drawing::Rectangle{to_unit(left), to_unit(top), to_unit(right), to_unit(bottom)});
}

/// Room of a title that is centred on a place between two edges.
double room_around(double centre, double begin, double end) {
  constexpr double clear_of_edge = 60;
  return 2.0 * (std::min(centre - begin, end - centre) - clear_of_edge);
}

/// Centred on x, its line of text beginning at `top`; the background is
/// `background` text heights high.
void draw_level_title(Canvas& canvas, const ChartItem& title, double x, double top,
                      double background) {
  if (title.Text2.empty()) return;
  const ChartEdges edges = edges_of(canvas.chart.Boxes(chart_item::chart_box));
  const ChartItem item =
      fitted_to_width(canvas.text_measure, title, room_around(x, edges.left, edges.right));
  const TextSize size = text_size(canvas.text_measure, item.Text2, item);
  draw_background(canvas.recorder, item, x - size.width / 2, top, x + size.width / 2,
                  top + background * size.height);
  const auto font = Selected::font(canvas.recorder, item);
  canvas.recorder.text_colour(item.TextColor);
  canvas.recorder.align(TextAlign::centre);
  canvas.recorder.text({to_unit(x), to_unit(top)}, item.Text2);
}

/// From x on, in the room up to the right edge of the chart.
void draw_left_title(Canvas& canvas, const ChartItem& title, double x, double top) {
  if (title.Text2.empty()) return;
  const double room = edges_of(canvas.chart.Boxes(chart_item::chart_box)).right - x - note_right;
  const ChartItem item = fitted_to_width(canvas.text_measure, title, room);
  const TextSize size = text_size(canvas.text_measure, item.Text2, item);
  draw_background(canvas.recorder, item, x, top, x + size.width, top + 0.9 * size.height);
  const auto font = Selected::font(canvas.recorder, item);
  canvas.recorder.text_colour(item.TextColor);
  canvas.recorder.align(TextAlign::left);
  canvas.recorder.text({to_unit(x), to_unit(top)}, item.Text2);
}

/// Straight up, its `Top` counted from the left edge of the chart.
void draw_upright_title(Canvas& canvas, const ChartItem& title, double left, double y) {
  if (title.Text2.empty()) return;
  const ChartEdges edges = edges_of(canvas.chart.Boxes(chart_item::chart_box));
  const ChartItem item =
      fitted_to_width(canvas.text_measure, title, room_around(y, edges.top, edges.bottom));
  constexpr std::int32_t straight_up = 900;
  const TextSize size = text_size(canvas.text_measure, item.Text2, item);
  draw_background(canvas.recorder, item, left, y - size.width / 2, left + 0.9 * size.height,
                  y + size.width / 2);
  const auto font = Selected::font(canvas.recorder, item, straight_up);
  canvas.recorder.text_colour(item.TextColor);
  canvas.recorder.align(TextAlign::centre);
  canvas.recorder.text({to_unit(left), to_unit(y)}, item.Text2);
}

/// Half way between the tick labels and the notes, but never on the labels.
double x_title_top(Canvas& canvas, const ChartItem& item) {
  const double labels = y_extent(canvas.chart.Boxes(chart_item::plot_box)).end +
                        label_room_below(canvas.text_measure, canvas.chart.Axes(0).Label);
  const ChartItem& date = canvas.chart.Boxes(chart_item::date);
  const double notes = edges_of(canvas.chart.Boxes(chart_item::chart_box)).bottom - note_bottom -
                       text_size(canvas.text_measure, "0", date).height;
  const double height = text_size(canvas.text_measure, item.Text2, item).height;
  return std::max(labels, (labels + notes - height) / 2.0);
}

bool has_sub_title(const ChartItem& item) {
  return !item.Text2.empty() && item.Text2 != "sub_title";
}

/// Over the plot: in its middle, or from its left edge on.
void draw_title_over_plot(Canvas& canvas, const ChartItem& title, double top) {
  const Extent across = x_extent(canvas.chart.Boxes(chart_item::plot_box));
  if (chart_style(canvas.chart).titles == TitlePlace::left)
    return draw_left_title(canvas, title, across.begin, top);
  draw_level_title(canvas, title, (across.begin + across.end) / 2.0, top, 0.9);
}

/// The sub-title stands on the plot box; the main title gives way upward.
void draw_main_titles(Canvas& canvas, const std::string& names) {
  const Slots<ChartItem>& boxes = canvas.chart.Boxes;
  ChartItem main = boxes(chart_item::main_title);
  if (main.Text2.empty() && chart_style(canvas.chart).titled_by_data) main.Text2 = names;
  const ChartItem& sub = boxes(chart_item::sub_title);
  double main_top = main.Top;
  if (has_sub_title(sub)) {
    const double height = text_size(canvas.text_measure, sub.Text2, sub).height;
    const double top = y_extent(boxes(chart_item::plot_box)).begin - 1.1 * height;
    draw_title_over_plot(canvas, sub, top);
    const double main_height = text_size(canvas.text_measure, main.Text2, main).height;
    main_top = std::min(main_top, top - 0.95 * main_height);
  }
  draw_title_over_plot(canvas, main, main_top);
}

}  // namespace

void draw_titles(Canvas& canvas, const DateTime& now, const std::string& names) {
  const Slots<ChartItem>& boxes = canvas.chart.Boxes;
  const ChartItem& box = boxes(chart_item::chart_box);
  const Extent across = x_extent(boxes(chart_item::plot_box));
  const Extent down = y_extent(boxes(chart_item::plot_box));
  const double centre = (across.begin + across.end) / 2.0;
  if (chart_style(canvas.chart).has_mark) draw_mark(canvas.recorder, box);
  draw_notes(canvas, now);
  const ChartItem& x_title = boxes(chart_item::x_title);
  draw_level_title(canvas, x_title, centre, x_title_top(canvas, x_title), 0.8);
  draw_main_titles(canvas, names);
  const ChartItem& y_title = boxes(chart_item::y_title);
  draw_upright_title(canvas, y_title, edges_of(box).left + y_title.Top,
                     (down.begin + down.end) / 2.0);
}

void draw_out_of_date(Canvas& canvas) {
  constexpr double above_plot = 40;
  const ChartEdges plot = edges_of(canvas.chart.Boxes(chart_item::plot_box));
  ChartItem sign;
  sign.FontBold = true;
  sign.TextColor = rgb(192, 0, 0);
  sign.Text2 = "Out of date: the data or their ranks have changed";
  sign = fitted_to_width(canvas.text_measure, sign, plot.right - plot.left);
  const double height = text_size(canvas.text_measure, sign.Text2, sign).height;
  const auto font = Selected::font(canvas.recorder, sign);
  canvas.recorder.text_colour(sign.TextColor);
  canvas.recorder.align(TextAlign::right);
  canvas.recorder.text({to_unit(plot.right), to_unit(plot.top - above_plot - height)}, sign.Text2);
}

}  // namespace tavlo
