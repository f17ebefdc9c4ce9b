#include "project/rtf_scanner.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace tavlo {

namespace {

constexpr auto is_letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };

constexpr auto is_line_break = [](char c) { return c == '\r' || c == '\n'; };

constexpr auto is_text = [](char c) {
  return c != '{' && c != '}' && c != '\\' && !is_line_break(c);
};

/// Takes the longest front off whose characters all are of a kind.
template <class IsOfKind>
std::string_view take_while(std::string_view& text, IsOfKind is_of_kind) {
  const auto end = std::find_if_not(text.begin(), text.end(), is_of_kind);
  const std::string_view front = text.substr(0, static_cast<std::size_t>(end - text.begin()));
  text.remove_prefix(front.size());
  return front;
}

/// Takes a number off the front if one stands there.
bool take_number(std::string_view& text, int& number) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec == std::errc::invalid_argument) return false;
  if (result.ec == std::errc::result_out_of_range)
    number =
        text.front() == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
  text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
  return true;
}

}  // namespace

RtfSign RtfScanner::next() {
  using Kind = RtfSign::Kind;
  take_while(rest_, is_line_break);
  if (rest_.empty()) return {};
  const char c = rest_.front();
  if (is_text(c)) return {.kind = Kind::text, .text = take_while(rest_, is_text)};
  rest_.remove_prefix(1);
  if (c == '{') return {.kind = Kind::open};
  if (c == '}') return {.kind = Kind::close};
  return control();
}

RtfSign RtfScanner::control() {
  if (rest_.empty()) return {};
  if (is_letter(rest_.front())) return word();
  const char symbol = rest_.front();
  rest_.remove_prefix(1);
  return symbol == '\'' ? byte() : RtfSign{.kind = RtfSign::Kind::symbol, .symbol = symbol};
}

RtfSign RtfScanner::word() {
  RtfSign word{.kind = RtfSign::Kind::word, .text = take_while(rest_, is_letter)};
  word.has_number = take_number(rest_, word.number);
  if (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
  if (word.text == "bin" && word.number > 0)
    rest_.remove_prefix(std::min(rest_.size(), static_cast<std::size_t>(word.number)));
  return word;
}

/// A character by its code; one of code 0, which is none, where no digits follow.
RtfSign RtfScanner::byte() {
  RtfSign byte{.kind = RtfSign::Kind::byte};
  const std::string_view digits = rest_.substr(0, 2);
  const auto result =
      std::from_chars(digits.data(), digits.data() + digits.size(), byte.number, 16);
  rest_.remove_prefix(static_cast<std::size_t>(result.ptr - digits.data()));
  return byte;
}

bool RtfScanner::skip(std::string_view characters) {
  if (!rest_.starts_with(characters)) return false;
  rest_.remove_prefix(characters.size());
  return true;
}

void RtfScanner::leave_group() {
  for (long depth = 1; depth > 0;) {
    const RtfSign sign = next();
    if (sign.kind == RtfSign::Kind::end) return;
    if (sign.kind == RtfSign::Kind::open) ++depth;
    if (sign.kind == RtfSign::Kind::close) --depth;
  }
}

}  // namespace tavlo
