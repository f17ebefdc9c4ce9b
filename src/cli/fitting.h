// Fitting: the fits that were asked for, made through the program's one door,
// and the answers read off them.
#pragma once

#include <string>
#include <vector>

#include "cli/arguments.h"
#include "cli/cli_ports.h"
#include "cli/life_search.h"
#include "project/session.h"

namespace tavlo::cli {

struct FitOutcome {
  FitChoice choice;  ///< as it was fitted: the slope given may have changed the model
  int slot = 0;      ///< in gFit(1); 0 when the fit was refused or failed
  std::string error;
};

/// "W2P/mle".
std::string fit_name(const FitChoice& choice);

/// Fits data set 1 by every choice; a fit that is made goes into the log when
/// `report`.
std::vector<FitOutcome> fit_all(Session& session, CliWorld& world,
                                const std::vector<FitChoice>& choices, bool report);

/// Times at which the fit reaches the fractions. An answer that the model doesn't
/// have is told on standard error, about `subject`.
std::vector<LifePoint> b_lives(Session& session, const std::string& subject, const FitResult& fit,
                               const std::vector<double>& fractions);

/// Fractions that the fit has reached at the times; told likewise.
std::vector<LifePoint> fractions_at(Session& session, const std::string& subject,
                                    const FitResult& fit, const std::vector<double>& times);

}  // namespace tavlo::cli
