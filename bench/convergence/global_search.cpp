#include "convergence/global_search.h"

#include <algorithm>
#include <cmath>

#include "support/random_samples.h"

namespace tavlo::bench {
namespace {

const double widest_logit = std::log((1 - least_share) / least_share);

/// Solves m x = b of the first n by Cholesky's root; false unless m is positive definite by
/// more than `least` of each diagonal entry.
bool solve(const Matrix& m, const Vector& b, std::size_t n, double least, Vector& x) {
  Matrix root{};
  for (std::size_t i = 0; i < n; ++i) {
    x[i] = b[i];
    for (std::size_t j = 0; j <= i; ++j) {
      double sum = m[i][j];
      for (std::size_t k = 0; k < j; ++k) sum -= root[i][k] * root[j][k];
      if (i == j && !(sum > least * m[i][i] && m[i][i] > 0)) return false;
      root[i][j] = i == j ? std::sqrt(sum) : sum / root[j][j];
    }
    for (std::size_t k = 0; k < i; ++k) x[i] -= root[i][k] * x[k];
    x[i] /= root[i][i];
  }
  for (std::size_t i = n; i-- > 0;) {
    for (std::size_t k = i + 1; k < n; ++k) x[i] -= root[k][i] * x[k];
    x[i] /= root[i][i];
  }
  return true;
}

Matrix negative(const Matrix& m) {
  Matrix out = m;
  for (Vector& row : out)
    for (double& value : row) value = -value;
  return out;
}

double product(const Vector& a, const Vector& b, std::size_t n) {
  double sum = 0;
  for (std::size_t i = 0; i < n; ++i) sum += a[i] * b[i];
  return sum;
}

double steepest_of(const Objective& objective, const Vector& v) {
  const std::size_t betas = objective.parameters() - objective.shape().share;
  double steepest = 0;
  for (std::size_t i = 0; i < betas; i += 2) steepest = std::max(steepest, std::exp(v[i]));
  return steepest;
}

/// The share's parameter is the last: held there by leaving it out of the system.
bool leans_on_bound(const Objective& objective, const Vector& v, const Evaluation& at) {
  if (!objective.shape().share) return false;
  const std::size_t s = objective.parameters() - 1;
  return (v[s] >= widest_logit && at.gradient[s] > 0) ||
         (v[s] <= -widest_logit && at.gradient[s] < 0);
}

class Climb {
 public:
  Climb(const Objective& objective, const Fence& fence, const Vector& start)
      : objective_(objective), fence_(fence), v_(start) {}

  /// False once the way leads out of the fence or nowhere.
  bool run(int iterations) {
    while (iterations-- > 0 && !done_)
      if (!step()) return false;
    return true;
  }
  const Vector& point() const { return v_; }
  double value() const { return at_.value; }

 private:
  /// Newton's step where the curvature allows it, else one of the squares, damped until
  /// it climbs.
  bool step() {
    objective_.evaluate(v_, at_);
    if (!std::isfinite(at_.value)) return false;
    const std::size_t n = objective_.parameters() - leans_on_bound(objective_, v_, at_);
    Vector newton{};
    const Matrix curvature = negative(at_.hessian);
    const bool definite = solve(curvature, at_.gradient, n, 1e-13, newton);
    if (definite && product(newton, at_.gradient, n) < finish() * 1e-3) return done_ = true;
    const Matrix& model = definite ? curvature : at_.squares;
    for (int attempt = 0; attempt < 30; ++attempt) {
      if (const std::optional<Vector> next = trial(model, n)) {
        v_ = *next;
        damping_ = std::max(damping_ / 8, 1e-12);
        return steepest_of(objective_, v_) < 2 * fence_.steepest;
      }
      damping_ *= 6;
    }
    return done_ = true;
  }

  std::optional<Vector> trial(const Matrix& model, std::size_t n) const {
    Matrix damped = model;
    for (std::size_t i = 0; i < n; ++i) damped[i][i] += damping_ * (model[i][i] + 1e-9);
    Vector step{};
    if (!solve(damped, at_.gradient, n, 1e-15, step)) return std::nullopt;
    double longest = 0;
    for (std::size_t i = 0; i < n; ++i) longest = std::max(longest, std::fabs(step[i]));
    const double cut = std::min(1.0, 1.0 / longest);
    Vector next = v_;
    for (std::size_t i = 0; i < n; ++i) next[i] += cut * step[i];
    if (objective_.shape().share) {
      double& share = next[objective_.parameters() - 1];
      share = std::clamp(share, -widest_logit, widest_logit);
    }
    const double value = objective_.value(next);
    if (!(value > at_.value)) return std::nullopt;
    return next;
  }

  double finish() const { return objective_.is_likelihood() ? 1e-7 : 1e-11; }

