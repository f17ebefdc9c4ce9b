#include "analyses/wichmann_hill.h"

#include <algorithm>
#include <cmath>

#include "numerics/rounding.h"

namespace tavlo {

namespace {

/// A step of a stream is a x s mod M without leaving 32 bits: q = M div a, r = M mod a.
struct Stream {
  std::int32_t factor, quotient, remainder;
};

constexpr std::array<Stream, WichmannHill::streams> steps = {
    {{11600, 185127, 10379}, {47003, 45688, 10479}, {23000, 93368, 19423}, {33000, 65075, 8123}}};

/// 1 / M.
constexpr std::array<double, WichmannHill::streams> weights = {
    4.656613022697298E-10, 4.65661310075986E-10, 4.656613360968421E-10, 4.656614011489952E-10};

constexpr double largest_seed = 2147483647;
constexpr double entered_below = 2147483646;

double by_chance(Entropy& chance) { return chance.next() / 4294967296.0; }

}  // namespace

// The order of the sum decides about its last bit.
double WichmannHill::step() {
  for (std::size_t i = 0; i < states_.size(); ++i) {
    const auto& [a, q, r] = steps[i];
    std::int32_t& s = states_[i];
    s = a * (s % q) - r * (s / q);
    if (s < 0) s += moduli[i];
  }
  return states_[1] * weights[1] + states_[0] * weights[0] + states_[2] * weights[2] +
         states_[3] * weights[3];
}

double WichmannHill::next(Entropy& chance) {
  double sum = step();
  if (sum <= at_rest) {
    seed({-1, -1, -1, -1}, chance);
    sum = step();
  }
  return sum - std::floor(sum);
}

void WichmannHill::seed(Seeds seeds, Entropy& chance) {
  for (double& each : seeds)
    each = std::abs(each) <= largest_seed ? round_half_even(each) : -1;  // not for NaN
  if (seeds[0] > 0 && std::all_of(seeds.begin() + 1, seeds.end(), [](double s) { return s <= 0; }))
    for (std::size_t i = 1; i < seeds.size(); ++i)
      seeds[i] = std::max(1.0, std::fmod(moduli[i] - seeds[0], moduli[i]));
  for (std::size_t i = 0; i < seeds.size(); ++i) {
    // Kept on purpose: the last stream is drawn from the range of the first.
    const double range = (i == 3 ? moduli[0] : moduli[i]) - 2.0;
    states_[i] = seeds[i] < 1 ? static_cast<std::int32_t>(by_chance(chance) * range) + 1
                              : static_cast<std::int32_t>(std::fmod(seeds[i], moduli[i]));
  }
}

void WichmannHill::enter(int stream, double n) {
  const double seed = std::floor(std::abs(n));
  const auto i = static_cast<std::size_t>(stream);
  if (seed > 0 && seed < entered_below) states_[i] = static_cast<std::int32_t>(seed) % moduli[i];
}

}  // namespace tavlo
