// Spelled letters: the Greek letters of parameters by their names. A metafile holds
// Windows-1252 alone, which lacks them.
#pragma once

#include <string>

namespace tavlo {

/// "eta = 606.5" for "η = 606.5". Other letters stay as they are.
std::string with_letters_spelled(const std::string& utf8);

/// "n = 606.5": Latin letters of the same width, for a table of widths that has no others.
std::string with_latin_letters(const std::string& utf8);

}  // namespace tavlo
