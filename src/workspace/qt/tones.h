// Tones: the few colours that a desktop's palette has no name for, made from the palette at
// hand so that they can be read on light and dark grounds.
#pragma once

#include <QColor>
#include <QPalette>

namespace tavlo {

/// True where light text stands on a dark ground.
bool is_dark(const QPalette& palette);

/// The ground of a field or row that can't be read, and the ink of words about it.
QColor wrong_ground(const QPalette& palette);
QColor wrong_ink(const QPalette& palette);

/// The ink of what is to be read and yet does not count, as rows that are left out: paler than
/// text, and readable where the ink of disabled texts need not be.
QColor quiet_ink(const QPalette& palette);

/// The ground of selected cells, on which text keeps its colour; the full highlight where
/// the palette asks for high contrast.
QColor soft_highlight(const QPalette& palette);

}  // namespace tavlo
