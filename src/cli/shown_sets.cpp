#include "cli/shown_sets.h"

#include <algorithm>
#include <array>
#include <utility>

#include "chart/scales/chart_view.h"
#include "cli/file_titles.h"
#include "project/chart_types.h"
#include "project/plot_rows.h"

namespace tavlo::cli {

namespace {

/// One row of the chart's table of plot sets.
struct Row {
  int set = 1;   ///< of data and of fits
  int slot = 1;  ///< of the fit
  int kind = 0;  ///< number of its model and method among those on the chart, from 0
};

/// The place of the request among the kinds, which it joins.
int kind_of(const FitRequest& request, std::vector<FitRequest>& kinds) {
  const auto found = std::find(kinds.begin(), kinds.end(), request);
  const auto place = static_cast<int>(found - kinds.begin());
  if (found == kinds.end()) kinds.push_back(request);
  return place;
}

/// A set without fits has a row for its data.
std::vector<Row> rows_of(const Project& project) {
  std::vector<Row> rows;
  std::vector<FitRequest> kinds;
  for (int set = 1; set <= project.data.bound(); ++set) {
    const FitSet& fits = project.fits(set);
    if (fits.nFits < 1) rows.push_back({set, 1, 0});
    for (int slot = 1; slot <= fits.nFits; ++slot)
      rows.push_back({set, slot, kind_of(fits.Fits(slot).request, kinds)});
  }
  return rows;
}

constexpr int colours = 10;  // of the factory's rows, then they come again
constexpr std::array<std::int32_t, 5> line_styles = {0, 1, 3, 2, 4};  // solid to dash-dot-dot

/// The line style so many steps after another one.
std::int32_t line_style(std::int32_t first, int steps) {
  const auto found = std::find(line_styles.begin(), line_styles.end(), first);
  const auto place = found == line_styles.end() ? 0 : found - line_styles.begin();
  return line_styles[static_cast<std::size_t>(place + steps) % line_styles.size()];
}

/// How the rows of one chart are told apart. The fits of one data set have a colour each.
/// Of several sets each has the colour and the symbol of one row, and dashes tell the
/// kinds of fits apart: they go on where the colour comes again.
class RowLooks {
 public:
  RowLooks(const Chart& chart, const std::vector<Row>& rows)
      : looks_(chart.Markers),
        is_report_(chart.Profile == report_chart_type),
        is_one_set_(rows.back().set == 1),
        has_several_fits_(static_cast<int>(rows.size()) > rows.back().set) {
    for (const Row& row : rows) kinds_ = std::max(kinds_, row.kind + 1);
  }

  ChartMarker of(const Row& row) const {
    const int look = is_one_set_ ? row.slot : row.set;
    ChartMarker marker = looks_(look);
    if (!is_one_set_ && is_report_) marker.SymbolColor = marker.LineColor;
    if (marker.LineStyle != pen_style::none) marker.LineStyle = style_of(row, look);
    if (row.slot > 1) {  // the data stand on the chart once
      marker.SymbolStyle = pen_style::none;
      marker.SymbolFill = 0;
    }
    return marker;
  }

 private:
  std::int32_t style_of(const Row& row, int look) const {
    if (!is_one_set_ && has_several_fits_) return style_of_kind(row.kind, look);
    const std::int32_t own = looks_(look).LineStyle;
    return own == pen_style::solid ? line_style(own, (look - 1) / colours) : own;
  }

  /// Begins with the style of the first row in this colour: the styles of the later ones may be
  /// those that its kinds have.
  std::int32_t style_of_kind(int kind, int look) const {
    std::vector<int> alike;
    for (int i = 1; i <= look; ++i)
      if (looks_(i).LineColor == looks_(look).LineColor) alike.push_back(i);
    const int turn = static_cast<int>(alike.size()) - 1;
    return line_style(looks_(alike.front()).LineStyle, turn * kinds_ + kind);
  }

  Slots<ChartMarker> looks_;
  bool is_report_;  ///< a look whose first row, made for one set, has black symbols
  bool is_one_set_;
  bool has_several_fits_;
  int kinds_ = 1;  ///< of fits
};

void tie_rows(Chart& chart, const Project& project, const std::vector<std::string>& titles) {
  const std::vector<Row> rows = rows_of(project);
  const int last = static_cast<int>(rows.size());
  ensure_plot_row(chart, last);
  const RowLooks looks(chart, rows);
  for (int i = 1; i <= last; ++i) {
    const Row& row = rows[static_cast<std::size_t>(i) - 1];
    ChartMarker& marker = chart.Markers(i) = looks.of(row);
    marker.Label = titles[static_cast<std::size_t>(row.set) - 1];
    marker.DataId = project.data(row.set).UniqueId;
    marker.FitId = project.fits(row.set).UniqueId;
    marker.FitNumber = row.slot;
  }
}

void take_paper_of_first_fit(Chart& chart, const Project& project) {
  for (int set = 1; set <= project.fits.bound(); ++set) {
    if (project.fits(set).nFits < 1) continue;
    const Model* const model = find_model(project.fits(set).Fits(1).ModelCode);
    if (model) use_paper_of(chart, *model);
    return;
  }
}

void name_source(Chart& chart, const std::vector<std::string>& files) {
  const FileSource source = source_of(files);
  chart.Boxes(chart_item::file_name).Text1 = source.folder;
  chart.Boxes(chart_item::file_name).Text2 = source.names;
}

}  // namespace

void show_on_chart(Session& session, const std::vector<std::string>& files,
                   std::vector<std::string> names, const std::string& title, Paper paper) {
  Chart& chart = session.project.charts(1);
  const std::string main_title = title.empty() ? joined_titles(names) : title;
  if (names.size() == 1) names.front() = main_title;
  chart.Boxes(chart_item::main_title).Text2 = main_title;
  name_source(chart, files);
  tie_rows(chart, session.project, short_titles(std::move(names)));
  if (paper == Paper::of_first_fit) take_paper_of_first_fit(chart, session.project);
}

}  // namespace tavlo::cli
