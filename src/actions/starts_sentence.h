// Starts sentence: how sure the answer of a search is, in one line.
#pragma once

#include <string>

#include "project/records.h"

namespace tavlo {

/// "5 of 7 starts ended at this optimum; the best other one has Ln(L) -81.6." Empty for
/// a fit without a search.
std::string starts_sentence(const FitResult& fit);

}  // namespace tavlo
