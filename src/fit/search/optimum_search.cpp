#include "fit/search/optimum_search.h"

#include <algorithm>
#include <optional>
#include <span>

#include "fit/parallel.h"
#include "fit/starts/nested_starts.h"
#include "fit/starts/random_starts.h"
#include "fit/starts/start_comparison.h"

namespace tavlo {
namespace {

constexpr std::size_t round_size = 4;       // starts that run before the next look
constexpr std::size_t nested_sketches = 8;  // from each contained optimum
constexpr std::size_t nested_runs = 10;
constexpr std::uint64_t most_pools = 3;  // of random starts
constexpr std::size_t looks = 36;        // unlike starts that are tried in any case
constexpr std::size_t whole_search_rows = 400;
constexpr std::size_t fewest_middle_rows = 6400;
constexpr std::size_t most_middle_rows = 25600;
constexpr std::size_t branched_runs = 6;
constexpr std::size_t ends_for_middle = 6;
constexpr std::size_t ends_for_whole = 4;

/// How hard to look at points that branch off contained optima.
struct NestedEffort {
  std::size_t compared_on = 0;  ///< rows
  std::size_t runs = 0;
};

std::size_t rows_of(const MixtureRows& rows) {
  return rows.failures.count + rows.suspensions.count;
}

class OptimumSearch {
 public:
  /// When a search may end before its last start.
  struct Target {
    double value = 0;  ///< the best of the contained models
    int looks = 0;     ///< starts that are tried in any case
  };

  OptimumSearch(const MixtureRows& rows, const Fence& fence, const Target& target,
                const SearchOptions& options, Companion& companion)
      : rows_(rows), fence_(fence), target_(target), options_(options), companion_(companion) {}

  /// Runs to the end from all starts; `are_finds` counts their ends as finds.
  void run(std::span<const MixturePoint> starts, bool are_finds) {
    std::vector<std::optional<Optimum>> ends(starts.size());
    std::vector<double> values(starts.size(), outcome_.lowest);
    const double best = outcome_.optima.empty() ? -std::numeric_limits<double>::infinity()
                                                : outcome_.optima.front().optimum.value;
    for_each_index(starts.size(), [&](std::size_t i) {
      ends[i] = optimum_from(rows_, starts[i], fence_, best, &values[i]);
    });
    for (const double value : values) outcome_.lowest = std::min(outcome_.lowest, value);
    for (const auto& end : ends) {
      outcome_.tried += 1;
      if (end) take_end(rows_, {*end, are_finds ? 1 : 0, 1}, outcome_.optima);
    }
    look_up();
  }

  /// Runs from the starts in order until the search is over: as many at first as are tried in
  /// any case, then some at a time.
  void run_rounds(const std::vector<MixturePoint>& starts) {
    std::size_t next = 0;
    while (next < starts.size() && !is_over()) {
      const auto left = static_cast<std::size_t>(options_.most_starts - outcome_.tried);
      const auto sure = static_cast<std::size_t>(std::max(0, target_.looks - outcome_.tried));
      const std::size_t round = std::min({std::max(sure, round_size), starts.size() - next, left});
      run(std::span(starts).subspan(next, round), true);
      next += round;
    }
  }

  /// A short run from each start; where they have come to, the lowest first.
  std::vector<MixturePoint> sketched(const std::vector<MixturePoint>& starts) {
    std::vector<std::optional<Sketch>> sketches(starts.size());
    for_each_index(starts.size(),
                   [&](std::size_t i) { sketches[i] = sketch_from(rows_, starts[i], fence_); });
    std::erase_if(sketches, [](const auto& sketch) { return !sketch; });
    std::stable_sort(sketches.begin(), sketches.end(),
                     [](const auto& a, const auto& b) { return a->value < b->value; });
    std::vector<MixturePoint> points;
    for (const auto& sketch : sketches) points.push_back(sketch->point);
    look_up();
    return points;
  }

  bool is_over() const {
    if (outcome_.stopped || outcome_.tried >= options_.most_starts) return true;
    if (outcome_.optima.empty() || outcome_.tried < target_.looks) return false;
    const FoundOptimum& best = outcome_.optima.front();
    return best.finds >= options_.wanted_finds && best.optimum.value <= target_.value;
  }

  SearchOutcome& outcome() { return outcome_; }

 private:
  void look_up() {
    companion_.turn();
    outcome_.stopped = outcome_.stopped || companion_.stop_wanted();
  }

