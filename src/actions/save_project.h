// Save: the project goes to a file, whole or not at all. The former file is kept as `name~`,
// and at no moment is there less than one whole file.
#pragma once

#include <string>

#include "project/session.h"

namespace tavlo {

/// Asks for the file, and about one of that name, and saves; to the name of a data file the
/// data set of that index is exported. False when the project was not saved, because the
/// person or the disk did not want it, which has been told, or because of an export.
bool save_project(Session& session, int data_index = 1);

/// Saves to a file of that name, without a question about it.
bool save_project_as(Session& session, const std::string& path);

/// The number of data sets that have changed since they were last read.
int changed_sets(const Session& session);

}  // namespace tavlo
