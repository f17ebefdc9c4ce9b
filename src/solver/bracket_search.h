// Bracket search: two log times between which the model's ordinate crosses a
// target, sought among the data first and in growing steps outside of them.
#pragma once

#include <vector>

#include "solver/bracketed_secant.h"
#include "solver/solver.h"

namespace tavlo {

/// The mark of an end that has not been found.
inline constexpr double no_end = 10;

/// What Findlo and Findhi work on.
struct BracketSearch {
  Solver& solver;
  int n;  ///< the last data row
  int K;
  double slope;  ///< log time by ordinate of the data, end to end
  ParameterVector& X;
  std::vector<double>& fvec;  ///< the model's ordinates at the data rows; slot 0 is scratch
  const std::vector<double>& lowest_to;     ///< the least ordinate of rows 1 to i
  const std::vector<double>& highest_from;  ///< the greatest ordinate of rows i to n
};

/// The model's ordinate at log time x, by way of slot 0; a failure leaves the last.
double ordinate_at(BracketSearch& search, double x);

/// Seeks a log time at and below row i where the ordinate is below `target`, and
/// one above it, at and above row i. Points met on the way narrow the other end.
/// Without success the last trial is taken, and the retry box says so.
void Findlo(BracketSearch& search, int i, double target, SecantBracket& bracket);
void Findhi(BracketSearch& search, int i, double target, SecantBracket& bracket);

}  // namespace tavlo
