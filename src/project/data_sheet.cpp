#include "project/data_sheet.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "numerics/number_reading.h"
#include "numerics/number_text.h"
#include "numerics/unheard_reports.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

struct Column {
  const char* heading;
  const char* hint;
};

constexpr std::array<Column, sheet_column::count> columns = {{
    {"", "Order number of data points"},
    {"Data X", "Data X: Enter time to failure in this column."},
    {"Data Y", "Data Y: % Failed. (Usually calculated by program)"},
    {"# Fail", "Number failed. Enter quantity failed at time."},
    {"# Susp", "Number Suspended. Enter quantity suspended at time."},
    {"Fail mode",
     "Failure mode. Enter the failure mode if known. (chipped, bent, broken, short, open, etc.)."},
    {"Comments", "Enter any comments, such as Test type, part number, vendor"},
}};

const Column& column_facts(int column) {
  const auto last = static_cast<int>(columns.size()) - 1;
  return columns[static_cast<std::size_t>(std::clamp(column, 0, last))];
}

std::string trimmed(const std::string& text) {
  constexpr const char* blanks = " \t\r\n";
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string lower_case(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

/// One entry of the data notation, taken apart: "100", "100x3", ">100x5", "-100".
struct Entry {
  bool suspension = false;
  bool has_count = false;
  std::string value;
  std::string count;
};

Entry take_apart(const std::string& typed, bool negative_is_suspension) {
  Entry entry;
  entry.value = lower_case(trimmed(typed));
  if (negative_is_suspension && entry.value.starts_with('-')) {
    entry.suspension = true;
    entry.value.erase(0, 1);
  } else {
    entry.suspension = entry.value.find_first_of("s>") != std::string::npos;
  }
  if (const auto x = entry.value.find('x'); x != std::string::npos) {
    entry.has_count = true;
    entry.count = entry.value.substr(x + 1);
    entry.value.erase(x);
  }
  return entry;
}

std::string without_marks(std::string text) {
  std::erase_if(text, [](char c) { return c == '>' || c == 's'; });
  return text;
}

/// A time as it was typed: 7.1 is not the 7.09999990 that 32 bits make of it.
std::string text_of_time(float time) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, time).ptr;
  return number_text(parse_number({digits, end}).value_or(time));
}

std::string rank_pattern(const Settings& settings) {
  return "0." + std::string(static_cast<std::size_t>(std::clamp(settings.DigitsData, 0, 15)), '0');
}

/// False where something else stands between the digits, as in "12 34", "1,5" or "5>7": whoever
/// reads on past it makes another number.
bool is_in_one_piece(std::string_view text) {
  constexpr std::string_view digits = "0123456789";
  const std::size_t first = text.find_first_of(digits);
  if (first == std::string_view::npos) return true;
  const std::size_t last = text.find_last_of(digits);
  const bool has_thousands = are_thousands(text, ',');
  for (std::size_t at = first; at < last; ++at) {
    const bool follows_exponent =
        std::string_view("eEdD").find(text[at - (at > first)]) != std::string_view::npos;
    const std::string_view may_stand = follows_exponent ? "0123456789+-" : "0123456789.eEdD";
    const bool parts_thousands = text[at] == ',' && has_thousands;
    if (may_stand.find(text[at]) == std::string_view::npos && !parts_thousands) return false;
  }
  return true;
}

/// False where words or other signs stand around the digits, as in "700abc" and "$5": only a sign
/// before them, and behind them a letter that multiplies.
bool is_bare_number(std::string_view text) {
  const std::size_t first = text.find_first_of("0123456789.");
  const std::size_t last = text.find_last_of("0123456789.");
  if (first == std::string_view::npos) return true;
  const std::string_view before = text.substr(0, first);
  const std::string_view behind = text.substr(last + 1);
  const std::size_t letter = behind.find_first_not_of(' ');
  const bool multiplies =
      letter == std::string_view::npos ||
      (behind.find_first_not_of("kKmMgGtTpP%", letter) == std::string_view::npos &&
       behind.size() - letter == 1);
  return before.find_first_not_of("+- ") == std::string_view::npos && multiplies;
}

