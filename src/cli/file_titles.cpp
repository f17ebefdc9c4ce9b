#include "cli/file_titles.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "cli/shown_text.h"

namespace tavlo::cli {

namespace {

namespace fs = std::filesystem;

constexpr const char* standard_input = "standard input";

std::string short_title(const std::string& file) {
  if (file == "-") return standard_input;
  const std::string name = file.substr(file.rfind('/') + 1);
  const std::size_t dot = name.rfind('.');
  return shown_text(dot == 0 ? name : name.substr(0, dot));
}

/// Which of the texts occur several times.
std::vector<bool> repeated(const std::vector<std::string>& texts) {
  std::vector<std::string> sorted = texts;
  std::sort(sorted.begin(), sorted.end());
  std::vector<bool> found;
  for (const std::string& text : texts) {
    const auto alike = std::equal_range(sorted.begin(), sorted.end(), text);
    found.push_back(alike.second - alike.first > 1);
  }
  return found;
}

fs::path whole_path(const std::string& file) {
  std::error_code no_current_folder;
  const fs::path path = fs::absolute(file, no_current_folder);
  return (no_current_folder ? fs::path(file) : path).lexically_normal();
}

fs::path common_folder(const fs::path& a, const fs::path& b) {
  fs::path common;
  const auto ends = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  for (auto part = a.begin(); part != ends.first; ++part) common /= *part;
  return common;
}

/// Of the files that have a path.
fs::path folder_of(const std::vector<std::string>& files) {
  fs::path folder;
  bool is_first = true;
  for (const std::string& file : files) {
    if (file == "-") continue;
    const fs::path own = whole_path(file).parent_path();
    folder = is_first ? own : common_folder(folder, own);
    is_first = false;
  }
  return folder;
}

/// Length of the whole words, with what parts them, that all titles begin with; each keeps a
/// word of its own.
std::size_t common_words(const std::vector<std::string>& titles) {
  const std::string& first = titles.front();
  std::size_t length = first.size();
  for (const std::string& title : titles) {
    const auto ends = std::mismatch(first.begin(), first.end(), title.begin(), title.end());
    length = std::min(length, static_cast<std::size_t>(ends.first - first.begin()));
    if (length == title.size() && length > 0) --length;
  }
  while (length > 0 && std::string_view(" _-,./").find(first[length - 1]) == std::string::npos)
    --length;
  return length;
}

}  // namespace

std::vector<std::string> file_titles(const std::vector<std::string>& files) {
  std::vector<std::string> titles;
  for (const std::string& file : files) titles.push_back(short_title(file));
  const std::vector<bool> share_name = repeated(titles);
  const std::vector<bool> share_path = repeated(files);
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (share_name[i]) titles[i] = shown_text(files[i]);
    if (share_path[i]) titles[i] += " (" + std::to_string(i + 1) + ")";
  }
  return titles;
}

std::vector<std::string> short_titles(std::vector<std::string> titles) {
  constexpr std::size_t long_title = 32;
  constexpr std::size_t worth_dropping = 8;
  const auto is_long = [](const std::string& title) { return title.size() > long_title; };
  if (titles.size() < 2 || std::none_of(titles.begin(), titles.end(), is_long)) return titles;
  const auto drop_beginning = [&titles](std::string_view mark) {
    const std::size_t length = common_words(titles);
    if (length >= worth_dropping)
      for (std::string& title : titles) title.replace(0, length, mark);
  };
  const auto reverse_all = [&titles] {
    for (std::string& title : titles) std::reverse(title.begin(), title.end());
  };
  drop_beginning("\u2026");
  reverse_all();
  const std::string mark = "\u2026";
  drop_beginning(std::string(mark.rbegin(), mark.rend()));
  reverse_all();
  return titles;
}

std::string joined_titles(const std::vector<std::string>& titles) {
  constexpr std::size_t most = 60;  // bytes that a title has room for in its own letters
  std::string joined;
  for (std::size_t i = 0; i < titles.size(); ++i) {
    if (i > 0 && joined.size() + titles[i].size() > most)
      return joined + " and " + std::to_string(titles.size() - i) + " more";
    joined += (i > 0 ? ", " : "") + titles[i];
  }
  return joined;
}

FileSource source_of(const std::vector<std::string>& files) {
  const fs::path folder = folder_of(files);
  FileSource source{shown_text(folder.string()), ""};
  for (const std::string& file : files) {
    const std::string name =
        file == "-" ? standard_input : whole_path(file).lexically_relative(folder).string();
    source.names += (source.names.empty() ? "" : ", ") + shown_text(name);
  }
  return source;
}

}  // namespace tavlo::cli
