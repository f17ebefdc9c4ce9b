// Plot rows: the marker table of a chart grows with the number of its plot sets.
#pragma once

#include "project/chart_records.h"

namespace tavlo {

/// Makes sure that the table has the row. Beyond the factory's twenty the symbols and pens
/// of the rows 1 to 20 come again, in the colours of the next row at each turn, so that
/// they are still told apart.
void ensure_plot_row(Chart& chart, int row);

/// Puts a data set with one of its fits on the chart, in the first row that is
/// free or in a new one; the row.
int add_plot_set(Chart& chart, std::int32_t data_id, std::int32_t fit_id, int fit_number);

}  // namespace tavlo