bool has_digit(const std::string& text, const char* digits) {
  return text.find_first_of(digits) != std::string::npos;
}

/// Times and ranks are held in 32 bits: others would become 0 or infinite.
bool fits_in_cell(int column, double number) {
  if (column == sheet_column::fails || column == sheet_column::susps) return true;
  const double size = std::fabs(number);
  return size == 0 || (size <= std::numeric_limits<float>::max() &&
                       size >= static_cast<double>(std::numeric_limits<float>::denorm_min()));
}

/// A time that is typed over another leaves the row counts that it has; the person is told where
/// these are more than one failure.
std::string words_of_counts(const SheetRow& before, const SheetRow& row, const std::string& name) {
  const bool had_counts = before.has(sheet_column::fails) || before.has(sheet_column::susps);
  const bool is_one_failure = row.failures == 1 && !(row.suspensions > 0);
  if (!had_counts || is_one_failure) return {};
  const bool are_kept = before.failures == row.failures && before.suspensions == row.suspensions;
  const std::string counts =
      number_text(row.failures) + " in # Fail, " + number_text(row.suspensions) + " in # Susp";
  if (are_kept) return name + " keeps its counts: " + counts + ".";
  const bool has_both = row.failures > 0 && row.suspensions > 0;
  return has_both ? name + " now has " + counts + ". Clear what does not hold." : std::string();
}

constexpr bool is_numeric(int column) {
  return column >= sheet_column::x && column <= sheet_column::susps;
}

}  // namespace

DataSheet::DataSheet(Project& project, const Settings& settings, std::int32_t data_id)
    : project_(project), settings_(settings), data_id_(data_id) {
  follow_rows();
  go_to(1, sheet_column::x);
}

const char* DataSheet::hint(int column) { return column_facts(column).hint; }
const char* DataSheet::heading(int column) { return column_facts(column).heading; }

DataSet& DataSheet::data() { return project_.data(find_data(project_, data_id_)); }
const DataSet& DataSheet::data() const { return project_.data(find_data(project_, data_id_)); }

int DataSheet::rows() const { return shown_rows_ + 1; }

// --- what the cells show

std::string DataSheet::text(int row, int column) const {
  check(row, column);
  if (row == 0) return heading(column);
  if (column == sheet_column::order) return std::to_string(row);
  const DataSet& set = data();
  const int index = row - 1;
  if (index >= last_row()) return {};
  const SheetRow& held = set.rows[static_cast<std::size_t>(index)];
  if (is_numeric(column)) return number_cell(held, index, column);
  if (column == sheet_column::mode)
    return held.mode == 0 ? std::string() : set.ModeNames(held.mode);
  return held.text(column);
}

std::string DataSheet::number_cell(const SheetRow& row, int index, int column) const {
  if (const std::string& unreadable = row.text(column); !unreadable.empty()) return unreadable;
  if (column == sheet_column::y && !row.has(column)) {
    // A rank of another row, which has stood there before, would mislead.
    const auto place = static_cast<std::size_t>(index);
    const float rank = has_rank_at_hand(data(), place) ? data().reading.rank_of(place) : 0.0F;
    return rank == 0.0F ? std::string() : format_number(rank, rank_pattern(settings_));
  }
  if (!row.has(column)) return {};
  switch (column) {
    case sheet_column::x: return text_of_time(row.time);
    case sheet_column::y: return format_number(row.rank, rank_pattern(settings_));
    case sheet_column::fails: return number_text(row.failures);
    default: return number_text(row.suspensions);
  }
}

bool DataSheet::is_unreadable(int row, int column) const {
  if (row < 1 || row > last_row() || !is_numeric(column)) return false;
  return !data().rows[static_cast<std::size_t>(row) - 1].text(column).empty();
}

bool DataSheet::is_left_out(int row) const {
  return row >= 1 && row <= last_row() &&
         data().rows[static_cast<std::size_t>(row) - 1].is_left_out();
}

