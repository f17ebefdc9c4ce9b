#include "workspace/frame/printing.h"

#include <QDir>
#include <QPageSetupDialog>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QTemporaryFile>
#include <limits>

#include "painter/player.h"
#include "workspace/frame/printed_pages.h"
#include "workspace/frame/text_printing.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

bool print_drawing(QPrinter& printer, const DrawingRecord& drawing) {
  QPainter painter;
  if (drawing.width <= 0 || drawing.height <= 0 || !painter.begin(&printer)) return false;
  PlayChart(painter, drawing, QRectF(QPointF(), printed_page(printer).size()));
  return painter.end();
}

constexpr int all_pages = std::numeric_limits<int>::max() / 2;

/// Prints into a file of the program's own; empty when that can't be done.
std::string printed_bytes(QPrinter& printer, const PrintJob& job) {
  QTemporaryFile file;
  if (!file.open()) return {};
  const QString wanted = printer.outputFileName();
  printer.setOutputFileName(file.fileName());
  const bool is_whole = job.print(printer, all_pages);
  printer.setOutputFileName(wanted);
  QFile written(file.fileName());
  if (!is_whole || !written.open(QIODevice::ReadOnly)) return {};
  // The toolkit does not say when there was no room for all of it.
  const QByteArray bytes = written.readAll();
  return bytes.trimmed().endsWith("%%EOF") ? bytes.toStdString() : std::string();
}

// A preview keeps each page that it shows: a sheet of a million rows has 20,000.
constexpr int most_previewed = 100;

}  // namespace

std::string pdf_file(const PrintJob& job, PaperSize paper) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setCreator(QStringLiteral("Tavlo"));
  printer.setDocName(job.title);
  printer.setPageSize(QPageSize(paper == PaperSize::a4 ? QPageSize::A4 : QPageSize::Letter));
  printer.setPageOrientation(job.wide ? QPageLayout::Landscape : QPageLayout::Portrait);
  return printed_bytes(printer, job);
}

PrintJob chart_job(const QString& title, const DrawingRecord& drawing) {
  return {title, drawing.width >= drawing.height,
          [&drawing](QPrinter& printer, int) { return print_drawing(printer, drawing); }};
}

PrintJob table_job(const PrintedTable& table) {
  return {table.title, false, [table](QPrinter& printer, int most_pages) {
            return print_table(printer, table, most_pages);
          }};
}

PrintJob text_job(const QString& title, const RichText& text) {
  return {title, false, [title, text](QPrinter& printer, int most_pages) {
            return print_text(printer, title, text, most_pages);
          }};
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

bool Printing::set_up(QWidget* parent) {
  if (printer().outputFormat() != QPrinter::NativeFormat) return false;
  QPageSetupDialog dialog(&printer(), parent);
  dialog.exec();
  return true;
}

QString Printing::print(QWidget* parent, const PrintJob& job, const WriteFile& write) {
  QPrintDialog dialog(&printer_for(job), parent);
  dialog.setWindowTitle(QStringLiteral("Print ") + job.title);
  if (dialog.exec() != QDialog::Accepted) return {};
  const std::string path = from_qt(printer().outputFileName());
  if (printer().outputFormat() != QPrinter::PdfFormat || path.empty())
    return job.print(printer(), all_pages) ? QString() : QObject::tr("The printer can't be used.");
  const std::string bytes = printed_bytes(printer(), job);
  if (bytes.empty())
    return QObject::tr("The file could not be made: is there room for it in %1?")
        .arg(QDir::tempPath());
  write(path, bytes);
  return {};
}

void Printing::preview(QWidget* parent, const PrintJob& job) {
  QPrintPreviewDialog dialog(&printer_for(job), parent);
  dialog.setWindowTitle(QStringLiteral("Print Preview ") + job.title);
  if (parent) dialog.resize(parent->size() * 9 / 10);
  QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                   [&job](QPrinter* page) { job.print(*page, most_previewed); });
  dialog.exec();
}

}  // namespace tavlo