  const MixtureRows& rows_;
  const Fence fence_;
  const Target target_;
  const SearchOptions& options_;
  Companion& companion_;
  SearchOutcome outcome_;
};

std::vector<MixturePoint> all_nested(const MixtureRows& rows, Populations populations,
                                     const std::vector<MixturePoint>& contained,
                                     const SlopeRange& slopes, std::size_t compared_on) {
  std::vector<MixturePoint> starts;
  for (const MixturePoint& point : contained)
    for (const MixturePoint& start :
         nested_starts(rows, populations, point, slopes, nested_sketches, compared_on))
      starts.push_back(start);
  return starts;
}

/// Points near one that came before go to the end: first many optima are looked at, then
/// the best is found again.
std::vector<MixturePoint> unlike_first(const std::vector<MixturePoint>& points, std::size_t most) {
  constexpr double near = 0.3;
  std::vector<MixturePoint> first, rest;
  for (const MixturePoint& point : points) {
    const auto like = [&](const MixturePoint& other) { return are_alike(point, other, near); };
    const bool is_new = first.size() < most && std::none_of(first.begin(), first.end(), like);
    (is_new ? first : rest).push_back(point);
  }
  first.insert(first.end(), rest.begin(), rest.end());
  return first;
}

/// Small samples have more narrow optima, and cost less.
std::size_t sketches_for(const MixtureRows& rows, Populations populations,
                         const SearchOptions& options) {
  const auto starts = static_cast<std::size_t>(options.most_starts);
  const std::size_t wanted = 4000 / rows_of(rows);
  return (populations.count() + 1) * std::clamp(wanted, starts, starts + starts / 2) / 2;
}

/// The most promising points that branch off the contained optima.
std::vector<MixturePoint> nested_for(OptimumSearch& search, const MixtureRows& rows,
                                     Populations populations, const KnownGround& ground,
                                     const SlopeRange& slopes, const NestedEffort& effort) {
  std::vector<MixturePoint> nested =
      search.sketched(all_nested(rows, populations, ground.contained, slopes, effort.compared_on));
  nested = unlike_first(nested, effort.runs);
  nested.resize(std::min(nested.size(), effort.runs));
  return nested;
}

SearchOutcome search_on(const MixtureRows& rows, Populations populations, const KnownGround& ground,
                        const SearchOptions& options, Companion& companion) {
  const Fence fence = Fence::around(ground.usual_slope);
  const SlopeRange slopes{ground.usual_slope, fence.steepest};
  OptimumSearch search(rows, fence, {ground.value, static_cast<int>(looks)}, options, companion);
  search.run(nested_for(search, rows, populations, ground, slopes, {comparing_rows, nested_runs}),
             false);
  for (std::uint64_t pool = 0; pool < most_pools && !search.is_over(); ++pool)
    search.run_rounds(
        unlike_first(search.sketched(random_starts(rows, populations, slopes, options.seed + pool,
                                                   sketches_for(rows, populations, options))),
                     looks));
  return search.outcome();
}

/// The best ends of a search on few rows, taken to their optima on more.
SearchOutcome judged_on(const MixtureRows& rows, const SearchOutcome& rough, std::size_t most,
                        double usual_slope) {
  const std::size_t count = std::min(most, rough.optima.size());
  std::vector<std::optional<Optimum>> ends(count);
  const Fence fence = Fence::around(usual_slope);
  SearchOutcome judged = rough;
  judged.optima.clear();
  // Values on fewer rows say nothing of those on all.
  judged.lowest = std::numeric_limits<double>::infinity();
  std::vector<double> values(count, judged.lowest);
  for_each_index(count, [&](std::size_t i) {
    ends[i] = optimum_from(rows, rough.optima[i].optimum.point, fence,
                           -std::numeric_limits<double>::infinity(), &values[i]);
  });
  for (const double value : values) judged.lowest = std::min(judged.lowest, value);
  for (std::size_t i = 0; i < count; ++i)
    if (ends[i])
      take_end(rows, {*ends[i], rough.optima[i].finds, rough.optima[i].agreed}, judged.optima);
  return judged;
}

/// Goes on with a search on more rows: branches off the contained optima once more, as many
/// rows show a population that few don't, and where the best is a new one it is to be found
/// again, as any other.
SearchOutcome searched_on(const MixtureRows& rows, Populations populations,
                          const KnownGround& ground, const SearchOptions& options,
                          Companion& companion, const SearchOutcome& judged) {
  const Fence fence = Fence::around(ground.usual_slope);
  const SlopeRange slopes{ground.usual_slope, fence.steepest};
  const MixtureRows fewer = thinned(rows, rows_of(rows) / 4);
  const OptimumSearch::Target any{std::numeric_limits<double>::infinity(), 0};
  OptimumSearch sketches(fewer, fence, any, options, companion);
  OptimumSearch search(rows, fence, any, options, companion);
  search.outcome() = judged;
  search.run(
      nested_for(sketches, fewer, populations, ground, slopes, {whole_search_rows, branched_runs}),
      false);
  if (!search.is_over())
    search.run_rounds(unlike_first(
        sketches.sketched(random_starts(fewer, populations, slopes, options.seed + most_pools,
                                        static_cast<std::size_t>(options.most_starts))),
        looks));
  return search.outcome();
}

}  // namespace

void take_end(const MixtureRows& rows, const FoundOptimum& end, std::vector<FoundOptimum>& optima) {
  const auto same = [&](const FoundOptimum& known) {
    return is_same_optimum(rows, known.optimum, end.optimum);
  };
  const auto known = std::find_if(optima.begin(), optima.end(), same);
  if (known == optima.end()) {
    optima.push_back(end);
  } else {
    if (end.optimum.value < known->optimum.value) known->optimum = end.optimum;
    known->finds += end.finds;
    known->agreed += end.agreed;
  }
  std::stable_sort(optima.begin(), optima.end(), [](const FoundOptimum& a, const FoundOptimum& b) {
    return a.optimum.value < b.optimum.value;
  });
}

SearchOutcome search_optima(const MixtureRows& rows, Populations populations,
                            const KnownGround& ground, const SearchOptions& options,
                            Companion& companion) {
  if (rows_of(rows) <= 2 * whole_search_rows)
    return search_on(rows, populations, ground, options, companion);
  SearchOptions options_for_few = options;
  options_for_few.most_starts -= static_cast<int>(branched_runs);
  const MixtureRows few = thinned(rows, whole_search_rows);
  const MixtureRows middle =
      thinned(rows, std::clamp(rows_of(rows) / 4, fewest_middle_rows, most_middle_rows));
  SearchOutcome outcome = search_on(few, populations, ground, options_for_few, companion);
  if (outcome.stopped) return outcome;
  outcome = judged_on(middle, outcome, ends_for_middle, ground.usual_slope);
  outcome = searched_on(middle, populations, ground, options, companion, outcome);
  if (outcome.stopped || rows_of(middle) == rows_of(rows)) return outcome;
  return judged_on(rows, outcome, ends_for_whole, ground.usual_slope);
}

}  // namespace tavlo
