// Wizard examples: the pictures beside the flow chart: what the data of a model look like on
// probability paper, which people compare with their own.
#pragma once

#include <span>

#include "guidance/wizard_table.h"
#include "life/life.h"

namespace tavlo {

/// Points that stand exactly where those of `life` are expected, and a line on the paper of the
/// model that they are shown as.
struct WizardExample {
  const char* tab;
  const char* note;  ///< lines
  Life life;
  std::int16_t shown_as = 0;  ///< a model; the life's own: the line is that of the life
};

/// In the order of their tabs.
std::span<const WizardExample> wizard_examples();

/// The opening text of the wizard, lines.
const char* wizard_opening();

/// The place of the example that helps with a step, from 0.
std::size_t example_of_step(int number);

}  // namespace tavlo
