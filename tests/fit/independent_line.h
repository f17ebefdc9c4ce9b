// An independent weighted least-squares line in long double, about the means, for
// comparison with the program's own.
#pragma once

#include <vector>

namespace tavlo::test {

using Float = long double;

struct PaperPoint {
  Float weight, x, y;
};

/// Means and centred sums of products.
struct LineSums {
  Float x_mean = 0, y_mean = 0, xx = 0, xy = 0, yy = 0;

  explicit LineSums(const std::vector<PaperPoint>& points) {
    Float n = 0;
    for (const auto& p : points) n += p.weight, x_mean += p.weight * p.x, y_mean += p.weight * p.y;
    x_mean /= n;
    y_mean /= n;
    for (const auto& p : points) {
      xx += p.weight * (p.x - x_mean) * (p.x - x_mean);
      xy += p.weight * (p.x - x_mean) * (p.y - y_mean);
      yy += p.weight * (p.y - y_mean) * (p.y - y_mean);
    }
  }
  /// Slope dy/dx of the regression in the given direction.
  Float slope(bool y_on_x) const { return y_on_x ? xy / xx : yy / xy; }
  Float r_squared() const { return xy * xy / (xx * yy); }
  /// r squared of any line of this slope through the means.
  Float r_squared(Float beta, bool y_on_x) const {
    const Float off_in_y = yy - 2 * beta * xy + beta * beta * xx;
    return 1 - (y_on_x ? off_in_y / yy : off_in_y / (beta * beta) / xx);
  }
};

}  // namespace tavlo::test
