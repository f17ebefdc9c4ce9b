#include "actions/save_project.h"

#include <algorithm>
#include <utility>

#include "actions/export_data.h"
#include "actions/file_faults.h"
#include "actions/recent_files.h"
#include "actions/reports.h"
#include "actions/undo.h"
#include "actions/work.h"
#include "files/project_file.h"
#include "numerics/date_text.h"

namespace tavlo {

namespace {

constexpr const char* save_filter =
    "Tavlo Project (*.tavlo)|*.tavlo|Comma-separated data (*.csv)|*.csv|"
    "Data notation (*.txt)|*.txt|All (*.*)|*.*";

std::string suggested_path(const Session& session) {
  const std::string& path = present_work(session).path;
  return path.empty() ? project_title(session) + ".tavlo" : path;
}

/// The project's own file keeps its name, whatever that ends in.
bool is_own_file(const Session& session, const std::string& path) {
  return !path.empty() && path == present_work(session).path;
}

/// The dialog completes names by the first kind of file; the last leaves them alone.
int filter_of(const std::string& suggestion) {
  constexpr int project = 1, all = 4;
  return suggestion.ends_with(".tavlo") ? project : all;
}

/// Kept on purpose: No to the question saves all the same, as those who wrote scripts and
/// handbooks for it know. The file that was there is kept as `name~`.
std::string name_to_save(Session& session) {
  const std::string suggestion = suggested_path(session);
  const auto name = session.ports.prompts.choose_file({.title = "Save Project",
                                                       .filter = save_filter,
                                                       .filter_index = filter_of(suggestion),
                                                       .saving = true,
                                                       .ask_before_replacing = false,
                                                       .own_suffix = "tavlo",
                                                       .suggestion = suggestion});
  if (!name || name->empty()) return {};
  if (!session.ports.file_system.exists(*name)) return *name;
  const Box question = {"Overwrite File?", *name + " exists.  Do you want to overwrite the file?",
                        BoxIcon::question, BoxButtons::yes_no_cancel};
  return session.ports.prompts.show(question) == BoxAnswer::cancel ? std::string() : *name;
}

/// Kept on purpose: Yes says what it says and goes on.
bool goes_on_with_changed_sets(Session& session) {
  if (changed_sets(session) == 0) return true;
  Prompts& prompts = session.ports.prompts;
  const BoxAnswer answer = prompts.show(
      {"New/Changed Data",
       "New Data, or Data changed since Fits were last calculated.  Do you want to recalculate "
       "changed fits now?",
       BoxIcon::question, BoxButtons::yes_no_cancel});
  if (answer == BoxAnswer::yes)
    prompts.show({"", "Add update Call", BoxIcon::none, BoxButtons::ok});
  if (answer != BoxAnswer::cancel) return true;
  prompts.show({"Save Canceled.", "Data Not Saved", BoxIcon::stop, BoxButtons::ok});
  return false;
}

/// The line says of a file when it was saved, so it stands in it.
Project as_saved(Session& session, const std::string& path) {
  Project saved = session.project;
  show_file_name(saved, present_work(session).path, path);
  saved.log.end_line();
  saved.log.append_rtf(
      "Saved: " + format_date(session.ports.clock.now(), "ddd dd mmm yyyy hh:mmampm") + " \\par ");
  return saved;
}

bool write(Session& session, const std::string& path, const ProjectBytes& bytes) {
  const FileResult done = session.ports.file_system.write_keeping_former(path, bytes.bytes);
  if (!done) tell_fault(session, path, done);
  return static_cast<bool>(done);
}

/// A file in another code page can't be read by older programs: the person hears of it once.
void tell_encoding(Session& session, bool is_utf8) {
  Work& work = session.works[session.project.work];
  if (is_utf8 && !work.is_utf8)
    session.ports.prompts.show(
        {"Characters in the file", utf8_words, BoxIcon::information, BoxButtons::ok});
  work.is_utf8 = is_utf8;
}

}  // namespace

int changed_sets(const Session& session) {
  const Slots<DataSet>& data = session.project.data;
  return static_cast<int>(std::count_if(data.begin() + 1, data.end(),
                                        [](const DataSet& each) { return !each.is_read(); }));
}

bool save_project_as(Session& session, const std::string& path) {
  if (!goes_on_with_changed_sets(session)) return false;
  Project saved = as_saved(session, path);
  ProjectBytes bytes;
  if (const auto fault = write_project(saved, bytes)) {
    tell_fault(session, path, *fault);
    return false;
  }
  if (!write(session, path, bytes)) return false;
  session.project = std::move(saved);
  tie_to_file(session, path);
  // To take a change back does not unmake the save.
  session.history.note_view(session.project);
  tell_encoding(session, bytes.is_utf8);
  session.ports.views.status("Saved: " + bare_file_name(path));
  return true;
}

bool save_project(Session& session, int data_index) {
  const std::string path = name_to_save(session);
  if (path.empty()) return false;
  if (!is_data_file_name(path) || is_own_file(session, path)) return save_project_as(session, path);
  export_data(session, data_index, path);
  return !is_unsaved(session);
}

}  // namespace tavlo
