// Output: results on standard output and messages on standard error. A reader that has
// gone away or a full disk ends the results, not the program.
#pragma once

#include <string>
#include <string_view>

#include "cli/exit_code.h"

namespace tavlo::cli {

/// The name before every message; "tavlo-cli" where none is given.
void name_program(const char* name);
const char* program_name();

/// Writes "tavlo-cli: ..." and a line end to standard error.
void complain(const std::string& what);

/// Complains of `what` as a warning about `subject` (empty: of nothing named), unless quiet.
void warn(const std::string& subject, const std::string& what);

/// From now on there are no warnings and no progress.
void be_quiet();
bool is_quiet();

/// Adds to standard output. False once it can't be written any more.
bool print(std::string_view text);

/// Hands everything on that was printed. False once it can't be written any more.
bool flush_output();

/// True as long as somebody can read the results.
bool output_stands();

/// The code to end with after `code`: output that couldn't be written, which is told, is a
/// file fault.
ExitCode finish_output(ExitCode code);

}  // namespace tavlo::cli
