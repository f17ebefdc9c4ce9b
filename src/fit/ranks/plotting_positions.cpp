#include "fit/ranks/plotting_positions.h"

#include <vector>

#include "fit/ranks/adjusted_rank.h"
#include "fit/ranks/median_ranks.h"
#include "numerics/rounding.h"

namespace tavlo {
namespace {

/// Gives every row the position that `position_of(row)` answers.
template <class PositionOf>
void rank_by(Sample& sample, PositionOf position_of) {
  sample.rank.resize(sample.size());
  for (std::size_t i = 0; i < sample.size(); ++i) sample.rank[i] = ToSingle(position_of(i));
}

bool moves_on_behind(const Sample& sample, std::size_t i) {
  return i + 1 == sample.size() || sample.time[i + 1] != sample.time[i];
}

void rank_adjusted(Sample& sample, double units) {
  AdjustedRank rank(units);
  rank_by(sample, [&](std::size_t i) {
    const double failed = sample.failures[i];
    const double position = failed > 0 ? benard_rank(rank.fail(failed), units) : 0.0;
    rank.hold_back(sample.suspensions[i]);
    if (moves_on_behind(sample, i)) rank.move_on();
    return position;
  });
}

void rank_by_benard(Sample& sample, double units) {
  double failed = 0;
  rank_by(sample, [&](std::size_t i) {
    failed += sample.failures[i];
    return benard_rank(failed, units);
  });
}

/// The rank of the nearest whole number of failures. Above the largest exact count the
/// table would hold Benard's ranks: those are taken without a table, whose size a careless
/// count would dictate.
void rank_exactly(Sample& sample, double units) {
  const double whole_units = round_half_even(units);
  const bool by_table = whole_units <= largest_exact_count;
  std::vector<double> table;
  if (by_table) table = fn_MedianRanks(false, 0.5, ToInt32(whole_units), 1e-12);
  double failed = 0;
  rank_by(sample, [&](std::size_t i) {
    failed += sample.failures[i];
    const double order = round_half_even(failed);
    if (order <= 0) return 0.0;
    return by_table ? table[static_cast<std::size_t>(order)] : benard_rank(order, whole_units);
  });
}

}  // namespace

void rank_rows(Sample& sample) {
  const double units = sample.total_failures + sample.total_suspensions;
  if (sample.total_suspensions >= 1) {
    rank_adjusted(sample, units);
  } else if (sample.ranks == RankKind::benard) {
    rank_by_benard(sample, units);
  } else {
    rank_exactly(sample, units);
  }
}

}  // namespace tavlo
