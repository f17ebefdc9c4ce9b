// Decimal: a number as its decimal digits, the form in which text rounds and
// shows it. Rounding these digits is what a person expects of 2.675 at two
// decimals; the binary value behind it is a little below.
#pragma once

#include <string>

namespace tavlo {

struct Decimal {
  bool negative = false;
  std::string digits;  ///< significant digits, no leading zero; empty is 0
  int point = 0;       ///< digits in front of the decimal point; 0 or less for 0.0ddd

  /// The power of ten of the first digit; 0 for 0.
  int exponent() const { return digits.empty() ? 0 : point - 1; }
};

/// The finite `value` to `significant` digits (1..17), trailing zeros removed.
Decimal decimal_of(double value, int significant);

/// Rounds half away from zero to so many places behind the decimal point (a
/// negative number of places rounds in front of it); trailing zeros removed.
void round_half_away(Decimal& decimal, int places);

}  // namespace tavlo
