// Made project: the project that a command writes: the data sets of its files with their fits,
// a chart that shows them, and a log that begins with its head line. It opens in the window as
// if it had been made there.
#pragma once

#include <optional>
#include <string>

#include "cli/answered_session.h"

namespace tavlo::cli {

class MadeProject {
 public:
  MadeProject(const std::string& path, bool strict);

  /// Begins with a project instead: it is kept whole, and answers are added to its sets.
  void go_on_with(const Project& project);
  bool goes_on() const { return goes_on_; }

  /// Adds a data set by that name, its fits and the answers to it.
  void add(SetWork& work, const std::string& name);

  void set_date(const DateTime& day) { answered_.set_date(day); }

  Session& session() { return answered_.session(); }

  /// Writes the file. What is wrong, as "PATH: what", when that can't be done.
  std::optional<std::string> write();

 private:
  void take_titles(const Project& from);
  void take_fits(const SetWork& work, int set);

  std::string path_;
  AnsweredSession answered_;
  bool goes_on_ = false;
};

/// Writes a file; the one that was there is kept as `path~`. What is wrong, as "PATH: what".
std::optional<std::string> write_keeping_former(const std::string& path, std::string_view bytes);

/// Writes a project; the file that was there is kept as `path~`. Tells where it needs other
/// letters than older programs know, unless `was_utf8`. What is wrong, as "PATH: what".
std::optional<std::string> write_project_file(const std::string& path, const Project& project,
                                              bool was_utf8);

}  // namespace tavlo::cli
