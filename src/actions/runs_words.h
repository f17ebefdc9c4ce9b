// RunsWords: how the windows call what planned runs were asked for and what came of them.
#pragma once

#include <string>
#include <vector>

#include "analyses/planned_runs.h"

namespace tavlo {

/// What a share is called, which is read in per cent.
inline constexpr const char* share_word = "u %";

/// The name of a parameter as the grid of fits has it: "eta", "sdF", "u %", "Min Life".
std::string parameter_word(const RunsOfFit& fit, const ParameterSpread& parameter);

/// The same with the number of its population where the model has several: "eta 2".
std::string parameter_name(const RunsOfFit& fit, const ParameterSpread& parameter);

/// What the axis of such a parameter is called.
std::string parameter_meaning(const RunsOfFit& fit, const ParameterSpread& parameter);

/// What its numbers are shown times.
double shown_factor(const ParameterSpread& parameter);

/// Lines on how the numbers of a table are to be read: "eta 2: determined by 20 of 60 fits".
std::vector<std::string> reading_words(const RunsOfFit& fit);

/// "samples of 30 from the 2-parameter Weibull".
std::string plan_words(const RunPlan& plan);

}  // namespace tavlo
