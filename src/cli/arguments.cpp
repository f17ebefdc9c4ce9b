#include "cli/arguments.h"

#include <sys/stat.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>

#include "cli/argument_values.h"
#include "cli/help_pages.h"
#include "cli/nearest_word.h"
#include "cli/output.h"
#include "files/disk_files.h"

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

void add_reading(CLI::App& app, CommonArguments& common) {
  ReadOptions& reading = common.reading;
  add_text(
      app, "--set", [&common](const std::string& text) { common.set = parse_set(text); },
      "The data set of each FILE to take, 1 is the first (all of them)", "N");
  app.add_flag("--negative-is-value", reading.negative_is_value,
               "A negative time is one, not a suspension");
  const auto take_columns = [&reading](const std::string& text) {
    for (ColumnChoice& choice : parse_columns(text)) reading.columns.push_back(std::move(choice));
  };
  add_text(app, "--columns", take_columns,
           "Columns of a table by their headings, as x=Hours,status=Failed? (x, status, censored, "
           "fails, susps, count, mode, comment); those with usual names need none",
           "C=NAME,...");
  add_text(
      app, "--failed", [&reading](const std::string& text) { reading.failed = parse_words(text); },
      "Status values that mean failed, all others mean suspended (F, 1, yes, true, failed)",
      "V,...");
  add_text(
      app, "--decimal",
      [&reading](const std::string& text) { reading.decimal = parse_decimal_sign(text); },
      "Decimal sign of the numbers, comma or point, where the data leave it in doubt", "SIGN");
}

void add_ranks(CLI::App& app, CommonArguments& common) {
  add_text(
      app, "--ranks", [&common](const std::string& text) { common.ranks = parse_rank_kind(text); },
      "Median ranks: benard, the usual approximation, or exact (as a project has them, otherwise "
      "benard); a data set of a project that has ranks of its own keeps them",
      "KIND");
}

void add_doubts(CLI::App& app, FitQuestions& questions) {
  app.add_flag("--strict", questions.strict, "Answer every doubt with Cancel");
  app.add_flag("--censored", questions.censored,
               "Take suspensions into the likelihood of mixtures (W3T to W7P by mle)");
}

void add_files(CLI::App& app, CommonArguments& common) {
  app.add_option("FILE", common.files,
                 "Data files, projects, files of other programs; - is standard input")
      ->required()
      ->type_name("");
}

void add_json(CLI::App& app, CommonArguments& common) {
  app.add_flag("--json", common.json, "One JSON object a data set, each on a line");
}

void add_slope(CLI::App& app, FitQuestions& questions) {
  add_text(
      app, "--slope",
      [&questions](const std::string& text) { questions.slope = parse_slope(text); },
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
    size.is_given = true;
  };
  add_text(app, "--size", take_size, "Size of a chart in pixels (1000x600)", "WxH");
  add_text(
      app, "--dpi", [&size](const std::string& text) { size.dots_per_inch = parse_density(text); },
      "Pixels an inch on paper (96); a .wmf has a size of its own", "D");
}

void add_looks(CLI::App& app, ChartArguments& chart) {
  const auto take_type = [&chart](const std::string& text) { chart.type = parse_chart_type(text); };
  CLI::Option* const type =
      add_text(app, "--type", take_type, "Chart type, as report, Linear or Colour-safe", "NAME");
  add_text(
      app, "--title", [&chart](const std::string& text) { chart.title = text; },
      "Title of the chart (the names of the files)", "TEXT");
  const auto take_profile = [&chart](const std::string& path) { chart.profile = path; };
  add_text(app, "--profile", take_profile, "Looks and axes from a profile (.vpr)", "FILE")
      ->excludes(type);
}

/// The file behind a path, through all links; standard input for "-".
std::optional<struct stat> file_behind(const std::string& path) {
  struct stat status {};
  const int failed = path == "-" ? ::fstat(STDIN_FILENO, &status) : ::stat(path.c_str(), &status);
  return failed != 0 ? std::nullopt : std::optional(status);
}

/// An output that is an input would destroy the data, by whatever name.
void require_other_file(const std::string& out, const std::vector<std::string>& files) {
  if (out.empty()) return;
  const auto target = file_behind(out);
  for (const std::string& file : files) {
    const auto source = file_behind(file);
    const bool same = target && source && S_ISREG(target->st_mode) &&
                      target->st_dev == source->st_dev && target->st_ino == source->st_ino;
    if (same || file == out)
      throw CLI::ValidationError("'" + out + "' holds the data and would be overwritten");
  }
}

