#include "chart/parts/legend.h"

#include <algorithm>
#include <cstdlib>

#include "chart/parts/boxes.h"
#include "chart/parts/crowding.h"
#include "chart/parts/data_points.h"
#include "chart/parts/fit_line.h"
#include "chart/parts/fitting_text.h"
#include "chart/parts/marker_line.h"
#include "chart/parts/movable_boxes.h"
#include "chart/parts/plain_words.h"
#include "chart/parts/symbols.h"
#include "chart/record/chart_style.h"
#include "life/models.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr double line_spacing = 1.3;  // in text heights
constexpr double padding = 70;
constexpr double sample_width = 500;  // of the piece of line beside a title
constexpr double sample_gap = 90;
constexpr float least_legend_font = 6;
constexpr double just_under = 0.995;  // so that rounding takes no line away
constexpr std::size_t fewest_lines = 2;
constexpr double highest = 0.92;  // of the plot box

bool has_several_fits(const std::vector<PlotSet>& sets) {
  std::vector<int> seen;
  for (const PlotSet& set : sets) seen.push_back(set.data_index);
  std::sort(seen.begin(), seen.end());
  return std::adjacent_find(seen.begin(), seen.end()) != seen.end();
}

bool has_model_twice(const std::vector<PlotSet>& sets, const PlotSet& set) {
  return std::count_if(sets.begin(), sets.end(), [&](const PlotSet& other) {
           return other.data_index == set.data_index && other.fit &&
                  other.fit->ModelCode == set.fit->ModelCode;
         }) > 1;
}

/// The method is named only where the model alone doesn't tell the fits apart.
std::string plain_name_among(const std::vector<PlotSet>& sets, const PlotSet& set) {
  const Model* const model = find_model(set.fit->ModelCode);
  return model && !has_model_twice(sets, set) ? model->plain_name : plain_fit_name(*set.fit);
}

std::string fit_words(const Chart& chart, const std::vector<PlotSet>& sets, const PlotSet& set) {
  if (!set.fit || !has_several_fits(sets)) return {};
  return chart_style(chart).wording == Wording::plain ? plain_name_among(sets, set)
                                                      : fit_name(*set.fit);
}

bool shows_line(const PlotSet& set) { return set.fit && has_line(*set.marker); }

bool shows_points(const Session& session, const PlotSet& set) {
  return has_symbols(*set.marker) && session.project.data(set.data_index).sample().size() > 0;
}

/// The row's look in the crowd of its points, in the size of a single one.
ChartMarker look_of(const Session& session, const Chart& chart, const PlotSet& set) {
  const std::size_t count = session.project.data(set.data_index).sample().size();
  ChartMarker look = look_in_crowd(*set.marker, chart.Boxes(chart_item::plot_box), count);
  look.Size = set.marker->Size;
  return look;
}

/// Beside other lines of the only data set a line is known by its fit alone.
LegendEntry titled_entry(const Session& session, const Chart& chart,
                         const std::vector<PlotSet>& sets, const PlotSet& set) {
  LegendEntry entry{look_of(session, chart, set), set_title(session, set),
                    fit_words(chart, sets, set), shows_line(set), shows_points(session, set)};
  const Sample& sample = session.project.data(set.data_index).sample();
  if (!set.fit && !(sample.total_failures > 0)) entry.fit = "no failures";
  if (entry.fit.empty()) return entry;
  if (show_one_data_set(sets) && !has_symbols(*set.marker))
    entry.title.clear();
  else
    entry.fit.insert(0, ", ");
  return entry;
}

/// Of a chart in plain words with one data set: what each line is and, last, how many
/// points there are.
std::vector<LegendEntry> plain_entries(const Session& session, const Chart& chart,
                                       const std::vector<PlotSet>& sets) {
  std::vector<LegendEntry> entries;
  for (const PlotSet& set : sets)
    if (shows_line(set))
      entries.push_back({*set.marker, plain_fit_name(*set.fit), "", true, false});
  for (const PlotSet& set : sets)
    if (shows_points(session, set))
      entries.push_back({look_of(session, chart, set),
                         plain_totals(session.project.data(set.data_index).sample()), "", false,
                         true});
  return entries;
}

