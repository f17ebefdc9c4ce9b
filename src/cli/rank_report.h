// Rank report: the plotting positions of one file.
#pragma once

#include <string>

#include "files/point_list.h"

namespace tavlo::cli {

/// A ranked set, and the rows that it was made from.
struct RankedRows {
  const Sample& sample;
  const DataRows& data;
};

/// Prints one JSON object on a line, piece by piece: a million rows are not gathered first.
void print_rank_json(const RankedRows& ranked);

/// Prints lines with a table.
void print_rank_table(const std::string& file, const RankedRows& ranked);

}  // namespace tavlo::cli
