#include "workspace/frame/text_printing.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QTextDocument>

#include "workspace/frame/printed_pages.h"
#include "workspace/qt/rich_text_document.h"

namespace tavlo {

namespace {

/// A column holds a number of seven digits, as on the screen.
void lay_out(QTextDocument& document, QPrinter& printer, const QSizeF& page) {
  document.documentLayout()->setPaintDevice(&printer);
  document.setDefaultFont(printed_font());
  document.setDocumentMargin(0);
  QTextOption option = document.defaultTextOption();
  // In the screen's pixels: the layout itself scales tabs to the printer.
  option.setTabStopDistance(
      QFontMetricsF(printed_font()).horizontalAdvance(QStringLiteral("8888.8888")));
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  document.setDefaultTextOption(option);
  document.setPageSize(page);
}

}  // namespace

bool print_text(QPrinter& printer, const QString& title, const RichText& text, int most_pages) {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  const double head = head_height(printer);
  const QSizeF page = printed_page(printer).size() - QSizeF(0, head);
  QTextDocument document;
  lay_out(document, printer, page);
  append_rich_text(document, text);
  const auto content = [&](QPainter& on, int number) {
    const QRectF part(QPointF(0, number * page.height()), page);
    on.save();
    on.translate(0, head - part.top());
    document.drawContents(&on, part);
    on.restore();
  };
  return paint_pages(printer, painter, {title, document.pageCount(), content}, most_pages) &&
         painter.end();
}

}  // namespace tavlo
