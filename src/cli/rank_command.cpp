#include "cli/commands.h"
#include "cli/output.h"
#include "cli/rank_report.h"
#include "cli/set_work.h"

namespace tavlo::cli {

namespace {

ExitCode rank_set(const CommonArguments& common, SetWork& work) {
  work.rank(true);
  if (work.fault) return tell_fault(work, common.json);
  const RankedRows ranked{work.sample, work.data};
  if (common.json)
    print_rank_json(work.title(), ranked);
  else
    print_rank_table(work.subject(), ranked);
  return ExitCode::done;
}

}  // namespace

ExitCode run(const RankArguments& arguments) {
  ExitCode code = ExitCode::done;
  SetQueue sets(arguments.common);
  for (SetWork work; output_stands() && sets.next(work);)
    code = worse(code, rank_set(arguments.common, work));
  return code;
}

}  // namespace tavlo::cli
