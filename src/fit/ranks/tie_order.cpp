#include "fit/ranks/tie_order.h"

#include <algorithm>

namespace tavlo {
namespace {

using Place = std::span<std::int32_t>::iterator;

bool has_failures(const SampleRow& row) { return row.failures > 0; }
bool gives_way(const SampleRow& row) { return row.suspensions >= 1; }

/// No failures and less than one suspension: it neither moves nor lets pass.
bool is_wall(const SampleRow& row) { return !has_failures(row) && !gives_way(row); }

bool is_pure_failure(const SampleRow& row) { return has_failures(row) && !(row.suspensions > 0); }

/// Failures with a part of a suspension: only a pure suspension moves past it.
bool is_threshold(const SampleRow& row) {
  return has_failures(row) && row.suspensions > 0 && !gives_way(row);
}

/// A question about rows, asked of their entry numbers.
struct Asked {
  std::span<const SampleRow> rows;
  bool (*question)(const SampleRow&);

  bool operator()(std::int32_t entry) const {
    return question(rows[static_cast<std::size_t>(entry) - 1]);
  }
};

/// A stable partition that takes no memory where there is nothing to move.
Place move_ahead(Place first, Place last, const Asked& asked) {
  if (std::is_partitioned(first, last, asked)) return std::partition_point(first, last, asked);
  return std::stable_partition(first, last, asked);
}

/// Pure failures move ahead of the rows that hold both, up to a threshold.
void order_rows_with_failures(std::span<const SampleRow> rows, Place first, Place last) {
  while (first != last) {
    const Place stop = std::find_if(first, last, Asked{rows, is_threshold});
    move_ahead(first, stop, {rows, is_pure_failure});
    first = stop == last ? last : stop + 1;
  }
}

}  // namespace

// An exchange depends on the kinds of the two rows alone, and the kinds that may
// pass each other form an order: pure failures < both < pure suspensions. So the
// exchanges end in one and the same arrangement in whatever sequence they come.
void order_tied_rows(std::span<const SampleRow> rows, std::span<std::int32_t> tied) {
  Place first = tied.begin();
  while (first != tied.end()) {
    const Place stop = std::find_if(first, tied.end(), Asked{rows, is_wall});
    const Place suspensions = move_ahead(first, stop, {rows, has_failures});
    order_rows_with_failures(rows, first, suspensions);
    first = stop == tied.end() ? stop : stop + 1;
  }
}

}  // namespace tavlo
