// Populations: which Weibull populations a mixture has, and where their parameters stand in
// the vector that the minimiser moves. A and B are risks of every unit, C one of a share of
// the units only:
//   R(t) = exp(-A - B) (p exp(-C) + 1 - p),  A = (t / eta_A)^beta_A and so on.
// The vector holds ln beta and ln eta of each population in the order A, B, C, then
// ln(p / (1 - p)).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "fit/minimiser/small_matrix.h"
#include "life/life.h"

namespace tavlo {

struct Populations {
  bool a = true, b = false, c = false;

  constexpr std::size_t count() const {
    return static_cast<std::size_t>(a) + static_cast<std::size_t>(b) + static_cast<std::size_t>(c);
  }
  constexpr std::size_t size() const { return 2 * count() + (c ? 1 : 0); }
  constexpr std::size_t at_a() const { return 0; }
  constexpr std::size_t at_b() const { return a ? 2 : 0; }
  constexpr std::size_t at_c() const { return 2 * (count() - 1); }
  constexpr std::size_t at_share() const { return size() - 1; }

  friend constexpr bool operator==(const Populations&, const Populations&) = default;
};

inline constexpr Populations one_weibull{true, false, false};
inline constexpr Populations competing_risks{true, true, false};
inline constexpr Populations early_share{true, false, true};
inline constexpr Populations bathtub{true, true, true};
/// A share of the units fails, the others do not: what is left of `early_share` and
/// `bathtub` where no failure reaches A and B.
inline constexpr Populations share_alone{false, false, true};

/// A point of the parameter space.
struct MixturePoint {
  Populations populations;
  SmallVector q{};

  double beta(std::size_t at) const;
  double ln_eta(std::size_t at) const { return q[at + 1]; }
  double share() const;
};

/// -ln R at a log time.
double total_risk(const MixturePoint& point, double x);

double logit(double p);

/// Names the steeper of the two risks A.
void order_risks(MixturePoint& point);

/// The populations of a mixture model: W4P, W5C, W7P.
Populations populations_of(std::int16_t model);

/// The rows of `model` as they are stored, from a point of the model itself or of one that
/// it contains; `exponent` as in Sample. A population that the point hasn't is unreached.
Life life_of(std::int16_t model, const MixturePoint& point, int exponent);

}  // namespace tavlo
