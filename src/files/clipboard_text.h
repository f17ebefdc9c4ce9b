// Clipboard text: how sheets, grids and the log go to and come from other
// programs.
#pragma once

#include "project/session.h"

namespace tavlo {

/// Pastes the clipboard's text into the sheet, from its current row on.
void PasteClip(Session& session, int data_index);

/// Copies the selected rows of the sheet in the data notation.
void CopyClip(Session& session, int data_index);

/// Copies the selected cells of any grid, tab between cells.
void CopyClip(Session& session, const CellTable& grid);

}  // namespace tavlo
