#include "painter/clipboard_forms.h"

#include "painter/picture_writer.h"

namespace tavlo {

std::vector<ClipboardForm> painted_forms(const DrawingRecord& drawing) {
  if (drawing.width <= 0 || drawing.height <= 0) return {};
  constexpr int screen = 96;  // pixels an inch
  PictureFormat format = paper_format(drawing, screen);
  std::vector<ClipboardForm> forms;
  forms.push_back({"image/svg+xml", svg_picture(drawing, format).toStdString()});
  format.scale = 2.0;
  forms.push_back({"image/png", png_picture(drawing, format).toStdString()});
  return forms;
}

}  // namespace tavlo
