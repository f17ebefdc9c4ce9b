#include "actions/read_rows.h"

#include <algorithm>
#include <vector>

#include "actions/reports.h"
#include "project/ranking.h"

namespace tavlo {

namespace {

/// The first row of the analysis, from 0, with a cell that can't be read; the size when there
/// is none.
std::size_t unreadable_row(const SharedRows<SheetRow>& rows) {
  std::size_t row = 0;
  while (row < rows.size() && (rows[row].is_left_out() || rows[row].unreadable_column() == 0))
    ++row;
  return row;
}

/// A number that only its cell can't hold.
bool is_number(const std::string& text) {
  return text.find_first_of("123456789") != std::string::npos &&
         text.find_first_not_of("0123456789.eE+->") == std::string::npos;
}

std::string reason_of(const std::string& text) {
  if (is_number(text) && text.starts_with('-')) return text + ", which is negative.";
  if (is_number(text)) return text + ", which is too large or too small for it.";
  const bool has_comma = text.find(',') != std::string::npos &&
                         text.find_first_not_of("0123456789.,eE+->x") == std::string::npos;
  return "\"" + text + "\", " +
         (has_comma ? "in which the comma may mean two things." : "which is no number.");
}

void add_unreadable_line(ErrorReporter& reporter, std::size_t row, const SheetRow& held) {
  const int column = held.unreadable_column();
  const std::string& text = held.text(column);
  const std::string cell = "Row " + std::to_string(row + 1) + ": " + DataSheet::heading(column);
  reporter.add_lines({cell + " is " + reason_of(text)});
}

bool is_readable(Session& session, const SharedRows<SheetRow>& rows) {
  const std::size_t row = unreadable_row(rows);
  if (row == rows.size()) return true;
  const auto words = [&](ErrorReporter& reporter) {
    reporter.add_lines({"Data Synchronization error: ", "Sync_Data routine:"});
    add_unreadable_line(reporter, row, rows[row]);
  };
  return guarded(session.errors, false, words, [&]() -> bool {
    const SheetRow& held = rows[row];
    throw RunTimeError(is_number(held.text(held.unreadable_column())) ? run_time::overflow
                                                                      : run_time::type_mismatch);
  });
}

void drop_blank_rows(SharedRows<SheetRow>& rows) {
  std::size_t first = 0;
  while (first < rows.size() && !rows[first].is_blank()) ++first;
  std::size_t kept = first;
  for (std::size_t i = first; i < rows.size(); ++i)
    if (!rows[i].is_blank()) rows.edit(kept++) = SheetRow(rows[i]);
  if (kept < rows.size()) rows.resize(kept);
}

void sort_by_time(SharedRows<SheetRow>& rows) {
  std::vector<SheetRow> sorted;
  sorted.reserve(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) sorted.push_back(rows[i]);
  const auto before = [](const SheetRow& a, const SheetRow& b) {
    const bool has_time = a.has(sheet_column::x);
    if (has_time != b.has(sheet_column::x)) return has_time;
    return a.time < b.time;
  };
  if (std::is_sorted(sorted.begin(), sorted.end(), before)) return;
  std::stable_sort(sorted.begin(), sorted.end(), before);
  for (std::size_t i = 0; i < sorted.size(); ++i) rows.edit(i) = std::move(sorted[i]);
}

/// Names that are known keep their order; one that no row has any more goes.
void drop_unused_modes(DataSet& data) {
  std::vector<std::int16_t> number(static_cast<std::size_t>(data.ModeNames.bound()) + 1, 0);
  for (std::size_t i = 0; i < data.rows.size(); ++i)
    number[static_cast<std::size_t>(data.rows[i].mode)] = 1;
  Slots<std::string> names;
  for (int mode = 1; mode <= data.ModeNames.bound(); ++mode) {
    std::int16_t& now = number[static_cast<std::size_t>(mode)];
    if (now == 0) continue;
    names.push_back(data.ModeNames(mode));
    now = static_cast<std::int16_t>(names.bound());
  }
  if (names.bound() == data.ModeNames.bound()) return;
  number[0] = 0;
  for (std::size_t i = 0; i < data.rows.size(); ++i) {
    const std::int16_t now = number[static_cast<std::size_t>(data.rows[i].mode)];
    if (data.rows[i].mode != now) data.rows.edit(i).mode = now;
  }
  data.ModeNames = std::move(names);
}

/// The program ranks the rows: a rank that somebody has typed does not stand.
void drop_typed_ranks(DataSet& data) {
  for (std::size_t i = 0; !data.own_ranks && i < data.rows.size(); ++i) {
    if (!data.rows[i].has(sheet_column::y)) continue;
    SheetRow& row = data.rows.edit(i);
    row.set_given(sheet_column::y, false);
    row.rank = 0;
  }
}

void name_rows_without_time(Session& session, const DataSet& data) {
  constexpr int most = 10;
  int named = 0;
  std::string numbers;
  for (std::size_t i = 0; i < data.rows.size(); ++i) {
    if (data.rows[i].has(sheet_column::x) || data.rows[i].is_left_out()) continue;
    if (++named <= most) numbers += (named > 1 ? ", " : "") + std::to_string(i + 1);
  }
  if (named == 0) return;
  const std::string rows = named == 1 ? "Row " + numbers + " has entries but no time: it is"
                                      : "Rows " + numbers + (named > most ? ", ..." : "") +
                                            " have entries but no time: they are";
  AppendLog(session, data.Title + ": " + rows + " left out.\n", false);
}

}  // namespace

bool read_rows(Session& session, int data_index) {
  DataSet& data = session.project.data(data_index);
  if (!is_readable(session, data.rows)) return false;
  drop_blank_rows(data.rows);
  if (session.settings.SortRaw) sort_by_time(data.rows);
  drop_unused_modes(data);
  drop_typed_ranks(data);
  name_rows_without_time(session, data);
  Make_Ranks(session.errors, session.settings.Benard, data);
  session.gDataForm(data_index)->follow_rows();
  return data.is_read();  // else the rows could not be ranked, which has been told
}

}  // namespace tavlo
