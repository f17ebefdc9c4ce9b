#include "files/example_files.h"

#include <algorithm>
#include <filesystem>

namespace tavlo {

namespace {

/// Beside the program, installed, and in a build folder.
constexpr const char* folders[] = {"/examples", "/../share/tavlo/examples", "/../../../examples"};

bool is_data(const std::string& name) {
  return (name.ends_with(".txt") || name.ends_with(".csv")) && !name.starts_with("VKL");
}

}  // namespace

std::vector<std::string> example_files(Host& host, FileSystem& files) {
  for (const char* folder : folders) {
    const std::string path = host.program_folder() + folder;
    std::vector<std::string> names;
    if (!files.list_folder(path, names)) continue;
    std::erase_if(names, [](const std::string& name) { return !is_data(name); });
    std::sort(names.begin(), names.end());
    for (std::string& name : names) name = path + "/" + name;
    if (!names.empty()) return names;
  }
  return {};
}

std::optional<std::string> sample_library(Host& host, FileSystem& files) {
  for (const char* folder : folders) {
    const std::string path = host.program_folder() + folder + "/library";
    std::vector<std::string> names;
    if (files.list_folder(path, names)) return std::filesystem::path(path).lexically_normal();
  }
  return std::nullopt;
}

}  // namespace tavlo
