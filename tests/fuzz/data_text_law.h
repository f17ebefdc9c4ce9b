// The law of data text: whatever can be read can be written in the notation,
// and reading that back and writing it again gives the same bytes.
#pragma once

#include <string>
#include <string_view>

#include "files/data_text.h"

namespace tavlo::test {

/// What breaks the law for these bytes; empty when they keep it.
inline std::string breach_of_data_text_law(std::string_view bytes, const ReadOptions& options) {
  DataSet first;
  if (read_data_text(bytes, options, first)) return {};
  const std::string written = write_notation(first);
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
