// Recovery: copies of a project that outlive a crash. They are project files in a folder of
// their own beside the settings. A project with unsaved changes is copied every two minutes
// and before another one takes its place. A copy is made of a snapshot, on a thread of its
// own: nobody waits for it, and nothing of the project changes.
//
// The name of a copy says all that a list needs, so that none is opened for it:
// "20261122-114005 c p4711 w2 n1234 pumps.tavlo" is the current work (r: one that was replaced)
// of process 4711, its second one, with 1234 points.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "project/session.h"

namespace tavlo {

/// Copies stand in the folder from now on; it is made with the first one.
void begin_recovery(Session& session, const std::string& folder);

enum class CopyReason { current, replaced };

/// Begins a copy of the project where it holds what was not saved. One that is being written
/// is waited for.
void keep_copy(Session& session, CopyReason reason);

/// Takes in a copy that has been written. It stands for the former one of its work.
void finish_copies(Session& session, bool wait);

/// What the program does every two minutes: takes in, keeps a copy of the present work where
/// it needs one, else of a former one that has none yet.
void tend_copies(Session& session);

/// Says on the status bar why a copy could not be written, once. Behind what a command has
/// said: only then does it stay there.
void tell_missing_copy(Session& session);

/// A former work, other than those `but`, that holds what is neither saved nor copied, after one
/// more try to copy it.
std::optional<std::int64_t> uncopied_work(Session& session, const std::vector<std::int64_t>& but);

/// The present work is saved, or the person has let it go: its copy is needed no more. Those
/// of works that undo brings back stay.
void drop_copy(Session& session);

/// A copy that can be opened.
struct RecoveryCopy {
  std::string path;
  std::string name;  ///< of the project
  std::string time;  ///< "2026-11-22 11:40"
  std::int64_t points = 0;
  bool after_crash = false;  ///< of a work that was never let go
};

/// The last ten copies that processes have left which run no more, the newest first.
std::vector<RecoveryCopy> recovery_copies(Session& session);

/// Opens a copy: the project has no file of its own then and counts as unsaved. The copy goes
/// once another one has been made. False, after a box, when it can't be read.
bool recover(Session& session, const RecoveryCopy& copy);

}  // namespace tavlo
