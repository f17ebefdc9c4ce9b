// ChildWindow: one window of the project inside the frame. Closing it only
// hides it; the project tree brings it back.
#pragma once

#include <QMdiSubWindow>

namespace tavlo {

class ChildWindow : public QMdiSubWindow {
  Q_OBJECT

 public:
  /// `node_key` names the window in the project tree: "D1", "F1", "C1", "L1".
  ChildWindow(QWidget* content, const QString& node_key, const QString& title, const QIcon& icon);

  const QString& node_key() const { return node_key_; }

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
  QString node_key_;
  QRect geometry_at_press_;
  bool is_quiet_ = false;
};

}  // namespace tavlo
