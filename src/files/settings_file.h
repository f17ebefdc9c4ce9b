// Settings file: QMV.ini in the folder of the settings. It is read at the start of the
// program and walked again at its end, so that what a person wrote into it survives where
// the stated rules let it.
#pragma once

#include <string>
#include <vector>

#include "files/settings_lines.h"
#include "numerics/run_time_error.h"
#include "ports/file_system.h"
#include "project/program_places.h"
#include "project/settings.h"

namespace tavlo {

/// Its path in the folder.
std::string settings_path(const std::string& folder);

/// Reads the file as lines, or writes them. A file that is not there has no lines. One
/// with more than 4 MiB or most_settings_lines lines is a fault of kind too_large.
FileResult LoadSettingsFile(FileSystem& files, const std::string& path, IniLines& lines,
                            bool saving);

/// A value that could not be read.
struct SettingFault {
  std::size_t line = 0;  ///< from 1
  std::string key;
  std::string value;
  RunTimeError error;
};

/// Applies the keys that stand in their own sections. What can't be read has its factory
/// value and is told.
std::vector<SettingFault> apply_settings(const IniLines& lines, Settings& settings);

/// The whole file with the present values. `versions` are those that have used it.
IniLines standard_settings_lines(const Settings& settings, const ProgramPlaces& places,
                                 const std::string& versions);

/// The lines of a file at the end of a run. Known keys get the present values wherever they
/// stand, but "Digits Data", which an older form of the file leaves to the person. A file
/// of fewer than 41 lines is written anew, and its remarks are lost: other programs that
/// use it count on that shape.
IniLines updated_settings_lines(IniLines lines, const Settings& settings,
                                const ProgramPlaces& places);

/// Writes the present values into the file.
FileResult save_settings(FileSystem& files, const Settings& settings, const ProgramPlaces& places);

}  // namespace tavlo
