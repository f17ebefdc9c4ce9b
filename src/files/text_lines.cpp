#include "files/text_lines.h"

#include <algorithm>

#include "project/code_page.h"

namespace tavlo {

namespace {

constexpr char nul = '\0';

bool is_control(char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }

std::string escaped(char c) {
  constexpr char digits[] = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  return {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
}

char line_end_of(std::string_view text) {
  return text.find('\n') == std::string_view::npos ? '\r' : '\n';
}

bool starts_as_wide_text(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

/// Latin text in UTF-16 has a NUL in each pair of bytes, always at the same
/// place. The start of the file tells.
bool looks_like_utf16(std::string_view bytes) {
  const std::string_view start = bytes.substr(0, 256);
  std::size_t nuls[2] = {0, 0};
  for (std::size_t i = 0; i < start.size(); ++i) nuls[i % 2] += start[i] == nul ? 1 : 0;
  return std::min(nuls[0], nuls[1]) == 0 && std::max(nuls[0], nuls[1]) > start.size() / 4;
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

TextLines::TextLines(std::string_view text) : rest_(text), end_(line_end_of(text)) {}

std::optional<std::string_view> TextLines::next() {
  if (done_) return std::nullopt;
  ++number_;
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

std::string_view without_byte_order_mark(std::string_view bytes) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  if (bytes.starts_with(mark)) bytes.remove_prefix(mark.size());
  return bytes;
}

std::optional<ReadFault> find_foreign_bytes(std::string_view bytes) {
  const std::size_t first_nul = bytes.find(nul);
  const bool has_nul = first_nul != std::string_view::npos;
  if (starts_as_wide_text(bytes) || (has_nul && looks_like_utf16(bytes)))
    return ReadFault{1, "this is UTF-16 text; save it as UTF-8"};
  if (!has_nul) return std::nullopt;
  const std::string_view before = bytes.substr(0, first_nul);
  const auto line_ends = std::count(before.begin(), before.end(), line_end_of(before));
  return ReadFault{static_cast<long>(line_ends) + 1, "there is a NUL byte; this is no text"};
}

}  // namespace tavlo
