// Printed pages: what all printed texts share: their font, the head of a page with the title
// and the page's number, and the range of pages that the print dialog asked for.
#pragma once

#include <QFont>
#include <QPainter>
#include <QPrinter>
#include <functional>

namespace tavlo {

QFont printed_font();

/// The room of a page without its margins, in the printer's pixels.
QRectF printed_page(const QPrinter& printer);

struct PrintedPages {
  QString title;
  int count = 0;                                ///< of the whole
  std::function<void(QPainter&, int)> content;  ///< of a page from 0, below its head
};

/// How much of a page the head takes.
double head_height(QPrinter& printer);

/// Paints the pages that the printer was told, `most_pages` at most. False when a page
/// can't be had.
bool paint_pages(QPrinter& printer, QPainter& painter, const PrintedPages& pages, int most_pages);

}  // namespace tavlo
