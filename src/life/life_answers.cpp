#include "life/life_answers.h"

#include <algorithm>

#include "life/mean_life.h"
#include "life/models.h"

namespace tavlo {

bool lacks_a_mode(const Life& life) {
  return (life.model & model_mask) == model_code::by_failure_mode &&
         std::any_of(life.rows.begin(), life.rows.end(),
                     [](const FitParam& row) { return !(row.Scale > 0) || !(row.Shape > 0); });
}

std::optional<double> b_life(const Life& life, double p) {
  return p < share_that_fails(life) ? quantile(life, p) : std::nullopt;
}

const char* why_no_b_life(const Life& life, double p) {
  return p < share_that_fails(life) ? "beyond all numbers" : "never";
}

double surviving_share(const Life& life, double x) {
  const double rest = share_that_fails(life) < 1 ? 1 - fraction_failed(life, x) : 0.0;
  return std::max(reliability(life, x), rest);
}

}  // namespace tavlo
