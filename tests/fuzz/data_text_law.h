// The law of data text: whatever can be read can be written in the notation, and reading
// that back and writing it again gives the same bytes; and what is seen at a first look, said
// to the reader, changes nothing.
#pragma once

#include <string>
#include <string_view>

#include "files/data_text.h"
#include "files/text_look.h"

namespace tavlo::test {

/// The text read with all said that a look at it shows; the notation of what comes of it.
inline std::string read_as_seen(std::string_view bytes, ReadOptions options) {
  TextLook look;
  DataSet data;
  if (const auto fault = look_at_text(bytes, options, 1, look)) return fault->what;
  if (look.separator != 0) {
    options.head_line = look.has_head_line ? HeadLine::yes : HeadLine::no;
    options.places = look.columns;
  }
  const auto fault = read_data_text(bytes, options, data);
  return fault ? fault->what : write_notation(data);
}

/// What breaks the law for these bytes; empty when they keep it.
inline std::string breach_of_data_text_law(std::string_view bytes, const ReadOptions& options) {
  DataSet first;
  if (read_data_text(bytes, options, first)) return {};
  const std::string written = write_notation(first);
  if (const std::string seen = read_as_seen(bytes, options); seen != written)
    return "is not read as it is seen: " + seen;
  DataSet second;
  if (const auto fault = read_data_text(written, options, second))
    return "can't be read back: line " + std::to_string(fault->line) + ": " + fault->what;
  return write_notation(second) == written ? "" : "changed from\n" + written;
}

/// Both readings of a negative time.
inline std::string breach_of_data_text_law(std::string_view bytes) {
  const std::string breach = breach_of_data_text_law(bytes, {.negative_is_value = false});
  return breach.empty() ? breach_of_data_text_law(bytes, {.negative_is_value = true}) : breach;
}

}  // namespace tavlo::test
