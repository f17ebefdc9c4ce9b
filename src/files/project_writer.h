// ProjectWriter: makes the lines of a project file, the counterpart of
// ProjectReader. The bytes are kept in memory, so that a record that can't be
// written leaves the file on the disk untouched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "files/project_text.h"

namespace tavlo {

/// Lines end in CR LF, text is in the ANSI code page or, behind a byte order mark, UTF-8;
/// numbers have a full stop in every locale. Failures are RunTimeErrors: 6 for a number that is not
/// finite or does not fit its width, 9 for a list that is shorter than its bound, 14 for a text
/// that is too long to be read back.
class ProjectWriter : public ProjectText {
 public:
  static constexpr bool reading = false;

  enum class Encoding { ansi, utf8 };
  explicit ProjectWriter(Encoding encoding = Encoding::ansi);

  const std::string& bytes() const { return bytes_; }
  /// Gives the bytes away.
  std::string take() { return std::move(bytes_); }

  /// What a reader gets back of a number of 32 bits.
  static float as_read(float number);

  /// The characters that the code page lacks, as UTF-8; "?" stands for each.
  const std::string& lost() const { return lost_; }

  void value(bool flag);
  void value(std::int16_t whole);
  void value(std::int32_t whole);
  void value(float number);   ///< 7 significant digits
  void value(double number);  ///< 15 significant digits
  void value(AsInt<const std::int32_t> whole);

  /// Values on a line of their own.
  template <class... Values>
  void values(const Values&... fields) {
    (value(fields), ...);
    end_values();
  }
  /// Ends a line of values that were written one by one.
  void end_values();

  /// A line break, NUL or Ctrl-Z in the text would shift or end what stands
  /// behind it and becomes a blank.
  void text(const std::string& line);

  /// Writes `number` on a line of its own and gives it back.
  std::int64_t count(std::int64_t number);

  void skip_values(std::int64_t) {}
  void skip_texts(std::int64_t) {}

  template <class List>
  void make_room(const List& list, std::int64_t bound, std::size_t,
                 std::int64_t highest = std::numeric_limits<std::int32_t>::max() - 1) {
    require_elements(list.bound(), bound, highest);
  }
  template <class Table>
  void make_table(const Table& table, std::int64_t rows, std::int64_t columns, std::size_t) {
    require_elements(static_cast<std::int64_t>(table.size()) - 1, (rows + 1) * (columns + 1) - 1,
                     std::numeric_limits<std::int32_t>::max() - 1);
  }
  void require_bound(std::int64_t, std::int64_t) {}
  void require_bytes_for(std::int64_t, std::size_t) {}

  /// Writes text that is ASCII already, as it stands, and a line end.
  void raw(std::string_view text);

  /// The project can't be written.
  [[noreturn]] void refuse(int error_number, std::string what);

 private:
  using ProjectText::refuse;
  void put(std::string_view value_text);
  void put_number(double number, int digits);
  void require_elements(std::int64_t held, std::int64_t bound, std::int64_t highest);

  Encoding encoding_;
  std::string bytes_;
  std::string lost_;
};

}  // namespace tavlo
