// Life marks: an answer of the Life panel drawn on the chart of its set: a line from the time
// axis up to the curve and across to the percentages, and the answer as a text beside it.
#pragma once

#include <string>

#include "actions/life_table.h"

namespace tavlo {

/// Why the answer has no place on the chart now; empty when it can be marked.
std::string why_not_marked(const Session& session, int fit_index, const LifeTable& table,
                           const LifeAnswer& answer);

/// Adds line and text to the marks of the chart; nothing where there is a reason against it.
/// The marks are the chart's like those drawn by hand: they stay where they are on the paper.
void mark_on_chart(Session& session, int fit_index, const LifeTable& table,
                   const LifeAnswer& answer);

}  // namespace tavlo
