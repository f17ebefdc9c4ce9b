// Readout: what lies under the pointer, in data units, and what the fit says of
// that place. Built after each composition; asked at each move of the pointer.
#pragma once

#include <optional>
#include <vector>

#include "chart/compose/unheard_reports.h"
#include "chart/scales/plot_coordinates.h"
#include "project/session.h"

namespace tavlo {

enum class SnappedTo { nothing, point, line };

struct Reading {
  double x = 0;                    ///< data units
  double y = 0;                    ///< a fraction on probability scales
  std::optional<double> fraction;  ///< F of the last fit at x
  std::optional<double> time;      ///< where, within the X limits, the last fit reaches y
  SnappedTo snapped = SnappedTo::nothing;
  int row = 0;           ///< of the plot set that was snapped to
  drawing::Place place;  ///< of the reading on the chart: a hair cross stands here
};

class Readout {
 public:
  Readout(const Session& session, const Chart& chart);
  Readout(const Readout&) = delete;
  Readout& operator=(const Readout&) = delete;

  /// The data at a place given in logical units; places outside the plot box are
  /// read at its nearest edge. Nothing when the axes can't be drawn.
  std::optional<Reading> at(drawing::Place place);

  /// The nearest data point within `reach` units, else the nearest fit line, else
  /// the place itself.
  std::optional<Reading> precise_at(drawing::Place place, double reach);

 private:
  struct Point {
    drawing::Place place;
    DataPair value;
    int row;
  };
  struct Line {
    std::vector<drawing::Place> places;
    FitResult fit;
    int row;
  };
  void collect(const Session& session, const Chart& chart);
  void add_fit_sayings(Reading& reading);
  std::optional<Reading> snapped_to_point(drawing::Place place, double reach);
  std::optional<Reading> snapped_to_line(drawing::Place place, double reach);

  UnheardReports unheard_;
  std::optional<AxisMap> x_;
  std::optional<AxisMap> y_;
  std::vector<Point> points_;
  std::vector<Line> lines_;
  std::optional<FitResult> last_fit_;
};

}  // namespace tavlo
