#include "life/weibull_ordinate.h"

#include "numerics/real.h"

namespace tavlo {

double fd_WblY(double F) {
  // Below this F the doubles next to 1 - F are too coarse, and ln F is as good.
  constexpr double small_fraction = 1e-8;
  return (F > small_fraction ? ln(-ln(1 - Real(F))) : ln(Real(F))).value();
}

}  // namespace tavlo
