#include "fit/ranks/counted_rows.h"

#include <algorithm>

#include "fit/ranks/mode_ranks.h"
#include "fit/ranks/plotting_positions.h"

namespace tavlo {
namespace {

/// A sample with each counted row as two: its first failure, and the rest. What ranking
/// needs of it, and no more.
struct Listing {
  Sample sample;
  std::vector<std::size_t> counted;  ///< rows that were cut in two, as the sample numbers them

  explicit Listing(const Sample& whole) {
    sample.ranks = whole.ranks;
    sample.modes = whole.modes;
    sample.total_failures = whole.total_failures;
    sample.total_suspensions = whole.total_suspensions;
    for (std::size_t i = 0; i < whole.size(); ++i) {
      const bool cut = whole.failures[i] > 1;
      if (cut) counted.push_back(i);
      if (cut) add(whole, i, 1, 0);
      add(whole, i, whole.failures[i] - (cut ? 1 : 0), whole.suspensions[i]);
    }
  }

 private:
  void add(const Sample& whole, std::size_t i, double failures, double suspensions) {
    sample.time.push_back(whole.time[i]);
    sample.failures.push_back(failures);
    sample.suspensions.push_back(suspensions);
    if (!whole.mode.empty()) sample.mode.push_back(whole.mode[i]);
  }
};

}  // namespace

std::vector<std::size_t> rows_ranked_by_count(const Sample& sample, bool within_modes) {
  const bool has_counts = std::any_of(sample.failures.begin(), sample.failures.end(),
                                      [](double failures) { return failures > 1; });
  if (!has_counts || (within_modes && sample.mode.empty())) return {};
  Listing listing(sample);
  if (within_modes)
    rank_failure_modes(listing.sample);
  else
    rank_rows(listing.sample);
  const auto differ = [&](const auto& ranks, std::size_t first) {
    return ranks[first] != ranks[first + 1];
  };
  std::vector<std::size_t> rows;
  for (std::size_t k = 0; k < listing.counted.size(); ++k) {
    const std::size_t first = listing.counted[k] + k;  // each row cut before is one row more
    const bool differs = within_modes ? differ(listing.sample.mode_ordinate, first)
                                      : differ(listing.sample.rank, first);
    if (differs) rows.push_back(listing.counted[k]);
  }
  return rows;
}

}  // namespace tavlo
