// New project: an empty project as a person meets it. Free of Qt.
#pragma once

#include "project/session.h"

namespace tavlo {

/// Empties the session and builds one data set, fit set and chart. The panel has
/// the usual first choice, so that a person can type times and calculate; the
/// log begins with its head line.
void start_project(Session& session);

}  // namespace tavlo
