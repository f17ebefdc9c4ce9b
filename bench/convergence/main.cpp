// Prints how often the solver reaches the best known optimum: seeded random
// samples of W4P, W5C and W7P of usual sizes (one in four with ties, one in four
// with suspensions), each method, against a global search. A sample counts as reached
// when the answer is sound and comes within 1e-4 in r squared, 0.05 in ln L, or when
// neither search knows a sound optimum.
//   convergence [models] [seeds] [starts] [cache] [first seed] [verbose]
//   models: any of 4, 5, 7 in a row (457); seeds for each truth and size (2);
//   random starts of the global search (40; 0 takes only samples in the cache); cache: a file that
//   keeps what the search has found, since it takes minutes; the first seed (0): another one
//   gives samples on which nothing was tuned.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "convergence/global_search.h"
#include "life/models.h"
#include "solver/fit_line.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

using test::TrueMixture;

std::vector<TrueMixture> truths(int K) {
  const auto w4 = [](double ba, double ea, double bb, double eb) {
    return TrueMixture{4, ba, ea, bb, eb, 0, 1, 0};
  };
  const auto w5 = [](double ba, double ea, double bc, double ec, double p) {
    return TrueMixture{5, ba, ea, 0, 1, bc, ec, p};
  };
  const auto w7 = [](double ba, double ea, double bb, double eb, double bc, double ec, double p) {
    return TrueMixture{7, ba, ea, bb, eb, bc, ec, p};
  };
  if (K == 4)
    return {w4(3.5, 1500, 0.8, 500), w4(4, 1000, 1, 1500), w4(6, 2000, 1.5, 2500),
            w4(2.5, 800, 0.6, 3000)};
  if (K == 5)
    return {w5(3, 1000, 2, 50, 0.2), w5(4, 2000, 1.2, 100, 0.15), w5(2, 5000, 3, 300, 0.35),
            w5(5, 1500, 0.8, 200, 0.3)};
  return {w7(3, 1000, 1, 5000, 4, 100, 0.15), w7(5, 1200, 1, 3000, 2, 50, 0.2),
          w7(4, 2000, 1.2, 4000, 1.5, 200, 0.3), w7(6, 800, 1, 2000, 0.9, 20, 0.15)};
}

std::int16_t code_of(int K) {
  return K == 4 ? model_code::weibull4 : K == 5 ? model_code::weibull5c : model_code::weibull7;
}

class Cache {
 public:
  explicit Cache(const char* path) : path_(path ? path : "") {
    std::ifstream file(path_);
    for (std::string key, value; file >> key >> value;)
      known_[key] = std::strtod(value.c_str(), nullptr);
  }
  const double* find(const std::string& key) const {
    const auto found = known_.find(key);
    return found == known_.end() ? nullptr : &found->second;
  }
  void add(const std::string& key, double value) {
    known_[key] = value;
    if (path_.empty()) return;
    std::ofstream file(path_, std::ios::app);
    file.precision(17);
    file << key << ' ' << value << '\n';
  }

 private:
  std::string path_;
  std::map<std::string, double> known_;
};

struct Outcome {
  bool fitted = false;
  double quality = 0;
  double milliseconds = 0;
  bool boxed = false;  ///< a retry box was shown
  OldStartsReport starts = {};
  TrueMixture answer = {};
};

TrueMixture mixture_of(const FitResult& fit, int K) {
  const auto beta = [&](int row) { return fit.Rows(row).Shape; };
  const auto eta = [&](int row) { return 1 / fit.Rows(row).Scale; };
  if (K == 4) return {4, beta(1), eta(1), beta(2), eta(2), 0, 1, 0};
  TrueMixture mixture{K, beta(2), eta(2), 0, 1, beta(1), eta(1), fit.Rows(1).Fraction};
  if (K == 7) mixture.beta_b = beta(3), mixture.eta_b = eta(3);
  return mixture;
}

Outcome solve(const DataSet& data, int K, std::int16_t method, bool censored = false) {
  test::TestWorld world;
  world.prompts.accept_all();
  New_frm_Data(world.session);
  New_frm_Fit(world.session);
  world.session.gData(1) = data;
  world.session.solver.data.CensoredLikelihood = censored;
  const auto begin = std::chrono::steady_clock::now();
  Fit_Line(world.session, 1, 1, code_of(K), method);
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
  const bool boxed = !world.prompts.shown().empty();
  const FitSet& fits = world.session.gFit(1);
  if (fits.nFits < 1 || fits.Fits(1).Status != FitStatus::calculated)
    return {false, -1e300, time.count(), boxed};
  return {true,
          fits.Fits(1).Quality,
          time.count(),
          boxed,
          fits.Fits(1).starts.value_or(OldStartsReport{}),
          mixture_of(fits.Fits(1), K)};
}

struct Tally {
  int samples = 0, reached = 0, better = 0, failed = 0, unsound = 0, boxed = 0;
  std::vector<double> times, gaps;
};

