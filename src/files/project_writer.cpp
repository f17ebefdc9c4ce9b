#include "files/project_writer.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "files/short_decimals.h"
#include "files/text_lines.h"
#include "project/code_page.h"

namespace tavlo {

namespace {

constexpr const char* line_end = "\r\n";
constexpr const char* byte_order_mark = "\xEF\xBB\xBF";
constexpr int single_digits = 7;
constexpr int double_digits = 15;

// The largest numbers round up, at 15 digits, to one that no double can hold.
constexpr double largest_written = 1.79769313486231e308;

bool shifts_lines(char c) { return c == '\r' || c == '\n' || c == '\0' || c == '\x1A'; }

}  // namespace

ProjectWriter::ProjectWriter(Encoding encoding)
    : encoding_(encoding), bytes_(encoding == Encoding::utf8 ? byte_order_mark : "") {}

void ProjectWriter::raw(std::string_view text) {
  bytes_ += text;
  bytes_ += line_end;
}

void ProjectWriter::refuse(int error_number, std::string what) {
  refuse(error_number, ReadFault{0, std::move(what)});
}

void ProjectWriter::put(std::string_view value_text) {
  bytes_ += value_text;
  bytes_ += ',';
}

void ProjectWriter::end_values() {
  bytes_.pop_back();
  bytes_ += line_end;
}

// As printf's "%.<digits>G" in the C locale, without a sign on 0.
void ProjectWriter::put_number(double number, int digits) {
  if (!std::isfinite(number))
    refuse(run_time::overflow, {0, "a number that is infinite or undefined can't be saved"});
  char text[40];
  const double held = std::clamp(number, -largest_written, largest_written);
  const auto end = std::to_chars(text, text + sizeof text, held == 0.0 ? 0.0 : held,
                                 std::chars_format::general, digits);
  std::replace(text, end.ptr, 'e', 'E');
  put({text, static_cast<std::size_t>(end.ptr - text)});
}

float ProjectWriter::as_read(float number) {
  char text[40];
  const auto end = std::to_chars(text, text + sizeof text, static_cast<double>(number),
                                 std::chars_format::general, single_digits);
  double read = 0;
  std::from_chars(text, end.ptr, read);
  return static_cast<float>(read);
}

void ProjectWriter::value(bool flag) { put(flag ? "#TRUE#" : "#FALSE#"); }
void ProjectWriter::value(std::int16_t whole) { value(std::int32_t{whole}); }

void ProjectWriter::value(std::int32_t whole) {
  char text[longest_short_decimal];
  put({text, write_short_whole(whole, text)});
}

void ProjectWriter::value(float number) {
  char text[longest_short_decimal];
  const std::size_t size = write_short_single(number, text);
  if (size > 0) return put({text, size});
  put_number(number, single_digits);
}

void ProjectWriter::value(double number) {
  char text[longest_short_decimal];
  const std::size_t size = write_short_whole(number, text);
  if (size > 0) return put({text, size});
  put_number(number, double_digits);
}

void ProjectWriter::value(AsInt<const std::int32_t> whole) {
  using Range = std::numeric_limits<std::int16_t>;
  if (whole.wide < Range::min() || whole.wide > Range::max())
    refuse(run_time::overflow, {0, std::to_string(whole.wide) + " is too large for the file"});
  value(whole.wide);
}

void ProjectWriter::text(const std::string& line) {
  std::string bytes = encoding_ == Encoding::utf8 ? line : ansi_from_utf8(line, &lost_);
  if (bytes.size() > longest_text)
    refuse(run_time::out_of_string_space, {0, "a text of " + std::to_string(bytes.size()) +
                                                  " characters is too long for the file"});
  std::replace_if(bytes.begin(), bytes.end(), shifts_lines, ' ');
  bytes_ += bytes;
  bytes_ += line_end;
}

std::int64_t ProjectWriter::count(std::int64_t number) {
  put(std::to_string(number));
  end_values();
  return number;
}

void ProjectWriter::require_elements(std::int64_t held, std::int64_t bound, std::int64_t highest) {
  if (bound >= 0 && bound <= std::min(held, highest)) return;
  refuse(run_time::subscript,
         {0, "a list of " + std::to_string(held + 1) + " elements can't be saved up to element " +
                 std::to_string(bound)});
}

}  // namespace tavlo
