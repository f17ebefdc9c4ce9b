#include "numerics/decimal_separators.h"

#include <cctype>

namespace tavlo {

namespace {

/// The character at a place from 0, as UTF-8; empty behind the end.
std::string character_at(const std::string& text, int place) {
  const auto continues = [&text](std::size_t i) {
    return i < text.size() && (text[i] & 0xC0) == 0x80;
  };
  std::size_t start = 0;
  for (; place > 0 && start < text.size(); --place)
    for (++start; continues(start);) ++start;
  std::size_t end = start + 1;
  while (continues(end)) ++end;
  return start < text.size() ? text.substr(start, end - start) : std::string();
}

bool is_punctuation(const std::string& character) {
  constexpr const char* unicode_minus = "\u2212";
  if (character.empty() || character == unicode_minus) return false;
  const auto first = static_cast<unsigned char>(character[0]);
  return !std::isdigit(first) && first != '+' && first != '-';
}

bool is_ascii(const std::string& character) {
  return character.size() == 1 && (character[0] & 0x80) == 0;
}

bool can_separate(const std::string& character) {
  return is_punctuation(character) && is_ascii(character) &&
         std::isalnum(static_cast<unsigned char>(character[0])) == 0 && character != " ";
}

char asked_point(const std::function<std::optional<std::string>()>& ask) {
  constexpr int most_questions = 3;
  for (int asked = 0; asked < most_questions; ++asked) {
    const std::string answer = character_at(ask().value_or(""), 0);
    if (can_separate(answer)) return answer[0];
  }
  return '.';
}

}  // namespace

NumberPunctuation GetDecimalSeparators(const std::string& grouped, const std::string& half,
                                       const std::function<std::optional<std::string>()>& ask) {
  const std::string point = character_at(half, 2);
  const std::string list = character_at(grouped, 1);
  NumberPunctuation found;
  found.DecimalPoint = can_separate(point) ? point[0] : asked_point(ask);
  found.ListPoint = list.empty() ? ' ' : ',';
  // Beyond ASCII these are blanks of some width, but for a rare apostrophe.
  if (is_punctuation(list)) found.ListPoint = is_ascii(list) ? list[0] : ' ';
  // One sign can't do both.
  if (found.ListPoint == found.DecimalPoint)
    found.ListPoint = found.DecimalPoint == ',' ? '.' : ',';
  return found;
}

}  // namespace tavlo
