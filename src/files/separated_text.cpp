#include "files/separated_text.h"

#include <csv.h>

#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "files/column_layout.h"

namespace tavlo {

namespace {

/// The fields of the row at work, kept from row to row so that a row costs no
/// allocation.
class Fields {
 public:
  void clear() { count_ = 0; }
  void add(std::string_view text) {
    if (count_ == fields_.size()) fields_.emplace_back();
    fields_[count_++] = text;
  }
  const std::vector<std::string>& row() {
    fields_.resize(count_);
    return fields_;
  }

 private:
  std::vector<std::string> fields_;
  std::size_t count_ = 0;
};

/// Owns a parser of the csv library and gives it whole lines.
class RowParser {
 public:
  explicit RowParser(char separator) {
    if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
    csv_set_delim(&parser_, static_cast<unsigned char>(separator));
  }
  ~RowParser() { csv_free(&parser_); }
  RowParser(const RowParser&) = delete;
  RowParser& operator=(const RowParser&) = delete;

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
  const std::vector<std::string>& row() { return fields_.row(); }

 private:
  bool parse(std::string_view text) {
    return csv_parse(&parser_, text.data(), text.size(), take_field, end_row, this) == text.size();
  }
  static void take_field(void* field, std::size_t size, void* self) {
    static_cast<RowParser*>(self)->fields_.add({static_cast<const char*>(field), size});
  }
  static void end_row(int, void* self) { static_cast<RowParser*>(self)->row_ended_ = true; }

  csv_parser parser_{};
  Fields fields_;
  bool row_ended_ = false;
  std::size_t open_bytes_ = 0;
};

/// Gathers rows from lines, and points from rows.
class TableReader {
 public:
  TableReader(TextLines lines, char separator) : lines_(lines), parser_(separator) {}

  /// The next row comes to stand in the parser; false at the end and on a fault.
  bool next_row() {
    parser_.start_row();
    while (const auto line = lines_.next()) {
      const bool starts_row = parser_.open_bytes() == 0;
      if (starts_row && is_remark(trimmed(*line))) continue;
      if (starts_row) first_line_ = lines_.number();
      if (!take_line(*line)) return false;
      if (parser_.row_ended()) return true;
    }
    return parser_.open_bytes() == 0 ? false : refuse("a quotation mark is not closed");
  }

  bool refuse(std::string what) {
    fault = ReadFault{first_line_, std::move(what)};
    return false;
  }
  const std::vector<std::string>& row() { return parser_.row(); }

  std::optional<ReadFault> fault;

 private:
  bool take_line(std::string_view line) {
    if (line.size() + parser_.open_bytes() > longest_line)
      return refuse(parser_.open_bytes() == 0 ? "the line is too long"
                                              : "a quotation mark is not closed");
    return parser_.feed(line) ||
           refuse("a quotation mark stands inside a field (put the whole field in marks)");
  }

  TextLines lines_;
  RowParser parser_;
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
