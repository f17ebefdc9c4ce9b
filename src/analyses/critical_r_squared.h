// Critical r squared: how straight the points of a right model lie on its paper. One sample in
// ten of the model itself has an r squared below the critical one. From a simulation of
// complete samples with Benard's ranks; exact ranks differ by at most 0.0003.
#pragma once

#include <cstdint>

namespace tavlo {

/// Whose times lie on a straight line.
enum class PaperKind : std::int8_t { weibull = 1, lognormal = 2 };

struct CriticalRSquared {
  double critical = 0;  ///< the 10th percentile of r squared
  double pve = 0;       ///< share of samples of the model with an r squared up to the one seen
};

/// The critical r squared of a sample of `failures` failures (fractions allowed, from 3 on;
/// less counts as 3) and the percentile, 0 to 1, of an r squared that was seen. With
/// `three_parameters` a minimum life was chosen for the highest r squared; the table holds for
/// a slope of 2 (lognormal: a sigma of 1) then, within 0.003 for slopes 1 to 3 from 10 failures
/// on. Between the 31 sizes of the table the critical value is right within 0.0003, the
/// percentile within 0.0025 (0.07 for three failures and a minimum life, which puts most such
/// samples on the line). Above 1000 failures both go on along the last interval.
/// Suspensions are not seen. Error 5 where a number is not finite.
CriticalRSquared fd_Ccc2(PaperKind kind, double failures, bool three_parameters, double r_squared);

}  // namespace tavlo
