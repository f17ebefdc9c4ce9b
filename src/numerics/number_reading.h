// fd_Str2Dbl: the number that a person meant, read from the text that was typed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "numerics/error_reporter.h"

namespace tavlo {

/// Number punctuation of the system, taken once at the start.
struct NumberPunctuation {
  char DecimalPoint = '.';
  char ListPoint = ',';
};

/// Whether each mark of a text stands as in "1,234,567": behind one to three digits, the first of
/// them not 0, and before groups of three. Nothing of "0,125", "1234,567" and "1.5,250" does. True
/// without a mark.
bool are_thousands(std::string_view text, char mark);

/// What a person typed with the system's decimal character, in the program's own
/// form: where that is a comma, "1.234,5" and "1,5" become "1234.5" and "1.5",
/// while a text without a comma stands as it is. So does "10.5,3", which is no number.
std::string with_decimal_point(std::string text, const NumberPunctuation& punctuation);

/// The number in `text`, 0 if there is none. `text` is rewritten to its cleaned
/// form: digits, separator and exponent, without sign and suffix; "0" where
/// nothing numeric is left. The suffixes K M G T P % multiply. Units are read
/// as suffixes too ("5 cm" is 5e6): kept on purpose.
/// `whole` receives the nearest 32-bit integer, ties to even, or 0 out of range.
double fd_Str2Dbl(ErrorReporter& reporter, std::string& text, std::int32_t& whole,
                  const NumberPunctuation& punctuation = {});

/// The same where only the value counts.
double fd_Str2Dbl(ErrorReporter& reporter, const std::string& text,
                  const NumberPunctuation& punctuation = {});

}  // namespace tavlo
