#include "cli/commands.h"

#include <algorithm>
#include <cstdio>

#include "cli/cli_ports.h"
#include "cli/fit_report.h"
#include "cli/fitting.h"
#include "cli/input_files.h"
#include "cli/json_text.h"
#include "cli/pictures.h"
#include "cli/rank_report.h"
#include "files/profiles.h"
#include "project/chart_looks.h"
#include "project/chart_types.h"

namespace tavlo::cli {

namespace {

void print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

ExitCode file_fault(const CommonArguments& common, const std::string& file,
                    const std::string& what) {
  complain(what);
  if (common.json) print(error_json(file, what) + "\n");
  return ExitCode::file_fault;
}

ExitCode code_of(const std::vector<FitOutcome>& outcomes) {
  const bool all_made = std::all_of(outcomes.begin(), outcomes.end(),
                                    [](const FitOutcome& outcome) { return outcome.slot != 0; });
  return all_made ? ExitCode::done : ExitCode::fit_refused;
}

std::string title_of(const std::string& path) {
  if (path == "-") return "Results";
  const std::string name = path.substr(path.rfind('/') + 1);
  return name.substr(0, name.find_last_of('.'));
}

ExitCode draw(Session& session, const std::vector<FitOutcome>& outcomes, const std::string& file,
              const std::vector<std::string>& paths, const PixelSize& size, Paper paper) {
  if (paths.empty()) return ExitCode::done;
  show_on_chart(session, outcomes, title_of(file), paper);
  const auto fault = write_pictures(session, paths, size);
  if (fault) complain(*fault);
  return fault ? ExitCode::file_fault : ExitCode::done;
}

ExitCode write_log(FileSystem& files, const std::string& path, const RichText& log) {
  if (path.empty()) return ExitCode::done;
  const FileResult written =
      files.write_whole(path, extension(path) == ".rtf" ? log.rtf() : log.plain());
  if (!written) complain(path + ": " + written.message);
  return written ? ExitCode::done : ExitCode::file_fault;
}

/// Fits one file in a session of its own; `log` goes from file to file.
ExitCode fit_file(const FitArguments& arguments, const std::string& file, RichText& log) {
  CliWorld world(arguments.common.strict, arguments.common.slope);
  world.prompts.set_subject(file);
  Session session(world.ports());
  if (const auto fault = load_data(session, arguments.common, file))
    return file_fault(arguments.common, file, *fault);
  session.log = std::move(log);
  const auto outcomes = fit_all(session, world, arguments.choices, !arguments.log.empty());
  log = std::move(session.log);
  const FitReport report{file, arguments, session, world.prompts, outcomes};
  print(arguments.common.json ? fit_json(report) + "\n" : fit_table(report));
  session.gChart(1).SubPopulations = arguments.sub_populations;
  return worse(code_of(outcomes), draw(session, outcomes, file, arguments.charts, arguments.size,
                                       Paper::of_first_fit));
}

/// Gives chart 1 the looks that were asked for; what is wrong with them, or nothing.
std::optional<std::string> dress_chart(Session& session, const ChartArguments& arguments) {
  Chart& chart = session.gChart(1);
  if (!arguments.type.empty()) apply_chart_type(chart, arguments.type);
  if (arguments.profile.empty()) return std::nullopt;
  return apply_profile_file(session.ports.file_system, arguments.profile, chart);
}

/// Axes that somebody has chosen are not changed by a fit.
Paper paper_of(const ChartArguments& arguments) {
  const bool is_plain = arguments.type.empty() || is_only_colours(arguments.type);
  return is_plain && arguments.profile.empty() ? Paper::of_first_fit : Paper::of_chart;
}

ExitCode rank_file(const CommonArguments& common, const std::string& file) {
  CliWorld world(common.strict, common.slope);
  world.prompts.set_subject(file);
  Session session(world.ports());
  if (const auto fault = load_data(session, common, file)) return file_fault(common, file, *fault);
  const DataSet& data = session.gData(1);
  if (common.json)
    print_rank_json(data, print);
  else
    print(rank_table(file, data));
  return ExitCode::done;
}

}  // namespace

ExitCode run(const FitArguments& arguments) {
  ExitCode code = ExitCode::done;
  RichText log;
  bool first = true;
  for (const std::string& file : arguments.common.files) {
    if (!first && !arguments.common.json) print("\n");
    code = worse(code, fit_file(arguments, file, log));
    first = false;
  }
  DiskFiles files;
  return worse(code, write_log(files, arguments.log, log));
}

ExitCode run(const RankArguments& arguments) {
  ExitCode code = ExitCode::done;
  for (const std::string& file : arguments.common.files)
    code = worse(code, rank_file(arguments.common, file));
  return code;
}

ExitCode run(const ChartArguments& arguments) {
  const std::string& file = arguments.common.files.front();
  CliWorld world(arguments.common.strict, arguments.common.slope);
  world.prompts.set_subject(file);
  Session session(world.ports());
  if (const auto fault = load_data(session, arguments.common, file))
    return file_fault(arguments.common, file, *fault);
  if (const auto fault = dress_chart(session, arguments))
    return file_fault(arguments.common, file, *fault);
  const auto outcomes = fit_all(session, world, arguments.choices, false);
  session.gChart(1).SubPopulations = arguments.sub_populations;
  return worse(code_of(outcomes),
               draw(session, outcomes, file, {arguments.out}, arguments.size, paper_of(arguments)));
}

}  // namespace tavlo::cli
