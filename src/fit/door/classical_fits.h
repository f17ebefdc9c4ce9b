// Classical fits: the models of one population that need no search among many optima, by
// regression on paper or by maximum likelihood.
#pragma once

#include <optional>

#include "fit/companion.h"
#include "fit/row_fit.h"

namespace tavlo {

/// A two-parameter Weibull by any method; with a mode, of its failures among the others,
/// which survive their time. Without a slope it is free. In inner units.
RowAnswer fit_weibull(const Sample& sample, int method, std::optional<double> slope, int mode = 0);

/// Every model of the table that has a classical routine: the Weibulls of free and given
/// slope, Normal, LogNormal, the Gumbels, and the minimum life by regression. What has no
/// routine is refused. In the person's unit.
FitAnswer fit_classical(const Sample& sample, const FitRequest& request, Companion& companion);

}  // namespace tavlo
