// The law of the settings file: any bytes are read; lines that are written are read back
// unchanged; the settings are within their ranges and outlive any number of runs.
#pragma once

#include <string>
#include <string_view>

#include "files/settings_file.h"

namespace tavlo::test {

inline bool are_in_range(const Settings& settings) {
  const auto digits_fit = [](int digits) { return digits >= 0 && digits <= 15; };
  return digits_fit(settings.DigitsLog) && digits_fit(settings.DigitsParBox) &&
         digits_fit(settings.DigitsFit) && digits_fit(settings.DigitsData) &&
         settings.PlotBorderZone >= 0 && settings.PlotBorderZone <= 0.5 && settings.Language >= 0 &&
         settings.Language <= 99 && settings.RecentFiles[0].empty();
}

/// What breaks the law for these bytes; empty when they keep it.
inline std::string breach_of_settings_law(std::string_view bytes) {
  const IniLines lines = read_settings_lines(bytes);
  if (lines.size() > most_settings_lines) return {};
  if (read_settings_lines(write_settings_lines(lines)) != lines) return "lines are read otherwise";
  Settings settings, again;
  const ProgramPlaces places{"/ini", "/program", "/temp"};
  apply_settings(lines, settings);
  if (!are_in_range(settings)) return "a setting is out of its range";
  const IniLines whole = standard_settings_lines(settings, places, "");
  if (!apply_settings(whole, again).empty()) return "what was written can't be read";
  if (standard_settings_lines(again, places, "") != whole) return "a setting has changed";
  const IniLines ended = updated_settings_lines(lines, settings, places);
  if (ended.size() < 36) return "a part of the file is gone";
  const IniLines reread = read_settings_lines(write_settings_lines(ended));
  return updated_settings_lines(reread, settings, places) == ended ? "" : "a second run changes";
}

}  // namespace tavlo::test
