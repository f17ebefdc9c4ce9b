// Drawn icon: an SVG drawing whose strokes have the text colour of the palette and whose
// accents have its highlight, both as they are when it is painted: the same drawing serves a
// light and a dark desktop, a grey entry and a selected row.
#pragma once

#include <QIcon>

namespace tavlo {

/// `svg` names these two colours currentColor and accentColor; `key` tells drawings apart.
/// Where the desktop's theme has an icon of `theme_name` that is shown instead. It is looked
/// for when it is first painted: most icons of menus never are, and a search takes long.
QIcon drawn_icon(const QString& key, const QByteArray& svg, const QString& theme_name);

}  // namespace tavlo
