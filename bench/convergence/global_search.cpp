#include "convergence/global_search.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include "solver/sound_answer.h"

namespace tavlo {
namespace {

using Vector = std::vector<double>;

/// Points of the sample: log times and ordinates, failures first.
struct Points {
  Vector x, y;
  std::size_t failures = 0;
};

Points points_of(const DataSet& data, bool with_suspensions) {
  Points points;
  for (int pass = 0; pass < (with_suspensions ? 2 : 1); ++pass)
    for (int i = 1; i <= data.Count; ++i) {
      const DataPoint& row = data.Points(i);
      if ((row.Fails > 0) != (pass == 0)) continue;
      points.x.push_back(std::log(static_cast<double>(row.X)));
      points.y.push_back(pass == 0 ? std::log(-std::log1p(-static_cast<double>(row.Y)))
                                   : SolverData::suspension_mark);
      if (pass == 0) points.failures += 1;
    }
  return points;
}

/// Logs of betas and etas, logit of the share: A, then B, then C.
struct Theta {
  double beta[3] = {}, ln_eta[3] = {};
  bool present[3] = {};
  double share = 0;

  Theta(const Vector& v, int K) {
    present[0] = true;
    present[1] = K != 5;
    present[2] = K != 4;
    std::size_t next = 0;
    for (int i = 0; i < 3; ++i) {
      if (!present[i]) continue;
      beta[i] = std::exp(v[next]);
      ln_eta[i] = v[next + 1];
      next += 2;
    }
    if (K != 4) share = std::clamp(1 / (1 + std::exp(-v[next])), 0.001, 0.999);
  }

  double h(int i, double x) const { return present[i] ? std::exp((x - ln_eta[i]) * beta[i]) : 0; }
  double ln_reliability(double x) const {
    return -h(0, x) - h(1, x) + std::log1p(share * std::expm1(-h(2, x)));
  }
  double ordinate(double x) const {
    const double ln_r = ln_reliability(x);
    return ln_r < 0 ? std::log(-ln_r) : -700.0;
  }
  double ordinate_slope(double x) const {
    const double alive = 1 + share * std::expm1(-h(2, x));
    const double rate = beta[0] * h(0, x) + beta[1] * h(1, x) +
                        share * std::exp(-h(2, x)) * beta[2] * h(2, x) / alive;
    return -rate / ln_reliability(x);
  }
  double ln_density(double x) const {
    const double survives = std::exp(-h(2, x));
    const double alive = share * survives + 1 - share;
    const double rate =
        alive * (beta[0] * h(0, x) + beta[1] * h(1, x)) + share * survives * beta[2] * h(2, x);
    return std::log(rate) - h(0, x) - h(1, x) - x;
  }
};

double inverse(const Theta& theta, double target, double x) {
  double low = x - 1, high = x + 1;
  while (theta.ordinate(low) > target && low > x - 1e5) low = x - (x - low) * 2;
  while (theta.ordinate(high) < target && high < x + 1e5) high = x + (high - x) * 2;
  for (int i = 0; i < 200; ++i) {
    const double off = theta.ordinate(x) - target;
    (off < 0 ? low : high) = x;
    double next = x - off / theta.ordinate_slope(x);
    if (!(next > low && next < high)) next = (low + high) / 2;
    if (std::fabs(next - x) < 1e-13) return next;
    x = next;
  }
  return x;
}

class Problem {
 public:
  Problem(const DataSet& data, int K, int method, bool censored)
      : points_(points_of(data, censored && method == solver_method::mle)), K_(K), method_(method) {
    const Vector& values = method == solver_method::x_on_y ? points_.x : points_.y;
    const auto n = static_cast<double>(points_.failures);
    double mean = 0;
    for (std::size_t i = 0; i < points_.failures; ++i) mean += values[i] / n;
    for (std::size_t i = 0; i < points_.failures; ++i)
      spread_ += (values[i] - mean) * (values[i] - mean);
  }

  std::size_t size() const { return static_cast<std::size_t>(K_); }
  int K() const { return K_; }
  int method() const { return method_; }
  const Points& points() const { return points_; }

  /// Residuals of a regression, or ln L terms.
  void rows(const Vector& v, Vector& out) const {
    const Theta theta(v, K_);
    out.resize(points_.x.size());
    for (std::size_t i = 0; i < points_.x.size(); ++i) {
      const double x = points_.x[i];
      if (method_ == solver_method::mle)
        out[i] = i < points_.failures ? theta.ln_density(x) : theta.ln_reliability(x);
      else if (method_ == solver_method::y_on_x)
        out[i] = theta.ordinate(x) - points_.y[i];
      else
        out[i] = inverse(theta, points_.y[i], x) - x;
    }
  }

