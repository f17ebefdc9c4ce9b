#include "analyses/planned_runs.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <future>
#include <limits>
#include <numeric>
#include <utility>

#include "analyses/sample_text.h"
#include "fit/door/fit.h"
#include "fit/parallel.h"
#include "life/parameter_names.h"
#include "life/shown_parameters.h"
#include "numerics/run_time_error.h"

namespace tavlo {

namespace {

constexpr std::array b_percents = {1.0, 10.0, 50.0};

/// Numbers of one fit, in the order of the columns of a report, NaN where it does not determine
/// one; none of a refusal.
using Numbers = std::vector<double>;

struct Population {
  ShownParameters shown;
  double share;
};

/// Populations in the order of their place on the axis of time.
std::vector<Population> in_order(const Life& life) {
  std::vector<Population> all;
  for (const FitParam& row : life.rows)
    all.push_back({shown_parameters(life.model, row), row.Fraction});
  std::stable_sort(all.begin(), all.end(), [](const Population& a, const Population& b) {
    return a.shown.first.value_or(INFINITY) < b.shown.first.value_or(INFINITY);
  });
  return all;
}

bool has_share(const Model& model) { return model.rows() > 1 && model.free_parameters % 2 == 1; }
bool has_minimum_life(const Model& model) {
  return model.rows() == 1 && model.free_parameters % 2 == 1 && !model.fixes_slope();
}

/// The columns that `numbers_of` fills.
std::vector<ParameterSpread> columns_of(const Model& model) {
  const NamePair& names = parameter_names(model.family).key;
  std::vector<ParameterSpread> columns;
  for (int i = 1; i <= model.rows(); ++i) {
    columns.push_back({ParameterKind::first, names.first, i, {}, {}, {}});
    columns.push_back({ParameterKind::second, names.second, i, {}, {}, {}});
  }
  for (int i = 1; has_share(model) && i <= model.rows(); ++i)
    columns.push_back({ParameterKind::share, "share", i, {}, {}, {}});
  if (has_minimum_life(model))
    columns.push_back({ParameterKind::minimum_life, "t0", 1, {}, {}, {}});
  return columns;
}

Numbers parameters_of(const Model& model, const Life& life) {
  Numbers numbers;
  const std::vector<Population> populations = in_order(life);
  for (const auto& [shown, share] : populations) {
    numbers.push_back(shown.first.value_or(NAN));
    numbers.push_back(shown.second.value_or(NAN));
  }
  if (has_share(model))
    for (const Population& each : populations) numbers.push_back(each.share);
  if (has_minimum_life(model)) numbers.push_back(life.rows[0].T0);
  return numbers;
}

/// A data set can hold the number. A mean with a larger one says nothing either.
bool is_held(double number) {
  return std::fabs(number) <= static_cast<double>(std::numeric_limits<float>::max());
}

/// Parameters, B-lives, quality.
Numbers numbers_of(const Model& model, const Fit& fit) {
  Numbers numbers = parameters_of(model, fit.life);
  for (const double percent : b_percents)
    numbers.push_back(quantile(fit.life, percent / 100).value_or(NAN));
  numbers.push_back(fit.quality);
  for (double& each : numbers)
    if (!is_held(each)) each = NAN;
  return numbers;
}

/// The numbers of one place in all runs that determine it.
std::vector<double> column(const std::vector<Numbers>& runs, std::size_t at) {
  std::vector<double> values;
  for (const Numbers& run : runs)
    if (!run.empty() && !std::isnan(run[at])) values.push_back(run[at]);
  return values;
}

/// What the life that is sampled has itself.
void add_truth(const Life& life, RunsOfFit& report) {
  for (BLifeSpread& each : report.b_lives) each.truth = quantile(life, each.percent / 100);
  if (life.model != report.request.model) return;
  const Numbers numbers = parameters_of(*find_model(life.model), life);
  for (std::size_t i = 0; i < report.parameters.size(); ++i)
    report.parameters[i].truth = numbers[i];
}

RunsOfFit report_of(const RunPlan& plan, const FitRequest& request,
                    const std::vector<Numbers>& runs) {
  const Model& model = *find_model(request.model);
  RunsOfFit report;
  report.request = request;
  report.parameters = columns_of(model);
  report.refused = static_cast<std::int32_t>(
      std::count_if(runs.begin(), runs.end(), [](const Numbers& run) { return run.empty(); }));
  report.fitted = static_cast<std::int32_t>(runs.size()) - report.refused;
  std::size_t at = 0;
  for (ParameterSpread& each : report.parameters) {
    each.values = column(runs, at++);
    each.spread = spread_of(each.values);
  }
  for (const double percent : b_percents) {
    const std::vector<double> values = column(runs, at++);
    report.b_lives.push_back(
        {percent, {}, static_cast<std::int32_t>(values.size()), spread_of(values)});
  }
  if (request.method != method_code::mle) report.r_squared = spread_of(column(runs, at));
  add_truth(plan.sample.life, report);
  return report;
}

struct Run {
  std::vector<float> chances{};
  WichmannHill behind;             ///< the generator after them
  std::vector<Numbers> of_fits{};  ///< by the requests of the plan
  std::vector<std::optional<Refusal>> refusals{};
  bool has_suspensions = false;
  std::atomic<bool> is_made = false;
};

/// What tasks tell one another.
struct State {
  std::atomic<bool> stop = false;
  std::atomic<bool> overflow = false;  ///< a time is beyond single precision
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
  run.has_suspensions = sample.total_suspensions > 0;
  for (FitRequest request : plan.fits) {
    if (state.stop) return;
    request.ranks = plan.sample.ranks;
    Stoppable companion(state);
    const FitAnswer answer = fit(sample, request, companion);
    const Refusal* refusal = answer.refusal();
    run.refusals.push_back(refusal ? std::optional(*refusal) : std::nullopt);
    run.of_fits.push_back(refusal ? Numbers{}
                                  : numbers_of(*find_model(request.model), *answer.fit()));
  }
  run.is_made = !state.stop;  // a fit that was ended is no refusal
}

/// A task: it must not throw. Chance is asked by generators at rest alone, which none is here.
void make(const RunPlan& plan, Run& run, Entropy& chance, State& state) {
  if (state.stop) return;
  try {
    fit_all(plan, sample_of(plan, run, chance), run, state);
  } catch (const RunTimeError&) {
    state.overflow = state.stop = true;
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
  if (state.overflow) throw RunTimeError(run_time::overflow);
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
  while (done.wait_for(between_questions) != std::future_status::ready)
    if (!state.stop && !go_on()) state.stop = true;
  done.get();
}

}  // namespace

std::optional<Spread> spread_of(std::vector<double> numbers) {
  if (numbers.empty()) return std::nullopt;
  std::sort(numbers.begin(), numbers.end());
  const auto count = static_cast<double>(numbers.size());
  const auto percentile = [&](double p) {
    const double place = p * (count - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, numbers.size() - 1);
    return std::lerp(numbers[below], numbers[above], place - static_cast<double>(below));
  };
  const double mean = std::accumulate(numbers.begin(), numbers.end(), 0.0) / count;
  double squares = 0;
  for (const double each : numbers) squares += (each - mean) * (each - mean);
  const double sd = count > 1 ? std::sqrt(squares / (count - 1)) : 0;
  return Spread{mean, sd, percentile(0.05), percentile(0.5), percentile(0.95)};
}

RunsReport make_runs(const RunPlan& plan, WichmannHill& random, Entropy& chance,
                     const std::function<bool(std::int32_t)>& go_on) {
  constexpr std::int32_t points_at_once = 1 << 20;
  const std::int32_t part = std::clamp(points_at_once / plan.sample.size, 1, 256);
  std::vector<std::vector<Numbers>> of_fits(plan.fits.size());
  std::vector<std::optional<Refusal>> first_refusals(plan.fits.size());
  bool has_suspensions = false;
  RunsReport report;
  State state;
  while (!state.stop && report.runs < plan.runs && go_on(report.runs)) {
    std::vector<Run> runs(static_cast<std::size_t>(std::min(part, plan.runs - report.runs)));
    make_while([&] { make_part(plan, random, chance, runs, state); },
               [&] { return go_on(report.runs + made_of(runs)); }, state);
    const std::int32_t made = made_of(runs);
    if (report.runs == 0 && made > 0) first_refusals = runs.front().refusals;
    for (std::int32_t i = 0; i < made; ++i) {
      Run& run = runs[static_cast<std::size_t>(i)];
      for (std::size_t k = 0; k < of_fits.size(); ++k)
        of_fits[k].push_back(std::move(run.of_fits[k]));
      has_suspensions = has_suspensions || run.has_suspensions;
      random = run.behind;
    }
    report.runs += made;
  }
  for (std::size_t k = 0; k < plan.fits.size(); ++k) {
    report.fits.push_back(report_of(plan, plan.fits[k], std::exchange(of_fits[k], {})));
    report.fits.back().first_refusal = first_refusals[k];
    report.fits.back().leaves_suspensions_out =
        has_suspensions && !plan.fits[k].censored &&
        has_censored_choice(plan.fits[k].model, plan.fits[k].method);
  }
  return report;
}

}  // namespace tavlo
