// LogWindow: shows the project's log. Text reaches it only from the core.
#pragma once

#include <QPlainTextEdit>

#include "project/rich_text.h"

namespace tavlo {

class LogWindow : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit LogWindow(const RichText& log, QWidget* parent = nullptr);

  /// Shows what the log has got since the last time, or has lost again, and scrolls to its
  /// end.
  void refresh();

 protected:
  bool event(QEvent* event) override;

 private:
  void remove_end(int length);

  const RichText& log_;
  RichText shown_;
};

}  // namespace tavlo