bool DataSheet::is_empty(int row, int column) const {
  if (row < 1 || row > last_row()) return true;
  const SheetRow& held = data().rows[static_cast<std::size_t>(row) - 1];
  const bool has_mode = column == sheet_column::mode && held.mode != 0;
  return !held.has(column) && !has_mode && held.text(column).empty();
}

bool DataSheet::is_left_out(const GridBlock& block) const {
  bool any = false;
  for (int row = std::max(block.first_row, 1); row <= std::min(block.last_row, last_row()); ++row) {
    const SheetRow& held = data().rows[static_cast<std::size_t>(row) - 1];
    if (held.is_blank()) continue;
    if (!held.is_left_out()) return false;
    any = true;
  }
  return any;
}

// The status line asks at each key: the rows are walked once for each state of them. Their
// revision doesn't tell states apart, since what was undone gives its number to the next change.
int DataSheet::left_out_rows() const {
  const SharedRows<SheetRow>& rows = data().rows;
  if (counted_ == rows) return left_out_;
  counted_ = rows;
  left_out_ = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) left_out_ += rows[i].is_left_out() ? 1 : 0;
  return left_out_;
}

// --- editing

void DataSheet::start_edit(std::string text) {
  editing_ = true;
  edit_text_ = std::move(text);
}

void DataSheet::cancel_edit() {
  editing_ = false;
  edit_text_.clear();
}

void DataSheet::end_edit() {
  if (!editing_) return;
  editing_ = false;
  enter(row(), column(), edit_text_);
}

void DataSheet::finish_edit(EditDirection direction) {
  end_edit();
  const int at_row = row();
  const int at_column = column();
  switch (direction) {
    case EditDirection::right:
      if (at_column < sheet_column::count - 1) go_to(at_row, at_column + 1);
      break;
    case EditDirection::left:
      if (at_column >= 2) go_to(at_row, at_column - 1);
      break;
    case EditDirection::up:
      if (at_row >= 2) go_to(at_row - 1, at_column);
      break;
    case EditDirection::none:
    case EditDirection::down: go_down(); break;
  }
  edit_text_.clear();
}

void DataSheet::go_down() {
  if (row() == shown_rows_) {
    if (row() >= farthest_row()) return;
    ++shown_rows_;
  } else if (text(row(), column()).empty() && edit_text_.empty()) {
    return;
  }
  go_to(row() + 1, column());
}

void DataSheet::enter(int row, int column, const std::string& typed) {
  if (row < 1 || row > farthest_row()) throw RunTimeError(run_time::subscript);
  shown_rows_ = std::max(shown_rows_, row);
  remark_.clear();
  const std::string wanted = trimmed(typed);
  if (wanted == text(row, column)) return;
  SheetRow changed =
      row <= last_row() ? data().rows[static_cast<std::size_t>(row) - 1] : SheetRow{};
  if (column == sheet_column::x)
    enter_x(changed, wanted, row);
  else if (is_numeric(column))
    enter_number(changed, column, wanted);
  else if (column == sheet_column::mode)
    changed.mode = mode_number(wanted);
  else if (column == sheet_column::comment)
    changed.set_text(column, wanted);
  put(row, std::move(changed));
}

void DataSheet::hold_text(int row, int column, const std::string& text) {
  if (row < 1 || row > farthest_row() || !is_numeric(column))
    throw RunTimeError(run_time::subscript);
  SheetRow changed =
      row <= last_row() ? data().rows[static_cast<std::size_t>(row) - 1] : SheetRow{};
  clear_cell(changed, column);
  changed.set_text(column, text);
  shown_rows_ = std::max(shown_rows_, row);
  put(row, std::move(changed));
}

void DataSheet::clear(const GridBlock& block) {
  const int first = std::max(block.first_row, 1);
  for (int row = block.last_row; row >= first; --row) {
    // A cleared last row takes the blank ones above it along.
    row = std::min(row, last_row());
    if (row < first) return;
    SheetRow changed = data().rows[static_cast<std::size_t>(row) - 1];
    for (int column = block.first_column; column <= block.last_column; ++column)
      clear_cell(changed, column);
    put(row, changed);
  }
}

