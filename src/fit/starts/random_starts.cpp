#include "fit/starts/random_starts.h"

#include <algorithm>
#include <cmath>
#include <random>

#include "fit/starts/start_comparison.h"

namespace tavlo {
namespace {

constexpr std::size_t points_a_start = 3;  // random points for each start that is wanted

class RandomPoint {
 public:
  RandomPoint(const MixtureRows& rows, Populations populations, const SlopeRange& slopes,
              std::uint64_t seed)
      : rows_(rows), populations_(populations), random_(seed) {
    // From a strong infant mortality to a common wear-out; beyond it narrow clusters.
    low_ = std::log(0.3 * slopes.usual);
    middle_ = std::log(std::min(slopes.steepest, 8 * slopes.usual));
    high_ = std::log(slopes.steepest);
  }

  MixturePoint next() {
    MixturePoint point{populations_, {}};
    for (std::size_t i = 0; i < 2 * populations_.count(); i += 2) {
      point.q[i] = ln_slope();
      const auto row = static_cast<std::size_t>(unit() * static_cast<double>(rows_.failures.count));
      const double width = std::min(1.0, 3 * std::exp(-point.q[i]));
      point.q[i + 1] = rows_.failures.x[row] + (unit() - 0.3) * width;
    }
    if (populations_.c) point.q[populations_.at_share()] = 6 * unit() - 3;
    return point;
  }

 private:
  double ln_slope() {
    constexpr double common = 0.7;
    const double u = unit();
    return u < common ? low_ + (middle_ - low_) * u / common
                      : middle_ + (high_ - middle_) * (u - common) / (1 - common);
  }

  /// Uniform in 0 to 1, the same on every machine.
  double unit() { return std::ldexp(static_cast<double>(random_() >> 11), -53); }

  const MixtureRows& rows_;
  const Populations populations_;
  std::mt19937_64 random_;
  double low_ = 0, middle_ = 0, high_ = 0;
};

}  // namespace

std::vector<MixturePoint> random_starts(const MixtureRows& rows, Populations populations,
                                        const SlopeRange& slopes, std::uint64_t seed,
                                        std::size_t most) {
  RandomPoint random(rows, populations, slopes, seed);
  StartComparison comparison(rows, populations);
  for (std::size_t i = 0; i < points_a_start * most; ++i) comparison.add(random.next());
  return comparison.best(most);
}

}  // namespace tavlo
