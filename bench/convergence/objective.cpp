#include "convergence/objective.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavlo::bench {
namespace {

/// A scalar with its gradient and (lower) Hessian.
struct Jet {
  double value = 0;
  Vector g{};
  Matrix h{};
};

/// One population at one log time: hazard h = exp(u), u = beta (x - ln eta), and the
/// derivatives of h by ln beta (a) and ln eta (e).
struct Population {
  bool present = false;
  std::size_t at = 0;  ///< index of ln beta
  double ln_beta = 0, beta = 0, ln_eta = 0;
  double u = 0, h = 0, h_a = 0, h_e = 0, h_aa = 0, h_ae = 0, h_ee = 0;

  double hazard(double x) const { return present ? std::exp(beta * (x - ln_eta)) : 0.0; }
  void move_to(double x) {
    if (!present) return;
    u = beta * (x - ln_eta);
    h = std::exp(u);
    h_a = h * u, h_e = -h * beta;
    h_aa = h_a * (u + 1), h_ae = h_e * (u + 1), h_ee = h * beta * beta;
  }
  double ln_rate() const { return ln_beta + u; }  ///< times t
  void add_hazard(double factor, Jet& jet) const {
    if (!present) return;
    jet.g[at] += factor * h_a, jet.g[at + 1] += factor * h_e;
    add_hazard_curvature(factor, jet.h);
  }
  void add_hazard_curvature(double factor, Matrix& m) const {
    m[at][at] += factor * h_aa, m[at + 1][at] += factor * h_ae;
    m[at + 1][at + 1] += factor * h_ee;
  }
};

struct Point {
  std::array<Population, 3> all;
  bool mixed = false;
  std::size_t share_at = 0;
  double p = 0, q = 1;
  std::size_t n = 0;

  Point(const Shape& shape, const Vector& v) {
    const bool present[] = {shape.a, shape.b, shape.c};
    for (std::size_t j = 0; j < 3; ++j) {
      if (!present[j]) continue;
      Population& it = all[j];
      it.present = true, it.at = n;
      it.ln_beta = v[n], it.beta = std::exp(v[n]), it.ln_eta = v[n + 1];
      n += 2;
    }
    mixed = shape.share;
    if (!mixed) return;
    share_at = n++;
    p = 1 / (1 + std::exp(-v[share_at]));
    q = 1 / (1 + std::exp(v[share_at]));
  }

  void move_to(double x) {
    for (Population& it : all) it.move_to(x);
  }

  double ln_reliability(double x) const {
    const double common = -all[0].hazard(x) - all[1].hazard(x);
    return mixed ? common + std::log1p(p * std::expm1(-all[2].hazard(x))) : common;
  }

  double ln_density(double x) const {  // times t
    const Population &a = all[0], &b = all[1], &c = all[2];
    const double h_c = c.hazard(x), left = mixed ? q + p * std::exp(-h_c) : 1.0;
    const auto rate = [x](const Population& it) { return it.ln_beta + it.beta * (x - it.ln_eta); };
    constexpr double none = -std::numeric_limits<double>::infinity();
    const double ra = a.present ? rate(a) + std::log(left) : none;
    const double rb = b.present ? rate(b) + std::log(left) : none;
    const double rc = c.present ? rate(c) + std::log(p) - h_c : none;
    const double largest = std::max({ra, rb, rc});
    return -a.hazard(x) - b.hazard(x) + largest +
           std::log(std::exp(ra - largest) + std::exp(rb - largest) + std::exp(rc - largest));
  }

  /// ln R, and its slope by x: minus the rate times t.
  struct Line {
    double value, slope;
  };
  Line reliability_line(double x) const {
    const double a = all[0].hazard(x), b = all[1].hazard(x);
    Line line{-a - b, -all[0].beta * a - all[1].beta * b};
    if (!mixed) return line;
    const double h = all[2].hazard(x), failed = std::expm1(-h);
    line.value += std::log1p(p * failed);
    if (h < 700) line.slope -= all[2].beta * h * p * (1 + failed) / (1 + p * failed);
    return line;
  }
};

void clear(Jet& jet, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) {
    jet.g[i] = 0;
    for (std::size_t j = 0; j <= i; ++j) jet.h[i][j] = 0;
  }
}

