#include "files/settings_file.h"

#include "files/plain_lines.h"
#include "files/settings_values.h"
#include "project/size_limits.h"
#include "project/version_words.h"

namespace tavlo {

namespace {

constexpr std::size_t fewest_kept_lines = 41;

FileResult read_lines(FileSystem& files, const std::string& path, IniLines& lines) {
  std::string bytes;
  const FileResult read = files.read_whole(path, largest_settings_file, bytes);
  if (read.fault == FileFault::not_found) return {};
  if (!read) return read;
  lines = read_settings_lines(bytes);
  if (lines.size() <= most_settings_lines) return {};
  lines.clear();
  return {FileFault::too_large,
          "the file is too large (at most " + std::to_string(most_settings_lines) + " lines)"};
}

/// The versions of a file with the present one in front, if it is not there already.
std::string with_present_version(const std::string& versions) {
  const std::string present(file_version);
  if (lower_case(versions).find(lower_case(present)) != std::string::npos) return versions;
  return versions.empty() ? present : present + ", " + versions;
}

/// The walk compares with "digits data = 5", which no key equals.
bool is_updated(std::string_view key) { return key != "digits data"; }

void update(IniLine& line, const Settings& settings, const ProgramPlaces& places) {
  const std::string key = lower_case(line.Name);
  if (key == "previous versions") line.Value = with_present_version(line.Value);
  if (key == "version") line.Value = file_version;
  if (const SettingKey* known = find_setting(key); known && is_updated(key))
    line.Value = setting_text(*known, settings, places);
}

}  // namespace

std::string settings_path(const std::string& folder) { return folder + "/QMV.ini"; }

FileResult LoadSettingsFile(FileSystem& files, const std::string& path, IniLines& lines,
                            bool saving) {
  if (saving) return files.write_whole(path, write_settings_lines(lines));
  lines.clear();
  return read_lines(files, path, lines);
}

std::vector<SettingFault> apply_settings(const IniLines& lines, Settings& settings) {
  std::vector<SettingFault> faults;
  std::string section;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const IniLine& line = lines[i];
    if (line.Kind == IniKind::section) section = lower_case(line.Name);
    if (line.Kind != IniKind::entry) continue;
    const SettingKey* key = find_setting(line.Name);
    if (!key || section != lower_case(key->section)) continue;
    try {
      read_setting(*key, line.Value, settings);
    } catch (const RunTimeError& error) {
      faults.push_back({i + 1, line.Name, line.Value, error});
    }
  }
  return faults;
}

IniLines standard_settings_lines(const Settings& settings, const ProgramPlaces& places,
                                 const std::string& versions) {
  IniLines lines = {{IniKind::section, "vProgram", {}},
                    {IniKind::entry, "Previous Versions", versions},
                    {IniKind::entry, "Version", std::string(file_version)}};
  std::string section;
  for (const SettingKey& key : setting_keys()) {
    if (section != key.section) lines.push_back({IniKind::section, section = key.section, {}});
    lines.push_back({IniKind::entry, key.key, setting_text(key, settings, places)});
  }
  return lines;
}

IniLines updated_settings_lines(IniLines lines, const Settings& settings,
                                const ProgramPlaces& places) {
  std::string versions(file_version);
  for (IniLine& line : lines) {
    if (line.Kind != IniKind::entry) continue;
    update(line, settings, places);
    if (lower_case(line.Name) == "previous versions") versions = line.Value;
  }
  if (lines.size() >= fewest_kept_lines) return lines;
  return standard_settings_lines(settings, places, versions);
}

FileResult save_settings(FileSystem& files, const Settings& settings, const ProgramPlaces& places) {
  const std::string path = settings_path(places.IniPath);
  IniLines lines;
  if (FileResult read = LoadSettingsFile(files, path, lines, false); !read) return read;
  lines = updated_settings_lines(std::move(lines), settings, places);
  return LoadSettingsFile(files, path, lines, true);
}

}  // namespace tavlo
