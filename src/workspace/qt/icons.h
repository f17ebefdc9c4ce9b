// Icons: the small pictures of commands, windows and the project tree. A command that every
// program has takes the picture of the desktop's own theme; all others are drawings of ours,
// in the colours of the palette at hand, so that they can be read on light and dark grounds
// and are crisp at any scale of the screen.
#pragma once

#include <QIcon>

namespace tavlo {

/// The icon of a key, which is the name of a drawing: "tavlo", "doc", "editor", "pc", "graph",
/// "recycle", "trash", "open", "zoom" ... An unknown key gives an empty icon.
QIcon icon(const QString& key);

}  // namespace tavlo
