// Report: what a project has to say to somebody else: its fits with their notes, how long units
// live by them, its charts and its data, as a document of words and drawings.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "chart/report/report.h"
#include "project/session.h"

namespace tavlo {

struct ReportRequest {
  std::string title;
  std::string file;  ///< the name of the file that the data come from; empty for none
  std::vector<double> b_life = {0.01, 0.1, 0.5};  ///< fractions failed
  std::vector<double> times = {};                 ///< for the shares that survive them
  /// Sentences on a data set, by its index: why a fit that was asked for could not be made.
  std::vector<std::pair<int, std::string>> refusals = {};
};

/// The report of the session's project as it stands, with the date of the session's clock. Long
/// data are shortened, and it says so. Limits of charts that follow the data must be set.
Report make_report(Session& session, const ReportRequest& request);

}  // namespace tavlo
