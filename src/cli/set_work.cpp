#include "cli/set_work.h"

#include <new>

#include "cli/input_files.h"
#include "cli/json_text.h"
#include "cli/output.h"
#include "numerics/run_time_error.h"

namespace tavlo::cli {

void SetWork::read(const CommonArguments& common, const std::string& name) {
  *this = {};
  file = name;
  fault = read_rows(common, file, data);
}

void SetWork::rank(RankKind ranks, bool keep_rows) {
  if (fault) return;
  try {
    sample = make_sample(data.rows, ranks, static_cast<int>(data.mode_names.size()));
  } catch (const RunTimeError&) {
    fault = file + ": its rows can't be ranked";
  } catch (const std::bad_alloc&) {
    fault = file + ": there is not enough memory for so many rows";
  }
  if (!keep_rows) std::vector<SampleRow>().swap(data.rows);
}

void SetWork::answer(const FitQuestions& questions) {
  if (!fault) outcomes = fit_all(sample, questions);
}

ExitCode tell_fault(const SetWork& work, bool json) {
  complain(*work.fault);
  if (json) print(error_line(work.file, *work.fault));
  return ExitCode::file_fault;
}

}  // namespace tavlo::cli
