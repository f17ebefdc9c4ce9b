// tavlo-cli: everything that the windows compute, without a window.
#include <cstdio>
#include <exception>

#include "cli/arguments.h"
#include "cli/cli_ports.h"
#include "cli/commands.h"

namespace {

using namespace tavlo::cli;

ExitCode run_command(const Command& command) {
  return std::visit([](const auto& arguments) { return run(arguments); }, command);
}

/// Output that can't be written is a file fault, also when it fails late.
ExitCode finish_output(ExitCode code) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return code;
  complain("standard output can't be written");
  return ExitCode::file_fault;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const auto parsed = parse_arguments(argc, argv);
    const auto* const command = std::get_if<Command>(&parsed);
    const ExitCode code = command ? run_command(*command) : std::get<ExitCode>(parsed);
    return static_cast<int>(finish_output(code));
  } catch (const std::exception& error) {
    complain(error.what());
  }
  return static_cast<int>(ExitCode::fit_refused);
}
