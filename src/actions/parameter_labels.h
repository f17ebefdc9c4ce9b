// Parameter labels: how each family names its two parameters, in the log and in
// the headings of the fit grid.
#pragma once

#include "life/models.h"

namespace tavlo {

struct ParameterLabels {
  const char* log_scale;
  const char* log_shape;
  const char* grid_scale;
  const char* grid_shape;
};

/// The labels of a family; codes without one read as Weibulls.
const ParameterLabels& parameter_labels(Family family);

}  // namespace tavlo
