#include "files/chart_section.h"

#include <utility>

#include "files/chart_repair.h"

namespace tavlo {

namespace {

constexpr ProjectText::Place chart_place = {"Chart Read Write Error: ", "RW_Chart routine:"};
constexpr ProjectText::Place item_place = {"Chart Read Write Error: ", "RW_ChRxTx routine:"};

// How many fields this version writes. A reader drops those beyond, which a later
// version has added, but always reads these.
constexpr int head_fields = 9;
constexpr int item_fields = 26;
constexpr int axis_fields = 11;
constexpr int marker_fields = 19;

constexpr int head_texts = 3;
constexpr int item_texts = 3;
constexpr int marker_texts = 1;

// Kept on purpose: further texts of an item or a plot set are dropped only when
// there are more of them than the record has fields. Files depend on it.
constexpr int fewest_further_item_texts = item_fields + 1;
constexpr int fewest_further_marker_texts = marker_fields + 1;

/// The bounds of lists are 16-bit numbers.
constexpr int most_elements = 32766;
constexpr int most_points = 32767;

// The bytes that an element takes at the least, when every value is one digit.
constexpr std::size_t least_id = 2;
constexpr std::size_t least_point = 4;
constexpr std::size_t least_item = 60;
constexpr std::size_t least_axis = 80;
constexpr std::size_t least_marker = 40;

template <class Archive, class Item>
void visit_points(Archive& file, Item& item) {
  file.make_room(item.PointsX, item.nPoints, least_point, most_points);
  file.make_room(item.PointsY, item.nPoints, least_point, most_points);
  file.count(2 * item.nPoints + 2);
  for (int i = 0; i <= item.nPoints; ++i) {
    file.value(item.PointsX(i));
    file.value(item.PointsY(i));
  }
  file.end_values();
}

template <class Archive, class Item>
void RW_ChRxTx(Archive& file, Item& item) {
  const ProjectText::AtWork at_work(file, item_place);
  const auto fields = file.count(item_fields);
  file.values(item.FontBold, item.FontItalic, item.FontUnderline, item.Flag4, item.Flag5,
              item.Flag6, item.FontSize, item.FillColor, item.LineColor, item.LineStyle,
              item.LineWidth, item.Color5, item.TextColor, item.Value7, item.Value8, item.Value9,
              item.Height, item.Left, item.Top, item.Width, item.Mode, item.Fill);
  file.values(item.Int3, item.Int4, item.Int5, item.nPoints);
  file.skip_values(fields - item_fields);
  visit_points(file, item);
  const auto texts = file.count(item_texts);
  file.text(item.FontName);
  file.text(item.Text1);
  file.text(item.Text2);
  if (texts >= fewest_further_item_texts) file.skip_texts(texts - item_texts);
}

template <class Archive, class Axis>
void visit_axis(Archive& file, Axis& axis) {
  const auto fields = file.count(axis_fields);
  file.values(axis.AutoMax, axis.AutoMin, axis.Max, axis.Min, axis.MajorColor, axis.MinorColor,
              axis.MajorStyle, axis.MinorStyle, axis.MajorWidth, axis.MinorWidth, axis.ScaleType);
  file.skip_values(fields - axis_fields);
  RW_ChRxTx(file, axis.Label);
}

/// `tied` receives the identities of what the plot set shows.
template <class Archive, class Marker>
void visit_marker(Archive& file, Marker& marker, Marker& tied) {
  const auto fields = file.count(marker_fields);
  file.values(marker.FitNumber, marker.FillColor, marker.SymbolColor, marker.SymbolFill,
              marker.SymbolWidth, tied.FitId, tied.DataId, marker.LineColor, marker.LineWidth,
              marker.Color9, marker.Long13, marker.Long10, marker.SymbolStyle, marker.LineStyle,
              marker.Int1, marker.Int2, tied.Tied, marker.Symbol, marker.Size);
  file.skip_values(fields - marker_fields);
  const auto texts = file.count(marker_texts);
  file.text(marker.Label);
  if (texts >= fewest_further_marker_texts) file.skip_texts(texts - marker_texts);
}

template <class Archive, class Items>
void visit_items(Archive& file, Items& items, int bound) {
  file.make_room(items, bound, least_item, most_elements);
  for (int i = 0; i <= bound; ++i) RW_ChRxTx(file, items(i));
}

template <class Archive, class Ids>
void visit_ids(Archive& file, Ids& ids, int bound, bool drop) {
  const auto number = file.count(std::int64_t{bound} + 1);
  if (drop) return file.skip_values(number);
  file.make_room(ids, bound, least_id, most_elements);
  for (int i = 0; i <= bound; ++i) file.value(ids(i));
  file.end_values();
}

/// `tied` is the chart itself, or another one that takes the ties in its place.
/// False for an empty chart.
template <class Archive, class Record>
bool visit_head(Archive& file, Record& chart, Record& tied) {
  file.values(chart.Version, tied.UniqueId);
  const auto fields = file.count(head_fields);
  if (fields == 0) return false;
  file.values(chart.Flag1, chart.Flag2, chart.SubPopulations, as_int(tied.nAxes),
              as_int(tied.nDataIds), as_int(tied.nFitIds), as_int(tied.nBoxes),
              as_int(tied.nMarkers), as_int(tied.nTexts));
  file.skip_values(fields - head_fields);
  file.require_bound(tied.nAxes, chart.nAxes);
  file.require_bound(tied.nBoxes, chart.nBoxes);
  file.require_bound(tied.nMarkers, chart.nMarkers);
  file.require_bound(tied.nTexts, chart.nTexts);
  return true;
}

template <class Archive, class Record>
void visit_markers(Archive& file, Record& chart, bool drop_ties) {
  file.count(chart.nMarkers);
  file.make_room(chart.Markers, chart.nMarkers, least_marker, most_elements);
  for (int i = 0; i <= chart.nMarkers; ++i) {
    ChartMarker dropped;
    auto& marker = chart.Markers(i);
    visit_marker(file, marker, drop_ties ? dropped : marker);
  }
}

template <class Archive, class Record>
bool visit_chart(Archive& file, Record& chart, Record& tied) {
  const ProjectText::AtWork at_work(file, chart_place);
  const bool drop_ties = &chart != &tied;
  if (!visit_head(file, chart, tied)) return false;
  visit_ids(file, tied.DataIds, tied.nDataIds, drop_ties);
  visit_ids(file, tied.FitIds, tied.nFitIds, drop_ties);
  file.count(std::int64_t{chart.nAxes} + 1);
  file.make_room(chart.Axes, chart.nAxes, least_axis, most_elements);
  for (int i = 0; i <= chart.nAxes; ++i) visit_axis(file, chart.Axes(i));
  file.count(chart.nBoxes);  // the bound, and not the number as elsewhere
  visit_items(file, chart.Boxes, chart.nBoxes);
  visit_markers(file, chart, drop_ties);
  file.count(std::int64_t{chart.nTexts} + 1);
  visit_items(file, chart.Texts, chart.nTexts);
  const auto texts = file.count(head_texts);
  file.text(tied.Name);
  file.text(tied.DateFormat);
  file.text(tied.Profile);
  file.skip_texts(texts - head_texts);
  return true;
}

/// The chart that a section makes of `chart`.
Chart read_over(const Chart& chart, ProjectReader& file, ChartTies ties) {
  Chart fresh = chart;
  Chart dropped = chart;
  if (!visit_chart(file, fresh, ties == ChartTies::keep ? dropped : fresh)) return chart;
  make_drawable(fresh);
  fresh.ZoomedFrom.clear();
  return fresh;
}

}  // namespace

bool RW_Chart(ErrorReporter& reporter, ProjectReader& file, Chart& chart, ChartTies ties) {
  return guarded(reporter, false, section_words(chart_place, file), [&] {
    chart = read_over(chart, file, ties);
    return true;
  });
}

std::optional<ReadFault> read_chart(ProjectReader& file, Chart& chart) {
  try {
    chart = read_over(chart, file, ChartTies::read);
    return std::nullopt;
  } catch (const RunTimeError&) {
    return file.fault();
  }
}

bool RW_Chart(ErrorReporter& reporter, ProjectWriter& file, const Chart& chart) {
  return guarded(reporter, false, section_words(chart_place, file), [&] {
    write_chart_section(file, chart);
    return true;
  });
}

void read_chart_section(ProjectReader& file, Chart& chart) {
  chart = read_over(chart, file, ChartTies::read);
}

void write_chart_section(ProjectWriter& file, const Chart& chart) {
  visit_chart(file, chart, chart);
}

}  // namespace tavlo
