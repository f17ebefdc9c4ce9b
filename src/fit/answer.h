// Answer: what a fit gives: the fit with its proof, or the reason why there is none, and
// what a person must know beside the numbers. Codes with values; their words stand with
// the actions and the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

#include "fit/request.h"
#include "life/life.h"

namespace tavlo {

/// What was shown of an optimum.
struct Proof {
  enum class Kind : std::int8_t {
    interior,  ///< gradient about 0, curvature definite
    bound,     ///< stands on a named bound with the gradient pointing out, else interior
    flat,      ///< the answer is that of a contained model: one direction is undetermined
  };
  Kind kind = Kind::interior;
  double decrement = 0;           ///< gain that a Newton step promises, in ln L or r squared
  double smallest_curvature = 0;  ///< of minus the objective, by the logarithms of the parameters
  bool at_share_bound = false;
  std::int16_t same_as = 0;  ///< model code of the contained model of a flat answer

  friend bool operator==(const Proof&, const Proof&) = default;
};

/// How sure the answer of a search is.
struct StartsReport {
  int tried = 0;
  int agreed = 0;                   ///< starts whose proven end is the answer
  std::optional<double> runner_up;  ///< quality of the best other proven optimum

  friend bool operator==(const StartsReport&, const StartsReport&) = default;
};

enum class NoteCode : std::int8_t {
  suspensions_left_out,     ///< of a mixture's likelihood; values: suspensions
  unconfirmed,              ///< less than two independent starts found the best optimum
  no_second_population,     ///< same as `model` in effect; values: gain in ln L or r squared
  share_at_bound,           ///< values: share
  few_failures,             ///< values: failures, failures preferred
  counted_rows,             ///< a regression whose counted rows would rank differently if listed
  population_not_reached,   ///< values: row whose population holds no failure
  likelihood_for_one_mode,  ///< failures at one time only; values: mode, failures
  mode_not_fitted,          ///< values: mode, reason (RefusalCode), the reason's values
  modes_left_out,           ///< of the life by all modes; values: modes with failures, no fit
  fewer_points,             ///< of a regression than parameters; values: points, parameters
  better_beyond_fence,      ///< a better point is no answer; values: its gain as far as known
  no_interior_maximum,      ///< of r squared: t0 has run off towards minus infinity
};

struct Note {
  NoteCode code{};
  std::int16_t model = 0;
  std::vector<double> values;

  friend bool operator==(const Note&, const Note&) = default;
};

enum class RefusalCode : std::int8_t {
  too_few_failures,     ///< values: failures, failures needed
  time_not_above_zero,  ///< values: entry row, time
  rank_off_paper,       ///< values: entry row, rank
  no_spread,            ///< times (or ranks) of the failures all equal; values: none, or
                        ///< distinct times and distinct times needed
  no_such_fit,          ///< no routine fits this model by this method
  slope_missing,        ///< the model needs a given slope
  no_failure,
  slope_without_limit,   ///< the likelihood rises with the slope: no failure before the last time
  scale_beyond_numbers,  ///< a characteristic life that no number can hold
  no_interior_maximum,   ///< values: -1 t0 to minus infinity (Gumbel), 1 t0 to the first failure
  no_proven_optimum,     ///< the search ended on spikes only
  line_without_worth,    ///< the best line is worse than none
  no_mode_fitted,        ///< fit by mode: no mode could be fitted
  arithmetic,            ///< values: number of the run-time error
  stopped,               ///< the person (or a doubt answered with Cancel) ended it
};

struct Refusal {
  RefusalCode code{};
  std::vector<double> values;

  friend bool operator==(const Refusal&, const Refusal&) = default;
};

/// The fit of one failure mode.
struct ModeFit {
  int mode = 0;
  std::int16_t method = 0;  ///< that was used
  /// By that method; nothing where the fit comes from a file, which keeps no quality of modes.
  std::optional<double> quality;
  std::optional<Refusal> refusal;

  friend bool operator==(const ModeFit&, const ModeFit&) = default;
};

/// A life in the person's unit of time, and how good it is.
struct Fit {
  Life life;                           ///< by mode: row i is the fit of modes[i]
  double quality = 0;                  ///< r squared of a regression, ln L of a likelihood
  std::optional<Proof> proof;          ///< of a searched fit
  std::optional<StartsReport> starts;  ///< of a searched fit
  std::vector<ModeFit> modes;          ///< of a fit by failure mode

  friend bool operator==(const Fit&, const Fit&) = default;
};

struct FitAnswer {
  std::variant<Refusal, Fit> result;
  std::vector<Note> notes;

  const Fit* fit() const { return std::get_if<Fit>(&result); }
  const Refusal* refusal() const { return std::get_if<Refusal>(&result); }

  friend bool operator==(const FitAnswer&, const FitAnswer&) = default;
};

}  // namespace tavlo
