// Fit report: what is told of one set of data and its fits, as JSON or as a table for
// people.
#pragma once

#include <string>
#include <vector>

#include "cli/fitting.h"
#include "cli/json_text.h"
#include "cli/words.h"

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

/// Adds a value, or null without one.
void add_optional(JsonText& json, const char* key, const std::optional<double>& value);

/// Adds "quality", "r_squared" and "log_likelihood" of a fit.
void add_quality(JsonText& json, const FitOutcome& outcome);

/// Adds "status", "error" and "code" of a refused fit.
void add_refusal(JsonText& json, const FitReport& report, const FitOutcome& outcome);

/// Adds "notes", where there are any.
void add_notes(JsonText& json, const std::vector<FitWords>& notes);

/// Adds "messages": the doubts that came, and their answers.
void add_messages(JsonText& json, const FitReport& report);

/// What the answer has to say beside the numbers.
std::vector<FitWords> notes_of(const FitReport& report, const FitOutcome& outcome);

/// A heading for `subject`, and lines with a table for each family among the fits.
std::string fit_table(const std::string& subject, const FitReport& report);

/// Warns, once, of likelihoods that leave the suspensions out.
void tell_suspensions_left_out(const std::string& subject, const Sample& sample,
                               const FitQuestions& questions);

/// Tells the doubts that came and the fits that were refused, in order, about `subject`.
void tell_messages(const std::string& subject, const FitReport& report);

}  // namespace tavlo::cli
