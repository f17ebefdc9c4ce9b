// Sample: a data set from a model instead of from the field takes the place of the project,
// with the model drawn beside it.
#pragma once

#include "actions/sample_form.h"

namespace tavlo {

/// The seeds of the generator as texts. It is seeded by chance at the first call of a run.
std::array<std::string, WichmannHill::streams> present_seeds(Session& session);

/// The same after one draw: other seeds for who wants some.
std::array<std::string, WichmannHill::streams> next_seeds(Session& session);

/// Makes the sample of a form: one step, with the fits and the runs that the form asks for. What
/// can't be sampled is told before anything has changed. The seeds of the form become those
/// that the sample was made from.
void make_sample_project(Session& session, SampleForm& form);

}  // namespace tavlo
