#include "fit/search/minimum_life_profile.h"

#include <algorithm>
#include <cmath>

#include "fit/likelihood/log_times.h"

namespace tavlo {
namespace {

constexpr double smallest_decade = -7;
constexpr int steps_a_decade = 4;
constexpr int scan_steps = 10 * steps_a_decade;

/// The likelihood at a given t0 with beta and eta at their best.
class Profile {
 public:
  explicit Profile(const TimesFromFirst& times) : times_(times) {}

  /// Slope of the profile towards a higher t0 at t0 = first - distance.
  double slope_at(double distance) {
    solve(distance);
    double inverse = 0, hazard_rate = 0;
    for (std::size_t i = 0; i < rests_.size(); ++i) {
      if (i < times_.failures.count) inverse += weights_[i] / rests_[i];
      hazard_rate += weights_[i] * std::exp(beta_ * (logs_[i] - ln_eta_)) / rests_[i];
    }
    return beta_ * hazard_rate - (beta_ - 1) * inverse;
  }

  ProfilePoint at(double distance) {
    solve(distance);
    return {distance, beta_, ln_eta_};
  }

 private:
  /// Times beyond t0 and their logarithms. Suspensions at or below t0, certain to survive,
  /// weigh nothing.
  void measure_from(double distance) {
    rests_.clear();
    weights_.clear();
    for (const WeightedRows* list : {&times_.failures, &times_.suspensions})
      for (std::size_t i = 0; i < list->count; ++i) {
        if (!(list->x[i] + distance > 0)) continue;
        rests_.push_back(list->x[i] + distance);
        weights_.push_back(list->w[i]);
      }
    logs_.resize(rests_.size());
    std::transform(rests_.begin(), rests_.end(), logs_.begin(),
                   [](double rest) { return std::log(rest); });
    mean_failed_ = 0;
    for (std::size_t i = 0; i < times_.failures.count; ++i)
      mean_failed_ += weights_[i] * logs_[i] / times_.failures.total;
  }

  void solve(double distance) {
    measure_from(distance);
    const LogTimeWeibull best =
        most_likely_weibull({logs_, weights_, times_.failures.total, mean_failed_}, beta_);
    beta_ = best.beta;
    ln_eta_ = best.ln_eta;
  }

  const TimesFromFirst& times_;
  std::vector<double> rests_;  // beyond t0; failures stand first
  std::vector<double> logs_;
  std::vector<double> weights_;
  double mean_failed_ = 0;
  double beta_ = 1;
  double ln_eta_ = 0;
};

double span_of(const TimesFromFirst& times) {
  double last = 0;
  for (const WeightedRows* list : {&times.failures, &times.suspensions})
    for (const double time : list->x) last = std::max(last, time);
  return last;
}

}  // namespace

ProfileScan scan_minimum_life(const TimesFromFirst& times) {
  ProfileScan scan;
  const double span = span_of(times);
  if (!(span > 0)) return scan;
  Profile profile(times);
  double last_distance = 0, last_slope = 0;
  for (int i = 0; i <= scan_steps; ++i) {
    const double distance =
        span * std::pow(10.0, smallest_decade + static_cast<double>(i) / steps_a_decade);
    const double slope = profile.slope_at(distance);
    if (i > 0 && last_slope < 0 && slope >= 0)
      scan.maxima.push_back(profile.at(std::sqrt(last_distance * distance)));
    last_distance = distance;
    last_slope = slope;
  }
  scan.rises_outward = last_slope < 0;
  return scan;
}

}  // namespace tavlo
