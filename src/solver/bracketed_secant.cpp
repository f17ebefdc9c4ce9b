#include "solver/bracketed_secant.h"

#include "numerics/real.h"

namespace tavlo {
namespace {

/// The end of the bracket that a secant is drawn to.
enum class Side { lower = -1, none = 0, upper = 1 };

/// A secant needs a height: an end as high as the point gives way to the other.
Side with_height(Side side, double y, const SecantBracket& bracket) {
  if (side == Side::lower && y == bracket.yLo)
    side = y == bracket.yHi ? Side::none : Side::upper;
  else if (side == Side::upper && y == bracket.yHi)
    side = y == bracket.yLo ? Side::none : Side::lower;
  return side;
}

Side nearer_side(double y, const SecantBracket& bracket) {
  const bool is_lower = Real(y) - bracket.yLo < Real(bracket.yHi) - y;
  return with_height(is_lower ? Side::lower : Side::upper, y, bracket);
}

Side other_side(Side side, double y, const SecantBracket& bracket) {
  if (side == Side::none) return side;
  return with_height(side == Side::lower ? Side::upper : Side::lower, y, bracket);
}

/// The slope dx/dy towards a side; `before` where there is none.
Real slope_towards(Side side, Real before, Real x, Real y, const SecantBracket& bracket) {
  if (side == Side::lower) return (x - bracket.xLo) / (y - bracket.yLo);
  if (side == Side::upper) return (bracket.xHi - x) / (bracket.yHi - y);
  return before;
}

bool is_inside(Real candidate, const SecantBracket& bracket) {
  return candidate >= bracket.xLo && candidate <= bracket.xHi;
}

bool is_bad(Real candidate, Real x, Real y, Real target, const SecantBracket& bracket) {
  const bool wrong_way = (y < target && candidate < x) || (y > target && candidate > x);
  return wrong_way || !is_inside(candidate, bracket);
}

void narrow(Real target, double x, double y, SecantBracket& bracket) {
  if (y >= target) {
    bracket.xHi = x;
    bracket.yHi = y;
  } else {
    bracket.xLo = x;
    bracket.yLo = y;
  }
}

/// Keeps the next trial from creeping along an end of the bracket.
Real kept_off_ends(Real x, const SecantBracket& bracket) {
  const Real xLo = bracket.xLo, xHi = bracket.xHi;
  const Real width = xHi - xLo;
  const Real f = (x - xLo) / width;
  if (f < 0.0001) return xLo + width * 0.0001;
  if (f < 0.001) return xLo + (x - xLo) * 1.5;
  if (f > 0.9999) return xLo + width * 0.9999;
  if (f > 0.999) return xHi - (xHi - x) * 1.5;
  return x;
}

}  // namespace

void Xnew(double target, double& x, double y, SecantBracket& bracket) {
  if (y == target) {
    bracket = {x, y, x, y};
    return;
  }
  Side side = nearer_side(y, bracket);
  Real slope = slope_towards(side, 0, x, y, bracket);
  Real candidate = (Real(target) - y) * slope + x;
  if (is_bad(candidate, x, y, target, bracket)) {
    side = other_side(side, y, bracket);
    slope = slope_towards(side, slope, x, y, bracket);
    candidate = (Real(target) - y) * slope + x;
  }
  narrow(target, x, y, bracket);
  const bool usable = is_inside(candidate, bracket) && side != Side::none && slope != 0;
  x = usable ? candidate.value() : ((Real(bracket.xHi) + bracket.xLo) / 2).value();
  if (bracket.xHi != bracket.xLo) x = kept_off_ends(x, bracket).value();
}

}  // namespace tavlo
