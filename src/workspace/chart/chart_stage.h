// ChartStage: a chart as a view of some size shows it: its drawing, which place of
// it lies under which pixel, and what can be read there. A drawing is composed
// when the content of the chart changes, never for a size.
#pragma once

#include <QPointF>
#include <QRectF>
#include <memory>
#include <optional>

#include "chart/compose/readout.h"
#include "chart/compose/zoom.h"
#include "chart/record/drawing_record.h"
#include "project/session.h"

namespace tavlo {

class ChartStage {
 public:
  ChartStage(Session& session, int chart_index) : session_(session), index_(chart_index) {}

  Session& session() { return session_; }
  int index() const { return index_; }
  Chart& chart() { return session_.project.charts(index_); }
  const Chart& chart() const { return session_.project.charts(index_); }

  /// The same with its answer marks in their places, as the drawing at hand has them.
  const Chart& answered();

  /// Names the step of the command at work.
  void name_step(const char* step) { session_.step = step; }

  /// Draws the chart as it stands now.
  void compose();
  /// Puts the sign of data that have changed since they were read on the drawing, or takes it
  /// off.
  void show_age();
  const DrawingRecord& drawing() const { return drawing_; }
  int compositions() const { return compositions_; }

  /// The part of a view that the drawing fills: all of it, unless that would
  /// stretch the drawing until its labels collide.
  void set_view(const QSizeF& view);
  const QRectF& target() const { return target_; }
  QRectF area(const drawing::Rectangle& units) const;
  QRectF plot_area() const;
  QPointF pixel(drawing::Place place) const;
  /// Pixels beyond the drawing belong to places at its edge.
  drawing::Place place(const QPointF& pixel) const;
  /// So many pixels in logical units, where they are longer.
  double units(double pixels) const;

  /// What the user reads at a place: at the point or the line of the grid that is near;
  /// with `precise`, of those and of the fits' lines at one that is not so near. Nothing
  /// when nothing can be read.
  std::optional<Reading> read(drawing::Place place, bool precise);
  Readout& readout();

  /// Makes what is seen of each axis so many times as long, about a pixel that stays. Turns
  /// and moves that follow one another are one step of the zoom.
  void zoom_about(const QPointF& at, double x, double y);
  /// Moves what lies under the one pixel under the other.
  void pan(const QPointF& from, const QPointF& to);

 private:
  /// The view that such moves have come to.
  struct MovedView {
    Slots<ChartAxis> axes;
    std::size_t depth = 0;
    friend bool operator==(const MovedView&, const MovedView&) = default;
  };
  MovedView view_now() const;
  ZoomStep next_step() const;
  void note_drawing();

  Session& session_;
  int index_;
  DrawingRecord drawing_;
  std::optional<DrawingRecord> up_to_date_;  // the same without the sign of old data
  QSizeF view_;
  QRectF target_;
  std::unique_ptr<Readout> readout_;  // of the drawing at hand, made when first asked
  std::optional<Chart> answered_;     // likewise
  int compositions_ = 0;
  std::optional<MovedView> moved_to_;
};

}  // namespace tavlo
