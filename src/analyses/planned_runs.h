// PlannedRuns: a test planned before it is made: the sample that a plan draws, drawn and
// fitted many times, and how far the answers spread.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "analyses/inspections.h"
#include "analyses/monte_carlo.h"
#include "fit/answer.h"

namespace tavlo {

inline constexpr std::int32_t most_runs = 100000;

struct RunPlan {
  SamplePlan sample;
  std::int32_t runs = 1;  ///< 1 to most_runs
  Inspections inspections;
  std::vector<FitRequest> fits;  ///< made of each sample; their kind of ranks is the sample's
};

/// Of the numbers that a parameter took.
struct Spread {
  double mean = 0;
  double sd = 0;  ///< 0 for one number
  double p5 = 0, p50 = 0, p95 = 0;

  friend bool operator==(const Spread&, const Spread&) = default;
};

/// Percentiles by linear interpolation between the numbers in order (Hyndman and Fan, "Sample
/// quantiles in statistical packages", 1996, definition 7). Nothing for no numbers.
std::optional<Spread> spread_of(std::vector<double> numbers);

/// Which number of a fit, see ShownParameters.
enum class ParameterKind { first, second, share, minimum_life };

struct ParameterSpread {
  ParameterKind kind{};
  const char* name = "";        ///< as in machine-read output
  int population = 0;           ///< from 1, in the order of eta (of the location)
  std::optional<double> truth;  ///< of the life that is sampled, where the fit is of its model
  /// In the order of the runs; of a fit that does not determine it, or beyond 3.4e38, there is
  /// none.
  std::vector<double> values;
  std::optional<Spread> spread;
};

struct BLifeSpread {
  double percent = 0;            ///< failed
  std::optional<double> truth;   ///< of the life that is sampled
  std::int32_t determined = 0;   ///< by so many fits
  std::optional<Spread> spread;  ///< in the unit of the times
};

/// What one request gave.
struct RunsOfFit {
  FitRequest request;
  std::int32_t fitted = 0;
  std::int32_t refused = 0;              ///< left out of all numbers
  std::optional<Refusal> first_refusal;  ///< of the first run
  bool leaves_suspensions_out = false;   ///< of any sample
  std::vector<ParameterSpread> parameters;
  std::vector<BLifeSpread> b_lives;  ///< 1, 10 and 50 %
  std::optional<Spread> r_squared;   ///< of regressions
};

struct RunsReport {
  std::int32_t runs = 0;  ///< made
  std::vector<RunsOfFit> fits;
};

/// Makes the runs of a plan whose sample has no fault, each of a sample as it is written; the seeds
/// of a run are the states behind the one before. `go_on` is asked again and again, on the thread
/// that calls, with the number of runs made; once it says no the runs at work are given up, the
/// report is of those made, and `random` stands behind the last of them. Any number of threads
/// gives the same. Error 6 for a time beyond single precision.
RunsReport make_runs(const RunPlan& plan, WichmannHill& random, Entropy& chance,
                     const std::function<bool(std::int32_t)>& go_on);

}  // namespace tavlo
