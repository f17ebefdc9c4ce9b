// Printing: the contents of windows on paper, or in a PDF file by way of the
// platform's print dialog.
#pragma once

#include <QPrinter>
#include <QWidget>
#include <functional>
#include <memory>

#include "chart/record/drawing_record.h"

namespace tavlo {

/// What is to be printed.
struct PrintJob {
  QString title;
  bool wide = false;                     ///< wider than high: the page lies
  std::function<bool(QPrinter&)> print;  ///< false when the printer can't be used
};

/// The drawing as large as the page allows in its own shape, in the middle.
PrintJob chart_job(const QString& title, const DrawingRecord& drawing);

/// What a window shows at the moment, no larger than it is on the screen.
PrintJob window_job(const QString& title, QWidget& window);

/// The printer that the user has set up, and its dialogs. Each returns when the
/// user is done with it.
class Printing {
 public:
  void set_up(QWidget* parent);
  /// False when the printer refused; a user who cancels has printed nothing.
  bool print(QWidget* parent, const PrintJob& job);
  void preview(QWidget* parent, const PrintJob& job);

 private:
  QPrinter& printer_for(const PrintJob& job);
  QPrinter& printer();

  std::unique_ptr<QPrinter> printer_;  // asks the system for its printers, so not before it is used
};

}  // namespace tavlo
