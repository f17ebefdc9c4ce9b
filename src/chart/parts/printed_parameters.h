// Printed parameters: the fitted values of a chart as they are printed in a report:
// "η = 606.5", "β = 1.72", and a small table for the risks of a mixture.
#pragma once

#include <vector>

#include "chart/parts/parameter_table.h"

namespace tavlo {

/// At most 50 lines, like parameter_table. Several fits are told apart by their names.
ParameterTable printed_parameters(const Session& session, const std::vector<PlotSet>& sets);

}  // namespace tavlo
