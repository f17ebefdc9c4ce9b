// Report drawing: a drawing as a letter of a text document: it is as wide as the text, moves
// to the next page where it finds no room, and is played where it stands, never as pixels.
#pragma once

#include <QObject>
#include <QSizeF>
#include <QTextCharFormat>
#include <QTextDocument>
#include <QTextObjectInterface>

#include "chart/record/drawing_record.h"

namespace tavlo {

class ReportDrawing : public QObject, public QTextObjectInterface {
  Q_OBJECT
  Q_INTERFACES(QTextObjectInterface)

 public:
  /// `room` is that of a page, in the units of the layout.
  ReportDrawing(QObject* parent, QSizeF room) : QObject(parent), room_(room) {}

  QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
  void drawObject(QPainter* painter, const QRectF& place, QTextDocument* document, int position,
                  const QTextFormat& format) override;

 private:
  QSizeF room_;
};

/// Lets the document hold drawings.
void add_drawings(QTextDocument& document, QSizeF room);

/// The format of the letter that stands for the drawing, which must outlive the document.
QTextCharFormat drawing_format(const DrawingRecord& drawing);

}  // namespace tavlo
