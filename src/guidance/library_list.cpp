#include "guidance/library_list.h"

#include <algorithm>

#include "files/plain_lines.h"
#include "files/text_lines.h"
#include "guidance/library.h"
#include "project/size_limits.h"

namespace tavlo {

namespace {

constexpr std::size_t most_libraries = 1000;

std::string list_path(const std::string& ini_folder) { return ini_folder + "/QMWLib.ini"; }

/// The folder that a line means, without a separator at its end.
std::string folder_of_line(FileSystem& files, std::string line) {
  while (line.size() > 1 && (line.back() == '/' || line.back() == '\\')) line.pop_back();
  FileFacts facts;
  const bool is_file = files.look_up(line, facts) && !facts.is_folder;
  return is_file ? split_path(line).folder : line;
}

}  // namespace

std::vector<std::string> read_library_list(FileSystem& files, const std::string& ini_folder) {
  std::string bytes;
  std::vector<std::string> folders;
  if (!files.read_whole(list_path(ini_folder), largest_settings_file, bytes)) return folders;
  for (const std::string& line : plain_lines(bytes, most_libraries))
    if (const auto name = trimmed(line); !name.empty())
      folders.push_back(folder_of_line(files, std::string(name)));
  return folders;
}

std::optional<std::string> last_library(FileSystem& files, const std::vector<std::string>& list) {
  const auto last = std::find_if(list.rbegin(), list.rend(), [&](const std::string& folder) {
    return find_library_header(files, folder).has_value();
  });
  return last == list.rend() ? std::nullopt : std::optional(*last);
}

FileResult remember_library(FileSystem& files, const std::string& ini_folder,
                            const std::string& folder) {
  if (!is_one_line(folder)) return {};
  std::string bytes;
  const FileResult read = files.read_whole(list_path(ini_folder), largest_settings_file, bytes);
  // A list that can't be read would be lost.
  if (!read && read.fault != FileFault::not_found) return read;
  std::vector<std::string> list = read_library_list(files, ini_folder);
  if (!list.empty() && list.back() == folder) return {};
  std::erase(list, folder);
  list.push_back(folder);
  std::string text;
  for (const std::string& line : list) text += line + "\r\n";
  return files.write_whole(list_path(ini_folder), text);
}

}  // namespace tavlo
