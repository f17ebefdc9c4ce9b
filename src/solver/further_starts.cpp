#include "solver/further_starts.h"

#include <cmath>
#include <vector>

#include "solver/main_loop.h"
#include "solver/nested_starts.h"
#include "solver/parameter_translation.h"
#include "solver/sound_answer.h"
#include "solver/start_points.h"
#include "solver/start_pool.h"

namespace tavlo {
namespace {

constexpr int most_starts = 24;
constexpr int starts_without_gain = 6;
constexpr int runs_of_a_start = 2;      // of the minimiser, where evaluations run out
constexpr int runs_of_the_answer = 10;  // the winner is taken to its optimum
constexpr double gain = 1e-9;

/// Answers closer than this are one optimum; the minimiser stops that far off on
/// flat ground.
double same_optimum(int method) { return method == solver_method::mle ? 0.01 : 1e-5; }

struct Answer {
  ParameterVector X{};
  double quality = 0;
  bool sound = false;
  int info = 0;
};

bool better(const Answer& a, const Answer& b) {
  if (a.sound != b.sound) return a.sound;
  return a.quality > b.quality + gain;
}

/// The search from start to start.
class Search {
 public:
  Search(Solver& solver, int M, int K, const ParameterVector& X, int info)
      : quiet_{solver.state, solver.errors, solver.prompts, solver.event_loop, solver.clock, true},
        M_(M),
        K_(K),
        best_(present(X, info)) {
    found_.push_back(best_);
  }

  void run() {
    refine(runs_of_the_answer);
    std::vector<ParameterVector> starts = nested_starts(quiet_.state, K_);
    const std::vector<ParameterVector> promising = promising_starts(quiet_, K_);
    starts.insert(starts.end(), promising.begin(), promising.end());
    StartPoints points(std::move(starts), K_);
    for (int without_gain = 0; tried_ < most_starts && without_gain < starts_without_gain;) {
      if (quiet_.aborted()) return;
      const Answer answer = minimised(points.next(best_.X), runs_of_a_start);
      tried_ += 1;
      without_gain = take(answer) ? 0 : without_gain + 1;
    }
    refine(runs_of_the_answer);
  }

  const Answer& best() const { return best_; }

  StartsOutcome outcome() const {
    StartsOutcome outcome;
    OldStartsReport& report = outcome.report;
    report.tried = tried_;
    report.sound = best_.sound;
    const double near = same_optimum(quiet_.data.Method);
    for (const Answer& answer : found_) {
      if (std::fabs(answer.quality - best_.quality) <= near) {
        report.agreed += 1;
      } else if (answer.sound && (!report.has_runner_up || answer.quality > report.runner_up)) {
        report.has_runner_up = true;
        report.runner_up = answer.quality;
        outcome.runner_up = answer.X;
      }
    }
    return outcome;
  }

 private:
  /// The answer that the parameters hold now.
  Answer present(const ParameterVector& X, int info) const {
    const bool sound =
        flaw_of(quiet_.params, quiet_.data, K_) == Flaw::none && std::isfinite(quiet_.params.SumSq);
    return {X, quiet_.params.SumSq, sound, info};
  }

  Answer minimised(ParameterVector X, int runs) {
    const int info = minimise_from(quiet_, M_, K_, X, runs);
    return present(X, info);
  }

  bool take(const Answer& answer) {
    found_.push_back(answer);
    if (!better(answer, best_)) return false;
    best_ = answer;
    best_index_ = found_.size() - 1;
    return true;
  }

  /// On from the best answer where the minimiser has not come to an end.
  void refine(int runs) {
    const Answer answer = minimised(best_.X, runs);
    if (better(answer, best_)) best_ = found_[best_index_] = answer;
  }

  Solver quiet_;
  int M_;
  int K_;
  Answer best_;
  std::vector<Answer> found_;
  std::size_t best_index_ = 0;  // of the best among the found
  int tried_ = 1;               // MainLoop's own
};

}  // namespace

StartsOutcome try_further_starts(Solver& solver, int M, int K, ParameterVector& X, int info) {
  Search search(solver, M, K, X, info);
  search.run();
  if (solver.aborted()) return {};
  const Answer& best = search.best();
  X = best.X;
  TranslateParams(solver, translation::x_to_parameters, K, X);
  solver.params.SumSq = best.quality;
  store_solution(solver, K, X, best.info);
  return search.outcome();
}

}  // namespace tavlo
