#include "files/text_lines.h"

#include <algorithm>

#include "project/code_page.h"

namespace tavlo {

namespace {

bool is_control(char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }

std::string escaped(char c) {
  constexpr char digits[] = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  return {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
}

char line_end_of(std::string_view text) {
  return text.find('\n') == std::string_view::npos ? '\r' : '\n';
}

}  // namespace

std::string quoted(std::string_view text) {
  constexpr std::size_t most = 40;
  const std::string_view part = utf8_front(text, most);
  const bool cut = part.size() < text.size();
  const std::string readable = is_utf8(part) ? std::string(part) : utf8_from_ansi(part);
  std::string shown = "'";
  for (const char c : readable) shown += is_control(c) ? escaped(c) : std::string(1, c);
  return shown + (cut ? "...'" : "'");
}

bool is_remark(std::string_view trimmed_line) {
  return trimmed_line.empty() || trimmed_line.front() == '#';
}

TextLines::TextLines(std::string_view text, ReadWatch* watch)
    : rest_(text), watch_(watch), end_(line_end_of(text)) {}

TextLines TextLines::unwatched() const {
  TextLines lines = *this;
  lines.watch_ = nullptr;
  return lines;
}

std::optional<std::string_view> TextLines::next() {
  constexpr long lines_between_looks = 4096;
  if (done_) return std::nullopt;
  if (++number_ % lines_between_looks == 0 && watch_ && !watch_->goes_on(rest_.size()))
    return std::nullopt;
  const std::size_t end = rest_.find(end_);
  std::string_view line = rest_.substr(0, end);
  done_ = end == std::string_view::npos;
  rest_.remove_prefix(done_ ? rest_.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::size_t TextLines::count() const {
  if (done_) return 0;
  return static_cast<std::size_t>(std::count(rest_.begin(), rest_.end(), end_)) + 1;
}

}  // namespace tavlo
