// Analysis row: what the present analysis puts into a new row of a library: the file, the
// chart's titles, and the life, quality and numbers of the last fit of a set.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "guidance/library_columns.h"
#include "project/session.h"

namespace tavlo {

struct AnalysisRow {
  std::vector<std::string> fields;  ///< one for each column; blank where there is no source
  std::string remark;               ///< why there is no fit in it, or what of it must be known
};

/// Fills the columns of the kind `from_analysis` from the last fit of the set and its data. A
/// column that names several sources has the values of those that have one, with "; " between
/// them. The program finds no confidence bounds: a range has its middle alone.
///
/// One population is the chance of the sources. Of several the one with the lowest slope is the
/// infant mortality, where that is below 1 or there are three, the one with the highest slope
/// the wear-out, where that is above 1 or there are three, and the one left the chance.
AnalysisRow analysis_row(Session& session, int fit_index, std::span<const LibraryColumn> columns);

}  // namespace tavlo
