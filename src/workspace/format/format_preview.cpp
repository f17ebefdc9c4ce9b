#include "workspace/format/format_preview.h"

#include <QPainter>

#include "painter/player.h"

namespace tavlo {

FormatPreview::FormatPreview(FormatDraft& draft) : draft_(draft) {
  setObjectName(QStringLiteral("pic_Preview"));
  setAccessibleName(tr("Preview"));
}

void FormatPreview::paintEvent(QPaintEvent*) {
  const DrawingRecord& drawing = draft_.drawing();
  if (drawing.width <= 0 || drawing.height <= 0) return;
  const QSizeF size =
      QSizeF(drawing.width, drawing.height).scaled(this->size(), Qt::KeepAspectRatio);
  QPainter painter(this);
  PlayChart(painter, drawing, QRectF(QPointF((width() - size.width()) / 2, 0), size));
}

}  // namespace tavlo
