// Picture door: the one function that the command line calls in the picture
// module, which it loads only when a picture is asked for. Free of Qt.
#pragma once

#include <string>

#include "chart/drawing_record.h"

namespace tavlo {

/// Turns a drawing into the bytes of a picture file. `format` is "svg", "pdf" or
/// "png"; the size is in pixels (for svg and pdf: of 1/96 inch). False with
/// words in `error` when it can't be done.
using WritePicture = bool (*)(const DrawingRecord& drawing, const char* format, int width,
                              int height, std::string& bytes, std::string& error);

/// Name of the function in the module, and file name of the module.
inline constexpr const char* write_picture_symbol = "tavlo_write_picture";
inline constexpr const char* picture_module = "libtavlo_pictures.so";

}  // namespace tavlo