  const Objective& objective_;
  const Fence& fence_;
  Vector v_;
  Evaluation at_;
  double damping_ = 1e-3;
  bool done_ = false;
};

/// A population about a run of neighbouring failures: its ln beta and ln eta as a Weibull
/// of their mean and deviation has them.
struct Guess {
  double ln_beta, ln_eta;
  double share;  ///< of all failures
};

Guess guess_from_neighbours(const std::vector<double>& x, double steepest,
                            test::RandomNumbers& random) {
  const int n = static_cast<int>(x.size());
  const int size = std::min(n, static_cast<int>(random.log_uniform(2, std::max(3.0, 0.9 * n))));
  const int first = random.whole(0, n - size);
  double mean = 0, square = 0;
  for (int i = first; i < first + size; ++i) {
    mean += x[static_cast<std::size_t>(i)] / size;
    square += x[static_cast<std::size_t>(i)] * x[static_cast<std::size_t>(i)] / size;
  }
  const double deviation = std::sqrt(std::max(square - mean * mean, 1e-12));
  const double beta = std::clamp(1.28 / deviation, 0.2, 0.7 * steepest);
  return {std::log(beta), mean + 0.577 / beta, static_cast<double>(size) / n};
}

Guess guess_at_random(const std::vector<double>& x, double steepest, test::RandomNumbers& random) {
  const double beta = random.log_uniform(0.3, random.chance(0.25) ? steepest : 10);
  const auto place = static_cast<std::size_t>(random.whole(0, static_cast<int>(x.size()) - 1));
  const double beyond =
      random.chance(0.2) ? random.uniform(0, 3) : random.uniform(-0.3, 0.5) / beta;
  return {std::log(beta), x[place] + beyond, 1 / (1 + std::exp(random.uniform(-3.5, 3.5)))};
}

Vector random_start(const Objective& objective, double steepest, test::RandomNumbers& random) {
  const Shape& shape = objective.shape();
  const int populations = shape.a + shape.b + shape.c;
  Vector v{};
  std::size_t next = 0;
  double share = 0.5;
  for (int i = 0; i < populations; ++i) {
    const Guess guess = random.chance(0.5)
                            ? guess_from_neighbours(objective.ln_times(), steepest, random)
                            : guess_at_random(objective.ln_times(), steepest, random);
    v[next++] = guess.ln_beta;
    v[next++] = guess.ln_eta;
    share = std::clamp(guess.share, 2 * least_share, 1 - 2 * least_share);
  }
  if (shape.share) v[next] = std::log(share / (1 - share));
  return v;
}

double gap_of_hopeless(const Objective& objective) { return objective.is_likelihood() ? 12 : 0.05; }

bool same_place(const Vector& a, const Vector& b, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i)
    if (std::fabs(a[i] - b[i]) > 1e-3) return false;
  return true;
}

struct Runner {
  Vector point;
  double value;
};

/// What is left of the starts after a few steps, the best first.
std::vector<Runner> short_runs(const Objective& objective, const Fence& fence, int starts,
                               std::uint64_t seed) {
  test::RandomNumbers random(seed);
  std::vector<Runner> runners;
  for (int i = 0; i < starts; ++i) {
    const Vector start = random_start(objective, fence.steepest, random);
    Climb climb(objective, fence, start);
    if (climb.run(10)) runners.push_back({climb.point(), climb.value()});
  }
  std::sort(runners.begin(), runners.end(),
            [](const Runner& a, const Runner& b) { return a.value > b.value; });
  return runners;
}

void keep_better(std::optional<Optimum>& best, const std::optional<Optimum>& other) {
  if (other && (!best || other->value > best->value)) best = other;
}

/// Fewer points than parameters: a family of curves goes through the means of all points, and
/// none of them is a definite optimum. By Y on X a time is one point.
bool is_saturated(const Objective& objective) {
  std::vector<double> x = objective.ln_times();
  if (objective.method() == method_code::y_on_x) x.erase(std::unique(x.begin(), x.end()), x.end());
  return !objective.is_likelihood() && x.size() < objective.parameters();
}

}  // namespace

const char* words_of(Flaw flaw) {
  static constexpr const char* words[] = {"",        "undefined", "steep",       "share outside",
                                          "too few", "climbs",    "not definite"};
  return words[static_cast<int>(flaw)];
}

Fence fence_of(const Objective& single) {
  const std::optional<Optimum> found = best_single(single);
  return {found ? std::max(50.0, 25 * std::exp(found->point[0])) : 50.0};
}

Fence fence_for(const Sample& sample, std::int16_t method, bool censored) {
  return fence_of(Objective(sample, Shape{}, method, censored && method == method_code::mle));
}

