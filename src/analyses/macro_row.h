// Macro row: the answer of a macro job as one row of fixed-width fields, to the character as
// the programs that read such files expect it.
#pragma once

#include <array>
#include <string>

#include "analyses/macro_jobs.h"
#include "fit/answer.h"
#include "fit/request.h"

namespace tavlo {

/// What the numbers of a job ask for; nothing where they name no model or method.
std::optional<FitRequest> request_of(const MacroJob& job);

/// beta and eta of the populations A, B and C, and t0 or the share of C behind them, in the
/// order that the model has them; 0 where it has none, and for a population that no failure
/// reaches. A acts on all units, B too, C on its share.
std::array<double, 7> macro_parameters(const Life& life);

/// The row, without its end of line.
std::string macro_row(const MacroJob& job, double quality, const std::array<double, 7>& parameters);

}  // namespace tavlo
