// Number text: the one place where numbers become text and exact text becomes
// numbers, the same in every locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavlo {

/// Up to `digits` significant digits without trailing zeros: 100, 0.25, 1E+20.
/// The forms are those that a person reads in grids and logs; 15 digits hide the
/// noise of binary fractions. Powers of ten from 15 on and below -5 are written
/// with an exponent of at least two digits. "NaN", "Infinity", "-Infinity".
std::string number_text(double value, int digits = 15);

/// `value` by a pattern as "0.00", "00.0000%", "0E+0", "0.00E+00", "0", "#,##0":
/// zeros are digits always shown, # digits shown when needed, % multiplies by
/// 100, E+0 and E-0 give a power of ten, a comma among the digits groups them by
/// thousands; other text stands as it is. Rounding is half away from zero on the
/// value's 15 decimal digits, so that 2.675 gives 2.68. A pattern without 0 or #,
/// and a value that is not finite, give number_text.
std::string format_number(double value, std::string_view pattern);

/// The whole text as a finite number, with a full stop as decimal point; nothing
/// for anything else (blanks around it, "inf", "nan", hexadecimal, trailing junk
/// and numbers beyond the range of a double are refused). Too small is 0.
std::optional<double> parse_number(std::string_view text);

}  // namespace tavlo
