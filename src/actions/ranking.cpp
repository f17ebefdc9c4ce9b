#include "actions/ranking.h"

#include <cmath>
#include <limits>
#include <span>

#include "actions/adjusted_rank.h"
#include "actions/median_ranks.h"
#include "actions/mode_ranks.h"
#include "actions/row_faults.h"
#include "actions/tie_order.h"
#include "numerics/real.h"
#include "numerics/rounding.h"

namespace tavlo {
namespace {

// A row is 112 bytes, so what costs is the walk through memory. There are two:
// one for tie order and totals, one for ranks, extent and logarithms.

/// Orders the ties and totals the rows into row 0.
void order_and_total(DataSet& data) {
  DataPoint* rows = data.Points.data();
  double fails = 0;
  double susps = 0;
  for (int i = 1, stop = 1; i <= data.Count;) {
    while (stop <= data.Count && (stop == i || rows[stop].X == rows[i].X)) ++stop;
    if (stop - i > 1) order_tied_rows(std::span(rows + i, rows + stop));
    for (; i < stop; ++i) {
      fails += rows[i].Fails;
      susps += rows[i].Susps;
    }
  }
  rows[0].Fails = finite(fails);
  rows[0].Susps = finite(susps);
}

/// Writes XT(2) and clears YT(2); false when X has no logarithm.
bool take_logarithm(DataPoint& row) {
  const float size = std::fabs(row.X);
  if (!(size > 0.0F && size <= std::numeric_limits<float>::max())) return false;
  row.XT[2] = std::log(static_cast<double>(size));
  row.YT[2] = 0;
  return true;
}

void write_extent(DataSet& data, int first, int last) {
  if (first == 0) return;
  data.XMin = static_cast<double>(data.Points(first).X);
  data.YMin = static_cast<double>(data.Points(first).Y);
  data.XMax = static_cast<double>(data.Points(last).X);
  data.YMax = static_cast<double>(data.Points(last).Y);
}

/// Gives every row the position that `position_of(row, X moves on behind it)`
/// answers, and takes extent and logarithms along. An X without a logarithm
/// ends the logarithms there; it is raised when ranks and extent are done.
template <class PositionOf>
void rank_rows(DataSet& data, PositionOf position_of) {
  DataPoint* rows = data.Points.data();
  int first = 0;
  int last = 0;
  int without_logarithm = 0;
  for (int i = 1; i <= data.Count; ++i) {
    DataPoint& row = rows[i];
    row.Y = ToSingle(finite(position_of(row, i == data.Count || rows[i + 1].X != row.X)));
    if (row.Fails > 0) {
      if (first == 0) first = i;
      last = i;
    }
    if (without_logarithm == 0 && !take_logarithm(row)) without_logarithm = i;
  }
  write_extent(data, first, last);
  if (without_logarithm != 0) ln(abs(Real(static_cast<double>(rows[without_logarithm].X))));
}

void rank_adjusted(DataSet& data, double units) {
  AdjustedRank rank(units);
  rank_rows(data, [&](const DataPoint& row, bool moves_on) {
    const double position = row.Fails > 0 ? benard_rank(rank.fail(row.Fails), units) : 0.0;
    rank.hold_back(row.Susps);
    if (moves_on) rank.move_on();
    return position;
  });
}

void rank_by_benard(DataSet& data, double units) {
  double failed = 0;
  rank_rows(data, [&](const DataPoint& row, bool) {
    failed += row.Fails;
    return benard_rank(failed, units);
  });
}

/// The rank of the nearest whole number of failures. Above the largest exact
/// count the table would hold Benard's ranks: those are taken without a table,
/// whose size a careless count would dictate.
void rank_exactly(DataSet& data, double units) {
  const std::int32_t whole_units = ToInt32(units);
  const bool by_table = whole_units <= largest_exact_count;
  Slots<double> table;
  if (by_table) fn_MedianRanks(false, table, 0.5, whole_units, 1e-12);
  double failed = 0;
  rank_rows(data, [&](const DataPoint& row, bool) {
    failed += row.Fails;
    const std::int32_t order = ToInt32(failed);
    if (by_table || order <= 0) return table(order);
    return benard_rank(order, whole_units);
  });
}

void rank_set(DataSet& data, bool benard) {
  if (data.Count > data.Points.bound()) throw RunTimeError(run_time::subscript);
  DataPoint& summary = data.Points(0);
  summary.Order |= benard ? rank_state::with_benard : rank_state::without_benard;
  order_and_total(data);
  const double units = finite(summary.Fails + summary.Susps);
  if (units + 0.4 == 0.0) throw RunTimeError(run_time::division_by_zero);
  if (summary.Susps >= 1) {
    rank_adjusted(data, units);
  } else if (benard) {
    rank_by_benard(data, units);
  } else {
    rank_exactly(data, units);
  }
  rank_failure_modes(data);
}

}  // namespace

void Make_Ranks(ErrorReporter& reporter, bool benard, DataSet& data) {
  const auto words = [&data](ErrorReporter& to) {
    to.add_lines({"Median Rank Error: "});
    add_zero_time_line(to, data);
    to.add_lines({"Make_Ranks routine:"});
  };
  guarded(reporter, words, [&] {
    if ((data.Points(0).Order & rank_state::untouchable) != 0) return;
    rank_set(data, benard);
  });
}

}  // namespace tavlo
