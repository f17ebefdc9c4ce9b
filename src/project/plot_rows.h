// Plot rows: the rows of a chart's marker table, of which each shows a data set with one of
// its fits. Which row shows what is decided by identity. A fit goes to the first row of its
// set; a row that a person has tied to a fit keeps it.
#pragma once

#include "project/project.h"

namespace tavlo {

/// Makes sure that the table has the row. Beyond the factory's twenty the symbols and pens
/// of the rows 1 to 20 come again, in the colours of the next row at each turn, so that
/// they are still told apart.
void ensure_plot_row(Chart& chart, int row);

/// Puts a data set with one of its fits on the chart, in the first row that is
/// free or in a new one; the row.
int add_plot_set(Chart& chart, std::int32_t data_id, std::int32_t fit_id, int fit_number);

/// Puts a further fit of a set on the chart, whose points stand there already, as a line of
/// its own; the row.
int add_plot_line(const Project& project, Chart& chart, int fit_index, int fit_number);

/// The first row that shows fit `fit_number` of the fit set; 0 when none does.
int row_of_fit(const Project& project, const Chart& chart, int fit_index, int fit_number);

/// The row in which the chart follows the last fit of the set: the first one of the set that
/// nobody has tied; 0 when there is none.
int following_row(const Project& project, const Chart& chart, int fit_index);

/// True when the chart shows the data of the fit set.
bool shows_set(const Project& project, const Chart& chart, int fit_index);

/// Shows the fit in the row that follows its set or, where all are tied, in another one. One
/// that is shown already stays where it is.
void follow_fit(const Project& project, Chart& chart, int fit_index, int fit_number);

/// Shows the fit beside those that are shown, in a row tied to it; does nothing when it is
/// shown.
void show_fit(const Project& project, Chart& chart, int fit_index, int fit_number);

/// Takes the fit off the chart; the points of its set stay.
void hide_fit(const Project& project, Chart& chart, int fit_index, int fit_number);

/// Takes fit `fit_number` out of the numbers that rows have: it goes, those behind it move up.
void forget_fit(const Project& project, Chart& chart, int fit_index, int fit_number);

/// Frees the rows of a data set that goes.
void forget_data(Chart& chart, std::int32_t data_id);

}  // namespace tavlo
