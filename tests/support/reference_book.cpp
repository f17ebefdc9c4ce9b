#include "support/reference_book.h"

#include <algorithm>
#include <boost/math/distributions/normal.hpp>
#include <cmath>
#include <limits>
#include <numbers>

#include "support/random_samples.h"

namespace tavlo::test {
namespace {

constexpr Number never = -std::numeric_limits<Number>::infinity();

bool is_weibull(const Life& life) {
  return life.model == model_code::by_failure_mode ||
         find_model(life.model)->family == Family::weibull;
}
bool has_share(const Life& life) {
  return life.model == model_code::weibull5c || life.model == model_code::weibull7;
}

/// ln(exp(a) + exp(b)).
Number ln_sum(Number a, Number b) {
  const Number larger = std::max(a, b);
  return larger == never ? never : larger + std::log1p(std::exp(std::min(a, b) - larger));
}

/// Cumulative hazard of one population, and ln of its rate.
Number hazard(const FitParam& row, Number t) {
  if (is_unreached(row) || row.Scale == 0 || t <= row.T0) return 0;
  return std::exp(row.Shape * std::log((t - row.T0) * row.Scale));
}
Number ln_rate(const FitParam& row, Number t) {
  if (is_unreached(row) || row.Scale == 0 || t <= row.T0) return never;
  const Number z = (t - row.T0) * row.Scale;
  return std::log(Number(row.Shape)) + std::log(Number(row.Scale)) + (row.Shape - 1) * std::log(z);
}

/// Units that carry the same risks are a sub-population: of a mixture, that of row i.
bool acts(const Life& life, const FitParam& row, int i) {
  return !has_share(life) || (row.Applies & (1 << i));
}

/// ln of the share of all units that are alive in sub-population i.
Number ln_alive(const Life& life, int i, Number t) {
  Number sum =
      has_share(life) ? std::log(Number(life.rows[static_cast<std::size_t>(i)].Fraction)) : 0;
  for (const FitParam& row : life.rows)
    if (acts(life, row, i)) sum -= hazard(row, t);
  return sum;
}

/// ln of the part of the density that a row brings.
Number ln_part(const Life& life, const FitParam& row, Number t) {
  Number alive = never;
  for (int i = 0; i < (has_share(life) ? 2 : 1); ++i)
    if (acts(life, row, i)) alive = ln_sum(alive, ln_alive(life, i, t));
  return alive + ln_rate(row, t);
}

/// ln(1 - exp(a)) of a negative a.
Number ln_rest(Number a) { return a < -1 ? std::log1p(-std::exp(a)) : std::log(-std::expm1(a)); }

Number ln_normal_upper_tail(Number z) {
  const Number half = std::erfc(std::fabs(z) / std::sqrt(Number(2))) / 2;
  return z < 0 ? std::log1p(-half) : std::log(half);
}
Number ln_normal_density(Number z) {
  return -z * z / 2 - std::log(2 * std::numbers::pi_v<Number>) / 2;
}

struct Tail {
  Number ln_reliability, ln_density;
};

Tail one_row(const Life& life, Number t) {
  const FitParam& row = life.rows.front();
  if (life.model == model_code::normal) {
    const Number z = (t - row.Scale) * row.Shape;
    return {ln_normal_upper_tail(z), ln_normal_density(z) + std::log(Number(row.Shape))};
  }
  if (find_model(life.model)->family == Family::lognormal) {
    if (t <= row.T0) return {0, never};
    const Number z = std::log((t - row.T0) / row.Scale) * row.Shape;
    return {ln_normal_upper_tail(z),
            ln_normal_density(z) + std::log(Number(row.Shape)) - std::log(t - row.T0)};
  }
  const Number z = (t - 1 / Number(row.Scale)) / row.Shape;
  const Number ln_del = std::log(Number(row.Shape));
  if (life.model == model_code::gumbel_lower) return {-std::exp(z), z - std::exp(z) - ln_del};
  return {ln_rest(-std::exp(-z)), -z - std::exp(-z) - ln_del};
}

Number outer(const Sample& sample, std::size_t i) {
  return std::ldexp(Number(sample.time[i]), sample.exponent);
}

Number ordinate(const Life& life, Number t) { return std::log(-ln_reliability_of(life, t)); }

/// ln (t - t0) at which the life reaches an ordinate: Newton's steps inside a bracket.
Number ln_time_at(const Life& life, Number y, Number x) {
  const Number t0 = life.rows.front().T0;
  constexpr Number longest = 4;
  Number low = never, high = -never;
  for (int i = 0; i < 500; ++i) {
    const Number t = t0 + std::exp(x), ln_r = ln_reliability_of(life, t);
    const Number slope = std::exp(ln_density_of(life, t) - ln_r) * (t - t0) / -ln_r;
    const Number off = std::log(-ln_r) - y;
    (off < 0 ? low : high) = x;
    const Number step = std::clamp(-off / slope, -longest, longest);
    if (std::fabs(step) < 1e-17L * (1 + std::fabs(x))) return x + step;
    const Number next = x + step;
    x = next > low && next < high ? next : (low + high) / 2;
    if (high - low < 1e-18L * (1 + std::fabs(x))) return x;
  }
  return x;
}

struct PaperPoint {
  Number weight, x, y;
};

/// Means and centred sums of products.
struct LineSums {
  Number x_mean = 0, y_mean = 0, xx = 0, xy = 0, yy = 0;