void DataSheet::leave_out(const GridBlock& block, bool is_out) {
  const int last = std::min(block.last_row, last_row());
  for (int row = std::max(block.first_row, 1); row <= last; ++row) {
    SheetRow changed = data().rows[static_cast<std::size_t>(row) - 1];
    if (changed.is_blank()) continue;
    changed.set_left_out(is_out);
    put(row, changed);
  }
}

bool DataSheet::insert_rows(const GridBlock& block) {
  const int first = std::max(block.first_row, 1);
  const int count = block.last_row - first + 1;
  if (count < 1 || count > most_data_rows - last_row()) return false;
  if (first <= last_row())
    take_rows(with_blank_rows(data().rows, static_cast<std::size_t>(first) - 1,
                              static_cast<std::size_t>(count)));
  return true;
}

void DataSheet::delete_rows(const GridBlock& block) {
  const int first = std::max(block.first_row, 1);
  const int last = std::min(block.last_row, last_row());
  if (first <= last)
    take_rows(without_rows(data().rows, static_cast<std::size_t>(first) - 1,
                           static_cast<std::size_t>(last)));
}

void DataSheet::sort_by(int column, SortOrder order) {
  take_rows(sorted_rows(data(), column, order));
}

void DataSheet::take_rows(SheetRows rows) {
  if (rows == data().rows) return;
  data().rows = std::move(rows);
  drop_blank_end();
  mark_changed(data());
  shown_rows_ = std::max({shown_rows_, least_rows, last_row()});
}

void DataSheet::fill_down(const GridBlock& block) {
  const bool is_one_row = block.first_row == block.last_row;
  const int source = std::max(block.first_row, 1) - (is_one_row ? 1 : 0);
  if (source < 1) return;
  const SheetRow from =
      source <= last_row() ? data().rows[static_cast<std::size_t>(source) - 1] : SheetRow{};
  for (int row = source + 1; row <= block.last_row; ++row) {
    SheetRow to = row <= last_row() ? data().rows[static_cast<std::size_t>(row) - 1] : SheetRow{};
    const bool lacks_counts = !to.has(sheet_column::fails) && !to.has(sheet_column::susps);
    for (int column = block.first_column; column <= block.last_column; ++column)
      copy_cell(from, to, column);
    if (block.first_column <= sheet_column::x && from.has(sheet_column::x) && lacks_counts)
      for (const int column : {sheet_column::fails, sheet_column::susps})
        copy_cell(from, to, column);
    put(row, std::move(to));
  }
}

void DataSheet::clear_cell(SheetRow& row, int column) {
  if (column == sheet_column::mode) row.mode = 0;
  if (is_numeric(column)) set_number(row, column, 0);
  row.set_text(column, {});
  row.set_given(column, false);
}

void DataSheet::replace_row(int row, SheetRow with) {
  if (row < 1 || row > farthest_row()) throw RunTimeError(run_time::subscript);
  shown_rows_ = std::max(shown_rows_, row);
  put(row, std::move(with));
}

void DataSheet::put(int row, SheetRow changed) {
  if (changed.is_blank()) changed.set_left_out(false);  // there is nothing to leave out
  DataSet& set = data();
  const auto index = static_cast<std::size_t>(row) - 1;
  if (index >= set.rows.size()) {
    if (changed.is_blank()) return;
    set.rows.resize(index + 1);
  } else if (set.rows[index] == changed) {
    return;
  }
  set.rows.edit(index) = std::move(changed);
  drop_blank_end();
  mark_changed(set);
}

void DataSheet::drop_blank_end() {
  SharedRows<SheetRow>& rows = data().rows;
  std::size_t size = rows.size();
  while (size > 0 && rows[size - 1].is_blank()) --size;
  if (size < rows.size()) rows.resize(size);
}

