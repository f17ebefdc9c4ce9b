// Session: everything that is process-wide for the program, in one value. A
// test makes as many sessions as it likes, the window program makes one.
#pragma once

#include <memory>
#include <string>

#include "numerics/error_reporter.h"
#include "numerics/slots.h"
#include "ports/ports.h"
#include "project/chart_records.h"
#include "project/data_sheet.h"
#include "project/fit_panel.h"
#include "project/records.h"
#include "project/rich_text.h"
#include "project/settings.h"
#include "project/solver_state.h"
#include "project/unique_id.h"

namespace tavlo {

struct Session {
  explicit Session(const Ports& world);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  Ports ports;
  ErrorReporter errors;
  Settings settings;
  UniqueIds ids;

  // The project: records from 1 to their count, element 0 the factory default.
  Slots<DataSet> gData;
  Slots<FitSet> gFit;
  Slots<Chart> gChart;
  Chart gChartNow;  ///< working copy of the chart being drawn
  int nData = 0;
  int nFit = 0;
  int nCharts = 0;

  // The headless halves of the windows, same indexes; slot 0 is empty.
  Slots<std::unique_ptr<DataSheet>> gDataForm;
  Slots<std::unique_ptr<FitPanel>> gFitForm;
  RichText log;

  int fit_doubts_warned = 0;  ///< doubts that the user has said OK to, see SufficiencyGate
  SolverState solver;         ///< its abort flag ends a long calculation at the next row
};

/// Empties the project and builds it again with one data set, one fit set and
/// one chart.
void reset_project(Session& session);

/// Adds a record with its identity, title and headless window; the index.
/// Failures are reported and give 0.
int New_frm_Data(Session& session);
int New_frm_Fit(Session& session);
int New_frm_Chart(Session& session);

/// The index of the record that has the identity, from 1; 0 when there is none.
int find_data(const Session& session, std::int32_t unique_id);
int find_fit(const Session& session, std::int32_t unique_id);

}  // namespace tavlo
