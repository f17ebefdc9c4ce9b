// ChildWindow: one window of the project inside the frame. Closing it only
// hides it; the project tree brings it back.
#pragma once

#include <QMdiSubWindow>

#include "workspace/frame/window_key.h"

namespace tavlo {

class ChildWindow : public QMdiSubWindow {
  Q_OBJECT

 public:
  ChildWindow(QWidget* content, WindowKey key, const QString& title);

  Block block() const { return key_.block; }
  int index() const { return key_.index; }
  QString node_key() const { return key_.text(); }

  void set_title(const QString& title);

  /// Shows the window, out of an icon if need be, and gives it the focus.
  void bring_to_front();
  /// Shows the window without making it the active one.
  void show_behind();
  /// Takes a tool bar above the content.
  void add_bar(QWidget* bar);

 signals:
  /// The user closed the window; it is hidden already.
  void recycled();

  /// The user, not a layout, gave the window another place or size.
  void moved_by_user();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  WindowKey key_;
  QRect geometry_at_press_;
  bool is_quiet_ = false;
};

}  // namespace tavlo
