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
/// A comment or mode that would make a row longer than a line may be is left out of it.
std::string write_separated_text(const DataSet& data);

/// How many rows lose their comment or mode so.
std::size_t rows_too_long(const DataSet& data);

}  // namespace tavlo
