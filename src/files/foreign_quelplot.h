// Foreign QuelPlot: the data file of the plotting program QuelPlot, as plain text or in a
// web page whose lines are paragraphs. It holds one or more data sets, and the titles and
// slopes of its chart.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "files/read_fault.h"
#include "project/project.h"

namespace tavlo {

/// The most data sets of a file that is read: as many as a project can hold.
inline constexpr int most_quelplot_sets = 1000;

/// How many data sets the file says it has; 1 where it says less.
std::optional<NumberedFault> count_quelplot_sets(std::string_view bytes, int& sets);

/// Reads a set, from 1, into data set 1, fit set 1 and the titles of chart 1, which must be
/// there; a number that the file doesn't have is set 1. A negative time and a count of 0 or
/// less mark suspensions. The fit is a 2-parameter Weibull to be calculated, with the slope
/// of the file if it has one. The sections behind the points may be missing. On a fault
/// `project` stays as it was: 62 where the file ends inside a section, 13 for what is no
/// number or no header, 6 for a number out of range, 9 for a count that can't be.
std::optional<NumberedFault> read_quelplot(std::string_view bytes, int set, Project& project);

/// Adds each set of the file to `projects`, in a copy of `empty`, by one walk through the file:
/// all of them or, on a fault, none.
std::optional<NumberedFault> read_quelplot_sets(std::string_view bytes, const Project& empty,
                                                std::vector<Project>& projects);

}  // namespace tavlo
