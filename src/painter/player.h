// Player: paints a drawing record with QPainter, into a window, a picture, a page
// or a printer, at any size. Nothing is composed anew for another size.
#pragma once

#include <QPainter>
#include <QRectF>

#include "chart/record/drawing_record.h"

namespace tavlo {

/// Fills `target` (in the painter's coordinates) with the whole drawing, width
/// and height stretched apart. Lines keep the scale of the width but never fall
/// below one device pixel, upright and level ones stand on whole pixels. Letters
/// are not stretched: they follow the smaller scale, so that labels which keep
/// clear of each other in the drawing do so in a window of any shape. A drawing
/// without a size paints nothing. The painter comes back as it was.
void PlayChart(QPainter& painter, const DrawingRecord& drawing, const QRectF& target);

}  // namespace tavlo
