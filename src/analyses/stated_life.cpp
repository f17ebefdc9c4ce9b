#include "analyses/stated_life.h"

#include <cmath>

namespace tavlo {

namespace {

/// Scale and shape of a family by the two numbers that a person reads.
FitParam row_of(Family family, double first, double second) {
  FitParam row;
  row.Scale = family == Family::weibull || family == Family::gumbel ? 1 / first : first;
  row.Shape = family == Family::normal      ? 1 / second
              : family == Family::lognormal ? 1 / std::log(second)
                                            : second;
  return row;
}

}  // namespace

bool states_share(const Model& model, int population) {
  const bool is_mixture = model.rows() > 1 && model.free_parameters % 2 == 1;
  return is_mixture && population <= 2;
}

Life stated_life(const Model& model, const std::vector<StatedRow>& rows, double t0) {
  Life life{model.code, {}};
  for (int i = 1; i <= ssize(rows); ++i) {
    const StatedRow& stated = rows[static_cast<std::size_t>(i) - 1];
    FitParam row = row_of(model.family, stated.first.value_or(NAN), stated.second.value_or(NAN));
    const bool has_share = states_share(model, i);
    row.Fraction = has_share ? stated.percent.value_or(NAN) / 100 : i == 1 ? 1 : 0;
    // A mixture's first population is the early one: the risks of the others act in it too.
    row.Applies = states_share(model, 2) && i > 1 ? 3 : 1;
    row.T0 = t0;
    life.rows.push_back(row);
  }
  return life;
}

}  // namespace tavlo
