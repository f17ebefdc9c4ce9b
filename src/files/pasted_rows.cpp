#include "files/pasted_rows.h"

#include <algorithm>
#include <charconv>

#include "files/data_text.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

/// A time as it was typed: 7.1 is not the 7.09999990 that 32 bits make of it.
std::string text_of_time(float time) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, time).ptr;
  return number_text(parse_number({digits, end}).value_or(time));
}

std::string text_of_units(double units) { return units > 0.0 ? number_text(units) : ""; }

std::string counted(double count, const char* noun) {
  return number_text(count) + " " + noun + (count == 1.0 ? "" : "s");
}

double sum_of_column(const DataSheet& sheet, int column, int first, int last) {
  double sum = 0;
  for (int row = first; row <= last; ++row)
    sum += parse_number(sheet.grd_Data.text(row, column)).value_or(0.0);
  return sum;
}

bool ask_decimal(Prompts& prompts, const std::string& what, DecimalSign& sign) {
  const BoxAnswer answer = prompts.show(
      {"Decimal comma",
       "In this text " + what +
           ".\n\nIs it a decimal sign? (Yes: 1,5 is one and a half. No: 1,5 is five failures "
           "at 1.)",
       BoxIcon::question, BoxButtons::yes_no_cancel});
  sign = answer == BoxAnswer::yes ? DecimalSign::comma : DecimalSign::point;
  return answer != BoxAnswer::cancel;
}

}  // namespace

std::optional<ReadFault> read_pasted_rows(std::string_view text, const Settings& settings,
                                          Prompts& prompts, DataRows& rows, bool& cancelled) {
  ReadOptions options{.negative_is_value = !settings.NegativeSuspension};
  auto fault = read_data_rows(text, options, rows);
  if (!fault || !fault->comma_in_doubt) return fault;
  if (settings.punctuation.DecimalPoint == ',')
    options.decimal = DecimalSign::comma;
  else if (!ask_decimal(prompts, fault->what, options.decimal)) {
    cancelled = true;
    return fault;
  }
  return read_data_rows(text, options, rows);
}

void enter_rows(DataSheet& sheet, int row, const DataRows& rows) {
  if (rows.rows.empty()) return;
  sheet.grow_to(row + static_cast<int>(rows.rows.size()) - 1);
  for (std::size_t i = 0; i < rows.rows.size(); ++i, ++row) {
    const SampleRow& from = rows.rows[i];
    sheet.grd_Data.set_text(row, sheet_column::x, text_of_time(from.time));
    sheet.grd_Data.set_text(row, sheet_column::fails, text_of_units(from.failures));
    sheet.grd_Data.set_text(row, sheet_column::susps, text_of_units(from.suspensions));
    if (from.mode > 0)
      sheet.enter(row, sheet_column::mode,
                  rows.mode_names[static_cast<std::size_t>(from.mode) - 1]);
    if (!rows.comments.empty() && !rows.comments[i].empty())
      sheet.enter(row, sheet_column::comment, rows.comments[i]);
  }
  sheet.lrows = std::max(sheet.lrows, row - 1);
  for (const int column : {sheet_column::x, sheet_column::fails, sheet_column::susps})
    sheet.SetChanged(column);
}

std::string words_of_rows(const DataSheet& sheet, int first, int last) {
  return counted(last - first + 1, "row") + ": " +
         counted(sum_of_column(sheet, sheet_column::fails, first, last), "failure") + ", " +
         counted(sum_of_column(sheet, sheet_column::susps, first, last), "suspension");
}

}  // namespace tavlo
