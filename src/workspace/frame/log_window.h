// LogWindow: shows the project's log as the document that it is. Text reaches it only from
// the core.
#pragma once

#include <QTextEdit>
#include <QTimer>
#include <vector>

#include "ports/clipboard.h"
#include "project/rich_text.h"

namespace tavlo {

class LogWindow : public QTextEdit {
  Q_OBJECT

 public:
  explicit LogWindow(const RichText& log, QWidget* parent = nullptr);

  /// Shows what the log has got since the last time, or has lost again, and scrolls to its
  /// end. Many changes at a time are shown a few times a second.
  void refresh();

  /// The selected part in all forms; empty where nothing is.
  ClipboardText selected() const;

 protected:
  bool event(QEvent* event) override;

 private:
  /// A state of the log that was shown, and where it ended in the document.
  struct Shown {
    RichText text;
    int end;
  };

  void show_changes();
  void drop_what_is_gone();

  const RichText& log_;
  std::vector<Shown> shown_{Shown{{}, 0}};
  QTimer pause_;
};

}  // namespace tavlo
