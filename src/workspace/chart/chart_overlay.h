// Chart overlay: what a chart's window paints over the drawing for the user's
// eyes alone. Nothing of it is printed or saved.
#pragma once

#include <QPainter>

namespace tavlo {

/// The part that a zoom will show.
void paint_zoom_frame(QPainter& painter, const QRectF& frame);

/// A line that is being drawn.
void paint_draft(QPainter& painter, const QLineF& line);

/// Around the part that the keyboard works on.
void paint_selection(QPainter& painter, const QRectF& area);

/// Lines across the plot through the place that is read; a ring where it was
/// snapped to something.
void paint_hair_cross(QPainter& painter, const QRectF& plot, const QPointF& at, bool snapped);

}  // namespace tavlo
