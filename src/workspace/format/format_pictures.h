// Format pictures: pens, symbols and colours as the chart draws them, for the
// buttons of the format dialog.
#pragma once

#include <QIcon>
#include <QPixmap>

#include "workspace/format/pen_look.h"

namespace tavlo {

/// A colour word of the records as one of Qt's, and back.
QColor to_qt_colour(std::int32_t word);
std::int32_t from_qt_colour(const QColor& colour);

/// A patch of the colour.
QIcon colour_picture(std::int32_t colour, const QSize& size);

/// A piece of line, as thick as in a chart of usual size.
QIcon pen_picture(const PenLook& pen, const QSize& size);

/// A symbol that fills a square, in the colours given.
QIcon symbol_picture(int symbol, int side, std::int32_t line, std::int32_t fill, bool filled);

}  // namespace tavlo
