#include "project/data_sheet.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "numerics/number_text.h"

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

}  // namespace

DataSheet::DataSheet(ErrorReporter& reporter, const Settings& settings)
    : grd_Data(1, sheet_column::count), reporter_(reporter), settings_(settings) {
  for (int column = 0; column < sheet_column::count; ++column)
    grd_Data.set_text(0, column, heading(column));
  grow_to(least_rows);
  grd_Data.go_to(1, sheet_column::x);
}

const char* DataSheet::hint(int column) { return column_facts(column).hint; }
const char* DataSheet::heading(int column) { return column_facts(column).heading; }

void DataSheet::start_edit(std::string text) {
  editing_ = true;
  edit_text_ = std::move(text);
}

void DataSheet::cancel_edit() {
  editing_ = false;
  edit_text_.clear();
}

void DataSheet::txt_Edit_LostFocus() {
  if (!editing_) return;
  editing_ = false;
  enter(grd_Data.row(), grd_Data.column(), edit_text_);
}

void DataSheet::finish_edit(EditDirection direction) {
  txt_Edit_LostFocus();
  const int row = grd_Data.row();
  const int column = grd_Data.column();
  switch (direction) {
    case EditDirection::right:
      if (column < sheet_column::count - 1) grd_Data.go_to(row, column + 1);
      break;
    case EditDirection::left:
      if (column >= 2) grd_Data.go_to(row, column - 1);
      break;
    case EditDirection::up:
      if (row >= 2) grd_Data.go_to(row - 1, column);
      break;
    case EditDirection::none:
    case EditDirection::down: go_down(); break;
  }
  edit_text_.clear();
}

void DataSheet::go_down() {
  const int row = grd_Data.row();
  const int column = grd_Data.column();
  if (row == grd_Data.rows() - 1) {
    grow_to(row + 1);
  } else if (grd_Data.text(row, column).empty() && edit_text_.empty()) {
    return;
  }
  grd_Data.go_to(row + 1, column);
}

void DataSheet::enter(int row, int column, const std::string& typed) {
  grow_to(row);
  const std::string text = trimmed(typed);
  if (text == grd_Data.text(row, column)) return;
  if (column == sheet_column::x) return enter_x(row, text);
  SetChanged(column);
  lrows = std::max(lrows, row);
  const bool numeric = column < sheet_column::mode && !text.empty();
  grd_Data.set_text(row, column, numeric ? number_text(number_in(text)) : text);
}

void DataSheet::enter_x(int row, const std::string& typed) {
  SetChanged(sheet_column::x);
  lrows = std::max(lrows, row);
  if (typed.empty()) return grd_Data.set_text(row, sheet_column::x, {});

  const Entry entry = take_apart(typed, settings_.NegativeSuspension);
  const bool no_susps = grd_Data.text(row, sheet_column::susps).empty();
  const bool no_fails = grd_Data.text(row, sheet_column::fails).empty();
  const int count_column = entry.suspension ? sheet_column::susps : sheet_column::fails;
  if (entry.has_count) {
    set_count(row, count_column, number_in(entry.count));
  } else if (no_susps && (entry.suspension || no_fails)) {
    set_count(row, count_column, 1.0);
  }
  grd_Data.set_text(row, sheet_column::x, number_text(number_in(entry.value)));
}

void DataSheet::set_count(int row, int column, double count) {
  const std::string& present = grd_Data.text(row, column);
  if (!present.empty() && number_in(present) == count) return;
  grd_Data.set_text(row, column, number_text(count));
  SetChanged(column);
}

double DataSheet::number_in(const std::string& text) const {
  return fd_Str2Dbl(reporter_, with_decimal_point(text, settings_.punctuation));
}

void DataSheet::SetChanged(int column) {
  bclean = false;
  nclean = static_cast<std::uint8_t>(nclean | (1u << column));
}

void DataSheet::grow_to(int row) {
  const int old_rows = grd_Data.rows();
  if (row < old_rows) return;
  grd_Data.set_rows(row + 1);
  for (int r = old_rows; r <= row; ++r)
    grd_Data.set_text(r, sheet_column::order, std::to_string(r));
}

}  // namespace tavlo
