#include "fit/search/optimum_search.h"

#include <algorithm>
#include <optional>

#include "fit/parallel.h"
#include "fit/starts/start_pool.h"

namespace tavlo {
namespace {

constexpr std::size_t round_size = 4;      // starts that run before the next look
constexpr std::size_t nested_at_most = 4;  // starts from each contained optimum
constexpr std::size_t whole_search_rows = 400;
constexpr std::size_t middle_rows = 6400;
constexpr std::size_t ends_for_middle = 6;
constexpr std::size_t ends_for_whole = 3;

bool better(const FoundOptimum& a, const FoundOptimum& b) {
  return a.optimum.value < b.optimum.value;
}

class OptimumSearch {
 public:
  OptimumSearch(const MixtureRows& rows, const Fence& fence, Companion& companion)
      : rows_(rows), fence_(fence), companion_(companion) {}

  /// Runs from all starts; `are_finds` counts their ends as finds.
  void run(const std::vector<MixturePoint>& starts, bool are_finds) {
    std::vector<std::optional<Optimum>> ends(starts.size());
    for_each_index(starts.size(),
                   [&](std::size_t i) { ends[i] = optimum_from(rows_, starts[i], fence_); });
    for (const auto& end : ends) {
      outcome_.tried += 1;
      if (end) take(*end, are_finds);
    }
    std::stable_sort(outcome_.optima.begin(), outcome_.optima.end(), better);
    companion_.turn();
    outcome_.stopped = outcome_.stopped || companion_.stop_wanted();
  }

  bool is_over(const SearchOptions& options) const {
    return outcome_.stopped || outcome_.tried >= options.most_starts ||
           (!outcome_.optima.empty() && outcome_.optima.front().finds >= options.wanted_finds);
  }

  SearchOutcome& outcome() { return outcome_; }

 private:
  void take(const Optimum& end, bool is_find) {
    const auto same = [&](const FoundOptimum& known) {
      return is_same_optimum(rows_, known.optimum, end);
    };
    auto found = std::find_if(outcome_.optima.begin(), outcome_.optima.end(), same);
    if (found == outcome_.optima.end())
      found = outcome_.optima.insert(outcome_.optima.end(), {end, 0, 0});
    else if (end.value < found->optimum.value)
      found->optimum = end;
    found->finds += is_find;
    found->agreed += 1;
  }

  const MixtureRows& rows_;
  const Fence fence_;
  Companion& companion_;
  SearchOutcome outcome_;
};

std::vector<MixturePoint> all_nested(const MixtureRows& rows, Populations populations,
                                     const std::vector<MixturePoint>& contained) {
  std::vector<MixturePoint> starts;
  for (const MixturePoint& point : contained)
    for (const MixturePoint& start : nested_starts(rows, populations, point, nested_at_most))
      starts.push_back(start);
  return starts;
}

SearchOutcome search_on(const MixtureRows& rows, Populations populations, double usual_slope,
                        const std::vector<MixturePoint>& contained, const SearchOptions& options,
                        Companion& companion) {
  const Fence fence = Fence::around(usual_slope);
  OptimumSearch search(rows, fence, companion);
  search.run(all_nested(rows, populations, contained), false);
  const std::vector<MixturePoint> pool =
      random_starts(rows, populations, {usual_slope, fence.steepest}, options.seed,
                    static_cast<std::size_t>(options.most_starts));
  for (std::size_t next = 0; next < pool.size() && !search.is_over(options);) {
    const std::size_t last = std::min(next + round_size, pool.size());
    search.run({pool.begin() + static_cast<std::ptrdiff_t>(next),
                pool.begin() + static_cast<std::ptrdiff_t>(last)},
               true);
    next = last;
  }
  return search.outcome();
}

/// The best ends of a search on few rows, taken to their optima on more.
SearchOutcome judged_on(const MixtureRows& rows, const SearchOutcome& rough, std::size_t most,
                        double usual_slope) {
  const std::size_t count = std::min(most, rough.optima.size());
  std::vector<std::optional<Optimum>> ends(count);
  const Fence fence = Fence::around(usual_slope);
  for_each_index(count, [&](std::size_t i) {
    ends[i] = optimum_from(rows, rough.optima[i].optimum.point, fence);
  });
  SearchOutcome judged{{}, rough.tried, rough.stopped};
  for (std::size_t i = 0; i < count; ++i) {
    if (!ends[i]) continue;
    const auto same = [&](const FoundOptimum& known) {
      return is_same_optimum(rows, known.optimum, *ends[i]);
    };
    const auto known = std::find_if(judged.optima.begin(), judged.optima.end(), same);
    if (known == judged.optima.end()) {
      judged.optima.push_back({*ends[i], rough.optima[i].finds, rough.optima[i].agreed});
    } else {
      known->finds += rough.optima[i].finds;
      known->agreed += rough.optima[i].agreed;
    }
  }
  std::stable_sort(judged.optima.begin(), judged.optima.end(), better);
  return judged;
}

}  // namespace

SearchOutcome search_optima(const MixtureRows& rows, Populations populations, double usual_slope,
                            const std::vector<MixturePoint>& contained,
                            const SearchOptions& options, Companion& companion) {
  if (rows.failures.count + rows.suspensions.count <= 2 * whole_search_rows)
    return search_on(rows, populations, usual_slope, contained, options, companion);
  const MixtureRows few = thinned(rows, whole_search_rows);
  SearchOutcome outcome = search_on(few, populations, usual_slope, contained, options, companion);
  if (rows.failures.count + rows.suspensions.count > 2 * middle_rows)
    outcome = judged_on(thinned(rows, middle_rows), outcome, ends_for_middle, usual_slope);
  return judged_on(rows, outcome, ends_for_whole, usual_slope);
}

}  // namespace tavlo
