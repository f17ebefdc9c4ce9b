// Data section: a data set as the lines of a project file. The rows stand in the order of
// the sheet. What a file keeps beside them (plotting positions, sums, limits) follows from
// the rows and is made when the section is written.
#pragma once

#include "files/project_reader.h"
#include "files/project_writer.h"
#include "project/records.h"

namespace tavlo {

/// Whether rows that have changed since they were last read are ranked to be written.
enum class Ranking { of_changed_rows, none };

/// Reads a section into `data`; RunTimeErrors of the reader, `data` is of no use then. The
/// set is as it was when it was written: read and ranked, or with changes since. False where
/// the section does not say of which kind its ranks are: they are of the kind `unstated`.
bool RW_Data(ProjectReader& file, DataSet& data, RankKind unstated);

/// Writes the section. Text that a cell can't read goes into the comment of its row.
/// RunTimeErrors of the writer.
void RW_Data(ProjectWriter& file, const DataSet& data, bool fits_current, Ranking ranking);

}  // namespace tavlo
