// Exit codes of the command line, the worst last.
#pragma once

namespace tavlo::cli {

enum class ExitCode { done = 0, fit_refused = 1, wrong_usage = 2, file_fault = 3 };

/// The code that a run ends with after both: a file fault outweighs a refused fit.
inline ExitCode worse(ExitCode a, ExitCode b) {
  return static_cast<int>(a) > static_cast<int>(b) ? a : b;
}

}  // namespace tavlo::cli
