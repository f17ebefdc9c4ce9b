#include "support/project_lines.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <stdexcept>
#include <type_traits>

namespace tavlo::test {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

std::string decimal(const char* format, double value) {
  char buffer[40] = {};
  std::snprintf(buffer, sizeof buffer, format, value == 0 ? 0 : value);
  std::replace(buffer, buffer + sizeof buffer, ',', '.');  // of the locale at work
  return buffer;
}

class Lines {
 public:
  explicit Lines(std::string_view bytes) : rest_(bytes) {
    if (rest_.starts_with(byte_order_mark)) rest_.remove_prefix(byte_order_mark.size());
    if (next() != "Tavlo 1.5 alpha 01 Oct 2011") fail("not the head line");
  }
  /// One line of values of these kinds: Bool, Int of 16 bits, Long, Float, Double.
  std::vector<int> line(std::string_view kinds) {
    std::string_view left = next();
    std::vector<int> wholes;
    for (const char kind : kinds) {
      const std::size_t end = std::min(left.find(','), left.size());
      wholes.push_back(value(kind, std::string(left.substr(0, end))));
      const bool is_last = wholes.size() == kinds.size();
      if (is_last != (end == left.size())) fail("not " + std::string(kinds));
      if (!is_last) left.remove_prefix(end + 1);
    }
    return wholes;
  }
  void list(int size, char kind) {
    fixed(size);
    row(size, kind);
  }
  void row(int size, char kind) {
    if (size < 1) fail("an empty list");
    line(std::string(static_cast<std::size_t>(size), kind));
  }
  void fixed(int number) {
    if (next() != std::to_string(number)) fail("not " + std::to_string(number));
  }
  void texts(int count) {
    for (; count > 0; --count) values_.emplace_back(next());
  }
  std::vector<std::string> with_log() {
    const auto length = static_cast<std::size_t>(line("L")[0]);
    values_.pop_back();
    if (rest_.size() != length + 2 || !rest_.ends_with("\r\n")) fail("the log is not that long");
    values_.emplace_back(rest_.substr(0, length));
    return values_;
  }
  [[noreturn]] void fail(const std::string& what) const {
    throw std::runtime_error("line " + std::to_string(number_) + ": " + what);
  }

 private:
  std::string_view next() {
    const std::size_t end = rest_.find("\r\n");
    ++number_;
    if (end == std::string_view::npos) fail("has no end");
    const std::string_view found = rest_.substr(0, end);
    if (found.find_first_of(std::string_view("\r\n\x1A\0", 4)) != found.npos) fail("control");
    rest_.remove_prefix(end + 2);
    return found;
  }
  template <class Number>
  int number(const std::string& field) {
    Number number{};
    std::from_chars(field.data(), field.data() + field.size(), number);
    if (spelt(number) != field) fail("no such number: " + field);
    return std::is_integral_v<Number> ? static_cast<int>(number) : 0;
  }
  int value(char kind, const std::string& field) {
    values_.push_back(field);
    switch (kind) {
      case 'B': return field == spelt(true) || field == spelt(false) ? 0 : number<int>(field + "?");
      case 'I': return number<std::int16_t>(field);
      case 'L': return number<std::int32_t>(field);
      case 'F': return number<float>(field);
      default: return number<double>(field);
    }
  }

