#include "files/table_rows.h"

#include <algorithm>
#include <new>

namespace tavlo {

namespace {

constexpr std::string_view blanks = " \t";

bool is_empty(std::string_view field) { return trimmed(field).empty(); }

/// Whether a field between tabs begins with a quotation mark.
bool has_quoted_field(std::string_view line) {
  for (std::size_t start = 0; start < line.size();) {
    if (trimmed(line.substr(start)).starts_with('"')) return true;
    start = std::min(line.find('\t', start), line.size() - 1) + 1;
  }
  return false;
}

}  // namespace

void QuotedFields::add(std::string_view text) {
  if (count_ == texts_.size()) texts_.emplace_back();
  texts_[count_++] = text;
}

Fields QuotedFields::row() {
  fields_.assign(texts_.begin(), texts_.begin() + static_cast<std::ptrdiff_t>(count_));
  return fields_;
}

QuotedRow::QuotedRow(char separator) {
  if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
  csv_set_delim(&parser_, static_cast<unsigned char>(separator));
}

bool QuotedRow::feed(std::string_view line) {
  row_ended_ = false;
  const bool good = parse(line) && parse("\n");
  open_bytes_ = row_ended_ ? 0 : open_bytes_ + line.size() + 1;
  return good;
}

bool QuotedRow::parse(std::string_view text) {
  const auto take_field = [](void* field, std::size_t size, void* self) {
    static_cast<QuotedRow*>(self)->fields_.add({static_cast<const char*>(field), size});
  };
  const auto end_row = [](int, void* self) { static_cast<QuotedRow*>(self)->row_ended_ = true; };
  return csv_parse(&parser_, text.data(), text.size(), take_field, end_row, this) == text.size();
}

TableRows::TableRows(TextLines lines, char separator)
    : lines_(lines), separator_(separator), quoted_(separator) {
  find_quote(lines.rest());
}

bool TableRows::next_row() {
  while (read_row())
    if (!row_.front().empty() || !std::all_of(row_.begin(), row_.end(), is_empty)) return true;
  return false;
}

bool TableRows::read_row() {
  quoted_.start_row();
  while (const auto line = lines_.next()) {
    const bool starts_row = quoted_.open_bytes() == 0;
    if (starts_row && is_remark(trimmed(*line))) continue;
    if (starts_row) first_line_ = lines_.number();
    if (line->size() + quoted_.open_bytes() > longest_line)
      return refuse(starts_row ? "the line is too long" : "a quotation mark is not closed");
    if (starts_row && !holds_quote(*line)) return cut(*line);
    if (!quoted_.feed(*line))
      return refuse("a quotation mark stands inside a field (put the whole field in marks)");
    if (!quoted_.row_ended()) continue;
    row_ = quoted_.row();
    return true;
  }
  return quoted_.open_bytes() == 0 ? false : refuse("a quotation mark is not closed");
}

bool TableRows::refuse(std::string what) {
  fault = ReadFault{first_line_, std::move(what)};
  return false;
}

bool TableRows::cut(std::string_view line) {
  fields_.clear();
  if (separator_ == ' ')
    cut_at_blanks(line);
  else
    cut_at_separators(line);
  row_ = fields_;
  return true;
}

void TableRows::cut_at_separators(std::string_view line) {
  const char separator = separator_;  // no member: the loop is hot
  const char* start = line.data();
  const char* const end = start + line.size();
  for (const char* at = start; at != end; ++at) {
    if (*at != separator) continue;
    fields_.emplace_back(start, at);
    start = at + 1;
  }
  fields_.emplace_back(start, end);
}

void TableRows::cut_at_blanks(std::string_view line) {
  for (line = trimmed(line); !line.empty(); line = trimmed(line)) {
    const std::string_view field = line.substr(0, line.find_first_of(blanks));
    fields_.push_back(field);
    line.remove_prefix(field.size());
  }
}

void TableRows::find_quote(std::string_view text) {
  const std::size_t place = text.find('"');
  const bool none = place == std::string_view::npos || separator_ == ' ';
  quote_ = text.data() + (none ? text.size() : place);
}

bool TableRows::holds_quote(std::string_view line) {
  if (quote_ < line.data()) find_quote({line.data(), lines_.rest().data() + lines_.rest().size()});
  if (quote_ >= line.data() + line.size()) return false;
  // Spreadsheets copy an inch mark as it is: between tabs it needs no marks around its cell.
  return separator_ != '\t' || has_quoted_field(line);
}

}  // namespace tavlo
