// Fit report: what is told of one set of data and its fits, as JSON or as a table for
// people.
#pragma once

#include <string>
#include <vector>

#include "cli/fitting.h"
#include "cli/json_text.h"

namespace tavlo::cli {

/// All that is told of one set.
struct FitReport {
  const Sample& sample;
  const std::vector<std::string>& mode_names;
  const FitQuestions& questions;
  const std::vector<FitOutcome>& outcomes;
};

/// Adds "units", "failures" and "suspensions" to an open object.
void add_totals(JsonText& json, const Sample& sample);

/// Adds the totals, "fits" and "messages" to an open object.
void add_fits(JsonText& json, const FitReport& report);

/// A heading for `subject`, and lines with a table for each family among the fits.
std::string fit_table(const std::string& subject, const FitReport& report);

/// Tells the doubts that came and the fits that were refused, in order, about `subject`.
void tell_messages(const std::string& subject, const FitReport& report);

}  // namespace tavlo::cli
