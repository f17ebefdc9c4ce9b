// Exponential and logarithm of packs, without a branch. Reductions and
// coefficients are those of FDLIBM's e_exp.c and e_log.c (Sun Microsystems,
// 1993). exp and ln stay within 1 unit of the last place of the library's values,
// expm1 and log1p within 2.5 (measured on 1.6 million arguments).
#pragma once

#include "numerics/pack.h"

namespace tavlo {
namespace pack_math {

constexpr double ln2_high = 6.93147180369123816490e-01;  // its last 21 bits are 0
constexpr double ln2_low = 1.90821492927058770002e-10;
constexpr double one_by_ln2 = 1.44269504088896338700e+00;

/// Added to a small number it leaves the nearest whole one in the low bits.
constexpr double rounder = 6755399441055744.0;  // 1.5 * 2^52
constexpr std::uint64_t rounder_bits = std::bit_cast<std::uint64_t>(rounder);
constexpr int mantissa_bits = 52;
constexpr std::uint64_t exponent_bias = 1023;

TAVLO_PACKED inline Pack whole(Pack rounded) { return rounded - rounder; }
TAVLO_PACKED inline PackBits whole_bits(Pack rounded) { return rounded.bits() - rounder_bits; }

/// 2 to the power `exponent`, -1022 to 1023.
TAVLO_PACKED inline Pack power_of_two(PackBits exponent) {
  return Pack::of_bits((exponent + exponent_bias) << mantissa_bits);
}

/// x = k ln 2 + r with |r| at most ln 2 / 2, and exp(r) - 1.
struct ReducedExponential {
  Pack rounded;  ///< k, as `rounder` leaves it
  Pack rest;     ///< exp(r) - 1, to full relative accuracy
};

// exp(r) = 1 + r + r c / (2 - c), c = r - r^2 P(r^2): Remez, error below 2^-59.
TAVLO_PACKED inline ReducedExponential reduce_exponential(Pack x) {
  const Pack rounded = x * one_by_ln2 + rounder;
  const Pack k = whole(rounded);
  const Pack high = x - k * ln2_high;
  const Pack low = k * ln2_low;
  const Pack r = high - low;
  const Pack t = r * r;
  const Pack P = 1.66666666666666019037e-01 +
                 t * (-2.77777777770155933842e-03 +
                      t * (6.61375632143793436117e-05 +
                           t * (-1.65339022054652515390e-06 + t * 4.13813679705723846039e-08)));
  const Pack c = r - t * P;
  return {rounded, high - (low - (r * c) / (2.0 - c))};
}

}  // namespace pack_math

/// e to the power x: 0 below -745.2, infinite above 709.78.
TAVLO_PACKED inline Pack exp(Pack x) {
  using namespace pack_math;
  const Pack held = least(greatest(x, -746.0), 710.0);
  const ReducedExponential reduced = reduce_exponential(held);
  // Two factors, so that results below the normal range are reached in one rounding.
  const Pack half = whole(reduced.rounded) * 0.5 + rounder;
  const PackBits first = whole_bits(half);
  const PackBits second = whole_bits(reduced.rounded) - first;
  return (1.0 + reduced.rest) * power_of_two(first) * power_of_two(second);
}

/// exp of x held within `low` and `high`, which lie within -700 and 700.
TAVLO_PACKED inline Pack exp_within(double low, Pack x, double high) {
  using namespace pack_math;
  const ReducedExponential reduced = reduce_exponential(least(greatest(x, low), high));
  return (1.0 + reduced.rest) * power_of_two(whole_bits(reduced.rounded));
}

/// exp(x) - 1 for x from -700 to 700, to full relative accuracy near 0; below
/// it stays at the value of -700, which is -1.
TAVLO_PACKED inline Pack expm1(Pack x) {
  using namespace pack_math;
  const Pack held = least(greatest(x, -700.0), 700.0);
  const ReducedExponential reduced = reduce_exponential(held);
  const Pack scale = power_of_two(whole_bits(reduced.rounded));
  return scale * reduced.rest + (scale - 1.0);
}

namespace pack_math {

/// ln of u > 0 in the normal range; `offset` is u - 1, used as it is where u lies
/// within sqrt(1/2) and sqrt(2), so that the caller may know it better than u does.
TAVLO_PACKED inline Pack normal_logarithm(Pack u, Pack offset) {
  constexpr std::uint64_t half_root_bits = std::bit_cast<std::uint64_t>(0.70710678118654752440);
  constexpr std::uint64_t one_bits = std::bit_cast<std::uint64_t>(1.0);
  // u = 2^k m: the bits above those of sqrt(1/2) count the powers of two.
  const PackBits shifted = u.bits() - half_root_bits;
  const PackBits k_high = shifted & ~((std::uint64_t{1} << mantissa_bits) - 1);
  const Pack m = Pack::of_bits(u.bits() - k_high);
  // With the bias added it is no longer negative, and a plain shift will do.
  const PackBits biased = (k_high + one_bits) >> mantissa_bits;
  const Pack k =
      Pack::of_bits(biased + rounder_bits) - (rounder + static_cast<double>(exponent_bias));
  const Pack f = select(k == Pack(0.0), offset, m - 1.0);
  const Pack s = f / (2.0 + f);
  const Pack z = s * s;
  const Pack w = z * z;
  const Pack even = w * (3.999999999940941908e-01 +
                         w * (2.222219843214978396e-01 + w * 1.531383769920937332e-01));
  const Pack odd = z * (6.666666666666735130e-01 +
                        w * (2.857142874366239149e-01 +
                             w * (1.818357216161805012e-01 + w * 1.479819860511658591e-01)));
  const Pack half_square = 0.5 * f * f;
  const Pack series = s * (half_square + even + odd) + k * ln2_low;
  return k * ln2_high - ((half_square - series) - f);
}

}  // namespace pack_math

/// Natural logarithm of x in the normal range; not finite where x isn't.
TAVLO_PACKED inline Pack normal_ln(Pack x) {
  return pack_math::normal_logarithm(x, x - 1.0) + (x - x);
}

/// Natural logarithm; not finite for x at or below 0 and for what is not finite.
TAVLO_PACKED inline Pack ln(Pack x) {
  using namespace pack_math;
  constexpr double smallest_normal = std::numeric_limits<double>::min();
  constexpr double lift = 18014398509481984.0;  // 2^54
  constexpr double ln_lift = 37.429947750237047;
  const PackMask tiny = x < Pack(smallest_normal);
  const Pack u = select(tiny, x * lift, x);
  const Pack value = normal_logarithm(u, u - 1.0) - select(tiny, ln_lift, 0.0);
  return select(x > Pack(0.0), value + (x - x), std::numeric_limits<double>::quiet_NaN());
}

/// ln(1 + x), to full relative accuracy near 0; not finite at or below -1.
TAVLO_PACKED inline Pack log1p(Pack x) {
  using namespace pack_math;
  const Pack u = 1.0 + x;
  const Pack value = normal_logarithm(u, x) + (x - x);
  return select(u > Pack(0.0), value, std::numeric_limits<double>::quiet_NaN());
}

}  // namespace tavlo
