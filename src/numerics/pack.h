// Pack: four doubles side by side, in two of the vector registers that every 64-bit
// machine has; two, since one alone spends half its time waiting for itself. A formula written once
// for any arithmetic runs on packs in the long loops (no test inside, rows that went wrong are not
// finite at the end) and on Real where a row must tell what went wrong.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "numerics/real.h"

/// Packs live in registers, which only inlined functions can hand on.
#define TAVLO_PACKED [[gnu::always_inline]]
#define TAVLO_PACKED_LAMBDA __attribute__((always_inline))

namespace tavlo {

/// Bit patterns of the lanes, or whole numbers that wrap around.
struct PackBits {
  using Half = std::uint64_t __attribute__((vector_size(16)));
  Half low, high;

  TAVLO_PACKED friend PackBits operator+(PackBits a, std::uint64_t b) {
    return {a.low + b, a.high + b};
  }
  TAVLO_PACKED friend PackBits operator-(PackBits a, std::uint64_t b) {
    return {a.low - b, a.high - b};
  }
  TAVLO_PACKED friend PackBits operator-(PackBits a, PackBits b) {
    return {a.low - b.low, a.high - b.high};
  }
  TAVLO_PACKED friend PackBits operator&(PackBits a, PackBits b) {
    return {a.low & b.low, a.high & b.high};
  }
  TAVLO_PACKED friend PackBits operator&(PackBits a, std::uint64_t b) {
    return {a.low & b, a.high & b};
  }
  TAVLO_PACKED friend PackBits operator|(PackBits a, PackBits b) {
    return {a.low | b.low, a.high | b.high};
  }
  TAVLO_PACKED friend PackBits operator~(PackBits a) { return {~a.low, ~a.high}; }
  TAVLO_PACKED friend PackBits operator<<(PackBits a, int by) {
    return {a.low << by, a.high << by};
  }
  TAVLO_PACKED friend PackBits operator>>(PackBits a, int by) {
    return {a.low >> by, a.high >> by};
  }
};

/// Outcome of a comparison: all bits of a lane set where it holds.
struct PackMask {
  PackBits bits;

  TAVLO_PACKED friend PackMask operator&(PackMask a, PackMask b) { return {a.bits & b.bits}; }
};

TAVLO_PACKED inline bool any(PackMask mask) {
  const PackBits::Half either = mask.bits.low | mask.bits.high;
  return (either[0] | either[1]) != 0;
}
TAVLO_PACKED inline bool all(PackMask mask) {
  const PackBits::Half both = mask.bits.low & mask.bits.high;
  return (both[0] & both[1]) != 0;
}

class Pack {
 public:
  using Half = double __attribute__((vector_size(16)));
  static constexpr int lanes = 4;

  Pack() = default;
  TAVLO_PACKED Pack(double value)
      : low_{value, value}, high_{value, value} {}  // NOLINT: meant to convert
  TAVLO_PACKED Pack(Half low, Half high) : low_(low), high_(high) {}

  TAVLO_PACKED static Pack load(const double* from) {
    return {Half{from[0], from[1]}, Half{from[2], from[3]}};
  }
  TAVLO_PACKED void store(double* to) const {
    to[0] = low_[0];
    to[1] = low_[1];
    to[2] = high_[0];
    to[3] = high_[1];
  }

  TAVLO_PACKED Half low() const { return low_; }
  TAVLO_PACKED Half high() const { return high_; }
  TAVLO_PACKED PackBits bits() const {
    return {std::bit_cast<PackBits::Half>(low_), std::bit_cast<PackBits::Half>(high_)};
  }
  TAVLO_PACKED static Pack of_bits(PackBits bits) {
    return {std::bit_cast<Half>(bits.low), std::bit_cast<Half>(bits.high)};
  }

  TAVLO_PACKED friend Pack operator+(Pack a, Pack b) {
    return {a.low_ + b.low_, a.high_ + b.high_};
  }
  TAVLO_PACKED friend Pack operator-(Pack a, Pack b) {
    return {a.low_ - b.low_, a.high_ - b.high_};
  }
  TAVLO_PACKED friend Pack operator*(Pack a, Pack b) {
    return {a.low_ * b.low_, a.high_ * b.high_};
  }
  TAVLO_PACKED friend Pack operator/(Pack a, Pack b) {
    return {a.low_ / b.low_, a.high_ / b.high_};
  }
  TAVLO_PACKED friend Pack operator-(Pack a) { return {-a.low_, -a.high_}; }

