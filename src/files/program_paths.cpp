#include "files/program_paths.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "files/command_switches.h"
#include "files/path_test.h"
#include "files/plain_lines.h"
#include "numerics/date_text.h"
#include "project/size_limits.h"

namespace tavlo {

namespace {

constexpr const char* family_pattern = "quell*.exe";
constexpr const char* open_family_pattern = "quell*.ex.";
constexpr const char* paths_file = "QMPaths.txt";
constexpr const char* family_folder = "Quellmarch";

/// Whether a pattern with at most one "*" covers the name.
bool matches(const std::string& name, const std::string& pattern) {
  const std::size_t star = pattern.find('*');
  if (star == std::string::npos) return name == pattern;
  const std::string end = pattern.substr(star + 1);
  return name.size() >= star + end.size() && name.starts_with(pattern.substr(0, star)) &&
         name.ends_with(end);
}

/// Looks at each path once: a test makes a file and removes it.
class TestedPaths {
 public:
  explicit TestedPaths(const PathWorld& world) : world_(world) {}

  /// Brings the path to its normal form.
  PathTest test(std::string& path) {
    fn_PathTest(world_, path, true);
    const auto known = known_.find(path);
    return known != known_.end() ? known->second : test_anew(path);
  }
  PathTest test_anew(std::string& path) { return known_[path] = fn_PathTest(world_, path); }

 private:
  const PathWorld& world_;
  std::map<std::string, PathTest> known_;
};

class PlaceSearch {
 public:
  PlaceSearch(const Ports& ports, const PathSystem& system, const std::string& command_line)
      : ports_(ports),
        system_(system),
        switches_(split_command_line(command_line)),
        environment_([&ports](const std::string& name) { return ports.host.environment(name); }),
        world_{ports.file_system, environment_, system},
        paths_(world_),
        folders_(system.user_folders(environment_)),
        own_temp_(ports.host.temp_folder()) {}

  ProgramPlaces find() {
    take_switches();
    if (places_.IniPath.empty()) take_settings_folder();
    follow_paths_files();
    take_listed();
    if (std::string own = own_folder(); places_.ProgramPath.empty() && holds_family(own, false))
      places_.ProgramPath = own;
    settle_temp_path();
    take_last_resorts();
    return places_;
  }

 private:
  bool is_writable(std::string& path) { return paths_.test(path).writable; }
  bool is_usable(std::string& path) {
    const PathTest tested = paths_.test(path);
    return tested.writable && tested.exists;
  }
  std::string own_folder() {
    std::string folder = ports_.host.program_folder();
    fn_PathTest(world_, folder, true);
    return folder;
  }
  /// An executable without an extension belongs to the family too where programs have none.
  bool is_family_program(const std::string& folder, const std::string& name) {
    return system_.wants_folders && matches(lower_case(name), "quell*") &&
           name.find('.') == std::string::npos &&
           ports_.host.find_program(system_.join(folder, name));
  }
  bool holds_family(const std::string& folder, bool last_letter_is_open) {
    std::vector<std::string> names;
    if (!ports_.file_system.list_folder(folder, names)) return false;
    const char* const pattern = last_letter_is_open ? open_family_pattern : family_pattern;
    return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
      return MatchesFamily(name, pattern) || is_family_program(folder, name);
    });
  }

  void take_switches() {
    given_ini_ = switch_value(switches_, 'c').value_or("");
    given_program_ = switch_value(switches_, 'p').value_or("");
    given_temp_ = switch_value(switches_, 't').value_or("");
    if (is_writable(given_ini_)) places_.IniPath = given_ini_;
    if (is_writable(given_temp_)) places_.TempPath = given_temp_;
    if (paths_.test(given_program_).exists && holds_family(given_program_, false))
      places_.ProgramPath = given_program_;
  }

  void take_settings_folder() {
    std::string root = folders_.settings;
    if (system_.makes_settings_folder && !root.empty()) ports_.file_system.make_folder(root);
    if (!is_writable(root)) {
      if (is_writable(places_.ProgramPath)) places_.IniPath = places_.ProgramPath;
      return;
    }
    std::string folder = system_.join(root, family_folder);
    if (!paths_.test(folder).exists && ports_.file_system.make_folder(folder))
      paths_.test_anew(folder);
    if (is_writable(folder)) places_.IniPath = family_ = folder;
  }

  std::string paths_file_in(const std::string& folder) { return system_.join(folder, paths_file); }

  /// Reads the list of the folder's paths file; false when there is none.
  bool read_list(const std::string& folder) {
    if (folder.empty()) return false;
    FileFacts facts;
    if (!ports_.file_system.look_up(paths_file_in(folder), facts)) return false;
    std::string bytes;
    const FileResult read =
        ports_.file_system.read_whole(paths_file_in(folder), largest_paths_file, bytes);
    // What can't be read is somebody's, and is not written over.
    keeps_list_ = keeps_list_ || facts.is_read_only || !read;
    list_ = plain_lines(bytes, 4);
    for (std::string& line : list_) {
      line = is_one_line(line) ? line : std::string();
      while (line.ends_with(system_.separator)) line.pop_back();
    }
    return true;
  }

