// Printing: the contents of windows on paper, or in a PDF file by way of the
// platform's print dialog.
#pragma once

#include <QPrinter>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "chart/record/drawing_record.h"
#include "chart/report/report.h"
#include "project/rich_text.h"
#include "workspace/frame/table_printing.h"

namespace tavlo {

/// What is to be printed.
struct PrintJob {
  QString title;
  bool wide = false;  ///< wider than high: the page lies
  /// `most_pages` at most; false when the printer can't be used.
  std::function<bool(QPrinter&, int most_pages)> print;
};

/// The drawing as large as the page allows in its own shape, in the middle.
PrintJob chart_job(const QString& title, const DrawingRecord& drawing);

/// All rows of a table, as text.
PrintJob table_job(const PrintedTable& table);

/// All lines and tables of a text.
PrintJob text_job(const QString& title, const RichText& text);

/// What is to be printed as a PDF file; empty when it can't be made.
std::string pdf_file(const PrintJob& job, PaperSize paper);

/// Writes a file of that name; it tells what doesn't work.
using WriteFile = std::function<void(const std::string& path, const std::string& bytes)>;

/// The printer that the user has set up, and its dialogs. Each returns when the
/// user is done with it.
class Printing {
 public:
  /// False where there is no printer to be set up.
  bool set_up(QWidget* parent);
  /// Why nothing was printed, as a sentence; empty when all was, and when the user cancelled.
  /// A PDF file is handed to `write`, so that no half one is left.
  QString print(QWidget* parent, const PrintJob& job, const WriteFile& write);
  void preview(QWidget* parent, const PrintJob& job);

 private:
  QPrinter& printer_for(const PrintJob& job);
  QPrinter& printer();

  std::unique_ptr<QPrinter> printer_;  // asks the system for its printers, so not before it is used
};

}  // namespace tavlo
