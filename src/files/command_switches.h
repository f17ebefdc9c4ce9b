// Command switches: a command line cut into "-c value" pairs and loose words.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo {

struct CommandSwitch {
  char letter = '\0';  ///< small; none for a word without a switch
  std::string value;
  bool operator==(const CommandSwitch&) const = default;
};

/// A switch is "-" and a letter at the start of the line or behind a blank. Its value goes
/// up to the next " -"; one in quotes or behind "[" to the sign that closes it, or to the
/// end where none does.
std::vector<CommandSwitch> split_command_line(std::string_view line);

/// The value of the last switch of that letter.
std::optional<std::string> switch_value(const std::vector<CommandSwitch>& switches, char letter);

}  // namespace tavlo
