// Life marks: an answer of the Life panel drawn on the chart of its set, as an answer mark that
// follows the fit.
#pragma once

#include <string>

#include "actions/life_table.h"

namespace tavlo {

/// Why the answer has no place on the chart now; empty when it can be marked.
std::string why_not_marked(const Session& session, int fit_index, const LifeTable& table,
                           const LifeAnswer& answer);

/// Adds it to the marks of the chart; nothing where there is a reason against it.
void mark_on_chart(Session& session, int fit_index, const LifeTable& table,
                   const LifeAnswer& answer);

}  // namespace tavlo
