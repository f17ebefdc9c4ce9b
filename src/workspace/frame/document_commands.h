// DocumentCommands: what leaves the program as a document: the report of the project, the log
// as a file, and the log's own commands.
#pragma once

#include "workspace/frame/program.h"
#include "workspace/frame/project_windows.h"

namespace tavlo {

class DocumentCommands {
 public:
  DocumentCommands(Program& program, ProjectWindows& windows)
      : program_(program), windows_(windows) {}

  /// True when the log's window is in front.
  bool log_is_in_front() const { return windows_.active_block() == Block::log; }

  void export_report();
  void export_log();
  void choose_log_font();
  void find_in_log();
  void cut_from_log();
  void paste_into_log();

 private:
  Program& program_;
  ProjectWindows& windows_;
};

}  // namespace tavlo
