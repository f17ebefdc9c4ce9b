// Run of a macro: its jobs one after another, each with data, a model and a result file of its
// own. Nothing waits for a person: what the windows would ask is answered and told on standard
// error.
#pragma once

#include <string>
#include <vector>

#include "cli/arguments.h"
#include "fit/sample.h"

namespace tavlo::cli {

/// What a run takes from the program's places and settings.
struct MacroHouse {
  std::vector<std::string> folders;  ///< where data files are looked for that are not as named
  ReadOptions reading;
  RankKind ranks = RankKind::benard;
};

/// Exit code of a run that was broken off by a signal.
inline constexpr int broken_off = 130;

/// Runs the jobs of a macro file; the exit code: 0 when every row was written, 1 when a fit was
/// refused, 3 when a file could not be read or written, broken_off.
int RunMacro(const std::string& macro_file, const MacroHouse& house);

}  // namespace tavlo::cli
