#include "solver/points_loader.h"

#include <algorithm>
#include <cmath>

#include "numerics/real.h"
#include "numerics/rounding.h"
#include "solver/mixture_functions.h"

namespace tavlo {
namespace {

constexpr std::size_t fit_index = 1;  // of the coordinates of the fit at work
constexpr float suspended = 1.0F;     // rank of a row that is no failure

int units(double count) {
  const double whole = IntFloor(count);
  return whole > 0 ? ToInt32(whole) : 0;
}

void check_size(const DataSet& set) {
  double all = 0;
  for (int i = 1; i <= set.Count; ++i)
    all += std::max(0.0, set.Points(i).Fails) + std::max(0.0, set.Points(i).Susps);
  if (!(all <= most_units)) throw RunTimeError(run_time::overflow);
}

double ln_time(const DataPoint& point) {
  return ln(abs(Real(static_cast<double>(point.X)))).value();
}

using LoadedPoints = std::vector<SolverState::LoadedPoint>;

void take_failures(DataSet& set, LoadedPoints& points) {
  for (int i = 1; i <= set.Count; ++i) {
    DataPoint& point = set.Points(i);
    const int times = units(point.Fails);
    if (times == 0) continue;
    point.XT[fit_index] = ln_time(point);
    point.YT[fit_index] = fd_WblY(static_cast<double>(point.Y));
    points.insert(points.end(), static_cast<std::size_t>(times), {point.X, point.Y});
  }
}

void take_suspensions(DataSet& set, bool take_part, LoadedPoints& points) {
  for (int i = 1; i <= set.Count; ++i) {
    DataPoint& point = set.Points(i);
    const int times = units(point.Susps);
    if (times == 0) continue;
    point.XT[fit_index] = ln_time(point);
    if (take_part)
      points.insert(points.end(), static_cast<std::size_t>(times), {point.X, suspended});
  }
}

void fill(const LoadedPoints& points, SolverData& data) {
  data.M = static_cast<std::int32_t>(points.size());
  data.Xs = Slots<double>(data.M);
  data.Ys = Slots<double>(data.M);
  data.Xhat = Slots<double>(data.M, 1.0);
  double* times = data.Xs.data() + 1;
  double* ranks = data.Ys.data() + 1;
  for (const auto& point : points) {
    *times++ = static_cast<double>(point.time);
    *ranks++ = static_cast<double>(point.rank);
  }
}

}  // namespace

bool load_points(DataSet& set, SolverState& state) {
  check_size(set);
  LoadedPoints points;
  take_failures(set, points);
  state.data.N = static_cast<std::int32_t>(points.size());
  take_suspensions(set, state.data.CensoredLikelihood, points);
  fill(points, state.data);
  const bool differs = points != state.loaded;
  state.loaded = std::move(points);
  return differs;
}

}  // namespace tavlo
