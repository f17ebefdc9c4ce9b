// Answer marks: marks that say what a fit answers to a question, "B10 = 164", at the place of
// the answer on its line. They are kept as the question, the data set and the name of the fit,
// in `Text1`, and follow these: after a zoom, another scale or another calculation of the fit
// they stand at the right place with the right number, and a mark whose fit the chart does not
// show, or whose answer lies outside its axes, is not shown.
#pragma once

#include "chart/compose/asked_value.h"

namespace tavlo {

/// Adds a mark of the answer that `saying` is of, with no place yet; none where the chart has
/// it already.
void add_answer_mark(Chart& chart, const AskedValue& asked, const FitSaying& saying);

/// Gives the answer marks of a chart places and words, as its fits and axes are now. Run
/// SetAutoScale first where limits follow the data.
void place_answer_marks(const Session& session, Chart& chart);

}  // namespace tavlo
