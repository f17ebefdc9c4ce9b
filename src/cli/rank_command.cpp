#include "cli/commands.h"
#include "cli/output.h"
#include "cli/rank_report.h"
#include "cli/set_work.h"

namespace tavlo::cli {

namespace {

ExitCode rank_file(const CommonArguments& common, const std::string& file) {
  SetWork work;
  work.read(common, file);
  work.rank(common.ranks, true);
  if (work.fault) return tell_fault(work, common.json);
  const RankedRows ranked{work.sample, work.data};
  if (common.json)
    print_rank_json(ranked);
  else
    print_rank_table(file, ranked);
  return ExitCode::done;
}

}  // namespace

ExitCode run(const RankArguments& arguments) {
  ExitCode code = ExitCode::done;
  for (const std::string& file : arguments.common.files)
    if (output_stands()) code = worse(code, rank_file(arguments.common, file));
  return code;
}

}  // namespace tavlo::cli
