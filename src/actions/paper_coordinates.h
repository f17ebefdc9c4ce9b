// Paper coordinates: writes where the rows of a set stand on the paper of a model.
#pragma once

#include <cmath>

#include "numerics/real.h"
#include "project/records.h"

namespace tavlo {

/// Writes XT(1), the time or its logarithm, of all rows and YT(1),
/// `ordinate_of(Y)`, of those with failures; the others get 0. Error 5 for a time
/// that has no logarithm.
template <class Ordinate>
void write_coordinates(DataSet& data, bool log_time, Ordinate ordinate_of) {
  if (data.Count > data.Points.bound()) throw RunTimeError(run_time::subscript);
  DataPoint* rows = data.Points.data();
  for (int i = 1; i <= data.Count; ++i) {
    DataPoint& row = rows[i];
    const Real x = static_cast<double>(row.X);
    row.XT[1] = (log_time ? ln(abs(x)) : x).value();
    row.YT[1] = row.Fails <= 0 ? 0.0 : ordinate_of(static_cast<double>(row.Y));
  }
}

}  // namespace tavlo
