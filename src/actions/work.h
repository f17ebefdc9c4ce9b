// Work: the way of a whole project into the session and what stays of the one that was there.
// Nothing of it is lost: undo brings it back, and where it holds what no file has, a copy of
// it is written first.
#pragma once

#include <string>

#include "project/session.h"

namespace tavlo {

/// Puts a project in the place of the present one. It is the beginning of a work with the
/// file `path` (empty for none); its panels offer the last fit of each set.
void replace_project(Session& session, Project project, const std::string& path);

/// The work that the project is a state of.
const Work& present_work(const Session& session);

/// What the person calls a project: the name of its file, or of what it began with;
/// "Untitled" without either.
std::string title_of(const Session& session, const Project& state);
std::string project_title(const Session& session);

/// The project is what the file holds from now on: it is saved, the charts show the file's
/// name, and the list of recent files begins with it.
void tie_to_file(Session& session, const std::string& path);

/// Charts that show the name of the present file show that of another one.
void show_file_name(Project& project, const std::string& old_path, const std::string& path);

}  // namespace tavlo
