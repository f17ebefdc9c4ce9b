// New projects and records, as a person meets them.
#pragma once

#include "project/session.h"

namespace tavlo {

/// One data set, fit set and chart, and a log that begins with its head line.
Project begun_project(Session& session);

/// Such a project takes the place of the present one. The panel has
/// the usual first choice, so that a person can type times and calculate; the
/// log begins with its head line.
void start_project(Session& session);

/// The first choice of a panel: a Weibull by regression.
void choose_standard_fit(FitChoices& panel);

/// Adds a data set with the fits that will be made of it; the last chart shows them.
void add_data_set(Session& session);

/// Adds a chart of all data sets.
void add_chart(Session& session);

}  // namespace tavlo
