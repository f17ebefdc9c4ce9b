// Picture writer: a drawing as the bytes of a picture file.
#pragma once

#include <QByteArray>

#include "chart/record/drawing_record.h"

namespace tavlo {

/// Size of a picture in pixels; the size on paper is so many pixels an inch.
struct PictureFormat {
  int width = 1000;
  int height = 600;
  double scale = 1.0;  ///< device pixels a pixel, for PNG alone
  int dots_per_inch = 96;
};

/// So many pixels an inch on the paper size that the drawing's metafile has; 16 to
/// 16384 a side.
PictureFormat paper_format(const DrawingRecord& drawing, int dots_per_inch);

/// A PNG of width x scale by height x scale device pixels, which says its size on
/// paper.
QByteArray png_picture(const DrawingRecord& drawing, const PictureFormat& format);

/// Vector graphics with text as text.
QByteArray svg_picture(const DrawingRecord& drawing, const PictureFormat& format);

/// One page of exactly the picture's size, vector graphics, fonts embedded.
QByteArray pdf_picture(const DrawingRecord& drawing, const PictureFormat& format);

}  // namespace tavlo
