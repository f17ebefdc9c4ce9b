#include "chart/parts/legend.h"

#include <algorithm>
#include <cstdlib>

#include "chart/parts/boxes.h"
#include "chart/parts/crowding.h"
#include "chart/parts/data_points.h"
#include "chart/parts/fit_line.h"
#include "chart/parts/fitting_text.h"
#include "chart/parts/movable_boxes.h"
#include "chart/parts/symbols.h"
#include "life/models.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr double line_spacing = 1.3;  // in text heights
constexpr double padding = 70;
constexpr double sample_width = 500;  // of the piece of line beside a title
constexpr double sample_gap = 90;
constexpr float smallest_font = 6;
constexpr double just_under = 0.995;  // so that rounding takes no line away
constexpr std::size_t fewest_lines = 2;
constexpr double widest = 0.45;  // of the plot box
constexpr double highest = 0.92;

bool shares_its_data(const std::vector<PlotSet>& sets, const PlotSet& set) {
  return std::count_if(sets.begin(), sets.end(), [&](const PlotSet& other) {
           return other.data_index == set.data_index;
         }) > 1;
}

/// "W2P/mle", as the fits are called on the command line.
std::string fit_name(const FitResult& fit) {
  const Model* model = find_model(fit.ModelCode);
  const Method* method = find_method(fit.Method);
  if (!model || !method) return {};
  const char* const name = *model->command_name ? model->command_name : model->short_name;
  return std::string(name) + method->short_suffix;
}

std::string entry_title(const Session& session, const std::vector<PlotSet>& sets,
                        const PlotSet& set) {
  std::string title = set_title(session, set);
  if (!set.fit || !shares_its_data(sets, set)) return title;
  const std::string fit = fit_name(*set.fit);
  return has_symbols(*set.marker) ? title + ", " + fit : fit;
}

/// What is drawn: the entries that have room, in a font that they fit in.
struct Layout {
  ChartItem item;  ///< the box at its place
  std::vector<std::string> titles;
  double line_height = 0;
};

double line_height(Canvas& canvas, const ChartItem& item) {
  return line_spacing * text_size(canvas.text_measure, "8Xm", item).height;
}

/// Smaller letters where all lines wouldn't fit, and fewer lines where the
/// smallest don't.
void fit_height(Canvas& canvas, Layout& layout, double room) {
  const auto count = static_cast<double>(layout.titles.size());
  const double needed = count * line_height(canvas, layout.item);
  if (needed > room)
    layout.item.FontSize = std::max(
        smallest_font,
        static_cast<float>(just_under * drawn_font_size(layout.item.FontSize) * room / needed));
  layout.line_height = line_height(canvas, layout.item);
  const auto lines = static_cast<std::size_t>(std::clamp(room / layout.line_height, 1.0, 1e6));
  if (lines >= layout.titles.size() || lines < fewest_lines) return;
  const std::size_t left_out = layout.titles.size() - (lines - 1);
  layout.titles.resize(lines - 1);
  layout.titles.push_back("and " + std::to_string(left_out) + " more");
}

Layout layout_of(Canvas& canvas, const std::vector<LegendEntry>& entries) {
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  Layout layout{with_readable_colours(canvas.chart.Boxes(chart_item::legend)), {}, 0};
  for (const LegendEntry& entry : entries) layout.titles.push_back(entry.title);
  fit_height(canvas, layout, highest * plot.Height - 2 * padding);
  const double beside = 2 * padding + sample_width + sample_gap;
  double width = 0;
  for (std::string& title : layout.titles) {
    title = cut_to_width(canvas.text_measure, title, layout.item, widest * plot.Width - beside);
    width = std::max(width, text_size(canvas.text_measure, title, layout.item).width);
  }
  layout.item.Width = to_unit(beside + width);
  layout.item.Height =
      to_unit(2 * padding + layout.line_height * static_cast<double>(layout.titles.size()));
  return layout;
}