void run_case(int K, int truth_index, int n, int seed, int starts, Cache& cache,
              std::map<int, Tally>& by_method, bool verbose) {
  const TrueMixture truth = truths(K)[static_cast<std::size_t>(truth_index)];
  test::SampleKind kind{n,
                        static_cast<std::uint64_t>(1000 * K + 100 * truth_index + seed) * 1000003u +
                            static_cast<std::uint64_t>(n),
                        seed % 4 == 2 ? 0.4 : 0.0, seed % 4 == 1 ? 2 : 7};
  const DataSet data = test::random_sample(truth, kind);
  for (const std::int16_t method : {method_code::x_on_y, method_code::mle, method_code::y_on_x}) {
    const std::string key = std::to_string(K) + "-" + std::to_string(truth_index) + "-" +
                            std::to_string(n) + "-" + std::to_string(seed) + "-" +
                            std::to_string(method);
    if (starts == 0 && !cache.find(key)) continue;
    const Outcome outcome = solve(data, K, method);
    double best = -1e300;
    if (const double* known = cache.find(key)) {
      best = *known;
    } else {
      std::vector<TrueMixture> given = {truth};
      if (outcome.fitted) given.push_back(outcome.answer);
      best = best_known(data, given, method + 1, false, method == 0 ? starts / 2 : starts)
                 .value_or(-1e300);
      cache.add(key, best);
    }
    const double allowed = method == method_code::mle ? 0.05 : 1e-4;
    const double gap = best - outcome.quality;
    Tally& tally = by_method[method];
    tally.samples += 1;
    if (outcome.starts.sound && gap < -allowed) {
      tally.better += 1;
      if (gap < -allowed) cache.add(key, outcome.quality);
    }
    const bool none_known = best <= -1e299;
    tally.reached += none_known || (outcome.starts.sound && gap <= allowed);
    tally.failed += !outcome.fitted;
    tally.boxed += outcome.boxed;
    tally.unsound += !outcome.starts.sound;
    tally.times.push_back(outcome.milliseconds);
    tally.gaps.push_back(std::max(gap, 0.0));
    if (verbose && (gap > allowed || gap < -allowed))
      std::printf("  %s best %.6g got %.6f gap %.2g tried %d agreed %d sound %d\n", key.c_str(),
                  best, outcome.quality, gap, outcome.starts.tried, outcome.starts.agreed,
                  outcome.starts.sound);
  }
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void print_row(int K, const std::string& n, int method, const Tally& tally) {
  static constexpr const char* names[] = {"X on Y", "MLE", "Y on X"};
  std::printf("W%d%s %-7s %5s %8d %8.0f%% %8d %7d %8d %6d %10.1f %10.1f\n", K,
              K == 4   ? "P"
              : K == 5 ? "C"
                       : "P",
              names[method], n.c_str(), tally.samples, 100.0 * tally.reached / tally.samples,
              tally.better, tally.failed, tally.unsound, tally.boxed, median(tally.times),
              *std::max_element(tally.times.begin(), tally.times.end()));
}

/// Recovery of the truth from samples of which half is suspended: the median of
/// fitted / true life and slope of A, and of the fitted share.
void print_recovery(int K, bool censored) {
  constexpr int samples = 20;
  const TrueMixture truth = truths(K)[1];
  std::vector<double> eta, beta, share;
  for (int seed = 0; seed < samples; ++seed) {
    const test::SampleKind kind{400, static_cast<std::uint64_t>(500 + seed), 1.0, 7};
    const Outcome outcome = solve(test::random_sample(truth, kind), K, method_code::mle, censored);
    if (!outcome.fitted) continue;
    TrueMixture got = outcome.answer;
    if (K != 5 && got.beta_b > got.beta_a) {
      std::swap(got.beta_a, got.beta_b);
      std::swap(got.eta_a, got.eta_b);
    }
    eta.push_back(got.eta_a / truth.eta_a);
    beta.push_back(got.beta_a / truth.beta_a);
    share.push_back(got.share);
  }
  if (eta.empty()) return;
  std::printf(
      "K = %d, suspensions %s: %zu of %d fitted, eta A / true %.3f, beta A / true %.3f, share %.3f "
      "(true %.3f)\n",
      K, censored ? "in the likelihood" : "left out", eta.size(), samples, median(eta),
      median(beta), median(share), truth.share);
}

}  // namespace
}  // namespace tavlo

int main(int argc, char** argv) {
  using namespace tavlo;
  const std::string models = argc > 1 ? argv[1] : "457";
  const int seeds = argc > 2 ? std::atoi(argv[2]) : 2;
  const int starts = argc > 3 ? std::atoi(argv[3]) : 40;
  Cache cache(argc > 4 ? argv[4] : nullptr);
  const int first_seed = argc > 5 ? std::atoi(argv[5]) : 0;
  const bool verbose = argc > 6;
  std::printf(
      "model method      n  samples   reached   better  failed  unsound  boxed  median ms     max "
      "ms\n");
  for (const char model : models) {
    const int K = model - '0';
    std::map<int, Tally> all;
    for (const int n : {30, 50, 100, 200}) {
      std::map<int, Tally> by_method;
      for (int truth = 0; truth < 4; ++truth)
        for (int seed = first_seed; seed < first_seed + seeds; ++seed)
          run_case(K, truth, n, seed, starts, cache, by_method, verbose);
      for (const auto& [method, tally] : by_method) {
        print_row(K, std::to_string(n), method, tally);
        Tally& sum = all[method];
        sum.samples += tally.samples, sum.reached += tally.reached, sum.better += tally.better;
        sum.boxed += tally.boxed, sum.failed += tally.failed, sum.unsound += tally.unsound;
        sum.times.insert(sum.times.end(), tally.times.begin(), tally.times.end());
      }
      std::fflush(stdout);
    }
    for (const auto& [method, tally] : all) print_row(K, "all", method, tally);
  }
  std::printf("\nMLE of 400 units, half of them suspended\n");
  for (const char model : models)
    for (const bool censored : {true, false}) print_recovery(model - '0', censored);
}