/// The same, where what stood there is kept: that is written over another file too.
void require_other_files(const std::string& out, const std::vector<std::string>& files) {
  require_other_file(out, files);
  if (!out.empty() && file_behind(out)) require_other_file(name_of_former(out), files);
}

/// One output would take the place of another. "./x" and "x" are one file before it is there too.
void require_different_files(std::vector<std::string> outputs) {
  std::erase(outputs, "");
  std::vector<std::filesystem::path> paths;
  for (const std::string& output : outputs) {
    std::error_code unknown;
    const auto whole = std::filesystem::absolute(output, unknown).lexically_normal();
    auto path = std::filesystem::weakly_canonical(whole, unknown);
    if (unknown) path = whole;
    if (std::find(paths.begin(), paths.end(), path) != paths.end())
      throw CLI::ValidationError("'" + output + "' is named for two outputs");
    paths.push_back(path);
  }
}

/// The second reading would find nothing.
void require_one_standard_input(const CommonArguments& common) {
  if (std::count(common.files.begin(), common.files.end(), "-") > 1)
    throw CLI::ValidationError("standard input (-) can be read only once");
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
      app, "--b-life",
      [&fit](const std::string& text) { fit.questions.b_life = parse_percents(text); },
      "Times by which these percentages have failed", "P,...");
  add_text(
      app, "--at", [&fit](const std::string& text) { fit.questions.at = parse_numbers(text); },
      "Fractions failed by these times", "T,...");
}

/// A fleet may have more rows than a sheet.
void add_groups(CLI::App& app, FitArguments& fit) {
  constexpr std::size_t most_fleet_rows = 100'000'000;
  const auto take = [&fit](const std::string& name) {
    require_heading("--by", name);
    fit.by = name;
    fit.common.reading.columns.push_back({DataColumn::group, name});
    fit.common.reading.most_rows = most_fleet_rows;
  };
  add_text(app, "--by", take,
           "Fit each group of rows on its own: those with one value in this column, by its heading",
           "COLUMN");
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
  add_text(
      app, "--project", [&fit](const std::string& path) { fit.project = path; },
      "Write a project (.tavlo) with the data sets of all FILEs, their fits, a chart and the log; "
      "one that stands there is kept as OUT~",
      "OUT");
}

void add_fit_command(CLI::App& app, FitArguments& fit, FitLists& lists) {
  CLI::App* const command = app.add_subcommand("fit", "Rank the data and fit life models");
  add_files(*command, fit.common);
  add_fit_choices(*command, lists);
  add_slope(*command, fit.questions);
  add_reading(*command, fit.common);
  add_ranks(*command, fit.common);
  add_doubts(*command, fit.questions);
  add_fit_questions(*command, fit);
  add_groups(*command, fit);
  add_fit_outputs(*command, fit);
  add_json(*command, fit.common);
  command->final_callback([&fit, &lists] {
    if (!fit.by.empty() && !(fit.charts.empty() && fit.log.empty() && fit.project.empty()))
      throw CLI::ValidationError("--by writes no --chart, --log or --project");
    fit.questions.choices = all_pairs(lists);
    require_one_standard_input(fit.common);
    fit.common.reading.comments = !fit.project.empty();
    if (!fit.charts.empty() && fit.common.files.size() > 1)
      throw CLI::ValidationError("--chart takes one FILE at a time");
    require_slope_of_weibayes(fit.questions);
    require_other_file(fit.log, fit.common.files);
    require_other_files(fit.project, fit.common.files);
    for (const std::string& chart : fit.charts) require_other_file(chart, fit.common.files);
    std::vector<std::string> outputs = fit.charts;
    outputs.insert(outputs.end(), {fit.log, fit.project});
    require_different_files(outputs);
  });
}

void add_rank_command(CLI::App& app, RankArguments& rank) {
  CLI::App* const command = app.add_subcommand("rank", "Print the plotting positions");
  add_files(*command, rank.common);
  add_reading(*command, rank.common);
  add_ranks(*command, rank.common);
  add_json(*command, rank.common);
  command->final_callback([&rank] { require_one_standard_input(rank.common); });
}

/// What `compare` is asked for while the options come in any order.
struct CompareLists {
  std::vector<const Model*> models;  ///< empty: all that have a routine
  const Method* method = find_method(method_code::x_on_y);
};

/// All models that a method has a routine for; a Weibayes where its slope is given.
std::vector<const Model*> comparable_models(const Method& method, bool slope_given) {
  std::vector<const Model*> found;
  for (const Model& model : models()) {
    const bool has_slope = model.fixed_slope != 0 || slope_given;
    const bool is_one_life = model.family != Family::none;
    if (*model.command_name != '\0' && is_one_life && has_slope && model.is_fitted_by(method.code))
      found.push_back(&model);
  }
  return found;
}