std::vector<LegendEntry> entries_of_rows(const Session& session, const Chart& chart,
                                         const std::vector<PlotSet>& sets) {
  std::vector<LegendEntry> entries;
  for (const PlotSet& set : sets) {
    LegendEntry entry = titled_entry(session, chart, sets, set);
    if (entry.has_line || entry.has_symbol) entries.push_back(std::move(entry));
  }
  return entries;
}

/// What is drawn: the entries that have room, in a font that they fit in.
struct Layout {
  ChartItem item;  ///< the box at its place
  std::vector<std::string> titles;
  std::size_t samples = 0;  ///< titles that belong to an entry, the first ones
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
        least_legend_font,
        static_cast<float>(just_under * drawn_font_size(layout.item.FontSize) * room / needed));
  layout.line_height = line_height(canvas, layout.item);
  const auto lines = static_cast<std::size_t>(std::clamp(room / layout.line_height, 1.0, 1e6));
  if (lines >= layout.titles.size() || lines < fewest_lines) return;
  const std::size_t left_out = layout.titles.size() - (lines - 1);
  layout.samples = lines - 1;
  layout.titles.resize(layout.samples);
  layout.titles.push_back("and " + std::to_string(left_out) + " more");
}

/// Smaller letters where a title is too wide, as long as they are easily read.
void fit_width(Canvas& canvas, Layout& layout, double room) {
  constexpr float easily_read = 8;
  double width = 0;
  for (const std::string& title : layout.titles)
    width = std::max(width, text_size(canvas.text_measure, title, layout.item).width);
  if (width <= room) return;
  const auto shrunk =
      static_cast<float>(just_under * drawn_font_size(layout.item.FontSize) * room / width);
  layout.item.FontSize = std::max(std::min(layout.item.FontSize, easily_read), shrunk);
}

std::string cut_entry(Canvas& canvas, const LegendEntry& entry, const ChartItem& item,
                      double room) {
  const double fit_width = text_size(canvas.text_measure, entry.fit, item).width;
  const std::string title = cut_to_width(canvas.text_measure, entry.title, item, room - fit_width);
  return cut_to_width(canvas.text_measure, title + entry.fit, item, room);
}

Layout layout_of(Canvas& canvas, const std::vector<LegendEntry>& entries, const ChartItem& item) {
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  Layout layout{item, {}, entries.size(), 0};
  for (const LegendEntry& entry : entries) layout.titles.push_back(entry.title + entry.fit);
  const double beside = 2 * padding + sample_width + sample_gap;
  const double room = chart_style(canvas.chart).widest_legend * plot.Width - beside;
  fit_width(canvas, layout, room);
  fit_height(canvas, layout, highest * plot.Height - 2 * padding);
  double width = 0;
  for (std::size_t i = 0; i < layout.titles.size(); ++i) {
    std::string& title = layout.titles[i];
    if (i < layout.samples) title = cut_entry(canvas, entries[i], layout.item, room);
    width = std::max(width, text_size(canvas.text_measure, title, layout.item).width);
  }
  layout.item.Width = to_unit(beside + width * chart_style(canvas.chart).legend_slack);
  layout.item.Height =
      to_unit(2 * padding + layout.line_height * static_cast<double>(layout.titles.size()));
  return layout;
}

std::vector<Rectangle> taken_areas(const Recorder& recorder) {
  std::vector<Rectangle> taken;
  for (const ItemArea& area : recorder.areas()) taken.push_back(area.area);
  return taken;
}

