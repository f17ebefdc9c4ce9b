#include "files/path_form.h"

#include <algorithm>

#include "files/text_lines.h"

namespace tavlo {

namespace {

bool is_name_character(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// A variable that begins at the front of a text, as it is written there.
struct Mention {
  std::string_view name;
  std::size_t length = 0;  ///< with its signs; 0 for none
};

Mention percent_mention(std::string_view text) {
  const std::size_t end = text.starts_with('%') ? text.find('%', 1) : std::string_view::npos;
  if (end == std::string_view::npos) return {};
  return {text.substr(1, end - 1), end + 1};
}

Mention dollar_mention(std::string_view text) {
  if (text.starts_with("${")) {
    const std::size_t end = text.find('}');
    return end == std::string_view::npos ? Mention{} : Mention{text.substr(2, end - 2), end + 1};
  }
  if (!text.starts_with('$')) return {};
  const auto end = std::find_if_not(text.begin() + 1, text.end(), is_name_character);
  const auto length = static_cast<std::size_t>(end - text.begin());
  return {text.substr(1, length - 1), length};
}

Mention any_mention(std::string_view text) {
  const Mention percent = percent_mention(text);
  return percent.length > 0 ? percent : dollar_mention(text);
}

std::string expanded(std::string_view text, Mention (*mention_at)(std::string_view),
                     const Environment& environment) {
  std::string result;
  while (!text.empty()) {
    const Mention mention = mention_at(text);
    const std::string value =
        mention.name.empty() ? std::string() : environment(std::string(mention.name));
    const std::size_t length = std::max<std::size_t>(mention.length, 1);
    result += value.empty() ? std::string(text.substr(0, length)) : value;
    text.remove_prefix(length);
  }
  return result;
}

std::string without_quotes(std::string text) {
  std::erase_if(text, [](char c) { return c == '\'' || c == '"'; });
  return text;
}

/// Each run of separators from the character number `from` on becomes one.
std::string without_doubles(const std::string& text, char separator, std::size_t from) {
  std::string result = text.substr(0, from);
  for (std::size_t i = from; i < text.size(); ++i)
    if (text[i] != separator || i == from || text[i - 1] != separator) result += text[i];
  return result;
}

}  // namespace

std::string NormalFormWindows(std::string_view path, const Environment& environment) {
  std::string text(trimmed(path));
  std::replace(text.begin(), text.end(), '/', '\\');
  text = without_quotes(expanded(text, percent_mention, environment));
  if (text.empty()) return {};
  // A network path keeps its two in front.
  text = without_doubles(text, '\\', 1);
  if (text.size() >= 3 && text.back() == '\\') text.pop_back();
  const bool has_drive = text.size() >= 2 && text[1] == ':';
  if (has_drive || text.starts_with("\\\\")) return text;
  return environment("HOMEDRIVE") + (text.starts_with('\\') ? "" : "\\") + text;
}

std::string NormalFormPosix(std::string_view path, const Environment& environment) {
  std::string text = without_quotes(expanded(trimmed(path), any_mention, environment));
  if (text.empty()) return {};
  const std::string home = environment("HOME");
  const bool at_home = text == "~" || text.starts_with("~/");
  if (at_home) text.erase(0, std::min<std::size_t>(text.size(), 2));
  if (at_home || text.front() != '/') {
    if (!home.starts_with('/')) return {};
    text = home + "/" + text;
  }
  text = without_doubles(text, '/', 0);
  if (text.size() > 1 && text.back() == '/') text.pop_back();
  return text;
}

}  // namespace tavlo
