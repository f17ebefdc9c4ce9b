// RunSpreads: how far the answers to one request spread, when it is asked of many samples of
// a life.
#pragma once

#include <optional>
#include <vector>

#include "fit/answer.h"
#include "fit/request.h"
#include "life/life.h"

namespace tavlo {

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
  std::optional<Refusal> first_refusal;  ///< of the first run that was refused
  bool leaves_suspensions_out = false;   ///< of any sample
  std::vector<ParameterSpread> parameters;
  std::vector<BLifeSpread> b_lives;  ///< 1, 10 and 50 %
  std::optional<Spread> r_squared;   ///< of regressions
};

/// Numbers of one answer: parameters, B-lives, quality; NaN where it does not determine one. None
/// of a refusal.
using RunNumbers = std::vector<double>;
RunNumbers numbers_of(const Model& model, const Fit& fit);

/// What the answers to a request have in common, of samples of a life: all of the report but what
/// is told of refusals and suspensions.
void add_spreads(const Life& life, const FitRequest& request, const std::vector<RunNumbers>& runs,
                 RunsOfFit& report);

}  // namespace tavlo
