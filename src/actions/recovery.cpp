#include "actions/recovery.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <optional>
#include <utility>

#include "actions/file_faults.h"
#include "actions/recent_files.h"
#include "actions/undo.h"
#include "actions/work.h"
#include "files/project_file.h"
#include "numerics/date_text.h"
#include "project/code_page.h"
#include "project/size_limits.h"

namespace tavlo {

namespace {

constexpr std::size_t most_copies = 10;
constexpr std::string_view suffix = ".tavlo";

/// A name that no file system refuses, cut to a length that leaves room for the rest.
std::string harmless(const std::string& title) {
  constexpr std::size_t longest = 80;
  std::string name(utf8_front(title, longest));
  for (char& c : name)
    if (static_cast<unsigned char>(c) < ' ' ||
        std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos)
      c = '_';
  if (name.ends_with(suffix)) name.resize(name.size() - suffix.size());
  return name;
}

std::int64_t points_of(const Project& project) {
  std::int64_t points = 0;
  for (const DataSet& data : project.data) points += static_cast<std::int64_t>(data.rows.size());
  return points;
}

std::string stamp_of(const DateTime& moment) { return format_date(moment, "yyyymmdd-hhnnss"); }

std::string copy_name(Session& session, const Project& state, CopyReason reason) {
  return stamp_of(session.ports.clock.now()) + (reason == CopyReason::current ? " c p" : " r p") +
         std::to_string(session.ports.host.process_id()) + " w" + std::to_string(state.work) +
         " n" + std::to_string(points_of(state)) + " " + harmless(title_of(session, state)) +
         std::string(suffix);
}

FileResult write_copy(FileSystem& files, const std::string& path, const Project& state) {
  try {
    ProjectBytes bytes;
    if (const auto fault = write_project(state, bytes, Ranking::none))
      return {FileFault::device_error, fault->fault.what};
    return files.write_whole(path, bytes.bytes);
  } catch (const std::exception& error) {
    return {FileFault::device_error, error.what()};
  }
}

/// Takes the word up to the next blank off the front.
std::string_view take_word(std::string_view& text) {
  const std::size_t end = std::min(text.find(' '), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return word;
}

std::optional<std::int64_t> number_behind(char letter, std::string_view word) {
  std::int64_t number = 0;
  if (!word.starts_with(letter)) return std::nullopt;
  const auto read = std::from_chars(word.data() + 1, word.data() + word.size(), number);
  if (read.ec != std::errc() || read.ptr != word.data() + word.size()) return std::nullopt;
  return number;
}

struct NamedCopy {
  RecoveryCopy copy;
  std::int64_t process = 0;
  std::string stamp;
};

/// Process numbers come again: a copy from before this run is not of this process.
bool is_of_running_process(Session& session, const NamedCopy& copy) {
  Host& host = session.ports.host;
  if (copy.process == host.process_id()) return copy.stamp >= session.begun;
  return host.is_running(copy.process);
}

std::optional<NamedCopy> copy_of_name(const std::string& folder, const std::string& file) {
  constexpr std::size_t stamp_size = 15;
  std::string_view rest = file;
  if (!rest.ends_with(suffix)) return std::nullopt;
  rest.remove_suffix(suffix.size());
  const std::string stamp(take_word(rest));
  const std::string_view kind = take_word(rest);
  const auto process = number_behind('p', take_word(rest));
  const auto work = number_behind('w', take_word(rest));
  const auto points = number_behind('n', take_word(rest));
  if (stamp.size() != stamp_size || !process || !work || !points || (kind != "c" && kind != "r"))
    return std::nullopt;
  const std::string time = stamp.substr(0, 4) + "-" + stamp.substr(4, 2) + "-" +
                           stamp.substr(6, 2) + " " + stamp.substr(9, 2) + ":" +
                           stamp.substr(11, 2);
  return NamedCopy{
      {folder + "/" + file, std::string(rest), time, *points, kind == "c"}, *process, stamp};
}

/// All copies in the folder, the newest first.
std::vector<NamedCopy> all_copies(Session& session) {
  std::vector<std::string> names;
  std::vector<NamedCopy> copies;
  if (session.recovery_folder.empty() ||
      !session.ports.file_system.list_folder(session.recovery_folder, names))
    return copies;
  for (auto name = names.rbegin(); name != names.rend(); ++name)
    if (auto copy = copy_of_name(session.recovery_folder, *name))
      copies.push_back(*std::move(copy));
  return copies;
}

/// Copies of works that undo can bring back are left to them.
bool is_of_a_work(const Session& session, const std::string& path) {
  return std::any_of(session.works.begin(), session.works.end(),
                     [&](const auto& work) { return work.second.copy == path; });
}

void drop_oldest(Session& session) {
  const std::vector<NamedCopy> copies = all_copies(session);
  for (std::size_t i = most_copies; i < copies.size(); ++i) {
    const bool is_own = copies[i].process == session.ports.host.process_id();
    const bool is_left = is_own ? !is_of_a_work(session, copies[i].copy.path)
                                : !is_of_running_process(session, copies[i]);
    if (is_left) session.ports.file_system.remove(copies[i].copy.path);
  }
}

/// The person works on; the next copy may find room.
void note_missing_copy(Session& session, const Project& state, const std::string& why) {
  session.missing_copy = "No recovery copy of " + title_of(session, state) + ": " + why;
}

/// A copy of the same work stands for the one before it.
void take_in(Session& session, const PendingCopy& copy, const FileResult& written) {
  forget_samples(*copy.state);
  if (!written) return note_missing_copy(session, *copy.state, written.message);
  const auto work = session.works.find(copy.state->work);
  if (work == session.works.end()) return;
  const std::string former = std::exchange(work->second.copy, copy.path);
  work->second.copied = copy.state;
  work->second.uncopied.reset();
  if (!former.empty() && former != copy.path) session.ports.file_system.remove(former);
  drop_oldest(session);
}

/// One that was made when the project was replaced is not offered after a crash.
bool stands_already(const Session& session) {
  const Work& work = present_work(session);
  const auto copy = copy_of_name(session.recovery_folder, bare_file_name(work.copy));
  return copy && copy->copy.after_crash && work.copied && *work.copied == session.project;
}

void start_copy(Session& session, std::shared_ptr<const Project> state, CopyReason reason) {
  PendingCopy copy;
  copy.path = session.recovery_folder + "/" + copy_name(session, *state, reason);
  copy.state = std::move(state);
  copy.written = std::async(std::launch::async,
                            [&files = session.ports.file_system, path = copy.path,
                             state = copy.state.get()] { return write_copy(files, path, *state); });
  session.copy = std::move(copy);
}

void try_copy(Session& session, const std::shared_ptr<const Project>& state, CopyReason reason) {
  const FileResult made = session.ports.file_system.make_folder(session.recovery_folder);
  std::string why = made.message;
  if (made) {
    try {
      return start_copy(session, state, reason);
    } catch (const std::exception&) {
      why = "the system has no room for it now";
    }
  }
  forget_samples(*state);
  note_missing_copy(session, *state, why);
}

std::vector<std::int64_t> works_to_copy(const Session& session) {
  std::vector<std::int64_t> works;
  for (const auto& [id, work] : session.works)
    if (work.uncopied && id != session.project.work) works.push_back(id);
  return works;
}

}  // namespace

void keep_copy(Session& session, CopyReason reason) {
  finish_copies(session, true);
  if (session.recovery_folder.empty()) return;
  if (!is_unsaved(session)) return drop_copy(session);
  if (reason == CopyReason::current && stands_already(session)) return;
  const auto state = std::make_shared<const Project>(session.project);
  if (reason == CopyReason::replaced) session.works[state->work].uncopied = state;
  try_copy(session, state, reason);
}

void finish_copies(Session& session, bool wait) {
  if (!session.copy) return;
  const auto state =
      wait ? std::future_status::ready : session.copy->written.wait_for(std::chrono::seconds(0));
  if (state != std::future_status::ready) return;
  const FileResult written = session.copy->written.get();
  const PendingCopy copy = *std::exchange(session.copy, std::nullopt);
  take_in(session, copy, written);
}

// In turn: neither a work that changes all the time nor one that no disk takes keeps the other
// from its copy.
void tend_copies(Session& session) {
  const bool was_present = session.copy && session.copy->state->work == session.project.work;
  finish_copies(session, false);
  const auto copy_former = [&session] {
    const std::vector<std::int64_t> formers = works_to_copy(session);
    if (!session.copy && !formers.empty())
      try_copy(session, session.works[formers.front()].uncopied, CopyReason::replaced);
  };
  if (was_present) copy_former();
  if (!session.copy) keep_copy(session, CopyReason::current);
  copy_former();
  tell_missing_copy(session);
}

void tell_missing_copy(Session& session) {
  finish_copies(session, false);
  const std::string missing = std::exchange(session.missing_copy, {});
  if (!missing.empty()) session.ports.views.status(missing);
}

std::optional<std::int64_t> uncopied_work(Session& session, const std::vector<std::int64_t>& but) {
  finish_copies(session, true);
  for (const std::int64_t former : works_to_copy(session)) {
    if (std::find(but.begin(), but.end(), former) != but.end()) continue;
    try_copy(session, session.works[former].uncopied, CopyReason::replaced);
    finish_copies(session, true);
    const auto work = session.works.find(former);
    if (work != session.works.end() && work->second.uncopied) return former;
  }
  return std::nullopt;
}

void begin_recovery(Session& session, const std::string& folder) {
  session.recovery_folder = folder;
  session.begun = stamp_of(session.ports.clock.now());
}

void drop_copy(Session& session) {
  finish_copies(session, true);
  Work& work = session.works[session.project.work];
  if (!work.copy.empty()) session.ports.file_system.remove(work.copy);
  work.copy.clear();
  work.copied.reset();
  work.uncopied.reset();
}

std::vector<RecoveryCopy> recovery_copies(Session& session) {
  std::vector<RecoveryCopy> copies;
  for (NamedCopy& each : all_copies(session))
    if (copies.size() < most_copies && !is_of_running_process(session, each))
      copies.push_back(std::move(each.copy));
  return copies;
}

bool recover(Session& session, const RecoveryCopy& copy) {
  std::string bytes;
  const FileResult read =
      session.ports.file_system.read_whole(copy.path, largest_project_file, bytes);
  if (!read) {
    tell_fault(session, copy.path, read);
    return false;
  }
  Project project;
  if (const auto fault = read_project(bytes, project)) {
    tell_fault(session, copy.path, *fault);
    return false;
  }
  project.name = copy.name;
  replace_project(session, std::move(project), {});
  session.works[session.project.work].copy = copy.path;  // until it has one of this run
  session.step = "Recover";
  session.ports.views.status("Recovered: " + copy.name + ", not saved yet");
  keep_copy(session, CopyReason::current);
  return true;
}

}  // namespace tavlo
