// Picture writer: a drawing as the bytes of a picture file.
#pragma once

#include <QByteArray>

#include "chart/drawing_record.h"

namespace tavlo {

/// Size of a picture in pixels; for SVG and PDF in 1/96 inch.
struct PictureFormat {
  int width = 1000;
  int height = 600;
  double scale = 1.0;  ///< device pixels a pixel, for PNG alone
};

/// A PNG of width x scale by height x scale device pixels.
QByteArray png_picture(const DrawingRecord& drawing, const PictureFormat& format);

/// Vector graphics with text as text.
QByteArray svg_picture(const DrawingRecord& drawing, const PictureFormat& format);

/// One page of exactly the picture's size, vector graphics, fonts embedded.
QByteArray pdf_picture(const DrawingRecord& drawing, const PictureFormat& format);

}  // namespace tavlo
