// Plain lines: the lines of a small text file that people edit by hand, whichever system
// and code page they used.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavlo {

/// The lines of `bytes` as UTF-8, without their ends (CR LF, LF or CR). Bytes that are no
/// UTF-8 are taken as the ANSI code page. Reading stops behind line number `most`.
std::vector<std::string> plain_lines(std::string_view bytes, std::size_t most);

/// True for a text that is one line of UTF-8 without control characters.
bool is_one_line(std::string_view text);

/// `text` without its control characters.
std::string without_control_characters(std::string text);

/// `text` with A to Z as small letters.
std::string lower_case(std::string_view text);

}  // namespace tavlo
