#include "workspace/chart_window.h"

#include <QPainter>
#include <algorithm>

#include "chart/auto_scale.h"
#include "chart/make_chart.h"
#include "painter/player.h"

namespace tavlo {

namespace {

/// The part of the window that the drawing fills: all of it, unless that would
/// stretch the drawing until its labels collide.
QRectF place_for(const DrawingRecord& drawing, const QSizeF& window) {
  constexpr double least_stretch = 0.85;
  constexpr double most_stretch = 1.3;
  const double shape = static_cast<double>(drawing.width) / drawing.height;
  const double width = std::min(window.width(), window.height() * shape * most_stretch);
  const double height = std::min(window.height(), width / (shape * least_stretch));
  return {(window.width() - width) / 2, (window.height() - height) / 2, width, height};
}

}  // namespace

ChartWindow::ChartWindow(Session& session, int chart_index, QWidget* parent)
    : QWidget(parent), session_(session), index_(chart_index) {
  setAccessibleName(tr("Chart"));
  setFocusPolicy(Qt::StrongFocus);
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
}

void ChartWindow::compose_if_changed() {
  if (!changed_) return;
  changed_ = false;
  SetAutoScale(session_, session_.gChart(index_));
  drawing_ = fl_Make_WMF(session_, index_);
  ++compositions_;
  update();
}

void ChartWindow::paintEvent(QPaintEvent*) {
  if (drawing_.width <= 0 || drawing_.height <= 0) return;
  QPainter painter(this);
  PlayChart(painter, drawing_, place_for(drawing_, size()));
}

}  // namespace tavlo
