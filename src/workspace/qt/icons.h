// Icons: the small pictures of the project tree and the window titles, drawn by
// the program itself so that they are crisp at any scale of the screen.
#pragma once

#include <QIcon>

namespace tavlo {

/// The icon of a key: "tavlo", "doc", "editor", "pc", "graph", "recycle",
/// "trash". An unknown key gives an empty icon.
QIcon icon(const QString& key);

}  // namespace tavlo
