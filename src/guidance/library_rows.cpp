#include "guidance/library_rows.h"

#include <algorithm>

#include "files/text_encoding.h"
#include "files/text_lines.h"
#include "project/code_page.h"

namespace tavlo {

namespace {

constexpr std::size_t nowhere = std::string_view::npos;

/// The mark that closes the field opened before `at`.
std::size_t closing_mark(std::string_view text, std::size_t at) {
  for (;; at += 2) {
    at = text.find('"', at);
    if (at == nowhere || text.substr(at + 1, 1) != "\"") return at;
  }
}

/// A field from its first byte to the comma or line end behind it.
struct FieldPlace {
  std::size_t end = 0;
  std::size_t open = nowhere;  ///< its marks
  std::size_t close = nowhere;
};

/// Blanks may stand around the marks. A mark that no other closes, or that closes before the
/// end of the field, is a character as any other.
FieldPlace field_at(std::string_view text, std::size_t start, char line_end) {
  const char ends[] = {',', line_end};
  const std::size_t open = text.find_first_not_of(' ', start);
  if (text.substr(std::min(open, text.size()), 1) == "\"") {
    const std::size_t close = closing_mark(text, open + 1);
    const std::size_t behind = close == nowhere ? close : text.find_first_not_of(" \r", close + 1);
    const std::size_t end = std::min(behind, text.size());
    const bool is_end = end == text.size() || text[end] == ',' || text[end] == line_end;
    if (close != nowhere && is_end) return {end, open, close};
  }
  return {std::min(text.find_first_of({ends, 2}, start), text.size())};
}

std::string field_text(std::string_view text, std::size_t start, const FieldPlace& place) {
  if (place.close == nowhere) return std::string(text.substr(start, place.end - start));
  std::string field;
  for (std::size_t i = place.open + 1; i < place.close; ++i) {
    field += text[i];
    if (text[i] == '"') ++i;
  }
  return field;
}

template <class Take>
void cut_row(std::string_view row, Take take) {
  for (std::size_t start = 0;;) {
    const FieldPlace place = field_at(row, start, '\n');
    take(start, place);
    if (place.end == row.size()) return;
    start = place.end + 1;
  }
}

std::size_t row_end(std::string_view text, std::size_t start, char line_end) {
  const std::string_view within = text.substr(0, start + longest_line);
  for (std::size_t at = start;; ++at) {
    at = field_at(within, at, line_end).end;
    if (at == within.size() || within[at] == line_end) return at;
  }
}

}  // namespace

std::optional<ReadFault> LibraryRows::read(std::string bytes) {
  *this = {};
  std::string converted;
  std::string_view text = bytes;
  if (auto fault = decode_text(text, converted)) return fault;
  is_utf8_ = converted.empty() && tavlo::is_utf8(text);
  if (is_utf8_)
    text_ = std::move(bytes.erase(0, bytes.size() - text.size()));
  else
    text_ = converted.empty() ? utf8_from_ansi(text) : std::move(converted);
  auto fault = find_rows();
  if (fault) *this = {};
  return fault;
}

std::optional<ReadFault> LibraryRows::find_rows() {
  const std::string_view text = text_;
  end_ = text.find('\n') == nowhere && text.find('\r') != nowhere ? '\r' : '\n';
  std::size_t quote = text.find('"');
  long line = 0;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = std::min(text.find(end_, at), text.size());
    ++line;
    if (end - at > longest_line) return ReadFault{line, "the line is too long"};
    const bool is_blank = end == at || text.substr(at, end - at) == "\r";
    if (!is_blank) starts_.push_back(static_cast<std::uint32_t>(at));
    if (quote < at) quote = text.find('"', at);
    if (quote < end) {
      const std::size_t line_end = end;
      end = std::max(end, row_end(text, at, end_));
      line += std::count(text.begin() + static_cast<std::ptrdiff_t>(line_end),
                         text.begin() + static_cast<std::ptrdiff_t>(end), end_);
    }
    at = end + 1;
  }
  return std::nullopt;
}

std::string_view LibraryRows::text(std::size_t row) const {
  const std::size_t start = starts_[row];
  const std::size_t end = row + 1 < starts_.size() ? starts_[row + 1] : text_.size();
  std::string_view text = std::string_view(text_).substr(start, end - start);
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.remove_suffix(1);
  return text;
}

void LibraryRows::fields(std::size_t row, std::vector<std::string>& fields) const {
  const std::string_view whole = text(row);
  fields.clear();
  cut_row(whole, [&](std::size_t start, const FieldPlace& place) {
    fields.push_back(field_text(whole, start, place));
  });
}

std::size_t LibraryRows::field_count(std::size_t row) const {
  const std::string_view whole = text(row);
  if (whole.find('"') == nowhere)
    return static_cast<std::size_t>(std::count(whole.begin(), whole.end(), ',')) + 1;
  std::size_t number = 0;
  cut_row(whole, [&](std::size_t, const FieldPlace&) { ++number; });
  return number;
}

std::string LibraryRows::continuation(std::string_view row) const {
  const bool ends_line = text_.empty() || text_.back() == end_;
  std::string text(ends_line ? 0 : 1, end_);
  return text.append(row) + end_;
}

void LibraryRows::add(std::string_view row) {
  const std::string text = continuation(row);
  starts_.push_back(static_cast<std::uint32_t>(text_.size() + text.size() - row.size() - 1));
  text_ += text;
}

std::size_t LibraryRows::row_at(std::size_t place, std::size_t from) const {
  constexpr std::size_t near = 8;  // hits are often close to each other
  std::size_t row = from;
  while (row + 1 < starts_.size() && starts_[row + 1] <= place && row < from + near) ++row;
  if (row < from + near) return row;
  const auto after =
      std::upper_bound(starts_.begin() + static_cast<std::ptrdiff_t>(row), starts_.end(), place);
  return static_cast<std::size_t>(after - starts_.begin()) - 1;
}

std::string write_library_row(std::span<const std::string> fields) {
  std::string row;
  for (const std::string& field : fields) {
    if (&field != &fields.front()) row += ',';
    // A byte order mark at the begin of a file would be no part of the field.
    const bool is_plain = field.find_first_of(",\"\r\n") == nowhere && !field.starts_with(' ') &&
                          !field.ends_with(' ') && !field.starts_with("\uFEFF");
    if (is_plain) {
      row += field;
      continue;
    }
    row += '"';
    for (const char c : field) {
      if (c == '"') row += '"';
      row += c == '\r' || c == '\n' ? ' ' : c;
    }
    row += '"';
  }
  // An empty line would be no row.
  return row.empty() ? "\"\"" : row;
}

}  // namespace tavlo
