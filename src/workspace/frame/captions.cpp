#include "workspace/frame/captions.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "project/language_texts.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

/// Texts 3 to 16.
constexpr std::size_t first_menu_text = 3;
constexpr std::array menus = {"&File",
                              "&File|&New",
                              "&Edit",
                              "&Edit|&View Columns",
                              "&Options",
                              "&Options|Add &Mark",
                              "&Analysis",
                              "&Analysis|M&odel",
                              "&Analysis|&Method",
                              "&Tools",
                              "&Window",
                              "&Window|&RestoreForm",
                              "&Help",
                              "&Help|&Other Tools"};

/// Texts 17 to 58: the commands by their numbers.
constexpr std::size_t first_command_text = first_menu_text + menus.size();
constexpr std::array commands_in_order = {1,  2,  3,  4,  5,  6,  7,   8,   9,   10,
                                          11, 12,                       // File
                                          13, 14, 15, 16, 18, 19, 20,   // Edit
                                          28, 29, 30, 31, 32, 33, 102,  // Options
                                          34, 49, 50, 35,               // Analysis and Tools
                                          36, 37, 38, 39, 40, 41, 43,  130, 131, 136,  // Window
                                          44, 46};                                     // Help
static_assert(first_command_text + commands_in_order.size() == language_texts);

/// The number of a command's text; 0 for none. The menu calculates as the button does.
std::size_t text_of_command(int id) {
  constexpr int calculate_command = 101;
  if (id == calculate_command) return language_text::calculate;
  const auto found = std::find(commands_in_order.begin(), commands_in_order.end(), id);
  if (found == commands_in_order.end()) return 0;
  return first_command_text + static_cast<std::size_t>(found - commands_in_order.begin());
}

}  // namespace

std::vector<Command> with_captions(std::vector<Command> commands,
                                   const std::vector<std::string>& texts) {
  for (Command& command : commands)
    command.caption = caption_or(texts, text_of_command(command.id), command.caption);
  return commands;
}

QString menu_caption(const QString& path, const std::vector<std::string>& texts) {
  const std::string built_in = from_qt(path.mid(path.lastIndexOf(u'|') + 1));
  const auto found = std::find_if(menus.begin(), menus.end(), [&](const char* menu) {
    return path == QString::fromUtf8(menu);
  });
  const std::size_t number =
      found == menus.end() ? 0 : first_menu_text + static_cast<std::size_t>(found - menus.begin());
  return to_qt(caption_or(texts, number, built_in));
}

}  // namespace tavlo
