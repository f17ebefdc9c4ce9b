// Fraction on chart: the fraction failed that a chart draws for a stored fit. It follows
// a rule of its own: where no risk acts yet, a population reads as failed, so that the
// line of a fit with a minimum life starts there. Answers use the life's own F instead.
#pragma once

#include "project/records.h"

namespace tavlo {

/// Fraction failed of a Weibull mixture at time x, held within 1e-14 and
/// 0.99999999999999. At or below a term's T0 (and above 0) the term adds its
/// whole fraction: kept on purpose, charts start a three-parameter line there.
double fd_Wbl(const FitResult& fit, double x);

/// Fraction failed of any model at x, by the fit's model code. Error 6 where it is
/// beyond all numbers.
double Fd_YofX(const FitResult& fit, double x);

}  // namespace tavlo
