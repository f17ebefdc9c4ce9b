// Report look: the boxes, pens and words of a chart that is printed in a report: white
// paper, a thin grey frame, hollow symbols, colours that all people can tell apart.
#pragma once

#include "project/chart_records.h"

namespace tavlo {

/// Gives a factory chart the look. Scales and limits stay.
void use_report_look(Chart& chart);

}  // namespace tavlo
