// vkmacro: runs a macro, a list of data files to be fitted, without a window.
#include <exception>
#include <iostream>
#include <new>
#include <string>

#include "cli/cli_ports.h"
#include "cli/exit_code.h"
#include "cli/help_pages.h"
#include "cli/interruption.h"
#include "cli/output.h"
#include "cli/run_macro.h"
#include "files/path_system.h"
#include "files/program_paths.h"
#include "files/settings_file.h"

namespace {

using namespace tavlo;
using namespace tavlo::cli;

constexpr const char* usage =
    R"(Usage: vkmacro FILE

Runs the jobs of a macro file (.vkm). A job is five items, on lines or with commas between:
the parameters of the model (2, 3, 4, 5 or 7: W2P, W3T, W4P, W5C, W7P), 1, the method
(1 X on Y, 2 maximum likelihood, 3 Y on X), the data file and the result file. Each job adds
one row to its result file. Ctrl-C breaks the run off; the rows before it stay.

Exit code: 0 all rows were written, 1 a fit was refused, 2 wrong usage, 3 a file can't be
read or written, 130 broken off.

Example: printf '2,1,2,bearings.txt,results.txt\n' > bearings.vkm; vkmacro bearings.vkm
)";

/// The settings of the windows count here too: the kind of ranks, and how numbers are written.
MacroHouse macro_house(const std::string& subject) {
  CliWorld world(false, subject);
  const Ports ports = world.ports();
  const ProgramPlaces places = FindPaths(ports, posix_paths, "");
  Settings settings;
  IniLines lines;
  if (LoadSettingsFile(ports.file_system, settings_path(places.IniPath), lines, false))
    apply_settings(lines, settings);
  MacroHouse house;
  house.folders = {places.TempPath, places.IniPath, places.ProgramPath};
  house.reading.comments = false;
  house.reading.negative_is_value = !settings.NegativeSuspension;
  house.ranks = settings.Benard ? RankKind::benard : RankKind::exact;
  return house;
}

int run(int argc, char** argv) {
  const std::string word = argc == 2 ? argv[1] : "";
  if (word == "--help" || word == "-h") return print(usage), 0;
  if (word == "--man") return print(plain_man_page("vkmacro", "vkmacro " TAVLO_VERSION, usage)), 0;
  if (word == "--version") return print("vkmacro " TAVLO_VERSION "\n"), 0;
  if (word.empty()) {
    complain("name one macro file; vkmacro --help tells more");
    return static_cast<int>(ExitCode::wrong_usage);
  }
  return RunMacro(word, macro_house(word));
}

}  // namespace

int main(int argc, char** argv) {
  name_program("vkmacro");
  prepare_for_break();
  int code = static_cast<int>(ExitCode::fit_refused);
  try {
    code = run(argc, argv);
  } catch (const std::bad_alloc&) {
    complain("there is not enough memory");
  } catch (const std::exception&) {
    complain("the program has failed; this is a fault of its own");
  }
  return code == 0 ? static_cast<int>(finish_output(ExitCode::done)) : code;
}
