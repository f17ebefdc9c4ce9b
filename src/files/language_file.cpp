#include "files/language_file.h"

#include <algorithm>

#include "files/plain_lines.h"
#include "files/text_lines.h"
#include "project/code_page.h"
#include "project/language_texts.h"
#include "project/size_limits.h"

namespace tavlo {

namespace {

constexpr std::size_t head_lines = 3;
constexpr std::size_t longest_caption = 200;

bool is_language_file(const std::string& name, std::int32_t language) {
  const std::string number = (language < 10 ? "0" : "") + std::to_string(language);
  const std::string lower = lower_case(name);
  return lower.starts_with("vkl" + number) && lower.ends_with(".txt");
}

auto file_of(const std::vector<std::string>& names, std::int32_t language) {
  return std::find_if(names.begin(), names.end(), [language](const std::string& each) {
    return is_language_file(each, language);
  });
}

std::string caption(std::string_view line) {
  std::string text = without_control_characters(std::string(line));
  std::string_view rest = text;
  for (std::size_t taken = 0; taken < longest_caption && !rest.empty(); ++taken)
    next_code_point(rest);
  text.resize(text.size() - rest.size());
  return std::string(trimmed(text));
}

}  // namespace

std::vector<std::string> LoadLanguage(FileSystem& files, const std::string& folder,
                                      std::int32_t language) {
  std::vector<std::string> captions(language_texts);
  std::vector<std::string> names;
  files.list_folder(folder, names);
  const auto name = file_of(names, language);
  if (name == names.end()) return captions;
  std::string bytes;
  if (!files.read_whole(folder + "/" + *name, largest_language_file, bytes)) return captions;
  const auto lines = plain_lines(bytes, head_lines + captions.size() - 1);
  for (std::size_t i = head_lines; i < lines.size(); ++i)
    captions[i - head_lines + 1] = caption(lines[i]);
  return captions;
}

std::vector<Language> find_languages(FileSystem& files, const std::string& folder) {
  constexpr std::int32_t most = 99;
  constexpr std::size_t ending = 4;
  std::vector<std::string> names;
  files.list_folder(folder, names);
  std::vector<Language> languages;
  for (std::int32_t number = 0; number <= most; ++number)
    if (const auto name = file_of(names, number); name != names.end())
      languages.push_back({number, name->substr(0, name->size() - ending)});
  return languages;
}

}  // namespace tavlo
