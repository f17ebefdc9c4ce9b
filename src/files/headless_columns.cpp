#include "files/headless_columns.h"

#include <algorithm>

#include "files/status_words.h"
#include "numerics/digit.h"

namespace tavlo {

namespace {

/// What all rows have in common.
struct Look {
  std::size_t rows = 0;
  std::size_t width = 0;
  bool words = true;      ///< the second fields are words of a status
  bool digits = true;     ///< they are 1 and 0 alone
  bool thousands = true;  ///< they have three digits each
  bool marked = false;    ///< a time has the mark or the sign of a suspension
};

bool is_three_digits(std::string_view text) { return text.size() == 3 && is_digits(text); }

std::size_t used_width(Fields row) {
  std::size_t width = row.size();
  while (width > 0 && trimmed(row[width - 1]).empty()) --width;
  return width;
}

void look_at(Fields row, Look& look) {
  const std::string_view first = trimmed(row[0]);
  const std::string_view second = row.size() > 1 ? trimmed(row[1]) : std::string_view();
  ++look.rows;
  look.width = std::max(look.width, used_width(row));
  look.words = look.words && is_status_word(second);
  look.digits = look.digits && is_status_digit(second);
  look.thousands = look.thousands && is_three_digits(second);
  look.marked = look.marked || first.starts_with('>') || first.starts_with('-');
}

std::vector<DataColumn> pair(const Look& look, bool status_told) {
  if (look.width == 1) return {DataColumn::x};
  const bool status = status_told || (look.words && !(look.digits && look.marked));
  return {DataColumn::x, status ? DataColumn::status : DataColumn::count};
}

std::vector<DataColumn> sheet_columns(std::size_t width) {
  std::vector<DataColumn> columns = {DataColumn::x, DataColumn::fails, DataColumn::susps,
                                     DataColumn::mode, DataColumn::comment};
  columns.resize(std::min(width, columns.size()));
  return columns;
}

}  // namespace

std::optional<ReadFault> tell_columns(TableRows rows, bool status_told,
                                      std::vector<DataColumn>& columns) {
  Look look;
  long first_line = 0;
  while (rows.next_row()) {
    if (look.rows == 0) first_line = rows.line();
    look_at(rows.row(), look);
  }
  if (rows.fault) return rows.fault;
  const bool is_sheet = rows.separator() == '\t' && look.rows > 1 && look.width <= 5;
  if (look.width > 2 && !is_sheet)
    return ReadFault{first_line, std::to_string(look.width) +
                                     " columns need a header line that names them, such as "
                                     "x,failures,suspensions; times alone stand one a line"};
  if (rows.separator() == ' ' && look.thousands && look.width == 2)
    return ReadFault{first_line,
                     "the blank may stand between thousands, or between a time and its count; "
                     "write 1500 for 1 500, and 1x500 for a count"};
  columns = look.width > 2 ? sheet_columns(look.width) : pair(look, status_told);
  return std::nullopt;
}

}  // namespace tavlo
