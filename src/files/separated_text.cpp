#include "files/separated_text.h"

#include <csv.h>

#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "files/column_layout.h"

namespace tavlo {

namespace {

/// The fields of a row in quotation marks, kept from row to row so that a row
/// costs no allocation.
class QuotedFields {
 public:
  void clear() { count_ = 0; }
  void add(std::string_view text) {
    if (count_ == texts_.size()) texts_.emplace_back();
    texts_[count_++] = text;
  }
  Fields row() {
    fields_.assign(texts_.begin(), texts_.begin() + static_cast<std::ptrdiff_t>(count_));
    return fields_;
  }

 private:
  std::vector<std::string> texts_;
  std::vector<std::string_view> fields_;
  std::size_t count_ = 0;
};

/// Owns a parser of the csv library and gives it whole lines.
class QuotedRow {
 public:
  explicit QuotedRow(char separator) {
    if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
    csv_set_delim(&parser_, static_cast<unsigned char>(separator));
  }
  ~QuotedRow() { csv_free(&parser_); }
  QuotedRow(const QuotedRow&) = delete;
  QuotedRow& operator=(const QuotedRow&) = delete;

  /// False when the quotation marks of the line are broken.
  bool feed(std::string_view line) {
    row_ended_ = false;
    const bool good = parse(line) && parse("\n");
    open_bytes_ = row_ended_ ? 0 : open_bytes_ + line.size() + 1;
    return good;
  }
  bool row_ended() const { return row_ended_; }

  /// Bytes of a row whose last quoted field still waits for its end.
  std::size_t open_bytes() const { return open_bytes_; }

  void start_row() { fields_.clear(); }
  Fields row() { return fields_.row(); }

 private:
  bool parse(std::string_view text) {
    return csv_parse(&parser_, text.data(), text.size(), take_field, end_row, this) == text.size();
  }
  static void take_field(void* field, std::size_t size, void* self) {
    static_cast<QuotedRow*>(self)->fields_.add({static_cast<const char*>(field), size});
  }
  static void end_row(int, void* self) { static_cast<QuotedRow*>(self)->row_ended_ = true; }

  csv_parser parser_{};
  QuotedFields fields_;
  bool row_ended_ = false;
  std::size_t open_bytes_ = 0;
};

/// Gathers rows from lines, and points from rows. A line without quotation marks is
/// cut where it stands; only the others go through the parser, byte by byte.
class TableReader {
 public:
  TableReader(TextLines lines, char separator)
      : lines_(lines), separator_(separator), quoted_(separator) {
    find_quote(lines.rest());
  }

  /// The next row comes to stand in `row`; false at the end and on a fault.
  bool next_row() {
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

  bool refuse(std::string what) {
    fault = ReadFault{first_line_, std::move(what)};
    return false;
  }
  Fields row() const { return row_; }

  std::optional<ReadFault> fault;

 private:
  bool cut(std::string_view line) {
    fields_.clear();
    const char* start = line.data();
    const char* const end = start + line.size();
    for (const char* at = start; at != end; ++at) {
      if (*at != separator_) continue;
      fields_.emplace_back(start, at);
      start = at + 1;
    }
    fields_.emplace_back(start, end);
    row_ = fields_;
    return true;
  }

  void find_quote(std::string_view text) {
    const std::size_t place = text.find('"');
    quote_ = place == std::string_view::npos ? text.data() + text.size() : text.data() + place;
  }

  bool holds_quote(std::string_view line) {
    if (quote_ < line.data())
      find_quote({line.data(), lines_.rest().data() + lines_.rest().size()});
    return quote_ < line.data() + line.size();
  }

  TextLines lines_;
  char separator_;
  QuotedRow quoted_;
  const char* quote_ = nullptr;  ///< the first quotation mark that lies ahead, or the end
  std::vector<std::string_view> fields_;
  Fields row_;
  long first_line_ = 1;
};

char separator_of(TextLines lines) {
  while (const auto line = lines.next())
    if (!is_remark(trimmed(*line))) return line->find('\t') == std::string_view::npos ? ',' : '\t';
  return ',';
}

}  // namespace

std::optional<ReadFault> read_separated_text(TextLines lines, const ReadOptions& options,
                                             PointList& points) {
  points.reserve(lines.count());
  TableReader table(lines, separator_of(lines));
  ColumnLayout layout;
  if (!table.next_row()) return table.fault;
  if (FieldFault wrong = layout.read_header(table.row())) table.refuse(*wrong);
  while (!table.fault && table.next_row())
    if (FieldFault wrong = layout.add_row(table.row(), options, points)) table.refuse(*wrong);
  if (!table.fault && points.empty()) table.refuse("no rows follow the header line");
  return table.fault;
}

}  // namespace tavlo
