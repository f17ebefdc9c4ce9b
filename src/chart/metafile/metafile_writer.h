// Metafile writer: a drawing as the bytes of a placeable Windows metafile, the
// form in which office programs have taken charts for decades.
#pragma once

#include <string>

#include "chart/record/drawing_record.h"

namespace tavlo {

/// Logical units of an inch on the paper of a metafile.
inline constexpr int metafile_units_per_inch = 1000;

/// The whole file: a 22-byte placeable header, the metafile's header, window
/// extent and mapping mode, the drawing's records in their order, end record.
/// Texts are Windows-1252, "?" for what that lacks; `lost`, if given, receives
/// those characters as UTF-8. A metafile has 16-bit coordinates: lines and shapes
/// are clipped well outside the chart box, what lies wholly out there is left out,
/// and other numbers become the nearest that fits. Raises invalid argument for a
/// chart box without a size, overflow for one above 32767 units.
std::string metafile_bytes(const DrawingRecord& drawing, std::string* lost = nullptr);

}  // namespace tavlo
