// RunsCharts: the parameters that planned runs gave, sorted by what a person compares: all of
// one name on one chart, whatever fit and population they are of.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analyses/planned_runs.h"
#include "chart/scales/fitted_limits.h"

namespace tavlo {

/// The values of a parameter of a fit, as they are shown.
struct RunSet {
  std::string title;  ///< "eta 1 W5C/MLE"
  std::vector<double> values;
};

struct RunChart {
  std::string word;     ///< what their parameter is called
  std::string meaning;  ///< on the X axis
  std::vector<RunSet> sets{};
};

/// The charts of a report, in the order of its parameters. What is the same in all runs,
/// as a slope that was given, has no set.
std::vector<RunChart> run_charts(const RunsReport& report);

/// Leaves as many values in each set, evenly spaced in their order, that all together are about
/// `most_rows`. How many; nothing where all stay.
std::optional<std::size_t> thin_to(std::size_t most_rows, std::vector<RunChart>& charts);

/// How the X axis of a chart shows its values.
struct RunAxis {
  bool is_log = false;           ///< values above 0 that lie far apart
  std::optional<Limits> limits;  ///< where a few far off would press the others together
  std::size_t beyond = 0;        ///< values outside of them
};

/// Limits are round, with a margin of `zone` of their range.
RunAxis run_axis(const RunChart& chart, ErrorReporter& reporter, double zone);

}  // namespace tavlo