std::int16_t DataSheet::mode_number(const std::string& name) {
  if (name.empty()) return 0;
  Slots<std::string>& names = data().ModeNames;
  const auto found = std::find(names.begin() + 1, names.end(), name);
  if (found == names.end()) {
    if (names.bound() == std::numeric_limits<std::int16_t>::max())
      throw RunTimeError(run_time::overflow);
    names.push_back(name);
    return static_cast<std::int16_t>(names.bound());
  }
  return static_cast<std::int16_t>(found - names.begin());
}

void DataSheet::follow_rows() {
  shown_rows_ = std::max(least_rows, last_row());
  keep_inside();
}

void DataSheet::show(std::int32_t data_id) {
  cancel_edit();
  remark_.clear();
  const bool is_other = data_id != data_id_;
  data_id_ = data_id;
  follow_rows();
  if (is_other) go_to(1, sheet_column::x);
}

// --- reading what was typed

std::string words_of_unread(int column, const std::string& typed) {
  return "\"" + typed + "\" can't be read as " +
         (column == sheet_column::x ? "a time." : "a number.");
}

void DataSheet::enter_x(SheetRow& row, const std::string& typed, int number) {
  clear_cell(row, sheet_column::x);
  if (typed.empty()) return;
  const Entry entry = take_apart(typed, settings_.NegativeSuspension);
  double time = 0, units = 1;
  // Where the mark is a letter, whatever words it stands in are taken: "5 hours". Kept on purpose.
  const bool is_worded = entry.value.find('s') != std::string::npos;
  if (!read(entry.value, time) || !(is_worded || is_bare(without_marks(entry.value))) ||
      !fits_in_cell(sheet_column::x, time) ||
      (entry.has_count && !read_count(without_marks(entry.count), units)))
    return keep_unread(row, sheet_column::x, typed);
  const SheetRow before = row;
  const bool no_susps = !row.has(sheet_column::susps);
  const bool no_fails = !row.has(sheet_column::fails);
  if (entry.has_count || (no_susps && (entry.suspension || no_fails)))
    set_number(row, entry.suspension ? sheet_column::susps : sheet_column::fails, units);
  set_number(row, sheet_column::x, time);
  remark_ = words_of_counts(before, row, "Row " + std::to_string(number));
}

void DataSheet::enter_number(SheetRow& row, int column, const std::string& typed) {
  clear_cell(row, column);
  if (typed.empty()) return;
  double number = 0;
  const bool is_count = column == sheet_column::fails || column == sheet_column::susps;
  const bool is_read = is_count
                           ? read_count(typed, number)
                           : is_bare(typed) && read(typed, number) && fits_in_cell(column, number);
  if (is_read)
    set_number(row, column, number);
  else
    keep_unread(row, column, typed);
}

void DataSheet::keep_unread(SheetRow& row, int column, const std::string& typed) {
  row.set_text(column, typed);
  remark_ = words_of_unread(column, typed);
}

void DataSheet::set_number(SheetRow& row, int column, double number) {
  row.set_text(column, {});
  row.set_given(column, true);
  switch (column) {
    case sheet_column::x: row.time = static_cast<float>(number); break;
    case sheet_column::y: row.rank = static_cast<float>(number); break;
    case sheet_column::fails: row.failures = number; break;
    default: row.suspensions = number;
  }
}

bool DataSheet::read_count(const std::string& typed, double& units) const {
  return is_bare(typed) && read(typed, units) && units >= 0;
}

bool DataSheet::is_bare(const std::string& typed) const {
  return is_bare_number(with_decimal_point(typed, settings_.punctuation));
}

bool DataSheet::read(const std::string& typed, double& number) const {
  std::string cleaned = with_decimal_point(typed, settings_.punctuation);
  if (!is_in_one_piece(cleaned)) return false;
  std::int32_t whole = 0;
  UnheardReports unheard;  // the cell itself says that it can't be read
  number = fd_Str2Dbl(unheard.errors, cleaned, whole);
  return has_digit(typed, "0123456789") && (cleaned != "0" || !has_digit(typed, "123456789"));
}

}  // namespace tavlo
