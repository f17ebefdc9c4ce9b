// Tool bars: the same commands as the menus on two bars: a strip of small buttons, and a
// ribbon of larger ones with words below them, whose arrows open the menus.
#pragma once

#include <QMainWindow>
#include <QToolBar>

#include "workspace/frame/command_registry.h"

namespace tavlo {

class ToolBars : public QObject {
  Q_OBJECT

 public:
  /// Adds both bars to the frame. `front_caption` names the window in front, which is printed.
  ToolBars(QMainWindow& frame, CommandRegistry& commands, std::function<QString()> front_caption);

  QToolBar& strip() { return strip_; }
  QToolBar& ribbon() { return ribbon_; }

  /// All menus at once, for a click on the ground of the frame.
  QMenu& all_menus() { return all_menus_; }

 protected:
  /// The tool tip of a button: its caption and keys, and why it is grey. Fills a bar that is shown.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void add_bar(QToolBar& bar, const char* name, const QString& title);
  void fill(QToolBar& bar);
  void add_buttons(QToolBar& bar);
  void set_up_menus();
  void set_up_print_menu();
  void add_arrow(QToolBar& bar, int command, QMenu& menu);
  void add_menu_button(const QString& caption, QMenu& menu);
  QMenu& menu(const char* path) { return commands_.menu(QString::fromUtf8(path)); }

  QMainWindow& frame_;
  CommandRegistry& commands_;
  std::function<QString()> front_caption_;
  QToolBar strip_;
  QToolBar ribbon_;
  QMenu all_menus_;
  QMenu analysis_;  ///< with the methods by their short names
  QMenu tools_;     ///< with the windows
  QMenu print_;
};

}  // namespace tavlo
