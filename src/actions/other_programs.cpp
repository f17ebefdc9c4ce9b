#include "actions/other_programs.h"

#include <optional>

namespace tavlo {

namespace {

constexpr const char* calculators[] = {"gnome-calculator", "kcalc",      "qalculate-gtk",
                                       "mate-calc",        "galculator", "xcalc"};

constexpr const char* install_folders[] = {"/opt/quellmarch", "/usr/local/lib/quellmarch"};

bool start_path(Session& session, const std::string& path) {
  Host& host = session.ports.host;
  const auto found = host.find_program(path);
  return found && host.start_program(*found, {});
}

std::vector<std::string> sibling_folders(const Session& session) {
  const std::string own = session.ports.host.program_folder();
  std::vector<std::string> folders = {own, own + "/..", session.places.ProgramPath};
  folders.insert(folders.end(), std::begin(install_folders), std::end(install_folders));
  std::erase(folders, std::string());
  return folders;
}

}  // namespace

void start_calculator(Session& session) {
  for (const char* name : calculators)
    if (start_path(session, name)) return;
  session.ports.views.status("Calculator not found");
}

void start_sibling(Session& session, const std::string& name) {
  for (const std::string& folder : sibling_folders(session))
    for (const std::string& each : {name, name.substr(0, name.rfind('.'))})
      if (start_path(session, folder + "/" + each)) return;
  session.ports.prompts.show({"Bad File Name", "File: " + name + " cannot be found.",
                              BoxIcon::exclamation, BoxButtons::ok});
}

}  // namespace tavlo
