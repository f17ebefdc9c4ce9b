// Chart drags: what the mouse does on a chart from the press of its button to the
// release: draws the frame of a zoom, moves a part, or draws a new mark.
#pragma once

#include <QPainter>
#include <functional>
#include <memory>

#include "chart/parts/marks.h"
#include "workspace/chart/chart_stage.h"
#include "workspace/chart/movable_parts.h"

namespace tavlo {

/// Frames and lines shorter than this are slips of the hand.
inline constexpr double shortest_drag = 5;  // pixels

/// Pixels are those of the view.
class ChartDrag {
 public:
  explicit ChartDrag(const QPointF& from) : from_(from), at_(from) {}
  virtual ~ChartDrag() = default;

  void move_to(const QPointF& at) {
    at_ = at;
    moved();
  }
  /// A release where the mouse has been already is no move.
  void release_at(const QPointF& at) {
    if (at != at_) move_to(at);
  }
  virtual void finish() = 0;
  virtual void cancel() {}
  virtual void paint(QPainter&) const {}

 protected:
  virtual void moved() {}
  const QPointF& from() const { return from_; }
  const QPointF& at() const { return at_; }

 private:
  QPointF from_;
  QPointF at_;
};

/// A frame; at its end the chart shows what was in it.
class ZoomDrag : public ChartDrag {
 public:
  ZoomDrag(ChartStage& stage, const QPointF& from) : ChartDrag(from), stage_(stage) {}
  void finish() override;
  void paint(QPainter& painter) const override;

 private:
  ChartStage& stage_;
};

/// The paper under the hand: what is seen moves with it.
class PanDrag : public ChartDrag {
 public:
  PanDrag(ChartStage& stage, const QPointF& from) : ChartDrag(from), stage_(stage), last_(from) {}
  void finish() override {}

 protected:
  void moved() override;

 private:
  ChartStage& stage_;
  QPointF last_;
};

/// A part under the hand. The place that was taken hold of stays on the chart.
class MoveDrag : public ChartDrag {
 public:
  MoveDrag(ChartStage& stage, MovablePart part, const QPointF& from)
      : ChartDrag(from), stage_(stage), move_(stage, part) {}
  void finish() override {}
  void cancel() override;

 protected:
  void moved() override;

 private:
  ChartStage& stage_;
  PartMove move_;
  bool under_way_ = false;
};

/// A new mark from one end to the other, or at the place of the release. `made`
/// gets the two places.
class MarkDrag : public ChartDrag {
 public:
  using Made = std::function<void(drawing::Place from, drawing::Place to)>;
  MarkDrag(ChartStage& stage, MarkKind kind, const QPointF& from, Made made)
      : ChartDrag(from), stage_(stage), kind_(kind), made_(std::move(made)) {}
  void finish() override;
  void paint(QPainter& painter) const override;

 private:
  bool has_two_ends() const { return kind_ == MarkKind::line || kind_ == MarkKind::arrow; }

  ChartStage& stage_;
  MarkKind kind_;
  Made made_;
};

}  // namespace tavlo
