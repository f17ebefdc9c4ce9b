// Nearest word: what somebody who mistyped a word may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavlo::cli {

/// "; did you mean 'compare'?", or nothing where no candidate is near: at most two letters may be
/// wrong, left out, added or swapped, and fewer in a short word. Case counts as a small fault.
std::string did_you_mean(std::string_view word, const std::vector<std::string>& candidates);

}  // namespace tavlo::cli