std::vector<Rectangle> taken_areas(const Recorder& recorder) {
  std::vector<Rectangle> taken;
  for (const ItemArea& area : recorder.areas()) taken.push_back(area.area);
  return taken;
}

void place(Canvas& canvas, ChartItem& box, const DrawingRecord& content) {
  if (has_own_place(canvas.chart, chart_item::legend)) return keep_on_chart(box, canvas.chart);
  const TextSize size{static_cast<double>(box.Width), static_cast<double>(box.Height)};
  const Place at = freest_place(canvas.chart.Boxes(chart_item::plot_box), size,
                                Corner::bottom_right, content, taken_areas(canvas.recorder));
  box.Left = at.x;
  box.Top = at.y;
}

void draw_sample(Recorder& recorder, const LegendEntry& entry, double left, double middle,
                 double most_size) {
  const ChartMarker& marker = *entry.set->marker;
  const std::int32_t y = to_unit(middle);
  if (entry.has_line) {
    const auto pen = Selected::pen(recorder, marker.LineStyle, marker.LineWidth, marker.LineColor);
    recorder.add(Polyline{{{to_unit(left), y}, {to_unit(left + sample_width), y}}});
  }
  if (!entry.has_symbol) return;
  const int size = std::min(std::abs(int{marker.Size}), to_unit(most_size));
  draw_symbols(recorder, marker, SymbolStamp(marker.Symbol, size),
               {{to_unit(left + sample_width / 2), y}});
}

void draw_lines(Canvas& canvas, const Layout& layout, const std::vector<LegendEntry>& entries) {
  const auto font = Selected::font(canvas.recorder, layout.item);
  canvas.recorder.text_colour(layout.item.TextColor);
  canvas.recorder.align(TextAlign::left);
  const double left = layout.item.Left + padding;
  const double lead = layout.line_height * (1.0 - 1.0 / line_spacing) / 2.0;
  const std::size_t samples =
      layout.titles.size() == entries.size() ? entries.size() : layout.titles.size() - 1;
  double top = layout.item.Top + padding;
  for (std::size_t i = 0; i < layout.titles.size(); ++i, top += layout.line_height) {
    if (i < samples)
      draw_sample(canvas.recorder, entries[i], left, top + layout.line_height / 2,
                  0.9 * layout.line_height);
    canvas.recorder.text({to_unit(left + sample_width + sample_gap), to_unit(top + lead)},
                         layout.titles[i]);
  }
}

}  // namespace

ChartItem with_readable_colours(ChartItem item) {
  const ChartItem factory;
  if (item.FillColor == factory.FillColor && item.TextColor == factory.TextColor) {
    item.FillColor = rgb(255, 255, 255);
    item.TextColor = 0;
  }
  item.TextColor = readable_text_colour(item);
  return item;
}

std::vector<LegendEntry> legend_entries(const Session& session, const Chart& chart,
                                        const std::vector<PlotSet>& sets) {
  const int mode = chart.Boxes(chart_item::legend).Mode;
  std::vector<LegendEntry> entries;
  if (mode == legend_mode::never) return entries;
  for (const PlotSet& set : sets) {
    LegendEntry entry{&set, entry_title(session, sets, set), set.fit && has_line(*set.marker),
                      has_symbols(*set.marker) && session.project.data(set.data_index).sample().size() > 0};
    if (entry.has_line || entry.has_symbol) entries.push_back(std::move(entry));
  }
  if (mode != legend_mode::always && entries.size() < 2) entries.clear();
  return entries;
}

void draw_legend(Canvas& canvas, const Session& session, const std::vector<PlotSet>& sets,
                 const DrawingRecord& content) {
  const auto entries = legend_entries(session, canvas.chart, sets);
  if (entries.empty()) return;
  Layout layout = layout_of(canvas, entries);
  place(canvas, layout.item, content);
  canvas.recorder.note_area(chart_item::legend, area_of(layout.item));
  draw_box(canvas.recorder, layout.item);
  draw_lines(canvas, layout, entries);
}

}  // namespace tavlo