  explicit LineSums(const std::vector<PaperPoint>& points) {
    Number n = 0;
    for (const auto& p : points) n += p.weight, x_mean += p.weight * p.x, y_mean += p.weight * p.y;
    x_mean /= n, y_mean /= n;
    for (const auto& p : points) {
      xx += p.weight * (p.x - x_mean) * (p.x - x_mean);
      xy += p.weight * (p.x - x_mean) * (p.y - y_mean);
      yy += p.weight * (p.y - y_mean) * (p.y - y_mean);
    }
  }
};

/// Quantiles of the model's distribution in standard form.
Number paper_ordinate(const Model& model, Number F) {
  if (model.code == model_code::gumbel_upper) return -std::log(-std::log(F));
  if (model.y_scale() == y_scale::normal)
    return boost::math::quantile(boost::math::normal_distribution<Number>(), F);
  return std::log(-std::log1p(-F));
}

}  // namespace

Number ln_reliability_of(const Life& life, Number t) {
  if (!is_weibull(life)) return one_row(life, t).ln_reliability;
  Number common = 0, own = 0;  // of all units, and of those of the first sub-population
  for (const FitParam& row : life.rows)
    (has_share(life) && !(row.Applies & 2) ? own : common) += hazard(row, t);
  // ln(p exp(-own) + 1 - p), with the digits that are lost where next to nothing has failed.
  return own == 0 ? -common : -common + std::log1p(life.rows[0].Fraction * std::expm1(-own));
}

Number ln_density_of(const Life& life, Number t) {
  if (!is_weibull(life)) return one_row(life, t).ln_density;
  Number sum = never;
  for (const FitParam& row : life.rows) sum = ln_sum(sum, ln_part(life, row, t));
  return sum;
}

Number ln_likelihood_of(const Life& life, const Sample& sample, bool with_suspensions) {
  Number sum = 0;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    const Number t = outer(sample, i);
    if (sample.failures[i] > 0) sum += sample.failures[i] * ln_density_of(life, t);
    if (with_suspensions && sample.suspensions[i] > 0)
      sum += sample.suspensions[i] * ln_reliability_of(life, t);
  }
  return sum;
}

