#include "solver/bracket_search.h"

#include <cmath>

#include "numerics/real.h"
#include "solver/residuals.h"

namespace tavlo {
namespace {

constexpr int most_tries = 100;
constexpr double outward_step = 2.5;  ///< in log time

/// A warning has no run-time error behind it.
constexpr int no_error = 0;

/// The two searches are mirror images.
struct Direction {
  int sign;  ///< -1 downwards
  const char* where;
  const char* warning;
  double SecantBracket::*x, SecantBracket::*y;              ///< the end that is sought
  double SecantBracket::*other_x, SecantBracket::*other_y;  ///< the end that may narrow

  bool is_beyond(double y_value, double target) const {
    return sign < 0 ? y_value < target : y_value > target;
  }
  bool narrows(double y_value, const SecantBracket& bracket) const {
    return sign < 0 ? y_value < bracket.*other_y : y_value > bracket.*other_y;
  }
};

constexpr Direction downwards{-1,
                              "in Findlo routine",
                              "Warning!  Can't find lower bound in Findlo routine",
                              &SecantBracket::xLo,
                              &SecantBracket::yLo,
                              &SecantBracket::xHi,
                              &SecantBracket::yHi};
constexpr Direction upwards{1,
                            "in Findhi routine",
                            "Warning!  Can't find upper bound in Findhi routine",
                            &SecantBracket::xHi,
                            &SecantBracket::yHi,
                            &SecantBracket::xLo,
                            &SecantBracket::yLo};

/// Takes the point as the end sought, or as a nearer other end. True when found.
bool take(const Direction& way, double x, double y, double target, SecantBracket& bracket) {
  if (way.is_beyond(y, target)) {
    bracket.*way.x = x;
    bracket.*way.y = y;
    return true;
  }
  if (way.narrows(y, bracket)) {
    bracket.*way.other_x = x;
    bracket.*way.other_y = y;
  }
  return false;
}

/// The prefix extremes tell whether there is a row to walk to at all, so that a
/// model that misses all targets doesn't cost a walk for each.
bool found_in_data(BracketSearch& search, const Direction& way, int i, double target,
                   SecantBracket& bracket) {
  const std::vector<double>& extremes = way.sign < 0 ? search.lowest_to : search.highest_from;
  if (!way.is_beyond(extremes[static_cast<std::size_t>(i)], target)) return false;
  for (int j = i; j >= 1 && j <= search.n; j += way.sign) {
    if (!way.is_beyond(search.fvec[static_cast<std::size_t>(j)], target)) continue;
    const double x = search.solver.data.Xs(j);
    if (take(way, x, ordinate_at(search, x), target, bracket)) return true;
    if (search.solver.aborted()) return false;
  }
  return false;
}

double next_trial(const BracketSearch& search, const Direction& way, int i, int k, double target) {
  const SolverData& data = search.solver.data;
  const Real farthest = outward_step * k;
  const Real trial =
      (Real(target) - search.fvec[0]) * search.slope + data.Xs(0) + Real(way.sign) * outward_step;
  if (farthest > abs(data.Xs(i) - trial)) return (data.Xs(i) + way.sign * farthest).value();
  return trial.value();
}

bool found_outside(BracketSearch& search, const Direction& way, int i, double target,
                   SecantBracket& bracket) {
  SolverData& data = search.solver.data;
  const int end = way.sign < 0 ? 1 : search.n;
  data.Xs(0) = data.Xs(end);
  search.fvec[0] = data.Ys(end);
  for (int k = 1; k <= most_tries && !search.solver.aborted(); ++k) {
    bool found = false;
    step(search.solver, way.where, [&] {
      const double trial = next_trial(search, way, i, k, target);
      found = take(way, trial, ordinate_at(search, trial), target, bracket);
    });
    if (found) return true;
  }
  return false;
}

void find_end(BracketSearch& search, const Direction& way, int i, double target,
              SecantBracket& bracket) {
  step(search.solver, way.where, [&] {
    if (found_in_data(search, way, i, target, bracket)) return;
    if (found_outside(search, way, i, target, bracket) || search.solver.aborted()) return;
    bracket.*way.x = search.solver.data.Xs(0);
    bracket.*way.y = search.fvec[0];
    ReportRetryBox(search.solver, no_error, way.warning);
  });
}

}  // namespace

double ordinate_at(BracketSearch& search, double x) {
  search.solver.data.Xs(0) = x;
  YonXFn(search.solver, 0, search.K, search.X, search.fvec);
  return search.fvec[0];
}

void Findlo(BracketSearch& search, int i, double target, SecantBracket& bracket) {
  find_end(search, downwards, i, target, bracket);
}

void Findhi(BracketSearch& search, int i, double target, SecantBracket& bracket) {
  find_end(search, upwards, i, target, bracket);
}

}  // namespace tavlo
