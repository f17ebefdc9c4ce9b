// Headless columns: what the columns of a table without a header line are, told from
// all of its rows: times, then a status or counts.
#pragma once

#include <vector>

#include "files/column_names.h"
#include "files/read_fault.h"
#include "files/table_rows.h"

namespace tavlo {

/// Looks at all `rows` and fills `columns`. A second column of status words, or of 1 and
/// 0 alone, is a status, and so is any where the person said which values mean failed
/// (`status_told`); other numbers are counts. Between tabs, as a copied sheet has
/// them, failures and suspensions may stand side by side, then mode and comment. Refuses
/// what may be a list of times.
std::optional<ReadFault> tell_columns(TableRows rows, bool status_told,
                                      std::vector<DataColumn>& columns);

}  // namespace tavlo
