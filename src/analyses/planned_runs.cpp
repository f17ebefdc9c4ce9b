#include "analyses/planned_runs.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <utility>

#include "analyses/sample_text.h"
#include "fit/door/fit.h"
#include "fit/parallel.h"
#include "numerics/run_time_error.h"

namespace tavlo {

namespace {

/// What one request gave in one run.
struct RunFit {
  RunNumbers numbers{};
  std::optional<Refusal> refusal{};
  bool leaves_suspensions_out = false;
};

struct Run {
  std::vector<float> chances{};
  WichmannHill behind;         ///< the generator after them
  std::vector<RunFit> fits{};  ///< by the requests of the plan
  std::atomic<bool> is_made = false;
};

/// What tasks tell one another.
struct State {
  std::atomic<bool> stop = false;
  std::atomic<int> fault = 0;  ///< error number of a sample that could not be made
};

/// Ends a fit that nobody waits for any more.
class Stoppable : public Companion {
 public:
  explicit Stoppable(const State& state) : state_(state) {}
  bool stop_wanted() override { return state_.stop; }

 private:
  const State& state_;
};

/// As a sample that is written is read back. What inspections find is written with all digits.
Sample sample_of(const RunPlan& plan, Run& run, Entropy& chance) {
  std::vector<SampleRow> rows =
      points_of(plan.sample, std::exchange(run.chances, {}), run.behind, chance).rows();
  find_at(plan.inspections, rows);
  if (plan.inspections.is_none())
    for (SampleRow& row : rows) row.time = written_time(row.time);
  return make_sample(rows, plan.sample.ranks);
}

void fit_all(const RunPlan& plan, const Sample& sample, Run& run, const State& state) {
  for (FitRequest request : plan.fits) {
    if (state.stop) return;
    request.ranks = plan.sample.ranks;
    Stoppable companion(state);
    const FitAnswer answer = fit(sample, request, companion);
    RunFit& made = run.fits.emplace_back();
    made.leaves_suspensions_out = leaves_suspensions_out(sample, request);
    if (const Refusal* refusal = answer.refusal())
      made.refusal = *refusal;
    else
      made.numbers = numbers_of(*find_model(request.model), *answer.fit());
  }
  run.is_made = !state.stop;  // a fit that was ended is no refusal
}

/// A task: it must not throw. Chance is asked by generators at rest alone, which none is here.
void make(const RunPlan& plan, Run& run, Entropy& chance, State& state) {
  if (state.stop) return;
  try {
    fit_all(plan, sample_of(plan, run, chance), run, state);
  } catch (const RunTimeError& error) {
    state.fault = error.number();
    state.stop = true;
  }
}

/// Runs are taken up in their order, so that one that is not made ends as few as can be.
void make_part(const RunPlan& plan, WichmannHill random, Entropy& chance, std::vector<Run>& runs,
               State& state) {
  for (Run& run : runs) {
    run.chances = draw_chances(plan.sample, random, chance);
    run.behind = random;
  }
  std::atomic<std::size_t> next = 0;
  for_each_index(runs.size(), [&](std::size_t) { make(plan, runs[next++], chance, state); });
  if (state.fault != 0) throw RunTimeError(state.fault);
}

/// The first ones up to one that is not made.
std::int32_t made_of(const std::vector<Run>& runs) {
  const auto end =
      std::find_if(runs.begin(), runs.end(), [](const Run& run) { return !run.is_made; });
  return static_cast<std::int32_t>(end - runs.begin());
}

/// Does the work on another thread, so that one long fit keeps nobody waiting for `go_on`.
void make_while(const std::function<void()>& work, const std::function<bool()>& go_on,
                State& state) {
  constexpr std::chrono::milliseconds between_questions(20);
  std::future<void> done = std::async(std::launch::async, work);
  try {
    while (done.wait_for(between_questions) != std::future_status::ready)
      if (!state.stop && !go_on()) state.stop = true;
  } catch (...) {
    state.stop = true;
    throw;
  }
  done.get();
}

}  // namespace

RunsReport make_runs(const RunPlan& plan, WichmannHill& random, Entropy& chance,
                     const std::function<bool(std::int32_t)>& go_on) {
  constexpr std::int32_t points_at_once = 1 << 20;
  const std::int32_t part = std::clamp(points_at_once / plan.sample.size, 2, 256);
  std::vector<std::vector<RunNumbers>> numbers(plan.fits.size());
  RunsReport report;
  report.fits.resize(plan.fits.size());
  State state;
  while (!state.stop && report.runs < plan.runs && go_on(report.runs)) {
    std::vector<Run> runs(static_cast<std::size_t>(std::min(part, plan.runs - report.runs)));
    make_while([&] { make_part(plan, random, chance, runs, state); },
               [&] { return go_on(report.runs + made_of(runs)); }, state);
    const std::int32_t made = made_of(runs);
    for (std::int32_t i = 0; i < made; ++i) {
      Run& run = runs[static_cast<std::size_t>(i)];
      for (std::size_t k = 0; k < numbers.size(); ++k) {
        RunFit& fit = run.fits[k];
        numbers[k].push_back(std::move(fit.numbers));
        if (!report.fits[k].first_refusal) report.fits[k].first_refusal = fit.refusal;
        report.fits[k].leaves_suspensions_out |= fit.leaves_suspensions_out;
      }
      random = run.behind;
    }
    report.runs += made;
  }
  for (std::size_t k = 0; k < plan.fits.size(); ++k)
    add_spreads(plan.sample.life, plan.fits[k], std::exchange(numbers[k], {}), report.fits[k]);
  return report;
}

}  // namespace tavlo
