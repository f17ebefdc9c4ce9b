#include "cli/life_search.h"

#include <algorithm>
#include <cmath>

#include "chart/parts/find_x.h"
#include "life/models.h"
#include "solver/mixture_functions.h"

namespace tavlo::cli {

namespace {

struct Bracket {
  double low = 0;
  double high = 0;
};

/// Walks from the range of the failures outward, until F at the two ends lies on
/// both sides of the fraction. On a logarithmic axis each step is a factor of 2,
/// on a linear one each is twice the one before.
class Walk {
 public:
  Walk(const DataSet& data, bool logarithmic)
      : ends_{data.XMin, data.XMax},
        logarithmic_(logarithmic),
        step_(std::max(data.XMax - data.XMin, std::fabs(data.XMax) * 0.001)) {}

  template <class F>
  Bracket enclose(double fraction, F f) {
    constexpr int most_steps = 2200;  // through all doubles
    for (int i = 0; i < most_steps && f(ends_.low) > fraction; ++i)
      ends_ = {below(ends_.low), ends_.low};
    for (int i = 0; i < most_steps && f(ends_.high) < fraction; ++i)
      ends_ = {ends_.high, above(ends_.high)};
    return ends_;
  }

 private:
  double below(double x) { return logarithmic_ ? x / 2.0 : x - next_step(); }
  double above(double x) { return logarithmic_ ? x * 2.0 : x + next_step(); }
  double next_step() { return step_ *= 2.0; }

  Bracket ends_;
  bool logarithmic_;
  double step_;
};

}  // namespace

LifePoint find_life(ErrorReporter& reporter, const DataSet& data, const FitResult& fit,
                    double fraction) {
  LifePoint point{0, fraction, false};
  const bool logarithmic = (fit.ModelCode & x_scale_mask) != x_scale::linear;
  const Bracket ends = Walk(data, logarithmic).enclose(fraction, [&](double x) {
    return std::isfinite(x) ? Fd_YofX(reporter, fit, x) : fraction;
  });
  if (std::isfinite(ends.low) && std::isfinite(ends.high))
    point.x = fd_FindX(reporter, fit, fraction, ends.low, ends.high, 0.0, 0.0, point.known);
  return point;
}

}  // namespace tavlo::cli