  TAVLO_PACKED friend PackMask operator==(Pack a, Pack b) {
    return mask_of(a.low_ == b.low_, a.high_ == b.high_);
  }
  TAVLO_PACKED friend PackMask operator<(Pack a, Pack b) {
    return mask_of(a.low_ < b.low_, a.high_ < b.high_);
  }
  TAVLO_PACKED friend PackMask operator>(Pack a, Pack b) {
    return mask_of(a.low_ > b.low_, a.high_ > b.high_);
  }
  TAVLO_PACKED friend PackMask operator<=(Pack a, Pack b) {
    return mask_of(a.low_ <= b.low_, a.high_ <= b.high_);
  }

 private:
  template <class Outcome>
  TAVLO_PACKED static PackMask mask_of(Outcome low, Outcome high) {
    return {{std::bit_cast<PackBits::Half>(low), std::bit_cast<PackBits::Half>(high)}};
  }

  Half low_{}, high_{};
};

/// Of the lanes.
inline double sum(Pack a) {
  double lanes[Pack::lanes];
  a.store(lanes);
  return (lanes[0] + lanes[1]) + (lanes[2] + lanes[3]);
}

/// `a` where the mask is set, `b` elsewhere. Quick for the outcome of one comparison;
/// a mask of several is taken lane by lane (gcc 12).
TAVLO_PACKED inline Pack select(PackMask mask, Pack a, Pack b) {
  return Pack::of_bits((mask.bits & a.bits()) | (~mask.bits & b.bits()));
}

TAVLO_PACKED inline Pack abs(Pack a) {
  constexpr std::uint64_t sign_bit = std::uint64_t{1} << 63;
  return Pack::of_bits(a.bits() & ~sign_bit);
}

// The compiler doesn't see the machine's own least, greatest and root in these.
#if defined(__SSE2__)
TAVLO_PACKED inline Pack least(Pack a, Pack b) {
  return {__builtin_ia32_minpd(b.low(), a.low()), __builtin_ia32_minpd(b.high(), a.high())};
}
TAVLO_PACKED inline Pack greatest(Pack a, Pack b) {
  return {__builtin_ia32_maxpd(b.low(), a.low()), __builtin_ia32_maxpd(b.high(), a.high())};
}
TAVLO_PACKED inline Pack sqrt(Pack a) {
  return {__builtin_ia32_sqrtpd(a.low()), __builtin_ia32_sqrtpd(a.high())};
}
#else
TAVLO_PACKED inline Pack least(Pack a, Pack b) { return select(b < a, b, a); }
TAVLO_PACKED inline Pack greatest(Pack a, Pack b) { return select(b > a, b, a); }
TAVLO_PACKED inline Pack sqrt(Pack a) {
  double values[Pack::lanes];
  a.store(values);
  for (double& value : values) value = std::sqrt(value);
  return Pack::load(values);
}
#endif

/// Neither infinite nor undefined.
TAVLO_PACKED inline PackMask is_finite(Pack a) {
  return abs(a) <= Pack(std::numeric_limits<double>::max());
}

// The same words for Real, so that a formula reads alike in both arithmetics.

inline Real select(bool condition, Real a, Real b) { return condition ? a : b; }
inline bool any(bool condition) { return condition; }
inline Real least(Real a, Real b) { return b < a ? b : a; }
inline Real greatest(Real a, Real b) { return b > a ? b : a; }
inline Real exp_within(double low, Real a, double high) {
  return exp(least(greatest(a, low), high));
}
inline Real normal_ln(Real a) { return ln(a); }
inline Real expm1(Real a) { return finite(std::expm1(a.value())); }

/// Error 5 at or below -1.
inline Real log1p(Real a) {
  if (!(a > -1)) throw RunTimeError(run_time::invalid_argument);
  return finite(std::log1p(a.value()));
}

}  // namespace tavlo
