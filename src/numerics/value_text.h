// Value text: numbers and bit sets as charts, logs and grids show them.
#pragma once

#include <cstdint>
#include <string>

namespace tavlo {

/// A number by `format`, or a date where the format holds date letters (days
/// since 30 December 1899). A "k" in the format asks for engineering prefixes:
/// the text in front of it is the digits pattern, 1500 becomes "1.5K".
std::string fs_Dbl2Txt(double value, const std::string& format);

/// A set of bits as text: "1,2"; "0" for the empty set, "N/A" beyond 30 bits.
std::string fs_BitList(std::int32_t value);

}  // namespace tavlo
