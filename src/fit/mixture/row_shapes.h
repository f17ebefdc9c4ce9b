// Row shapes: value, gradient and Hessian of what a row adds to an objective, by the
// parameters of populations.h, for four rows at a time.
//
// With z = beta (x - ln eta) at the log time x a population has the cumulative hazard e^z,
// and dz / d ln beta = z, dz / d ln eta = -beta. Population C, on the share p of the units,
// leaves T = p exp(-C) + 1 - p; w = p exp(-C) / T is the share of its units among the
// survivors.
#pragma once

#include <algorithm>
#include <array>
#include <type_traits>
#include <utility>

#include "fit/mixture/populations.h"
#include "numerics/pack_math.h"

namespace tavlo {

/// The lower triangle of a symmetric matrix, row by row.
constexpr std::size_t below(std::size_t i, std::size_t j) { return i * (i + 1) / 2 + j; }

/// Calls act(i) with constants i from 0 to K - 1, so that small arrays live in registers.
template <std::size_t K, class Act>
TAVLO_PACKED inline void for_each_constant(Act&& act) {
  [&]<std::size_t... i>(std::index_sequence<i...>) TAVLO_PACKED_LAMBDA {
    (act(std::integral_constant<std::size_t, i>{}), ...);
  }
  (std::make_index_sequence<K>{});
}

/// Calls act(i, j) for the lower triangle, row by row.
template <std::size_t K, class Act>
TAVLO_PACKED inline void for_each_pair(Act&& act) {
  for_each_constant<K>([&](auto i) TAVLO_PACKED_LAMBDA {
    for_each_constant<i() + 1>([&](auto j) TAVLO_PACKED_LAMBDA { act(i, j); });
  });
}

template <std::size_t K>
struct RowShape {
  Pack value{0.0};
  std::array<Pack, K> g{};
  std::array<Pack, K*(K + 1) / 2> h{};
};

/// Parameters as the formulas need them; index by position in the vector.
template <Populations P>
struct RowFormula {
  static constexpr std::size_t K = P.size();
  static constexpr std::size_t A = P.at_a(), B = P.at_b(), C = P.at_c(), S = P.at_share();
  using Shape = RowShape<K>;

  explicit RowFormula(const SmallVector& q) {
    for (std::size_t i = 0; i < 2 * P.count(); i += 2) {
      ln_eta[i] = q[i + 1];
      beta[i] = std::exp(q[i]);
    }
    if constexpr (P.c) {
      share = 1 / (1 + std::exp(-q[S]));
      rest = 1 / (1 + std::exp(q[S]));
    }
  }

  std::array<double, most_variables> beta{}, ln_eta{};
  double share = 0, rest = 1;  ///< p and 1 - p

  double steepest() const { return *std::max_element(beta.begin(), beta.end()); }

  /// A population at a row.
  struct Risk {
    Pack z, hazard;
  };

  /// The hazard is e^(z - lift).
  TAVLO_PACKED Risk risk(std::size_t at, Pack x, Pack lift = 0.0) const {
    const Pack z = (x - ln_eta[at]) * beta[at];
    return {z, exp_within(-700, z - lift, 700)};
  }

  /// 0, or what lifts the largest hazard of a row into the numbers: where steep populations
  /// are far away, their rates still stand in a ratio, and its logarithm still has a slope.
  TAVLO_PACKED Pack lift_at(Pack x) const {
    Pack largest = (x - ln_eta[0]) * beta[0];
    for_each_constant<P.count()>([&](auto i) TAVLO_PACKED_LAMBDA {
      largest = greatest(largest, (x - ln_eta[2 * i()]) * beta[2 * i()]);
    });
    return least(largest + 600.0, 0.0);
  }

  /// C at a row; beyond e^20 no unit of it is left, and its terms are 0.
  struct SharedRisk {
    Pack z, hazard, gone, left, among;  ///< gone = exp(-C) - 1, left = T, among = w
  };

  TAVLO_PACKED SharedRisk shared_risk(Pack x, Pack lift = 0.0) const {
    const Pack z = (x - ln_eta[C]) * beta[C];
    const Pack hazard = exp_within(-700, z - lift, 20);
    const Pack gone = expm1(-hazard);
    const Pack left = gone * share + 1.0;
    return {z, hazard, gone, left, (gone + 1.0) * share / left};
  }

  /// -ln R.
  TAVLO_PACKED Pack total_risk(Pack x) const {
    Pack sum = 0.0;
    if constexpr (P.a) sum = sum + risk(A, x).hazard;
    if constexpr (P.b) sum = sum + risk(B, x).hazard;
    if constexpr (P.c) sum = sum - log1p(shared_risk(x).gone * share);
    return sum;
  }

  /// ln H and its first two derivatives by log time.
  struct Curve {
    Pack y, slope, bend;
  };

