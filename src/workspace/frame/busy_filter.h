// BusyFilter: while a calculation runs, the event loop turns inside it so that
// the windows stay alive. Keys and clicks must not reach them meanwhile: they
// could change the data under the fit. Escape asks the fit to stop.
#pragma once

#include <QObject>

#include "project/session.h"

namespace tavlo {

class BusyFilter : public QObject {
  Q_OBJECT

 public:
  explicit BusyFilter(Session& session) : session_(session) {}
  ~BusyFilter() override { set_busy(false); }

  /// Busy shows the hourglass and holds back the input. Calls may nest.
  void set_busy(bool busy);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Session& session_;
  int depth_ = 0;
};

}  // namespace tavlo
