#include "files/settings_values.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <vector>

#include "files/plain_lines.h"
#include "files/text_lines.h"
#include "numerics/number_text.h"
#include "numerics/rounding.h"

namespace tavlo {

namespace {

constexpr const char* paths = "vPaths";
constexpr const char* options = "vOptions";
constexpr const char* precision = "vPrecision";

std::vector<SettingKey> make_keys() {
  std::vector<SettingKey> keys = {{paths, "INI Path", &ProgramPlaces::IniPath},
                                  {paths, "Program Path", &ProgramPlaces::ProgramPath},
                                  {paths, "Temp Path", &ProgramPlaces::TempPath}};
  for (std::size_t place = 0; place < std::tuple_size_v<decltype(Settings::RecentFiles)>; ++place) {
    const std::string number = std::to_string(place);
    keys.push_back({paths, (place < 10 ? "File0" : "File") + number, RecentFile{place}});
  }
  const SettingKey others[] = {
      {options, "User Mode", &Settings::UserMode},
      {options, "Language", &Settings::Language},
      {options, "Strip toolbar", &Settings::StripToolbar},
      {options, "Ribbon toolbar", &Settings::RibbonToolbar},
      {options, "Project Tree", &Settings::ProjectTree},
      {options, "Status Bar", &Settings::StatusBar},
      {options, "Benard", &Settings::Benard},
      {options, "Negative Suspension", &Settings::NegativeSuspension},
      {options, "Quick Calculation", &Settings::QuickCalculation},
      {options, "Show Last", &Settings::ShowLast},
      {options, "Sort Raw", &Settings::SortRaw},
      {options, "Plot Border Zone", &Settings::PlotBorderZone},
      {precision, "Digits Log", DigitsOf{&Settings::DigitsLog}},
      {precision, "Digits ParBox", DigitsOf{&Settings::DigitsParBox}},
      {precision, "Digits Fit", DigitsOf{&Settings::DigitsFit}},
      {precision, "Digits Data", DigitsOf{&Settings::DigitsData}},
  };
  keys.insert(keys.end(), std::begin(others), std::end(others));
  return keys;
}

/// A system with a decimal comma may have written the number.
double number_in(std::string_view text) {
  std::string plain(text);
  if (plain.find('.') == std::string::npos) std::replace(plain.begin(), plain.end(), ',', '.');
  const auto number = parse_number(plain);
  if (!number) throw RunTimeError(run_time::type_mismatch);
  return *number;
}

bool truth_in(std::string_view text) {
  static const std::map<std::string, bool> words = {
      {"true", true}, {"false", false}, {"-1", true}, {"1", true}, {"0", false}};
  const auto found = words.find(lower_case(text));
  if (found == words.end()) throw RunTimeError(run_time::type_mismatch);
  return found->second;
}

/// A file that nobody has: longer than any system opens.
constexpr std::size_t longest_path = 4096;

struct Reading {
  std::string_view text;
  Settings& settings;
  const Settings factory = {};

  void operator()(std::string ProgramPlaces::*) const {}

  void operator()(RecentFile file) const {
    if (file.place == 0) return;
    const std::string plain = without_control_characters(std::string(text));
    const std::string_view name = trimmed(plain);
    settings.RecentFiles[file.place] = name.size() > longest_path ? "" : name;
  }
  void operator()(std::int16_t Settings::*field) const {
    settings.*field = factory.*field;
    settings.*field = ToInt16(number_in(text));
  }
  /// The number of a language file has two digits.
  void operator()(std::int32_t Settings::*field) const {
    settings.*field = factory.*field;
    const auto number = ToInt32(number_in(text));
    if (number >= 0 && number <= 99) settings.*field = number;
  }
  void operator()(bool Settings::*field) const {
    settings.*field = factory.*field;
    settings.*field = truth_in(text);
  }
  /// A margin takes at most half the plot.
  void operator()(double Settings::*field) const {
    settings.*field = factory.*field;
    const double number = number_in(text);
    if (number >= 0 && number <= 0.5) settings.*field = number;
  }
  void operator()(DigitsOf digits) const {
    constexpr int most = 15;
    settings.*digits.field = factory.*digits.field;
    settings.*digits.field = std::min(std::abs(int{ToInt16(number_in(text))}), most);
  }
};

struct Writing {
  const Settings& settings;
  const ProgramPlaces& places;

  static std::string name(const std::string& text) { return is_one_line(text) ? text : ""; }

  std::string operator()(std::string ProgramPlaces::*field) const { return name(places.*field); }
  std::string operator()(RecentFile file) const { return name(settings.RecentFiles[file.place]); }
  std::string operator()(std::int16_t Settings::*field) const {
    return std::to_string(settings.*field);
  }
  std::string operator()(std::int32_t Settings::*field) const {
    return std::to_string(settings.*field);
  }
  std::string operator()(bool Settings::*field) const { return settings.*field ? "True" : "False"; }
  std::string operator()(double Settings::*field) const { return number_text(settings.*field); }
  std::string operator()(DigitsOf digits) const { return std::to_string(settings.*digits.field); }
};

}  // namespace

std::span<const SettingKey> setting_keys() {
  static const std::vector<SettingKey> keys = make_keys();
  return keys;
}

const SettingKey* find_setting(std::string_view key) {
  const std::string wanted = lower_case(key);
  for (const SettingKey& each : setting_keys())
    if (lower_case(each.key) == wanted) return &each;
  return nullptr;
}

void read_setting(const SettingKey& key, std::string_view text, Settings& settings) {
  std::visit(Reading{text, settings}, key.field);
}

std::string setting_text(const SettingKey& key, const Settings& settings,
                         const ProgramPlaces& places) {
  return std::visit(Writing{settings, places}, key.field);
}

}  // namespace tavlo
