#include "cli/commands.h"
#include "cli/comparison_report.h"
#include "cli/output.h"
#include "cli/set_work.h"

namespace tavlo::cli {

namespace {

std::string json_line(const SetWork& work, const FitReport& report, const Comparison& comparison) {
  std::string line;
  JsonText json(line);
  json.open('{').key("file").string(work.file).key("set").string(work.title());
  add_comparison(json, report, comparison);
  json.close('}');
  return line + "\n";
}

ExitCode compare_set(const CompareArguments& arguments, SetWork& work) {
  work.rank(false);
  if (work.fault) return tell_fault(work, arguments.common.json);
  tell_suspensions_left_out(work.subject(), work.sample, arguments.questions);
  work.answer(arguments.questions);
  const FitReport report = work.report(arguments.questions);
  const Comparison comparison = compared(report);
  tell_messages(work.subject(), report);
  print(arguments.common.json ? json_line(work, report, comparison)
                              : comparison_table(work.subject(), report, comparison));
  return all_made(work.outcomes) ? ExitCode::done : ExitCode::fit_refused;
}

}  // namespace

ExitCode run(const CompareArguments& arguments) {
  ExitCode code = ExitCode::done;
  bool printed = false;
  SetQueue sets(arguments.common);
  for (SetWork work; output_stands() && sets.next(work); work = {}) {
    if (printed && !arguments.common.json) print("\n");
    printed = true;
    code = worse(code, compare_set(arguments, work));
  }
  return code;
}

}  // namespace tavlo::cli
