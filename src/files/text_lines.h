// Text lines: a text cut into lines, whichever system wrote it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "files/read_watch.h"

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
  /// A `watch` is looked at every few thousand lines.
  explicit TextLines(std::string_view text, ReadWatch* watch = nullptr);

  /// The next line without its end; nothing behind the last, or where the watch stops.
  std::optional<std::string_view> next();

  /// The same lines for a look ahead, which is no progress.
  TextLines unwatched() const;

  /// Number of the line that `next` gave last, from 1.
  long number() const { return number_; }

  /// What the lines that are left consist of.
  std::string_view rest() const { return rest_; }

  /// How many lines are left, the last one counted even if it is empty.
  std::size_t count() const;

 private:
  std::string_view rest_;
  ReadWatch* watch_;
  char end_;
  bool done_ = false;
  long number_ = 0;
};

}  // namespace tavlo
