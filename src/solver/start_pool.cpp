#include "solver/start_pool.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "solver/levenberg_marquardt.h"
#include "solver/residuals.h"
#include "solver/sound_answer.h"
#include "solver/squares_minimiser.h"

namespace tavlo {
namespace {

// Numbers found on samples of 30 to 200 failures: more of each reach the best
// optimum hardly more often and cost more time.
constexpr std::uint64_t seed = 20110311;
constexpr int pool_size = 300;
constexpr std::size_t racers = 64;
constexpr int first_lap = 8;  // evaluations
constexpr std::size_t left_after_first_lap = 24;
constexpr int second_lap = 25;
constexpr std::size_t starts = 12;

// Slopes from a strong infant mortality to a narrow cluster of failures.
constexpr double lowest_beta = 0.4;
constexpr double highest_beta = 24;

struct Racer {
  ParameterVector X{};
  double quality = 0;
  bool sound = false;
};

bool leads(const Racer& a, const Racer& b) {
  return a.sound != b.sound ? a.sound : a.quality > b.quality;
}

class Race {
 public:
  Race(Solver& quiet, int K) : solver_(quiet), K_(K), method_(quiet.data.Method), random_(seed) {}
  ~Race() { solver_.data.Method = method_; }
  Race(const Race&) = delete;
  Race& operator=(const Race&) = delete;

  std::vector<ParameterVector> run() {
    std::vector<Racer> field = unlike_ones(pool(), racers);
    // Horizontal distances cost a root search a row, vertical ones lead as well.
    if (method_ == solver_method::mle) solver_.data.Method = method_;
    lap(field, first_lap);
    field = unlike_ones(field, left_after_first_lap);
    lap(field, second_lap);
    solver_.data.Method = method_;
    if (method_ == solver_method::x_on_y) rank(field);
    std::vector<ParameterVector> winners;
    for (const Racer& racer : unlike_ones(field, starts)) winners.push_back(racer.X);
    return winners;
  }

 private:
  /// The candidates, then random starts with the smallest vertical distances first.
  std::vector<Racer> pool() {
    solver_.data.Method = solver_method::y_on_x;
    std::vector<Racer> random;
    for (int i = 0; i < pool_size && !solver_.aborted(); ++i) {
      const Racer racer = evaluated(random_start());
      if (std::isfinite(racer.quality)) random.push_back(racer);
    }
    std::stable_sort(random.begin(), random.end(),
                     [](const Racer& a, const Racer& b) { return a.quality > b.quality; });
    std::vector<Racer> all;
    for (const ParameterVector& X : solver_.state.candidates[static_cast<std::size_t>(K_)])
      all.push_back({X});
    all.insert(all.end(), random.begin(), random.end());
    return all;
  }

  int rows() const { return method_in_use() == solver_method::mle ? data().M : data().N; }
  int method_in_use() const { return data().Method; }
  const SolverData& data() const { return solver_.data; }

  /// A row that fails keeps the value before and spoils the quality.
  Racer evaluated(ParameterVector X) {
    fvec_.assign(static_cast<std::size_t>(rows()) + 1, std::numeric_limits<double>::quiet_NaN());
    int iflag = residual_request::evaluate_once;
    ResidualFn(solver_, rows(), K_, X, fvec_, fjac_, iflag);
    const bool complete =
        std::all_of(fvec_.begin() + 1, fvec_.end(), [](double v) { return std::isfinite(v); });
    return {X, complete ? X[0] : -std::numeric_limits<double>::infinity(), false};
  }

  /// Some evaluations of the minimiser for each, then the leaders first.
  void lap(std::vector<Racer>& field, int evaluations) {
    for (Racer& racer : field) {
      if (solver_.aborted()) break;
      run_briefly(racer.X, evaluations);
      for (int i = 1; i <= K_; ++i) racer.X[slot(i)] = std::fabs(racer.X[slot(i)]);
      racer = evaluated(racer.X);
      racer.sound = flaw() == Flaw::none && std::isfinite(racer.quality);
    }
    std::stable_sort(field.begin(), field.end(), leads);
  }

  /// By the method of the fit.
  void rank(std::vector<Racer>& field) {
    for (Racer& racer : field) {
      const bool sound = racer.sound;
      racer = evaluated(racer.X);
      racer.sound = sound && std::isfinite(racer.quality);
    }
    std::stable_sort(field.begin(), field.end(), leads);
  }

  /// By the method of the fit, whatever the race runs by.
  Flaw flaw() {
    const int now = solver_.data.Method;
    solver_.data.Method = method_;
    const Flaw found = flaw_of(solver_.params, solver_.data, K_);
    solver_.data.Method = now;
    return found;
  }

  void run_briefly(ParameterVector& X, int evaluations) {
    std::vector<double> fvec(static_cast<std::size_t>(rows()) + 1);
    JacobianMatrix fjac(rows(), K_);
    VariableVector scales{};
    const SquaresFunction brief = [&](int n, int K, ParameterVector& x, std::vector<double>& values,
                                      JacobianMatrix& derivatives, int& iflag) {
      const bool counts = iflag == residual_request::residuals;
      ResidualFn(solver_, n, K, x, values, derivatives, iflag);
      if (counts && --evaluations <= 0) iflag = -1;
    };
    constexpr double factor = 0.2;
    SquaresMinimiser(solver_, brief, rows(), K_, X, fvec, fjac, scales)
        .run(scaling_mode::internal, factor);
  }

  /// The first ones of the field of which none is like one before.
  std::vector<Racer> unlike_ones(const std::vector<Racer>& field, std::size_t count) const {
    std::vector<Racer> chosen;
    for (const Racer& racer : field) {
      if (chosen.size() >= count) break;
      const auto like = [&](const Racer& other) { return alike(racer.X, other.X); };
      if (std::none_of(chosen.begin(), chosen.end(), like)) chosen.push_back(racer);
    }
    return chosen;
  }

  bool alike(const ParameterVector& a, const ParameterVector& b) const {
    constexpr double near = 0.5;
    for (int i = 1; i <= K_; ++i)
      if (!(std::fabs(std::log(a[slot(i)] / b[slot(i)])) <= near)) return false;
    return true;
  }

  /// Uniform in 0 to 1, the same on every machine.
  double unit() { return std::ldexp(static_cast<double>(random_() >> 11), -53); }

  /// Lives around the times of random failures, the steeper of A and B first.
  ParameterVector random_start() {
    ParameterVector X{};
    const int populations = K_ == 7 ? 3 : 2;
    for (int i = 0; i < populations; ++i) {
      X[slot(2 * i + 1)] = lowest_beta * std::pow(highest_beta / lowest_beta, unit());
      const int row = 1 + static_cast<int>(unit() * data().N);
      X[slot(2 * i + 2)] = std::exp(data().Xs(row) + unit() - 0.3);
    }
    if (K_ != 5 && X[3] > X[1]) {
      std::swap(X[1], X[3]);
      std::swap(X[2], X[4]);
    }
    if (K_ != 4) X[slot(K_)] = 1 / (1 + std::exp(3 - 6 * unit()));
    return X;
  }

  static std::size_t slot(int i) { return static_cast<std::size_t>(i); }

  Solver& solver_;
  const int K_;
  const int method_;
  std::mt19937_64 random_;
  std::vector<double> fvec_;
  JacobianMatrix fjac_;
};

}  // namespace

std::vector<ParameterVector> promising_starts(Solver& quiet, int K) { return Race(quiet, K).run(); }

}  // namespace tavlo
