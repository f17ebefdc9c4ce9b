// Command table: the numbers of the program's commands and the menus that lead
// to them. An entry whose command does nothing yet is shown disabled.
#pragma once

#include <span>

namespace tavlo {

namespace command {
inline constexpr int separator = 0;
inline constexpr int new_project = 1;
inline constexpr int print = 7;
inline constexpr int print_preview = 8;
inline constexpr int print_setup = 9;
inline constexpr int exit = 12;
inline constexpr int select_all = 13;
inline constexpr int cut = 14;
inline constexpr int copy = 15;
inline constexpr int paste = 16;
inline constexpr int precise_reading = 30;
inline constexpr int report = 31;
inline constexpr int label_style = 32;
inline constexpr int zoom = 33;
inline constexpr int cascade = 36;
inline constexpr int tile_horizontal = 37;
inline constexpr int tile_vertical = 38;
inline constexpr int tile_block = 39;
inline constexpr int close_all = 41;
inline constexpr int restore_all = 43;
inline constexpr int about = 46;
inline constexpr int last = 51;
}  // namespace command

struct MenuEntry {
  int id;
  const char* menu;     ///< path of the menu, "&File|&New"
  const char* caption;  ///< with its mnemonic
  const char* keys;     ///< shortcut, may be empty
};

/// All entries in their order in the menus.
std::span<const MenuEntry> menu_entries();

}  // namespace tavlo
