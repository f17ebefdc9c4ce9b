// Example chart: an example of the wizard as the program's own charts show it.
#pragma once

#include "chart/record/drawing_record.h"
#include "guidance/wizard_examples.h"
#include "project/session.h"

namespace tavlo {

/// Composed in a session of its own: `session` lends its ports and its looks, and stays as it is.
DrawingRecord example_chart(const Session& session, const WizardExample& example);

}  // namespace tavlo
