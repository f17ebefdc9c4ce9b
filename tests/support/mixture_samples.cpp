#include "support/mixture_samples.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace tavlo::test {
namespace {

double hazard(double t, double beta, double eta) {
  return beta > 0 ? std::pow(t / eta, beta) : 0.0;
}

double rate(double t, double beta, double eta) {
  return beta > 0 ? beta / t * std::pow(t / eta, beta) : 0.0;
}

class Draws {
 public:
  explicit Draws(std::uint64_t seed) : random_(seed) {}

  double uniform() { return (std::ldexp(static_cast<double>(random_() >> 11), -53)); }
  double weibull(double beta, double eta) {
    return beta > 0 ? eta * std::pow(-std::log1p(-uniform()), 1 / beta) : 1e300;
  }
  double life(const TrueMixture& m) {
    const double common = std::min(weibull(m.beta_a, m.eta_a), weibull(m.beta_b, m.eta_b));
    const double early = weibull(m.beta_c, m.eta_c);
    return uniform() < m.share ? std::min(common, early) : common;
  }

 private:
  std::mt19937_64 random_;
};

double rounded(double value, int digits) {
  const double unit = std::pow(10.0, std::floor(std::log10(value)) - digits + 1);
  return std::max(1.0, std::round(value / unit)) * unit;
}

struct Unit {
  double time;
  bool failed;
};

DataSet data_of(const std::vector<Unit>& units) {
  DataSet data = fuStandardData();
  data.Count = static_cast<std::int32_t>(units.size());
  data.Points.resize(data.Count);
  const double n = static_cast<double>(units.size());
  double order = 0;
  for (int i = 1; i <= data.Count; ++i) {
    const Unit& unit = units[static_cast<std::size_t>(i) - 1];
    DataPoint& row = data.Points(i);
    row.X = static_cast<float>(unit.time);
    row.Order = i;
    (unit.failed ? row.Fails : row.Susps) = 1;
    (unit.failed ? data.Points(0).Fails : data.Points(0).Susps) += 1;
    if (!unit.failed) continue;
    order += (n + 1 - order) / (n - i + 2);  // Johnson's increment
    row.Y = static_cast<float>((order - 0.3) / (n + 0.4));
  }
  return data;
}

}  // namespace

double TrueMixture::reliability(double t) const {
  const double common = std::exp(-hazard(t, beta_a, eta_a) - hazard(t, beta_b, eta_b));
  return common * (share * std::exp(-hazard(t, beta_c, eta_c)) + 1 - share);
}

double TrueMixture::density(double t) const {
  const double common = std::exp(-hazard(t, beta_a, eta_a) - hazard(t, beta_b, eta_b));
  const double early = share * std::exp(-hazard(t, beta_c, eta_c));
  const double common_rate = rate(t, beta_a, eta_a) + rate(t, beta_b, eta_b);
  return common * (early * (rate(t, beta_c, eta_c) + common_rate) + (1 - share) * common_rate);
}

double TrueMixture::quantile(double F) const {
  double low = -300, high = 300;  // ln t
  for (int i = 0; i < 200 && low < high; ++i) {
    const double middle = (low + high) / 2;
    (1 - reliability(std::exp(middle)) < F ? low : high) = middle;
  }
  return std::exp(high);
}

DataSet precise_sample(const TrueMixture& mixture, int n) {
  std::vector<Unit> units;
  for (int i = 1; i <= n; ++i) units.push_back({mixture.quantile((i - 0.3) / (n + 0.4)), true});
  return data_of(units);
}

DataSet random_sample(const TrueMixture& mixture, const SampleKind& kind) {
  Draws draws(kind.seed);
  std::vector<Unit> units;
  for (int i = 0; i < kind.n; ++i) {
    const double life = draws.life(mixture);
    const double stop = draws.life(mixture);
    const bool suspended = draws.uniform() < kind.censored && stop < life;
    units.push_back({rounded(suspended ? stop : life, kind.digits), !suspended});
  }
  std::stable_sort(units.begin(), units.end(),
                   [](const Unit& a, const Unit& b) { return a.time < b.time; });
  return data_of(units);
}

}  // namespace tavlo::test
