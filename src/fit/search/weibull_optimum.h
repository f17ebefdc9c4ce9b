// Weibull optimum: one Weibull on the rows of a mixture's objective: what every mixture
// contains, and the measure of its fence.
#pragma once

#include <optional>

#include "fit/answer.h"
#include "fit/search/optimum.h"

namespace tavlo {

/// The only optimum there is; nothing where the times have no spread or the likelihood
/// rises with the slope.
std::optional<Optimum> one_weibull_optimum(const MixtureRows& rows);

/// Why there is none.
Refusal refuse_without_weibull(const MixtureRows& rows);

}  // namespace tavlo
