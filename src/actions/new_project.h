// New projects and records, as a person meets them.
#pragma once

#include "project/session.h"

namespace tavlo {

/// Empties the session and builds one data set, fit set and chart. The panel has
/// the usual first choice, so that a person can type times and calculate; the
/// log begins with its head line.
void start_project(Session& session);

/// Adds a data set with the fits that will be made of it; the last chart shows them.
void add_data_set(Session& session);

/// Adds a chart of all data sets.
void add_chart(Session& session);

}  // namespace tavlo
