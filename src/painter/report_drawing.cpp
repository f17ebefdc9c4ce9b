#include "painter/report_drawing.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>

#include "painter/player.h"

namespace tavlo {

namespace {

constexpr int object_type = QTextFormat::UserObject + 1;
constexpr int drawing_property = QTextFormat::UserProperty + 1;

const DrawingRecord& drawing_of(const QTextFormat& format) {
  const auto* const drawing = format.property(drawing_property).value<const void*>();
  return *static_cast<const DrawingRecord*>(drawing);
}

}  // namespace

QSizeF ReportDrawing::intrinsicSize(QTextDocument*, int, const QTextFormat& format) {
  constexpr double most_of_a_page = 0.9;
  const DrawingRecord& drawing = drawing_of(format);
  return QSizeF(drawing.width, drawing.height)
      .scaled(room_.width(), room_.height() * most_of_a_page, Qt::KeepAspectRatio);
}

void ReportDrawing::drawObject(QPainter* painter, const QRectF& place, QTextDocument*, int,
                               const QTextFormat& format) {
  painter->save();
  PlayChart(*painter, drawing_of(format), place);
  painter->restore();
}

void add_drawings(QTextDocument& document, QSizeF room) {
  document.documentLayout()->registerHandler(object_type, new ReportDrawing(&document, room));
}

QTextCharFormat drawing_format(const DrawingRecord& drawing) {
  QTextCharFormat format;
  format.setObjectType(object_type);
  format.setProperty(drawing_property, QVariant::fromValue(static_cast<const void*>(&drawing)));
  return format;
}

}  // namespace tavlo
