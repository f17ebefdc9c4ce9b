// WichmannHill: the program's own random numbers. Its four seeds can be noted and
// entered again, which repeats a sample to the digit on every machine.
#pragma once

#include <array>
#include <cstdint>

#include "ports/entropy.h"

namespace tavlo {

/// The generator of four multiplicative streams of Wichmann and Hill, "Generating good
/// pseudo-random numbers", Computational Statistics & Data Analysis 51 (2006), in the form
/// for 32-bit integers (Schrage's decomposition). Its period is about 2^121.
class WichmannHill {
 public:
  static constexpr int streams = 4;
  static constexpr std::array<std::int32_t, streams> moduli = {2147483579, 2147483543, 2147483423,
                                                               2147483123};
  using States = std::array<std::int32_t, streams>;
  using Seeds = std::array<double, streams>;

  /// Not seeded yet: all streams at 0.
  WichmannHill() = default;
  explicit WichmannHill(const States& states) : states_(states) {}

  const States& states() const { return states_; }
  bool is_seeded() const { return states_[0] >= 1; }

  /// The next number, 0 <= u < 1. When all streams have come to rest it is seeded anew by
  /// chance.
  double next(Entropy& chance);

  /// Seeds all streams. Seeds are rounded to integers; one below 1, and one that is no number
  /// or beyond 2147483647, is taken by chance. A first seed above 0 without others makes the
  /// others.
  void seed(Seeds seeds, Entropy& chance);

  /// True when the next number would seed all streams anew by chance.
  bool is_at_rest() const { return WichmannHill(*this).step() <= at_rest; }

  /// Sets a stream to |n| modulo its modulus for 0 < |n| < 2147483646; else it stays.
  void enter(int stream, double n);

 private:
  /// A sum of a step that is not above this is that of streams which have all come to rest.
  static constexpr double at_rest = 4.656613022697298E-10;

  double step();

  States states_{};
};

}  // namespace tavlo
