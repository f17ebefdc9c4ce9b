// Rank report: the plotting positions of one file.
#pragma once

#include <functional>
#include <string>

#include "project/records.h"

namespace tavlo::cli {

using Print = std::function<void(const std::string&)>;

/// Prints one JSON object on a line, piece by piece: a million rows are not
/// gathered first.
void print_rank_json(const DataSet& data, const Print& print);

/// Lines with a table.
std::string rank_table(const std::string& file, const DataSet& data);

}  // namespace tavlo::cli
