#include "files/command_switches.h"

#include <algorithm>

#include "files/text_lines.h"

namespace tavlo {

namespace {

bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// The sign that closes a value which begins with `open`; none for plain values.
char closing_sign(char open) {
  if (open == '[') return ']';
  return open == '"' || open == '\'' ? open : '\0';
}

void skip_blanks(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
}

/// Takes the text up to `end` off the front, and what ends it.
std::string take(std::string_view& rest, std::size_t end, std::size_t end_length) {
  const std::string taken(trimmed(rest.substr(0, end)));
  rest.remove_prefix(std::min(end, rest.size()));
  rest.remove_prefix(std::min(end_length, rest.size()));
  return taken;
}

std::string take_closed(std::string_view& rest, char close) {
  rest.remove_prefix(1);
  const std::size_t end = std::min(rest.find(close), rest.size());
  const std::string value(rest.substr(0, end));
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return value;
}

std::string take_value(std::string_view& rest) {
  skip_blanks(rest);
  if (rest.empty()) return {};
  if (const char close = closing_sign(rest.front())) return take_closed(rest, close);
  return rest.front() == '-' ? std::string() : take(rest, rest.find(" -"), 1);
}

std::string take_word(std::string_view& rest) {
  if (const char close = closing_sign(rest.front())) return take_closed(rest, close);
  return take(rest, rest.find_first_of(" \t"), 1);
}

}  // namespace

std::vector<CommandSwitch> split_command_line(std::string_view line) {
  std::vector<CommandSwitch> switches;
  for (skip_blanks(line); !line.empty(); skip_blanks(line)) {
    CommandSwitch found;
    if (line.size() >= 2 && line.front() == '-' && is_letter(line[1])) {
      found.letter = static_cast<char>(line[1] | 0x20);
      line.remove_prefix(2);
      found.value = take_value(line);
    } else {
      found.value = take_word(line);
    }
    switches.push_back(std::move(found));
  }
  return switches;
}

std::optional<std::string> switch_value(const std::vector<CommandSwitch>& switches, char letter) {
  const auto found = std::find_if(switches.rbegin(), switches.rend(),
                                  [letter](const auto& each) { return each.letter == letter; });
  return found == switches.rend() ? std::nullopt : std::optional(found->value);
}

}  // namespace tavlo
