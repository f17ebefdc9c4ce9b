// Clipboard forms: a drawing as the pictures that other programs take from the
// clipboard.
#pragma once

#include <vector>

#include "chart/record/drawing_record.h"
#include "ports/clipboard.h"

namespace tavlo {

/// The drawing as SVG and as PNG, of the size on paper that its metafile has; the
/// PNG has twice the pixels of a screen. Nothing for a drawing without a size.
std::vector<ClipboardForm> painted_forms(const DrawingRecord& drawing);

}  // namespace tavlo
