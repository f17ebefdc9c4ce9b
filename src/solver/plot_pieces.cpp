#include "solver/plot_pieces.h"

#include <algorithm>
#include <cmath>

#include "numerics/rounding.h"

namespace tavlo {
namespace {

constexpr double lowest_slope = 0.2;
constexpr double highest_slope = 20;
constexpr double life_reach = 14;
constexpr double lowest_share = 0.001;
constexpr double highest_share = 0.999;

/// Shares of the rows at which breaks are tried too.
constexpr std::array<std::array<double, 2>, 5> usual_breaks = {
    {{0.05, 0.5}, {0.1, 0.3}, {0.1, 0.6}, {0.2, 0.5}, {0.3, 0.8}}};

int row_at(double share, int rows) { return ToInt32(IntFloor(share * rows)); }

/// Keeps the breaks apart and off the ends, so that each piece has its points.
PlotBreaks limited(PlotBreaks at, int rows) {
  at.first = std::max(at.first, 3);
  at.second = std::max(at.second, 6);
  if (at.first >= rows - 2) at.first = at.second - 3;
  at.second = std::min(std::max(at.second, at.first + 2), rows - 2);
  at.first = std::min(at.first, at.second - 2);
  return at;
}

/// The last rows that pushed a line of the chord's slope up or down: where the
/// early population ends and where wear-out begins.
PlotBreaks breaks_about_chord(const double* x, const double* y, int rows, double slope) {
  PlotBreaks at{1, 1};
  double upper = x[1] - y[1] / slope;
  double lower = upper;
  for (int i = 1; i <= rows; ++i) {
    if (y[i] > (x[i] - upper) * slope) {
      upper = x[i] - y[i] / slope;
      at.first = i;
    }
    if (y[i] < (x[i] - lower) * slope) {
      lower = x[i] - y[i] / slope;
      at.second = i;
    }
  }
  if (at.second == 1) at = {row_at(0.3, rows), row_at(0.8, rows)};
  return at;
}

/// The first row from `row` on that has another time, in steps of `step`; the end
/// of the rows when there is none.
int other_time(const double* x, int rows, int row, int step) {
  const double here = x[row];
  while (x[row] == here && row + step >= 1 && row + step <= rows) row += step;
  return row;
}

/// Stays at `otherwise` where the two points give no rising line.
double slope_between(PlotPoint a, PlotPoint b, double otherwise) {
  const double slope = (b.y - a.y) / (b.x - a.x);
  return std::clamp(std::isfinite(slope) ? slope : otherwise, lowest_slope, highest_slope);
}

double held_log_life(double ln_eta, PlotPoint near) {
  return std::clamp(ln_eta, near.x - life_reach, near.x + life_reach);
}

MixtureStart::Population line_through(PlotPoint point, double slope) {
  return {slope, held_log_life(point.x - point.y / slope, point), true};
}

/// Solves for one parameter after the other, see `relaxed`.
class Relaxation {
 public:
  Relaxation(MixtureStart& start, const PlotPieces& pieces, int K)
      : at_(start), anchor_(pieces.anchor), K_(K) {}

  void pass() {
    const auto own_hazard_of_a = [this](PlotPoint P) { return shared_hazard(P, at_.B); };
    const auto own_hazard_of_b = [this](PlotPoint P) { return shared_hazard(P, at_.A); };
    const auto own_hazard_of_c = [this](PlotPoint P) { return partial_hazard(P); };
    solve(at_.A, anchor_[6], anchor_[7], anchor_[7], own_hazard_of_a);
    const PlotPoint& start_of_b = anchor_[K_ == 4 ? 1 : 4];
    if (at_.B.is_present) solve(at_.B, start_of_b, anchor_[5], start_of_b, own_hazard_of_b);
    if (!at_.C.is_present) return;
    solve(at_.C, anchor_[1], anchor_[2], anchor_[1], own_hazard_of_c);
    solve_share(anchor_[K_ == 5 ? 4 : 3]);
  }

 private:
  static double survival(PlotPoint P) { return std::exp(-std::exp(P.y)); }

  /// exp of the hazards that every unit has.
  double inverse_common_survival(PlotPoint P) const {
    return std::exp(at_.A.hazard(P.x) + at_.B.hazard(P.x));
  }

  /// What is left of the plot's hazard at P for A or B beside the other one and C.
  double shared_hazard(PlotPoint P, const MixtureStart::Population& other) const {
    const double without_c =
        at_.C.is_present ? at_.p * std::exp(-at_.C.hazard(P.x)) + 1 - at_.p : 1.0;
    return std::exp(P.y) - other.hazard(P.x) + std::log(without_c);
  }