  TAVLO_PACKED Curve curve(Pack x) const {
    Pack H = 0.0, first = 0.0, second = 0.0;
    const auto add = [&](const Risk& r, double b) {
      const Pack rate = r.hazard * b;
      H = H + r.hazard;
      first = first + rate;
      second = second + rate * b;
    };
    if constexpr (P.a) add(risk(A, x), beta[A]);
    if constexpr (P.b) add(risk(B, x), beta[B]);
    if constexpr (P.c) {
      const SharedRisk c = shared_risk(x);
      const Pack rate = c.among * c.hazard * beta[C];
      H = H - log1p(c.gone * share);
      first = first + rate;
      second = second + rate * beta[C] * (1.0 - c.hazard * (1.0 - c.among));
    }
    const Pack slope = first / H;
    return {normal_ln(H), slope, second / H - slope * slope};
  }

  /// ln of the density of ln t, without derivatives.
  TAVLO_PACKED Pack ln_density_value(Pack x) const {
    Pack rate = 0.0, sum = 0.0;
    const Pack lift = lift_at(x);
    const auto add = [&](const Risk& r, double b) {
      rate = rate + r.hazard * b;
      sum = sum + r.hazard;
    };
    if constexpr (P.a) add(risk(A, x, lift), beta[A]);
    if constexpr (P.b) add(risk(B, x, lift), beta[B]);
    if constexpr (P.c) {
      const SharedRisk c = shared_risk(x, lift);
      rate = rate + c.among * c.hazard * beta[C];
      sum = sum - log1p(c.gone * share);
    }
    return ln(rate) + lift - sum;
  }

  /// -ln R with its derivatives, added to `shape` (with the sign turned).
  TAVLO_PACKED void subtract_risk(const Risk& r, std::size_t at, Shape& shape) const {
    const double b = beta[at];
    const Pack hz = r.hazard * r.z;
    shape.value = shape.value - r.hazard;
    shape.g[at] = shape.g[at] - hz;
    shape.g[at + 1] = shape.g[at + 1] + r.hazard * b;
    shape.h[below(at, at)] = shape.h[below(at, at)] - hz * (r.z + 1.0);
    shape.h[below(at + 1, at)] = shape.h[below(at + 1, at)] + (r.hazard + hz) * b;
    shape.h[below(at + 1, at + 1)] = shape.h[below(at + 1, at + 1)] - r.hazard * (b * b);
  }

  TAVLO_PACKED void subtract_shared_risk(const SharedRisk& c, Shape& shape) const {
    const double b = beta[C];
    const Pack v = c.among * (1.0 - c.among);
    const Pack by_z = c.among * c.hazard;
    const Pack by_zz = by_z - v * c.hazard * c.hazard;
    const Pack by_sz = v * c.hazard;
    const Pack quotient = c.gone / c.left * (share * rest);
    const Pack by_ss = quotient / c.left * (c.gone * (share * share) + (2 * share - 1));
    shape.value = shape.value + log1p(c.gone * share);
    shape.g[C] = shape.g[C] - by_z * c.z;
    shape.g[C + 1] = shape.g[C + 1] + by_z * b;
    shape.g[S] = shape.g[S] + quotient;
    shape.h[below(C, C)] = shape.h[below(C, C)] - (by_zz * c.z + by_z) * c.z;
    shape.h[below(C + 1, C)] = shape.h[below(C + 1, C)] + (by_zz * c.z + by_z) * b;
    shape.h[below(C + 1, C + 1)] = shape.h[below(C + 1, C + 1)] - by_zz * (b * b);
    shape.h[below(S, C)] = shape.h[below(S, C)] - by_sz * c.z;
    shape.h[below(S, C + 1)] = shape.h[below(S, C + 1)] + by_sz * b;
    shape.h[below(S, S)] = shape.h[below(S, S)] - by_ss;
  }

  /// ln R, for a suspension.
  TAVLO_PACKED Shape ln_reliability(Pack x) const {
    Shape shape;
    if constexpr (P.a) subtract_risk(risk(A, x), A, shape);
    if constexpr (P.b) subtract_risk(risk(B, x), B, shape);
    if constexpr (P.c) subtract_shared_risk(shared_risk(x), shape);
    return shape;
  }

