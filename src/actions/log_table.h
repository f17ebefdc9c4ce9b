// LogTable: a table in the log.
#pragma once

#include "project/rtf_table.h"
#include "project/session.h"

namespace tavlo {

/// Adds a table to the end of the log. Its columns are as wide as their widest text or, where
/// the table would be wider than paper, as their widest word; all rows have as many cells as
/// the first.
void log_table(Session& session, const TableRows& rows);

}  // namespace tavlo