  /// To be made small: the sum of squares, or -ln L.
  double cost(const Vector& v) const {
    thread_local Vector out;
    rows(v, out);
    double sum = 0;
    for (const double row : out) sum += method_ == solver_method::mle ? -row : row * row;
    return std::isfinite(sum) ? sum : 1e300;
  }

  double quality(double cost) const {
    return method_ == solver_method::mle ? -cost : 1 - cost / spread_;
  }

  bool sound(const Vector& v) const {
    const Theta theta(v, K_);
    SolverParams params;
    params.BetaA = theta.beta[0], params.EtaA = std::exp(theta.ln_eta[0]);
    params.BetaB = theta.beta[1], params.EtaB = std::exp(theta.ln_eta[1]);
    params.BetaC = theta.beta[2], params.EtaC = std::exp(theta.ln_eta[2]);
    params.Extra = theta.share;
    SolverData data;
    data.M = static_cast<std::int32_t>(points_.x.size());
    data.N = static_cast<std::int32_t>(points_.failures);
    data.Method = method_;
    data.Xs = Slots<double>(data.M);
    data.Ys = Slots<double>(data.M);
    std::copy(points_.x.begin(), points_.x.end(), data.Xs.begin() + 1);
    std::copy(points_.y.begin(), points_.y.end(), data.Ys.begin() + 1);
    return flaw_of(params, data, K_) == Flaw::none;
  }

