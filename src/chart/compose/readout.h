// Readout: what lies under the pointer, in data units, and what the fit says of
// that place. Made after each composition, of a chart
// that stays as it is then; asked at each move of the pointer.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "chart/parts/crowding.h"
#include "chart/record/canvas.h"
#include "chart/scales/plot_coordinates.h"
#include "numerics/unheard_reports.h"
#include "project/session.h"

namespace tavlo {

enum class SnappedTo { nothing, point, line, grid };

/// A failure on the chart as the person knows it.
struct DataPoint {
  std::int32_t data_id = 0;
  int row = 0;  ///< of the sheet, as it was when the data were read
  double failures = 0;
  double suspensions = 0;
  std::string mode = {};   ///< empty for none
  std::string title = {};  ///< of its data set; empty where the chart shows no other
};

struct Reading {
  double x = 0;                    ///< data units
  double y = 0;                    ///< a fraction on probability scales
  std::optional<double> fraction;  ///< F of the last fit at x
  std::optional<double> time;      ///< where, within the X limits, the last fit reaches y
  SnappedTo snapped = SnappedTo::nothing;
  int row = 0;                          ///< of the plot set that was snapped to
  drawing::Place place;                 ///< of the reading on the chart: a hair cross stands here
  std::optional<DataPoint> point = {};  ///< that was snapped to
  bool on_x_line = false;               ///< of the grid, an upright one
  bool on_y_line = false;
};

/// Whether a row of the sheet still is the failure that was read there: nobody has moved or
/// changed it since.
bool is_as_read(const DataSet& data, int row);

class Readout {
 public:
  Readout(const Session& session, const Chart& chart);
  Readout(const Readout&) = delete;
  Readout& operator=(const Readout&) = delete;

  /// The data at a place given in logical units; places outside the plot box are
  /// read at its nearest edge. Nothing when the axes can't be drawn.
  std::optional<Reading> at(drawing::Place place);

  /// The nearest data point within `reach` units, else the nearest fit line, else as near_at.
  std::optional<Reading> precise_at(drawing::Place place, double reach);

  /// The nearest data point within `reach` units, else the place moved to the lines of the
  /// grid that are as near, else the place itself.
  std::optional<Reading> near_at(drawing::Place place, double reach);

  /// Where the failure of a row of a sheet is drawn; nothing for a row that is not.
  std::optional<drawing::Place> place_of_row(std::int32_t data_id, int row) const;

  /// The points and the lines of fits that are seen.
  Obstacles obstacles();

  /// Where a time and a fraction lie; nothing outside the plot.
  std::optional<drawing::Place> place_of(DataPair value) const;

 private:
  struct Point {
    drawing::Place place;
    DataPair value;
    int row;
    int data_index;
    std::size_t sample_row;
  };
  struct Line {
    std::vector<drawing::Place> places;
    FitResult fit;
    int row;
  };
  /// A full line of the grid of one axis.
  struct GridLine {
    std::int32_t place;
    double value;
  };
  void collect();
  void collect_sets(const Session& session, const Chart& chart);
  void collect_grid(const Session& session, const Chart& chart);
  std::vector<GridLine> lines_of(Canvas& canvas, const AxisMap& map, bool is_y) const;
  DataPoint facts_of(const Point& point) const;
  void add_fit_sayings(Reading& reading);
  std::optional<Reading> snapped_to_point(drawing::Place place, double reach);
  std::optional<Reading> snapped_to_line(drawing::Place place, double reach);
  std::optional<Reading> snapped_to_grid(drawing::Place place, double reach) const;
  Reading free_at(drawing::Place place) const;
  template <class... Tries>
  std::optional<Reading> first_of(const Tries&... tries);

  UnheardReports unheard_;
  std::optional<AxisMap> x_;
  std::optional<AxisMap> y_;
  std::vector<Point> points_;
  std::vector<Line> lines_;
  std::vector<GridLine> x_lines_;
  std::vector<GridLine> y_lines_;
  const Session& session_;
  const Chart chart_;  ///< a copy: an undo may end the record before the chart is drawn anew
  bool is_collected_ = false;
  bool has_several_sets_ = false;
  std::optional<FitResult> last_fit_;
};

}  // namespace tavlo
