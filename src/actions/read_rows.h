// Reading the rows of a sheet: what has been typed is checked, put in order and ranked.
#pragma once

#include "project/session.h"

namespace tavlo {

/// Reads the rows of a data set as they stand. Blank rows go, and names of failure modes
/// that no row has any more; a row with entries but no time is kept and named in the log.
/// With the setting SortRaw the rows are sorted by time. False, after a box, when a cell
/// can't be read, or the rows can't be ranked: what was read before then stands.
bool read_rows(Session& session, int data_index);

}  // namespace tavlo
