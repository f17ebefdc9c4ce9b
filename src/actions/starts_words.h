// Starts words: how sure the answer of a search is, in one line.
#pragma once

#include <optional>
#include <string>

#include "fit/answer.h"

namespace tavlo {

/// "5 of 7 starts ended at this optimum; the best other one has ln L -81.60", without a full
/// stop. `likelihood` tells the quality of the runner-up from r squared.
std::string starts_words(const StartsReport& starts, const std::optional<Proof>& proof,
                         bool likelihood);

}  // namespace tavlo
