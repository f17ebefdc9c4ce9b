// Library rows: the data file of a library. A row stands on a line, its fields between commas;
// a field in double quotation marks may hold commas, doubled marks and line breaks (RFC 4180).
// The text stays as it is and a row is cut into fields when it is asked for, so that a million
// rows open at once.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/read_fault.h"

namespace tavlo {

class LibraryRows {
 public:
  /// Takes a file's bytes, of UTF-8, UTF-16 or the ANSI code page. Refuses what is no text and
  /// lines that are too long; there are no rows then.
  std::optional<ReadFault> read(std::string bytes);

  /// Blank lines are no rows.
  std::size_t count() const { return starts_.size(); }

  /// A row as it stands in the file, without its end.
  std::string_view text(std::size_t row) const;

  /// The fields of a row, without their quotation marks.
  void fields(std::size_t row, std::vector<std::string>& fields) const;

  std::size_t field_count(std::size_t row) const;

  /// What a file with these rows gets behind its end to have another one, of
  /// write_library_row().
  std::string continuation(std::string_view row) const;

  /// Takes a row in, as one that was written behind the end.
  void add(std::string_view row);

  /// Whether the file can be continued at its end: its bytes are UTF-8.
  bool is_utf8() const { return is_utf8_; }
  std::string_view whole_text() const { return text_; }

  /// The row that a place of the whole text lies in, or the next one.
  std::size_t row_at(std::size_t place, std::size_t from) const;
  std::size_t start(std::size_t row) const { return starts_[row]; }

 private:
  std::optional<ReadFault> find_rows();

  std::string text_;
  std::vector<std::uint32_t> starts_;  ///< of the rows; a file has at most 256 MB
  char end_ = '\n';
  bool is_utf8_ = true;
};

/// A row of a data file, without its end. Line breaks in a field become blanks.
std::string write_library_row(std::span<const std::string> fields);

}  // namespace tavlo
