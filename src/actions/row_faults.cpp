#include "actions/row_faults.h"

#include <algorithm>
#include <string>

#include "numerics/number_text.h"

namespace tavlo {

namespace {

/// Adds "Row n: ..." for the first row that has the fault.
template <class HasFault, class Words>
void add_first(ErrorReporter& reporter, const DataSet& data, HasFault has_fault, Words words) {
  const int last = std::min(data.Count, data.Points.bound());
  for (int i = 1; i <= last; ++i) {
    const DataPoint& row = data.Points(i);
    if (!has_fault(row)) continue;
    reporter.add_lines(
        {"Row " + std::to_string(row.Order > 0 ? row.Order : i) + ": " + words(row)});
    return;
  }
}

}  // namespace

void add_zero_time_line(ErrorReporter& reporter, const DataSet& data) {
  add_first(
      reporter, data, [](const DataPoint& row) { return row.X == 0.0F; },
      [](const DataPoint&) {
        return std::string("Data X is 0, and a time of 0 has no place on a logarithmic axis.");
      });
}

void add_rank_line(ErrorReporter& reporter, const DataSet& data) {
  add_first(
      reporter, data,
      [](const DataPoint& row) { return row.Fails > 0 && !(row.Y > 0 && row.Y < 1); },
      [](const DataPoint& row) {
        return "the rank " + number_text(static_cast<double>(row.Y), 7) +
               " has no place on probability paper.";
      });
}

}  // namespace tavlo