/// Each model once, and with likelihoods the base of their test ahead of the others.
std::vector<FitChoice> compared_choices(const CompareLists& lists, bool slope_given) {
  std::vector<const Model*> wanted =
      lists.models.empty() ? comparable_models(*lists.method, slope_given) : lists.models;
  const Model* const base = find_model(model_code::weibull2);
  const bool base_is_missing = std::find(wanted.begin(), wanted.end(), base) == wanted.end();
  if (lists.method->code == method_code::mle && base_is_missing)
    wanted.insert(wanted.begin(), base);
  std::vector<FitChoice> choices;
  for (auto model = wanted.begin(); model != wanted.end(); ++model)
    if (std::find(wanted.begin(), model, *model) == model)
      choices.push_back({*model, lists.method});
  return choices;
}

void add_compare_choices(CLI::App& app, CompareLists& lists) {
  const auto take_method = [&lists](const std::string& text) {
    const std::vector<const Method*> methods = parse_methods(text);
    if (methods.size() > 1) throw CLI::ValidationError("--method takes one method");
    lists.method = methods.front();
  };
  add_text(app, "--method", take_method,
           "rr regression X on Y (default), mle maximum likelihood, rrs regression Y on X", "M");
  add_text(
      app, "--models,--model",
      [&lists](const std::string& text) { lists.models = parse_models(text); },
      "Models, by name (W2P) or code (all that the method fits; Wb where --slope is given)",
      "M,...");
}

void add_compare_command(CLI::App& app, CompareArguments& compare, CompareLists& lists) {
  CLI::App* const command =
      app.add_subcommand("compare", "Fit many models by one method, and tell the best");
  command->footer(
      "By mle each richer Weibull is tested against W2P, which is always among the models.");
  add_files(*command, compare.common);
  add_compare_choices(*command, lists);
  add_slope(*command, compare.questions);
  add_reading(*command, compare.common);
  add_ranks(*command, compare.common);
  add_doubts(*command, compare.questions);
  add_json(*command, compare.common);
  command->final_callback([&compare, &lists] {
    compare.questions.choices = compared_choices(lists, compare.questions.slope.has_value());
    require_one_standard_input(compare.common);
    require_slope_of_weibayes(compare.questions);
  });
}

/// The fits of `chart` while the options come in any order.
struct ChartFits {
  FitQuestions each;  ///< what is asked of every file
  std::vector<FileFit> fits;
};

/// The library knows of no last name behind a list of names.
class FilesAndOutput : public CLI::Formatter {
 public:
  std::string make_option_usage(const CLI::Option*) const override { return "FILE... OUT"; }
};

void add_files_and_output(CLI::App& app, ChartArguments& chart) {
  const auto take_names = [&chart](const std::vector<std::string>& names) {
    if (names.size() < 2) throw CLI::ValidationError("OUT is required");
    require_picture_name(names.back());
    chart.out = names.back();
    chart.common.files.assign(names.begin(), names.end() - 1);
  };
  app.add_option_function<std::vector<std::string>>(
         "FILE", take_names,
         "Data files, projects, files of other programs, - is standard input; the last name, "
         "OUT, is the picture to write (.svg .pdf .png .wmf)")
      ->required()
      ->type_name("");
  app.formatter(std::make_shared<FilesAndOutput>());
}

/// The questions that each file is asked.
std::vector<FitQuestions> questions_of(const ChartFits& fits, std::size_t files) {
  std::vector<FitQuestions> questions(files, fits.each);
  for (const auto& [file, choice] : fits.fits) {
    if (file > files)
      throw CLI::ValidationError("--fit " + std::to_string(file) + ":... names a file beyond the " +
                                 (files == 1 ? "only one" : std::to_string(files) + " given"));
    for (std::size_t i = 0; i < files; ++i)
      if (file == 0 || file == i + 1) questions[i].choices.push_back(choice);
  }
  return questions;
}

/// A slope is for all Weibayes fits.
void require_slope(const ChartFits& fits) {
  FitQuestions all = fits.each;
  for (const FileFit& fit : fits.fits) all.choices.push_back(fit.choice);
  require_slope_of_weibayes(all);
}

