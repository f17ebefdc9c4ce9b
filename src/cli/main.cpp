// tavlo-cli: everything that the windows compute, without a window.
#include <exception>
#include <new>

#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/interruption.h"
#include "cli/output.h"
#include "cli/progress_line.h"

namespace {

using namespace tavlo::cli;

ExitCode run_command(const Command& command) {
  return std::visit([](const auto& arguments) { return run(arguments); }, command);
}

}  // namespace

int main(int argc, char** argv) {
  prepare_for_interruption();
  try {
    const auto parsed = parse_arguments(argc, argv);
    const auto* const command = std::get_if<Command>(&parsed);
    const ProgressLine progress(command && !is_quiet());
    const ExitCode code = command ? run_command(*command) : std::get<ExitCode>(parsed);
    return static_cast<int>(finish_output(code));
  } catch (const std::bad_alloc&) {
    complain("there is not enough memory");
  } catch (const std::exception&) {
    complain("the program has failed; this is a fault of its own");
  }
  return static_cast<int>(ExitCode::fit_refused);
}
