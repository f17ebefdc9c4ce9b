// Separated writer: a data set as rows of fields between commas below a line of headings,
// for spreadsheets and for other programs.
#pragma once

#include <string>

#include "project/records.h"

namespace tavlo {

/// The rows in the order of entry, UTF-8, under the headings time, failures, suspensions, mode
/// and comment; but for the time only those that a row has something for. Each number is in the
/// shortest form that reads back equal. Rows that a data file can't hold are left out.
/// Negative times read back as values only with the option.
std::string write_separated_text(const DataSet& data);

}  // namespace tavlo
