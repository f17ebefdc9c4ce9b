// Digits, in no locale's understanding but that of numbers in files.
#pragma once

#include <algorithm>
#include <string_view>

namespace tavlo {

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// One digit or more, and nothing else.
constexpr bool is_digits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), is_digit);
}

}  // namespace tavlo
