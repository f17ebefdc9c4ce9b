// Request: what a fit is asked for. Two requests that compare equal have one answer.
#pragma once

#include <cstdint>
#include <optional>

#include "fit/sample.h"
#include "life/models.h"

namespace tavlo {

/// How long the search for the best optimum of a mixture goes on.
struct SearchOptions {
  int most_starts = 60;
  int wanted_finds = 3;  ///< of the best, from different starts
  std::uint64_t seed = 20110311;

  friend bool operator==(const SearchOptions&, const SearchOptions&) = default;
};

struct FitRequest {
  std::int16_t model = model_code::weibull2;
  std::int16_t method = method_code::x_on_y;
  std::optional<double> slope{};  ///< of a model with a given slope, at full precision
  RankKind ranks = RankKind::benard;
  bool censored = false;  ///< suspensions take part in the likelihood of a mixture
  SearchOptions search{};

  friend bool operator==(const FitRequest&, const FitRequest&) = default;
};

/// Whether the likelihood may take suspensions in or leave them out: a mixture's.
bool has_censored_choice(int model_code, int method_code);

/// True where the likelihood that answers the request leaves suspensions of the sample out.
bool leaves_suspensions_out(const Sample& sample, const FitRequest& request);

}  // namespace tavlo