/// ln R = -A - B + ln(1 - p + p exp(-C)).
void reliability_jet(const Point& at, Jet& jet) {
  clear(jet, at.n);
  const Population &a = at.all[0], &b = at.all[1], &c = at.all[2];
  jet.value = -a.h - b.h;
  a.add_hazard(-1, jet);
  b.add_hazard(-1, jet);
  if (!at.mixed) return;
  const double failed = std::expm1(-c.h), alive = at.p * std::exp(-c.h), m = 1 + at.p * failed;
  jet.value += std::log1p(at.p * failed);
  const std::size_t i = c.at, s = at.share_at;
  const double weight = alive / m;
  if (weight > 0) {
    const double g_a = -weight * c.h_a, g_e = -weight * c.h_e;
    jet.g[i] += g_a, jet.g[i + 1] += g_e;
    c.add_hazard_curvature(-weight, jet.h);
    const double own = weight * (1 - weight);
    jet.h[i][i] += own * c.h_a * c.h_a;
    jet.h[i + 1][i] += own * c.h_e * c.h_a;
    jet.h[i + 1][i + 1] += own * c.h_e * c.h_e;
    // The weight's slope by the logit of p.
    const double turn = at.p * at.q * std::exp(-c.h) / (m * m);
    jet.h[s][i] -= turn * c.h_a;
    jet.h[s][i + 1] -= turn * c.h_e;
  }
  const double by_share = at.p * at.q * failed / m;
  jet.g[s] += by_share;
  jet.h[s][s] += by_share * (at.q - at.p) - by_share * by_share;
}

/// One way to fail: a population's rate, alive in a part of the units.
struct WayToFail {
  std::size_t population;
  bool carries_c;
};

constexpr WayToFail ways_to_fail[] = {{0, false}, {1, false}, {0, true}, {1, true}, {2, true}};
using Terms = std::array<double, 5>;

/// What each way has of the density, next to the largest; returns ln of the largest.
double terms_of(const Point& at, Terms& term) {
  constexpr double none = -std::numeric_limits<double>::infinity();
  const double ln_p = std::log(at.p), ln_q = std::log(at.q);
  double largest = none;
  for (std::size_t k = 0; k < term.size(); ++k) {
    const WayToFail& way = ways_to_fail[k];
    const Population& it = at.all[way.population];
    const bool there = it.present && (at.mixed || !way.carries_c);
    term[k] = there ? it.ln_rate() : none;
    if (there && at.mixed) term[k] += way.carries_c ? ln_p - at.all[2].h : ln_q;
    largest = std::max(largest, term[k]);
  }
  for (double& each : term) each = std::exp(each - largest);
  return largest;
}

/// ln (f t): the logarithm of the sum over the ways to fail.
void density_jet(const Point& at, Jet& jet, std::array<double, 3>* parts = nullptr) {
  clear(jet, at.n);
  const Population& c = at.all[2];
  Terms term{};
  const double largest = terms_of(at, term);
  double sum = 0;
  for (const double each : term) sum += each;
  jet.value = largest + std::log(sum);
  Vector mean{};
  std::array<double, 3> rates{};
  double carried = 0;
  for (std::size_t k = 0; k < term.size(); ++k) {
    const WayToFail& way = ways_to_fail[k];
    const double share = term[k] / sum;
    if (!(share > 0)) continue;
    const Population& it = at.all[way.population];
    Vector g{};
    g[it.at] += 1 + it.u, g[it.at + 1] -= it.beta;
    if (at.mixed && way.carries_c) {
      g[c.at] -= c.h_a, g[c.at + 1] -= c.h_e;
      carried += share;
    }
    if (at.mixed) g[at.share_at] = way.carries_c ? at.q : -at.p;
    rates[way.population] += share;
    for (std::size_t i = 0; i < at.n; ++i) {
      mean[i] += share * g[i];
      for (std::size_t j = 0; j <= i; ++j) jet.h[i][j] += share * g[i] * g[j];
    }
  }
  for (std::size_t i = 0; i < at.n; ++i) {
    jet.g[i] = mean[i];
    for (std::size_t j = 0; j <= i; ++j) jet.h[i][j] -= mean[i] * mean[j];
  }
  for (std::size_t j = 0; j < 3; ++j) {
    const Population& it = at.all[j];
    if (!it.present) continue;
    jet.h[it.at][it.at] += rates[j] * it.u;
    jet.h[it.at + 1][it.at] -= rates[j] * it.beta;
  }
  if (at.mixed && carried > 0) c.add_hazard_curvature(-carried, jet.h);
  if (at.mixed) jet.h[at.share_at][at.share_at] -= at.p * at.q;
  jet.value -= at.all[0].h + at.all[1].h;
  at.all[0].add_hazard(-1, jet);
  at.all[1].add_hazard(-1, jet);
  if (parts) *parts = rates;
}

/// ln R becomes ln(-ln R).
void to_ordinate(Jet& jet, std::size_t n) {
  const double r = jet.value;
  jet.value = std::log(-r);
  for (std::size_t i = 0; i < n; ++i) jet.g[i] /= r;
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j <= i; ++j) jet.h[i][j] = jet.h[i][j] / r - jet.g[i] * jet.g[j];
}

