// Field numbers: the strict reading of numbers in data files. A sheet guesses
// what a person meant; a file that holds something else than a number is wrong.
#pragma once

#include <string>
#include <string_view>

#include "files/read_fault.h"

namespace tavlo {

/// The most units, failures and suspensions together, of one data set: beyond them a
/// sum of counts would lose single units.
inline constexpr double most_units = 1e15;

/// True when a number, or the mark of a suspension before one, may start here.
bool starts_as_number(std::string_view text);

/// 2024-01-31, 1/2/2024, 12:30: no time to failure, though it starts as a number.
bool is_date_or_time_of_day(std::string_view text);

/// Jan 5 2024, 5. January: a day with the name of its month in front of a text.
bool is_spelled_date(std::string_view text);

/// The words for a date where a time is due.
std::string words_of_date(std::string_view text);

/// A time: a decimal number with a full stop, stored in 32 bits. Refuses 0 and
/// what 32 bits can't hold. A sign is read; the caller says what it means.
FieldFault read_time(std::string_view text, float& time);

/// A number of units from 0 to most_units; it may be a fraction.
FieldFault read_units(std::string_view text, double& units);

}  // namespace tavlo
