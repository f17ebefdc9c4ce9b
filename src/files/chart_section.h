// Chart section: a chart as the lines of a project file. The same lines, alone in
// a file, are a chart profile.
#pragma once

#include <optional>

#include "files/project_reader.h"
#include "files/project_writer.h"
#include "numerics/error_reporter.h"
#include "project/chart_records.h"

namespace tavlo {

/// What ties a chart to its project: its identity, the data and fits that it
/// shows, its names, and how many axes, boxes, plot sets and marks it has.
enum class ChartTies { read, keep };

/// Reads a section over `chart` and makes it fit to be drawn (see make_drawable).
/// With `ChartTies::keep` the ties are read and dropped; a section with other
/// numbers of axes, boxes, plot sets or marks is then refused. A section without
/// fields is an empty chart and changes nothing. On a failure, which is reported,
/// `chart` stays as it was; false.
bool RW_Chart(ErrorReporter& reporter, ProjectReader& file, Chart& chart,
              ChartTies ties = ChartTies::read);

/// The same without a report: what is wrong, or nothing.
std::optional<ReadFault> read_chart(ProjectReader& file, Chart& chart);

/// The same, with the RunTimeErrors of the reader.
void read_chart_section(ProjectReader& file, Chart& chart);

/// Writes the section; RunTimeErrors of the writer.
void write_chart_section(ProjectWriter& file, const Chart& chart);

/// Writes the section. A failure is reported and gives false; what `file` then
/// holds is of no use.
bool RW_Chart(ErrorReporter& reporter, ProjectWriter& file, const Chart& chart);

}  // namespace tavlo
