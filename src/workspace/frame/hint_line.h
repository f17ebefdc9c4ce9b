// HintLine: a line of the status bar: of hints, which follow the mouse, or of what the last
// action had to say, which stays. A text longer than its room ends in three dots instead of
// in half a letter, and is read whole in its tool tip.
#pragma once

#include <QLabel>

namespace tavlo {

class HintLine : public QLabel {
 public:
  /// Shows a text in place of the last one.
  void say(const QString& words);

  QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tavlo
