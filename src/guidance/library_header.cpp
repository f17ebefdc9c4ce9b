#include "guidance/library_header.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "files/plain_lines.h"
#include "files/text_encoding.h"
#include "files/text_lines.h"

namespace tavlo {

namespace {

constexpr std::string_view first_line = "[Library Header File]";
constexpr std::string_view files_section = "[library files]";
constexpr std::string_view columns_section = "[column definition]";
constexpr std::string_view end_section = "[end library header file]";
constexpr std::size_t most_faults = 20;
constexpr std::size_t most_lines = 4 * most_library_columns + 2 * most_library_items;

bool is_same(std::string_view line, std::string_view section) {
  return line.size() == section.size() && lower_case(line) == lower_case(section);
}

bool is_section(std::string_view line) {
  return is_same(line, first_line) || is_same(line, files_section) ||
         is_same(line, columns_section) || is_same(line, end_section);
}

bool is_skipped(std::string_view trimmed_line) {
  return trimmed_line.empty() || trimmed_line.front() == '\'';
}

/// Goes through the lines that count.
class HeaderReader {
 public:
  explicit HeaderReader(std::vector<std::string> lines) : lines_(std::move(lines)) {}

  HeaderReading read() {
    reading_.is_header = !lines_.empty() && lines_.front() == first_line;
    if (!reading_.is_header) return std::move(reading_);
    at_ = 1;
    while (const auto line = next()) {
      if (is_same(*line, end_section)) break;
      if (is_same(*line, files_section))
        read_files();
      else if (is_same(*line, columns_section))
        read_columns();
      else
        tell(quoted(*line) + " is no section");
    }
    if (lines_.size() == most_lines) tell("the rest of the file is left out");
    return std::move(reading_);
  }

 private:
  std::optional<std::string_view> next() {
    while (at_ < lines_.size())
      if (const auto line = trimmed(lines_[at_++]); !is_skipped(line)) return line;
    return std::nullopt;
  }

  void tell(std::string what) {
    if (reading_.faults.size() < most_faults)
      reading_.faults.push_back({static_cast<long>(at_), std::move(what)});
  }

  /// The next line of the section; nothing, which is told, where the section ends before.
  std::optional<std::string> value(const char* what) {
    const std::size_t before = at_;
    const auto line = next();
    if (line && !is_section(*line)) return std::string(*line);
    tell(std::string(what) + " is missing");
    at_ = line ? before : at_;
    return std::nullopt;
  }

  /// A whole number of that meaning; nothing, which is told, for any other text.
  std::optional<std::size_t> number(const char* what) {
    const auto text = value(what);
    if (!text) return std::nullopt;
    std::size_t read = 0;
    const auto end = text->data() + text->size();
    const auto [rest, error] = std::from_chars(text->data(), end, read);
    if (error == std::errc::result_out_of_range) return std::numeric_limits<std::size_t>::max();
    if (error == std::errc() && rest == end) return read;
    tell(quoted(*text) + " is no number: " + what + " was expected");
    return std::nullopt;
  }

  void read_files() {
    const auto count = number("the number of files");
    if (!count || *count == 0) return;
    const auto data_file = value("the name of the data file");
    if (!data_file) return;
    reading_.definition.data_file = reading_.definition.reference_file = *data_file;
    if (*count == 1) return;
    if (const auto name = value("the name of the reference file"))
      reading_.definition.reference_file = *name;
  }

  void read_columns() {
    reading_.definition.columns.clear();
    items_ = 0;
    const auto count = number("the number of columns");
    if (!count) return;
    if (*count > most_library_columns)
      tell("only " + std::to_string(most_library_columns) + " columns are read");
    const std::size_t wanted = std::min(*count, most_library_columns);
    while (reading_.definition.columns.size() < wanted && read_column()) continue;
  }