void add_chart_command(CLI::App& app, ChartArguments& chart, ChartFits& fits) {
  CLI::App* const command =
      app.add_subcommand("chart", "Draw the data, and fits where they are named, on one chart");
  command->footer(
      "A project alone, without --fit and --set, is drawn as its first chart was saved.");
  add_files_and_output(*command, chart);
  const auto take_fit = [&fits](const std::string& text) {
    fits.fits.push_back(parse_file_fit(text));
  };
  add_texts(*command, "--fit", take_fit,
            "Fit to draw, as W2P/mle for every FILE or 2:W2P/mle for the second; may be repeated",
            "[N:]M/METHOD");
  add_slope(*command, fits.each);
  add_size(*command, chart.size);
  add_sub_populations(*command, chart.sub_populations);
  add_looks(*command, chart);
  add_reading(*command, chart.common);
  add_ranks(*command, chart.common);
  add_doubts(*command, fits.each);
  command->final_callback([&chart, &fits] {
    chart.questions = questions_of(fits, chart.common.files.size());
    require_slope(fits);
    require_one_standard_input(chart.common);
    require_other_file(chart.out, chart.common.files);
    if (!chart.profile.empty()) require_other_file(chart.out, {chart.profile});
  });
}

/// The library knows of no last name behind one file.
class FileAndOutput : public CLI::Formatter {
 public:
  std::string make_option_usage(const CLI::Option*) const override { return "FILE OUT"; }
};

void add_file_and_report(CLI::App& app, ReportArguments& report) {
  const auto take_names = [&report](const std::vector<std::string>& names) {
    if (names.size() != 2) throw CLI::ValidationError("report takes one FILE and one OUT");
    require_report_name(names[1]);
    report.common.files = {names[0]};
    report.out = names[1];
  };
  app.add_option_function<std::vector<std::string>>(
         "FILE", take_names,
         "A data file, a project, a file of another program, - is standard input; OUT is the "
         "report to write (.pdf .html)")
      ->required()
      ->type_name("");
  app.formatter(std::make_shared<FileAndOutput>());
}

void add_report_options(CLI::App& app, ReportArguments& report) {
  report.questions.b_life = {0.01, 0.1, 0.5};
  add_text(
      app, "--b-life",
      [&report](const std::string& text) { report.questions.b_life = parse_percents(text); },
      "Times by which these percentages have failed (1,10,50)", "P,...");
  add_text(
      app, "--at", [&report](const std::string& text) { report.times = parse_numbers(text); },
      "Shares that survive these times", "T,...");
  add_text(
      app, "--title", [&report](const std::string& text) { report.title = text; },
      "Title of the report (the name of the file)", "TEXT");
  add_text(
      app, "--date", [&report](const std::string& text) { report.date = parse_date(text); },
      "Date of the report (today); the same data and date give the same bytes", "YYYY-MM-DD");
  add_text(
      app, "--paper", [&report](const std::string& text) { report.paper = parse_paper(text); },
      "Paper, A4 or Letter (as usual in the country of the locale)", "SIZE");
}

void add_report_command(CLI::App& app, ReportArguments& report, FitLists& lists) {
  CLI::App* const command = app.add_subcommand(
      "report", "Write data, fits, life table and chart as a document for somebody else");
  command->footer(
      "A project is reported with the fits and charts that it has; other data, and a project "
      "where\n--model or --method is given, are fitted.");
  add_file_and_report(*command, report);
  add_fit_choices(*command, lists);
  add_slope(*command, report.questions);
  add_reading(*command, report.common);
  add_ranks(*command, report.common);
  add_doubts(*command, report.questions);
  add_report_options(*command, report);
  command->final_callback([&report, &lists, command] {
    report.asks_for_fits = command->count("--model") + command->count("--method") > 0;
    report.questions.choices = all_pairs(lists);
    report.common.reading.comments = true;
    require_slope_of_weibayes(report.questions);
    require_other_file(report.out, report.common.files);
  });
}

void take_out(ConvertArguments& convert, const std::string& path) {
  if (path.empty() || path == "-") throw CLI::ValidationError("OUT must be the name of a file");
  convert.out = path;
}

void add_convert_command(CLI::App& app, ConvertArguments& convert) {
  CLI::App* const command =
      app.add_subcommand("convert", "Write a file that can be read as a project or as data");
  const auto take_in = [&convert](const std::string& path) { convert.common.files = {path}; };
  command->add_option_function<std::string>("IN", take_in, "The file; - is standard input")
      ->required()
      ->type_name("");
  const auto take = [&convert](const std::string& path) { take_out(convert, path); };
  command
      ->add_option_function<std::string>(
          "OUT", take,
          "The file to write: .txt the data notation, .csv a table, any other name a project "
          "(.tavlo); what stands there is kept as OUT~")
      ->required()
      ->type_name("");
  add_reading(*command, convert.common);
  add_ranks(*command, convert.common);
  command->footer("What OUT can't hold is named on standard error.");
  command->final_callback([&convert] {
    convert.common.reading.comments = true;
    require_other_files(convert.out, convert.common.files);
  });
}

