// Chi-square: the distribution function that a likelihood-ratio test reads its chance from.
// Exact where tests have their numbers, and a limit of 0 or 1 beyond.
#pragma once

#include <cstdint>

namespace tavlo {

/// The chance, 0 to 1, that a chi-square variable with `df` degrees of freedom is at most x.
/// 0 for x below 1e-12 and for df below 1. For df above 343 or x above 1000 the limit: 1 where
/// 0.024 x - 0.02 df + 0.33 - 0.5 is above 0, else 0. Error 5 where x is not a number.
/// Elsewhere the regularised incomplete gamma function P(df / 2, x / 2), to 1e-14.
double fd_ChiSq(double x, std::int16_t df);

}  // namespace tavlo
