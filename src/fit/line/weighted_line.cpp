#include "fit/line/weighted_line.h"

#include "numerics/compensated_sum.h"
#include "numerics/real.h"

namespace tavlo {
namespace {

struct Points {
  std::span<const double> weight, u, v;

  template <class Visit>
  void for_each(Visit visit) const {
    for (std::size_t i = 0; i < weight.size(); ++i)
      if (weight[i] > 0) visit(weight[i], u[i], v[i]);
  }
};

void take_means(const Points& points, WeightedLine& line) {
  CompensatedSum weight;
  CompensatedSum u_sum;
  CompensatedSum v_sum;
  double u_first = 0;
  double v_first = 0;
  points.for_each([&](double w, double u, double v) {
    if (weight.value() == 0) {
      u_first = u;
      v_first = v;
    }
    line.has_u_spread |= u != u_first;
    line.has_v_spread |= v != v_first;
    weight += w;
    u_sum += w * u;
    v_sum += w * v;
  });
  line.weight = finite(weight.value());
  if (line.weight == 0) return;
  line.u_mean = finite(u_sum.value()) / line.weight;
  line.v_mean = finite(v_sum.value()) / line.weight;
}

void take_slope(const Points& points, WeightedLine& line) {
  CompensatedSum uu;
  CompensatedSum uv;
  points.for_each([&](double w, double u, double v) {
    const double off = u - line.u_mean;
    uu += w * off * off;
    uv += w * off * (v - line.v_mean);
  });
  line.slope = (Real(uv.value()) / Real(uu.value())).value();
  line.intercept = (line.v_mean - Real(line.slope) * line.u_mean).value();
}

// 1 less a ratio of two sums of the same unit: nothing here depends on the unit of v.
void take_r_squared(const Points& points, WeightedLine& line) {
  CompensatedSum about_line;
  CompensatedSum about_mean;
  points.for_each([&](double w, double u, double v) {
    const double off_mean = v - line.v_mean;
    const double off_line = off_mean - line.slope * (u - line.u_mean);
    about_line += w * off_line * off_line;
    about_mean += w * off_mean * off_mean;
  });
  line.r_squared = (1 - Real(about_line.value()) / Real(about_mean.value())).value();
}

}  // namespace

WeightedLine weighted_line(std::span<const double> weight, std::span<const double> u,
                           std::span<const double> v) {
  const Points points{weight, u, v};
  WeightedLine line;
  take_means(points, line);
  if (!line.has_u_spread || !line.has_v_spread) return line;
  take_slope(points, line);
  take_r_squared(points, line);
  return line;
}

}  // namespace tavlo