  std::string_view rest_;
  int number_ = 0;
  std::vector<std::string> values_;
};

void items(Lines& file, int count) {
  for (; count > 0; --count) {
    file.fixed(26);
    file.line("BBBBBBFLLLLLLLLLLLLLII");
    file.list(2 * file.line("IIII")[3] + 2, 'F');
    file.fixed(3);
    file.texts(3);
  }
}

void chart(Lines& file) {
  file.line("IL");
  file.fixed(9);
  const auto last = file.line("BBIIIIIII");  // from the fourth: axes, data, fits, boxes, markers
  file.list(last[4] + 1, 'L');
  file.list(last[5] + 1, 'L');
  file.fixed(last[3] + 1);
  for (int i = 0; i <= last[3]; ++i) {
    file.fixed(11);
    file.line("BBDDLLLLLLI");
    items(file, 1);
  }
  file.fixed(last[6]);
  items(file, last[6] + 1);
  file.fixed(last[7]);
  for (int i = 0; i <= last[7]; ++i) {
    file.fixed(19);
    file.line("LLLLLLLLLLLLLLIIIII");
    file.fixed(1);
    file.texts(1);
  }
  file.fixed(last[8] + 1);
  items(file, last[8] + 1);
  file.fixed(3);
  file.texts(3);
}

void profile(Lines& file) {
  file.texts(1);
  const auto last = file.line("LLLI");  // the second and third: columns, rows
  for (int i = 0; i <= last[2]; ++i) file.row(last[1] + 1, 'D');
}

void data(Lines& file) {
  file.texts(1);
  file.fixed(15);
  const int rows = file.line("BBDDDDDLLI")[8];
  const auto last = file.line("III");  // modes, inspection, profiles
  if (file.line("III")[2] != last[0]) file.fail("two numbers of modes");
  if (last[0] > 0) file.texts(last[0] + 1);
  file.fixed(7);
  for (int i = 0; i <= rows; ++i) file.line("DDFFLII");
  file.texts(rows + 1);
  for (int i = 0; last[1] > 0 && i <= last[1]; ++i)
    for (int left = file.line("I")[0]; left >= 0; --left) file.line("FFI");
  for (int i = 0; last[2] > 0 && i <= last[2]; ++i) profile(file);
}

void fit_set(Lines& file) {
  file.fixed(0);
  const auto head = file.line("LII");  // identity, fits, the last of the data sets
  file.texts(1);
  for (int i = 0; i <= head[2]; ++i) file.line("L");
  for (int fits = head[1]; fits > 0; --fits) {
    int rows = file.line("DIIII")[4];
    file.texts(1);
    for (; rows > 0; --rows)
      for (const char* kinds : {"DD", "D", "D", "L"}) file.line(kinds);
  }
}

}  // namespace

std::string spelt(bool value) { return value ? "#TRUE#" : "#FALSE#"; }
std::string spelt(std::int32_t value) { return std::to_string(value); }
std::string spelt(float value) { return decimal("%.7G", static_cast<double>(value)); }
std::string spelt(double value) { return decimal("%.15G", value); }

std::string spelt(std::string_view text, bool is_utf8) {
  static const std::u16string_view upper =  // what the bytes 0x80 to 0x9F stand for
      u"€\x81‚ƒ„…†‡ˆ‰Š‹Œ\x8DŽ\x8F\x90‘’“”•–—˜™š›œ\x9DžŸ";
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto at = [&](std::size_t k) { return static_cast<unsigned char>(text[i + k]); };
    if (is_utf8 || at(0) < 0x80) {
      bytes += text[i];
      continue;
    }
    const bool is_long = at(0) >= 0xE0;
    const auto code =
        static_cast<char16_t>(is_long ? (at(0) & 15) << 12 | (at(1) & 63) << 6 | (at(2) & 63)
                                      : (at(0) & 31) << 6 | (at(1) & 63));
    const std::size_t place = upper.find(code);
    if (place == upper.npos && (code < 0xA0 || code > 0xFF)) throw std::runtime_error("not in it");
    bytes += static_cast<char>(place == upper.npos ? code : 0x80 + place);
    i += is_long ? 2 : 1;
  }
  return bytes;
}

std::vector<std::string> values_of(std::string_view bytes) {
  Lines file(bytes);
  const auto counts = file.line("III");  // the last chart, data sets, fit sets
  for (int i = 0; i <= counts[0]; ++i) chart(file);
  for (int i = 0; i < counts[1]; ++i) data(file);
  for (int i = 0; i < counts[2]; ++i) fit_set(file);
  return file.with_log();
}

}  // namespace tavlo::test
