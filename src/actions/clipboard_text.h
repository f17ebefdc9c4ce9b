// Clipboard text: how sheets and grids go to and come from other programs, by the
// clipboard or under the mouse.
#pragma once

#include <string>

#include "ports/prompts.h"
#include "project/session.h"

namespace tavlo {

/// Says that the text on the clipboard is longer than what is taken in.
Box too_long_paste();

/// Pastes the clipboard's text into the sheet, from its current cell on. The status line
/// says what was entered, or why there is nothing to enter.
void PasteClip(Session& session, int data_index);

/// The same with a text, or with a data file, that was dropped onto the sheet.
void drop_text(Session& session, int data_index, const std::string& text);
void drop_file(Session& session, int data_index, const std::string& path);

/// Copies the selected rows of the sheet in the data notation, or the selected cells as they stand
/// where no time is among them. False, and the clipboard as it was, where there is nothing to copy.
bool CopyClip(Session& session, int data_index);

/// Copies and clears what the copy holds. What the short notation can't hold, as failure modes and
/// cells that can't be read, stays, and the status line says so.
void CutClip(Session& session, int data_index);

/// Copies the selected cells of the sheet below their headings, for spreadsheets and word
/// processors: as text with a tab between cells and as a table of HTML, its numbers with the
/// decimal sign of the system.
void copy_table(Session& session, int data_index);

/// Copies the selected cells of any grid in the same forms; a single cell without its heading.
void CopyClip(Session& session, const CellTable& grid);

}  // namespace tavlo
