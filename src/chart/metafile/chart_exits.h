// Chart exits: the ways by which a drawn chart leaves the program as a metafile,
// to a file and to the clipboard.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "chart/record/drawing_record.h"
#include "project/session.h"

namespace tavlo {

/// Saves the drawing as a placeable metafile. Without a `file_name` the user is
/// asked for one; a name without a full stop gets ".wmf", any other is used as it
/// stands. An old file of that name is replaced, and stays whole when the save
/// fails, which is told. True when the file was written; a drawing without a
/// size, or no name, does nothing.
bool SaveWMF(Session& session, const DrawingRecord& drawing, std::string file_name);

/// The metafile of the drawing; nothing when it can't be made, which is told, or
/// when the user won't have characters replaced that it can't hold.
std::optional<std::string> metafile_to_save(Session& session, const DrawingRecord& drawing);

/// Writes the bytes of a picture; the old file stays whole when that fails, which
/// is told. True when the file was written.
bool save_picture_file(const Ports& ports, const std::string& name, const std::string& bytes);

/// Puts the drawing on the clipboard: as a metafile, under each of the names by
/// which programs know one, and in the `painted` forms (SVG, PNG), so that the
/// other program can choose. What doesn't work is told.
void CopyClipChart(Session& session, const DrawingRecord& drawing,
                   const std::vector<ClipboardForm>& painted);

}  // namespace tavlo
