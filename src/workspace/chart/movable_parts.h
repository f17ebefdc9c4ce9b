// Movable parts: what the user can take hold of on a chart, its movable boxes and
// the marks.
#pragma once

#include <vector>

#include "chart/record/drawing_record.h"
#include "project/chart_records.h"
#include "workspace/chart/chart_stage.h"

namespace tavlo {

struct MovablePart {
  enum class Kind { none, box, mark };
  Kind kind = Kind::none;
  int index = 0;  ///< in Boxes or Texts

  explicit operator bool() const { return kind != Kind::none; }
  bool is_mark() const { return kind == Kind::mark; }
  bool is_box() const { return kind == Kind::box; }
  friend bool operator==(const MovablePart&, const MovablePart&) = default;
};

/// All parts that can be seen, from the lowest to the uppermost.
std::vector<MovablePart> parts_of(ChartStage& stage);

/// The uppermost part at a place, or none.
MovablePart part_at(ChartStage& stage, drawing::Place place);

/// Logical units; empty for a part that isn't there.
drawing::Rectangle area_of(ChartStage& stage, MovablePart part);

/// Moves one part to and fro until it is put down.
class PartMove {
 public:
  PartMove(ChartStage& stage, MovablePart part);

  /// To so many units from where it stood at first.
  void to(std::int32_t right, std::int32_t down);
  /// To where it stood at first.
  void back();

 private:
  ChartItem& item();
  const ChartItem& shown_item();

  ChartStage& stage_;
  MovablePart part_;
  ChartItem before_;
  ChartItem shown_;             ///< where the words of an answer stand that nobody has moved
  DrawingRecord areas_before_;  // without records
};

}  // namespace tavlo
