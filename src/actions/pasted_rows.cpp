#include "actions/pasted_rows.h"

#include <algorithm>
#include <vector>

#include "actions/busy_pointer.h"
#include "actions/words.h"
#include "files/data_text.h"
#include "numerics/count_text.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

double units_in(const DataSheet& sheet, int first, int last, double SheetRow::*units) {
  double sum = 0;
  const SharedRows<SheetRow>& rows = sheet.data().rows;
  for (int row = first; row <= std::min(last, sheet.last_row()); ++row)
    sum += rows[static_cast<std::size_t>(row) - 1].*units;
  return sum;
}

int unreadable_rows(const DataSheet& sheet, int first, int last) {
  int number = 0;
  const SharedRows<SheetRow>& rows = sheet.data().rows;
  for (int row = first; row <= std::min(last, sheet.last_row()); ++row)
    number += rows[static_cast<std::size_t>(row) - 1].unreadable_column() == 0 ? 0 : 1;
  return number;
}

std::optional<ReadFault> read_busily(std::string_view text, Session& session,
                                     const ReadOptions& options, DataRows& rows) {
  const BusyPointer busy(session.ports.views);
  return read_data_rows(text, options, rows, &session.ports.progress);
}

}  // namespace

std::optional<ReadFault> read_pasted_rows(std::string_view text, Session& session, int most_rows,
                                          DataRows& rows, bool& cancelled) {
  const Settings& settings = session.settings;
  ReadOptions options{.negative_is_value = !settings.NegativeSuspension,
                      .holds_unread = true,
                      .most_rows = static_cast<std::size_t>(most_rows)};
  auto fault = read_busily(text, session, options, rows);
  if (!fault || !fault->comma_in_doubt) return fault;
  options.decimal = DecimalSign::comma;
  if (settings.punctuation.DecimalPoint != ',') {
    const BoxAnswer answer = session.ports.prompts.show(comma_question(fault->what));
    cancelled = answer == BoxAnswer::cancel;
    if (answer != BoxAnswer::yes) options.decimal = DecimalSign::point;
  }
  return cancelled ? fault : read_busily(text, session, options, rows);
}

void enter_rows(DataSheet& sheet, int row, const DataRows& rows) {
  std::vector<std::int16_t> modes(1, 0);  // of the sheet, by the modes of the text
  for (const std::string& name : rows.mode_names) modes.push_back(sheet.mode_number(name));
  auto held = rows.held.begin();
  for (std::size_t i = 0; i < rows.rows.size(); ++i, ++row) {
    SheetRow to = entered(rows.rows[i]);
    const bool is_held = held != rows.held.end() && held->index == i;
    if (is_held) to.set_given(sheet_column::x, to.time != 0.0F);
    const bool stands = row <= sheet.last_row();
    const SheetRow before =
        stands ? sheet.data().rows[static_cast<std::size_t>(row) - 1] : SheetRow();
    to.mode = to.mode > 0 ? modes[static_cast<std::size_t>(to.mode)] : before.mode;
    const bool has_comment = !rows.comments.empty() && !rows.comments[i].empty();
    to.set_text(sheet_column::comment,
                has_comment ? rows.comments[i] : before.text(sheet_column::comment));
    sheet.replace_row(row, std::move(to));
    if (!is_held) continue;
    for (const auto& [column, text] : held->texts) sheet.hold_text(row, column, text);
    ++held;
  }
}

std::string words_of_units(std::size_t rows, double failures, double suspensions) {
  return counted(static_cast<double>(rows), "row") + ": " + counted(failures, "failure") + ", " +
         counted(suspensions, "suspension");
}

std::string words_of_rows(const DataSheet& sheet, int first, int last) {
  const int unread = unreadable_rows(sheet, first, last);
  const std::string behind =
      unread == 0   ? ""
      : unread == 1 ? "; 1 row has a cell that can't be read"
                    : "; " + std::to_string(unread) + " rows have a cell that can't be read";
  return words_of_units(static_cast<std::size_t>(last - first + 1),
                        units_in(sheet, first, last, &SheetRow::failures),
                        units_in(sheet, first, last, &SheetRow::suspensions)) +
         behind;
}

}  // namespace tavlo
