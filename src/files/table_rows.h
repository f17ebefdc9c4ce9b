// Table rows: a text cut into rows and fields, whatever separates them. Fields may stand
// in quotation marks and then hold separators and line ends.
#pragma once

#include <csv.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/read_fault.h"
#include "files/text_lines.h"

namespace tavlo {

/// The fields of one row.
using Fields = std::span<const std::string_view>;

/// The fields of a row in quotation marks, kept from row to row so that a row
/// costs no allocation.
class QuotedFields {
 public:
  void clear() { count_ = 0; }
  void add(std::string_view text);
  Fields row();

 private:
  std::vector<std::string> texts_;
  std::vector<std::string_view> fields_;
  std::size_t count_ = 0;
};

/// Owns a parser of the csv library and gives it whole lines.
class QuotedRow {
 public:
  explicit QuotedRow(char separator);
  ~QuotedRow() { csv_free(&parser_); }
  QuotedRow(const QuotedRow&) = delete;
  QuotedRow& operator=(const QuotedRow&) = delete;

  /// False when the quotation marks of the line are broken.
  bool feed(std::string_view line);
  bool row_ended() const { return row_ended_; }

  /// Bytes of a row whose last quoted field still waits for its end.
  std::size_t open_bytes() const { return open_bytes_; }

  void start_row() { fields_.clear(); }
  Fields row() { return fields_.row(); }

 private:
  bool parse(std::string_view text);

  csv_parser parser_{};
  QuotedFields fields_;
  bool row_ended_ = false;
  std::size_t open_bytes_ = 0;
};

/// Gives the rows one by one. A line without quotation marks is cut where it stands; only
/// the others go through the parser, byte by byte. Blank lines, remarks and rows of empty
/// fields are skipped.
class TableRows {
 public:
  /// A blank as separator stands for any number of blanks and tabs.
  TableRows(TextLines lines, char separator);

  /// False at the end and on a fault.
  bool next_row();

  /// Keeps `what` as the fault of this row; always false.
  bool refuse(std::string what);

  Fields row() const { return row_; }
  long line() const { return first_line_; }  ///< in which the row starts
  char separator() const { return separator_; }

  std::optional<ReadFault> fault;

 private:
  bool read_row();
  bool cut(std::string_view line);
  void cut_at_separators(std::string_view line);
  void cut_at_blanks(std::string_view line);
  void find_quote(std::string_view text);
  bool holds_quote(std::string_view line);

  TextLines lines_;
  char separator_;
  QuotedRow quoted_;
  const char* quote_ = nullptr;  ///< the first quotation mark that lies ahead, or the end
  std::vector<std::string_view> fields_;
  Fields row_;
  long first_line_ = 1;
};

}  // namespace tavlo
