// Undo: the steps that a person can take back, and do again.
#pragma once

#include "project/session.h"

namespace tavlo {

/// True for two states of a project that only show other parts of their charts: by a zoom,
/// which has a way back of its own, or by limits that follow the data.
bool differ_in_view_only(const Project& a, const Project& b);

/// Ends a command: what it has changed of the project becomes a step of the history, by the
/// name that the command has left in `Session::step`. What is seen of a chart is none.
void end_step(Session& session);

/// Takes the last step back, or does the one that was taken back. False, and nothing, while
/// a fit is under way and at the end of the history.
bool undo(Session& session);
bool redo(Session& session);

/// Shows a former work again as it was left, see Work::uncopied. It is a step of its own.
void return_to_work(Session& session, std::int64_t work);

/// Takes the project as it stands for one that can be had again.
void mark_saved(Session& session);

/// True when the project holds what was not saved. How far a chart is zoomed in doesn't count.
bool is_unsaved(const Session& session);

}  // namespace tavlo
