// Fitting: the answers to what is asked of one set of data, all its fits at the same time.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "fit/answer.h"
#include "fit/companion.h"

namespace tavlo::cli {

struct FitOutcome {
  FitChoice choice;
  FitRequest request;
  FitAnswer answer;
  std::vector<Doubt> doubts;  ///< that came, all answered alike
};

/// "W2P/mle", "W5C/mlec".
std::string fit_name(const FitOutcome& outcome);

FitRequest request_of(const FitChoice& choice, const FitQuestions& questions);

/// Makes every fit that is asked for, in the order of the choices. Any number of cores
/// gives the same answers.
std::vector<FitOutcome> fit_all(const Sample& sample, const FitQuestions& questions);

/// r squared or ln L of the fit; nothing where it was refused, and by failure mode, where each
/// mode has a quality of its own.
std::optional<double> quality_of(const FitOutcome& outcome);

/// True when every fit was made.
bool all_made(const std::vector<FitOutcome>& outcomes);

}  // namespace tavlo::cli