Flaw judge(const Objective& objective, const Fence& fence, Optimum& at) {
  Evaluation found;
  objective.evaluate(at.point, found);
  at.shape = objective.shape();
  at.value = found.value;
  if (!std::isfinite(found.value)) return Flaw::undefined;
  if (steepest_of(objective, at.point) > fence.steepest) return Flaw::steep;
  std::size_t n = objective.parameters();
  if (objective.shape().share && std::fabs(at.point[n - 1]) > widest_logit + 1e-6)
    return Flaw::share_outside;
  const std::array<double, 3> held = objective.expected_failures(at.point);
  const bool there[] = {at.shape.a, at.shape.b, at.shape.c};
  for (std::size_t j = 0; j < 3; ++j)
    if (there[j] && held[j] < fewest_failures) return Flaw::too_few_failures;
  Vector near = at.point;
  if (objective.shape().share && std::fabs(near[n - 1]) > widest_logit - 1e-6)
    near[n - 1] = std::copysign(widest_logit, near[n - 1]);
  at.at_share_bound = leans_on_bound(objective, near, found);
  n -= at.at_share_bound;
  Vector step{};
  // Less than this is a ridge: where all units of a population fail between two inspections,
  // any steep slope will do.
  constexpr double least_curvature = 1e-5;
  if (!solve(negative(found.hessian), found.gradient, n, least_curvature, step))
    return Flaw::not_definite;
  at.decrement = product(step, found.gradient, n) / 2;
  return at.decrement < (objective.is_likelihood() ? 1e-5 : 1e-9) ? Flaw::none : Flaw::climbs;
}

std::optional<Optimum> climb(const Objective& objective, const Fence& fence, const Vector& start,
                             int iterations) {
  Climb way(objective, fence, start);
  if (!way.run(iterations)) return std::nullopt;
  Optimum end;
  end.point = way.point();
  if (judge(objective, fence, end) != Flaw::none) return std::nullopt;
  return end;
}

std::optional<Optimum> best_single(const Objective& single) {
  const std::vector<double>& x = single.ln_times();
  if (x.size() < 2 || !(x.back() > x.front())) return std::nullopt;
  std::optional<Optimum> best;
  for (const double beta : {1.0, 4.0, 20.0}) {
    const Vector start = {std::log(beta), x[x.size() * 2 / 3]};
    keep_better(best, climb(single, {1e6}, start));
  }
  return best;
}

std::optional<Optimum> best_of_many(const Objective& objective, const Fence& fence, int starts,
                                    std::uint64_t seed, const std::vector<Vector>& given) {
  if (is_saturated(objective)) return std::nullopt;
  constexpr int most_polished = 150, fewest_polished = 40;
  std::vector<Optimum> ends;
  std::optional<Optimum> best;
  const auto take = [&](const Vector& start) {
    const std::optional<Optimum> end = climb(objective, fence, start);
    keep_better(best, end);
    if (end) ends.push_back(*end);
  };
  for (const Vector& start : given) take(start);
  int polished = 0;
  for (const Runner& runner : short_runs(objective, fence, starts, seed)) {
    if (best && runner.value < best->value - gap_of_hopeless(objective) &&
        polished > fewest_polished)
      break;
    if (best && polished > most_polished) break;
    const auto is_here = [&](const Optimum& end) {
      return same_place(end.point, runner.point, objective.parameters());
    };
    if (std::any_of(ends.begin(), ends.end(), is_here)) continue;
    take(runner.point);
    ++polished;
  }
  return best;
}

BestAnswer best_answer(const Sample& sample, std::int16_t model, std::int16_t method, bool censored,
                       int starts, std::uint64_t seed, const std::vector<Life>& given) {
  const bool with_suspensions = censored && method == method_code::mle;
  const auto objective_for = [&](const Shape& shape) {
    return Objective(sample, shape, method, with_suspensions);
  };
  const Objective single = objective_for(Shape{});
  BestAnswer answer;
  answer.contained = best_single(single);
  const Fence fence = fence_of(single);
  if (with_suspensions && model != model_code::weibull4)
    keep_better(model == model_code::weibull5c ? answer.best : answer.contained,
                best_of_many(objective_for(cured), fence, 60, seed));
  const int part = std::max(starts / 3, 1);
  std::vector<Vector> starting;
  const Objective own = objective_for(shape_of(model));
  if (model == model_code::weibull7)
    for (const std::int16_t inner : {model_code::weibull4, model_code::weibull5c})
      keep_better(answer.contained,
                  best_of_many(objective_for(shape_of(inner)), fence, part, seed + 1));
  for (const Life& life : given) starting.push_back(own.point_of(life));
  keep_better(answer.best, best_of_many(own, fence, starts, seed, starting));
  keep_better(answer.best, answer.contained);
  return answer;
}

}  // namespace tavlo::bench
