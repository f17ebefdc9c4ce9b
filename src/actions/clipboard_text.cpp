#include "actions/clipboard_text.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string_view>
#include <vector>

#include "actions/copied_table.h"
#include "actions/pasted_rows.h"
#include "files/field_number.h"
#include "files/text_lines.h"
#include "numerics/number_text.h"
#include "project/code_page.h"
#include "project/size_limits.h"

namespace tavlo {

namespace {

constexpr const char* paste_title = "Tavlo undetermined Quellmarch Weibull Paste.";

using Cells = std::vector<std::string>;

std::string_view without_blanks(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view line_separator(std::string_view text) {
  if (text.find("\r\n") != std::string_view::npos) return "\r\n";
  if (text.find('\r') != std::string_view::npos) return "\r";
  if (text.find('\n') != std::string_view::npos) return "\n";
  const auto control = std::find_if(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' && c != '\t';
  });
  if (control == text.end()) return "\r\n";
  return text.substr(static_cast<std::size_t>(control - text.begin()), 1);
}

/// The character between columns; nothing when the text has one column. A count
/// behind an "x" belongs to the notation of one cell, a decimal comma to a number.
std::optional<char> column_separator(std::string_view text, std::string_view first_line,
                                     bool into_numbers, char decimal_point) {
  if (text.find('\t') != std::string_view::npos) return '\t';
  if (!into_numbers) return std::nullopt;  // words hold blanks and commas
  for (const char candidate : {';', ' ', 'x', 'X', ','})
    if (candidate != decimal_point && first_line.find(candidate) != std::string_view::npos)
      return candidate == 'x' || candidate == 'X' ? std::nullopt : std::optional(candidate);
  return std::nullopt;
}

Cells split(std::string_view line, std::optional<char> separator) {
  Cells cells;
  // "100 x 3" is one cell of the notation, not three columns.
  const bool notation = separator == ' ' && line.find_first_of("xX") != std::string_view::npos;
  if (!separator || notation) return {std::string(without_blanks(line))};
  if (*separator == ' ') line = without_blanks(line);
  while (true) {
    const auto end = line.find(*separator);
    cells.emplace_back(without_blanks(line.substr(0, end)));
    if (end == std::string_view::npos) return cells;
    line.remove_prefix(end + 1);
    if (*separator == ' ') line = without_blanks(line);
  }
}

/// What other programs write for an empty number.
void drop_empty_marks(Cells& cells, const std::vector<int>& columns) {
  for (std::size_t i = 0; i < std::min(cells.size(), columns.size()); ++i)
    if (columns[i] < sheet_column::mode && (cells[i] == "-2.9E+29" || cells[i] == "3.3E+33"))
      cells[i] = "0";
}

void drop_front(std::string_view& text, std::string_view marks) {
  text.remove_prefix(std::min(text.find_first_not_of(marks), text.size()));
}

bool drop_one(std::string_view& text, std::string_view marks) {
  if (text.empty() || marks.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

/// Takes "1,234.5", "1e-3" or "1.5k" off the front; false where no number stands there.
bool drop_number(std::string_view& text) {
  const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789.,"));
  if (digits.find_first_of("0123456789") == std::string_view::npos) return false;
  text.remove_prefix(digits.size());
  if (drop_one(text, "eEdD")) {
    drop_one(text, "+-");
    drop_front(text, "0123456789");
  }
  drop_one(text, "kKmMgGtTpP%");
  return true;
}

/// Whether the whole cell is one entry of the notation, or a count. The reader of what is typed
/// passes over what it does not know: of "12;7" it would make 127.
bool is_number_like(std::string_view cell) {
  drop_front(cell, ">+- ");
  if (!drop_number(cell)) return false;
  drop_front(cell, " ");
  if (drop_one(cell, "xX")) {
    drop_front(cell, " +");
    if (!drop_number(cell)) return false;
  }
  drop_front(cell, " ");
  drop_one(cell, "sS");
  return cell.empty();
}

/// Sheet columns that the cells of a line go to. Behind an X stand the counts:
/// the fraction failed is the program's to calculate, as the order numbers are.
std::vector<int> target_columns(int first_column) {
  if (first_column <= sheet_column::x)
    return {sheet_column::x, sheet_column::fails, sheet_column::susps, sheet_column::mode,
            sheet_column::comment};
  std::vector<int> columns;
  for (int c = first_column; c < sheet_column::count; ++c) columns.push_back(c);
  return columns;
}

/// What is wrong with the first cell that its column can't take, if there is one. Below the
/// first line of numbers words stand in the sheet as they are, and red; a date never does, of
/// which a number might be read.
std::optional<std::string> unexpected_cell(const Cells& cells, const std::vector<int>& columns,
                                           bool is_first) {
  for (std::size_t i = 0; i < std::min(cells.size(), columns.size()); ++i) {
    if (columns[i] >= sheet_column::mode) continue;
    if (is_date_or_time_of_day(cells[i]))
      return "\"" + cells[i] + "\" is a date or a time of day; a number is wanted.";
    if (is_number_like(cells[i])) continue;
    if (!is_first) continue;
    if (!cells[i].empty())
      return "\"" + std::string(utf8_front(cells[i], 60)) + "\" is not a number.";
    if (columns[i] == sheet_column::x) return "the time is missing.";
  }
  return std::nullopt;
}

/// The shape of a pasted text, found from its beginning.
struct PastedText {
  std::string_view text;
  std::string_view line_end;
  std::optional<char> separator;
  std::vector<int> columns;  ///< of the sheet, see target_columns
  int most_rows;             ///< that are taken
  bool fills_sheet;          ///< these are all that there is room for
};

PastedText shape_of(std::string_view text, int first_column, int most_rows, bool fills_sheet,
                    char decimal_point) {
  const std::string_view line_end = line_separator(text);
  const std::vector<int> columns = target_columns(first_column);
  const bool into_numbers = columns.front() < sheet_column::mode;
  return {text,
          line_end,
          column_separator(text, text.substr(0, text.find(line_end)), into_numbers, decimal_point),
          columns,
          most_rows,
          fills_sheet};
}

/// Takes the next line off the front of `text`.
std::string_view take_line(std::string_view& text, std::string_view line_end) {
  const auto end = text.find(line_end);
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + line_end.size());
  return line;
}

/// Calls `act(line number, cells)` for each line that is not blank, until it
/// answers false.
template <class Act>
void for_each_line(const PastedText& pasted, Act act) {
  std::string_view text = pasted.text;
  for (long number = 1; !text.empty(); ++number) {
    const std::string_view line = take_line(text, pasted.line_end);
    if (without_blanks(line).empty()) continue;
    Cells cells = split(line, pasted.separator);
    drop_empty_marks(cells, pasted.columns);
    if (!act(number, cells)) return;
  }
}

/// A line of any length would become as many cells as it has marks, or one endless cell.
std::string fault_of_long_line(const PastedText& pasted) {
  std::string_view text = pasted.text;
  for (long number = 1; !text.empty(); ++number)
    if (take_line(text, pasted.line_end).size() > longest_line)
      return "Line " + std::to_string(number) + ": the line is too long.";
  return {};
}

std::string words_of_most_rows(const PastedText& pasted) {
  const std::string rows =
      std::to_string(pasted.most_rows) + (pasted.most_rows == 1 ? " row" : " rows");
  return pasted.fills_sheet ? "There is room for " + rows + " here."
                            : "There are more than " + rows + ".";
}

/// What the sheet can't take of the text; empty when it can take all.
std::string fault_of(const PastedText& pasted) {
  std::string fault = fault_of_long_line(pasted);
  if (!fault.empty()) return fault;
  int rows = 0;
  for_each_line(pasted, [&](long number, const Cells& cells) {
    if (const auto bad = unexpected_cell(cells, pasted.columns, rows == 0)) {
      fault = "Unexpected data type\nLine " + std::to_string(number) + ": " + *bad;
    } else if (++rows > pasted.most_rows) {
      fault = words_of_most_rows(pasted);
    }
    return fault.empty();
  });
  return fault;
}

/// True when a sheet can take every cell.
bool is_sheet_text(const PastedText& pasted) {
  return pasted.text.find('\0') == std::string_view::npos && fault_of(pasted).empty();
}

/// Words where a number is wanted stand as they are.
void enter_cell(DataSheet& sheet, int row, int column, const std::string& cell) {
  if (column >= sheet_column::mode || cell.empty() || is_number_like(cell))
    sheet.enter(row, column, cell);
  else
    sheet.hold_text(row, column, cell);
}

void enter_line(DataSheet& sheet, int row, const Cells& cells, const std::vector<int>& columns) {
  const bool from_x = columns.front() == sheet_column::x;
  // What stood in the row must not lend its counts to the new time.
  if (from_x) sheet.clear({row, sheet_column::x, row, sheet_column::susps});
  if (from_x) sheet.leave_out({row, sheet_column::x, row, sheet_column::x}, false);
  enter_cell(sheet, row, columns.front(), cells.front());
  // Columns for both counts say all: an empty one is none, not the usual one.
  const bool has_both_counts =
      from_x && cells.size() > 2 && !(cells[1].empty() && cells[2].empty());
  if (has_both_counts) sheet.clear({row, sheet_column::fails, row, sheet_column::susps});
  // Behind a suspension a lone second column tells how many there are.
  const bool counts_suspensions =
      from_x && cells.size() == 2 && !sheet.text(row, sheet_column::susps).empty();
  for (std::size_t i = 1; i < std::min(cells.size(), columns.size()); ++i) {
    if (cells[i].empty()) continue;
    enter_cell(sheet, row, counts_suspensions ? int{sheet_column::susps} : columns[i], cells[i]);
  }
}

/// What a paste came to: the row behind the last, and why nothing was entered, if so.
struct PasteEnd {
  int row;
  std::string fault;
  std::string unused = {};  ///< what is to be said of columns that were not read
};

/// Cells as they stand, into whichever columns.
PasteEnd paste_cells(DataSheet& sheet, int row, const PastedText& pasted) {
  if (std::string fault = fault_of(pasted); !fault.empty()) return {row, std::move(fault)};
  for_each_line(pasted, [&](long, const Cells& cells) {
    enter_line(sheet, row++, cells, pasted.columns);
    return true;
  });
  return {row, {}};
}

/// A text for the X column goes through the reader of all data texts; what only a sheet
/// takes, as 1.5k and empty counts, is then entered cell by cell.
PasteEnd paste_text(Session& session, DataSheet& sheet, int row, std::string_view text,
                    int most_rows) {
  const int room = sheet.farthest_row() - row + 1;
  const bool fills_sheet = room < most_rows;
  most_rows = std::min(most_rows, room);
  const PastedText pasted = shape_of(text, sheet.column(), most_rows, fills_sheet,
                                     session.settings.punctuation.DecimalPoint);
  if (pasted.columns.front() != sheet_column::x || without_blanks(text).empty())
    return paste_cells(sheet, row, pasted);
  DataRows rows;
  bool cancelled = false;
  const auto fault = read_pasted_rows(text, session, most_rows, rows, cancelled);
  if (fault && fault->stopped) session.ports.views.status("Stopped; nothing was entered.");
  if (cancelled || (fault && fault->stopped)) return {row, {}};
  if (fault && is_sheet_text(pasted)) return paste_cells(sheet, row, pasted);
  if (fault && fills_sheet && fault->what == words_of_too_many(static_cast<std::size_t>(most_rows)))
    return {row, words_of_most_rows(pasted)};
  if (fault) return {row, "Line " + std::to_string(fault->line) + ": " + fault->what + "."};
  enter_rows(sheet, row, rows);
  return {row + static_cast<int>(rows.rows.size()), {}, words_of_unused(rows)};
}

/// The mark of a suspension is that of a quoted line too: a mail that is pasted is all suspensions.
std::string words_of_quotes(const DataSheet& sheet, int first, int last, std::string_view text) {
  if (first == last || !without_blanks(text).starts_with("> ")) return {};
  for (int row = first; row <= last; ++row)
    if (!sheet.is_empty(row, sheet_column::fails)) return {};
  return "; each line begins with \">\", the mark of a suspension";
}

/// Rows that were selected with those that the paste fills are easily taken for replaced.
std::string words_of_rows_left(const DataSheet& sheet, const GridBlock& selected, int next) {
  const int last = std::min(selected.last_row, sheet.last_row());
  if (last < next) return {};
  const bool is_one = last == next;
  return (is_one ? "; row " + std::to_string(next) + " stays"
                 : "; rows " + std::to_string(next) + " to " + std::to_string(last) + " stay") +
         " as before";
}

/// Enters a text of at most so many rows as the step of that name; `source` stands before what
/// is wrong with it.
void enter_text(Session& session, int data_index, std::string_view text, int most_rows,
                const char* step, const std::string& source) {
  DataSheet& sheet = *session.gDataForm(data_index);
  sheet.end_edit();
  const GridBlock selected = sheet.selection();
  const int first = std::max(sheet.row(), 1);
  const PasteEnd end = paste_text(session, sheet, first, text, most_rows);
  if (!end.fault.empty())
    session.ports.prompts.show(
        {paste_title, source + end.fault, BoxIcon::exclamation, BoxButtons::ok});
  if (end.row == first) return;
  sheet.follow_rows();
  session.step = step;
  session.ports.views.status(words_of_rows(sheet, first, end.row - 1) +
                             words_of_rows_left(sheet, selected, end.row) +
                             words_of_quotes(sheet, first, end.row - 1, text) +
                             (end.unused.empty() ? "" : "; " + end.unused));
}

}  // namespace

Box too_long_paste() {
  return {paste_title,
          "Sorry. The clipboard text is too big to paste. At most " +
              std::to_string(largest_pasted_text >> 20) + " MiB are taken; save it as a file and " +
              "open that.",
          BoxIcon::exclamation, BoxButtons::ok};
}

void PasteClip(Session& session, int data_index) {
  guarded(session.errors, error_words("Paste error: ", "PasteClip routine:"), [&] {
    Clipboard& clipboard = session.ports.clipboard;
    if (clipboard.is_too_long()) {
      session.ports.prompts.show(too_long_paste());
      return;
    }
    const std::string text = clipboard.text();
    if (!text.empty()) return enter_text(session, data_index, text, most_pasted_rows, "Paste", {});
    session.ports.views.status(clipboard.holds_only_picture()
                                   ? "The clipboard holds a picture; copy the rows as text."
                                   : "There is no text on the clipboard.");
  });
}

void drop_text(Session& session, int data_index, const std::string& text) {
  guarded(session.errors, error_words("Drop error: ", "drop_text routine:"),
          [&] { enter_text(session, data_index, text, most_pasted_rows, "Drop", {}); });
}

void drop_file(Session& session, int data_index, const std::string& path) {
  guarded(session.errors, error_words("Drop error: ", "drop_file routine:"), [&] {
    std::string bytes;
    const FileResult read = session.ports.file_system.read_whole(path, largest_data_file, bytes);
    if (read) return enter_text(session, data_index, bytes, most_data_rows, "Drop", path + "\n");
    session.ports.prompts.show(
        {paste_title, path + "\n" + read.message, BoxIcon::exclamation, BoxButtons::ok});
  });
}

namespace {

/// The row in the notation; empty where it has no time, no units at it, or what can't be read.
std::string notation_of_row(const DataSheet& grid, int row) {
  const std::string x(without_blanks(grid.text(row, sheet_column::x)));
  for (const int column : {sheet_column::x, sheet_column::fails, sheet_column::susps})
    if (x.empty() || grid.is_unreadable(row, column)) return {};
  std::string text;
  const auto add = [&](const char* mark, const std::string& count) {
    const double units = parse_number(count).value_or(0.0);
    if (units > 0.0) text += mark + x + (units != 1.0 ? "x" + count : "") + "\r\n";
  };
  add("", grid.text(row, sheet_column::fails));
  add(">", grid.text(row, sheet_column::susps));
  return text;
}

/// `skipped` receives how many rows that hold something it can't say.
std::string notation_of_rows(const DataSheet& grid, const GridBlock& block, int& skipped) {
  std::string text;
  for (int r = std::max(block.first_row, 1); r <= std::min(block.last_row, grid.last_row()); ++r) {
    const std::string row = notation_of_row(grid, r);
    const auto holds = [&](int column) { return !grid.is_empty(r, column); };
    skipped += row.empty() &&
               (holds(sheet_column::x) || holds(sheet_column::fails) || holds(sheet_column::susps));
    text += row;
  }
  return text;
}

bool holds_times(const GridBlock& block) {
  return block.first_column <= sheet_column::x && block.last_column >= sheet_column::x;
}

/// True where a cell of the block still shows something that was typed.
bool holds_anything(const DataSheet& sheet, const GridBlock& block) {
  for (int r = std::max(block.first_row, 1); r <= std::min(block.last_row, sheet.last_row()); ++r)
    for (int c = std::max(block.first_column, 1); c <= block.last_column; ++c)
      if (!sheet.is_empty(r, c)) return true;
  return false;
}

std::string cells_as_they_stand(const DataSheet& grid, const GridBlock& block) {
  std::string text;
  bool is_empty = true;
  for (int r = std::max(block.first_row, 1); r <= std::min(block.last_row, grid.last_row()); ++r) {
    for (int c = block.first_column; c <= block.last_column; ++c) {
      text += (c == block.first_column ? "" : "\t") + grid.text(r, c);
      is_empty &= grid.text(r, c).empty();
    }
    text += "\r\n";
  }
  return is_empty ? std::string() : text;
}

/// A row that is left out is copied as any other; what takes it doesn't know of that.
void tell_copied(Session& session, const DataSheet& sheet, const GridBlock& block, int skipped) {
  int rows = 0, left_out = 0;
  for (int row = std::max(block.first_row, 1); row <= std::min(block.last_row, sheet.last_row());
       ++row, ++rows)
    left_out += sheet.is_left_out(row) ? 1 : 0;
  rows -= skipped;
  std::string words = "Copied: " + std::to_string(rows) + (rows == 1 ? " row" : " rows");
  if (skipped > 0)
    words += "; not " + std::to_string(skipped) + " without a time and units that can be read";
  if (left_out > 0)
    words += ", " + std::to_string(left_out) + " of them left out of the analysis here";
  session.ports.views.status(words);
}

}  // namespace

bool CopyClip(Session& session, int data_index) {
  const DataSheet& grid = *session.gDataForm(data_index);
  const GridBlock block = grid.selection();
  int skipped = 0;
  const std::string text = holds_times(block) ? notation_of_rows(grid, block, skipped)
                                              : cells_as_they_stand(grid, block);
  if (text.empty()) {
    session.ports.views.status("Nothing was copied: no cell that is selected can be.");
    return false;
  }
  session.ports.clipboard.set_text({text, {}, {}});
  tell_copied(session, grid, block, skipped);
  return true;
}

void CutClip(Session& session, int data_index) {
  if (!CopyClip(session, data_index)) return;
  session.step = "Cut";
  DataSheet& sheet = *session.gDataForm(data_index);
  const GridBlock block = sheet.selection();
  if (!holds_times(block)) return sheet.clear(block);
  // From the end: a cleared last row takes blank ones above it along.
  for (int row = std::min(block.last_row, sheet.last_row()); row >= block.first_row; --row) {
    if (row > sheet.last_row() || notation_of_row(sheet, row).empty()) continue;
    for (const int column : {sheet_column::x, sheet_column::fails, sheet_column::susps})
      sheet.clear({row, column, row, column});
  }
  if (holds_anything(sheet, block))
    session.ports.views.status("Cut: times and counts. What they are not, as modes, stays.");
}

void copy_table(Session& session, int data_index) {
  const DataSheet& sheet = *session.gDataForm(data_index);
  GridBlock block = sheet.selection();
  block.last_row = std::clamp(sheet.last_row(), block.first_row, block.last_row);
  session.ports.clipboard.set_text(copied_table(sheet, block, session.settings.punctuation));
  tell_copied(session, sheet, block, 0);
}

void CopyClip(Session& session, const CellTable& grid) {
  session.ports.clipboard.set_text(
      copied_table(grid, grid.selection(), session.settings.punctuation));
}

}  // namespace tavlo
