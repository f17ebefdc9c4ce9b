// Answer marks: marks that say what a fit answers to a question, "B10 = 164", at the place of
// the answer on its line. The record keeps the question, the data set and the name of the fit,
// in `Text1`, and, in `Width` and `Height`, how far from the line a person has put the words; a
// place, which is a free one for words that nobody has moved, and words are found when the chart is
// drawn: after a zoom, another scale or another calculation of the
// fit they stand at the right place with the right number, and a mark whose fit the chart does not
// show or whose data have changed, or whose answer lies outside its axes, is not shown.
#pragma once

#include "chart/compose/asked_value.h"

namespace tavlo {

/// Adds a mark of the answer that `saying` is of; none where the chart has it already.
void add_answer_mark(Chart& chart, const AskedValue& asked, const FitSaying& saying);

/// Whether the chart has a mark of this answer.
bool has_answer_mark(const Chart& chart, const AskedValue& asked, const FitSaying& saying);

bool has_answer_marks(const Chart& chart);

/// The chart whose answer marks have places and words, as its fits and axes are now; in `Width`
/// and `Height` is where the words stand.
Chart with_answers(const Session& session, const Chart& chart);

}  // namespace tavlo
