// Picture door: the functions that the command line calls in the picture module, which it
// loads only when a picture or a report is asked for. Free of Qt.
#pragma once

#include <string>

#include "chart/record/drawing_record.h"
#include "chart/report/report.h"

namespace tavlo {

/// Size of a picture: pixels, and how many of them are an inch on paper. A vector
/// picture has the same size on paper as a PNG would have.
struct PictureSize {
  int width = 1000;
  int height = 600;
  int dots_per_inch = 96;
};

/// Turns a drawing into the bytes of a picture file. `format` is "svg", "pdf" or
/// "png"; 16 to 16384 pixels a side, 36 to 2400 an inch. False with words in
/// `error` when it can't be done.
using WritePicture = bool (*)(const DrawingRecord& drawing, const char* format,
                              const PictureSize& size, std::string& bytes, std::string& error);

/// Turns a report into the bytes of a file. `format` is "pdf" or "html". False with words in
/// `error` when it can't be done.
using WriteReport = bool (*)(const Report& report, const char* format, PaperSize paper,
                             std::string& bytes, std::string& error);

/// Names of the functions in the module, and file name of the module.
inline constexpr const char* write_picture_symbol = "tavlo_write_picture";
inline constexpr const char* write_report_symbol = "tavlo_write_report";
inline constexpr const char* picture_module = "libtavlo_pictures.so";

}  // namespace tavlo
