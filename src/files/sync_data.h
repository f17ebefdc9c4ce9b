// Sync_Data: moves a data set between its sheet and its record.
#pragma once

#include "project/session.h"

namespace tavlo {

/// With `sheet_to_record` the sheet's rows replace the record of gData(index);
/// with `rank` the record is ranked; with `rank`, or without `sheet_to_record`,
/// the record is then shown in the sheet. False, after a box, when the index is
/// out of bounds or a cell can't be read; sheet and record then stay apart.
bool Sync_Data(Session& session, int index, bool sheet_to_record, bool rank);

}  // namespace tavlo