Number r_squared_of(const Life& life, const Sample& sample, std::int16_t method) {
  std::vector<PaperPoint> points;
  Number squares = 0;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    if (!(sample.failures[i] > 0)) continue;
    const Number t = outer(sample, i), rank = sample.rank[i];
    const Number x = std::log(t - life.rows.front().T0);
    const Number y = rank > 1e-8L ? std::log(-std::log1p(-rank)) : std::log(rank);
    const bool along_time = method == method_code::x_on_y;
    const Number miss = along_time ? ln_time_at(life, y, x) - x : ordinate(life, t) - y;
    squares += sample.failures[i] * miss * miss;
    points.push_back({sample.failures[i], x, y});
  }
  const LineSums sums(points);
  return 1 - squares / (method == method_code::x_on_y ? sums.xx : sums.yy);
}

PaperLine line_of(const Sample& sample, const Model& model, std::int16_t method, Number t0,
                  Number given_slope) {
  std::vector<PaperPoint> points;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    const Number x = outer(sample, i) - t0;
    if (sample.failures[i] > 0)
      points.push_back({sample.failures[i], model.x_scale() == x_scale::log ? std::log(x) : x,
                        paper_ordinate(model, sample.rank[i])});
  }
  const LineSums s(points);
  const bool y_on_x = method == method_code::y_on_x;
  const Number slope = given_slope > 0 ? given_slope : y_on_x ? s.xy / s.xx : s.yy / s.xy;
  const Number place = s.x_mean - s.y_mean / slope;
  const Number off = s.yy - 2 * slope * s.xy + slope * slope * s.xx;
  const Number r_squared = 1 - (y_on_x ? off / s.yy : off / (slope * slope) / s.xx);
  switch (model.family) {
    case Family::normal: return {place, slope, r_squared};
    case Family::lognormal: return {std::exp(place), slope, r_squared};
    case Family::gumbel: return {1 / place, 1 / slope, r_squared};
    default: return {std::exp(-place), slope, r_squared};
  }
}

Life best_weibull(const Sample& sample, bool with_suspensions, double t0, Number given_slope) {
  const Number last = std::log(outer(sample, sample.size() - 1) - t0);
  Number low = given_slope > 0 ? std::log(given_slope) : -6;
  Number high = given_slope > 0 ? low : 8, beta = 0, scale = 0;  // low and high: ln beta
  for (int turn = 0; turn < 60; ++turn) {
    beta = std::exp((low + high) / 2);
    Number n = 0, logs = 0, powers = 0, both = 0;
    for (std::size_t i = 0; i < sample.size(); ++i) {
      const Number failed = sample.failures[i];
      const Number all = failed + (with_suspensions ? sample.suspensions[i] : 0);
      if (!(all > 0)) continue;
      const Number x = std::log(outer(sample, i) - t0) - last, power = all * std::exp(beta * x);
      n += failed, logs += failed * x, powers += power, both += power * x;
    }
    (n / beta + logs - n * both / powers > 0 ? low : high) = std::log(beta);
    scale = std::pow(n / powers, 1 / beta) / std::exp(last);
    if (given_slope > 0) break;
  }
  return weibull(static_cast<double>(beta), static_cast<double>(1 / scale), t0);
}

Number quality_of(const Life& life, const Sample& sample, const FitRequest& request) {
  if (request.method != method_code::mle) return r_squared_of(life, sample, request.method);
  const bool searched =
      has_share(life) || life.model == model_code::weibull4 || life.model == model_code::weibull3;
  return ln_likelihood_of(life, sample, request.censored || !searched);
}

Numbers expected_failures_of(const Life& life, const Sample& sample) {
  Numbers held(life.rows.size(), 0);
  for (std::size_t i = 0; i < sample.size(); ++i) {
    if (!(sample.failures[i] > 0)) continue;
    const Number t = outer(sample, i), whole = ln_density_of(life, t);
    for (std::size_t j = 0; j < life.rows.size(); ++j)
      held[j] += sample.failures[i] * std::exp(ln_part(life, life.rows[j], t) - whole);
  }
  return held;
}

std::size_t free_parameters(const Life& life, bool hold_share) {
  std::size_t count = life.model == model_code::weibull3 || (has_share(life) && !hold_share);
  for (const FitParam& row : life.rows) count += is_unreached(row) ? 0u : 2u;
  return count;
}