  /// ln of the density of ln t, for a failure.
  TAVLO_PACKED Shape ln_density(Pack x) const {
    Shape shape;
    Risk a{0.0, 0.0}, b{0.0, 0.0};
    SharedRisk c{0.0, 0.0, 0.0, 0.0, 0.0};
    Pack rate = 0.0;
    const Pack lift = lift_at(x);
    if constexpr (P.a) rate = rate + (a = risk(A, x, lift)).hazard * beta[A];
    if constexpr (P.b) rate = rate + (b = risk(B, x, lift)).hazard * beta[B];
    if constexpr (P.c) {
      c = shared_risk(x, lift);
      rate = rate + c.among * c.hazard * beta[C];
    }
    shape.value = ln(rate) + lift;
    if constexpr (P.a) add_rate(a, A, a.hazard * beta[A] / rate, shape);
    if constexpr (P.b) add_rate(b, B, b.hazard * beta[B] / rate, shape);
    if constexpr (P.c) add_shared_rate(c, c.among * c.hazard * beta[C] / rate, shape);
    for_each_pair<K>([&](auto i, auto j) TAVLO_PACKED_LAMBDA {
      shape.h[below(i, j)] = shape.h[below(i, j)] - shape.g[i] * shape.g[j];
    });
    if constexpr (P.a) subtract_risk(a, A, shape);
    if constexpr (P.b) subtract_risk(b, B, shape);
    if constexpr (P.c) subtract_shared_risk(c, shape);
    return shape;
  }

  /// A term of ln(sum of rates), `part` of the sum: its gradient, and its second
  /// derivatives with the products of the first.
  TAVLO_PACKED void add_rate(const Risk& r, std::size_t at, Pack part, Shape& shape) const {
    const double b = beta[at];
    const Pack one = r.z + 1.0;
    shape.g[at] = part * one;
    shape.g[at + 1] = part * -b;
    shape.h[below(at, at)] = part * (r.z + one * one);
    shape.h[below(at + 1, at)] = part * (one + 1.0) * -b;
    shape.h[below(at + 1, at + 1)] = part * (b * b);
  }

  TAVLO_PACKED void add_shared_rate(const SharedRisk& c, Pack part, Shape& shape) const {
    const double b = beta[C];
    const Pack others = 1.0 - c.among;
    const Pack k = 1.0 - c.hazard * others;
    const Pack cv = c.hazard * c.among * others;
    const Pack kk = k - 1.0 - c.hazard * cv;
    const Pack one = k * c.z + 1.0;
    shape.g[C] = part * one;
    shape.g[C + 1] = part * k * -b;
    shape.g[S] = part * others;
    shape.h[below(C, C)] = part * ((kk * c.z + k) * c.z + one * one);
    shape.h[below(C + 1, C)] = part * (k + kk * c.z + k * one) * -b;
    shape.h[below(C + 1, C + 1)] = part * (kk + k * k) * (b * b);
    shape.h[below(S, C)] = part * (cv * c.z + others * one);
    shape.h[below(S, C + 1)] = part * (cv + others * k) * -b;
    shape.h[below(S, S)] = part * (others * others - c.among * others);
  }

  /// The ordinate ln H.
  TAVLO_PACKED Shape ordinate(Pack x) const {
    const Shape risk = ln_reliability(x);  // -H
    Shape shape;
    shape.value = normal_ln(-risk.value);
    const Pack inverse = 1.0 / risk.value;
    for_each_constant<K>([&](auto i) TAVLO_PACKED_LAMBDA { shape.g[i] = risk.g[i] * inverse; });
    for_each_pair<K>([&](auto i, auto j) TAVLO_PACKED_LAMBDA {
      shape.h[below(i, j)] = risk.h[below(i, j)] * inverse - shape.g[i] * shape.g[j];
    });
    return shape;
  }

  /// The log time at which the model reaches the ordinate `target`, as a function of the
  /// parameters, by the rule for implicit functions; `x` is that time, and a Newton step
  /// takes away what it lacks. Log time acts as minus all ln eta.
  TAVLO_PACKED Shape time_of_ordinate(Pack x, Pack target) const {
    const Shape y = ordinate(x);
    constexpr std::size_t lives = P.count();
    Pack by_x = 0.0, by_xx = 0.0;
    std::array<Pack, K> mixed{};
    for_each_constant<lives>([&](auto i) TAVLO_PACKED_LAMBDA { by_x = by_x - y.g[2 * i() + 1]; });
    for_each_constant<K>([&](auto k) TAVLO_PACKED_LAMBDA {
      for_each_constant<lives>([&](auto i) TAVLO_PACKED_LAMBDA {
        constexpr std::size_t l = 2 * i() + 1;
        mixed[k] = mixed[k] - y.h[k() > l ? below(k, l) : below(l, k)];
      });
    });
    for_each_constant<lives>([&](auto i)
                                 TAVLO_PACKED_LAMBDA { by_xx = by_xx - mixed[2 * i() + 1]; });
    const Pack inverse = -1.0 / by_x;
    Shape shape;
    shape.value = x + (y.value - target) * inverse;
    for_each_constant<K>([&](auto k) TAVLO_PACKED_LAMBDA { shape.g[k] = y.g[k] * inverse; });
    for_each_pair<K>([&](auto i, auto j) TAVLO_PACKED_LAMBDA {
      shape.h[below(i, j)] = (y.h[below(i, j)] + mixed[i] * shape.g[j] + mixed[j] * shape.g[i] +
                              by_xx * shape.g[i] * shape.g[j]) *
                             inverse;
    });
    return shape;
  }
};

}  // namespace tavlo