  /// A paths file may point on to the real one, and a damaged one back to itself.
  void follow_paths_files() {
    constexpr int most_hops = 16;
    std::set<std::string> visited;
    for (int hop = 0; hop < most_hops && read_list(places_.IniPath); ++hop) {
      visited.insert(same_form(places_.IniPath));
      if (list_.size() < 3) return;
      std::string next = list_[2];
      fn_PathTest(world_, next, true);
      const bool is_there =
          system_.are_same(places_.IniPath, given_ini_) || system_.are_same(places_.IniPath, next);
      if (is_there || next.empty() || !ports_.file_system.exists(paths_file_in(next))) return;
      if (visited.contains(same_form(next))) return;
      places_.IniPath = next;
    }
  }
  std::string same_form(const std::string& path) {
    return system_.case_matters ? path : lower_case(path);
  }

  std::string listed(std::size_t number) { return number < list_.size() ? list_[number] : ""; }

  /// A folder for temporary files must be the person's own: the name of one that went with
  /// a restart can be taken by anybody.
  bool is_own(const std::string& folder) {
    FileFacts facts;
    return ports_.file_system.look_up(folder, facts) && facts.is_own;
  }

  void take_listed() {
    std::string program = listed(0), temp = listed(1), ini = listed(2);
    if (given_program_.empty() && paths_.test(program).exists && holds_family(program, true))
      places_.ProgramPath = program;
    if (given_temp_.empty() && is_usable(temp) && is_own(temp)) places_.TempPath = temp;
    if (given_ini_.empty() && is_usable(ini)) places_.IniPath = ini;
  }

  void try_temp_folders() {
    for (std::string path :
         {own_temp_, folders_.temp, folders_.tmp, family_, places_.ProgramPath, folders_.documents})
      if (places_.TempPath.empty() && is_writable(path)) places_.TempPath = path;
  }

  void settle_temp_path() {
    constexpr int most_questions = 20;
    for (int asked = 0; asked < most_questions; ++asked) {
      if (places_.TempPath.empty()) try_temp_folders();
      write_list();
      if (!places_.TempPath.empty() || !ask_for_temp_path()) return;
    }
  }

  bool ask_for_temp_path() {
    std::string answer =
        ports_.prompts
            .ask_line("Need Temporary Path",
                      "Quellmarch needs a path for temporary files but cannot use the system "
                      "temporary paths.  Please enter a directory\n(e.g, 'C:\\temp') that can be "
                      "used for paths.",
                      folders_.home)
            .value_or("");
    const std::string word = lower_case(answer);
    if (word.empty() || word == "cancel" || word == "quit") return false;
    fn_PathTest(world_, answer, true);
    if (paths_.test_anew(answer).writable) places_.TempPath = answer;
    return true;
  }

  void write_list() {
    const std::string found[] = {places_.ProgramPath, places_.TempPath, places_.IniPath};
    bool differs = false;
    for (std::size_t i = 0; i < 3; ++i) differs = differs || !system_.are_same(found[i], listed(i));
    if (!differs || keeps_list_ || !is_writable(places_.IniPath)) return;
    std::string text;
    for (const std::string& path : found) text += path + "\r\n";
    text += "The paths above are for Program, Temporary Files, and INI files.\r\n" +
            format_date(ports_.clock.now(), "yyyy-mm-dd") + "\r\n";
    // Where it can't be written, these paths hold for this run alone.
    ports_.file_system.write_whole(paths_file_in(places_.IniPath), text);
  }

  void take_last_resorts() {
    if (places_.ProgramPath.empty()) places_.ProgramPath = own_folder();
    if (places_.TempPath.empty())
      places_.TempPath = is_writable(folders_.temp) ? folders_.temp : places_.ProgramPath;
    if (places_.IniPath.empty())
      places_.IniPath = is_writable(folders_.settings) ? folders_.settings : places_.TempPath;
  }

  const Ports& ports_;
  const PathSystem& system_;
  std::vector<CommandSwitch> switches_;
  Environment environment_;
  PathWorld world_;
  TestedPaths paths_;
  UserFolders folders_;
  std::string own_temp_;  ///< made before any path is tested, since a restart may clear it
  // What the switches offer, also where it was refused.
  std::string given_ini_;
  std::string given_program_;
  std::string given_temp_;
  std::string family_;             ///< the family's folder; empty where it can't be had
  std::vector<std::string> list_;  ///< of the paths file read last
  bool keeps_list_ = false;        ///< a paths file on the way may not be changed
  ProgramPlaces places_;
};

}  // namespace

bool MatchesFamily(std::string_view name, std::string_view pattern) {
  std::string form = lower_case(pattern);
  std::string wanted = lower_case(name);
  if (form.ends_with(".ex.") && !wanted.empty()) {
    form.pop_back();
    wanted.pop_back();
  }
  return matches(wanted, form);
}

ProgramPlaces FindPaths(const Ports& ports, const PathSystem& system,
                        const std::string& command_line) {
  return PlaceSearch(ports, system, command_line).find();
}

}  // namespace tavlo
