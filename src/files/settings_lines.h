// Settings lines: the settings file as a list of lines, so that remarks, unknown keys and
// the order of all lines outlive a run of the program. Pure text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavlo {

enum class IniKind { text, entry, section };

struct IniLine {
  IniKind Kind = IniKind::text;
  std::string Name;   ///< the key, the section's name, or the line itself
  std::string Value;  ///< of a key
  bool operator==(const IniLine&) const = default;
};
using IniLines = std::vector<IniLine>;

/// The most lines that a settings file may have.
inline constexpr std::size_t most_settings_lines = 20000;

/// A line that is no remark, section or key becomes a remark marked by "##". Lines behind
/// number most_settings_lines + 1 are not read.
IniLines read_settings_lines(std::string_view bytes);

/// UTF-8 with CR LF behind each line.
std::string write_settings_lines(const IniLines& lines);

}  // namespace tavlo
