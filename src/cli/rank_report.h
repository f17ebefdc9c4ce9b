// Rank report: the plotting positions of one data set.
#pragma once

#include <string>

#include "files/point_list.h"

namespace tavlo::cli {

/// A ranked set, and the rows that it was made from.
struct RankedRows {
  const Sample& sample;
  const DataRows& data;
};

/// Prints one JSON object of a data set on a line, piece by piece: a million rows are not gathered
/// first.
void print_rank_json(const std::string& set, const RankedRows& ranked);

/// Prints a heading for `subject` and lines with a table.
void print_rank_table(const std::string& subject, const RankedRows& ranked);

}  // namespace tavlo::cli
