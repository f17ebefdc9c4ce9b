// Line fits: models that are a straight line on their own paper, fitted by regression.
#pragma once

#include <optional>

#include "fit/line/paper.h"
#include "fit/row_fit.h"

namespace tavlo {

/// A Weibull through rows on Weibull paper against log time. A given slope makes it the
/// line of that slope through the weighted means; its r squared is then negative where it
/// is worse than no line, and through equal times 1 or -1.
RowAnswer fit_weibull_line(const PaperRows& rows, bool y_on_x, std::optional<double> slope);

/// A Normal, LogNormal or Gumbel of either kind (by the family and code of the model).
RowAnswer fit_other_line(const Sample& sample, const Model& model, bool y_on_x);

}  // namespace tavlo
