// ChartWindow: shows one chart. A drawing is composed when the content of the
// chart changes and played whenever the window is painted; a resize composes
// nothing.
#pragma once

#include <QWidget>

#include "chart/drawing_record.h"
#include "project/session.h"

namespace tavlo {

class ChartWindow : public QWidget {
  Q_OBJECT

 public:
  ChartWindow(Session& session, int chart_index, QWidget* parent = nullptr);

  /// Notes that the content changed; `compose_if_changed` then draws it once,
  /// however often it changed meanwhile.
  void content_changed() { changed_ = true; }
  void compose_if_changed();

  const DrawingRecord& drawing() const { return drawing_; }
  int compositions() const { return compositions_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  QSize sizeHint() const override { return {700, 420}; }

 private:
  Session& session_;
  int index_;
  bool changed_ = true;
  int compositions_ = 0;
  DrawingRecord drawing_;
};

}  // namespace tavlo
