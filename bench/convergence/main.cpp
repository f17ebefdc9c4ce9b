// Holds the program's answers against a long independent search: how often they are the
// best, whether each is an optimum, and none worse than a contained model's.
//   convergence [--seed 1] [--samples 100] [--models W4P,W5C,W7P] [--methods rr,mle,rrs,mlec]
//               [--starts 4000] [--large N] [--ordinary N] [--threads 2] [--self] [--index I]
//               [--most 400] [--table]
// --large: samples of 1000, 10000 and 100000 units each, W7P by likelihood, against a climb
// from the truth. --ordinary: samples of 8 to 30 units; prints the kinds of refusals.
// --self: without the program, the search against a second one of other starts, and its
// derivatives against the reference book. --index: one sample of the series alone.
// --most: units of the largest sample. --table: prints the best known answers.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <thread>

#include "convergence/global_search.h"
#include "fit/door/fit.h"
#include "support/random_samples.h"
#include "support/reference_book.h"

namespace tavlo::bench {
namespace {

struct Options {
  std::uint64_t seed = 1;
  int samples = 100, starts = 4000, large = 0, ordinary = 0, threads = 2, index = -1, most = 400;
  std::string models = "W4P,W5C,W7P", methods = "rr,mle,rrs,mlec";
  bool self = false, table = false;
};

/// A method with the choice whether suspensions take part in its likelihood.
struct Way {
  const char* name;
  std::int16_t method;
  bool censored;
};
constexpr Way ways[] = {{"rr", method_code::x_on_y, false},
                        {"mle", method_code::mle, false},
                        {"rrs", method_code::y_on_x, false},
                        {"mlec", method_code::mle, true}};

std::vector<std::string> listed(const std::string& text) {
  std::vector<std::string> names(1);
  for (const char letter : text) {
    if (letter == ',')
      names.emplace_back();
    else
      names.back() += letter;
  }
  return names;
}

void shared_work(int threads, int count, const std::function<void(int)>& task) {
  std::atomic<int> next = 0;
  std::vector<std::thread> crew;
  for (int i = 0; i < threads; ++i)
    crew.emplace_back([&] {
      for (int mine = next++; mine < count; mine = next++) task(mine);
    });
  for (std::thread& one : crew) one.join();
}

std::uint64_t seed_of(const Options& options, int index) {
  return options.seed * 100003u + static_cast<std::uint64_t>(index);
}

double tolerance(const Way& way) { return way.method == method_code::mle ? 0.05 : 1e-4; }

std::string text_of(const Life& life) {
  std::string text;
  char part[120];
  for (const FitParam& row : life.rows) {
    std::snprintf(part, sizeof part, " (beta %.5g eta %.6g share %.5g)", row.Shape, 1 / row.Scale,
                  row.Fraction);
    text += part;
  }
  return text;
}

std::string text_of(const Optimum& optimum, const Sample& sample, const Way& way) {
  const std::int16_t model = optimum.shape.b
                                 ? (optimum.shape.c ? model_code::weibull7 : model_code::weibull4)
                             : optimum.shape.c ? model_code::weibull5c
                                               : model_code::weibull2;
  const Objective objective(sample, optimum.shape, way.method, way.censored);
  return std::string(find_model(model)->command_name) +
         text_of(objective.life_of(optimum.point, model));
}

/// What is wrong with an answer, in words; empty where nothing is.
std::string fault_of(const Sample& sample, const FitRequest& request, const Fit& fit,
                     const BestAnswer& known) {
  if (!fit.proof) return "no proof";
  const auto own = static_cast<double>(test::quality_of(fit.life, sample, request));
  if (!(std::fabs(own - fit.quality) <= 1e-8 * std::max(1.0, std::fabs(own))))
    return "recomputed " + std::to_string(own);
  if (fit.proof->kind == Proof::Kind::flat) {
    const double far = request.method == method_code::mle ? 0.5 : 1e-4;
    const bool near = known.contained && std::fabs(known.contained->value - fit.quality) < far;
    return near ? "" : "called flat, but is no contained model's answer";
  }
  const bool unreached = std::any_of(fit.life.rows.begin(), fit.life.rows.end(), is_unreached);
  const Objective objective(sample, unreached ? cured : shape_of(fit.life.model), request.method,
                            request.censored);
  Optimum at;
  at.point = objective.point_of(fit.life);
  const Flaw flaw = judge(objective, fence_for(sample, request.method, request.censored), at);
  if (flaw == Flaw::none && at.at_share_bound != (fit.proof->kind == Proof::Kind::bound))
    return "bound misnamed";
  return words_of(flaw);
}

struct Judgement {
  bool refused = false, reached = false, better = false, below = false;
  bool flat = false, bound = false, unconfirmed = false;
  double milliseconds = 0, gap = 0;
  std::string fault, story;
};

Judgement judge_answer(const Options& options, const Sample& sample, std::int16_t model,
                       const Way& way, std::uint64_t seed) {
  FitRequest request;
  request.model = model, request.method = way.method, request.censored = way.censored;
  Companion companion;
  const auto begin = std::chrono::steady_clock::now();
  const FitAnswer answer = fit(sample, request, companion);
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
  const BestAnswer known =
      best_answer(sample, model, way.method, way.censored, options.starts, seed);
  Judgement result;
  result.milliseconds = time.count();
  result.refused = !answer.fit();
  const double best = known.best ? known.best->value : -HUGE_VAL;
  if (!answer.fit()) {
    result.reached = !known.best;
    result.gap = known.best ? HUGE_VAL : 0;
    result.story = "refused, code " + std::to_string(static_cast<int>(answer.refusal()->code));
  } else {
    const Fit& fit = *answer.fit();
    result.gap = best - fit.quality;
    result.reached = result.gap <= tolerance(way);
    result.fault = fault_of(sample, request, fit, known);
    result.better = result.gap < -tolerance(way) && result.fault.empty();
    const double grain = way.method == method_code::mle ? 1e-3 : 1e-7;
    result.below = known.contained && fit.quality < known.contained->value - grain;
    result.flat = fit.proof && fit.proof->kind == Proof::Kind::flat;
    result.bound = fit.proof && fit.proof->kind == Proof::Kind::bound;
    for (const Note& note : answer.notes)
      result.unconfirmed = result.unconfirmed || note.code == NoteCode::unconfirmed;
    result.story = "got " + std::to_string(fit.quality) + text_of(fit.life);
  }
  if (known.best)
    result.story +=
        "\n      best " + std::to_string(best) + " " + text_of(*known.best, sample, way);
  return result;
}

void print_row(const std::string& model, const Way& way, const std::vector<Judgement>& all) {
  const auto count = [&](bool Judgement::*field) {
    return static_cast<int>(
        std::count_if(all.begin(), all.end(), [&](const Judgement& one) { return one.*field; }));
  };
  const auto faults = std::count_if(all.begin(), all.end(),
                                    [](const Judgement& one) { return !one.fault.empty(); });
  std::vector<double> times;
  for (const Judgement& one : all) times.push_back(one.milliseconds);
  std::sort(times.begin(), times.end());
  std::printf("%-4s %-5s %7zu %8d %7d %8d %11d %7d %5d %6d %12d %9.1f %8.1f\n", model.c_str(),
              way.name, all.size(), count(&Judgement::reached), count(&Judgement::better),
              count(&Judgement::refused), static_cast<int>(faults), count(&Judgement::below),
              count(&Judgement::flat), count(&Judgement::bound), count(&Judgement::unconfirmed),
              times[times.size() / 2], times.back());
}

void compare(const Options& options) {
  std::printf(
      "model method samples  reached  better  refused  no optimum   below  flat  bound  "
      "unconfirmed median ms   max ms\n");
  for (const std::string& name : listed(options.models)) {
    const Model& model = *find_model_by_name(name);
    for (const std::string& method : listed(options.methods)) {
      const Way* way = std::find_if(std::begin(ways), std::end(ways),
                                    [&](const Way& one) { return method == one.name; });
      if (way == std::end(ways)) std::exit(2);
      const int first = std::max(options.index, 0);
      const int count = options.index < 0 ? options.samples : 1;
      std::vector<Judgement> all(static_cast<std::size_t>(count));
      shared_work(options.threads, count, [&](int i) {
        const std::uint64_t seed = seed_of(options, first + i);
        const Sample sample = make_sample(test::mixture_sample(seed, model.code, options.most).rows,
                                          RankKind::benard);
        all[static_cast<std::size_t>(i)] = judge_answer(options, sample, model.code, *way, seed);
      });
      print_row(name, *way, all);
      for (int i = 0; i < count; ++i) {
        const Judgement& one = all[static_cast<std::size_t>(i)];
        if (one.reached && one.fault.empty() && !one.below && options.index < 0) continue;
        std::printf("  %s/%s seed %llu index %d gap %.3g%s %s\n      %s\n", name.c_str(), way->name,
                    static_cast<unsigned long long>(options.seed), first + i, one.gap,
                    one.below ? " BELOW A CONTAINED MODEL" : "", one.fault.c_str(),
                    one.story.c_str());
      }
      std::fflush(stdout);
    }
  }
}

/// W7P by likelihood of large samples against a climb from the truth.
void compare_large(const Options& options) {
  for (const int n : {1000, 10000, 100000}) {
    int reached = 0, judged = 0;
    double worst = 0;
    for (int i = 0; i < options.large; ++i) {
      test::RandomNumbers random(seed_of(options, i) * 31 + static_cast<std::uint64_t>(n));
      const Life truth = test::random_life(random, model_code::weibull7);
      const Sample sample = make_sample(test::draws(random, truth, n), RankKind::benard);
      const Objective objective(sample, shape_of(model_code::weibull7), method_code::mle, false);
      const std::optional<Optimum> best =
          climb(objective, fence_for(sample, method_code::mle, false), objective.point_of(truth));
      if (!best) continue;
      FitRequest request;
      request.model = model_code::weibull7, request.method = method_code::mle;
      Companion companion;
      const FitAnswer answer = fit(sample, request, companion);
      const double gap = answer.fit() ? best->value - answer.fit()->quality : HUGE_VAL;
      ++judged;
      reached += gap <= 0.05;
      worst = std::max(worst, gap);
      if (gap > 0.05)
        std::printf("  n %d index %d gap %.4g truth%s\n", n, i, gap, text_of(truth).c_str());
    }
    std::printf("W7P mle n = %d: %d of %d reach the optimum near the truth, worst gap %.3g\n", n,
                reached, judged, worst);
    std::fflush(stdout);
  }
}

/// 8 to 30 units as they come: one population or more, few digits, some stopped early.
test::Rows ordinary_rows(std::uint64_t seed) {
  test::RandomNumbers random(seed * 0x9e3779b97f4a7c15u + 11);
  static constexpr std::int16_t models[] = {model_code::weibull2,  model_code::weibull2,
                                            model_code::weibull3,  model_code::weibull4,
                                            model_code::weibull5c, model_code::weibull7};
  const Life truth = test::random_life(random, models[random.whole(0, 5)]);
  const int n = random.whole(8, 30), kind = random.whole(0, 3), digits = random.whole(2, 5);
  test::Rows rows = test::draws(random, truth, n, kind == 1 ? 0.6 : 0);
  if (kind == 2) test::stop_at(rows, random.uniform(0.4, 0.9));
  for (SampleRow& row : rows) row.time = test::to_digits(row.time, digits);
  test::sort_rows(rows);
  return rows;
}

void count_refusals(const Options& options) {
  std::map<std::string, std::map<int, std::vector<int>>> kinds;
  int answers = 0;
  for (int i = 0; i < options.ordinary; ++i) {
    const Sample sample = make_sample(ordinary_rows(seed_of(options, i)), RankKind::benard);
    for (const char* name : {"W2P", "W3T", "W4P", "W5C", "W7P"})
      for (const Way& way : ways) {
        FitRequest request;
        request.model = find_model_by_name(name)->code;
        request.method = way.method, request.censored = way.censored;
        Companion companion;
        const FitAnswer answer = fit(sample, request, companion);
        ++answers;
        if (!answer.refusal()) continue;
        kinds[std::string(name) + "/" + way.name][static_cast<int>(answer.refusal()->code)]
            .push_back(i);
      }
  }
  std::printf("%d answers of %d ordinary samples; refusals by kind (code):\n", answers,
              options.ordinary);
  for (const auto& [fit, codes] : kinds)
    for (const auto& [code, cases] : codes)
      std::printf("  %-9s code %2d: %4zu, first at index %d\n", fit.c_str(), code, cases.size(),
                  cases.front());
}

/// The largest difference of the gradient and Hessian from the reference book's, relative
/// to the largest entry.
double difference_from_book(const Objective& objective, const Sample& sample, const Vector& point,
                            std::int16_t model, const Way& way) {
  Evaluation own;
  objective.evaluate(point, own);
  const Life life = objective.life_of(point, model);
  FitRequest request;
  request.model = model, request.method = way.method, request.censored = way.censored;
  const test::Derivatives book = test::derivatives_at_zero(
      [&](const test::Numbers& steps) {
        return test::quality_of(test::moved(life, steps), sample, request);
      },
      test::free_parameters(life));
  // The book goes through the rows as they are stored: C ahead of A and B.
  const std::size_t n = objective.parameters();
  const auto place = [&](std::size_t i) {
    if (!objective.shape().c || i == n - 1) return i;
    return i < 2 ? n - 3 + i : i - 2;
  };
  double worst = 0, largest = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const auto off = [&](double mine, test::Number theirs) {
      worst = std::max(worst, static_cast<double>(std::fabs(mine - theirs)));
      largest = std::max(largest, std::fabs(mine));
    };
    off(own.gradient[place(i)], book.gradient[i]);
    for (std::size_t j = 0; j < n; ++j) off(own.hessian[place(i)][place(j)], book.hessian[i][j]);
  }
  return worst / largest;
}

void examine_self(const Options& options) {
  for (const std::string& name : listed(options.models)) {
    const Model& model = *find_model_by_name(name);
    for (const std::string& method : listed(options.methods))
      for (const Way& way : ways) {
        if (method != way.name) continue;
        int agreed = 0, own = 0;
        double derivatives = 0;
        for (int i = 0; i < options.samples; ++i) {
          const std::uint64_t seed = seed_of(options, i);
          const test::DrawnSample drawn = test::mixture_sample(seed, model.code, options.most);
          const Sample sample = make_sample(drawn.rows, RankKind::benard);
          const auto best_from = [&](std::uint64_t other) {
            return best_answer(sample, model.code, way.method, way.censored, options.starts, other);
          };
          const BestAnswer one = best_from(seed), two = best_from(seed + 77);
          const double a = one.best ? one.best->value : 0, b = two.best ? two.best->value : 0;
          agreed += std::fabs(a - b) <= tolerance(way);
          own += one.best && one.best->shape.parameters() == shape_of(model.code).parameters();
          const Objective objective(sample, shape_of(model.code), way.method, way.censored);
          derivatives = std::max(
              derivatives, difference_from_book(objective, sample, objective.point_of(drawn.truth),
                                                model.code, way));
          if (std::fabs(a - b) > tolerance(way) || options.index == i)
            std::printf("  index %d: %.6f and %.6f\n   %s\n   %s\n   truth%s\n", i, a, b,
                        one.best ? text_of(*one.best, sample, way).c_str() : "",
                        two.best ? text_of(*two.best, sample, way).c_str() : "",
                        text_of(drawn.truth).c_str());
        }
        std::printf("%s %s: %d of %d agree, %d of the model's own, derivatives off by %.2g\n",
                    name.c_str(), way.name, agreed, options.samples, own, derivatives);
        std::fflush(stdout);
      }
  }
}

/// Best known answers as a table for the tests.
void print_table(const Options& options) {
  for (const std::string& name : listed(options.models))
    for (std::size_t w = 0; w < std::size(ways); ++w)
      for (int i = 0; i < options.samples; ++i) {
        const std::uint64_t seed = seed_of(options, i);
        const std::int16_t model = find_model_by_name(name)->code;
        const Sample sample =
            make_sample(test::mixture_sample(seed, model, options.most).rows, RankKind::benard);
        const BestAnswer known =
            best_answer(sample, model, ways[w].method, ways[w].censored, options.starts, seed);
        if (known.best)
          std::printf("{\"%s\", %zu, %llu, %.9g},\n", name.c_str(), w,
                      static_cast<unsigned long long>(seed), known.best->value);
      }
}

Options read_options(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string name = argv[i];
    const char* value = i + 1 < argc ? argv[i + 1] : "";
    if (name == "--self" || name == "--table") {
      (name == "--self" ? options.self : options.table) = true;
      continue;
    }
    const std::map<std::string, int*> numbers = {
        {"--samples", &options.samples}, {"--starts", &options.starts},
        {"--large", &options.large},     {"--ordinary", &options.ordinary},
        {"--threads", &options.threads}, {"--index", &options.index},
        {"--most", &options.most}};
    if (name == "--seed")
      options.seed = std::strtoull(value, nullptr, 10);
    else if (name == "--models")
      options.models = value;
    else if (name == "--methods")
      options.methods = value;
    else if (numbers.contains(name))
      *numbers.at(name) = std::atoi(value);
    else
      std::fprintf(stderr, "convergence: no option %s\n", name.c_str()), std::exit(2);
    ++i;
  }
  return options;
}

}  // namespace
}  // namespace tavlo::bench

int main(int argc, char** argv) {
  using namespace tavlo::bench;
  const Options options = read_options(argc, argv);
  if (options.self || options.table) {
    options.self ? examine_self(options) : print_table(options);
    return 0;
  }
  if (options.samples > 0) compare(options);
  if (options.large > 0) compare_large(options);
  if (options.ordinary > 0) count_refusals(options);
}
