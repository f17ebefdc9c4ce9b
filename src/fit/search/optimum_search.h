// Optimum search: runs from many starts until the best optimum has been found often enough.
// The starts of a round share the cores; the rounds are the same for any number of them.
#pragma once

#include <limits>
#include <vector>

#include "fit/answer.h"
#include "fit/companion.h"
#include "fit/search/optimum.h"

namespace tavlo {

/// A proven optimum and how often it was found.
struct FoundOptimum {
  Optimum optimum;
  int finds = 0;   ///< from starts of the pool
  int agreed = 0;  ///< from all starts
};

/// Adds an end to the optima, or to the one that it is; they stay in order, best first.
void take_end(const MixtureRows& rows, const FoundOptimum& end, std::vector<FoundOptimum>& optima);

struct SearchOutcome {
  std::vector<FoundOptimum> optima;  ///< distinct, best first
  int tried = 0;
  bool stopped = false;  ///< by the companion
  /// Value of any end on these rows, proven or not.
  double lowest = std::numeric_limits<double>::infinity();
};

/// What is known of the rows before the search.
struct KnownGround {
  double usual_slope = 1;               ///< of one Weibull
  std::vector<MixturePoint> contained;  ///< optima of contained models, to branch off
  double value = 0;                     ///< the best of the contained models: to be beaten
};

/// Searches the optima with `populations` on the rows. Starts that branch off contained
/// optima run first and are no finds. Large samples are searched on thinned rows, and the
/// best ends judged on all.
SearchOutcome search_optima(const MixtureRows& rows, Populations populations,
                            const KnownGround& ground, const SearchOptions& options,
                            Companion& companion);

}  // namespace tavlo
