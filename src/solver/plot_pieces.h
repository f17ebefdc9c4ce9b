// Plot pieces: a mixture's Weibull plot read as three straight pieces, the early,
// the middle and the late one, and the starting parameters that they show.
#pragma once

#include <array>
#include <vector>

#include "project/solver_state.h"

namespace tavlo {

/// A point of the plot: log time and Weibull ordinate.
struct PlotPoint {
  double x = 0;
  double y = 0;
};

/// Rows at which the plot bends.
struct PlotBreaks {
  int first = 0;
  int second = 0;
};

/// The pairs of breaks worth a try: first the one that the plot itself shows (its
/// highest and lowest point about the chord), then five fixed shares of the rows.
/// `x` and `y` hold rows 1 to `rows`, at least 7. None without a rising chord.
std::vector<PlotBreaks> likely_breaks(const double* x, const double* y, int rows);

/// Seven points, from 1: both ends, the neighbours of each break, and the middle
/// between the breaks.
using PlotAnchors = std::array<PlotPoint, 8>;

/// Slopes are held within 0.2 and 20, log lives within 14 of the anchor that gives
/// them: a steeper or farther piece is an accident of few points.
struct PlotPieces {
  PlotAnchors anchor;
  double early_slope = 0;      ///< anchors 1 to 2
  double middle_slope = 0;     ///< anchors 3 to 5
  double late_slope = 0;       ///< anchors 6 to 7
  double early_to_middle = 0;  ///< anchors 1 to 5
  double share = 0;            ///< fraction failed at the first break
};

PlotPieces pieces_of(const double* x, const double* y, int rows, PlotBreaks breaks);

/// A mixture's parameters at work: slope and log life of each population, share p
/// that carries C.
struct MixtureStart {
  struct Population {
    double beta = 0;
    double ln_eta = 0;
    bool is_present = false;

    /// Cumulative hazard at a log time.
    double hazard(double x) const;
  };
  Population A, B, C;
  double p = 0;

  /// As X of the model, from slot 1.
  ParameterVector to_x() const;
};

/// What the pieces show for a model of K = 4, 5 or 7 parameters.
MixtureStart start_from(const PlotPieces& pieces, int K);

/// Ten passes over the parameters; each is solved for so that the model goes
/// through its anchors while the others are held. A value that has no solution
/// stays as it was.
MixtureStart relaxed(MixtureStart start, const PlotPieces& pieces, int K);

}  // namespace tavlo
