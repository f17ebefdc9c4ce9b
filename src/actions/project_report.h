// Project report: the report of the open project as a person asks for it: of the rows that are
// seen, with the questions of the Life panel.
#pragma once

#include <optional>

#include "chart/report/report.h"
#include "project/session.h"

namespace tavlo {

/// Brings rows and fits up to date and makes the report. Nothing where a cell can't be read, which
/// is told, or where the person does not want a report without the numbers of fits that these
/// data refuse.
std::optional<Report> project_report(Session& session);

}  // namespace tavlo
