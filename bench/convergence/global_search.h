// Global search: the best optimum of a mixture that many starts of an independent
// minimiser find. Its formulas are written anew from the definition of the models,
// its derivatives are differences; only the gates are those of the solver.
#pragma once

#include <optional>
#include <vector>

#include "project/records.h"
#include "project/solver_state.h"
#include "support/mixture_samples.h"

namespace tavlo {

/// The best quality (r squared or ln L) by the method of solver_method, from each
/// of `given` (the truth, answers of others) and `starts` random starts.
std::optional<double> best_known(const DataSet& data, const std::vector<test::TrueMixture>& given,
                                 int method, bool censored, int starts);

}  // namespace tavlo
