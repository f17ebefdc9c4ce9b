#include "actions/tie_order.h"

#include <algorithm>

namespace tavlo {
namespace {

using Row = std::span<DataPoint>::iterator;

bool has_failures(const DataPoint& row) { return row.Fails > 0; }
bool gives_way(const DataPoint& row) { return row.Susps >= 1; }

/// No failures and less than one suspension: it neither moves nor lets pass.
bool is_wall(const DataPoint& row) { return !has_failures(row) && !gives_way(row); }

bool is_pure_failure(const DataPoint& row) { return has_failures(row) && !(row.Susps > 0); }

/// Failures with a part of a suspension: only a pure suspension moves past it.
bool is_threshold(const DataPoint& row) {
  return has_failures(row) && row.Susps > 0 && !gives_way(row);
}

/// A stable partition that takes no memory where there is nothing to move.
template <class Predicate>
Row move_ahead(Row first, Row last, Predicate predicate) {
  if (std::is_partitioned(first, last, predicate))
    return std::partition_point(first, last, predicate);
  return std::stable_partition(first, last, predicate);
}

/// Pure failures move ahead of the rows that hold both, up to a threshold.
void order_rows_with_failures(Row first, Row last) {
  while (first != last) {
    const Row stop = std::find_if(first, last, is_threshold);
    move_ahead(first, stop, is_pure_failure);
    first = stop == last ? last : stop + 1;
  }
}

}  // namespace

// An exchange depends on the kinds of the two rows alone, and the kinds that may
// pass each other form an order: pure failures < both < pure suspensions. So the
// exchanges end in one and the same arrangement in whatever sequence they come.
void order_tied_rows(std::span<DataPoint> rows) {
  Row first = rows.begin();
  while (first != rows.end()) {
    const Row stop = std::find_if(first, rows.end(), is_wall);
    const Row suspensions = move_ahead(first, stop, has_failures);
    order_rows_with_failures(first, suspensions);
    first = stop == rows.end() ? stop : stop + 1;
  }
}

}  // namespace tavlo
