// Set work: one file on its way from its bytes to its answers, the part that the commands
// on data share.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/fit_report.h"
#include "cli/fitting.h"
#include "files/point_list.h"

namespace tavlo::cli {

struct SetWork {
  std::string file;
  DataRows data;
  Sample sample;
  std::vector<FitOutcome> outcomes;
  std::optional<std::string> fault;  ///< why there are no answers, in the user's words

  void read(const CommonArguments& common, const std::string& name);

  /// Ranks the rows. Those are freed unless they are kept, as a sample has all of them.
  void rank(RankKind ranks, bool keep_rows);

  /// Fits the sample; does not throw.
  void answer(const FitQuestions& questions);

  FitReport report(const FitQuestions& questions) const {
    return {sample, data.mode_names, questions, outcomes};
  }
};

/// Tells why a file has no answers, as JSON too when that is wanted.
ExitCode tell_fault(const SetWork& work, bool json);

}  // namespace tavlo::cli
