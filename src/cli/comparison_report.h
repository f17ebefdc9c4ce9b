// Comparison report: what is told of one set of data and the models that were fitted to it
// by one method, as JSON or as tables for people.
#pragma once

#include <string>

#include "analyses/comparison.h"
#include "cli/fit_report.h"

namespace tavlo::cli {

/// The outcomes of a report side by side.
Comparison compared(const FitReport& report);

/// Adds the totals, "rows", "winner" and "messages" to an open object.
void add_comparison(JsonText& json, const FitReport& report, const Comparison& comparison);

/// A heading for `subject`, the table with the notes beneath it, the winner, and of likelihoods
/// a table of other criteria.
std::string comparison_table(const std::string& subject, const FitReport& report,
                             const Comparison& comparison);

}  // namespace tavlo::cli
