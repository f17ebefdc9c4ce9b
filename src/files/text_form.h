// Text form: whether a text with data is in the data notation or a table, told from its
// first line; and in a table the sign between the columns and whether a head line names them.
#pragma once

#include <optional>
#include <string_view>

#include "files/read_options.h"
#include "files/text_lines.h"

namespace tavlo {

enum class TextForm { notation, table, neither };

/// The first line that carries data, without the blanks around it, and its number; empty,
/// with the number of the last line, where there is none.
std::string_view first_data_line(TextLines lines, long& number);

/// The form of a text that begins with the line. A text that fits both is the notation, but
/// where the options tell of a table.
TextForm form_of(std::string_view first_line, const ReadOptions& options);

/// A table from its first line with data on.
struct TableStart {
  TextLines lines;  ///< the next one is `first`
  std::string_view first;
  char separator = ',';
  bool has_head_line = false;
};

/// Finds the start of the table that is left in `lines`, by the options and the content.
TableStart find_table(TextLines lines, const ReadOptions& options);

}  // namespace tavlo
