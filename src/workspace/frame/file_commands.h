// File commands: what a person does with whole projects at the windows: new, open, save, the
// recent files, and the copies that outlived a crash. The steps are those of the actions;
// here they get their menus, their time and their windows.
#pragma once

#include <QMenu>
#include <functional>
#include <memory>

#include "workspace/frame/program.h"

namespace tavlo {

/// What the frame does for files.
struct FileViews {
  std::function<void()> show_work;    ///< lays out a project that has just taken its place
  std::function<void(int)> show_set;  ///< shows a data set that has come
  std::function<int()> current_set;   ///< the data set that the person works on
};

class FileCommands {
 public:
  FileCommands(Program& program, QWidget& frame, FileViews views);

  /// Fills the submenus of recent files, examples and copies whenever the file menu is opened.
  void attach(QMenu& file, QMenu& recent, QMenu& examples, QMenu& recovery);

  void new_project();
  void open();
  void open_path(const std::string& path);
  void save();

  /// Asks for a data file, shows how it will be read, and adds its rows as a data set.
  void import();

  /// A file that was dropped: projects are opened, other data imported.
  void take_file(const std::string& path);

  /// Before the program ends: asks about unsaved changes of the project, and of each former
  /// one that nothing but undo would bring back. False to stay.
  bool may_leave();

  /// Tells on the status bar of a copy that a crash has left.
  void offer_copy();

 private:
  /// Later, since windows may not end inside an event of their own.
  void begin_work(std::function<bool()> act);
  bool may_leave_project(const std::string& what_of_it);
  void preview_import(const std::string& path, bool may_open);
  void fill_recent(QMenu& menu);
  void fill_examples(QMenu& menu);
  void fill_recovery(QMenu& menu);

  Program& program_;
  Session& session_;
  QWidget& frame_;
  FileViews views_;
  std::unique_ptr<RunningTimer> copies_;
};

}  // namespace tavlo
