#include "actions/keep_library.h"

#include <algorithm>

#include "actions/busy_pointer.h"
#include "files/example_files.h"
#include "files/plain_lines.h"
#include "guidance/library_list.h"

namespace tavlo {

namespace {

constexpr const char* library_title = "Library Viewer";
constexpr const char* header_filter =
    "Library header files (QMWbLibDef*)|QMWbLibDef*|All files (*)|*";
constexpr const char* data_filter = "Data files (*.csv *.txt)|*.csv;*.txt|All files (*)|*";

void tell(Session& session, const std::string& text) {
  session.ports.prompts.show({library_title, text, BoxIcon::exclamation, BoxButtons::ok});
}

void tell_file(Session& session, const std::string& path, const FileResult& fault) {
  tell(session, path + "\n" + fault.message + ".");
}

/// A list that can't be written is no reason to keep a person from the library.
void remember(Session& session, const std::string& folder) {
  const std::string& ini_folder = session.places.IniPath;
  if (ini_folder.empty()) return;
  if (const auto kept = remember_library(session.ports.file_system, ini_folder, folder); !kept)
    session.ports.views.status("The list of libraries can't be written: " + kept.message + ".");
}

std::string joined(const std::string& folder, const std::string& name) {
  return folder.empty() ? name : folder + "/" + name;
}

/// Nothing when the person gives none.
std::optional<std::string> ask_data_name(Session& session, const Library& library) {
  FileRequest request;
  request.title = "Open Item Data File";
  request.filter = data_filter;
  request.saving = true;  // a name that is not there yet may be given
  request.ask_before_replacing = false;
  request.suggestion =
      library.data_path.empty() ? joined(library.folder, "library.csv") : library.data_path;
  return session.ports.prompts.choose_file(request);
}

std::string names_of(const LibraryDefinition& definition) {
  std::vector<std::string> names;
  for (const LibraryColumn& column : definition.columns) names.push_back(column.Name);
  return write_library_row(names) + "\n";
}

/// True when the file was made.
bool make_data_file(Session& session, const std::string& path, const Library& library) {
  const bool has_names =
      session.ports.prompts.show({"Do you want a header row?",
                                  "Add a header Row.\nNo, just store the data.", BoxIcon::question,
                                  BoxButtons::yes_no}) == BoxAnswer::yes;
  const FileResult made = session.ports.file_system.create_new(
      path, has_names ? names_of(library.definition) : std::string());
  if (!made) tell_file(session, path, made);
  return static_cast<bool>(made);
}

BoxAnswer ask_whether_new(Session& session) {
  return session.ports.prompts.show({"File Not Found",
                                     "Does not exist. \nIs this a new File?\n"
                                     "Yes\t- Create new File\n"
                                     "No\t- Select a different file\n"
                                     "Cancel\t- Cancel file open",
                                     BoxIcon::question, BoxButtons::yes_no_cancel});
}

/// A file that is there, or that was made now; nothing when the person cancels.
std::optional<std::string> find_data_file(Session& session, const Library& library) {
  for (;;) {
    const auto path = ask_data_name(session, library);
    if (!path || session.ports.file_system.exists(*path)) return path;
    const BoxAnswer answer = ask_whether_new(session);
    if (answer == BoxAnswer::no) continue;
    const bool made = answer == BoxAnswer::yes && make_data_file(session, *path, library);
    return made ? path : std::nullopt;
  }
}

bool is_header_name(const std::string& name) {
  return lower_case(name).starts_with("qmwblibdef") && !name.ends_with('~');
}

/// A name by which the library is found again; nothing when the person cancels.
std::optional<std::string> ask_header_path(Session& session, const Library& library) {
  FileRequest request;
  request.title = "Save Definition File";
  request.filter = header_filter;
  request.saving = true;
  request.suggestion = joined(library.folder, "QMWbLibDef.txt");
  for (;;) {
    const auto path = session.ports.prompts.choose_file(request);
    if (!path || is_header_name(split_path(*path).name)) return path;
    tell(session, "The name of a header file begins with QMWbLibDef.");
  }
}

}  // namespace

std::vector<std::string> known_libraries(Session& session) {
  FileSystem& files = session.ports.file_system;
  std::vector<std::string> known = read_library_list(files, session.places.IniPath);
  const auto sample = sample_library(session.ports.host, files);
  if (sample && std::find(known.begin(), known.end(), *sample) == known.end())
    known.push_back(*sample);
  return known;
}

Library first_library(Session& session) {
  FileSystem& files = session.ports.file_system;
  const auto folder = last_library(files, read_library_list(files, session.places.IniPath));
  Library library = default_library();
  if (folder) take_library(session, *folder, library);
  return library;
}

bool take_library(Session& session, const std::string& folder, Library& library) {
  const BusyPointer busy(session.ports.views);
  LibraryOpening opening = open_library(session.ports.file_system, folder);
  const std::string header = opening.library.header_path;
  library = std::move(opening.library);
  if (opening.fault == HeaderFault::corrupt) {
    library.header_path.clear();  // a save asks before it takes the file's place
    tell(session, "Header file is corrupt:\n" + header);
  } else if (opening.fault == HeaderFault::unreadable) {
    library.header_path.clear();
    tell_file(session, header, opening.read);
  } else if (header.empty()) {
    tell(session, "There is no library in this folder:\n" + folder);
  } else {
    return true;
  }
  return false;
}

bool choose_library(Session& session, Library& library) {
  FileRequest request;
  request.title = "Open a Library: its header file";
  request.filter = header_filter;
  const auto path = session.ports.prompts.choose_file(request);
  if (!path || !may_leave_library(session, library)) return false;
  const std::string folder = split_path(*path).folder;
  if (take_library(session, folder, library)) remember(session, folder);
  return true;
}

bool choose_library_data(Session& session, Library& library) {
  const auto path = find_data_file(session, library);
  if (!path) return false;
  const BusyPointer busy(session.ports.views);
  const FileResult read = open_library_data(session.ports.file_system, *path, library);
  if (read)
    name_data_file(library, *path);
  else
    tell_file(session, *path, read);
  return static_cast<bool>(read);
}

bool save_library(Session& session, Library& library) {
  if (const auto fault = find_unwritable(library.definition)) {
    tell(session, *fault);
    return false;
  }
  const auto path = library.header_path.empty() ? ask_header_path(session, library)
                                                : std::optional(library.header_path);
  if (!path) return false;
  const FileResult saved = save_library_header(session.ports.file_system, *path, library);
  if (!saved) {
    tell_file(session, *path, saved);
    return false;
  }
  library.folder = split_path(*path).folder;
  remember(session, library.folder);
  session.ports.views.status("The definition is saved as " + *path);
  return true;
}

bool may_leave_library(Session& session, Library& library) {
  if (!library.is_unsaved()) return true;
  const BoxAnswer answer = session.ports.prompts.show(
      {library_title, "The definition of the library is not saved.\nSave it?", BoxIcon::question,
       BoxButtons::yes_no_cancel});
  return answer == BoxAnswer::no || (answer == BoxAnswer::yes && save_library(session, library));
}

bool keep_row(Session& session, const std::vector<std::string>& fields, Library& library) {
  if (library.data_path.empty() && !choose_library_data(session, library)) return false;
  const FileResult kept = add_library_row(session.ports.file_system, fields, library);
  if (!kept) tell_file(session, library.data_path, kept);
  return static_cast<bool>(kept);
}

void tell_too_many_rows(Session& session, int most) {
  tell(session, "At most " + std::to_string(most) + " rows can be copied at a time.");
}

void tell_not_programmed(Session& session, int button) {
  constexpr int copy_button = 2;
  tell(session, button == copy_button ? "Btn 2:Copy to clipboard-not programmed"
                                      : "Image " + std::to_string(button) + " not programmed");
}

}  // namespace tavlo
