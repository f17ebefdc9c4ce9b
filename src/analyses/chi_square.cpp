#include "analyses/chi_square.h"

#include <boost/math/special_functions/gamma.hpp>
#include <cmath>

#include "numerics/run_time_error.h"

namespace tavlo {

double fd_ChiSq(double x, std::int16_t df) {
  constexpr double smallest_x = 1e-12, largest_x = 1000;
  constexpr std::int16_t largest_df = 343;
  if (std::isnan(x)) throw RunTimeError(run_time::invalid_argument);
  if (x < smallest_x || df < 1) return 0;
  if (x > largest_x || df > largest_df) return 0.024 * x - 0.02 * df + 0.33 - 0.5 > 0 ? 1 : 0;
  // Promoted to long double: in double its gamma function overflows from df = 342 on.
  return boost::math::gamma_p(0.5 * df, 0.5 * x);
}

}  // namespace tavlo
