// Fit section: the fits of a data set as the lines of a project file. What a fit was asked
// for is read back as far as the lines tell it: model, method, slope, likelihood and ranks.
#pragma once

#include "files/project_reader.h"
#include "files/project_writer.h"
#include "project/records.h"

namespace tavlo {

/// Reads a section into `fits`; RunTimeErrors of the reader, `fits` is of no use then. The
/// fits belong to no data yet, see tie_fits.
void RW_Fit(ProjectReader& file, FitSet& fits);

/// Gives fits that were read the data that they were made from.
void tie_fits(FitSet& fits, const DataSet& data);

/// Writes the section. A fit with a number that is not finite is written as not calculated.
/// RunTimeErrors of the writer.
void RW_Fit(ProjectWriter& file, const FitSet& fits, const DataSet& data);

}  // namespace tavlo
