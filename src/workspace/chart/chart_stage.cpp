#include "workspace/chart/chart_stage.h"

#include <algorithm>

#include "chart/compose/answer_marks.h"
#include "chart/compose/make_chart.h"
#include "chart/parts/plot_sets.h"
#include "chart/record/canvas.h"
#include "chart/scales/chart_view.h"
#include "painter/player.h"

namespace tavlo {

using drawing::Place;

namespace {

constexpr double reach = 5;  // pixels, of what holds the pointer
constexpr double precise_reach = 10;

}  // namespace

void ChartStage::compose() {
  readout_.reset();
  answered_.reset();
  drawing_ = fl_Make_WMF(session_, index_);
  up_to_date_.reset();
  if (!is_out_of_date(session_, chart())) up_to_date_ = drawing_;
  note_drawing();
}

void ChartStage::show_age() {
  if (!up_to_date_) return compose();
  const bool is_old = is_out_of_date(session_, chart());
  drawing_ = is_old ? with_out_of_date_sign(session_, chart(), *up_to_date_) : *up_to_date_;
  note_drawing();
}

void ChartStage::note_drawing() {
  ++compositions_;
  target_ = chart_area(QRectF(QPointF(), view_), drawing_);
}

void ChartStage::set_view(const QSizeF& view) {
  view_ = view;
  target_ = chart_area(QRectF(QPointF(), view_), drawing_);
}

QPointF ChartStage::pixel(Place place) const {
  return target_.topLeft() + QPointF(place.x * target_.width() / drawing_.width,
                                     place.y * target_.height() / drawing_.height);
}

Place ChartStage::place(const QPointF& pixel) const {
  if (target_.isEmpty()) return {};
  const QPointF in = pixel - target_.topLeft();
  const double x = std::clamp(in.x() / target_.width(), 0.0, 1.0);
  const double y = std::clamp(in.y() / target_.height(), 0.0, 1.0);
  return {to_unit(x * drawing_.width), to_unit(y * drawing_.height)};
}

QRectF ChartStage::area(const drawing::Rectangle& units) const {
  return {pixel({units.left, units.top}), pixel({units.right, units.bottom})};
}

QRectF ChartStage::plot_area() const {
  const ChartItem& plot = chart().Boxes(chart_item::plot_box);
  return area({plot.Left, plot.Top, plot.Left + plot.Width, plot.Top + plot.Height});
}

double ChartStage::units(double pixels) const {
  if (target_.isEmpty()) return 0;
  return pixels * std::max(drawing_.width / target_.width(), drawing_.height / target_.height());
}

std::optional<Reading> ChartStage::read(Place place, bool precise) {
  if (target_.isEmpty()) return std::nullopt;
  return precise ? readout().precise_at(place, units(precise_reach))
                 : readout().near_at(place, units(reach));
}

const Chart& ChartStage::answered() {
  if (!has_answer_marks(chart())) return chart();
  if (!answered_) answered_ = with_answers(session_, chart());
  return *answered_;
}

Readout& ChartStage::readout() {
  if (!readout_) readout_ = std::make_unique<Readout>(session_, chart());
  return *readout_;
}

ChartStage::MovedView ChartStage::view_now() const { return {chart().Axes, zoom_depth(chart())}; }

ZoomStep ChartStage::next_step() const {
  return moved_to_ == view_now() ? ZoomStep::last : ZoomStep::own;
}

void ChartStage::zoom_about(const QPointF& at, double x, double y) {
  if (tavlo::zoom_about(chart(), place(at), x, y, next_step())) moved_to_ = view_now();
}

void ChartStage::pan(const QPointF& from, const QPointF& to) {
  if (tavlo::pan(chart(), place(from), place(to), next_step())) moved_to_ = view_now();
}

}  // namespace tavlo
