#include "workspace/frame/printed_pages.h"

#include <QApplication>
#include <QFontMetricsF>
#include <algorithm>

namespace tavlo {

namespace {

void paint_head(QPainter& painter, double width, const PrintedPages& pages, int page) {
  const QRectF head(0, 0, width, painter.fontMetrics().lineSpacing());
  painter.drawText(head, Qt::AlignLeft, pages.title);
  painter.drawText(head, Qt::AlignRight,
                   QObject::tr("Page %1 of %2").arg(page + 1).arg(pages.count));
}

}  // namespace

QFont printed_font() {
  constexpr double points = 9;
  QFont font(QApplication::font().family());
  font.setPointSizeF(points);
  return font;
}

QRectF printed_page(const QPrinter& printer) {
  return {QPointF(), printer.pageLayout().paintRectPixels(printer.resolution()).size()};
}

double head_height(QPrinter& printer) {
  return 2 * QFontMetricsF(printed_font(), &printer).lineSpacing();
}

bool paint_pages(QPrinter& printer, QPainter& painter, const PrintedPages& pages, int most_pages) {
  const int first = std::max(printer.fromPage(), 1);
  const int wanted = printer.toPage() > 0 ? printer.toPage() : pages.count;
  const int last = std::min({wanted, pages.count, first + most_pages - 1});
  for (int page = first; page <= last; ++page) {
    if (page > first && !printer.newPage()) return false;
    painter.setFont(printed_font());
    paint_head(painter, printed_page(printer).width(), pages, page - 1);
    pages.content(painter, page - 1);
  }
  return true;
}

}  // namespace tavlo
