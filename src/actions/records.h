// Records: data sets, fits and charts of a project get other names and go. Each is a step
// that can be taken back.
#pragma once

#include <string>

#include "project/session.h"

namespace tavlo {

/// Gives a data set or its fits another name. False, and nothing, for a name without a
/// character that can be seen.
bool rename_data(Session& session, int index, const std::string& title);
bool rename_fits(Session& session, int index, const std::string& title);

/// Deletes a data set with its fits; the charts show it no longer. False for the last one,
/// which is told: a project has one at least.
bool delete_set(Session& session, int index);

/// Deletes a chart. False for the last one, which is told.
bool delete_chart(Session& session, int index);

/// Deletes one fit of a set; the charts show it no longer.
bool delete_fit(Session& session, int fit_index, int slot);

}  // namespace tavlo
