// The records that say how a chart looks: boxes and titles, axes, plot sets.
// Lengths are logical units of the chart box (10000 x 6000 by default, Y down),
// colours 24-bit words with red in the low byte.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "numerics/slots.h"

namespace tavlo {

constexpr std::int32_t rgb(int red, int green, int blue) {
  return red | (green << 8) | (blue << 16);
}

/// Indexes of the fixed items in Chart::Boxes.
namespace chart_item {
inline constexpr int chart_box = 0;
inline constexpr int plot_box = 1;
inline constexpr int legend = 2;
inline constexpr int parameter_box = 3;
inline constexpr int main_title = 4;
inline constexpr int sub_title = 5;
inline constexpr int x_title = 6;
inline constexpr int y_title = 7;
inline constexpr int file_name = 8;
inline constexpr int date = 9;
}  // namespace chart_item

/// Pen styles of the records.
namespace pen_style {
inline constexpr int solid = 0;
inline constexpr int none = 5;
inline constexpr int inside_frame = 6;
}  // namespace pen_style

struct ChartItem {
  bool FontBold = false;
  bool FontItalic = false;
  bool FontUnderline = false;
  bool Flag4 = true;
  bool Flag5 = false;
  bool Flag6 = true;
  Slots<float> PointsX;
  Slots<float> PointsY;
  float FontSize = 10;  ///< points
  std::int32_t FillColor = 1;
  std::int32_t LineColor = 0;
  std::int32_t LineStyle = 0;
  std::int32_t LineWidth = 1;
  std::int32_t Color5 = rgb(255, 255, 255);
  std::int32_t TextColor = rgb(255, 255, 255);
  std::int32_t Value7 = 128;
  std::int32_t Value8 = 1;
  std::int32_t Value9 = 1;
  std::int32_t Height = 0;
  std::int32_t Left = 0;
  std::int32_t Top = 0;
  std::int32_t Width = 0;
  std::int16_t Mode = 0;
  std::int16_t Fill = 1;
  std::int16_t Int3 = 1;
  std::int16_t Int4 = 0;
  std::int16_t Int5 = 100;
  std::int16_t nPoints = 0;
  std::string FontName = "Arial";
  std::string Text1;
  std::string Text2;  ///< the item's text; number format, date format or file name

  friend bool operator==(const ChartItem&, const ChartItem&) = default;
};

/// The word that `Text1` of an answer mark begins with: its line and words follow a fit and are
/// found when the chart is drawn; a move takes the words alone along.
inline constexpr const char* answer_mark_word = "answer ";
inline bool is_answer_mark(const ChartItem& mark) {
  return mark.Text1.starts_with(answer_mark_word);
}

/// How limits are found that follow the data, in `ChartAxis::Label.Int4`.
namespace limit_rule {
inline constexpr std::int16_t stated = 0;       ///< whole decades, and tops of nines
inline constexpr std::int16_t fit_to_data = 1;  ///< the same, where that leaves little empty
}  // namespace limit_rule

struct ChartAxis {
  bool AutoMax = true;
  bool AutoMin = true;
  double Max = 1000;
  double Min = 1;
  std::int32_t MajorWidth = 5;
  std::int32_t MinorWidth = 1;
  std::int32_t MajorColor = rgb(0, 0, 128);
  std::int32_t MinorColor = rgb(0, 0, 128);
  std::int32_t MajorStyle = 0;
  std::int32_t MinorStyle = 2;
  std::int16_t ScaleType = 2;  ///< X scale in bits 0-2, Y scale in bits 3-5
  ChartItem Label;  ///< font of the tick labels; Text2 is the number format, Int4 the limit_rule

  friend bool operator==(const ChartAxis&, const ChartAxis&) = default;
};

/// What is seen of an axis.
struct AxisView {
  bool AutoMax = true;
  bool AutoMin = true;
  double Max = 1000;
  double Min = 1;
  std::int16_t ScaleType = 2;

  friend bool operator==(const AxisView&, const AxisView&) = default;
};
using ChartView = std::array<AxisView, 2>;  ///< of X and Y

/// One plot set: a data set and one of its fits on the chart.
struct ChartMarker {
  std::int32_t FitNumber = 1;  ///< which fit of the set; 0 is the working fit
  std::int32_t FillColor = 1;
  std::int32_t SymbolColor = 0;
  std::int32_t SymbolWidth = 15;
  std::int32_t Long5 = 0;
  std::int32_t DataId = 0;
  std::int32_t FitId = 3;
  std::int32_t LineColor = 0;
  std::int32_t LineWidth = 15;
  std::int32_t Color9 = 0;
  std::int32_t Long10 = 1;
  std::int32_t SymbolStyle = 0;  ///< pen style; 5 with no fill means no symbol
  std::int32_t SymbolFill = 1;
  std::int32_t Long13 = 0;
  std::int32_t LineStyle = 0;
  std::int32_t Long15 = 1;
  std::int16_t Int1 = 1;
  std::int16_t Int2 = 0;
  std::int16_t Tied = 0;  ///< 1 where a person has chosen what the row shows
  std::int16_t Size = 150;
  std::int16_t Symbol = 1;  ///< 1 to 27
  std::string Label;

  friend bool operator==(const ChartMarker&, const ChartMarker&) = default;
};

struct Chart {
  std::int16_t Version = 0;
  bool Flag1 = true;
  bool Flag2 = true;
  std::int32_t UniqueId = 0;
  Slots<std::int32_t> DataIds;
  Slots<std::int32_t> FitIds;
  std::int16_t SubPopulations = 0;  ///< 1 shows each population of a mixture as a line of its own
  std::int32_t nAxes = 1;
  std::int32_t nDataIds = 0;
  std::int32_t nFitIds = 0;
  std::int32_t nTexts = 0;
  std::int32_t nMarkers = 20;
  std::int32_t nBoxes = 9;
  std::string Name = "New";
  std::string DateFormat = "dd mmm yyyy";
  std::string Profile = "Standard";
  Slots<ChartItem> Boxes;      ///< 0 to nBoxes, see chart_item
  Slots<ChartMarker> Markers;  ///< 0 to nMarkers; row 0 is a spare
  Slots<ChartAxis> Axes;       ///< 0 is X, 1 is Y
  Slots<ChartItem> Texts;      ///< the user's marks from 1, see mark_mode
  /// The views that zooming in has left, the first one in front; no file keeps them.
  /// The axes hold the view of the moment; chart/scales/chart_view changes both.
  std::vector<ChartView> ZoomedFrom;

  friend bool operator==(const Chart&, const Chart&) = default;
};

/// A mark that the user has placed, in `Texts`, as the fields of a ChartItem say it:
/// - text: `Text2`, its upper left corner at `Left`, `Top`, in `TextColor`;
/// - line: the points 0 to `nPoints` of `PointsX`, `PointsY` (nPoints is 1 or more),
///   with the pen of `LineStyle`, `LineWidth` and `LineColor`;
/// - arrow: a line whose `Mode` has bit 1 for a head at its last point and bit 2 for
///   one at its first;
/// - symbol: neither of them; number `Int3` at `Left`, `Top`, `Int5` units wide.
/// A mark with points and a text is both. All places are logical units.
namespace mark_mode {
inline constexpr std::int16_t head_at_end = 1;
inline constexpr std::int16_t head_at_start = 2;
}  // namespace mark_mode

/// The factory chart, without an identity.
Chart fuStandard_Chart();

}  // namespace tavlo
