#include "solver/regular_maximum.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tavlo {
namespace {

// The distance of t0 from the first time is scanned from 1e-5 to 1e3 times the
// span of the times, three steps a decade.
constexpr double smallest_decade = -5;
constexpr int steps_a_decade = 3;
constexpr int scan_steps = 8 * steps_a_decade;
constexpr int most_scan_rows = 400;  // more are thinned for the scan
constexpr double steepest_beta = 1e5;

/// The likelihood at a given t0 with beta and eta at their best.
class Profile {
 public:
  Profile(const RegressBlock& block, int rows, int stride) {
    for (int i = 1 + stride / 2; i <= rows; i += stride) {
      times_.push_back(block.T.data()[i]);
      if (i <= block.N) failures_ += 1;
    }
    first_ = *std::min_element(times_.begin(), times_.end());
    for (double& time : times_) time -= first_;
    logs_.resize(times_.size());
  }

  double first() const { return first_; }
  double span() const { return *std::max_element(times_.begin(), times_.end()); }

  /// Slope of the profile towards a higher t0 at t0 = first - distance.
  double slope_at(double distance) {
    solve(distance);
    const double beta = beta_;
    double inverse = 0;
    double hazard_rate = 0;
    for (std::size_t i = 0; i < times_.size(); ++i) {
      const double rest = times_[i] + distance;
      if (i < failures_) inverse += 1 / rest;
      hazard_rate += std::exp(beta * (logs_[i] - ln_eta_)) / rest;
    }
    return beta * hazard_rate - (beta - 1) * inverse;
  }

  RegularMaximum at(double distance) {
    solve(distance);
    const double r = static_cast<double>(failures_);
    const double ln_likelihood =
        r * std::log(beta_) + (beta_ - 1) * sum_failed_ - r * beta_ * ln_eta_ - r;
    return {beta_, std::exp(ln_eta_), first_ - distance, ln_likelihood};
  }

  bool regular() const { return beta_ > 1 && beta_ < steepest_beta; }

 private:
  struct Equation {
    double value, slope;
  };

  /// Sum u e^(bu) / sum e^(bu) - 1/b - mean of the failures' u, rising in b.
  Equation equation(double beta) const {
    double s0 = 0, s1 = 0, s2 = 0;
    for (const double u : logs_) {
      const double from_top = u - top_;
      const double weight = std::exp(beta * from_top);
      s0 += weight;
      s1 += weight * from_top;
      s2 += weight * from_top * from_top;
    }
    const double mean = s1 / s0;
    const double failed = sum_failed_ / static_cast<double>(failures_) - top_;
    return {mean - 1 / beta - failed, s2 / s0 - mean * mean + 1 / (beta * beta)};
  }

  void solve(double distance) {
    sum_failed_ = 0;
    for (std::size_t i = 0; i < times_.size(); ++i) {
      logs_[i] = std::log(times_[i] + distance);
      if (i < failures_) sum_failed_ += logs_[i];
    }
    top_ = *std::max_element(logs_.begin(), logs_.end());
    double low = 1e-3, high = steepest_beta;
    for (int i = 0; i < 60; ++i) {
      const Equation at = equation(beta_);
      (at.value < 0 ? low : high) = beta_;
      double next = beta_ - at.value / at.slope;
      if (!(next > low && next < high)) next = std::sqrt(low * high);
      const double change = std::fabs(next - beta_);
      beta_ = next;
      if (change <= 1e-12 * beta_) break;
    }
    double sum = 0;
    for (const double u : logs_) sum += std::exp(beta_ * (u - top_));
    ln_eta_ = top_ + std::log(sum / static_cast<double>(failures_)) / beta_;
  }

  std::vector<double> times_;  // from the first; failures stand first
  std::vector<double> logs_;
  std::size_t failures_ = 0;
  double first_ = 0;
  double top_ = 0;
  double sum_failed_ = 0;
  double beta_ = 1;
  double ln_eta_ = 0;
};

/// A maximum lies between two distances: towards a higher t0 the profile rises at
/// `far` and falls at `near`.
struct Bracket {
  double far, near;
};

std::vector<Bracket> maxima(Profile& profile) {
  std::vector<Bracket> found;
  const double span = profile.span();
  double last_distance = 0;
  double last_slope = 0;
  for (int i = 0; i <= scan_steps; ++i) {
    const double distance =
        span * std::pow(10.0, smallest_decade + static_cast<double>(i) / steps_a_decade);
    const double slope = profile.slope_at(distance);
    if (i > 0 && last_slope < 0 && slope >= 0) found.push_back({distance, last_distance});
    last_distance = distance;
    last_slope = slope;
  }
  return found;
}

/// The thinned rows place a maximum only roughly, and begin later: takes the
/// bracket to all rows and moves its ends outwards until the slope changes its sign
/// between them. False when it does not.
bool widen(const Profile& sketch, Profile& whole, Bracket& bracket) {
  const double later = sketch.first() - whole.first();
  bracket.far = std::max(bracket.far - later, bracket.near);
  bracket.near = std::min(std::max(bracket.near - later, bracket.near / 100), bracket.far);
  for (int i = 0; i < 30; ++i) {
    const bool rises = whole.slope_at(bracket.far) >= 0;
    const bool falls = whole.slope_at(bracket.near) < 0;
    if (rises && falls) return true;
    if (!rises) bracket.far *= 2;
    if (!falls) bracket.near /= 2;
  }
  return false;
}

/// The zero of the slope in the bracket, by the Illinois variant of false
/// position on ln distance.
double zero_of_slope(Profile& profile, Bracket bracket) {
  double a = std::log(bracket.far), fa = profile.slope_at(bracket.far);
  double b = std::log(bracket.near), fb = profile.slope_at(bracket.near);
  int side = 0;
  for (int i = 0; i < 100 && std::fabs(b - a) > 1e-11; ++i) {
    const double c = (fa * b - fb * a) / (fa - fb);
    const double fc = profile.slope_at(std::exp(c));
    const int now = fc >= 0 ? 1 : -1;
    const double moved = now > 0 ? std::fabs(c - a) : std::fabs(c - b);
    if (now > 0) {
      a = c, fa = fc;
      if (side == now) fb /= 2;
    } else {
      b = c, fb = fc;
      if (side == now) fa /= 2;
    }
    side = now;
    if (fc == 0 || moved < 1e-11) break;
  }
  return std::exp(std::fabs(fa) < std::fabs(fb) ? a : b);
}

}  // namespace

std::optional<RegularMaximum> regular_maximum(const RegressBlock& block, int rows) {
  if (block.N < 2 || rows < block.N) return std::nullopt;
  const int stride = std::max(1, rows / most_scan_rows);
  Profile sketch(block, rows, stride);
  if (!(sketch.span() > 0)) return std::nullopt;
  Profile whole(block, rows, 1);
  std::optional<RegularMaximum> best;
  for (Bracket bracket : maxima(sketch)) {
    if (!widen(sketch, whole, bracket)) continue;
    const RegularMaximum maximum = whole.at(zero_of_slope(whole, bracket));
    if (!whole.regular() || !std::isfinite(maximum.ln_likelihood)) continue;
    if (!best || maximum.ln_likelihood > best->ln_likelihood) best = maximum;
  }
  return best;
}

}  // namespace tavlo
