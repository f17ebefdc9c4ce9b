// ProgramPlaces: the three folders that the program works in, found once at its start.
#pragma once

#include <string>

namespace tavlo {

struct ProgramPlaces {
  std::string IniPath;      ///< of the settings; empty before the start has found it
  std::string ProgramPath;  ///< of the program's own files
  std::string TempPath;     ///< of files that nobody misses
  /// Whether the settings file could be read or made. One that could not is left as it is
  /// at the program's end, or the person's settings would give way to defaults.
  bool settings_are_read = true;
};

}  // namespace tavlo
