#include "files/plain_lines.h"

#include <algorithm>

#include "project/code_page.h"

namespace tavlo {

namespace {

bool is_control(char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }

/// Byte order marks are nothing to see, and one at the front would go with the next reading.
std::string without_marks(std::string_view line) {
  constexpr std::string_view mark = "\uFEFF";
  std::string text;
  for (std::size_t at = 0; at != std::string_view::npos;) {
    at = line.find(mark);
    text += line.substr(0, at);
    if (at != std::string_view::npos) line.remove_prefix(at + mark.size());
  }
  return text;
}

}  // namespace

std::vector<std::string> plain_lines(std::string_view bytes, std::size_t most) {
  std::string converted;
  if (!is_utf8(bytes)) bytes = converted = utf8_from_ansi(bytes);
  std::vector<std::string> lines;
  while (!bytes.empty() && lines.size() < most) {
    const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
    lines.push_back(without_marks(bytes.substr(0, end)));
    const bool is_pair = bytes.substr(end, 2) == "\r\n";
    bytes.remove_prefix(std::min(end + (is_pair ? 2 : 1), bytes.size()));
  }
  return lines;
}

bool is_one_line(std::string_view text) {
  return is_utf8(text) && std::none_of(text.begin(), text.end(), is_control);
}

std::string without_control_characters(std::string text) {
  std::erase_if(text, is_control);
  return text;
}

std::string lower_case(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

}  // namespace tavlo
