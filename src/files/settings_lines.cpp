#include "files/settings_lines.h"

#include "files/plain_lines.h"
#include "files/text_lines.h"

namespace tavlo {

namespace {

/// Without the first and the last character, which need not be a bracket: what is damaged
/// is written back as it was read.
std::string section_name(std::string_view line) {
  line.remove_prefix(1);
  const auto is_inside_character = [](char c) { return (c & 0xC0) == 0x80; };
  while (!line.empty() && is_inside_character(line.back())) line.remove_suffix(1);
  if (!line.empty()) line.remove_suffix(1);
  return std::string(line);
}

IniLine read_line(std::string_view line) {
  const char first = line.empty() ? ' ' : line.front();
  if (first == ' ' || first == ';' || first == '#' || first == '\'')
    return {IniKind::text, std::string(line), {}};
  if (first == '[') return {IniKind::section, section_name(line), {}};
  const std::size_t sign = line.find('=');
  if (sign == std::string_view::npos || sign == 0)
    return {IniKind::text, "##" + std::string(line), {}};
  return {IniKind::entry, std::string(trimmed(line.substr(0, sign))),
          std::string(trimmed(line.substr(sign + 1)))};
}

}  // namespace

IniLines read_settings_lines(std::string_view bytes) {
  IniLines lines;
  for (const std::string& line : plain_lines(bytes, most_settings_lines + 1))
    lines.push_back(read_line(trimmed(line)));
  return lines;
}

std::string write_settings_lines(const IniLines& lines) {
  std::string text;
  for (const IniLine& line : lines) {
    switch (line.Kind) {
      case IniKind::text: text += line.Name; break;
      case IniKind::entry: text += line.Name + " = " + line.Value; break;
      case IniKind::section: text += "[" + line.Name + "]"; break;
    }
    text += "\r\n";
  }
  return text;
}

}  // namespace tavlo