void add_batch_command(CLI::App& app, BatchArguments& batch) {
  CLI::App* const command = app.add_subcommand(
      "batch", "Fit one JSON object a line of standard input; one line of output each");
  const auto take_jobs = [&batch](const std::string& text) { batch.jobs = parse_jobs(text); };
  add_text(*command, "--jobs", take_jobs, "Lines at work at the same time (one for each core)",
           "J");
  command->footer(
      "A line: {\"id\": any, \"x\": [..], \"fails\": [..], \"susps\": [..], \"model\": \"W2P\",\n"
      "\"method\": \"mle\", \"slope\", \"ranks\", \"censored\", \"b_life\": [..], \"at\": [..]}; "
      "only x is\n"
      "needed. Exit code 1 when a line has an error or a fit was refused.");
}

/// The library would only say that a command is required.
void require_command(const CLI::App& app, int argc, const char* const* argv) {
  const std::string first = argc > 1 ? argv[1] : "";
  const auto is_first = [&first](const CLI::App* command) { return command->get_name() == first; };
  if (first.starts_with('-') || !app.get_subcommands(is_first).empty()) return;
  throw CLI::ValidationError(
      first.empty()
          ? "a command is required (fit, rank, compare, chart, report, convert, sample, batch)"
          : "there is no command '" + first + "'" + did_you_mean(first, command_names(app)));
}

/// Printed as the help is: the rest of the line does not count.
void add_pages(CLI::App& app) {
  const auto add = [&app](const char* name, auto page, const char* help) {
    const auto show = [&app, page] {
      print(page(app));
      throw CLI::Success();
    };
    app.add_flag_callback(name, show, help)->trigger_on_parse();
  };
  add("--completion", bash_completion,
      "Print a script that completes commands and options in bash");
  add(
      "--man", [](const CLI::App& all) { return man_page(all, "tavlo-cli " TAVLO_VERSION); },
      "Print the page for man, as tavlo-cli --man | man -l -");
}

void add_quiet(CLI::App& app) {
  for (CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
    command->add_flag_callback("-q,--quiet", be_quiet,
                               "No warnings and no progress; what has failed is told");
}

ExitCode report(const CLI::App& app, const CLI::ParseError& error) {
  if (error.get_exit_code() == 0) {
    app.exit(error, std::cout, std::cerr);
    return ExitCode::done;
  }
  complain(words_of(app, error));
  std::cerr << "Try 'tavlo-cli --help'.\n";
  return ExitCode::wrong_usage;
}

/// What the options of each command write into.
struct EveryCommand {
  FitArguments fit;
  FitLists fit_lists;
  RankArguments rank;
  CompareArguments compare;
  CompareLists compare_lists;
  ChartArguments chart;
  ChartFits chart_fits;
  ReportArguments report;
  FitLists report_lists;
  ConvertArguments convert;
  BatchArguments batch;
  SampleArguments sample;
  SampleOptions sample_options;

  void add_to(CLI::App& app) {
    add_fit_command(app, fit, fit_lists);
    add_rank_command(app, rank);
    add_compare_command(app, compare, compare_lists);
    add_chart_command(app, chart, chart_fits);
    add_report_command(app, report, report_lists);
    add_convert_command(app, convert);
    add_batch_command(app, batch);
    add_sample_command(app, sample, sample_options);
  }

  Command chosen(const CLI::App& app) const {
    if (app.got_subcommand("fit")) return fit;
    if (app.got_subcommand("rank")) return rank;
    if (app.got_subcommand("compare")) return compare;
    if (app.got_subcommand("report")) return report;
    if (app.got_subcommand("convert")) return convert;
    if (app.got_subcommand("batch")) return batch;
    if (app.got_subcommand("sample")) return sample;
    return chart;
  }
};

}  // namespace

std::variant<ExitCode, Command> parse_arguments(int argc, const char* const* argv) {
  CLI::App app("Tavlo: life data analysis from the command line", "tavlo-cli");
  app.set_version_flag("--version", "tavlo-cli " TAVLO_VERSION);
  app.require_subcommand(1);
  app.footer("Exit code: 0 done, 1 a fit was refused or failed, 2 wrong usage, 3 a file fault.");
  EveryCommand commands;
  commands.add_to(app);
  add_examples(app);
  add_pages(app);
  add_quiet(app);
  try {
    require_command(app, argc, argv);
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return report(app, error);
  }
  return commands.chosen(app);
}

std::string command_name(const Model& model) {
  return *model.command_name ? model.command_name : std::to_string(model.code);
}

}  // namespace tavlo::cli
