#include "project/row_moves.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace tavlo {

namespace {

/// Where the row with a cell of that kind comes, whatever the order.
enum class CellKind : std::uint8_t { value, unreadable, empty };

struct SortKey {
  double value = 0;
  std::uint32_t place = 0;
  CellKind kind = CellKind::empty;
};

double number_in(const DataSet& data, std::size_t index, int column) {
  const SheetRow& row = data.rows[index];
  switch (column) {
    case sheet_column::x: return row.time;
    case sheet_column::fails: return row.failures;
    case sheet_column::susps: return row.suspensions;
    default: break;
  }
  if (row.has(column)) return row.rank;
  return has_rank_at_hand(data, index) ? data.reading.rank_of(index) : 0;
}

SortKey number_key(const DataSet& data, std::size_t index, int column) {
  const SheetRow& row = data.rows[index];
  SortKey key{number_in(data, index, column), static_cast<std::uint32_t>(index)};
  const bool is_rank = column == sheet_column::y && key.value != 0;
  if (!row.text(column).empty())
    key.kind = CellKind::unreadable;
  else if (row.has(column) || is_rank)
    key.kind = CellKind::value;
  if (key.kind != CellKind::value) key.value = 0;
  return key;
}

std::string in_one_case(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

/// Words get their places in the alphabet for numbers.
void number_words(std::vector<SortKey>& keys, std::vector<std::string>& words) {
  std::vector<std::uint32_t> order(words.size());
  std::iota(order.begin(), order.end(), 0U);
  for (std::string& word : words) word = in_one_case(std::move(word));
  std::sort(order.begin(), order.end(),
            [&](std::uint32_t a, std::uint32_t b) { return words[a] < words[b]; });
  double value = 0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (i > 0 && words[order[i - 1]] != words[order[i]]) ++value;
    SortKey& key = keys[order[i]];
    key.value = value;
    key.kind = words[order[i]].empty() ? CellKind::empty : CellKind::value;
    if (key.kind == CellKind::empty) key.value = 0;
  }
}

std::vector<SortKey> keys_of(const DataSet& data, int column) {
  const std::size_t size = data.rows.size();
  std::vector<SortKey> keys(size);
  const bool is_number = column <= sheet_column::susps;
  std::vector<std::string> words(is_number ? 0 : size);
  for (std::size_t i = 0; i < size; ++i) {
    keys[i].place = static_cast<std::uint32_t>(i);
    const SheetRow& row = data.rows[i];
    if (is_number)
      keys[i] = number_key(data, i, column);
    else if (column != sheet_column::mode)
      words[i] = row.text(column);
    else if (row.mode != 0)
      words[i] = data.ModeNames(row.mode);
  }
  if (!is_number) number_words(keys, words);
  return keys;
}

}  // namespace

SheetRows with_blank_rows(const SheetRows& rows, std::size_t index, std::size_t count) {
  SheetRows wider;
  wider.resize(rows.size() + count);
  for (std::size_t i = 0; i < rows.size(); ++i) wider.edit(i < index ? i : i + count) = rows[i];
  return wider;
}

SheetRows without_rows(const SheetRows& rows, std::size_t first, std::size_t end) {
  SheetRows fewer = rows;
  for (std::size_t i = end; i < rows.size(); ++i) fewer.edit(first + i - end) = rows[i];
  fewer.resize(rows.size() - (end - first));
  return fewer;
}

SheetRows sorted_rows(const DataSet& data, int column, SortOrder order) {
  std::vector<SortKey> keys = keys_of(data, column);
  const bool falls = order == SortOrder::descending;
  std::stable_sort(keys.begin(), keys.end(), [falls](const SortKey& a, const SortKey& b) {
    if (a.kind != b.kind) return a.kind < b.kind;
    return falls ? a.value > b.value : a.value < b.value;
  });
  SheetRows sorted;
  sorted.resize(keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i) sorted.edit(i) = data.rows[keys[i].place];
  return sorted;
}

bool has_rank_at_hand(const DataSet& data, std::size_t index) {
  const SheetRows& ranked = data.reading.rows();
  if (index >= ranked.size()) return false;
  const SheetRow& then = ranked[index];
  const SheetRow& now = data.rows[index];
  return then.time == now.time && then.failures == now.failures &&
         then.suspensions == now.suspensions && then.has_point() == now.has_point();
}

void copy_cell(const SheetRow& from, SheetRow& to, int column) {
  switch (column) {
    case sheet_column::x: to.time = from.time; break;
    case sheet_column::y: to.rank = from.rank; break;
    case sheet_column::fails: to.failures = from.failures; break;
    case sheet_column::susps: to.suspensions = from.suspensions; break;
    case sheet_column::mode: to.mode = from.mode; break;
    default: break;
  }
  to.set_given(column, from.has(column));
  to.set_text(column, from.text(column));
}

}  // namespace tavlo
