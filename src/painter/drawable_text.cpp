#include "painter/drawable_text.h"

#include <algorithm>
#include <string_view>

namespace tavlo {

namespace {

bool is_allowed(char32_t character) {
  if (character < 0x20) return character == '\t';  // a line end has no width to draw
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  return !surrogate && character != 0xFFFE && character != 0xFFFF;
}

bool is_mark_of_xml(char32_t character) {
  return std::u32string_view(U"\"'<>&").find(character) != std::u32string_view::npos;
}

template <class Keep>
QString with_blanks(const std::string& utf8, Keep keep) {
  std::u32string characters = QString::fromStdString(utf8).toStdU32String();
  std::replace_if(
      characters.begin(), characters.end(), [&](char32_t c) { return !keep(c); }, U' ');
  return QString::fromStdU32String(characters);
}

}  // namespace

QString drawable_text(const std::string& utf8) { return with_blanks(utf8, is_allowed); }

QString drawable_face(const std::string& utf8) {
  return with_blanks(utf8, [](char32_t c) { return is_allowed(c) && !is_mark_of_xml(c); });
}

}  // namespace tavlo
