// Model times: the log time at which a mixture reaches an ordinate, for four rows at once,
// by Halley's method within a narrowing bracket.
#pragma once

#include <limits>

#include "fit/mixture/row_shapes.h"

namespace tavlo {

/// The ends between which ln H reaches `y`: no population alone reaches it later, and one
/// of them has at least its part of it.
template <Populations P>
struct TimeBracket {
  Pack low, high;

  TAVLO_PACKED TimeBracket(const RowFormula<P>& formula, Pack y)
      : low(std::numeric_limits<double>::max()), high(std::numeric_limits<double>::max()) {
    const double parts = std::log(static_cast<double>(P.count()));
    for (std::size_t at = 0; at < 2 * P.count(); at += 2) {
      low = least(low, (y - parts) / formula.beta[at] + formula.ln_eta[at]);
      const bool on_every_unit = !P.c || at != P.at_c();
      if (on_every_unit) high = least(high, y / formula.beta[at] + formula.ln_eta[at]);
    }
  }
};

/// Within some 1e-6 of the steepest population's ordinate, and far less after a near start;
/// not a number where none was found, which only parameters beyond all sense bring about.
template <Populations P>
TAVLO_PACKED inline Pack model_time(const RowFormula<P>& formula, Pack start, Pack y) {
  // Halley's steps shrink with their third power: little is left behind this one, and the
  // caller's derivatives take that away.
  const double last_step = 0.01 / formula.steepest();
  constexpr int most_steps = 60;
  TimeBracket<P> ends(formula, y);
  Pack x = least(greatest(start, ends.low), ends.high);
  Pack open = 1.0;
  for (int count = 0; count < most_steps && any(open > Pack(0.0)); ++count) {
    const auto at = formula.curve(x);
    const PackMask below_target = at.y < y;
    ends.low = select(below_target, x, ends.low);
    ends.high = select(below_target, ends.high, x);
    const Pack newton = (at.y - y) / at.slope;
    const Pack correction = 1.0 - newton * at.bend / (at.slope * 2.0);
    const Pack wish = x - newton / least(greatest(correction, 0.5), 2.0);
    const PackMask inside = wish == least(greatest(wish, ends.low), ends.high);
    const Pack next = select(inside, wish, (ends.low + ends.high) * 0.5);
    // The middle of a bracket is no step of Halley's: only a closed bracket ends there.
    const Pack left_over = select(inside, abs(wish - x), (ends.high - ends.low) * 1e6);
    x = select(open > Pack(0.0), next, x);
    open = select(left_over <= Pack(last_step), 0.0, open);
  }
  return select(open > Pack(0.0), std::numeric_limits<double>::quiet_NaN(), x);
}

}  // namespace tavlo