  /// What is left of it for C, which only the share p carries.
  double partial_hazard(PlotPoint P) const {
    const double left = (survival(P) * inverse_common_survival(P) - (1 - at_.p)) / at_.p;
    return left > 0 ? -std::log(left) : 0.0;
  }

  template <class OwnHazard>
  static void solve(MixtureStart::Population& population, PlotPoint low, PlotPoint high,
                    PlotPoint life_anchor, OwnHazard own_hazard) {
    const double at_low = own_hazard(low);
    const double at_high = own_hazard(high);
    if (at_low > 0 && at_high > 0) {
      const double beta = std::log(at_high / at_low) / (high.x - low.x);
      if (std::isfinite(beta)) population.beta = std::clamp(beta, lowest_slope, highest_slope);
    }
    const double at_life = own_hazard(life_anchor);
    if (!(at_life > 0)) return;
    const double ln_eta = life_anchor.x - std::log(at_life) / population.beta;
    if (std::isfinite(ln_eta)) population.ln_eta = held_log_life(ln_eta, life_anchor);
  }

  void solve_share(PlotPoint P) {
    const double p =
        (1 - survival(P) * inverse_common_survival(P)) / (1 - std::exp(-at_.C.hazard(P.x)));
    if (std::isfinite(p)) at_.p = std::clamp(p, lowest_share, highest_share);
  }

  MixtureStart& at_;
  const PlotAnchors& anchor_;
  const int K_;
};

}  // namespace

std::vector<PlotBreaks> likely_breaks(const double* x, const double* y, int rows) {
  const double slope = (y[rows] - y[1]) / (x[rows] - x[1]);
  if (!(slope > 0) || !std::isfinite(slope)) return {};
  std::vector<PlotBreaks> pairs = {limited(breaks_about_chord(x, y, rows, slope), rows)};
  for (const auto& [first, second] : usual_breaks)
    pairs.push_back(limited({row_at(first, rows), row_at(second, rows)}, rows));
  return pairs;
}

PlotPieces pieces_of(const double* x, const double* y, int rows, PlotBreaks breaks) {
  const auto point = [&](int row) { return PlotPoint{x[row], y[row]}; };
  PlotPieces pieces;
  PlotAnchors& P = pieces.anchor;
  P[1] = point(1);
  P[2] = point(other_time(x, rows, breaks.first, -1));
  P[3] = point(other_time(x, rows, breaks.first, +1));
  P[4] = point((breaks.first + breaks.second) / 2);
  P[5] = point(other_time(x, rows, breaks.second, -1));
  P[6] = point(other_time(x, rows, breaks.second, +1));
  P[7] = point(rows);
  const double chord = slope_between(P[1], P[7], 1);
  pieces.early_slope = slope_between(P[1], P[2], chord);
  pieces.middle_slope = slope_between(P[3], P[5], chord);
  pieces.late_slope = slope_between(P[6], P[7], chord);
  pieces.early_to_middle = slope_between(P[1], P[5], chord);
  pieces.share = std::clamp(1 - std::exp(-std::exp(y[breaks.first])), lowest_share, highest_share);
  return pieces;
}

double MixtureStart::Population::hazard(double x) const {
  return is_present ? std::exp(beta * (x - ln_eta)) : 0.0;
}

ParameterVector MixtureStart::to_x() const {
  ParameterVector X{};
  std::size_t slot = 0;
  for (const Population& population : {A, B, C}) {
    if (!population.is_present) continue;
    X[++slot] = population.beta;
    X[++slot] = std::exp(population.ln_eta);
  }
  if (C.is_present) X[++slot] = p;
  return X;
}

MixtureStart start_from(const PlotPieces& pieces, int K) {
  const PlotAnchors& P = pieces.anchor;
  MixtureStart start;
  start.A = line_through(P[7], pieces.late_slope);
  if (K == 4) start.B = line_through(P[1], pieces.early_to_middle);
  if (K == 7) start.B = line_through(P[4], pieces.middle_slope);
  if (K == 4) return start;
  start.C = line_through(P[2], pieces.early_slope);
  start.p = pieces.share;
  return start;
}

MixtureStart relaxed(MixtureStart start, const PlotPieces& pieces, int K) {
  constexpr int passes = 10;
  Relaxation relaxation(start, pieces, K);
  for (int pass = 0; pass < passes; ++pass) relaxation.pass();
  return start;
}

}  // namespace tavlo
