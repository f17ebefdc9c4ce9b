// HTML report: a report as one file for a browser, which needs nothing beside it: the charts
// stand in it as vector graphics, and it prints as well as it reads.
#pragma once

#include <string>
#include <vector>

#include "chart/report/report.h"

namespace tavlo {

/// The whole document, UTF-8. `pictures` holds the charts as SVG, one for each drawing of the
/// report, in order.
std::string html_report(const Report& report, PaperSize paper,
                        const std::vector<std::string>& pictures);

}  // namespace tavlo
