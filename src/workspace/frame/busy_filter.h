// BusyFilter: while a calculation runs, the event loop turns inside it so that
// the windows stay alive. Keys and clicks must not reach them meanwhile: they
// could change the data under the fit. Escape asks it to stop.
#pragma once

#include <QObject>

#include "workspace/qt/qt_progress.h"

namespace tavlo {

class BusyFilter : public QObject {
  Q_OBJECT

 public:
  explicit BusyFilter(QtProgress& progress) : progress_(progress) {}
  ~BusyFilter() override { set_busy(false); }

  /// Busy shows the hourglass and holds back the input. Calls may nest.
  void set_busy(bool busy);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QtProgress& progress_;
  int depth_ = 0;
};

}  // namespace tavlo
