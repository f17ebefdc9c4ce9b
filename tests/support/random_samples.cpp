#include "support/random_samples.h"

#include <algorithm>
#include <cmath>

namespace tavlo::test {
namespace {

constexpr double inspection_interval = 250;

/// Found at the end of the interval in which it failed.
float inspected(double time) {
  return static_cast<float>(std::max(1.0, std::ceil(time / inspection_interval)) *
                            inspection_interval);
}

/// Rows of one time and kind become one with a count.
Rows counted(const Rows& rows) {
  Rows made;
  for (const SampleRow& row : rows) {
    const bool same = !made.empty() && made.back().time == row.time &&
                      (made.back().failures > 0) == (row.failures > 0);
    if (!same) made.push_back({row.time, 0, 0, 0});
    made.back().failures += row.failures;
    made.back().suspensions += row.suspensions;
  }
  return made;
}

FitParam population(double beta, double eta, double fraction, std::int32_t applies) {
  return {1 / eta, fraction, beta, 0, applies};
}

}  // namespace

float to_digits(double time, int digits) {
  const double unit = std::pow(10.0, std::floor(std::log10(time)) - digits + 1);
  return static_cast<float>(std::max(1.0, std::nearbyint(time / unit)) * unit);
}

void sort_rows(Rows& rows) {
  std::stable_sort(rows.begin(), rows.end(), [](const SampleRow& a, const SampleRow& b) {
    return a.time != b.time ? a.time < b.time : a.failures > b.failures;
  });
}

void stop_at(Rows& rows, double share) {
  const auto last = static_cast<std::size_t>(share * static_cast<double>(rows.size()));
  const float limit = rows[std::min(last, rows.size() - 1)].time;
  for (SampleRow& row : rows) {
    if (row.time <= limit) continue;
    row.time = limit;
    row.suspensions += row.failures;
    row.failures = 0;
  }
}

double RandomNumbers::uniform(double low, double high) {
  const double unit = (std::ldexp(static_cast<double>(random_() >> 12), -52)) + 0x1p-53;
  return low + (high - low) * unit;
}

double RandomNumbers::log_uniform(double low, double high) {
  return std::exp(uniform(std::log(low), std::log(high)));
}

int RandomNumbers::whole(int low, int high) {
  return low + static_cast<int>(uniform() * (high - low + 1));
}

double RandomNumbers::weibull(double beta, double eta) {
  return eta * std::pow(-std::log(uniform()), 1 / beta);
}

double RandomNumbers::time_of(const Life& life) {
  const double lot = uniform();
  const bool mixed = life.model == model_code::weibull5c || life.model == model_code::weibull7;
  const std::int32_t part = mixed && lot >= life.rows.front().Fraction ? 2 : 1;
  double first = HUGE_VAL;
  for (const FitParam& row : life.rows) {
    const double time = row.T0 + weibull(row.Shape, 1 / row.Scale);
    if (row.Applies & part) first = std::min(first, time);
  }
  return first;
}

Life weibull(double beta, double eta, double t0) {
  Life life{t0 == 0 ? model_code::weibull2 : model_code::weibull3, {population(beta, eta, 1, 1)}};
  life.rows[0].T0 = t0;
  return life;
}

Life weibull4(double beta_a, double eta_a, double beta_b, double eta_b) {
  return {model_code::weibull4, {population(beta_a, eta_a, 1, 1), population(beta_b, eta_b, 0, 1)}};
}

Life weibull5c(double beta_a, double eta_a, double beta_c, double eta_c, double p) {
  return {model_code::weibull5c,
          {population(beta_c, eta_c, p, 1), population(beta_a, eta_a, 1 - p, 3)}};
}

Life weibull7(double beta_a, double eta_a, double beta_b, double eta_b, double beta_c, double eta_c,
              double p) {
  return {model_code::weibull7,
          {population(beta_c, eta_c, p, 1), population(beta_a, eta_a, 1 - p, 3),
           population(beta_b, eta_b, 0, 3)}};
}

Life random_life(RandomNumbers& random, std::int16_t model) {
  const double wear_out = random.uniform(1.5, 6), eta = random.log_uniform(500, 5000);
  const double chance_beta = random.uniform(0.6, 1.6),
               chance_eta = eta * random.log_uniform(0.7, 4);
  const double early_beta = random.uniform(0.8, 4), early_eta = eta / random.log_uniform(1.5, 30);
  const double share = random.uniform(0.05, 0.5);
  if (model == model_code::weibull4) return weibull4(wear_out, eta, chance_beta, chance_eta);
  if (model == model_code::weibull5c) return weibull5c(wear_out, eta, early_beta, early_eta, share);
  if (model == model_code::weibull7)
    return weibull7(wear_out, eta, chance_beta, chance_eta, early_beta, early_eta, share);
  if (model == model_code::weibull3) return weibull(wear_out, eta, random.uniform(0.1, 1) * eta);
  return weibull(wear_out, eta);
}

Rows weibull_rows(RandomNumbers& random, int count, double beta, double eta,
                  const RowKinds& kinds) {
  Rows rows;
  for (int i = 0; i < count; ++i) {
    const double time = std::max(random.weibull(beta, eta), 1e-30);
    SampleRow row{to_digits(time, kinds.digits), random.chance(0.2) ? random.whole(2, 5) : 1.0};
    if (kinds.fractions && random.chance(0.3)) row.failures = random.whole(1, 11) * 0.25;
    if (random.chance(kinds.share_suspended)) {
      const bool part = kinds.fractions && random.chance(0.3);
      row.suspensions = part ? random.uniform(0.1, 3) : random.whole(1, 3);
      if (random.chance(0.8)) row.failures = 0;
    }
    if (kinds.modes > 0) row.mode = static_cast<std::int16_t>(random.whole(0, kinds.modes));
    rows.push_back(row);
  }
  std::stable_sort(rows.begin(), rows.end(), [](auto& a, auto& b) { return a.time < b.time; });
  return rows;
}

Rows failures_at(const std::vector<double>& times) {
  Rows rows;
  for (const double time : times) rows.push_back({static_cast<float>(time), 1, 0, 0});
  return rows;
}

void shuffle(RandomNumbers& random, Rows& rows) {
  for (int i = static_cast<int>(rows.size()) - 1; i > 0; --i)
    std::swap(rows[static_cast<std::size_t>(i)],
              rows[static_cast<std::size_t>(random.whole(0, i))]);
}

Rows in_unit(Rows rows, int exponent) {
  for (SampleRow& row : rows) row.time = std::ldexp(row.time, exponent);
  return rows;
}

Rows weighted(Rows rows, double factor) {
  for (SampleRow& row : rows) row.failures *= factor, row.suspensions *= factor;
  return rows;
}

Rows draws(RandomNumbers& random, const Life& life, int n, double suspended) {
  Rows rows;
  rows.reserve(static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i) {
    const double time = random.time_of(life);
    const double stop = random.chance(suspended) ? random.time_of(life) : HUGE_VAL;
    const bool failed = time <= stop;
    rows.push_back({to_digits(std::min(time, stop), 7), failed ? 1.0 : 0.0, failed ? 0.0 : 1.0, 0});
  }
  sort_rows(rows);
  return rows;
}

DrawnSample mixture_sample(std::uint64_t seed, std::int16_t model, int most) {
  RandomNumbers random(seed * 0x9e3779b97f4a7c15u + static_cast<std::uint64_t>(model));
  DrawnSample sample{random_life(random, model), {}};
  const int n = static_cast<int>(random.log_uniform(15, most + 1));
  const int kind = random.whole(0, 5);
  sample.rows = draws(random, sample.truth, n, kind == 1 || kind == 4 ? random.uniform(0.2, 1) : 0);
  if (kind == 2) stop_at(sample.rows, random.uniform(0.4, 0.9));
  for (SampleRow& row : sample.rows)
    row.time = kind >= 4 ? inspected(row.time) : kind == 3 ? to_digits(row.time, 2) : row.time;
  if (kind >= 3) sort_rows(sample.rows);
  if (kind >= 3 && random.chance(0.5)) sample.rows = counted(sample.rows);
  return sample;
}

}  // namespace tavlo::test
