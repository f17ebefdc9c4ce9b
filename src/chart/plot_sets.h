// Plot sets: finds the data and the fit behind each marker row of a chart.
#pragma once

#include <vector>

#include "project/session.h"

namespace tavlo {

struct PlotSet {
  const ChartMarker* marker = nullptr;
  int data_index = 0;              ///< in gData, from 1
  const FitResult* fit = nullptr;  ///< null when the set has no such fit
};

/// The marker rows from 1 whose data set exists, in order. Fit number 0 is the
/// working fit, slot 0 of the fit set; the fit set is the marker's own or, when
/// there is none of that identity, the one of the data set's index. A fit that
/// is stale or has no populations counts as none.
std::vector<PlotSet> plot_sets(const Session& session, const Chart& chart);

}  // namespace tavlo