/// The ordinate z(x, v) at its root z = y becomes x(v). A step of x is one of all ln eta
/// the other way.
void to_time(const Point& at, Jet& jet, double x) {
  double z_x = 0, z_xx = 0;
  Vector z_xv{};
  const auto h = [&](std::size_t i, std::size_t j) { return i >= j ? jet.h[i][j] : jet.h[j][i]; };
  for (const Population& it : at.all) {
    if (!it.present) continue;
    z_x -= jet.g[it.at + 1];
    for (std::size_t i = 0; i < at.n; ++i) z_xv[i] -= h(i, it.at + 1);
  }
  for (const Population& it : at.all)
    if (it.present) z_xx -= z_xv[it.at + 1];
  Vector slope{};
  for (std::size_t i = 0; i < at.n; ++i) slope[i] = -jet.g[i] / z_x;
  for (std::size_t i = 0; i < at.n; ++i)
    for (std::size_t j = 0; j <= i; ++j)
      jet.h[i][j] =
          -(jet.h[i][j] + z_xv[i] * slope[j] + slope[i] * z_xv[j] + z_xx * slope[i] * slope[j]) /
          z_x;
  jet.g = slope;
  jet.value = x;
}

/// ln time at which the ordinate is y; not a number where there is none.
double root(const Point& at, double y, double x) {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  double low = -HUGE_VAL, high = HUGE_VAL;
  for (int i = 0; i < 100 && std::fabs(x) < 1e4; ++i) {
    const Point::Line line = at.reliability_line(x);
    const double off = std::log(-line.value) - y;
    if (std::isnan(off)) return none;
    (off < 0 ? low : high) = x;
    double step = -off * line.value / line.slope;
    // The step after this one would be of the order of its square.
    if (std::fabs(step) < 1e-8) return x + step;
    if (!(std::fabs(step) <= 4)) step = off < 0 ? 4 : -4;
    const double next = x + step;
    x = next > low && next < high ? next : (low + high) / 2;
  }
  return none;
}

void add_row(double weight, const Jet& jet, std::size_t n, Evaluation& out) {
  out.value += weight * jet.value;
  for (std::size_t i = 0; i < n; ++i) {
    out.gradient[i] += weight * jet.g[i];
    for (std::size_t j = 0; j <= i; ++j) {
      out.hessian[i][j] += weight * jet.h[i][j];
      out.squares[i][j] += weight * jet.g[i] * jet.g[j];
    }
  }
}

/// Takes the row's squared miss off the r squared.
void add_miss(double weight, double miss, const Jet& jet, std::size_t n, Evaluation& out) {
  out.value -= weight * miss * miss;
  for (std::size_t i = 0; i < n; ++i) {
    out.gradient[i] -= 2 * weight * miss * jet.g[i];
    for (std::size_t j = 0; j <= i; ++j) {
      out.hessian[i][j] -= 2 * weight * (miss * jet.h[i][j] + jet.g[i] * jet.g[j]);
      out.squares[i][j] += 2 * weight * jet.g[i] * jet.g[j];
    }
  }
}

void mirror(Matrix& m) {
  for (std::size_t i = 0; i < most_parameters; ++i)
    for (std::size_t j = 0; j < i; ++j) m[j][i] = m[i][j];
}

}  // namespace

Shape shape_of(std::int16_t model) {
  switch (model) {
    case model_code::weibull4: return {true, true, false, false};
    case model_code::weibull5c: return {true, false, true, true};
    case model_code::weibull7: return {true, true, true, true};
    default: return {};
  }
}

Objective::Objective(const Sample& sample, Shape shape, std::int16_t method, bool with_suspensions)
    : shape_(shape), method_(method), unit_(std::ldexp(1.0, sample.exponent)) {
  for (std::size_t i = 0; i < sample.size(); ++i) {
    const double x = std::log(sample.time[i]), rank = sample.rank[i];
    if (sample.failures[i] > 0) {
      x_.push_back(x);
      y_.push_back(rank > 1e-8 ? std::log(-std::log1p(-rank)) : std::log(rank));
      weight_.push_back(sample.failures[i]);
      total_ += sample.failures[i];
    }
    if (with_suspensions && sample.suspensions[i] > 0) {
      late_.push_back(x);
      late_weight_.push_back(sample.suspensions[i]);
    }
  }
  last_root_ = x_;
  const std::vector<double>& values = method == method_code::x_on_y ? x_ : y_;
  double mean = 0;
  for (std::size_t i = 0; i < x_.size(); ++i) mean += weight_[i] * values[i] / total_;
  for (std::size_t i = 0; i < x_.size(); ++i)
    spread_ += weight_[i] * (values[i] - mean) * (values[i] - mean);
}

