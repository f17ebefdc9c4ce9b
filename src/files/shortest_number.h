// Shortest number: a number as the fewest digits that read back equal.
#pragma once

#include <charconv>
#include <string>

namespace tavlo {

/// Adds a finite number of 32 or 64 bits.
template <class Number>
void append_shortest(std::string& text, Number value) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  text.append(digits, end);
}

}  // namespace tavlo
