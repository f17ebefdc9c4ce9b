// Starts sentence: how sure a mixture's answer is, in plain words.
#pragma once

#include <string>

#include "project/records.h"

namespace tavlo {

/// "9 of 12 starts ended at this optimum; the best other one has r^2 0.9931." For
/// W3T by MLE whether the likelihood has a maximum at all. Empty when there is
/// nothing to tell.
std::string starts_sentence(const FitResult& fit);

}  // namespace tavlo