/// What the box hides at its place.
double place(Canvas& canvas, ChartItem& box, const Obstacles& content) {
  if (has_own_place(canvas.chart, chart_item::legend)) {
    keep_on_chart(box, canvas.chart);
    return 0;
  }
  const TextSize size{static_cast<double>(box.Width), static_cast<double>(box.Height)};
  const FreePlace at =
      freest_place(canvas.chart.Boxes(chart_item::plot_box), size, chart_style(canvas.chart).legend,
                   content, taken_areas(canvas.recorder));
  box.Left = at.place.x;
  box.Top = at.place.y;
  return at.hidden;
}

/// Letters shrink to an easily read size where the box would hide less for it.
Layout placed_layout(Canvas& canvas, const std::vector<LegendEntry>& entries,
                     const Obstacles& content) {
  constexpr float step = 0.9F;
  constexpr float easily_read = 9;
  ChartItem item = with_readable_colours(canvas.chart.Boxes(chart_item::legend));
  Layout best = layout_of(canvas, entries, item);
  double hidden = place(canvas, best.item, content);
  auto font = static_cast<float>(drawn_font_size(item.FontSize));
  while (hidden > 0 && (font *= step) >= easily_read) {
    item.FontSize = font;
    Layout smaller = layout_of(canvas, entries, item);
    const double less = place(canvas, smaller.item, content);
    if (less >= hidden) continue;
    hidden = less;
    best = std::move(smaller);
  }
  return best;
}

void draw_sample(Canvas& canvas, const LegendEntry& entry, double left, double middle,
                 double most_size) {
  const ChartMarker& marker = entry.look;
  const std::int32_t y = to_unit(middle);
  if (entry.has_line) {
    draw_marker_line(canvas, marker, {{to_unit(left), y}, {to_unit(left + sample_width), y}});
  }
  if (!entry.has_symbol) return;
  const int size = std::min(std::abs(int{marker.Size}), to_unit(most_size));
  draw_symbols(canvas.recorder, marker, SymbolStamp(marker.Symbol, size),
               {{to_unit(left + sample_width / 2), y}});
}

void draw_lines(Canvas& canvas, const Layout& layout, const std::vector<LegendEntry>& entries) {
  const auto font = Selected::font(canvas.recorder, layout.item);
  canvas.recorder.text_colour(layout.item.TextColor);
  canvas.recorder.align(TextAlign::left);
  const double left = layout.item.Left + padding;
  const double lead = layout.line_height * (1.0 - 1.0 / line_spacing) / 2.0;
  double top = layout.item.Top + padding;
  for (std::size_t i = 0; i < layout.titles.size(); ++i, top += layout.line_height) {
    if (i < layout.samples)
      draw_sample(canvas, entries[i], left, top + layout.line_height / 2, 0.9 * layout.line_height);
    canvas.recorder.text({to_unit(left + sample_width + sample_gap), to_unit(top + lead)},
                         layout.titles[i]);
  }
}

}  // namespace

std::string fit_name(const FitResult& fit) {
  const Model* model = find_model(fit.ModelCode);
  const Method* method = find_method(fit.Method);
  if (!model || !method) return {};
  const char* const name = *model->command_name ? model->command_name : model->short_name;
  return std::string(name) + method->short_suffix;
}

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
  const bool is_plain = chart_style(chart).wording == Wording::plain && show_one_data_set(sets);
  entries = is_plain ? plain_entries(session, chart, sets) : entries_of_rows(session, chart, sets);
  if (mode != legend_mode::always && entries.size() < 2) entries.clear();
  return entries;
}

void draw_legend(Canvas& canvas, const Session& session, const std::vector<PlotSet>& sets,
                 const Obstacles& content) {
  const auto entries = legend_entries(session, canvas.chart, sets);
  if (entries.empty()) return;
  const Layout layout = placed_layout(canvas, entries, content);
  canvas.recorder.note_area(chart_item::legend, area_of(layout.item));
  draw_box(canvas.recorder, layout.item);
  draw_lines(canvas, layout, entries);
}

}  // namespace tavlo