  /// False where the section ends within the column, which keeps what it has.
  bool read_column() {
    const auto name = value("the name of a column");
    if (!name) return false;
    LibraryColumn& column = reading_.definition.columns.emplace_back(LibraryColumn{*name});
    const auto kind = number("the kind of a column");
    if (kind && *kind < column_kinds().size())
      column.Kind = static_cast<ColumnKind>(*kind);
    else if (kind)
      tell("the kind of a column is 0, 1, 2 or 3");
    const auto items = kind ? number("the number of items") : std::nullopt;
    return items && read_items(column, *items);
  }

  bool read_items(LibraryColumn& column, std::size_t count) {
    for (; count > 0; --count) {
      if (items_ == most_library_items) {
        tell("only " + std::to_string(most_library_items) + " items are read");
        return false;
      }
      const auto item = value("an item");
      if (!item) return false;
      column.Items.push_back(*item);
      ++items_;
    }
    return true;
  }

  std::vector<std::string> lines_;
  std::size_t at_ = 0;  ///< the line that comes next, from 0
  std::size_t items_ = 0;
  HeaderReading reading_;
};

/// What is wrong with a text that is to be a line of its own, behind its name.
const char* fault_of_line(std::string_view text) {
  if (trimmed(text).size() != text.size()) return "begins or ends with a blank";
  if (text.starts_with('\'')) return "begins with ', as remarks do";
  if (is_section(text)) return "is the name of a section";
  if (!is_one_line(text) || text.find("\uFEFF") != text.npos) return "is more than a line of text";
  return nullptr;
}

std::optional<std::string> find_unwritable(const LibraryColumn& column, const std::string& place) {
  if (column.Name.empty()) return place + " has no name.";
  if (const char* const fault = fault_of_line(column.Name))
    return place + ": its name " + fault + ".";
  for (const std::string& item : column.Items) {
    if (item.empty()) return place + " (" + column.Name + ") has an empty item.";
    if (const char* const fault = fault_of_line(item))
      return place + " (" + column.Name + "): the item " + quoted(item) + " " + fault + ".";
  }
  return std::nullopt;
}

}  // namespace

HeaderReading read_library_header(std::string_view bytes) {
  std::string converted;
  if (decode_text(bytes, converted)) return {};
  return HeaderReader(plain_lines(bytes, most_lines)).read();
}

std::optional<std::string> find_unwritable(const LibraryDefinition& definition) {
  for (const std::string* const name : {&definition.data_file, &definition.reference_file})
    if (const char* const fault = fault_of_line(*name))
      return "The file name " + quoted(*name) + " " + fault + ".";
  if (definition.columns.size() > most_library_columns)
    return "A library has at most " + std::to_string(most_library_columns) + " fields.";
  std::size_t number = 0, items = 0;
  for (const LibraryColumn& column : definition.columns) {
    const auto fault = find_unwritable(column, "Field " + std::to_string(++number));
    if (fault) return fault;
    items += column.Items.size();
  }
  if (items <= most_library_items) return std::nullopt;
  return "A library has at most " + std::to_string(most_library_items) + " items.";
}

std::string write_library_header(const LibraryDefinition& definition) {
  std::string text;
  const auto add = [&](std::string_view line) { text.append(line).append("\r\n"); };
  add(first_line);
  if (!definition.data_file.empty()) {
    const bool has_reference =
        definition.reference_file != definition.data_file && !definition.reference_file.empty();
    add(files_section);
    add(has_reference ? "2" : "1");
    add(definition.data_file);
    if (has_reference) add(definition.reference_file);
  }
  add(columns_section);
  add(std::to_string(definition.columns.size()));
  for (const LibraryColumn& column : definition.columns) {
    add(column.Name);
    add(std::to_string(static_cast<int>(column.Kind)));
    add(std::to_string(column.Items.size()));
    for (const std::string& item : column.Items) add(item);
  }
  add(end_section);
  return text;
}

}  // namespace tavlo
