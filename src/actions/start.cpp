#include "actions/start.h"

#include <algorithm>

#include "files/language_file.h"
#include "files/path_system.h"
#include "files/plain_lines.h"
#include "files/program_paths.h"
#include "files/settings_file.h"
#include "files/text_lines.h"
#include "numerics/decimal_separators.h"
#include "project/version_words.h"

namespace tavlo {

namespace {

constexpr const char* start_fault = "Error loading program: ";
constexpr const char* start_place = "Sub Main";

int error_number(FileFault fault) {
  switch (fault) {
    case FileFault::disk_full: return run_time::disk_full;
    case FileFault::no_permission: return run_time::permission_denied;
    case FileFault::not_found: return run_time::path_not_found;
    default: return run_time::path_access;
  }
}

void report(Session& session, int number, const std::string& detail) {
  session.errors.add_lines({start_fault, start_place, detail});
  const RunTimeError error(number);
  session.errors.Error_Chk_Show(&error);
}

NumberPunctuation punctuation_of(Session& session, const StartInput& input) {
  const auto ask = [&session] {
    return session.ports.prompts.ask_line(
        "Unable to determine Decimal Separator",
        "Please enter the character to be used for a decimal separator", ".");
  };
  return GetDecimalSeparators(input.grouped_number, input.half_number, ask);
}

void write_first_settings(Session& session, const std::string& path) {
  IniLines lines =
      standard_settings_lines(session.settings, session.places, std::string(file_version));
  const FileResult written = LoadSettingsFile(session.ports.file_system, path, lines, true);
  if (!written) report(session, error_number(written.fault), path + ": " + written.message);
}

void tell_unread_settings(Session& session, const std::string& path, const FileResult& fault) {
  const bool is_large = fault.fault == FileFault::too_large;
  session.ports.prompts.show(
      {"Settings",
       std::string(is_large ? "Settings file is too large" : "Settings can't be read") + "\n" +
           path + ": " + fault.message +
           "\nThe program starts with its own settings and leaves the file as it is.",
       BoxIcon::exclamation, BoxButtons::ok});
}

/// One box, whatever the number of faults.
void tell_faults(Session& session, const std::string& path,
                 const std::vector<SettingFault>& faults) {
  constexpr std::size_t most_told = 8;
  if (faults.empty()) return;
  ErrorReporter& errors = session.errors;
  errors.add_lines({"Settings that can't be read have their default values: ", path});
  for (std::size_t i = 0; i < std::min(faults.size(), most_told); ++i)
    errors.add_lines({"line " + std::to_string(faults[i].line) + ": " + faults[i].key + " = " +
                      quoted(faults[i].value) + ": " + faults[i].error.description()});
  if (faults.size() > most_told)
    errors.add_lines({"and " + std::to_string(faults.size() - most_told) + " more"});
  errors.Error_Chk_Show(&faults.front().error);
}

void load_settings(Session& session) {
  FileSystem& files = session.ports.file_system;
  const std::string path = settings_path(session.places.IniPath);
  if (!files.exists(path)) write_first_settings(session, path);
  IniLines lines;
  const FileResult read = LoadSettingsFile(files, path, lines, false);
  session.places.settings_are_read = static_cast<bool>(read);
  if (!read) return tell_unread_settings(session, path, read);
  tell_faults(session, path, apply_settings(lines, session.settings));
}

/// Everything but the command line.
void load_program(Session& session, const StartInput& input) {
  session.places = FindPaths(session.ports, posix_paths, input.command_line);
  session.settings = {};
  session.settings.punctuation = punctuation_of(session, input);
  load_settings(session);
  session.RunMode = 1;
  session.LanguageText = LoadLanguage(session.ports.file_system, session.places.ProgramPath,
                                      session.settings.Language);
}

bool opens_in_window(Session& session, const std::string& name) {
  FileFacts facts;
  return !lower_case(name).ends_with(".vkm") && session.ports.file_system.look_up(name, facts) &&
         !facts.is_folder;
}

/// The path of a macro; nothing when there is none.
std::optional<std::string> find_macro(Session& session, const std::string& name) {
  FileFacts facts;
  for (const std::string& path : {name, session.places.ProgramPath + "/" + name})
    if (session.ports.file_system.look_up(path, facts) && !facts.is_folder) return path;
  return std::nullopt;
}

/// The program's own folder comes first: the other may be named by a text file.
std::optional<std::string> find_macro_program(Session& session) {
  Host& host = session.ports.host;
  for (const std::string& folder : {host.program_folder(), session.places.ProgramPath})
    if (const auto program = host.find_program(folder + "/vkmacro")) return program;
  return std::nullopt;
}

StartResult order_macro(Session& session, const std::string& name) {
  session.RunMode = 2;
  const auto macro = find_macro(session, name);
  if (!macro) {
    session.ports.prompts.show(
        {"Quellmarch(r) Tavlo File Read Error",
         "This macro file cannot be located:\n" + name + "\nMacro cancelled.", BoxIcon::exclamation,
         BoxButtons::ok});
    return {.exit_code = 1};
  }
  const auto program = find_macro_program(session);
  if (program) return {.macro = MacroOrder{*program, *macro}};
  report(session, run_time::file_not_found, "vkmacro: there is no such program");
  return {.exit_code = 1};
}

}  // namespace

StartResult start_program(Session& session, const StartInput& input) {
  return guarded(session.errors, StartResult{}, error_words(start_fault, start_place), [&] {
    load_program(session, input);
    const std::string& name = input.command_line;
    if (name.empty()) return StartResult{};
    if (opens_in_window(session, name)) return StartResult{.file = name};
    return order_macro(session, name);
  });
}

}  // namespace tavlo
