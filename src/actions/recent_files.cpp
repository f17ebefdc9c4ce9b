#include "actions/recent_files.h"

#include <algorithm>

#include "project/code_page.h"

namespace tavlo {

namespace {

constexpr const char* separators = "\\/";
constexpr std::size_t characters_shown = 21;

/// The text from one of its characters on, and up to one; characters count, not bytes.
std::size_t characters_in(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

std::string_view front_of(std::string_view text, std::size_t characters) {
  std::string_view rest = text;
  for (; characters > 0 && !rest.empty(); --characters) next_code_point(rest);
  return text.substr(0, text.size() - rest.size());
}

}  // namespace

void add_recent_file(Settings& settings, const std::string& path) {
  auto& names = settings.RecentFiles;
  const auto first = names.begin() + 1;
  auto place = std::find(first, names.end(), path);
  if (place == names.end()) place = names.end() - 1;
  std::move_backward(first, place, place + 1);
  *first = path;
}

std::string bare_file_name(const std::string& path) {
  const std::size_t mark = path.find_last_of(separators);
  return mark == std::string::npos ? path : path.substr(mark + 1);
}

std::string file_title(const std::string& path) {
  const std::string name = bare_file_name(path);
  return name.substr(0, name.find_last_of('.'));
}

std::string short_file_name(const std::string& path) {
  const std::string name = bare_file_name(path);
  const std::string_view folder = std::string_view(path).substr(0, path.size() - name.size());
  const std::string separator = folder.empty() ? "\\" : std::string(1, folder.back());
  // As if a separator stood in front of the path.
  const std::size_t at = characters_in(folder) + 1;
  if (characters_in(path) - at >= characters_shown && characters_in(path) > at) return "..." + name;
  if (characters_in(path) >= characters_shown && at >= characters_shown)
    return std::string(front_of(path, at - 20)) + "..." + separator + name;
  return path;
}

}  // namespace tavlo
