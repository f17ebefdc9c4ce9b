#include "files/decimal_comma.h"

#include "files/text_lines.h"
#include "numerics/digit.h"

namespace tavlo {

namespace {

/// "1,000" and "12,500", but neither "1000,500" nor "0,500".
bool may_be_thousands(std::string_view number) {
  const std::size_t comma = number.find(',');
  const std::string_view before = number.substr(0, comma);
  return before.size() <= 3 && !before.starts_with('0') && is_digits(before) &&
         number.size() == comma + 4;
}

}  // namespace

bool is_digits_comma_digits(std::string_view text) {
  while (!text.empty() && std::string_view(">+- ").find(text.front()) != std::string_view::npos)
    text.remove_prefix(1);
  const std::size_t comma = text.find(',');
  return comma != std::string_view::npos && is_digits(text.substr(0, comma)) &&
         is_digits(text.substr(comma + 1));
}

std::string words_of_doubtful_comma(std::string_view text) {
  return "the comma in " + quoted(text) +
         " may be a decimal sign, or stand between a time and its count or between thousands";
}

DecimalComma::DecimalComma(DecimalSign sign, bool free)
    : allowed_(sign == DecimalSign::comma || (free && sign == DecimalSign::by_content)),
      used_(sign == DecimalSign::comma),
      sure_(used_) {}

FieldFault DecimalComma::replace(std::string_view& number, const PointList& before) {
  if (used_ && number.find('.') != std::string_view::npos)
    return quoted(number) + " has a full stop, where other numbers have a decimal comma";
  const std::size_t comma = number.find(',');
  if (!allowed_ || comma == std::string_view::npos) return std::nullopt;
  if (!used_ && before.has_fraction())
    return quoted(number) + " has a comma, where the numbers above have a decimal point";
  used_ = true;
  sure_ = sure_ || !may_be_thousands(number);
  pointed_ = number;
  pointed_[comma] = '.';
  number = pointed_;
  return std::nullopt;
}

}  // namespace tavlo
