#include "workspace/frame/hint_line.h"

#include <QStylePainter>

namespace tavlo {

void HintLine::say(const QString& words) {
  setText(words);
  setToolTip(words);
}

void HintLine::paintEvent(QPaintEvent*) {
  const QRect room = contentsRect();
  QStylePainter(this).drawItemText(room, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                                   fontMetrics().elidedText(text(), Qt::ElideRight, room.width()),
                                   foregroundRole());
}

}  // namespace tavlo
