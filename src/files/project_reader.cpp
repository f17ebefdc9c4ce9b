#include "files/project_reader.h"

#include <algorithm>
#include <cmath>

#include "files/short_decimals.h"
#include "files/text_encoding.h"
#include "files/text_lines.h"
#include "numerics/digit.h"
#include "numerics/number_text.h"
#include "numerics/rounding.h"
#include "project/code_page.h"

namespace tavlo {

namespace {

constexpr char ctrl_z = '\x1A';

bool ends_line(char c) { return c == '\r' || c == '\n'; }
bool ends_value(char c) { return c == ',' || ends_line(c); }

std::string lower(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return result;
}

long lines_in(std::string_view text) {
  const auto feeds = std::count(text.begin(), text.end(), '\n');
  return static_cast<long>(feeds > 0 ? feeds : std::count(text.begin(), text.end(), '\r'));
}

std::optional<ReadFault> find_no_text(std::string_view bytes) {
  if (auto fault = find_foreign_bytes(bytes)) return fault;
  const std::size_t at = bytes.find(ctrl_z);
  if (at == std::string_view::npos) return std::nullopt;
  return ReadFault{lines_in(bytes.substr(0, at)) + 1, "there is a Ctrl-Z; this is no text"};
}

std::optional<bool> parse_flag(std::string_view text) {
  const std::string word = lower(text.substr(0, 10));
  if (word == "#true#" || word == "true" || word == "-1" || word == "1") return true;
  if (word == "#false#" || word == "false" || word == "0") return false;
  return std::nullopt;
}

/// The exponent of a double may also be marked by a D.
std::optional<double> parse_with_d(std::string_view text) {
  if (const auto number = parse_number(text)) return number;
  const std::size_t at = text.find_first_of("dD");
  if (at == std::string_view::npos) return std::nullopt;
  std::string changed(text);
  changed[at] = 'E';
  return parse_number(changed);
}

bool take_one_of(std::string_view& text, std::string_view marks) {
  if (text.empty() || marks.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

bool take_digits(std::string_view& text) {
  const auto end = std::find_if_not(text.begin(), text.end(), is_digit);
  const auto digits = static_cast<std::size_t>(end - text.begin());
  text.remove_prefix(digits);
  return digits > 0;
}

/// True for what is a number as far as its form goes, whatever its size.
bool has_form_of_number(std::string_view text) {
  take_one_of(text, "+-");
  const bool whole = take_digits(text);
  const bool broken = take_one_of(text, ".") && take_digits(text);
  if (!whole && !broken) return false;
  if (take_one_of(text, "eEdD")) {
    take_one_of(text, "+-");
    if (!take_digits(text)) return false;
  }
  return text.empty();
}

std::string range_text(double lowest, double highest) {
  return " (" + number_text(lowest) + " to " + number_text(highest) + ")";
}

}  // namespace

ProjectReader::ProjectReader(std::string_view bytes)
    : foreign_(find_no_text(bytes)), rest_(without_byte_order_mark(bytes)) {
  utf8_ = rest_.size() < bytes.size();
}

void ProjectReader::refuse(int error_number, std::string what) {
  refuse(error_number, ReadFault{piece_line_, std::move(what)});
}

// Pieces

void ProjectReader::skip_blanks() {
  while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t')) rest_.remove_prefix(1);
}

void ProjectReader::take_line_end() {
  const bool carriage_return = rest_.starts_with('\r');
  if (!carriage_return && !rest_.starts_with('\n')) return;
  rest_.remove_prefix(carriage_return && rest_.substr(1).starts_with('\n') ? 2 : 1);
  ++line_;
}

void ProjectReader::begin_piece(const char* kind) {
  if (foreign_) refuse(run_time::type_mismatch, *foreign_);
  piece_line_ = line_;
  if (rest_.empty())
    refuse(run_time::input_past_end, std::string("the file ends where a ") + kind + " is due");
}

/// What stands in front of the first such character, or of the end of the file.
template <class Ends>
std::string_view ProjectReader::front_until(Ends ends) {
  const std::string_view front = rest_.substr(0, longest_text + 1);
  const auto end = std::find_if(front.begin(), front.end(), ends);
  const auto size = static_cast<std::size_t>(end - front.begin());
  if (size > longest_text) refuse(run_time::out_of_string_space, "the line is too long");
  return front.substr(0, size);
}

/// What stands between quotation marks; only blanks may stand behind them.
std::string_view ProjectReader::quoted_value() {
  const std::size_t end = front_until(ends_line).find('"', 1);
  if (end == std::string_view::npos)
    refuse(run_time::type_mismatch, "a quotation mark is not closed");
  const std::string_view inside = rest_.substr(1, end - 1);
  rest_.remove_prefix(end + 1);
  skip_blanks();
  if (!rest_.empty() && !ends_value(rest_.front()))
    refuse(run_time::type_mismatch, "there is text behind a quotation mark");
  return trimmed(inside);
}

std::string_view ProjectReader::word() {
  begin_piece("value");
  skip_blanks();
  std::string_view found;
  if (rest_.starts_with('"')) {
    found = quoted_value();
  } else {
    const std::string_view bare = front_until(ends_value);
    rest_.remove_prefix(bare.size());
    found = trimmed(bare);
  }
  take_value_end();
  return found;
}

void ProjectReader::take_value_end() {
  if (rest_.starts_with(','))
    rest_.remove_prefix(1);
  else
    take_line_end();
}

std::string_view ProjectReader::line(const char* kind) {
  begin_piece(kind);
  const std::string_view found = front_until(ends_line);
  rest_.remove_prefix(found.size());
  take_line_end();
  return found;
}

// Values

/// Most values are short decimals right before a comma or the end of their line.
bool ProjectReader::take_short_decimal(double& number) {
  if (foreign_) return false;
  double found = 0;
  const std::size_t size = read_short_decimal(rest_, found);
  if (size == 0 || size == rest_.size() || !ends_value(rest_[size])) return false;
  number = found;
  piece_line_ = line_;
  rest_.remove_prefix(size);
  take_value_end();
  return true;
}

double ProjectReader::number(std::string_view part) {
  if (const auto number = parse_with_d(part)) return *number;
  if (part.empty()) refuse(run_time::type_mismatch, "a value is missing");
  if (has_form_of_number(part)) refuse(run_time::overflow, quoted(part) + " is out of range");
  refuse(run_time::type_mismatch, quoted(part) + " is not a number");
}

float ProjectReader::single(double number) {
  if (std::fabs(number) > std::numeric_limits<float>::max())
    refuse(run_time::overflow, number_text(number) + " is out of range (-3.4E+38 to 3.4E+38)");
  return ToSingle(number);
}

std::int32_t ProjectReader::whole(std::string_view part) {
  using Range = std::numeric_limits<std::int32_t>;
  return ToInt32(required_whole(number(part), Range::min(), Range::max()));
}

double ProjectReader::required_whole(double number, double lowest, double highest) {
  if (std::floor(number) != number)
    refuse(run_time::type_mismatch, number_text(number) + " is not a whole number");
  if (number < lowest || number > highest)
    refuse(run_time::overflow,
           number_text(number) + " is out of range" + range_text(lowest, highest));
  return number;
}

void ProjectReader::value(bool& flag) {
  const std::string_view found = word();
  const auto read = parse_flag(found);
  if (!read) refuse(run_time::type_mismatch, quoted(found) + " is neither #TRUE# nor #FALSE#");
  flag = *read;
}

void ProjectReader::value(std::int16_t& whole) {
  using Range = std::numeric_limits<std::int16_t>;
  double number = 0;
  value(number);
  whole = ToInt16(required_whole(number, Range::min(), Range::max()));
}

void ProjectReader::value(std::int32_t& whole) {
  using Range = std::numeric_limits<std::int32_t>;
  double number = 0;
  value(number);
  whole = ToInt32(required_whole(number, Range::min(), Range::max()));
}

void ProjectReader::value(AsInt<std::int32_t> whole) {
  std::int16_t narrow = 0;
  value(narrow);
  whole.wide = narrow;
}

void ProjectReader::value(float& number) {
  double wide = 0;
  value(wide);
  number = single(wide);
}

void ProjectReader::value(double& number) {
  double read = 0;  // so that a refused value leaves `number` as it was
  if (!take_short_decimal(read)) read = this->number(word());
  number = read;
}

void ProjectReader::text(std::string& line) {
  const std::string_view found = this->line();
  line = utf8_ && is_utf8(found) ? std::string(found) : utf8_from_ansi(found);
}

// Counts

std::int64_t ProjectReader::count(std::int64_t) {
  std::int32_t number = 0;
  value(number);
  return number;
}

void ProjectReader::skip_values(std::int64_t number) {
  for (; number > 0; --number) word();
}

void ProjectReader::skip_texts(std::int64_t number) {
  for (; number > 0; --number) line();
}

void ProjectReader::require_bytes_for(std::int64_t bound, std::size_t least_bytes,
                                      std::int64_t highest) {
  const std::string words = "Count out of range in file: " + std::to_string(bound);
  if (bound < 0 || bound > highest) refuse(run_time::subscript, words);
  const std::size_t most = rest_.size() / least_bytes;
  if (static_cast<std::uint64_t>(bound) + 1 > most)
    refuse(run_time::subscript,
           words + ", but only " + std::to_string(rest_.size()) + " bytes are left in the file");
}

void ProjectReader::require_bound(std::int64_t bound, std::int64_t expected) {
  if (bound == expected) return;
  refuse(run_time::subscript, "Count out of range in file: " + std::to_string(bound) +
                                  " where there must be " + std::to_string(expected));
}

std::string_view ProjectReader::raw(std::int64_t size) {
  begin_piece("text");
  if (size < 0 || static_cast<std::uint64_t>(size) > rest_.size())
    refuse(run_time::input_past_end, "a text of " + std::to_string(size) + " bytes is due, but " +
                                         std::to_string(rest_.size()) + " are left in the file");
  const std::string_view taken = rest_.substr(0, static_cast<std::size_t>(size));
  rest_.remove_prefix(taken.size());
  return taken;
}

void ProjectReader::skip_empty_lines() {
  while (!rest_.empty() && ends_line(rest_.front())) take_line_end();
}

}  // namespace tavlo
