// Command table: every command of the program on one row: its number, menu, caption, keys,
// why it can't be done now, when it bears a check mark, and what it does. A command that does
// nothing yet is shown grey.
#pragma once

#include <span>
#include <vector>

#include "workspace/frame/command_registry.h"

namespace tavlo {

class MainWindow;

namespace command {
inline constexpr int separator = 0;
inline constexpr int new_project = 1;
inline constexpr int open = 4;
inline constexpr int save = 5;
inline constexpr int print = 7;
inline constexpr int print_preview = 8;
inline constexpr int print_setup = 9;
inline constexpr int options = 10;
inline constexpr int select_all = 13;
inline constexpr int cut = 14;
inline constexpr int copy = 15;
inline constexpr int paste = 16;
inline constexpr int sample = 28;
inline constexpr int undo = 18;
inline constexpr int redo = 19;
inline constexpr int precise_reading = 30;
inline constexpr int label_style = 32;
inline constexpr int zoom = 33;
inline constexpr int compare = 34;
inline constexpr int fit_wizard = 35;
inline constexpr int tile_block = 39;
// Those that have no number in the menus of old.
inline constexpr int calculate = 101;
inline constexpr int sub_populations = 102;
inline constexpr int import_data = 103;
inline constexpr int format_chart = 110;
inline constexpr int zoom_in = 111;
inline constexpr int zoom_back = 112;
inline constexpr int zoom_automatic = 113;
inline constexpr int add_text = 114;
inline constexpr int add_line = 115;
inline constexpr int add_arrow = 116;
inline constexpr int add_symbol = 117;
inline constexpr int edit_mark = 118;
inline constexpr int delete_mark = 119;
inline constexpr int free_box = 120;
inline constexpr int save_chart = 121;
inline constexpr int delete_fit = 122;
inline constexpr int rename = 123;
inline constexpr int delete_record = 124;
inline constexpr int export_report = 210;
inline constexpr int export_log = 211;
inline constexpr int find_in_log = 212;
inline constexpr int log_font = 213;
inline constexpr int first_window = 130;
inline constexpr int insert_rows = 160;
inline constexpr int delete_rows = 161;
inline constexpr int fill_down = 162;
inline constexpr int clear_cells = 163;
inline constexpr int leave_out = 164;
inline constexpr int sort_ascending = 165;
inline constexpr int sort_descending = 166;
inline constexpr int find_cell = 167;
inline constexpr int find_next = 168;
inline constexpr int find_previous = 169;
inline constexpr int copy_with_headings = 170;
inline constexpr int read_value = 240;
inline constexpr int show_row = 241;
inline constexpr int export_file = 140;
inline constexpr int life_panel = 190;
inline constexpr int copy_life = 191;
inline constexpr int mark_life = 192;
inline constexpr int fit_notes = 193;
inline constexpr int show_fit = 194;
inline constexpr int fit_colour = 195;
inline constexpr int first_method = 300;
inline constexpr int first_model = 310;
}  // namespace command

/// All commands in their order in the menus.
std::vector<Command> all_commands(MainWindow& frame);

// What stands in the pop-ups.
std::span<const int> sheet_pop_up();
std::span<const int> heading_pop_up();
std::span<const int> fits_pop_up();
std::span<const int> chart_pop_up();
std::span<const int> tree_pop_up();
std::span<const int> log_pop_up();

}  // namespace tavlo
