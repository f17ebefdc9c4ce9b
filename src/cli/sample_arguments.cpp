#include "cli/sample_arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>

#include "actions/sample_words.h"
#include "analyses/stated_life.h"
#include "cli/argument_values.h"

namespace tavlo::cli {

namespace {

constexpr double most_points = 1e8;
constexpr std::int32_t most_points_of_runs = 1000000;
constexpr std::int32_t most_points_of_groups = 10000000;  // they stand as rows meanwhile
constexpr double seeds_below = 2147483646;

[[noreturn]] void refuse(const std::string& what) { throw CLI::ValidationError(what); }

/// A whole number of points or runs.
std::int32_t parse_count(const std::string& text, double least, double most) {
  const std::vector<double> numbers = parse_numbers(text);
  if (numbers.size() != 1 || numbers[0] != std::floor(numbers[0]) || numbers[0] < least ||
      numbers[0] > most)
    refuse("'" + text + "' is no whole number from " + std::to_string(std::int64_t(least)) +
           " to " + std::to_string(std::int64_t(most)));
  return static_cast<std::int32_t>(numbers[0]);
}

/// Numbers between blanks; none in an empty text.
std::vector<double> parse_blank_list(const std::string& text) {
  std::string list;
  for (const char c : text)
    if (c != ' ' && c != '\t')
      list += c;
    else if (!list.empty() && list.back() != ',')
      list += ',';
  if (list.ends_with(',')) list.pop_back();
  return list.empty() ? std::vector<double>() : parse_numbers(list);
}

std::vector<std::int32_t> parse_points(const std::string& text) {
  std::vector<std::int32_t> points;
  for (const double number : parse_blank_list(text)) {
    if (number != std::floor(number) || number < 1 || number > most_points)
      refuse("'" + text + "' are no numbers of points, as '3 5 7'");
    points.push_back(static_cast<std::int32_t>(number));
  }
  return points;
}

WichmannHill::Seeds parse_seeds(const std::string& text) {
  const std::vector<double> numbers = parse_numbers(text);
  const bool are_seeds = std::all_of(numbers.begin(), numbers.end(), [](double number) {
    return number == std::floor(number) && number >= 1 && number < seeds_below;
  });
  if (numbers.size() != WichmannHill::streams || !are_seeds)
    refuse("'" + text + "' are not four seeds from 1 to 2147483645, as 11,22,33,44");
  WichmannHill::Seeds seeds{};
  std::copy(numbers.begin(), numbers.end(), seeds.begin());
  return seeds;
}

Inspections parse_inspections(const std::string& text) {
  const std::vector<double> numbers = parse_blank_list(text);
  if (!std::all_of(numbers.begin(), numbers.end(), is_inspection))
    refuse("'" + text + "' are no times of inspections above 0, as 250 or '100 200 400'");
  return inspections_of(numbers);
}

/// What a row of the model may state.
std::vector<std::string> keys_of(const Model& model, int population) {
  std::vector<std::string> keys;
  switch (model.family) {
    case Family::normal: keys = {"mu", "sigma"}; break;
    case Family::lognormal: keys = {"med", "sdf"}; break;
    case Family::gumbel: keys = {"xi", "del"}; break;
    default: keys = {"eta", "beta"};
  }
  if (states_share(model, population)) keys.push_back("u");
  return keys;
}

/// "u=15,eta=100,beta=4".
StatedRow parse_row(const Model& model, int population, const std::string& text) {
  const std::vector<std::string> keys = keys_of(model, population);
  std::vector<std::optional<double>> values(3);
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = std::min(text.find(',', start), text.size());
    const std::string part = text.substr(start, end - start);
    const std::size_t sign = std::min(part.find('='), part.size());
    const auto key = std::find(keys.begin(), keys.end(), part.substr(0, sign));
    std::string all;
    for (const std::string& each : keys) all += (all.empty() ? "" : ",") + each + "=";
    if (key == keys.end() || sign == part.size())
      refuse("'" + text + "' is no row " + std::to_string(population) + " of " +
             command_name(model) + ": it takes " + all);
    auto& value = values[static_cast<std::size_t>(key - keys.begin())];
    if (value) refuse("'" + text + "' states " + *key + " twice");
    value = parse_numbers(part.substr(sign + 1)).front();
    start = end + 1;
  }
  return {values[2], values[0], values[1]};
}

Life parse_life(const SampleOptions& options) {
  const Model& model = *options.model;
  if (!is_sampled(model.code)) refuse("samples are not drawn from " + command_name(model));
  const auto given = static_cast<int>(options.rows.size());
  if (given != model.rows())
    refuse(command_name(model) + " takes " + std::to_string(model.rows()) + " --row, not " +
           std::to_string(given));
  if (options.t0 != 0 && model.code != model_code::weibull3) refuse("--t0 is for a W3T");
  std::vector<StatedRow> rows;
  for (int i = 1; i <= given; ++i)
    rows.push_back(parse_row(model, i, options.rows[static_cast<std::size_t>(i) - 1]));
  if (const auto fault = fault_of(model, rows, options.t0)) refuse(words_of(*fault, model));
  return stated_life(model, rows, options.t0);
}

std::vector<FitRequest> parse_requests(const SampleOptions& options) {
  std::vector<FitRequest> requests;
  for (const std::string& text : options.fits) {
    if (text.find('/') == text.npos || text.find(':') != text.npos)
      refuse("'" + text + "' is no fit such as W2P/mle");
    const FileFit fit = parse_file_fit(text);
    if (fit.choice.model->code == model_code::weibayes)
      refuse("--fit takes no Wb: it has no slope of its own");
    const bool is_fitted = fit.choice.model->family != Family::none &&
                           fit.choice.model->is_fitted_by(fit.choice.method->code);
    if (!is_fitted) refuse("--fit takes no '" + text + "': there is no such fit");
    FitRequest request;
    request.model = fit.choice.model->code;
    request.method = fit.choice.method->code;
    request.censored = options.censored;
    if (fit.choice.model->fixes_slope()) request.slope = fit.choice.model->fixed_slope;
    requests.push_back(request);
  }
  return requests;
}

void take_whole(SampleArguments& sample, const SampleOptions& options) {
  SamplePlan& plan = sample.plan.sample;
  if (!options.model) refuse("--model is required");
  if (plan.size < 1) refuse("--size is required");
  plan.life = parse_life(options);
  if (options.method) plan.method = options.method->code;
  sample.plan.fits = parse_requests(options);
  if (sample.is_planned && sample.plan.fits.empty()) refuse("--runs needs a --fit M/METHOD");
  if (!sample.is_planned && !sample.plan.fits.empty()) refuse("--fit is for --runs N");
  if (!sample.is_planned && sample.json) refuse("--json is for --runs N");
  if (!sample.is_planned && options.censored) refuse("--censored is for --runs N");
  if (sample.is_planned && plan.is_precise)
    refuse("--runs is for samples by chance: precise ones are all the same");
  if (!sample.plan.inspections.is_none() && plan.size > most_points_of_groups)
    refuse("--group takes samples of at most 10000000 points");
  if (sample.is_planned && plan.size > most_points_of_runs)
    refuse("--runs takes samples of at most 1000000 points");
}

void add_life(CLI::App& command, SampleOptions& options) {
  const auto take_model = [&options](const std::string& text) {
    const auto models = parse_models(text);
    if (models.size() != 1) refuse("a sample is drawn from one --model");
    options.model = models.front();
  };
  command.add_option_function<std::string>("--model", take_model, "Model, by name (W2P) or code")
      ->type_name("M");
  const auto take_rows = [&options](const std::vector<std::string>& rows) { options.rows = rows; };
  command
      .add_option_function<std::vector<std::string>>(
          "--row", take_rows,
          "A population, once for each: eta=,beta= of a Weibull, with its percent u= in W5C and "
          "W7P; mu=,sigma= of N; med=,sdf= of LN; xi=,del= of G- and G+")
      ->allow_extra_args(false)
      ->type_name("K=V,...");
  const auto take_t0 = [&options](const std::string& text) {
    options.t0 = parse_numbers(text).front();
  };
  command.add_option_function<std::string>("--t0", take_t0, "Minimum life of W3T")->type_name("T");
}

void add_drawing(CLI::App& command, SampleArguments& sample) {
  SamplePlan& plan = sample.plan.sample;
  const auto count = [&command](const char* name, std::int32_t& number, double least, double most,
                                const char* help) {
    const auto take = [&number, least, most](const std::string& text) {
      number = parse_count(text, least, most);
    };
    command.add_option_function<std::string>(name, take, help)->type_name("N");
  };
  count("--size", plan.size, 1, most_points, "Points of the sample");
  command.add_flag("--precise", plan.is_precise, "Points on the line of the life, not by chance");
  const auto take_ranks = [&plan](const std::string& text) { plan.ranks = parse_rank_kind(text); };
  command
      .add_option_function<std::string>(
          "--ranks", take_ranks,
          "Median ranks of a precise sample and of the fits of --runs: benard or exact")
      ->type_name("KIND");
  const auto take_seeds = [&sample](const std::string& text) { sample.seeds = parse_seeds(text); };
  command
      .add_option_function<std::string>(
          "--seeds", take_seeds,
          "States of the generator before the draw; without them they are taken by chance and told "
          "on standard error")
      ->type_name("A,B,C,D");
  SuspensionPlan& suspensions = plan.suspensions;
  count("--left", suspensions.left, 0, most_points, "Suspend the first points");
  const auto take_points = [&suspensions](const std::string& text) {
    suspensions.points = parse_points(text);
  };
  command.add_option_function<std::string>("--points", take_points, "Suspend these, as '3 5 7'")
      ->type_name("LIST");
  count("--right", suspensions.right, 0, most_points, "Suspend the last points");
  command.add_flag("--mark-right", suspensions.right_at_last_failure,
                   "The last points are suspended at the time of the last failure");
  count("--random", suspensions.random, 0, most_points, "Suspend points by chance");
}

void add_runs(CLI::App& command, SampleArguments& sample, SampleOptions& options) {
  const auto take_runs = [&sample](const std::string& text) {
    sample.plan.runs = parse_count(text, 1, most_runs);
    sample.is_planned = true;
  };
  command
      .add_option_function<std::string>(
          "--runs", take_runs, "Draw so many samples, fit each, and tell how the answers spread")
      ->type_name("N");
  const auto take_fits = [&options](const std::vector<std::string>& fits) { options.fits = fits; };
  command
      .add_option_function<std::vector<std::string>>("--fit", take_fits,
                                                     "Fit of each run, as W2P/mle; may be repeated")
      ->allow_extra_args(false)
      ->type_name("M/METHOD");
  const auto take_group = [&sample](const std::string& text) {
    sample.plan.inspections = parse_inspections(text);
  };
  command
      .add_option_function<std::string>(
          "--group", take_group,
          "Failures are found at inspections: at multiples of one time, or at the times of a list, "
          "as '100 200 400', behind whose last the units are suspended")
      ->type_name("LIST");
  command.add_flag("--censored", options.censored,
                   "Take suspensions into the likelihood of mixtures (W3T to W7P by mle)");
  command.add_flag("--json", sample.json, "One JSON object, of --runs");
}

}  // namespace

void add_sample_command(CLI::App& app, SampleArguments& sample, SampleOptions& options) {
  CLI::App* const command =
      app.add_subcommand("sample", "Draw a sample from a life, in the data notation");
  add_life(*command, options);
  const auto take_method = [&options](const std::string& text) {
    const auto methods = parse_methods(text);
    if (methods.size() != 1) refuse("--method is one here");
    options.method = methods.front();
  };
  command
      ->add_option_function<std::string>(
          "--method", take_method,
          "Suspensions leave what a fit by it needs: rr (default), mle, rrs")
      ->type_name("M");
  add_drawing(*command, sample);
  add_runs(*command, sample, options);
  command->final_callback([&sample, &options] { take_whole(sample, options); });
}

}  // namespace tavlo::cli
