// Parameter names: how each family names its two parameters, at every place where a
// person or a program reads them.
#pragma once

#include "life/models.h"

namespace tavlo {

struct NamePair {
  const char* first;   ///< eta, Xi, mu or the median
  const char* second;  ///< beta, Del, sigma or the sigma factor
};

struct ParameterNames {
  NamePair key;    ///< of machine-read output
  NamePair table;  ///< heading of the command line's table
  NamePair log;
  NamePair grid;   ///< heading of the fit grid
  NamePair chart;  ///< heading of the parameter box
};

/// The names of a family; models without one read as Weibulls.
const ParameterNames& parameter_names(Family family);

}  // namespace tavlo
