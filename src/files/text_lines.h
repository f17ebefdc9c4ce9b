// Text lines: the bytes of a text file cut into lines, whichever system wrote
// it, and the first look at bytes that may not be text at all.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "files/read_fault.h"

namespace tavlo {

/// Longer lines are refused: they are no data, and a parser that kept them
/// could be made to grow without bound.
inline constexpr std::size_t longest_line = 64 * 1024;

/// `text` without the blanks and tabs around it. Here for the sake of speed: it
/// runs several times for each line.
inline std::string_view trimmed(std::string_view text) {
  const auto is_blank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

/// `text` for a message: in quotes, control characters made visible, long texts
/// cut, bytes that are no UTF-8 taken as the ANSI code page.
std::string quoted(std::string_view text);

/// True for a line that carries no data: blank, or a remark that starts with #.
bool is_remark(std::string_view trimmed_line);

/// Walks through the lines of a text. The line end is LF or CR LF where the
/// text holds a LF, otherwise CR.
class TextLines {
 public:
  explicit TextLines(std::string_view text);

  /// The next line without its end; nothing behind the last.
  std::optional<std::string_view> next();

  /// Number of the line that `next` gave last, from 1.
  long number() const { return number_; }

  /// What the lines that are left consist of.
  std::string_view rest() const { return rest_; }

  /// How many lines are left, the last one counted even if it is empty.
  std::size_t count() const;

 private:
  std::string_view rest_;
  char end_;
  bool done_ = false;
  long number_ = 0;
};

/// Takes a UTF-8 byte order mark off the front.
std::string_view without_byte_order_mark(std::string_view bytes);

/// Refuses UTF-16, UTF-32 and bytes that are no text (NUL).
std::optional<ReadFault> find_foreign_bytes(std::string_view bytes);

}  // namespace tavlo
