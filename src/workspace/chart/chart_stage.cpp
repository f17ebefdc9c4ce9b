#include "workspace/chart/chart_stage.h"

#include <algorithm>

#include "chart/compose/auto_scale.h"
#include "chart/compose/make_chart.h"
#include "chart/parts/plot_sets.h"
#include "chart/record/canvas.h"
#include "painter/player.h"

namespace tavlo {

using drawing::Place;

namespace {

constexpr double snapping_reach = 10;  // pixels

}  // namespace

bool ChartStage::compose_if_changed() {
  const bool out_of_date = is_out_of_date(session_, chart());
  if (!changed_ && out_of_date == drawn_out_of_date_) return false;
  if (changed_ || !up_to_date_)
    compose(out_of_date);
  else
    drawing_ = out_of_date ? with_out_of_date_sign(session_, chart(), *up_to_date_) : *up_to_date_;
  changed_ = false;
  drawn_out_of_date_ = out_of_date;
  ++compositions_;
  target_ = chart_area(QRectF(QPointF(), view_), drawing_);
  return true;
}

void ChartStage::compose(bool out_of_date) {
  readout_.reset();
  SetAutoScale(session_, chart());
  drawing_ = fl_Make_WMF(session_, index_);
  up_to_date_.reset();
  if (!out_of_date) up_to_date_ = drawing_;
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
  if (!readout_) readout_ = std::make_unique<Readout>(session_, chart());
  return precise ? readout_->precise_at(place, units(snapping_reach)) : readout_->at(place);
}

}  // namespace tavlo
