// Inspections: failures that are found at the next look at the units, not when they happen.
#pragma once

#include <vector>

#include "fit/sample.h"

namespace tavlo {

struct Inspections {
  double interval = 0;        ///< looks at its multiples; 0 for the times below
  std::vector<double> times;  ///< ascending

  bool is_none() const { return interval == 0 && times.empty(); }

  friend bool operator==(const Inspections&, const Inspections&) = default;
};

/// True for a time above 0 that data can hold.
bool is_inspection(double time);

/// One number is an interval, several are times in any order. Error 5 for what is no
/// inspection.
Inspections inspections_of(std::vector<double> numbers);

/// Rounds times of failures up to the next inspection. What has not failed at the last one is
/// suspended there; a suspension before it keeps its time, at which the unit was taken out.
/// Error 6 for an inspection beyond what data can hold.
void find_at(const Inspections& inspections, std::vector<SampleRow>& rows);

}  // namespace tavlo