Life moved(const Life& life, const Numbers& steps, bool hold_share) {
  Life at = life;
  std::size_t next = 0;
  for (FitParam& row : at.rows) {
    if (is_unreached(row)) continue;
    row.Shape = static_cast<double>(row.Shape * std::exp(steps[next]));
    row.Scale = static_cast<double>(row.Scale * std::exp(-steps[next + 1]));
    next += 2;
  }
  if (next == steps.size()) return at;
  if (life.model == model_code::weibull3)
    at.rows[0].T0 = static_cast<double>(life.rows[0].T0 + steps[next] / life.rows[0].Scale);
  if (!has_share(life) || hold_share) return at;
  const Number p = life.rows[0].Fraction;
  const Number odds = p / (1 - p) * std::exp(steps[next]);
  at.rows[0].Fraction = static_cast<double>(odds / (1 + odds));
  at.rows[1].Fraction = static_cast<double>(1 / (1 + odds));
  return at;
}

Derivatives derivatives_at_zero(const std::function<Number(const Numbers&)>& function,
                                std::size_t n) {
  constexpr Number h = 0x1p-11L;
  static constexpr Number places[] = {-2, -1, 1, 2}, weights[] = {1, -8, 8, -1};
  const auto slope = [&](Numbers at, std::size_t j) {
    const Number middle = at[j];
    Number sum = 0;
    for (int k = 0; k < 4; ++k) {
      at[j] = middle + places[k] * h;
      sum += weights[k] * function(at);
    }
    return sum / (12 * h);
  };
  Derivatives found{Numbers(n), std::vector<Numbers>(n, Numbers(n))};
  for (std::size_t j = 0; j < n; ++j) found.gradient[j] = slope(Numbers(n), j);
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j <= i; ++j) {
      Number sum = 0;
      for (int k = 0; k < 4; ++k) {
        Numbers at(n);
        at[i] = places[k] * h;
        // Along one axis the steps of both differences add up.
        sum += weights[k] * slope(at, j);
      }
      found.hessian[i][j] = found.hessian[j][i] = sum / (12 * h);
    }
  return found;
}

std::optional<Number> newton_decrement(const Derivatives& at) {
  const std::size_t n = at.gradient.size();
  std::vector<Numbers> root(n, Numbers(n));  // Cholesky's, of minus the Hessian
  Numbers step(n);
  Number gain = 0;
  for (std::size_t i = 0; i < n; ++i) {
    step[i] = at.gradient[i];
    for (std::size_t j = 0; j <= i; ++j) {
      Number sum = -at.hessian[i][j];
      for (std::size_t k = 0; k < j; ++k) sum -= root[i][k] * root[j][k];
      if (i == j && !(sum > 0)) return std::nullopt;
      root[i][j] = i == j ? std::sqrt(sum) : sum / root[j][j];
    }
    for (std::size_t k = 0; k < i; ++k) step[i] -= root[i][k] * step[k];
    step[i] /= root[i][i];
    gain += step[i] * step[i] / 2;
  }
  return gain;
}

bool curves_more_than(Derivatives at, Number least) {
  for (std::size_t i = 0; i < at.hessian.size(); ++i) at.hessian[i][i] += least;
  return newton_decrement(at).has_value();
}

OptimumCheck check_optimum(const Life& life, const Sample& sample, const FitRequest& request,
                           bool hold_share) {
  const auto quality = [&](const Numbers& steps) {
    return quality_of(moved(life, steps, hold_share), sample, request);
  };
  OptimumCheck check;
  check.at = derivatives_at_zero(quality, free_parameters(life, hold_share));
  check.decrement = newton_decrement(check.at);
  if (!has_share(life)) return check;
  const auto along_share = [&](const Numbers& step) {
    Numbers steps(free_parameters(life));
    steps.back() = step[0];
    return quality_of(moved(life, steps), sample, request);
  };
  check.share_slope = derivatives_at_zero(along_share, 1).gradient[0];
  return check;
}

}  // namespace tavlo::test
