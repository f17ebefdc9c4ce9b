// Start: what happens before the first window: folders, settings and language are found,
// and a command line is understood.
#pragma once

#include <optional>
#include <string>

#include "project/session.h"

namespace tavlo {

/// What the front end knows of the system and of the command line.
struct StartInput {
  std::string command_line;    ///< the words behind the program's name, with blanks between
  std::string grouped_number;  ///< 1234.567 with two decimals, as the system writes it
  std::string half_number;     ///< -0.5
};

/// A macro and the program that runs macros.
struct MacroOrder {
  std::string program;
  std::string macro;
};

/// What follows: a window, with a file in it or not, a macro, or the end of the process.
struct StartResult {
  std::string file = {};                 ///< to open in the window; empty for none
  std::optional<MacroOrder> macro = {};  ///< to be run, instead of a window
  std::optional<int> exit_code = {};     ///< of a process that ends without either
};

/// Brings the session up. Whatever is wrong with the settings is told once, and never keeps
/// the program from starting. A command line that names one existing file, other than a
/// macro's, opens it; any other is taken as the name of a macro, for the program
/// that runs macros.
StartResult start_program(Session& session, const StartInput& input);

}  // namespace tavlo
