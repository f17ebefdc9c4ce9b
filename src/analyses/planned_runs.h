// PlannedRuns: a test planned before it is made: the sample that a plan draws, drawn and
// fitted many times, and how far the answers spread.
#pragma once

#include <functional>
#include <vector>

#include "analyses/inspections.h"
#include "analyses/monte_carlo.h"
#include "analyses/run_spreads.h"

namespace tavlo {

inline constexpr std::int32_t most_runs = 100000;

struct RunPlan {
  SamplePlan sample;
  std::int32_t runs = 1;  ///< 1 to most_runs
  Inspections inspections;
  std::vector<FitRequest> fits;  ///< made of each sample; their kind of ranks is the sample's
};

struct RunsReport {
  std::int32_t runs = 0;  ///< made
  std::vector<RunsOfFit> fits;
};

/// Makes the runs of a plan whose sample has no fault, each of a sample as it is written; the seeds
/// of a run are the states behind the one before. `go_on` is asked again and again, on the thread
/// that calls, with the number of runs made; once it says no the runs at work are given up, the
/// report is of those made, and `random` stands behind the last of them. Any number of threads
/// gives the same. Error 6 for a time that data can't hold.
RunsReport make_runs(const RunPlan& plan, WichmannHill& random, Entropy& chance,
                     const std::function<bool(std::int32_t)>& go_on);

}  // namespace tavlo
