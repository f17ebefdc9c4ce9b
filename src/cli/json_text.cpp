#include "cli/json_text.h"

#include <charconv>
#include <cmath>

#include "project/code_page.h"

namespace tavlo::cli {

namespace {

template <class Number>
void append_number(std::string& text, Number value) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  text.append(digits, end);
}

void append_shortest(std::string& text, double value) {
  constexpr double exact_below = 9007199254740992.0;  // 2^53
  if (!std::isfinite(value))
    text += "null";
  else if (std::floor(value) == value && std::fabs(value) < exact_below)
    append_number(text, static_cast<long long>(value));
  else
    append_number(text, value);
}

bool is_plain(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x20 && byte < 0x7F && c != '"' && c != '\\';
}

void append_escaped(std::string& text, char32_t c) {
  constexpr char digits[] = "0123456789abcdef";
  if (c == '"' || c == '\\')
    text += {'\\', static_cast<char>(c)};
  else if (c == '\n')
    text += "\\n";
  else if (c == '\t')
    text += "\\t";
  else if (c < 0x20 || (c >= 0x7F && c < 0xA0))
    text += {'\\', 'u', '0', '0', digits[c >> 4], digits[c & 15]};
  else
    append_utf8(text, c);
}

}  // namespace

void JsonText::separate() {
  if (text_.empty()) return;
  const char last = text_.back();
  if (last != '{' && last != '[' && last != ':' && last != '\n') text_ += ',';
}

JsonText& JsonText::open(char bracket) {
  separate();
  text_ += bracket;
  return *this;
}

JsonText& JsonText::close(char bracket) {
  text_ += bracket;
  return *this;
}

JsonText& JsonText::key(std::string_view name) {
  separate();
  text_ += '"';
  text_ += name;
  text_ += "\":";
  return *this;
}

JsonText& JsonText::number(double value) {
  separate();
  append_shortest(text_, value);
  return *this;
}

JsonText& JsonText::number(float value) { return number(shortest_decimal(value)); }

JsonText& JsonText::integer(long long value) {
  separate();
  append_number(text_, value);
  return *this;
}

JsonText& JsonText::null() { return raw("null"); }

JsonText& JsonText::string(std::string_view value) {
  separate();
  text_ += '"';
  while (!value.empty()) {
    std::size_t plain = 0;
    while (plain < value.size() && is_plain(value[plain])) ++plain;
    text_ += value.substr(0, plain);
    value.remove_prefix(plain);
    if (!value.empty()) append_escaped(text_, next_code_point(value));
  }
  text_ += '"';
  return *this;
}

JsonText& JsonText::raw(std::string_view json) {
  separate();
  text_ += json;
  return *this;
}

double shortest_decimal(float value) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  double decimal = value;
  std::from_chars(digits, end, decimal);
  return decimal;
}

std::string error_line(std::string_view file, std::string_view error) {
  std::string line;
  JsonText(line).open('{').key("file").string(file).key("error").string(error).close('}');
  return line + "\n";
}

}  // namespace tavlo::cli
