#include "cli/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <optional>

#include "cli/argument_values.h"

namespace tavlo::cli {

namespace {

/// An option with one text behind it, which `take` reads or refuses.
template <class Take>
CLI::Option* add_text(CLI::App& app, const std::string& name, Take take, const std::string& help,
                      const std::string& type) {
  return app.add_option_function<std::string>(name, take, help)->type_name(type);
}

/// The same, where the option may stand several times.
template <class Take>
void add_texts(CLI::App& app, const std::string& name, Take take, const std::string& help,
               const std::string& type) {
  const auto take_all = [take](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) take(text);
  };
  app.add_option_function<std::vector<std::string>>(name, take_all, help)
      ->allow_extra_args(false)
      ->type_name(type);
}

void add_ranking(CLI::App& app, CommonArguments& common) {
  app.add_flag("--negative-is-value", common.negative_is_value,
               "A negative time is one, not a suspension");
  const auto take_ranks = [&common](const std::string& text) {
    if (text != "benard" && text != "exact")
      throw CLI::ValidationError("'" + text + "' is no kind of ranks (benard, exact)");
    common.benard = text == "benard";
  };
  add_text(app, "--ranks", take_ranks,
           "Median ranks: benard, the usual approximation (default), or exact", "KIND");
  app.add_flag("--strict", common.strict, "Answer every doubt with Cancel");
  app.add_flag("--censored", common.censored,
               "Take suspensions into the likelihood of mixtures (W3T to W7P by mle)");
}

void add_files(CLI::App& app, CommonArguments& common) {
  app.add_option("FILE", common.files, "Data files; - is standard input")
      ->required()
      ->type_name("");
}

void add_json(CLI::App& app, CommonArguments& common) {
  app.add_flag("--json", common.json, "One JSON object a file, each on a line");
}

void add_slope(CLI::App& app, CommonArguments& common) {
  add_text(
      app, "--slope",
      [&common](const std::string& text) {
        const std::vector<double> slopes = parse_numbers(text);
        if (slopes.size() != 1 || !(slopes.front() >= 1e-6 && slopes.front() <= 1e6))
          throw CLI::ValidationError("'" + text + "' is not one slope from 1e-6 to 1e6");
        common.slope = text;
      },
      "Slope of a Weibayes fit (Wb); the exponential (E) has 1, the Rayleigh (R) 2", "BETA");
}

void add_sub_populations(CLI::App& app, bool& sub_populations) {
  app.add_flag("--sub-populations", sub_populations,
               "Draw each population of a mixture as a line of its own");
}

void add_size(CLI::App& app, PixelSize& size) {
  const auto take_size = [&size](const std::string& text) {
    const PixelSize sides = parse_size(text);
    size.width = sides.width;
    size.height = sides.height;
  };
  add_text(app, "--size", take_size, "Size of a chart in pixels (1000x600)", "WxH");
  add_text(
      app, "--dpi", [&size](const std::string& text) { size.dots_per_inch = parse_density(text); },
      "Pixels an inch on paper (96); a .wmf has a size of its own", "D");
}

void add_looks(CLI::App& app, ChartArguments& chart) {
  const auto take_type = [&chart](const std::string& name) {
    require_chart_type(name);
    chart.type = name;
  };
  CLI::Option* const type =
      add_text(app, "--type", take_type, "Chart type, as Linear or Colour-safe", "NAME");
  const auto take_profile = [&chart](const std::string& path) { chart.profile = path; };
  add_text(app, "--profile", take_profile, "Looks and axes from a profile (.vpr)", "FILE")
      ->excludes(type);
}

/// A Weibayes has no slope of its own, and no other model takes one.
void require_slope_of_weibayes(const CommonArguments& common,
                               const std::vector<FitChoice>& choices) {
  const bool wanted = std::any_of(choices.begin(), choices.end(), [](const FitChoice& choice) {
    return choice.model->code == model_code::weibayes;
  });
  if (!common.slope.empty() && !wanted)
    throw CLI::ValidationError("--slope is for a Weibayes fit (--model Wb)");
  if (common.slope.empty() && wanted)
    throw CLI::ValidationError("Wb needs its slope: add --slope BETA");
}

/// An output that is an input would destroy the data.
void require_other_file(const std::string& out, const std::vector<std::string>& files) {
  std::error_code missing;
  for (const std::string& file : files)
    if (file == out || std::filesystem::equivalent(file, out, missing))
      throw CLI::ValidationError("'" + out + "' holds the data and would be overwritten");
}

/// The models and methods of `fit` while the options come in any order.
struct FitLists {
  std::vector<const Model*> models = parse_models("W2P");
  std::vector<const Method*> methods = parse_methods("rr");
};

std::vector<FitChoice> all_pairs(const FitLists& lists) {
  std::vector<FitChoice> pairs;
  for (const Model* model : lists.models)
    for (const Method* method : lists.methods) pairs.push_back({model, method});
  return pairs;
}

void add_fit_choices(CLI::App& app, FitLists& lists) {
  add_text(
      app, "--model", [&lists](const std::string& text) { lists.models = parse_models(text); },
      "Models, by name (W2P) or code (default W2P)", "M,...");
  add_text(
      app, "--method", [&lists](const std::string& text) { lists.methods = parse_methods(text); },
      "rr regression X on Y (default), mle maximum likelihood, rrs regression Y on X", "M,...");
}

void add_fit_questions(CLI::App& app, FitArguments& fit) {
  add_text(
      app, "--b-life", [&fit](const std::string& text) { fit.b_life = parse_percents(text); },
      "Times by which these percentages have failed", "P,...");
  add_text(
      app, "--at", [&fit](const std::string& text) { fit.at = parse_numbers(text); },
      "Fractions failed by these times", "T,...");
}

void add_fit_outputs(CLI::App& app, FitArguments& fit) {
  const auto take_chart = [&fit](const std::string& path) {
    require_picture_name(path);
    fit.charts.push_back(path);
  };
  add_texts(app, "--chart", take_chart, "Write a chart (.svg .pdf .png .wmf); may be repeated",
            "OUT");
  add_size(app, fit.size);
  add_sub_populations(app, fit.sub_populations);
  const auto take_log = [&fit](const std::string& path) {
    require_log_name(path);
    fit.log = path;
  };
  add_text(app, "--log", take_log, "Write the log (.rtf .txt)", "OUT");
  const auto refuse_project = [](const std::string&) {
    throw CLI::ValidationError("--project is not available yet");
  };
  add_text(app, "--project", refuse_project, "Write a project file (not available yet)", "OUT");
}

void add_fit_command(CLI::App& app, FitArguments& fit, FitLists& lists) {
  CLI::App* const command = app.add_subcommand("fit", "Rank the data and fit life models");
  add_files(*command, fit.common);
  add_fit_choices(*command, lists);
  add_slope(*command, fit.common);
  add_ranking(*command, fit.common);
  add_fit_questions(*command, fit);
  add_fit_outputs(*command, fit);
  add_json(*command, fit.common);
  command->final_callback([&fit, &lists] {
    fit.choices = all_pairs(lists);
    if (!fit.charts.empty() && fit.common.files.size() > 1)
      throw CLI::ValidationError("--chart takes one FILE at a time");
    require_slope_of_weibayes(fit.common, fit.choices);
    require_other_file(fit.log, fit.common.files);
    for (const std::string& chart : fit.charts) require_other_file(chart, fit.common.files);
  });
}

void add_rank_command(CLI::App& app, RankArguments& rank) {
  CLI::App* const command = app.add_subcommand("rank", "Print the plotting positions");
  add_files(*command, rank.common);
  add_ranking(*command, rank.common);
  add_json(*command, rank.common);
}

void add_chart_command(CLI::App& app, ChartArguments& chart) {
  CLI::App* const command =
      app.add_subcommand("chart", "Draw the data, and fits where they are named");
  command
      ->add_option_function<std::string>(
          "FILE", [&chart](const std::string& path) { chart.common.files = {path}; },
          "Data file; - is standard input")
      ->required()
      ->type_name("");
  const auto take_out = [&chart](const std::string& path) {
    require_picture_name(path);
    chart.out = path;
  };
  add_text(*command, "OUT", take_out, "Picture to write (.svg .pdf .png .wmf)", "")->required();
  const auto take_fit = [&chart](const std::string& text) {
    chart.choices.push_back(parse_fit_choice(text));
  };
  add_texts(*command, "--fit", take_fit, "Fit to draw, as W2P/mle; may be repeated", "M/METHOD");
  add_slope(*command, chart.common);
  add_size(*command, chart.size);
  add_sub_populations(*command, chart.sub_populations);
  add_looks(*command, chart);
  add_ranking(*command, chart.common);
  command->final_callback([&chart] {
    require_slope_of_weibayes(chart.common, chart.choices);
    require_other_file(chart.out, chart.common.files);
    require_other_file(chart.out, {chart.profile});
  });
}

/// The library would only say that a command is required.
void require_command(const CLI::App& app, int argc, const char* const* argv) {
  const std::string first = argc > 1 ? argv[1] : "";
  const auto is_first = [&first](const CLI::App* command) { return command->get_name() == first; };
  if (first.starts_with('-') || !app.get_subcommands(is_first).empty()) return;
  throw CLI::ValidationError(first.empty() ? "a command is required (fit, rank, chart)"
                                           : "there is no command '" + first + "'");
}

ExitCode report(const CLI::App& app, const CLI::ParseError& error) {
  if (error.get_exit_code() == 0) {
    app.exit(error, std::cout, std::cerr);
    return ExitCode::done;
  }
  std::cerr << "tavlo-cli: " << error.what() << "\nTry 'tavlo-cli --help'.\n";
  return ExitCode::wrong_usage;
}

}  // namespace

std::variant<ExitCode, Command> parse_arguments(int argc, const char* const* argv) {
  CLI::App app("Tavlo: life data analysis from the command line", "tavlo-cli");
  app.set_version_flag("--version", "tavlo-cli " TAVLO_VERSION);
  app.require_subcommand(1);
  app.footer("Exit code: 0 done, 1 a fit was refused or failed, 2 wrong usage, 3 a file fault.");
  FitArguments fit;
  FitLists lists;
  RankArguments rank;
  ChartArguments chart;
  add_fit_command(app, fit, lists);
  add_rank_command(app, rank);
  add_chart_command(app, chart);
  try {
    require_command(app, argc, argv);
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return report(app, error);
  }
  if (app.got_subcommand("fit")) return Command(fit);
  if (app.got_subcommand("rank")) return Command(rank);
  return Command(chart);
}

std::string command_name(const Model& model) {
  return *model.command_name ? model.command_name : std::to_string(model.code);
}

std::string extension(const std::string& path) {
  const std::size_t dot = path.find_last_of("./");
  if (dot == std::string::npos || path[dot] == '/') return {};
  std::string type = path.substr(dot);
  for (char& c : type) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return type;
}

}  // namespace tavlo::cli
