// Short decimals: numbers of few digits, as most in a file are, read and written with one
// operation that is exact. The method is Clinger's fast path ("How to Read Floating Point
// Numbers Accurately", 1990): a mantissa and a power of ten that a double holds exactly give
// a result that is rounded once. What has another form is left to the general way.
#pragma once

#include <cstddef>
#include <string_view>

namespace tavlo {

/// Reads a number of up to 15 digits, with or without a sign and a full stop, off the front
/// of `text`. The bytes that it takes; 0 where no such number stands there.
std::size_t read_short_decimal(std::string_view text, double& number);

/// The room that a short decimal takes at the most.
inline constexpr std::size_t longest_short_decimal = 24;

/// Writes a whole number below 10^15, or a number of 32 bits from 1e-4 to 1e7 with 7
/// significant digits, as printf's "%.7G" does. The bytes written; 0 for other numbers.
std::size_t write_short_whole(double number, char* to);
std::size_t write_short_single(float number, char* to);

}  // namespace tavlo
