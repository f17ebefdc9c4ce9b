#include "workspace/format/format_pictures.h"

#include <QGuiApplication>
#include <QPainter>

#include "chart/parts/symbols.h"
#include "chart/record/recorder.h"
#include "painter/player.h"

namespace tavlo {

namespace {

constexpr int units_per_pixel = 12;  // of a chart in a window of usual size

/// Plays the drawing on a picture with the sharpness of the finest screen.
QIcon played(const DrawingRecord& drawing, const QSize& size, const QColor& ground) {
  const double scale = qGuiApp->devicePixelRatio();
  QPixmap picture(size * scale);
  picture.setDevicePixelRatio(scale);
  picture.fill(ground);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  PlayChart(painter, drawing, QRectF(QPointF(0, 0), QSizeF(size)));
  return QIcon(picture);
}

/// White paper, whatever the colours of the desktop; grey under a line that white would hide.
QColor paper_under(std::int32_t line) {
  constexpr double too_light = 0.8;
  return to_qt_colour(line).lightnessF() > too_light ? QColor(Qt::darkGray) : QColor(Qt::white);
}

DrawingRecord empty_drawing(const QSize& size) {
  DrawingRecord drawing;
  drawing.width = size.width() * units_per_pixel;
  drawing.height = size.height() * units_per_pixel;
  return drawing;
}

}  // namespace

QColor to_qt_colour(std::int32_t word) {
  return {word & 0xFF, (word >> 8) & 0xFF, (word >> 16) & 0xFF};
}

std::int32_t from_qt_colour(const QColor& colour) {
  return rgb(colour.red(), colour.green(), colour.blue());
}

QIcon colour_picture(std::int32_t colour, const QSize& size) {
  DrawingRecord drawing = empty_drawing(size);
  Recorder recorder(drawing);
  {
    const auto pen = Selected::pen(recorder, pen_style::solid, 1, rgb(147, 155, 165));
    const auto brush = Selected::brush(recorder, true, colour);
    const int inset = units_per_pixel;
    recorder.add(drawing::Rectangle{inset, inset, drawing.width - inset, drawing.height - inset});
  }
  return played(drawing, size, Qt::transparent);
}

QIcon pen_picture(const PenLook& look, const QSize& size) {
  DrawingRecord drawing = empty_drawing(size);
  Recorder recorder(drawing);
  {
    const auto pen = Selected::pen(recorder, look.style, look.width, look.colour);
    const int inset = 3 * units_per_pixel;
    recorder.add(drawing::Polyline{
        {{inset, drawing.height / 2}, {drawing.width - inset, drawing.height / 2}}});
  }
  return played(drawing, size, paper_under(look.colour));
}

QIcon symbol_picture(int symbol, int side, std::int32_t line, std::int32_t fill, bool filled) {
  DrawingRecord drawing = empty_drawing({side, side});
  Recorder recorder(drawing);
  {
    const bool solid = is_solid_symbol(symbol);
    const auto pen = Selected::pen(recorder, pen_style::solid, units_per_pixel, line);
    const auto brush = Selected::brush(recorder, filled || solid, solid ? line : fill);
    constexpr double share = 0.72;  // the points of a triangle reach further than its size
    const int size = static_cast<int>(share * drawing.width);
    SymbolStamp(symbol, size).draw(recorder, {drawing.width / 2, drawing.height / 2});
  }
  return played(drawing, {side, side}, paper_under(line));
}

}  // namespace tavlo
