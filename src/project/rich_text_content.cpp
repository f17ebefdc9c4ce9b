#include "project/rich_text_content.h"

#include <algorithm>

#include "project/code_page.h"

namespace tavlo {

namespace {

// Control characters that ASCII has for this. Text never has them: add() leaves them out.
constexpr char row_mark = '\x1D';
constexpr char row_end_mark = '\x1E';
constexpr char cell_end_mark = '\x1F';

constexpr int inch = 1440;
constexpr int widest = 100 * inch;

constexpr auto is_mark_of_table = [](char c) { return c >= row_mark && c <= cell_end_mark; };

constexpr auto is_mark = [](char c) { return c == '\n' || is_mark_of_table(c); };

constexpr auto is_ascii_text = [](char c) {
  return (c >= ' ' && c < '\x7F') || c == '\n' || c == '\t';
};

/// Takes the longest front off that needs no change.
std::string_view take_ascii_text(std::string_view& text) {
  const auto end = std::find_if_not(text.begin(), text.end(), is_ascii_text);
  const auto length = static_cast<std::size_t>(end - text.begin());
  const std::string_view front = text.substr(0, length);
  text.remove_prefix(length);
  return front;
}

/// Text as the content keeps it.
std::string cleaned(std::string_view text) {
  std::string clean;
  clean.reserve(text.size());
  while (!text.empty()) {
    clean += take_ascii_text(text);
    if (text.empty()) break;
    char32_t code = next_code_point(text);
    if (code == '\r') {
      if (!text.empty() && text.front() == '\n') continue;
      code = '\n';
    }
    if (code == '\n' || (code >= ' ' && code != 0x7F)) append_utf8(clean, code);
  }
  return clean;
}

/// A name of one line, without the semicolon that ends names in RTF.
std::string font_name_of(std::string_view name) {
  std::string clean = cleaned(name);
  std::erase_if(clean, [](char c) { return c == '\n' || c == '\t' || c == ';'; });
  clean.erase(0, clean.find_first_not_of(' '));
  clean.erase(clean.find_last_not_of(' ') + 1);
  return clean;
}

/// Edges that a table can have: one a cell, none below the one before.
std::vector<int> usable_edges(std::span<const int> edges, std::size_t cells) {
  std::vector<int> usable;
  int last = 0;
  for (std::size_t i = 0; i < cells; ++i) {
    last = std::clamp(i < edges.size() ? edges[i] : last + inch, last, widest);
    usable.push_back(last);
  }
  return usable;
}

}  // namespace

std::uint16_t RichTextContent::font(std::string_view name) {
  const std::string clean = font_name_of(name);
  const auto found = std::find(fonts_.begin(), fonts_.end(), clean);
  const auto place = static_cast<std::uint16_t>(found - fonts_.begin());
  if (found != fonts_.end()) return place;
  if (clean.empty() || fonts_.size() >= most_fonts) return 0;
  fonts_.push_back(clean);
  return place;
}

void RichTextContent::add(std::string_view text, const TextStyle& style) {
  std::string_view rest = text;
  take_ascii_text(rest);
  if (rest.empty()) return add_clean(text, style);
  add_clean(cleaned(text), style);
}

void RichTextContent::add_clean(std::string_view text, const TextStyle& style) {
  const std::size_t first_character = text.find_first_not_of('\n');
  if (first_character != text.npos) add_run(text_.size() + first_character, style);
  text_ += text;
}

void RichTextContent::add_run(std::size_t begin, const TextStyle& style) {
  const TextStyle last = runs_.empty() ? TextStyle{} : runs_.back().style;
  if (style != last && runs_.size() < most_runs) runs_.push_back({begin, style});
}

bool RichTextContent::is_at_line_begin() const {
  return text_.empty() || text_.back() == '\n' || text_.back() == row_end_mark;
}

void RichTextContent::begin_row() {
  if (!is_at_line_begin()) text_ += '\n';
  row_begin_ = text_.size();
  cells_in_row_ = 0;
  text_ += row_mark;
}

void RichTextContent::end_cell() {
  if (cells_in_row_ == most_cells) {
    text_[last_cell_end_] = '\t';
  } else {
    ++cells_in_row_;
  }
  last_cell_end_ = text_.size();
  text_ += cell_end_mark;
}

void RichTextContent::end_row(std::span<const int> right_edges) {
  if (text_.back() != cell_end_mark) end_cell();
  text_ += row_end_mark;
  add_row(row_begin_, usable_edges(right_edges, cells_in_row_));
}

/// Rows of one table share their edges.
void RichTextContent::add_row(std::size_t begin, std::span<const int> right_edges) {
  if (rows_.empty() || !std::ranges::equal(edges(rows_.back()), right_edges)) {
    rows_.push_back({begin, edges_.size(), right_edges.size()});
    edges_.insert(edges_.end(), right_edges.begin(), right_edges.end());
  } else {
    rows_.push_back({begin, rows_.back().edges, right_edges.size()});
  }
}

void RichTextContent::drop_last_line_end() {
  if (text_.ends_with('\n')) text_.pop_back();
}

void RichTextContent::add(const RichTextContent& other, std::size_t begin, std::size_t end) {
  if (begin == end) return;
  if (other.text_[begin] == row_mark && !is_at_line_begin()) text_ += '\n';
  add_runs(other, begin, end);
  add_rows(other, begin, end);
  text_.append(other.text_, begin, end - begin);
}

void RichTextContent::add_runs(const RichTextContent& other, std::size_t begin, std::size_t end) {
  std::vector<std::uint16_t> places;
  for (const std::string& name : other.fonts_) places.push_back(font(name));
  const auto add_here = [&](std::size_t place, TextStyle style) {
    style.font = places[style.font];
    add_run(place - begin + text_.size(), style);
  };
  auto next = other.run_at(begin);
  const std::size_t first_end = next == other.runs_.end() ? end : std::min(end, next->begin);
  const auto first = other.text_.begin() + static_cast<std::ptrdiff_t>(begin);
  const auto last = other.text_.begin() + static_cast<std::ptrdiff_t>(first_end);
  const auto character = std::find_if_not(first, last, is_mark);
  if (character != last)
    add_here(begin + static_cast<std::size_t>(character - first), other.style_before(next));
  for (; next != other.runs_.end() && next->begin < end; ++next) add_here(next->begin, next->style);
}

void RichTextContent::add_rows(const RichTextContent& other, std::size_t begin, std::size_t end) {
  for (auto row = other.row_at(begin); row != other.rows_.end() && row->begin < end; ++row)
    add_row(row->begin - begin + text_.size(), other.edges(*row));
}

RichTextContent RichTextContent::front(std::size_t end) const {
  RichTextContent part;
  part.add(*this, 0, end);
  return part;
}

/// The first run that begins at a place or behind it.
std::vector<RichTextContent::Run>::const_iterator RichTextContent::run_at(std::size_t place) const {
  return std::lower_bound(runs_.begin(), runs_.end(), place,
                          [](const Run& run, std::size_t at) { return run.begin < at; });
}

std::vector<RichTextContent::Row>::const_iterator RichTextContent::row_at(std::size_t place) const {
  return std::lower_bound(rows_.begin(), rows_.end(), place,
                          [](const Row& row, std::size_t at) { return row.begin < at; });
}

TextStyle RichTextContent::style_before(std::vector<Run>::const_iterator run) const {
  return run == runs_.begin() ? TextStyle{} : std::prev(run)->style;
}

void RichTextContent::visit(std::size_t begin, std::size_t end, RichTextVisitor& visitor) const {
  auto run = run_at(begin);
  auto row = row_at(begin);
  for (std::size_t at = begin; at < end;) {
    while (run != runs_.end() && run->begin <= at) ++run;
    switch (text_[at]) {
      case '\n': visitor.line_end(); break;
      case row_mark: visitor.begin_row(edges(*row++)); break;
      case cell_end_mark: visitor.end_cell(); break;
      case row_end_mark: visitor.end_row(); break;
      default: {
        const std::size_t stop = run == runs_.end() ? end : std::min(end, run->begin);
        const std::string_view text = text_up_to_mark(at, stop);
        const TextStyle style = style_before(run);
        visitor.text(text, style, fonts_[style.font]);
        at += text.size();
        continue;
      }
    }
    ++at;
  }
}

std::string_view RichTextContent::text_up_to_mark(std::size_t begin, std::size_t end) const {
  const std::string_view text(&text_[begin], end - begin);
  const auto mark = std::find_if(text.begin(), text.end(), is_mark);
  return text.substr(0, static_cast<std::size_t>(mark - text.begin()));
}

std::string RichTextContent::plain(std::size_t begin, std::size_t end) const {
  std::string plain = text_.substr(begin, end - begin);
  if (std::none_of(plain.begin(), plain.end(), is_mark_of_table)) return plain;
  bool in_row = false;
  auto to = plain.begin();
  for (auto from = plain.begin(); from != plain.end(); ++from) {
    if (*from == row_mark) {
      in_row = true;
    } else if (*from == row_end_mark) {
      in_row = false;
      *to++ = '\n';
    } else if (*from == cell_end_mark) {
      if (from[1] != row_end_mark) *to++ = '\t';
    } else {
      // A row stays one line, so that a sheet takes it.
      *to++ = in_row && *from == '\n' ? ' ' : *from;
    }
  }
  plain.erase(to, plain.end());
  return plain;
}

std::vector<std::size_t> RichTextContent::line_begins(std::size_t begin, std::size_t end,
                                                      int every) const {
  std::vector<std::size_t> begins;
  int lines = 0;
  bool in_row = false;
  for (std::size_t at = begin; at < end; ++at) {
    if (text_[at] == row_mark || text_[at] == row_end_mark) in_row = text_[at] == row_mark;
    if (text_[at] != '\n' || in_row || ++lines < every) continue;
    begins.push_back(at + 1);
    lines = 0;
  }
  return begins;
}

bool RichTextContent::same_part(std::size_t begin, const RichTextContent& other,
                                std::size_t other_begin, std::size_t length) const {
  const std::size_t end = begin + length, other_end = other_begin + length;
  if (size() < end || other.size() < other_end) return false;
  if (text_.compare(begin, length, other.text_, other_begin, length) != 0) return false;
  const auto same_style = [&](TextStyle a, const TextStyle& b) {
    const bool same_font = fonts_[a.font] == other.fonts_[b.font];
    a.font = b.font;
    return same_font && a == b;
  };
  const auto same_run = [&](const Run& a, const Run& b) {
    return a.begin - begin == b.begin - other_begin && same_style(a.style, b.style);
  };
  const auto same_row = [&](const Row& a, const Row& b) {
    return std::ranges::equal(edges(a), other.edges(b));
  };
  return same_style(style_before(run_at(begin)), other.style_before(other.run_at(other_begin))) &&
         std::equal(run_at(begin), run_at(end), other.run_at(other_begin), other.run_at(other_end),
                    same_run) &&
         std::equal(row_at(begin), row_at(end), other.row_at(other_begin), other.row_at(other_end),
                    same_row);
}

bool RichTextContent::same_front(const RichTextContent& other, std::size_t end) const {
  if (size() < end || other.size() < end) return false;
  if (text_.compare(0, end, other.text_, 0, end) != 0) return false;
  const auto same_run = [&](const Run& a, const Run& b) {
    TextStyle style = b.style;
    style.font = a.style.font;
    return a.begin == b.begin && a.style == style &&
           fonts_[a.style.font] == other.fonts_[b.style.font];
  };
  const auto same_edges = [&](const Row& a, const Row& b) {
    return std::ranges::equal(edges(a), other.edges(b));
  };
  return std::equal(runs_.begin(), run_at(end), other.runs_.begin(), other.run_at(end), same_run) &&
         std::equal(rows_.begin(), row_at(end), other.rows_.begin(), other.row_at(end), same_edges);
}

}  // namespace tavlo
