#include "chart/scales/short_number.h"

#include <cmath>

#include "numerics/number_text.h"
#include "numerics/rounding.h"

namespace tavlo {

namespace {

constexpr std::size_t handy_length = 7;

/// "2.5E-9": as many digits as the value needs.
std::string scientific(double value, int digits) {
  if (value == 0.0) return "0";
  double exponent = IntFloor(std::log10(std::fabs(value)));
  double mantissa = value / std::pow(10.0, exponent);
  if (std::fabs(mantissa) >= 10.0 - 1e-9) {
    ++exponent;
    mantissa /= 10.0;
  }
  return number_text(mantissa, digits) + (exponent < 0 ? "E-" : "E+") +
         number_text(std::fabs(exponent), 3);
}

}  // namespace

std::string short_number(double value, int digits) {
  std::string plain = number_text(value, digits);
  const bool has_exponent = plain.find('E') != plain.npos;
  if (plain.size() <= handy_length && !has_exponent) return plain;
  std::string with_exponent = scientific(value, digits);
  return has_exponent || with_exponent.size() < plain.size() ? with_exponent : plain;
}

}  // namespace tavlo