double Objective::start_of(std::size_t row) const {
  return std::fabs(last_root_[row] - x_[row]) < 3 ? last_root_[row] : x_[row];
}

double Objective::value(const Vector& v) const {
  const Point at(shape_, v);
  double sum = 0;
  for (std::size_t i = 0; i < x_.size(); ++i) {
    double miss = 0;
    switch (method_) {
      case method_code::mle: sum += weight_[i] * (at.ln_density(x_[i]) - x_[i]); continue;
      case method_code::x_on_y: miss = root(at, y_[i], start_of(i)) - x_[i]; break;
      default: miss = std::log(-at.ln_reliability(x_[i])) - y_[i];
    }
    sum += weight_[i] * miss * miss;
  }
  if (method_ != method_code::mle) return 1 - sum / spread_;
  for (std::size_t i = 0; i < late_.size(); ++i)
    sum += late_weight_[i] * at.ln_reliability(late_[i]);
  return sum - total_ * std::log(unit_);
}

void Objective::evaluate(const Vector& v, Evaluation& out) const {
  Point at(shape_, v);
  out = Evaluation{};
  Jet jet;
  if (method_ != method_code::mle) out.value = 1;
  for (std::size_t i = 0; i < x_.size(); ++i) {
    if (method_ == method_code::mle) {
      at.move_to(x_[i]);
      density_jet(at, jet);
      jet.value -= x_[i];
      add_row(weight_[i], jet, at.n, out);
      continue;
    }
    const bool along_time = method_ == method_code::x_on_y;
    const double place = along_time ? root(at, y_[i], start_of(i)) : x_[i];
    if (along_time) last_root_[i] = place;
    at.move_to(place);
    reliability_jet(at, jet);
    to_ordinate(jet, at.n);
    if (along_time) to_time(at, jet, place);
    add_miss(weight_[i] / spread_, jet.value - (along_time ? x_[i] : y_[i]), jet, at.n, out);
  }
  for (std::size_t i = 0; i < late_.size(); ++i) {
    at.move_to(late_[i]);
    reliability_jet(at, jet);
    add_row(late_weight_[i], jet, at.n, out);
  }
  if (method_ == method_code::mle) out.value -= total_ * std::log(unit_);
  mirror(out.hessian);
  mirror(out.squares);
}

std::array<double, 3> Objective::expected_failures(const Vector& v) const {
  Point at(shape_, v);
  std::array<double, 3> held{}, parts{};
  Jet jet;
  for (std::size_t i = 0; i < x_.size(); ++i) {
    at.move_to(x_[i]);
    density_jet(at, jet, &parts);
    for (std::size_t j = 0; j < 3; ++j) held[j] += weight_[i] * parts[j];
  }
  return held;
}

Vector Objective::point_of(const Life& life) const {
  Vector v{};
  std::size_t next = 0;
  const auto add = [&](std::size_t row) {
    v[next++] = std::log(life.rows[row].Shape);
    v[next++] = -std::log(life.rows[row].Scale) - std::log(unit_);
  };
  if (!shape_.c) {
    for (std::size_t row = 0; row < life.rows.size(); ++row) add(row);
    return v;
  }
  if (shape_.a) add(1);
  if (shape_.b) add(2);
  add(0);
  v[next] = std::log(life.rows[0].Fraction / (1 - life.rows[0].Fraction));
  return v;
}

Life Objective::life_of(const Vector& v, std::int16_t model) const {
  const auto row = [&](std::size_t at, double fraction, std::int32_t applies) {
    return FitParam{std::exp(-v[at]) / unit_, fraction, 0, 0, applies};
  };
  std::vector<FitParam> rows;
  std::size_t next = 0;
  const auto take = [&](double fraction, std::int32_t applies) {
    FitParam made = row(next + 1, fraction, applies);
    made.Shape = std::exp(v[next]);
    next += 2;
    return made;
  };
  if (!shape_.c) {
    rows.push_back(take(1, 1));
    if (shape_.b) rows.push_back(take(0, 1));
    return {model, rows};
  }
  const double p = 1 / (1 + std::exp(-v[parameters() - 1]));
  FitParam a{unreached_scale, 1 - p, 1, 0, 3};
  if (shape_.a) a = take(1 - p, 3);
  FitParam b = shape_.b ? take(0, 3) : FitParam{};
  rows = {take(p, 1), a};
  if (shape_.b) rows.push_back(b);
  return {model, rows};
}

}  // namespace tavlo::bench
