// SampleArguments: what `sample` is asked for: the life by its populations, the suspensions,
// the seeds, and the runs of a planned test.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analyses/planned_runs.h"
#include "life/models.h"

namespace CLI {
class App;
}

namespace tavlo::cli {

struct SampleArguments {
  RunPlan plan;
  std::optional<WichmannHill::Seeds> seeds;  ///< by chance where they are not given
  bool is_planned = false;                   ///< runs and their fits instead of a sample
  bool json = false;
};

/// The options while they come in any order.
struct SampleOptions {
  const Model* model = nullptr;
  const Method* method = nullptr;
  std::vector<std::string> rows;
  double t0 = 0;
  std::vector<std::string> fits;
  bool censored = false;
};

/// Adds the command; what is wrong together is told when all options have been read.
void add_sample_command(CLI::App& app, SampleArguments& sample, SampleOptions& options);

}  // namespace tavlo::cli
