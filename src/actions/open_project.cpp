#include "actions/open_project.h"

#include <optional>
#include <utility>

#include "actions/file_faults.h"
#include "actions/intake.h"
#include "actions/new_project.h"
#include "actions/pasted_rows.h"
#include "actions/recent_files.h"
#include "actions/reports.h"
#include "actions/save_project.h"
#include "actions/undo.h"
#include "actions/work.h"
#include "files/foreign_old_data.h"
#include "files/foreign_quelplot.h"
#include "files/foreign_type.h"
#include "files/project_file.h"
#include "numerics/date_text.h"
#include "numerics/number_text.h"
#include "project/version_words.h"

namespace tavlo {

namespace {

constexpr const char* open_filter =
    "Tavlo Project (*.tavlo)|*.tavlo|Data (*.txt;*.csv;*.tsv;*.dat)|*.txt;*.csv;*.tsv;*.dat|"
    "All (*.*)|*.*";

/// Kept on purpose: after OK the name is taken as it is, and opening it says what is wrong.
std::string name_to_open(Session& session) {
  Prompts& prompts = session.ports.prompts;
  const auto name =
      prompts.choose_file({.title = "Open", .filter = open_filter, .filter_index = 3});
  if (!name || name->empty() || session.ports.file_system.exists(*name))
    return name.value_or(std::string());
  const Box question = {"File Not Found", *name + " does not exist. Check again?",
                        BoxIcon::question, BoxButtons::ok_cancel};
  return prompts.show(question) == BoxAnswer::ok ? *name : std::string();
}

/// A file on its way into the session.
struct Opening {
  std::string path;
  std::string bytes;
  FileType type = FileType::unknown;
  Project project;
  UnstatedRanks unstated_ranks;
  bool cancelled = false;
};

ProjectFault as_project_fault(const NumberedFault& fault) {
  return {fault.error_number, fault.fault, {}};
}

std::optional<ProjectFault> read_quelplot_set(Session& session, Opening& opening) {
  int sets = 1;
  if (const auto fault = count_quelplot_sets(opening.bytes, sets)) return as_project_fault(*fault);
  int set = 1;
  if (sets > 1) {
    const auto reply =
        session.ports.prompts.ask_line("Multiple data sets",
                                       "This data file has " + std::to_string(sets) +
                                           "data sets.  Which set did you want to read?",
                                       "1");
    opening.cancelled = !reply;
    if (opening.cancelled) return std::nullopt;
    const double number = parse_number(*reply).value_or(1);
    set = number >= 1 && number <= sets ? static_cast<int>(number) : 1;
  }
  if (const auto fault = read_quelplot(opening.bytes, set, opening.project))
    return as_project_fault(*fault);
  return std::nullopt;
}

/// Whatever else is text may hold data.
std::optional<ProjectFault> read_text(Session& session, Opening& opening) {
  DataRows rows;
  const auto fault =
      read_pasted_rows(opening.bytes, session, most_data_rows, rows, opening.cancelled);
  if (fault && !opening.cancelled)
    return ProjectFault{
        run_time::type_mismatch, {fault->line, "neither a project nor data: " + fault->what}, {}};
  if (!fault) fill_data_set(std::move(rows), opening.project.data(1));
  return std::nullopt;
}

std::optional<ProjectFault> read_file(Session& session, Opening& opening) {
  switch (opening.type) {
    case FileType::project:
      return read_project(opening.bytes, opening.project, &opening.unstated_ranks);
    case FileType::old_data:
      if (const auto fault = read_old_data(opening.bytes, opening.project))
        return as_project_fault(*fault);
      return std::nullopt;
    case FileType::quelplot:
    case FileType::quelplot_html: return read_quelplot_set(session, opening);
    case FileType::macro: return std::nullopt;
    case FileType::unknown: return read_text(session, opening);
  }
  return std::nullopt;
}

/// The log tells when the file was opened, and by which version.
void add_opening_line(Session& session) {
  session.project.log.append_rtf(
      "\\par Quellmarch Tavlo " + std::string(file_version) + "\\'a92011 -2019" +
      format_date(session.ports.clock.now(), "ddd dd mmm yyyy hh:mmampm") + "\\par ");
}

/// A file that does not say how its data were ranked gets the ranks of the settings.
void note_unstated_ranks(Session& session, const UnstatedRanks& ranks) {
  for (const std::string& title : ranks.sets)
    AppendLog(session,
              title + ": the file does not say of which kind its ranks are; they are taken as " +
                  (ranks.kind == RankKind::benard ? "Benard's." : "exact median ranks.") + "\n",
              false);
}

/// Kept on purpose: Yes says what it says and calculates nothing.
void ask_about_changed_sets(Session& session) {
  if (changed_sets(session) == 0) return;
  const BoxAnswer answer = session.ports.prompts.show(
      {"New/Changed Data",
       "New Data, or Data changed since Fits were last calculated.  Do you want to recalculate "
       "changed fits now?",
       BoxIcon::question, BoxButtons::yes_no});
  if (answer == BoxAnswer::yes)
    session.ports.prompts.show({"", "Add update Call", BoxIcon::none, BoxButtons::ok});
  else
    AppendLog(session,
              " \\par WARNING: Any fits may not match the current data set(s).  Please recalculate "
              "fits. \\par ",
              true);
}

/// Data of others are ranked here, and what they bring of fits is fitted anew.
void take_in_data(Session& session, const Opening& opening) {
  const std::string name = file_title(opening.path);
  session.project.name = name;
  if (opening.type == FileType::unknown) session.project.data(1).Title = name;
  bool clean = true;
  CheckDirtyData(session, 1, clean);
}

void show_opened(Session& session, Opening opening) {
  const bool is_project = opening.type == FileType::project;
  replace_project(session, std::move(opening.project), is_project ? opening.path : std::string());
  if (is_project) {
    session.works[session.project.work].is_utf8 = opening.bytes.starts_with("\xEF\xBB\xBF");
    show_file_name(session.project, {}, opening.path);
    add_opening_line(session);
    note_unstated_ranks(session, opening.unstated_ranks);
    ask_about_changed_sets(session);
  } else {
    take_in_data(session, opening);
  }
  mark_saved(session);
  add_recent_file(session.settings, opening.path);
  session.ports.views.status("Opened: " + bare_file_name(opening.path));
  session.step = "Open";
}

}  // namespace

bool open_project(Session& session, std::string path) {
  if (path.empty()) path = name_to_open(session);
  if (path.empty()) return false;
  Opening opening;
  opening.path = path;
  opening.unstated_ranks.kind = session.settings.Benard ? RankKind::benard : RankKind::exact;
  const auto limit = [&](std::string_view start) { return largest_file(file_type(start, path)); };
  const FileResult read = session.ports.file_system.read_whole(path, limit, opening.bytes);
  if (!read) {
    tell_fault(session, path, read);
    return false;
  }
  opening.type = file_type(opening.bytes, path);
  if (opening.type != FileType::project) opening.project = begun_project(session);
  if (const auto fault = read_file(session, opening)) {
    tell_fault(session, path, *fault);
    return false;
  }
  if (opening.cancelled) return false;
  show_opened(session, std::move(opening));
  return true;
}

bool open_recent(Session& session, int place) {
  const auto& files = session.settings.RecentFiles;
  if (place < 1 || place >= static_cast<int>(files.size())) return false;
  const std::string path = files[static_cast<std::size_t>(place)];
  if (path.empty()) return false;
  if (session.ports.file_system.exists(path)) return open_project(session, path);
  session.ports.prompts.show({"Bad File Name", "File: " + path + " cannot be found.",
                              BoxIcon::exclamation, BoxButtons::ok});
  return false;
}

}  // namespace tavlo
