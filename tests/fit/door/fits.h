// A fit in one line, for tests of the door.
#pragma once

#include "fit/door/fit.h"
#include "fit/random_rows.h"

namespace tavlo::test {

struct Asked {
  std::int16_t model = model_code::weibull2;
  std::int16_t method = method_code::x_on_y;
  std::optional<double> slope = {};
  RankKind ranks = RankKind::benard;
};

inline FitAnswer fit_rows(const Rows& rows, const Asked& asked, int modes = 0) {
  Companion companion;
  FitRequest request;
  request.model = asked.model;
  request.method = asked.method;
  request.slope = asked.slope;
  request.ranks = asked.ranks;
  return fit(make_sample(rows, asked.ranks, modes), request, companion);
}

inline const std::int16_t all_methods[] = {method_code::x_on_y, method_code::mle,
                                           method_code::y_on_x};
inline const std::int16_t regressions[] = {method_code::x_on_y, method_code::y_on_x};

}  // namespace tavlo::test
