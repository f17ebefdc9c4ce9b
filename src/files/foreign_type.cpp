#include "files/foreign_type.h"

#include "files/column_names.h"
#include "files/text_encoding.h"
#include "files/text_lines.h"
#include "project/size_limits.h"

namespace tavlo {

namespace {

bool starts_with_words(std::string_view line, std::string_view words) {
  return equal_in_any_case(line.substr(0, words.size()), words);
}

bool ends_with_words(std::string_view text, std::string_view words) {
  return text.size() >= words.size() &&
         equal_in_any_case(text.substr(text.size() - words.size()), words);
}

/// The title of the page stands four lines below its first one.
FileType type_of_page(TextLines lines) {
  std::optional<std::string_view> line;
  for (int i = 0; i < 4; ++i) line = lines.next();
  const bool titled = line && equal_in_any_case(*line, "<title>quellmarch/quelplot_data</title>");
  return titled ? FileType::quelplot_html : FileType::unknown;
}

}  // namespace

FileType file_type(std::string_view bytes, const std::string& path) {
  std::string converted;
  std::string_view text = bytes;
  // Bytes that are no text are for the reader to refuse; the first line may still tell.
  if (decode_text(text, converted)) text = without_byte_order_mark(bytes);
  TextLines lines(text);
  auto first = lines.next();
  while (first && first->empty()) first = lines.next();
  const std::string_view line = first.value_or("");
  if (starts_with_words(line, "tavlo 1.5")) return FileType::project;
  if (starts_with_words(line, "tavlo data")) return FileType::old_data;
  if (starts_with_words(line, "quelplot_data2")) return FileType::quelplot;
  if (starts_with_words(line, "<html>")) return type_of_page(lines);
  return ends_with_words(path, ".vkm") ? FileType::macro : FileType::unknown;
}

std::uint64_t largest_file(FileType type) {
  return type == FileType::project ? largest_project_file : largest_data_file;
}

}  // namespace tavlo
