// Player: paints a drawing record with QPainter, into a window, a picture, a page
// or a printer, at any size. Nothing is composed anew for another size.
#pragma once

#include <QPainter>
#include <QRectF>

#include "chart/record/drawing_record.h"

namespace tavlo {

/// The part of a room that a drawing fills, in the middle: all of it, unless that
/// would stretch the drawing to more than 1.3 of its shape or less than 0.85, where
/// labels collide. One rule for windows, files and paper.
QRectF chart_area(const QRectF& room, const DrawingRecord& drawing);

/// Paints the whole drawing into its area of `room` (in the painter's coordinates),
/// width and height stretched apart. Symbols, letters and lines are not stretched:
/// they follow the smaller scale, so that labels which keep clear of each other in
/// the drawing do so in a window of any shape. Lines never fall below one device
/// pixel, upright and level ones stand on whole pixels. A drawing without a size
/// paints nothing. The painter comes back as it was.
void PlayChart(QPainter& painter, const DrawingRecord& drawing, const QRectF& room);

}  // namespace tavlo
