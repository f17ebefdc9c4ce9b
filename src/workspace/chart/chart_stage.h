// ChartStage: a chart as a view of some size shows it: its drawing, which place of
// it lies under which pixel, and what can be read there. A drawing is composed
// when the content of the chart changes, never for a size.
#pragma once

#include <QPointF>
#include <QRectF>
#include <memory>
#include <optional>

#include "chart/compose/readout.h"
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

  /// What the user reads at a place: with `precise`, at the point or line that is
  /// near. Nothing when nothing can be read.
  std::optional<Reading> read(drawing::Place place, bool precise);

 private:
  void note_drawing();

  Session& session_;
  int index_;
  DrawingRecord drawing_;
  std::optional<DrawingRecord> up_to_date_;  // the same without the sign of old data
  QSizeF view_;
  QRectF target_;
  std::unique_ptr<Readout> readout_;  // of the drawing at hand, made when first asked
  int compositions_ = 0;
};

}  // namespace tavlo
