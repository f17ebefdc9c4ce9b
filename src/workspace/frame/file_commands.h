// File commands: what a person does with whole projects at the windows: new, open, save, the
// recent files, and the copies that outlived a crash. The steps are those of the actions;
// here they get their menus, their time and their windows.
#pragma once

#include <QMenu>
#include <functional>
#include <memory>

#include "workspace/frame/program.h"

namespace tavlo {

class FileCommands {
 public:
  /// `show_work` lays out the windows of a project that has just taken another one's place;
  /// `current_set` is the data set that the person works on.
  FileCommands(Program& program, QWidget& frame, std::function<void()> show_work,
               std::function<int()> current_set);

  /// Fills the submenus of recent files and of copies whenever the file menu is opened.
  void attach(QMenu& file, QMenu& recent, QMenu& recovery);

  void new_project();
  void open();
  void open_path(const std::string& path);
  void save();

  /// Before the program ends: asks about unsaved changes. False to stay.
  bool may_leave();

  /// Tells on the status bar of a copy that a crash has left.
  void offer_copy();

 private:
  /// Later, since windows may not end inside an event of their own.
  void begin_work(std::function<bool()> act);
  void fill_recent(QMenu& menu);
  void fill_recovery(QMenu& menu);

  Program& program_;
  Session& session_;
  QWidget& frame_;
  std::function<void()> show_work_;
  std::function<int()> current_set_;
  std::unique_ptr<RunningTimer> copies_;
};

}  // namespace tavlo
