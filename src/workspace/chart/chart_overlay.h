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

/// Lines across the plot through the place that is read.
void paint_hair_cross(QPainter& painter, const QRectF& plot, const QPointF& at);

/// The lines of the grid that hold the place that is read.
void paint_held_lines(QPainter& painter, const QRectF& plot, const QPointF& at, bool upright,
                      bool level);

/// A ring around the point that is read.
void paint_ring(QPainter& painter, const QPointF& at);

/// A ring around the point of the sheet's current row.
void paint_row_ring(QPainter& painter, const QPointF& at);

/// What is read, beside its place and inside the plot.
void paint_words(QPainter& painter, const QRectF& plot, const QPointF& at, const QString& words);

/// From both axes to the place of an answer.
void paint_drop_line(QPainter& painter, const QRectF& plot, const QPointF& at);

}  // namespace tavlo
