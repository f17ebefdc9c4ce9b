#include "project/chart_types.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>

#include "life/models.h"
#include "project/report_look.h"

namespace tavlo {

namespace {

constexpr const char* standard = "Standard";
constexpr const char* colour_safe = "Colour-safe";

constexpr std::array<const char*, 11> type_names = {
    standard,  "Default",          browse_chart_type, "Linear",    "LogNormal",      "Normal",
    "Weibull", "Weibull 12 Month", "Weibull 360 Day", colour_safe, report_chart_type};

constexpr std::array<const char*, 3> looks = {standard, colour_safe, report_chart_type};

/// Scales of a type's axes, and the X limits until there are data.
struct Paper {
  std::string_view type;
  int x_scale;
  int y_scale;
  double x_min = 1;
  double x_max = 1000;
};

// The two calendar papers carry the whole code of their model on the X axis; the
// automatic scale knows the months by it, and its limits are those of a calendar. Three years of
// months fit on theirs.
constexpr std::array<Paper, 6> papers = {{
    {"Linear", x_scale::linear, y_scale::linear},
    {"LogNormal", x_scale::log, y_scale::normal},
    {"Normal", x_scale::linear, y_scale::normal},
    {"Weibull", x_scale::log, y_scale::weibull},
    {"Weibull 12 Month", model_code::weibull_12_month, y_scale::weibull, 0.8, 36},
    {"Weibull 360 Day", model_code::weibull_360_day, y_scale::weibull, 1, 360},
}};

void use_paper(Chart& chart, std::string_view type) {
  for (const Paper& paper : papers) {
    if (paper.type != type) continue;
    chart.Axes(0).ScaleType = static_cast<std::int16_t>(paper.x_scale);
    chart.Axes(0).Min = paper.x_min;
    chart.Axes(0).Max = paper.x_max;
    if (paper.x_scale > x_scale_mask) chart.Axes(0).Label.Int4 = limit_rule::stated;
    chart.Axes(1).ScaleType = static_cast<std::int16_t>(paper.y_scale);
  }
}

// The palette of M. Okabe and K. Ito, "Color Universal Design" (2002, revised
// 2008), whose colours people with any kind of colour vision can tell apart. Its
// yellow is left out, since the plot box is pale yellow; the darker ones come
// first, as the first sets are those that most charts have.
constexpr std::array<std::int32_t, 7> safe_colours = {
    rgb(0, 114, 178),    // blue
    rgb(213, 94, 0),     // vermillion
    rgb(0, 158, 115),    // bluish green
    rgb(204, 121, 167),  // reddish purple
    rgb(0, 0, 0),        // black
    rgb(230, 159, 0),    // orange
    rgb(86, 180, 233),   // sky blue
};

// Where the colours begin again the line changes to the next of these: solid,
// dash, dash-dot.
constexpr std::array<std::int32_t, 3> safe_line_styles = {0, 1, 3};

void use_safe_colours(Chart& chart) {
  for (int i = 1; i <= chart.nMarkers; ++i) {
    const auto turn = static_cast<std::size_t>(i - 1);
    ChartMarker& marker = chart.Markers(i);
    marker.FillColor = marker.SymbolColor = marker.LineColor =
        safe_colours[turn % safe_colours.size()];
    marker.LineStyle = safe_line_styles[turn / safe_colours.size() % safe_line_styles.size()];
  }
}

}  // namespace

std::span<const char* const> chart_types() { return type_names; }

Chart chart_of_type(std::string_view name) {
  Chart chart = fuStandard_Chart();
  make_usual(chart);
  use_paper(chart, name);
  if (name == colour_safe) use_safe_colours(chart);
  if (name == report_chart_type) use_report_look(chart);
  if (std::find(type_names.begin(), type_names.end(), name) != type_names.end())
    chart.Profile = name;
  return chart;
}

bool is_only_looks(std::string_view type) {
  return type == colour_safe || type == report_chart_type;
}

std::span<const char* const> chart_looks() { return looks; }

bool is_chart_look(std::string_view type) { return std::ranges::find(looks, type) != looks.end(); }

const char* find_chart_type(std::string_view name) {
  const auto lower = [](char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  };
  for (const char* const type : type_names)
    if (std::ranges::equal(std::string_view(type), name, {}, lower, lower)) return type;
  return nullptr;
}

void make_usual(Chart& chart) {
  constexpr std::int32_t fine_line = 24;
  for (int i = 1; i <= chart.nMarkers; ++i) chart.Markers(i).LineWidth = fine_line;
  for (ChartAxis& axis : chart.Axes) axis.Label.Int4 = limit_rule::fit_to_data;
}

}  // namespace tavlo
