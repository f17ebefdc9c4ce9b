// File faults: what a person is told when a file can't be read or written: the box of every
// run-time error, with the file, the line and what was wrong in it.
#pragma once

#include <string>

#include "files/project_file.h"
#include "ports/file_system.h"
#include "project/session.h"

namespace tavlo {

/// One box. The program goes on.
void tell_fault(Session& session, const std::string& path, const ProjectFault& fault);
void tell_fault(Session& session, const std::string& path, const FileResult& fault);

}  // namespace tavlo
