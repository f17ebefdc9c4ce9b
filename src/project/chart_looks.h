// Chart looks: dresses a chart in the looks of another one, or of a factory type,
// without touching what it shows.
#pragma once

#include <string_view>

#include "project/chart_records.h"

namespace tavlo {

/// Gives `chart` the looks of `profile`: boxes, titles, axes with their limits,
/// the pens and symbols of the plot sets, formats and the name of the type. The
/// chart keeps its identity and name, the data and fits that it shows with their
/// labels, its switch for sub-populations, the file name at its foot, marks that
/// the user has made, and rows of plot sets that the profile lacks. A further row of
/// one data set that is only a line stays so. Without marks it takes those of the
/// profile.
void apply_profile(Chart& chart, const Chart& profile);

/// Gives `chart` the looks of a factory type (see chart_types). Words of its titles
/// that somebody chose stay; so do scales and limits where the type is only looks.
void apply_chart_type(Chart& chart, std::string_view type);

/// The same without the type's paper: scales and limits stay whatever the type.
void apply_chart_look(Chart& chart, std::string_view look);

/// True for a chart as its type comes, where this is more than looks: nobody has chosen other
/// pens, letters or places.
bool has_factory_look(const Chart& chart);

}  // namespace tavlo
