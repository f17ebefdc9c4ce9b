#include "workspace/frame/printing.h"

#include <QPageSetupDialog>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <algorithm>

#include "painter/player.h"

namespace tavlo {

namespace {

/// In the printer's pixels, without the margins.
QSizeF page_of(const QPrinter& printer) {
  return printer.pageLayout().paintRectPixels(printer.resolution()).size();
}

bool print_drawing(QPrinter& printer, const DrawingRecord& drawing) {
  QPainter painter;
  if (drawing.width <= 0 || drawing.height <= 0 || !painter.begin(&printer)) return false;
  PlayChart(painter, drawing, QRectF(QPointF(), page_of(printer)));
  return painter.end();
}

bool print_window(QPrinter& printer, QWidget& window) {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  const QSizeF page = page_of(printer);
  const double natural = static_cast<double>(printer.resolution()) / window.logicalDpiX();
  const double scale =
      std::min({natural, page.width() / window.width(), page.height() / window.height()});
  painter.scale(scale, scale);
  window.render(&painter);
  return painter.end();
}

}  // namespace

PrintJob chart_job(const QString& title, const DrawingRecord& drawing) {
  return {title, drawing.width >= drawing.height,
          [&drawing](QPrinter& printer) { return print_drawing(printer, drawing); }};
}

PrintJob window_job(const QString& title, QWidget& window) {
  return {title, window.width() >= window.height(),
          [&window](QPrinter& printer) { return print_window(printer, window); }};
}

QPrinter& Printing::printer() {
  if (!printer_) {
    printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer_->setCreator(QStringLiteral("Tavlo"));
  }
  return *printer_;
}

QPrinter& Printing::printer_for(const PrintJob& job) {
  printer().setPageOrientation(job.wide ? QPageLayout::Landscape : QPageLayout::Portrait);
  printer().setDocName(job.title);
  return printer();
}

void Printing::set_up(QWidget* parent) {
  QPageSetupDialog dialog(&printer(), parent);
  dialog.exec();
}

bool Printing::print(QWidget* parent, const PrintJob& job) {
  QPrintDialog dialog(&printer_for(job), parent);
  dialog.setWindowTitle(QStringLiteral("Print ") + job.title);
  return dialog.exec() != QDialog::Accepted || job.print(printer());
}

void Printing::preview(QWidget* parent, const PrintJob& job) {
  QPrintPreviewDialog dialog(&printer_for(job), parent);
  dialog.setWindowTitle(QStringLiteral("Print Preview ") + job.title);
  QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                   [&job](QPrinter* page) { job.print(*page); });
  dialog.exec();
}

}  // namespace tavlo
