// Totals line: the heading that people see above each file's results.
#pragma once

#include <string>

#include "fit/sample.h"

namespace tavlo::cli {

/// "bearings.txt: 20 units, 10 failures, 10 suspensions" and a line end.
std::string totals_line(const std::string& subject, const Sample& sample);

}  // namespace tavlo::cli
