// Session: everything that is process-wide for the program, in one value. A
// test makes as many sessions as it likes, the window program makes one.
#pragma once

#include <array>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "life/life_questions.h"
#include "numerics/error_reporter.h"
#include "numerics/slots.h"
#include "ports/ports.h"
#include "project/data_sheet.h"
#include "project/fit_panel.h"
#include "project/history.h"
#include "project/language_texts.h"
#include "project/program_places.h"
#include "project/project.h"
#include "project/settings.h"
#include "project/unique_id.h"

namespace tavlo {

/// What a run remembers of the boxes that fits have shown.
struct FitDialogue {
  int doubts_warned = 0;             ///< doubts that the user has said OK to, see SufficiencyGate
  bool minimum_life_warned = false;  ///< the warning on W3T by MLE has been shown
  int fault_error = 0;               ///< run-time error of the last retry box
  double fault_seconds = -1e9;       ///< steady seconds of the last retry box
  /// Refusals that the command at work has shown; null between commands.
  std::optional<std::vector<std::string>> told;
};

/// What a project has to do with the disk. It is no part of it: to take a change back that was
/// made before a save does not unmake the save.
struct Work {
  std::string path;      ///< its file; empty for none yet
  Project saved;         ///< as it was last saved or begun, see is_unsaved in actions/undo
  bool is_utf8 = false;  ///< the file has left the code page, and the person knows
  std::string copy;      ///< that would outlive a crash, see actions/recovery; empty for none
  std::shared_ptr<const Project> copied;  ///< what it holds
  /// As another project took its place, unsaved, until a copy has been written.
  std::shared_ptr<const Project> uncopied;
};

/// A copy that another thread writes. The state is this one's: it ends here, since rows that
/// nobody else holds are changed in place.
struct PendingCopy {
  std::string path;
  std::shared_ptr<const Project> state;
  std::shared_future<FileResult> written;
};

struct Session {
  explicit Session(const Ports& world);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  Ports ports;
  ErrorReporter errors;
  Settings settings;
  ProgramPlaces places;
  std::vector<std::string> LanguageText = std::vector<std::string>(language_texts);
  std::int32_t RunMode = 1;  ///< 2 from the moment a command line is seen; stored only
  UniqueIds ids;
  /// States of the generator of samples, see WichmannHill; all 0 until it is seeded.
  std::array<std::int32_t, 4> random_states{};

  Project project;
  Chart gChartNow;  ///< working copy of the chart being drawn

  // The headless halves of the windows, by the index of their record; slot 0 is empty.
  Slots<std::unique_ptr<DataSheet>> gDataForm;
  Slots<std::unique_ptr<FitPanel>> gFitForm;

  /// What was chosen in the panels of fit sets that are in none now, by their identities.
  std::map<std::int32_t, FitChoices> choices;
  /// The chart that the person worked on last; 0 for none.
  std::int32_t chart_at_work = 0;

  /// What the Life panels answer beside the mean, whatever the project.
  LifeQuestions life_questions;

  FitDialogue fitting;

  std::map<std::int64_t, Work> works;  ///< by Project::work
  std::int64_t last_work = 0;

  // Copies that outlive a crash, see actions/recovery.
  std::string recovery_folder;      ///< empty for none
  std::string begun;                ///< the moment from which on copies are of this run
  std::optional<PendingCopy> copy;  ///< that is being written
  std::string missing_copy;         ///< why one could not be written, not told yet

  Project told;  ///< what the windows were told last, see actions/announce
  History history;
  /// What the command at work is called in the Edit menu; empty for none of its own.
  std::string step;
};

/// Gives each record of the project its headless window, by its place in the list. Those
/// behind the last record are kept: windows that are about to go still read them.
void follow_records(Session& session);

/// A project of one data set, one fit set and one chart, all empty.
Project fresh_project(Session& session);

/// Puts such a project in the place of the present one.
void reset_project(Session& session);

/// True while a fit is under way in one of the panels.
bool is_busy(const Session& session);

/// Adds a record with its identity, title and headless window; the index.
/// Failures are reported and give 0.
int New_frm_Data(Session& session);
int New_frm_Fit(Session& session);
int New_frm_Chart(Session& session);

}  // namespace tavlo