 private:
  Points points_;
  int K_;
  int method_;
  double spread_ = 0;
};

/// Solves the small symmetric system by elimination; false when singular.
bool solve(std::vector<Vector> a, Vector b, Vector& x) {
  const std::size_t n = b.size();
  for (std::size_t k = 0; k < n; ++k) {
    std::size_t pivot = k;
    for (std::size_t i = k + 1; i < n; ++i)
      if (std::fabs(a[i][k]) > std::fabs(a[pivot][k])) pivot = i;
    if (!(std::fabs(a[pivot][k]) > 1e-300)) return false;
    std::swap(a[k], a[pivot]);
    std::swap(b[k], b[pivot]);
    for (std::size_t i = k + 1; i < n; ++i) {
      const double f = a[i][k] / a[k][k];
      for (std::size_t j = k; j < n; ++j) a[i][j] -= f * a[k][j];
      b[i] -= f * b[k];
    }
  }
  x.assign(n, 0);
  for (std::size_t k = n; k-- > 0;) {
    double sum = b[k];
    for (std::size_t j = k + 1; j < n; ++j) sum -= a[k][j] * x[j];
    x[k] = sum / a[k][k];
  }
  return true;
}

/// Damped Gauss-Newton on the residuals of a regression.
double minimise_squares(const Problem& problem, Vector& v, int iterations) {
  const std::size_t k = problem.size();
  Vector base, moved;
  double cost = problem.cost(v);
  double damping = 1e-3;
  for (int it = 0; it < iterations && damping < 1e12; ++it) {
    problem.rows(v, base);
    std::vector<Vector> J(k, Vector(base.size()));
    for (std::size_t j = 0; j < k; ++j) {
      Vector up = v, down = v;
      up[j] += 1e-6, down[j] -= 1e-6;
      Vector low;
      problem.rows(up, moved);
      problem.rows(down, low);
      for (std::size_t i = 0; i < base.size(); ++i) J[j][i] = (moved[i] - low[i]) / 2e-6;
    }
    std::vector<Vector> A(k, Vector(k));
    Vector g(k);
    for (std::size_t p = 0; p < k; ++p) {
      for (std::size_t i = 0; i < base.size(); ++i) g[p] -= J[p][i] * base[i];
      for (std::size_t q = 0; q < k; ++q)
        for (std::size_t i = 0; i < base.size(); ++i) A[p][q] += J[p][i] * J[q][i];
    }
    bool improved = false;
    double change = 0;
    for (int attempt = 0; attempt < 12 && !improved; ++attempt) {
      auto damped = A;
      for (std::size_t p = 0; p < k; ++p) damped[p][p] += damping * (A[p][p] + 1e-9);
      Vector d;
      if (solve(damped, g, d)) {
        Vector next = v;
        for (std::size_t p = 0; p < k; ++p) next[p] += std::clamp(d[p], -2.0, 2.0);
        const double c = problem.cost(next);
        if (c < cost) {
          change = cost - c;
          v = next, cost = c, improved = true;
          damping = std::max(damping / 5, 1e-14);
        }
      }
      if (!improved) damping *= 5;
    }
    if (!improved || change < 1e-13 * cost) break;
  }
  return cost;
}

Vector gradient(const Problem& problem, const Vector& v) {
  Vector g(v.size());
  for (std::size_t j = 0; j < v.size(); ++j) {
    Vector up = v, down = v;
    up[j] += 1e-5, down[j] -= 1e-5;
    g[j] = (problem.cost(up) - problem.cost(down)) / 2e-5;
  }
  return g;
}

/// BFGS with backtracking on -ln L.
double minimise_likelihood(const Problem& problem, Vector& v, int iterations) {
  const std::size_t k = v.size();
  std::vector<Vector> H(k, Vector(k));
  const auto reset = [&] {
    for (std::size_t p = 0; p < k; ++p)
      for (std::size_t q = 0; q < k; ++q) H[p][q] = p == q ? 0.02 : 0;
  };
  reset();
  double cost = problem.cost(v);
  Vector g = gradient(problem, v);
  int stalls = 0;
  for (int it = 0; it < iterations; ++it) {
    Vector d(k);
    double slope = 0;
    for (std::size_t p = 0; p < k; ++p) {
      for (std::size_t q = 0; q < k; ++q) d[p] -= H[p][q] * g[q];
      d[p] = std::clamp(d[p], -1.0, 1.0);
      slope += d[p] * g[p];
    }
    double t = 1, c = 1e300;
    Vector next(k);
    for (; t > 1e-9; t /= 2) {
      for (std::size_t p = 0; p < k; ++p) next[p] = v[p] + t * d[p];
      c = problem.cost(next);
      if (c <= cost + 1e-4 * t * slope && c < 1e299) break;
    }
    if (t <= 1e-9 || !(slope < 0)) {
      if (++stalls > 1) break;
      reset();
      continue;
    }
    const Vector g_next = gradient(problem, next);
    Vector s(k), y(k), Hy(k);
    double sy = 0, yHy = 0;
    for (std::size_t p = 0; p < k; ++p) s[p] = next[p] - v[p], y[p] = g_next[p] - g[p];
    for (std::size_t p = 0; p < k; ++p) sy += s[p] * y[p];
    for (std::size_t p = 0; p < k; ++p)
      for (std::size_t q = 0; q < k; ++q) Hy[p] += H[p][q] * y[q];
    for (std::size_t p = 0; p < k; ++p) yHy += y[p] * Hy[p];
    if (sy > 1e-14)
      for (std::size_t p = 0; p < k; ++p)
        for (std::size_t q = 0; q < k; ++q)
          H[p][q] += (sy + yHy) * s[p] * s[q] / (sy * sy) - (Hy[p] * s[q] + s[p] * Hy[q]) / sy;
    const double change = cost - c;
    v = next, cost = c, g = g_next;
    stalls = change < 1e-9 ? stalls + 1 : 0;
    if (stalls > 3) break;
  }
  return cost;
}

double minimise(const Problem& problem, Vector& v, int iterations) {
  return problem.method() == solver_method::mle ? minimise_likelihood(problem, v, iterations)
                                                : minimise_squares(problem, v, iterations);
}

Vector vector_of(const test::TrueMixture& m) {
  Vector v = {std::log(m.beta_a), std::log(m.eta_a)};
  if (m.K != 5) v.insert(v.end(), {std::log(m.beta_b), std::log(m.eta_b)});
  if (m.K != 4)
    v.insert(v.end(), {std::log(m.beta_c), std::log(m.eta_c), std::log(m.share / (1 - m.share))});
  return v;
}

Vector random_start(const Problem& problem, std::mt19937_64& random) {
  std::uniform_real_distribution<double> unit(0, 1);
  const Vector& x = problem.points().x;
  const std::size_t n = problem.points().failures;
  Vector v;
  const int populations = problem.K() == 7 ? 3 : 2;
  for (int i = 0; i < populations; ++i) {
    v.push_back(std::log(0.4) + unit(random) * std::log(10 / 0.4));
    const double at = x[static_cast<std::size_t>(unit(random) * static_cast<double>(n))];
    v.push_back(at + (unit(random) - 0.3));
  }
  if (problem.K() != 4) v.push_back(-3 + 6 * unit(random));
  return v;
}

}  // namespace

std::optional<double> best_known(const DataSet& data, const std::vector<test::TrueMixture>& given,
                                 int method, bool censored, int starts) {
  const Problem problem(data, given.front().K, method, censored);
  std::mt19937_64 random(7);
  std::optional<double> best;
  const auto take = [&](Vector v) {
    double cost = minimise(problem, v, 60);
    if (!problem.sound(v)) return;
    const double far = method == solver_method::mle ? 1 : 0.01;
    if (best && problem.quality(cost) < *best - far) return;
    cost = minimise(problem, v, 300);
    if (!problem.sound(v)) return;
    best = std::max(best.value_or(-1e300), problem.quality(cost));
  };
  for (const test::TrueMixture& start : given) take(vector_of(start));
  for (int i = 0; i < starts; ++i) take(random_start(problem, random));
  return best;
}

}  // namespace tavlo
