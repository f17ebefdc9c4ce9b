// The law of libraries: any bytes are read, as a header file and as a data file; what was read
// is written and read back unchanged; and a row is found by each word that it holds.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "guidance/library_header.h"
#include "guidance/library_search.h"

namespace tavlo::test {

inline std::string breach_of_header_law(std::string_view bytes) {
  const HeaderReading first = read_library_header(bytes);
  std::size_t items = 0;
  for (const LibraryColumn& column : first.definition.columns) items += column.Items.size();
  if (first.definition.columns.size() > most_library_columns || items > most_library_items)
    return "more than a library may hold";
  if (first.faults.size() > 20) return "too many faults are kept";
  if (!first.is_header || find_unwritable(first.definition)) return "";
  const HeaderReading again = read_library_header(write_library_header(first.definition));
  if (!again.faults.empty()) return "a written header has faults";
  return again.definition == first.definition ? "" : "a written header is read otherwise";
}

/// What ANSI letters and ASCII are in a search, one character after the other.
inline std::string small_letters(std::string_view text) {
  std::string small;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_ascii = text[i] >= 'A' && text[i] <= 'Z';
    small += is_ascii ? static_cast<char>(text[i] + 32) : text[i];
  }
  return small;
}

/// The rows that hold a word of ASCII, by looking at every field.
inline std::vector<std::uint32_t> rows_with_word(const LibraryRows& rows, std::string_view word) {
  std::vector<std::uint32_t> found;
  std::vector<std::string> fields;
  for (std::size_t row = 0; row < rows.count(); ++row) {
    rows.fields(row, fields);
    if (std::any_of(fields.begin(), fields.end(), [&](const std::string& field) {
          return small_letters(field).find(small_letters(word)) != std::string::npos;
        }))
      found.push_back(static_cast<std::uint32_t>(row));
  }
  return found;
}

inline std::string breach_of_search_law(const LibraryRows& rows) {
  std::vector<std::string> fields;
  for (std::size_t row = 0; row < std::min<std::size_t>(rows.count(), 8); ++row) {
    rows.fields(row, fields);
    for (const std::string& field : fields) {
      const std::string word = field.substr(0, field.find_first_of(" \t\r\n"));
      const bool is_ascii = std::all_of(word.begin(), word.end(), [](char c) { return c > 0; });
      if (word.empty() || !is_ascii) continue;
      std::string capitals = word;
      for (char& c : capitals)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
      if (find_library_rows(rows, 0, capitals) != rows_with_word(rows, word))
        return "the search for " + word + " finds other rows";
    }
  }
  return "";
}

inline std::string breach_of_rows_law(std::string_view bytes) {
  LibraryRows rows, again;
  if (rows.read(std::string(bytes))) return rows.count() == 0 ? "" : "rows of a refused file";
  again.read("");
  std::vector<std::string> fields, twice;
  for (std::size_t row = 0; row < rows.count(); ++row) {
    rows.fields(row, fields);
    if (fields.size() != rows.field_count(row)) return "the fields are counted wrongly";
    again.add(write_library_row(fields));
  }
  LibraryRows read;
  if (read.read(std::string(again.whole_text()))) return "written rows are refused";
  if (read.count() != rows.count()) return "written rows are read as others";
  for (std::size_t row = 0; row < rows.count(); ++row) {
    rows.fields(row, fields);
    for (std::string& field : fields)
      std::replace_if(
          field.begin(), field.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    read.fields(row, twice);
    if (fields != twice) return "a written row is read otherwise";
  }
  return breach_of_search_law(rows);
}

/// What breaks the law for these bytes; empty when they keep it.
inline std::string breach_of_library_law(std::string_view bytes) {
  const std::string breach = breach_of_header_law(bytes);
  return breach.empty() ? breach_of_rows_law(bytes) : breach;
}

}  // namespace tavlo::test
