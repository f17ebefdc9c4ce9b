// Export: a data set as a file that other programs read. It is no save: what the file can't
// hold of the project is named, and the project stays as unsaved as it was.
#pragma once

#include <string>

#include "project/session.h"

namespace tavlo {

/// True for the name of a data file: .csv is a table, .txt the data notation.
bool is_data_file_name(const std::string& path);

/// True for the one of the two that holds a table, .csv.
bool is_table_file_name(const std::string& path);

/// Writes the data set to the file. False, after a box, when that can't be done; an old file
/// is whole then.
bool export_data(Session& session, int data_index, const std::string& path);

}  // namespace tavlo
