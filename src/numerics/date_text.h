// Date text: dates by a pattern, with English names wherever the program runs.
#pragma once

#include <string>
#include <string_view>

#include "ports/clock.h"

namespace tavlo {

/// `moment` by a pattern of d dd ddd dddd, m mm mmm mmmm, yy yyyy, h hh, n nn,
/// s ss, in either case; AM/PM, am/pm and ampm show the half of the day in their
/// own case and make it a 12-hour clock. "m" or "mm" as the next field behind an
/// hour means minutes. Any other character stands as it is.
std::string format_date(const DateTime& moment, std::string_view pattern);

}  // namespace tavlo
