#include "numerics/number_reading.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>

#include "numerics/digit.h"
#include "numerics/number_text.h"
#include "numerics/rounding.h"

namespace tavlo {
namespace {

constexpr std::size_t longest_text = 1000;
constexpr int farthest_exponent = 9999;
constexpr double highest_whole = 2147483640;

bool is_sign(char c) { return c == '+' || c == '-'; }

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string upper_without_blanks(std::string_view text) {
  std::string result;
  for (const char c : text.substr(0, longest_text))
    if (c != ' ' && c != '\t') result += upper(c);
  return result;
}

/// Takes a leading "-", then a leading "+"; true when there was a "-".
bool take_sign(std::string_view& text) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  if (text.starts_with('+')) text.remove_prefix(1);
  return negative;
}

/// Takes one last character that multiplies; the power of ten that it stands for.
int take_multiplier(std::string_view& text) {
  struct Multiplier {
    char letter;
    int power;
  };
  constexpr Multiplier multipliers[] = {{'K', 3},  {'M', 6},  {'G', 9},
                                        {'T', 12}, {'P', 15}, {'%', -2}};
  for (const auto& [letter, power] : multipliers) {
    if (!text.ends_with(letter)) continue;
    text.remove_suffix(1);
    return power;
  }
  return 0;
}

/// E if there is one, else D if there is one, else a character that never comes.
char exponent_letter_of(std::string_view text) {
  for (const char letter : {'E', 'D'})
    if (text.find(letter) != std::string_view::npos) return letter;
  return '\0';
}

bool is_kept(std::string_view text, std::size_t at, char separator, char letter) {
  const char c = text[at];
  if (is_digit(c) || c == separator || c == letter) return c != '\0';
  return is_sign(c) && at > 0 && text[at - 1] == letter && letter != '\0';
}

/// Drops "E", "E+", "E0" and the like at the end, as often as there is one.
void drop_empty_exponents(std::string& text, char letter) {
  while (true) {
    const std::size_t at = text.find_last_of(letter);
    if (letter == '\0' || at == std::string::npos) return;
    if (text.find_first_not_of("+-0", at + 1) != std::string::npos) return;
    text.erase(at);
  }
}

bool is_mantissa(std::string_view text, char separator) {
  const auto separators = std::count(text.begin(), text.end(), separator);
  const auto digits = std::count_if(text.begin(), text.end(), is_digit);
  return separators <= 1 && digits >= 1 &&
         separators + digits == static_cast<std::ptrdiff_t>(text.size());
}

bool is_exponent(std::string_view text) {
  if (!text.empty() && is_sign(text.front())) text.remove_prefix(1);
  return !text.empty() && std::all_of(text.begin(), text.end(), is_digit);
}

/// An integer of any length, held within the highest exponent.
int bounded_exponent(std::string_view text) {
  const bool negative = text.starts_with('-');
  int exponent = 0;
  for (const char c : text)
    if (is_digit(c)) exponent = std::min(exponent * 10 + (c - '0'), farthest_exponent);
  return negative ? -exponent : exponent;
}

/// Mantissa and exponent of the cleaned text; not valid when it is no number.
struct Parts {
  std::string mantissa;
  int exponent = 0;
  bool valid = false;
};

Parts split(const std::string& cleaned, char separator, char letter) {
  Parts parts;
  const std::size_t at = letter == '\0' ? std::string::npos : cleaned.find_last_of(letter);
  parts.mantissa = cleaned.substr(0, at);
  parts.valid = is_mantissa(parts.mantissa, separator);
  if (at != std::string::npos) {
    const std::string_view exponent = std::string_view(cleaned).substr(at + 1);
    parts.valid = parts.valid && is_exponent(exponent);
    parts.exponent = bounded_exponent(exponent);
  }
  std::replace(parts.mantissa.begin(), parts.mantissa.end(), separator, '.');
  return parts;
}

/// The value of the text, which is replaced by its cleaned form. Error 6 when it
/// is too large. All powers of ten are joined first, so that there is only one
/// rounding and 7% is the double that 0.07 is.
double read_number(std::string& text, char separator) {
  const std::string compact = upper_without_blanks(text);
  std::string_view rest = compact;
  const bool negative = take_sign(rest);
  const int multiplier = take_multiplier(rest);
  const char letter = exponent_letter_of(rest);
  std::string cleaned;
  for (std::size_t at = 0; at < rest.size(); ++at)
    if (is_kept(rest, at, separator, letter)) cleaned += rest[at];
  drop_empty_exponents(cleaned, letter);
  const Parts parts = split(cleaned, separator, letter);
  text = parts.valid ? cleaned : "0";
  if (!parts.valid) return 0;
  const auto value =
      parse_number(parts.mantissa + "E" + std::to_string(parts.exponent + multiplier));
  if (!value) throw RunTimeError(run_time::overflow);
  return negative ? -*value : *value;
}

}  // namespace

bool are_thousands(std::string_view text, char mark) {
  constexpr std::size_t size_of_group = 3;
  std::size_t at = text.find(mark);
  if (at == std::string_view::npos) return true;
  const auto is_digit_at = [&](std::size_t i) { return i < text.size() && is_digit(text[i]); };
  std::size_t first = at;
  while (first > 0 && is_digit(text[first - 1])) --first;
  const bool follows_a_sign = first > 0 && (text[first - 1] == '.' || text[first - 1] == ',');
  const std::size_t leading = at - first;
  if (leading == 0 || leading > size_of_group || text[first] == '0' || follows_a_sign) return false;
  while (at < text.size() && text[at] == mark) {
    for (std::size_t i = 1; i <= size_of_group; ++i)
      if (!is_digit_at(at + i)) return false;
    at += size_of_group + 1;
  }
  return !is_digit_at(at) && text.find(mark, at) == std::string_view::npos;
}

std::string with_decimal_point(std::string text, const NumberPunctuation& punctuation) {
  const char point = punctuation.DecimalPoint;
  if (point == '.' || text.find(point) == std::string::npos || !are_thousands(text, '.'))
    return text;
  std::erase(text, '.');
  std::replace(text.begin(), text.end(), point, '.');
  return text;
}

double fd_Str2Dbl(ErrorReporter& reporter, std::string& text, std::int32_t& whole,
                  const NumberPunctuation& punctuation) {
  whole = 0;
  if (text.empty()) return 0;
  const auto words = [&](ErrorReporter& to) {
    to.add_lines({"fd_Str2Dbl routine:"});
    text = "0";
  };
  return guarded(reporter, 0.0, words, [&] {
    const double value = read_number(text, punctuation.DecimalPoint);
    if (std::fabs(value) <= highest_whole) whole = ToInt32(value);
    return value;
  });
}

double fd_Str2Dbl(ErrorReporter& reporter, const std::string& text,
                  const NumberPunctuation& punctuation) {
  std::string cleaned = text.substr(0, longest_text);
  std::int32_t whole = 0;
  return fd_Str2Dbl(reporter, cleaned, whole, punctuation);
}

}  // namespace tavlo
