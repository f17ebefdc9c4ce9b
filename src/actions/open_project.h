// Open: a file takes the place of the project. It is read whole first: a file that can't be
// read, or a person who thinks better of it, leaves everything as it is. What was there
// before comes back by undo.
#pragma once

#include <string>

#include "project/session.h"

namespace tavlo {

/// Opens a project, a data file of another program or a text with data. Asks for the file
/// where `path` is empty. False when nothing was opened; why has been told.
bool open_project(Session& session, std::string path = {});

/// Opens the file at a place of the list of recent files, 1 to 10.
bool open_recent(Session& session, int place);

}  // namespace tavlo
