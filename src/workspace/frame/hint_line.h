// HintLine: the line of hints in the status bar. A hint longer than its room ends in three
// dots instead of in half a letter, and is read whole in its tool tip.
#pragma once

#include <QLabel>

namespace tavlo {

class HintLine : public QLabel {
 public:
  /// Shows a hint in place of the last one.
  void say(const QString& hint);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tavlo
