// Settings values: one table of all that the settings file may say, in the file's order:
// section, key, and the setting behind it with the way it becomes text and is read again.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "project/program_places.h"
#include "project/settings.h"

namespace tavlo {

/// The place of a name in Settings::RecentFiles.
struct RecentFile {
  std::size_t place = 0;
};
/// A number of digits, 0 to 15.
struct DigitsOf {
  int Settings::*field;
};
using SettingField =
    std::variant<std::string ProgramPlaces::*, RecentFile, std::int16_t Settings::*,
                 std::int32_t Settings::*, bool Settings::*, double Settings::*, DigitsOf>;

struct SettingKey {
  const char* section;
  std::string key;
  SettingField field;
};

std::span<const SettingKey> setting_keys();

/// The setting of a key in any case; null for others.
const SettingKey* find_setting(std::string_view key);

/// Sets the factory value, then what `text` says. Numbers and words are read with either
/// decimal sign and in any case; what is read is brought into the setting's range. The
/// three folders and the recent file of place 0 are never read. Throws RunTimeError where
/// the text is of another type or beyond it: then the factory value stands.
void read_setting(const SettingKey& key, std::string_view text, Settings& settings);

/// The present value as a line of the file can hold it: empty for a name with line breaks
/// or other control characters.
std::string setting_text(const SettingKey& key, const Settings& settings,
                         const ProgramPlaces& places);

}  // namespace tavlo
