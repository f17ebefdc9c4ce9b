#include "fit/zero_time.h"

#include <algorithm>
#include <string>

namespace tavlo {

void add_zero_time_line(ErrorReporter& reporter, const DataSet& data) {
  const int last = std::min(data.Count, data.Points.bound());
  for (int i = 1; i <= last; ++i) {
    const DataPoint& row = data.Points(i);
    if (row.X != 0.0F) continue;
    const int entered_as = row.Order > 0 ? row.Order : i;
    reporter.add_lines({"Row " + std::to_string(entered_as) +
                        ": Data X is 0, and a time of 0 has no place on a logarithmic axis."});
    return;
  }
}

}  // namespace tavlo
