// Reports: what a fit says, as an entry of the running log and as rows of the
// fit grid.
#pragma once

#include <string>

#include "project/session.h"

namespace tavlo {

/// Writes the log entry of a fit; a slot below 1 means the last one.
void PostFitLog(Session& session, int fit_slot, int data_index, int fit_index);

/// Fills a grid with the fits of gFit(fit_index), as a person reads them.
void fill_fit_grid(Session& session, int fit_index, Grid& grid);

/// Builds the fit grid of gFitForm(fit_index) anew and tells the views.
void Load_Fit(Session& session, int fit_index);

/// The fit that a row of the fit grid belongs to; slot 0 for the headings and behind the last.
struct GridFit {
  int slot = 0;
  bool is_first_row = false;  ///< of those that the fit takes
};
GridFit fit_at(const Session& session, int fit_index, int grid_row);

/// What is to be known beside the numbers of a row of the fit grid, a line each, for its
/// tool tip. Empty where there is nothing.
std::string notes_at(const Session& session, int fit_index, int grid_row);

/// Whether the fit of a row of the fit grid answers other data than the sheet holds now.
bool is_out_of_date_at(const Session& session, int fit_index, int grid_row);

/// Adds text to the end of the log: raw RTF, or plain text whose line breaks
/// become line ends of the log.
void AppendLog(Session& session, const std::string& text, bool as_rtf);

/// The log is what the person has made of it, as a step of its own.
void edit_log(Session& session, const RichText& text);

}  // namespace tavlo
