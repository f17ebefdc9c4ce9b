// format_number: a number by a pattern. The pattern is taken apart once into
// literals and counts of digits, then filled from the decimal digits.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>

#include "numerics/decimal.h"
#include "numerics/number_text.h"

namespace tavlo {
namespace {

constexpr int exact_digits = 15;

struct Pattern {
  std::string before;     ///< literal text in front of the number
  std::string behind;     ///< and behind it
  int whole_places = 0;   ///< 0 and # in front of the point
  int whole_zeros = 0;    ///< from the first 0 on: digits always shown
  int broken_places = 0;  ///< 0 and # behind the point
  int broken_zeros = 0;   ///< up to the last 0: digits always shown
  bool grouped = false;   ///< a comma among the digits
  bool percent = false;
  bool scientific = false;
  bool exponent_plus = false;  ///< E+ shows the sign of a positive exponent, E- doesn't
  int exponent_zeros = 0;
};

bool is_place(char c) { return c == '0' || c == '#'; }

/// "E+0" or "E-00" at the position, among the digits.
bool starts_exponent(std::string_view text, std::size_t at) {
  return at + 2 < text.size() && text[at] == 'E' && (text[at + 1] == '+' || text[at + 1] == '-') &&
         text[at + 2] == '0';
}

class PatternReader {
 public:
  explicit PatternReader(std::string_view text) : text_(text) {}

  Pattern read() {
    while (at_ < text_.size() && !starts_number()) take_literal(pattern_.before);
    read_whole_places();
    if (at_ < text_.size() && text_[at_] == '.') read_broken_places();
    if (starts_exponent(text_, at_)) read_exponent();
    while (at_ < text_.size()) take_literal(pattern_.behind);
    return pattern_;
  }

 private:
  bool starts_number() const {
    const bool broken_only =
        text_[at_] == '.' && at_ + 1 < text_.size() && is_place(text_[at_ + 1]);
    return is_place(text_[at_]) || broken_only;
  }

  void take_literal(std::string& into) {
    if (text_[at_] == '%') pattern_.percent = true;
    into += text_[at_++];
  }

  void read_whole_places() {
    for (; at_ < text_.size() && (is_place(text_[at_]) || text_[at_] == ','); ++at_) {
      if (text_[at_] == ',') {
        pattern_.grouped = true;
        continue;
      }
      ++pattern_.whole_places;
      if (text_[at_] == '0' || pattern_.whole_zeros > 0) ++pattern_.whole_zeros;
    }
  }

  void read_broken_places() {
    for (++at_; at_ < text_.size() && is_place(text_[at_]); ++at_) {
      ++pattern_.broken_places;
      if (text_[at_] == '0') pattern_.broken_zeros = pattern_.broken_places;
    }
  }

  void read_exponent() {
    pattern_.scientific = true;
    pattern_.exponent_plus = text_[at_ + 1] == '+';
    for (at_ += 2; at_ < text_.size() && text_[at_] == '0'; ++at_) ++pattern_.exponent_zeros;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  Pattern pattern_;
};

std::string with_groups(std::string digits) {
  for (std::size_t left = digits.size(); left > 3;) digits.insert(left -= 3, 1, ',');
  return digits;
}

/// Digit of the decimal at a place: 0 is the last one in front of the point.
char digit_at(const Decimal& decimal, int place) {
  const int index = decimal.point - 1 - place;
  const bool inside = index >= 0 && index < static_cast<int>(decimal.digits.size());
  return inside ? decimal.digits[static_cast<std::size_t>(index)] : '0';
}

/// The rounded decimal in the places of the pattern, without literals and sign.
std::string filled(const Decimal& decimal, const Pattern& pattern) {
  std::string whole;
  for (int place = std::max(decimal.point, pattern.whole_zeros); place > 0; --place)
    whole += digit_at(decimal, place - 1);
  const int significant = static_cast<int>(decimal.digits.size()) - decimal.point;
  const int shown = std::max(pattern.broken_zeros, decimal.digits.empty() ? 0 : significant);
  std::string broken;
  for (int place = 1; place <= shown; ++place) broken += digit_at(decimal, -place);
  return (pattern.grouped ? with_groups(whole) : whole) + (broken.empty() ? "" : ".") + broken;
}

std::string exponent_part(int exponent, const Pattern& pattern) {
  std::string digits = std::to_string(std::abs(exponent));
  const auto least = static_cast<std::size_t>(pattern.exponent_zeros);
  if (digits.size() < least) digits.insert(0, least - digits.size(), '0');
  const char* const plus = pattern.exponent_plus ? "+" : "";
  return "E" + (exponent < 0 ? "-" + digits : plus + digits);
}

/// Shifts the point so that the pattern's whole places are filled, and rounds;
/// a carry (9.99 -> 10.0) shifts once more. The exponent that was taken out.
int normalise(Decimal& decimal, const Pattern& pattern) {
  if (decimal.digits.empty()) return 0;
  int exponent = decimal.point - pattern.whole_places;
  decimal.point = pattern.whole_places;
  round_half_away(decimal, pattern.broken_places);
  if (decimal.point > pattern.whole_places) {
    --decimal.point;
    ++exponent;
  }
  return exponent;
}

}  // namespace

std::string format_number(double value, std::string_view pattern_text) {
  const Pattern pattern = PatternReader(pattern_text).read();
  const bool has_places = pattern.whole_places + pattern.broken_places > 0;
  if (!has_places || !std::isfinite(value)) return number_text(value);
  Decimal decimal = decimal_of(value, exact_digits);
  if (pattern.percent && !decimal.digits.empty()) decimal.point += 2;
  std::string number;
  if (pattern.scientific) {
    const int exponent = normalise(decimal, pattern);
    number = filled(decimal, pattern) + exponent_part(exponent, pattern);
  } else {
    round_half_away(decimal, pattern.broken_places);
    number = filled(decimal, pattern);
  }
  const char* const sign = decimal.negative && !decimal.digits.empty() ? "-" : "";
  return sign + pattern.before + number + pattern.behind;
}

}  // namespace tavlo
