// Text look: what a text with data shows of its form before it is read: its columns, what
// each of them seems to be, and the first rows. A person looks at it and says what is
// otherwise; the reader then reads it so.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/read_fault.h"
#include "files/read_options.h"

namespace tavlo {

struct TextLook {
  struct Row {
    long line = 0;  ///< in which it starts, from 1
    std::vector<std::string> fields;
  };

  char separator = 0;  ///< as in ReadOptions; 0 for the data notation
  bool has_head_line = false;
  std::vector<std::string> headings;  ///< none without a head line
  /// What each column is by its heading or, without one, by its content; of two for one
  /// purpose the first.
  std::vector<std::optional<DataColumn>> columns;
  std::vector<Row> rows;  ///< the first, in the order of the text
};

/// Looks at a text, or at the beginning of one that was cut behind a row, as the options tell
/// to read it; `places` and `columns` of these don't matter. Gives at most `most_rows` rows.
std::optional<ReadFault> look_at_text(std::string_view bytes, ReadOptions options,
                                      std::size_t most_rows, TextLook& look);

/// The beginning of a text: at most about `most` bytes of it, cut behind a row. `text` has been
/// decoded.
std::string_view beginning_of(std::string_view text, std::size_t most);

}  // namespace tavlo
