// Count text: counts of things as a sentence says them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tavlo {

/// In groups of three digits: "1,000,000".
std::string grouped(std::int64_t count);

/// "1 failure", "12 failures": the noun takes an s for every count but 1. At most `digits`
/// significant digits.
std::string counted(double count, std::string_view noun, int digits = 15);

}  // namespace tavlo
