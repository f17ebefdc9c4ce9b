// Code page: the 8-bit ANSI code page (Windows-1252) of project files and
// metafiles, to and from the UTF-8 that the program works in.
#pragma once

#include <string>
#include <string_view>

namespace tavlo {

/// Every byte has a character; the five undefined ones map to themselves.
std::string utf8_from_ansi(std::string_view bytes);

/// Characters that the code page lacks become "?"; `lost`, if given, receives
/// them as UTF-8 in the order of the text.
std::string ansi_from_utf8(std::string_view text, std::string* lost = nullptr);

/// The byte of a code point, or -1 where the code page lacks it.
int ansi_byte(char32_t code_point);

/// Adds one code point as UTF-8.
void append_utf8(std::string& text, char32_t code_point);

/// Takes one code point off the front of `text`, which must not be empty; a
/// broken sequence gives U+FFFD and takes one byte.
char32_t next_code_point(std::string_view& text);

/// True when the whole text is well-formed UTF-8.
bool is_utf8(std::string_view text);

/// The first `most` bytes of the text at the most, cut between two characters.
std::string_view utf8_front(std::string_view text, std::size_t most);

}  // namespace tavlo
