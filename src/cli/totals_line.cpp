#include "cli/totals_line.h"

#include "cli/shown_text.h"
#include "numerics/count_text.h"
#include "numerics/number_text.h"

namespace tavlo::cli {

std::string totals_line(const std::string& subject, const Sample& sample) {
  const double failures = sample.total_failures;
  const double suspensions = sample.total_suspensions;
  return shown_text(subject) + ": " + counted(failures + suspensions, "unit") + ", " +
         counted(failures, "failure") + ", " + counted(suspensions, "suspension") + "\n";
}

}  // namespace tavlo::cli
