#include "cli/totals_line.h"

#include "numerics/number_text.h"

namespace tavlo::cli {

namespace {

std::string counted(double number, const std::string& noun) {
  return number_text(number) + " " + noun + (number == 1.0 ? "" : "s");
}

}  // namespace

std::string totals_line(const std::string& file, const DataSet& data) {
  const DataPoint& totals = data.Points(0);
  return file + ": " + counted(totals.Fails + totals.Susps, "unit") + ", " +
         counted(totals.Fails, "failure") + ", " + counted(totals.Susps, "suspension") + "\n";
}

}  // namespace tavlo::cli
