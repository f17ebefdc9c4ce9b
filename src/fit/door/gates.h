// Gates: whether a sample has enough failures for a model, and whether its times and ranks
// have a place on the model's paper.
#pragma once

#include <optional>

#include "fit/answer.h"
#include "fit/companion.h"

namespace tavlo {

/// Too few failures for the model, by its gate; for the likelihood of two parameters one is
/// enough where a unit outlives it, which the fit itself finds.
std::optional<Refusal> refuse_too_few(const Sample& sample, const Model& model, int method);

/// Fewer failures than the model's gate prefers.
bool is_doubtful(const Sample& sample, const Model& model);

/// The first row whose time has no logarithm, where the model needs one.
std::optional<Refusal> refuse_times(const Sample& sample, const Model& model);

}  // namespace tavlo
