// Project: all that a person has made, as one value: data sets, fits, charts and the log.
// Copies share what neither has changed since.
#pragma once

#include <cstdint>
#include <string>

#include "numerics/slots.h"
#include "project/chart_records.h"
#include "project/records.h"
#include "project/rich_text.h"

namespace tavlo {

struct Project {
  /// Which work of this run it is a state of: a new project begins one, and each file that is
  /// opened. See Session::works.
  std::int64_t work = 0;
  std::string name;  ///< that its file may get: of the data that it began with; no file keeps it
  // Records from 1 on; slot 0 is the factory default.
  Slots<DataSet> data{0, fuStandardData()};
  Slots<FitSet> fits{0, fuStandard_Fit()};
  Slots<Chart> charts{0, fuStandard_Chart()};
  RichText log;

  friend bool operator==(const Project&, const Project&) = default;
};

/// The index of the record that has the identity, from 1; 0 when there is none.
int find_data(const Project& project, std::int32_t unique_id);
int find_fit(const Project& project, std::int32_t unique_id);

/// The index of the data set that a fit set belongs to: the one that it names, else the one
/// at its place; 0 when there is neither.
int data_of_fits(const Project& project, int fit_index);

/// The index of the fit set that a plot row takes its fit from: its own or, when there is none
/// of that identity, the one at the place of its data set; 0 when it shows no data.
int fit_set_of(const Project& project, const ChartMarker& marker);

/// Gives up the samples of all data sets, which are made again when they are wanted: one is as
/// large as its rows.
void forget_samples(const Project& project);

}  // namespace tavlo
