// Plot sets: finds the data and the fit behind each marker row of a chart.
#pragma once

#include <string>
#include <vector>

#include "project/session.h"

namespace tavlo {

struct PlotSet {
  const ChartMarker* marker = nullptr;
  int row = 0;                     ///< of the marker table, from 1
  int data_index = 0;              ///< in gData, from 1
  const FitResult* fit = nullptr;  ///< null when the set has no such fit
};

/// The marker rows from 1 whose data set exists, in order. Fit number 0 is the
/// working fit, slot 0 of the fit set; the fit set is the marker's own or, when
/// there is none of that identity, the one of the data set's index. A fit that
/// is stale or has no populations counts as none.
std::vector<PlotSet> plot_sets(const Session& session, const Chart& chart);

/// True when a person has changed data behind the chart since they were read: what it shows
/// holds for the data as they were.
bool is_out_of_date(const Session& session, const Chart& chart);

/// The row shows that data set with its own fits, or none for 0, because a person wants so.
void show_data(ChartMarker& marker, std::int32_t data_id);

/// The names of the data sets, each once: "Pumps, Motors".
std::string names_of_data(const Session& session, const std::vector<PlotSet>& sets);

/// Whether all plot sets show one data set.
bool show_one_data_set(const std::vector<PlotSet>& sets);

/// What a plot set is called: the label that the user gave it, else the title of
/// its data set. The factory's label says only which row it is, so it gives way too; a
/// factory title is written like a label: "Data 2" for "Data2".
std::string set_title(const Session& session, const PlotSet& set);

}  // namespace tavlo
