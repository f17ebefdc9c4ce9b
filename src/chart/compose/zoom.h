// Zoom: a chart's axis limits set by a rectangle on it, step by step, and back.
#pragma once

#include <array>
#include <vector>

#include "chart/record/drawing_record.h"
#include "numerics/error_reporter.h"
#include "project/chart_records.h"

namespace tavlo {

/// The views that were left by zooming in, the first one at the bottom. It
/// belongs to the window; a chart's record holds only the view of the moment.
class ZoomStack {
 public:
  /// Zooms to the part of the plot box between two corners, given in logical units
  /// in any order and held within the plot box. The new limits are held: their
  /// automatic flags go off. False, and nothing changes, when a side of the part
  /// is shorter than `shortest` units or its limits can't be told apart.
  bool push(Chart& chart, drawing::Place corner, drawing::Place opposite, double shortest = 1);

  /// Back by one step, flags included. False when there is none.
  bool pop(Chart& chart);

  /// Back to the view before the first step. False when there is none.
  bool all_out(Chart& chart);

  /// Makes both axes automatic and forgets all steps; SetAutoScale then gives the
  /// limits.
  void to_automatic(Chart& chart);

  /// Forgets all steps when the axes are not as the last step has left them: the
  /// user has set limits or scales by other means, which shall stay.
  void forget_if_changed(const Chart& chart);

  std::size_t depth() const { return views_.size(); }

 private:
  struct AxisView {
    bool auto_max;
    bool auto_min;
    double max;
    double min;
    std::int16_t scale;
    bool operator==(const AxisView&) const = default;
  };
  using View = std::array<AxisView, 2>;
  static View view_of(const Chart& chart);
  static void restore(Chart& chart, const View& view);

  std::vector<View> views_;
  View left_{};  ///< as the last step has left the axes
};

}  // namespace tavlo
