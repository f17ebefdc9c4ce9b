// ProjectReader: takes values and text lines off the bytes of a project file.
// Strict where a silent guess would shift everything behind it, and bounded:
// nothing is sized by a number of the file before the bytes for it are there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "files/project_text.h"

namespace tavlo {

/// Every failure is a RunTimeError, its words in fault(): 13 for a value of the
/// wrong form, 6 for one out of range, 9 for a count that can't be, 14 for a line
/// that is too long, 62 for the end of the file where something is due.
///
/// A value ends at a comma or a line end (CR LF, LF or CR), which is taken with
/// it; the reader does not mind how values are spread over lines. So a text line
/// begins right behind the last value before it. Blanks around a value and
/// quotation marks around it are dropped. Text is in the ANSI code page, or UTF-8
/// behind a byte order mark. NUL and Ctrl-Z anywhere in the bytes are refused.
class ProjectReader : public ProjectText {
 public:
  static constexpr bool reading = true;

  /// `bytes` must outlive the reader.
  explicit ProjectReader(std::string_view bytes);

  void value(bool& flag);           ///< #TRUE#, #FALSE#, True, False (any case), -1, 1, 0
  void value(std::int16_t& whole);  ///< whole numbers, also as "3.0" or "3E2"
  void value(std::int32_t& whole);
  void value(float& number);
  void value(double& number);
  void value(AsInt<std::int32_t> whole);

  template <class... Values>
  void values(Values&&... fields) {
    (value(fields), ...);
  }
  void end_values() {}

  void text(std::string& line);

  // The data files of other programs hold the same two kinds of line, in other forms.

  /// A text line as its bytes; `kind` names what is due, for the fault at the end of the file.
  std::string_view line(const char* kind = "text");

  /// A value as its bytes, without the quotation marks around it.
  std::string_view word();

  /// The number that a part of the line read last stands for; refused as a value is.
  double number(std::string_view part);
  std::int32_t whole(std::string_view part);
  float single(double number);

  bool at_end() const { return rest_.empty(); }
  std::size_t bytes_left() const { return rest_.size(); }
  /// Where the value or line read last began, from 1.
  long line_number() const { return piece_line_; }

  /// Reads how many fields or records the file says will follow: any 32-bit number,
  /// given in 64 so that the difference from the number due never overflows.
  std::int64_t count(std::int64_t expected);

  /// Drops values, quoted or bare, or text lines; a number below 1 drops none.
  void skip_values(std::int64_t number);
  void skip_texts(std::int64_t number);

  /// Gives `list` the indexes 0 to `bound`. Refused when that is negative, above
  /// `highest`, or needs more than the bytes that are left if each element takes
  /// `least_bytes` of them.
  template <class List>
  void make_room(List& list, std::int64_t bound, std::size_t least_bytes,
                 std::int64_t highest = std::numeric_limits<std::int32_t>::max() - 1) {
    require_bytes_for(bound, least_bytes, highest);
    list.resize(static_cast<int>(bound));
  }

  /// The same for a table with the rows 0 to `rows` and the columns 0 to `columns`.
  template <class Table>
  void make_table(Table& table, std::int64_t rows, std::int64_t columns, std::size_t least_bytes) {
    require_bytes_for(rows, least_bytes);
    require_bytes_for(columns, least_bytes);
    const std::int64_t cells = (rows + 1) * (columns + 1);
    require_bytes_for(cells - 1, least_bytes);
    table.assign(static_cast<std::size_t>(cells), 0);
  }

  /// Refuses a bound as make_room does.
  void require_bytes_for(std::int64_t bound, std::size_t least_bytes,
                         std::int64_t highest = std::numeric_limits<std::int32_t>::max() - 1);

  /// A bound that the file must have, since nothing else can be read with it.
  void require_bound(std::int64_t bound, std::int64_t expected);

  /// The next `size` bytes as they stand; error 62 where there are less.
  std::string_view raw(std::int64_t size);

  /// Passes over empty lines.
  void skip_empty_lines();

  /// The bytes that have not been read.
  std::string_view rest() const { return rest_; }

  /// Refuses the value or text that was read last.
  [[noreturn]] void refuse(int error_number, std::string what);

 private:
  using ProjectText::refuse;
  void begin_piece(const char* kind);
  template <class Ends>
  std::string_view front_until(Ends ends);
  std::string_view quoted_value();
  bool take_short_decimal(double& number);
  double required_whole(double number, double lowest, double highest);
  void skip_blanks();
  void take_value_end();
  void take_line_end();

  std::optional<ReadFault> foreign_;
  std::string_view rest_;
  bool utf8_ = false;
  long line_ = 1;        ///< where `rest_` begins
  long piece_line_ = 1;  ///< where the value or text at work began
};

}  // namespace tavlo
